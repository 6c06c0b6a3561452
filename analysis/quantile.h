// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// The one definition of a quantile in the analysis, for medians, plots and
// everything else: linear interpolation between order statistics, R's
// default, type 7. With h = (n - 1) p, the value is x[floor h] + (h -
// floor h) (x[floor h + 1] - x[floor h]), counting the sorted values from 0.
namespace Quantile {

// `sorted` holds n values in ascending order; p runs from 0 to 1. NaN for
// n = 0.
double Type7(const double *sorted, int n, double p);

} // namespace Quantile
