// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "lineplot.h"

class VincentileDeltas;

// The delta plot of two conditions: the mean difference of their
// vincentiles, b - a, against their mean, with the line of no difference.
class DeltaPlot : public LinePlot
{
    Q_OBJECT

public:
    explicit DeltaPlot(QWidget *parent = nullptr);

    void Show(const VincentileDeltas &deltas);
};
