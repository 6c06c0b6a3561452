#include "samplemoments.h"

#include <cmath>

SampleMoments SampleMoments::Of(const double *begin, const double *end)
{
    SampleMoments moments;
    moments.n = int(end - begin);
    if (moments.n == 0)
        return moments;
    double sum = 0;
    for (const double *x = begin; x != end; ++x)
        sum += *x;
    moments.mean = sum / moments.n;
    if (moments.n < 2)
        return moments;
    double squares = 0;
    for (const double *x = begin; x != end; ++x)
        squares += (*x - moments.mean) * (*x - moments.mean);
    moments.sd = std::sqrt(squares / (moments.n - 1));
    return moments;
}
