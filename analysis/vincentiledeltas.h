// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plotline.h"
#include "texttable.h"

struct SummaryResult;
class Vincentiles;

// The numbers behind the delta plot of two conditions a and b: over the
// participants that enter both conditions' vincentile averages, the mean
// of each participant's differences of vincentiles, b - a, against the
// mean of each participant's means of the two.
class VincentileDeltas
{
public:
    // `a` and `b` are positions in SummaryResult::conditions; the line is
    // empty unless they are two different conditions of the result. The
    // participants are those `vincentiles` was computed for.
    VincentileDeltas(const SummaryResult &result, const Vincentiles &vincentiles, int a, int b);

    // x the mean times, y the mean differences; named "b − a".
    const PlotLine &Line() const { return line; }
    bool IsEmpty() const { return line.participants == 0; }

    // One line per probability, the two conditions named.
    TextTable Data() const;

private:
    void AddParticipant(const Vincentiles &vincentiles, int participant);

    int a;
    int b;
    QString nameA;
    QString nameB;
    PlotLine line;
};
