// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "participantchoice.h"
#include "plotline.h"
#include "texttable.h"

#include <QHash>
#include <QPair>
#include <QVector>

struct SummaryResult;

// The numbers behind the cumulative distribution: the 0.1, 0.3, 0.5, 0.7
// and 0.9 quantiles (Quantile::Type7) of each participant's kept correct
// times per condition, averaged per condition over the participants with
// at least kMinimumTimes kept times there ("vincentiles").
class Vincentiles
{
public:
    static const int kMinimumTimes = 5;
    static const PlotLine::Points &Probabilities();

    Vincentiles(const SummaryResult &result, ParticipantChoice choice);

    // A line per condition that some participant enters, in the order of
    // SummaryResult::conditions: x the mean quantiles, y the probabilities.
    const QVector<PlotLine> &Lines() const { return lines; }
    // One participant's quantiles in a condition; null where that
    // participant does not enter the condition's average.
    const PlotLine::Points *Of(int participant, int condition) const;

    // One line per condition and probability.
    TextTable Data() const;

private:
    QVector<PlotLine> lines;
    QHash<QPair<int, int>, PlotLine::Points> quantiles;
};
