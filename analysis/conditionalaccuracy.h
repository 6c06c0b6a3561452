// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "participantchoice.h"
#include "plotline.h"
#include "texttable.h"

#include <QVector>

struct SummaryResult;
struct TimedResponse;

// The numbers behind the conditional accuracy function: each participant's
// correct and incorrect rows with a valid time inside the absolute bounds
// (no other trimming) per condition, ordered by time and equal times by
// row, split into five bins by rank; the accuracy of each bin against its
// mean time, averaged per condition over the participants with at least
// kMinimumRows such rows.
class ConditionalAccuracy
{
public:
    static const int kMinimumRows = 5;

    ConditionalAccuracy(const SummaryResult &result, ParticipantChoice choice);

    // A line per condition that some participant enters, in the order of
    // SummaryResult::conditions: x the mean times, y the accuracies.
    const QVector<PlotLine> &Lines() const { return lines; }

    // One line per condition and bin.
    TextTable Data() const;

    // The bins of n responses in any order, n >= 5: ranked by
    // TimedResponse::Before, bin i (from 1) holds the ranks floor((i - 1)
    // n / 5) + 1 to floor(i n / 5). Reorders `responses`.
    static void Bin(QVector<TimedResponse> &responses, PlotLine::Points &times, PlotLine::Points &accuracies);

private:
    QVector<PlotLine> lines;
};
