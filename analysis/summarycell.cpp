// SPDX-License-Identifier: GPL-3.0-or-later
#include "summarycell.h"

SummaryCell::SummaryCell()
    : lowerCriterion(qQNaN())
    , upperCriterion(qQNaN())
    , median(qQNaN())
    , errorMean(qQNaN())
{
}

double SummaryCell::Accuracy() const
{
    return trials > 0 ? double(Correct()) / trials : qQNaN();
}

double SummaryCell::ExcludedPercent() const
{
    const int valid = times.size();
    return valid > 0 ? double(ExcludedLow() + ExcludedHigh()) / valid * 100 : qQNaN();
}

double SummaryCell::BoundOf(int index) const
{
    if (index < keptBegin) {
        for (const RemovedRun &run : lowRuns) {
            if (index < run.limit)
                return run.bound;
        }
    } else {
        for (const RemovedRun &run : highRuns) {
            if (index >= run.limit)
                return run.bound;
        }
    }
    return qQNaN();
}
