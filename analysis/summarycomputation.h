// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "summaryresult.h"

#include <QHash>

// Computes a participant summary: groups each participant's rows into
// cells, leaves out participants below the accuracy threshold, trims each
// cell's correct times by the chosen procedure and measures what is kept.
// Rows marked hidden take no part but as exclusions. The input is read,
// never changed, so the window computes again on the same columns whenever
// a setting or a hidden row changes.
class SummaryComputation
{
public:
    // `settings` must pass SummarySettings::Check().
    static SummaryResult Run(const QVector<ParticipantTrials> &participants, const SummarySettings &settings);

private:
    explicit SummaryComputation(const SummarySettings &settings);

    void AddParticipant(const ParticipantTrials &trials);
    void CountRows(SummaryParticipant &participant, const ParticipantTrials &trials) const;
    void AddCells(SummaryParticipant &participant, const ParticipantTrials &trials);
    void TallyRows(const SummaryParticipant &participant, const ParticipantTrials &trials);
    void GatherTimes(const SummaryParticipant &participant, const ParticipantTrials &trials,
                     const QVector<int> &slots);
    void Trim();
    void TrimByScope();
    void Measure(SummaryCell &cell) const;
    void ListExclusions(int participant);
    void AddTrimmed(int participant, int row, double time, const SummaryCell &cell);

    SummaryResult result;
    QHash<QStringList, int> conditionIndex;
};
