// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

// A small seeded generator (SplitMix64) whose sequence is the same on every
// platform and library, so that a seed always gives the same sample file.
class SampleRandom
{
public:
    explicit SampleRandom(quint64 seed);

    quint64 Next();
    // A whole number in [0, bound); 0 when bound is not positive.
    int Below(int bound);
    // A number in [0, 1).
    double Unit();
    // Standard normal and exponential (mean 1) deviates.
    double Normal();
    double Exponential();

private:
    quint64 state;
};
