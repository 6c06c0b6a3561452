// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "samplemoments.h"

#include <QVector>

#include <array>

// A run of times that the trimming took away on one side of a cell, and the
// criterion they crossed. On the low side the run ends before `limit`, on
// the high side it starts at `limit`; each run begins where the one before
// it on that side left off.
struct RemovedRun
{
    int limit;
    double bound;
};

// One participant under one combination of condition values: its rows by
// code, its correct times and what the procedure kept of them, and the
// measures of its line in the summary. Made by SummaryComputation.
struct SummaryCell
{
    // Positions in SummaryResult::participants and SummaryResult::conditions.
    int participant = 0;
    int condition = 0;

    int trials = 0;
    // Rows by code index, C, E, NR, SC; rows of any other code count in
    // `trials` only.
    std::array<int, 4> codes{};
    // Correct rows without a valid time.
    int invalidTimes = 0;

    // Every valid time of the correct rows in ascending order. Each
    // criterion removes by value, so what the procedure keeps is always one
    // run of these, from keptBegin to keptEnd - 1.
    QVector<double> times;
    int keptBegin = 0;
    int keptEnd = 0;
    // The runs removed below keptBegin and from keptEnd on, from the
    // outside in: the absolute bounds first, then each round of the
    // procedure.
    QVector<RemovedRun> lowRuns;
    QVector<RemovedRun> highRuns;
    // The procedure's criteria for this cell: for sd those of its scope,
    // for modified-recursive those of its last round, for absolute its
    // bounds. NaN where none was computed (a cell or scope too small) and
    // for none.
    double lowerCriterion;
    double upperCriterion;

    // Count, mean and deviation of the kept times, and their median.
    SampleMoments kept;
    double median;
    // Mean of the incorrect rows' valid times inside the absolute bounds.
    double errorMean;

    SummaryCell();

    int Correct() const { return codes[0]; }
    double Accuracy() const;
    int ExcludedLow() const { return keptBegin; }
    int ExcludedHigh() const { return times.size() - keptEnd; }
    // The removed share of the valid correct times, in percent; NaN with
    // no valid correct time.
    double ExcludedPercent() const;
    // The kept times, ascending.
    const double *KeptBegin() const { return times.constData() + keptBegin; }
    const double *KeptEnd() const { return times.constData() + keptEnd; }
    // The criterion that removed times[index], an index outside the kept run.
    double BoundOf(int index) const;
};
