// SPDX-License-Identifier: GPL-3.0-or-later
#include "samplerandom.h"

#include <cmath>

SampleRandom::SampleRandom(quint64 seed)
    : state(seed)
{
}

quint64 SampleRandom::Next()
{
    quint64 z = (state += 0x9E3779B97F4A7C15ULL);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
    return z ^ (z >> 31);
}

int SampleRandom::Below(int bound)
{
    if (bound <= 0)
        return 0;
    return int(Next() % quint64(bound));
}

double SampleRandom::Unit()
{
    // The top 53 bits fill a double's mantissa exactly.
    return double(Next() >> 11) * (1.0 / 9007199254740992.0);
}

double SampleRandom::Normal()
{
    // Box-Muller; 1 - Unit() is never 0, so the logarithm is finite.
    const double radius = std::sqrt(-2.0 * std::log(1.0 - Unit()));
    return radius * std::cos(2.0 * M_PI * Unit());
}

double SampleRandom::Exponential()
{
    return -std::log(1.0 - Unit());
}
