// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "summarycell.h"

struct TypedNumber;

// The trimming procedures on one cell's sorted correct times. Each step
// narrows the cell's kept run and records what it took away and why; the
// absolute bounds come first, a procedure then works on what they keep.
// A value beyond a criterion is removed, a value equal to it kept.
class CellTrimmer
{
public:
    explicit CellTrimmer(SummaryCell &cell);

    // Times below `min` as too fast, above `max` as too slow, where given.
    void ApplyBounds(const TypedNumber &min, const TypedNumber &max);
    // Times below `lower` and above `upper`; both become the criteria.
    void RemoveBeyond(double lower, double upper);
    // Van Selst and Jolicoeur's non-recursive procedure.
    void Nonrecursive();
    // Van Selst and Jolicoeur's modified recursive procedure.
    void ModifiedRecursive();

private:
    int KeptCount() const { return cell.keptEnd - cell.keptBegin; }
    SampleMoments MomentsOf(int begin, int end) const;
    // Position of the first time at or above `value` (the first above it
    // with `above`), searched within the kept run.
    int Find(double value, bool above) const;
    void RemoveLow(int newBegin, double bound);
    void RemoveHigh(int newEnd, double bound);

    SummaryCell &cell;
};
