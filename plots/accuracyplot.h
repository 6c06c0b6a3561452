// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "lineplot.h"

class ConditionalAccuracy;

// The conditional accuracy function: per condition, the accuracy of each
// fifth of the responses ordered by time against its mean time.
class AccuracyPlot : public LinePlot
{
    Q_OBJECT

public:
    explicit AccuracyPlot(QWidget *parent = nullptr);

    void Show(const ConditionalAccuracy &accuracy);
};
