// SPDX-License-Identifier: GPL-3.0-or-later
#include "movingcriterion.h"

#include <iterator>

namespace {

struct CriterionRow
{
    int n;
    double nonrecursive;
    double modifiedRecursive;
};

// Van Selst and Jolicoeur (1994): n, then the criterion of each procedure.
const CriterionRow kTable[] = {
    {4, 1.458, 8.0},    {5, 1.68, 6.2},     {6, 1.841, 5.3},   {7, 1.961, 4.8},   {8, 2.05, 4.475},
    {9, 2.12, 4.25},    {10, 2.17, 4.11},   {11, 2.22, 4.0},   {12, 2.246, 3.92}, {13, 2.274, 3.85},
    {14, 2.31, 3.8},    {15, 2.326, 3.75},  {20, 2.391, 3.64}, {25, 2.41, 3.595}, {30, 2.4305, 3.55},
    {35, 2.45, 3.54},   {50, 2.48, 3.51},   {100, 2.5, 3.5},
};

double Interpolated(int n, double CriterionRow::*value)
{
    const CriterionRow *row = std::begin(kTable);
    if (n <= row->n)
        return row->*value;
    for (const CriterionRow *next = row + 1; next != std::end(kTable); row = next++) {
        if (n <= next->n)
            return row->*value + (next->*value - row->*value) * (n - row->n) / (next->n - row->n);
    }
    return row->*value;
}

} // namespace

double MovingCriterion::Nonrecursive(int n)
{
    return Interpolated(n, &CriterionRow::nonrecursive);
}

double MovingCriterion::ModifiedRecursive(int n)
{
    return Interpolated(n, &CriterionRow::modifiedRecursive);
}
