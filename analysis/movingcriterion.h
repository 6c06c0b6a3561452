// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// The criteria of Van Selst and Jolicoeur's (1994) moving-criterion
// procedures: how many standard deviations from the mean a time may lie in
// a cell of n times. Their table, linearly interpolated in n between the
// sizes it gives; 100 times and more take the last row. Defined from n = 4.
class MovingCriterion
{
public:
    static double Nonrecursive(int n);
    static double ModifiedRecursive(int n);
};
