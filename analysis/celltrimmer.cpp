// SPDX-License-Identifier: GPL-3.0-or-later
#include "celltrimmer.h"

#include "movingcriterion.h"
#include "typednumber.h"

#include <algorithm>

namespace {

// Procedures that work on a mean and a deviation leave a cell of this many
// times or fewer whole.
const int kSmallestTrimmed = 4;

} // namespace

CellTrimmer::CellTrimmer(SummaryCell &cell)
    : cell(cell)
{
}

void CellTrimmer::ApplyBounds(const TypedNumber &min, const TypedNumber &max)
{
    if (min.Given())
        RemoveLow(Find(min.value, false), min.value);
    if (max.Given())
        RemoveHigh(Find(max.value, true), max.value);
}

void CellTrimmer::RemoveBeyond(double lower, double upper)
{
    cell.lowerCriterion = lower;
    cell.upperCriterion = upper;
    RemoveLow(Find(lower, false), lower);
    RemoveHigh(Find(upper, true), upper);
}

// In a cell of n >= 4 times: mean and deviation of all n, and k = NR(n).
void CellTrimmer::Nonrecursive()
{
    const int n = KeptCount();
    if (n < kSmallestTrimmed)
        return;
    const SampleMoments moments = MomentsOf(cell.keptBegin, cell.keptEnd);
    const double k = MovingCriterion::Nonrecursive(n);
    RemoveBeyond(moments.mean - k * moments.sd, moments.mean + k * moments.sd);
}

// Rounds while more than 3 times are left and the last round removed
// something. Each round sets the largest time aside with every time equal
// to it, takes mean and deviation of the rest with k = MR(n) for the n times
// left, then removes the largest (with its equals) if it lies above the
// upper criterion and the smallest (with its equals) if it lies below the
// lower one. A round whose rest has fewer than 2 times ends the procedure.
void CellTrimmer::ModifiedRecursive()
{
    bool removed = true;
    while (removed && KeptCount() >= kSmallestTrimmed) {
        const int n = KeptCount();
        const int largest = Find(cell.times.at(cell.keptEnd - 1), false);
        if (largest - cell.keptBegin < 2)
            return;
        const SampleMoments rest = MomentsOf(cell.keptBegin, largest);
        const double k = MovingCriterion::ModifiedRecursive(n);
        cell.lowerCriterion = rest.mean - k * rest.sd;
        cell.upperCriterion = rest.mean + k * rest.sd;
        removed = false;
        if (cell.times.at(cell.keptEnd - 1) > cell.upperCriterion) {
            RemoveHigh(largest, cell.upperCriterion);
            removed = true;
        }
        const double smallest = cell.times.at(cell.keptBegin);
        if (smallest < cell.lowerCriterion) {
            RemoveLow(Find(smallest, true), cell.lowerCriterion);
            removed = true;
        }
    }
}

SampleMoments CellTrimmer::MomentsOf(int begin, int end) const
{
    return SampleMoments::Of(cell.times.constData() + begin, cell.times.constData() + end);
}

int CellTrimmer::Find(double value, bool above) const
{
    const double *begin = cell.times.constData() + cell.keptBegin;
    const double *end = cell.times.constData() + cell.keptEnd;
    return int((above ? std::upper_bound(begin, end, value) : std::lower_bound(begin, end, value))
               - cell.times.constData());
}

void CellTrimmer::RemoveLow(int newBegin, double bound)
{
    if (newBegin == cell.keptBegin)
        return;
    cell.keptBegin = newBegin;
    cell.lowRuns.append(RemovedRun{newBegin, bound});
}

void CellTrimmer::RemoveHigh(int newEnd, double bound)
{
    if (newEnd == cell.keptEnd)
        return;
    cell.keptEnd = newEnd;
    cell.highRuns.append(RemovedRun{newEnd, bound});
}
