// SPDX-License-Identifier: GPL-3.0-or-later
#include "vincentileplot.h"

#include "vincentiles.h"

VincentilePlot::VincentilePlot(QWidget *parent)
    : LinePlot(parent)
{
    SetAxisTitles(tr("Reaction time (ms)"), tr("Cumulative probability"));
    SetAxisRange(QwtPlot::yLeft, 0, 1);
}

void VincentilePlot::Show(const Vincentiles &vincentiles)
{
    ShowLines(vincentiles.Lines(),
              tr("No participant has %1 kept correct times in a condition").arg(Vincentiles::kMinimumTimes));
    replot();
}
