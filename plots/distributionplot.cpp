#include "distributionplot.h"

#include <qwt_plot_canvas.h>
#include <qwt_plot_grid.h>
#include <qwt_plot_textlabel.h>
#include <qwt_scale_engine.h>
#include <qwt_text.h>

namespace {

const int kMajorTicks = 8;

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
    double step = 0;
    axisScaleEngine(axis)->autoScale(kMajorTicks, min, max, step);
    setAxisScale(axis, min, max, step);
}
