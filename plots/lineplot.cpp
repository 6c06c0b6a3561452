// SPDX-License-Identifier: GPL-3.0-or-later
#include "lineplot.h"

#include "plotpalette.h"

#include <qwt_legend.h>
#include <qwt_plot_curve.h>
#include <qwt_symbol.h>

namespace {

const double kLineWidth = 2;
const int kSymbolSize = 9;

} // namespace

LinePlot::LinePlot(QWidget *parent)
    : DistributionPlot(parent)
{
    insertLegend(new QwtLegend, QwtPlot::BottomLegend);
}

bool LinePlot::ShowLines(const QVector<PlotLine> &lines, const QString &empty)
{
    if (lines.isEmpty()) {
        ShowMessage(empty);
        return false;
    }
    Clear();
    for (const PlotLine &line : lines) {
        const QColor color = PlotPalette::Color(line.condition);
        auto *curve = new QwtPlotCurve(tr("%1 (n = %2)").arg(LegendName(line.name)).arg(line.participants));
        curve->setRenderHint(QwtPlotItem::RenderAntialiased);
        curve->setPen(color, kLineWidth);
        curve->setSymbol(new QwtSymbol(PlotPalette::Symbol(line.condition), QBrush(color), QPen(color.darker(150)),
                                       QSize(kSymbolSize, kSymbolSize)));
        curve->setLegendAttribute(QwtPlotCurve::LegendShowLine);
        curve->setLegendAttribute(QwtPlotCurve::LegendShowSymbol);
        curve->setSamples(line.x.data(), line.y.data(), PlotLine::kPoints);
        curve->attach(this);
    }
    return true;
}
