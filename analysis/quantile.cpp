// SPDX-License-Identifier: GPL-3.0-or-later
#include "quantile.h"

#include <QtGlobal>

#include <cmath>

namespace Quantile {

double Type7(const double *sorted, int n, double p)
{
    if (n == 0)
        return qQNaN();
    const double h = (n - 1) * p;
    const int below = qBound(0, int(std::floor(h)), n - 1);
    if (below == n - 1)
        return sorted[below];
    return sorted[below] + (h - below) * (sorted[below + 1] - sorted[below]);
}

} // namespace Quantile
