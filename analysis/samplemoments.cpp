// SPDX-License-Identifier: GPL-3.0-or-later
#include "samplemoments.h"

#include <cmath>

namespace {

// Adds up f(x) over the run in four interleaved sums, which a processor
// keeps going side by side; the trimming takes many passes over large cells.
template <typename Term>
double SumOf(const double *begin, const double *end, Term term)
{
    double lanes[4] = {0, 0, 0, 0};
    const double *x = begin;
    for (; end - x >= 4; x += 4) {
        lanes[0] += term(x[0]);
        lanes[1] += term(x[1]);
        lanes[2] += term(x[2]);
        lanes[3] += term(x[3]);
    }
    for (int lane = 0; x != end; ++x, ++lane)
        lanes[lane] += term(*x);
    return (lanes[0] + lanes[1]) + (lanes[2] + lanes[3]);
}

} // namespace

SampleMoments SampleMoments::Of(const double *begin, const double *end)
{
    SampleMoments moments;
    moments.n = int(end - begin);
    if (moments.n == 0)
        return moments;
    const double mean = SumOf(begin, end, [](double x) { return x; }) / moments.n;
    moments.mean = mean;
    if (moments.n < 2)
        return moments;
    const double squares = SumOf(begin, end, [mean](double x) { return (x - mean) * (x - mean); });
    moments.sd = std::sqrt(squares / (moments.n - 1));
    return moments;
}
