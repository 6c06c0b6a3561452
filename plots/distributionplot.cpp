// SPDX-License-Identifier: GPL-3.0-or-later
#include "distributionplot.h"

#include <qwt_plot_canvas.h>
#include <qwt_plot_grid.h>
#include <qwt_plot_textlabel.h>
#include <qwt_scale_div.h>
#include <qwt_scale_draw.h>
#include <qwt_scale_engine.h>
#include <qwt_text.h>

#include <QFontMetrics>

#include <algorithm>

namespace {

// The most major ticks an axis has where there is room for more, as many
// as a researcher reads off a printed figure.
const int kMostMajorTicks = 8;

} // namespace

DistributionPlot::DistributionPlot(QWidget *parent)
    : QwtPlot(parent)
    , message(new QwtPlotTextLabel)
{
    setAutoReplot(false);
    auto *canvas = new QwtPlotCanvas;
    canvas->setFrameStyle(QFrame::Box | QFrame::Plain);
    setCanvas(canvas);
    setCanvasBackground(Qt::white);

    auto *grid = new QwtPlotGrid;
    grid->setMajorPen(QColor(0xDD, 0xDD, 0xDD), 0, Qt::SolidLine);
    grid->attach(this);

    message->setZ(1000);
    message->attach(this);
}

void DistributionPlot::ShowMessage(const QString &text)
{
    Clear();
    QwtText label(text);
    QFont font = label.font();
    font.setPointSizeF(font.pointSizeF() * 1.25);
    label.setFont(font);
    label.setColor(QColor(0x44, 0x44, 0x44));
    message->setText(label);
    replot();
}

QString DistributionPlot::Message() const
{
    return message->text().text();
}

QString DistributionPlot::LegendName(const QString &condition)
{
    return condition.isEmpty() ? tr("All trials") : condition;
}

void DistributionPlot::Clear()
{
    for (const int rtti : {QwtPlotItem::Rtti_PlotCurve, QwtPlotItem::Rtti_PlotHistogram,
                           QwtPlotItem::Rtti_PlotMarker, QwtPlotItem::Rtti_PlotLegend})
        detachItems(rtti, true);
    message->setText(QwtText());
}

void DistributionPlot::SetAxisTitles(const QString &x, const QString &y)
{
    setAxisTitle(QwtPlot::xBottom, x);
    setAxisTitle(QwtPlot::yLeft, y);
}

void DistributionPlot::SetAxisRange(int axis, double min, double max)
{
    ranges[axis] = QwtInterval(min, max);
    ApplyAxisRange(axis);
}

// Other labels take other room beside the canvas, so the plot is laid out
// again at once; fewer ticks ask for less room along an axis, so the
// layout around is told that the plot's minimum size has changed.
void DistributionPlot::resizeEvent(QResizeEvent *event)
{
    QwtPlot::resizeEvent(event);
    if (FitTicks()) {
        updateAxes();
        updateLayout();
        updateGeometry();
        replot();
    }
}

void DistributionPlot::ApplyAxisRange(int axis)
{
    double min = ranges[axis].minValue();
    double max = ranges[axis].maxValue();
    double step = 0;
    axisScaleEngine(axis)->autoScale(axisMaxMajor(axis), min, max, step);
    setAxisScale(axis, min, max, step);
}

// An axis with its own bounds is ruled again; one scaled to the data by Qwt
// takes the new count when it is next drawn.
bool DistributionPlot::FitTicks()
{
    bool changed = false;
    for (const int axis : {QwtPlot::xBottom, QwtPlot::yLeft}) {
        const int ticks = TicksThatFit(axis);
        if (ticks == axisMaxMajor(axis))
            continue;
        setAxisMaxMajor(axis, ticks);
        if (!axisAutoScale(axis) && ranges[axis].isValid())
            ApplyAxisRange(axis);
        changed = true;
    }
    return changed;
}

// Each label is given its own length and a line's height of space from the
// next; the labels measured are those of the scale in view, whose lengths
// a new step hardly changes.
int DistributionPlot::TicksThatFit(int axis) const
{
    const bool horizontal = axis == QwtPlot::xBottom || axis == QwtPlot::xTop;
    const QFont font = axisFont(axis);
    const QwtScaleDraw *draw = axisScaleDraw(axis);
    double longest = 0;
    for (const double value : axisScaleDiv(axis).ticks(QwtScaleDiv::MajorTick)) {
        const QSizeF label = draw->labelSize(font, value);
        longest = std::max(longest, horizontal ? label.width() : label.height());
    }
    const double room = longest + QFontMetrics(font).height();
    const int length = horizontal ? canvas()->width() : canvas()->height();
    return std::clamp(int(length / room), 1, kMostMajorTicks);
}
