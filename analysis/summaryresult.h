// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "participanttrials.h"
#include "summarycell.h"
#include "summarysettings.h"

#include <QStringList>
#include <QVector>

// Why a row is left out of the summary; the names of the exclusion record
// are ExclusionRecord::ReasonName's.
enum class ExclusionReason { TooFast, TooSlow, InvalidRt, LowAccuracy, Hidden };

// One row left out: whose, which, why, and the criterion it crossed.
struct ExcludedRow
{
    // Position in SummaryResult::participants.
    int participant;
    // The file's data row counted from 0, as in ParticipantTrials; the
    // record calls it row fileRow + 1.
    int fileRow;
    ExclusionReason reason;
    // For too fast and too slow rows; NaN for the others.
    double bound;
};

// One participant of the summary, whether in the table or left out.
struct SummaryParticipant
{
    QString name;
    // Rows not hidden, and the correct ones among them.
    int rows = 0;
    int correct = 0;
    // Left out by the accuracy threshold, with no cells.
    bool lowAccuracy = false;
    // The participant's cells are cells[firstCell] to
    // cells[firstCell + cellCount - 1], in the order their first rows come.
    int firstCell = 0;
    int cellCount = 0;

    // Accuracy over all rows not hidden; NaN with none.
    double Accuracy() const { return rows > 0 ? double(correct) / rows : qQNaN(); }
};

// A correct or incorrect row with a valid time inside the absolute bounds,
// as the conditional accuracy function takes it.
struct TimedResponse
{
    double time;
    int fileRow;
    bool correct;

    // The order of the function's ranks: by time, equal times by row.
    static bool Before(const TimedResponse &a, const TimedResponse &b)
    {
        return a.time < b.time || (a.time == b.time && a.fileRow < b.fileRow);
    }
};

// Everything a participant summary found, as numbers: the table, the
// exclusion record and the plots are all read from it. Keeps the settings
// and the input it was computed from (implicitly shared, not copied).
struct SummaryResult
{
    SummarySettings settings;
    QVector<ParticipantTrials> input;
    // One per input participant, in the same order.
    QVector<SummaryParticipant> participants;
    // Every combination of condition values that some cell has, in the
    // order of first appearance over the participants in the table, each
    // value in the order of settings.conditionColumns.
    QVector<QStringList> conditions;
    // Participant by participant, each participant's cells in the order of
    // their first rows: the lines of the long layout.
    QVector<SummaryCell> cells;
    // Per participant and row: the row's cell, or -1 for a row in no cell
    // (hidden, or of a participant left out).
    QVector<QVector<int>> cellOfRow;
    // Every row left out, by participant and then by row.
    QVector<ExcludedRow> exclusions;

    // The participants in the table: those not left out for accuracy.
    int ParticipantsInTable() const;
    // A condition's values joined by " / "; empty with no condition column.
    QString ConditionLabel(int condition) const;
    // For each cell, its responses in the order of their rows; ranked by
    // TimedResponse::Before where the order by time counts.
    QVector<QVector<TimedResponse>> ResponsesByCell() const;
    // Whether a time lies inside the absolute bounds of the settings.
    bool InsideBounds(double time) const;
};
