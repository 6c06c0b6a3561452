// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

// Count, mean and sample standard deviation of a run of times, as R's
// mean() and sd() give them: the deviation divides by n - 1. Two passes,
// the mean first and then the squared deviations from it, so that times
// near 10^6 ms keep their digits.
struct SampleMoments
{
    int n = 0;
    // NaN with no value.
    double mean = qQNaN();
    // NaN with fewer than two values.
    double sd = qQNaN();

    static SampleMoments Of(const double *begin, const double *end);
};
