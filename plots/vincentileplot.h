// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "lineplot.h"

class Vincentiles;

// The cumulative distribution of correct reaction times as vincentiles:
// per condition, the averaged quantiles against their probabilities.
class VincentilePlot : public LinePlot
{
    Q_OBJECT

public:
    explicit VincentilePlot(QWidget *parent = nullptr);

    void Show(const Vincentiles &vincentiles);
};
