// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "distributionplot.h"
#include "plotline.h"

#include <QVector>

// A plot of lines through five points averaged over participants, one per
// condition, with a legend below: the base of the vincentile, conditional
// accuracy and delta plots.
class LinePlot : public DistributionPlot
{
    Q_OBJECT

public:
    explicit LinePlot(QWidget *parent = nullptr);

protected:
    // Draws each line in its condition's colour and marker, named with the
    // number of participants it averages, or says `empty` where there is
    // no line. Returns whether there are lines; the caller sets the axes
    // and replots.
    bool ShowLines(const QVector<PlotLine> &lines, const QString &empty);
};
