// SPDX-License-Identifier: GPL-3.0-or-later
#include "deltaplot.h"

#include "vincentiledeltas.h"
#include "vincentiles.h"

#include <qwt_plot_marker.h>

#include <algorithm>

DeltaPlot::DeltaPlot(QWidget *parent)
    : LinePlot(parent)
{
    SetAxisTitles(tr("Mean reaction time (ms)"), tr("Difference b \u2212 a (ms)"));
}

// The axis always holds 0, so that an effect's sign reads at a glance.
void DeltaPlot::Show(const VincentileDeltas &deltas)
{
    const QVector<PlotLine> lines = deltas.IsEmpty() ? QVector<PlotLine>() : QVector<PlotLine>{deltas.Line()};
    if (ShowLines(lines, tr("No participant has %1 kept correct times in both conditions")
                             .arg(Vincentiles::kMinimumTimes))) {
        auto *zero = new QwtPlotMarker;
        zero->setLineStyle(QwtPlotMarker::HLine);
        zero->setLinePen(Qt::black, 1, Qt::DashLine);
        zero->setYValue(0);
        zero->attach(this);
        const PlotLine::Points &y = deltas.Line().y;
        SetAxisRange(QwtPlot::yLeft, std::min(0.0, *std::min_element(y.begin(), y.end())),
                     std::max(0.0, *std::max_element(y.begin(), y.end())));
    }
    replot();
}
