// SPDX-License-Identifier: GPL-3.0-or-later
#include "histogramplot.h"

#include "fixedpoint.h"
#include "histogramdata.h"
#include "plotpalette.h"

#include <qwt_interval.h>
#include <qwt_plot_histogram.h>
#include <qwt_legend.h>
#include <qwt_plot_marker.h>
#include <qwt_scale_map.h>
#include <qwt_text.h>

#include <QFontMetrics>
#include <QLayout>
#include <QScrollArea>

#include <algorithm>
#include <cmath>

namespace {

const int kMinimumWidth = 190;
// The height of the smallest canvas, in lines of the count axis's labels:
// enough for a few of them and the shape of the bars.
const int kCanvasLines = 4;

QString TimeText(double time)
{
    return FixedPoint::Text(time, 0) + QStringLiteral(" ms");
}

// Where the vertical label `text` of a line at `x` stands on the canvas:
// on the side of the line and at the end of the canvas that `place` says.
QRectF LabelRect(const QwtText &text, Qt::Alignment place, int spacing, const QFont &font, const QRectF &canvas,
                 double x)
{
    const QSizeF along = text.textSize(font);
    const QSizeF size(along.height(), along.width());
    const double left = place & Qt::AlignLeft ? x - spacing - size.width() : x + spacing;
    const double top = place & Qt::AlignTop ? canvas.top() + spacing : canvas.bottom() - spacing - size.height();
    return QRectF(QPointF(left, top), size);
}

// Whether a label at `rect` stands whole on the canvas, crossed by none of
// the lines at `xs` and clear of the labels `placed` before it by half a
// line, so that two labels end to end do not read as one.
bool IsFree(const QRectF &rect, const QRectF &canvas, const QVector<double> &xs, const QVector<QRectF> &placed)
{
    const double gap = rect.width() / 2;
    const QRectF apart = rect.adjusted(-gap, -gap, gap, gap);
    return canvas.contains(rect)
           && std::none_of(xs.begin(), xs.end(), [&rect](double x) { return rect.left() < x && x < rect.right(); })
           && std::none_of(placed.begin(), placed.end(),
                           [&apart](const QRectF &other) { return other.intersects(apart); });
}

Qt::Alignment Mirrored(Qt::Alignment place)
{
    return (place & ~Qt::AlignHorizontal_Mask) | (place & Qt::AlignLeft ? Qt::AlignRight : Qt::AlignLeft);
}

} // namespace

HistogramPlot::HistogramPlot(QWidget *parent)
    : DistributionPlot(parent)
{
    // Kept and removed on a line each, so that every panel's canvas starts
    // at the same height whatever the length of its condition's name.
    // (insertLegend sets the columns of a top legend, so they come after.)
    auto *legend = new QwtLegend;
    insertLegend(legend, QwtPlot::TopLegend);
    legend->setMaxColumns(1);
    // Its lines stand close, and in a narrow panel a long name is cut at
    // the panel's edge rather than given scroll bars that take the room of
    // its lines.
    legend->contentsWidget()->layout()->setSpacing(0);
    if (auto *view = legend->findChild<QScrollArea *>()) {
        view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    }
    // A panel shrinks to what its legend, its axes and a small canvas need,
    // not only to its preferred size: where that is still too tall for
    // six, the grid scrolls. Its width is kept to one that two columns
    // fit beside the controls, however long a condition's name.
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    canvas()->setMinimumHeight(QFontMetrics(axisFont(QwtPlot::yLeft)).height() * kCanvasLines);
    setMinimumWidth(kMinimumWidth);
}

void HistogramPlot::Show(const std::shared_ptr<const HistogramBins> &bins, int series)
{
    Clear();
    const HistogramSeries &bars = bins->Series().at(series);
    if (bars.Total() == 0) {
        ShowMessage(tr("No correct trials"));
        return;
    }
    AddHistogram(bins, series, true, tr("%1 (%2 kept)").arg(LegendName(bars.name)).arg(bars.Kept()));
    AddHistogram(bins, series, false, tr("%1 removed").arg(bars.Removed()));
    // Criteria are labelled at the top, bounds at the bottom, so that a
    // criterion next to a bound stays readable.
    AddLine(bars.lowerCriterion, tr("criterion %1"), Qt::DashLine, Qt::AlignLeft | Qt::AlignTop);
    AddLine(bars.upperCriterion, tr("criterion %1"), Qt::DashLine, Qt::AlignRight | Qt::AlignTop);
    AddLine(bins->LowerBound(), tr("min %1"), Qt::DotLine, Qt::AlignLeft | Qt::AlignBottom);
    AddLine(bins->UpperBound(), tr("max %1"), Qt::DotLine, Qt::AlignRight | Qt::AlignBottom);
    QStringList values;
    for (const QwtPlotItem *line : itemList(QwtPlotItem::Rtti_PlotMarker))
        values << line->title().text();
    canvas()->setToolTip(values.join(QLatin1Char('\n')));
}

// The lines go, and with them what the tooltip says of them.
void HistogramPlot::Clear()
{
    DistributionPlot::Clear();
    ownPlaces.clear();
    canvas()->setToolTip(QString());
}

void HistogramPlot::SetRanges(const QwtInterval &times, const QwtInterval &counts)
{
    SetAxisRange(QwtPlot::xBottom, times.minValue(), times.maxValue());
    SetAxisRange(QwtPlot::yLeft, counts.minValue(), counts.maxValue());
}

// The removed part is the whole column, kept and removed, drawn behind the
// kept part: what shows of it is the removed share of each bin.
void HistogramPlot::AddHistogram(const std::shared_ptr<const HistogramBins> &bins, int series, bool kept,
                                 const QString &title)
{
    const QColor color = kept ? PlotPalette::Color(bins->Series().at(series).condition) : PlotPalette::Removed();
    auto *histogram = new QwtPlotHistogram(title);
    histogram->setStyle(QwtPlotHistogram::Columns);
    histogram->setBrush(color);
    histogram->setPen(QPen(color.darker(160), 1));
    histogram->setItemAttribute(QwtPlotItem::Legend, true);
    histogram->setZ(kept ? 20 : 10);
    histogram->setData(new HistogramData(bins, series, kept ? HistogramData::Part::Kept : HistogramData::Part::All));
    histogram->attach(this);
}

void HistogramPlot::AddLine(double time, const QString &label, Qt::PenStyle style, Qt::Alignment place)
{
    if (std::isnan(time))
        return;
    auto *line = new QwtPlotMarker;
    line->setLineStyle(QwtPlotMarker::VLine);
    line->setLinePen(Qt::black, 1.5, style);
    line->setXValue(time);
    QwtText text(label.arg(TimeText(time)));
    QFont font = text.font();
    font.setPointSizeF(font.pointSizeF() * 0.85);
    text.setFont(font);
    line->setTitle(text);
    line->setLabelAlignment(place);
    ownPlaces.insert(line, place);
    line->setLabelOrientation(Qt::Vertical);
    line->setZ(30);
    line->attach(this);
}

// Each line's label is decided anew for the canvas being drawn, on screen
// or in an export: in the order the lines were added, criteria before
// bounds, a line is labelled with its name and value where that fits the
// canvas whole, clear of the other lines and of the labels already placed,
// on its own side of the line or else on the other; failing both, with its
// value alone, placed the same way; and otherwise not at all rather than
// cut.
void HistogramPlot::drawItems(QPainter *painter, const QRectF &canvasRect, const QwtScaleMap maps[axisCnt]) const
{
    const QwtPlotItemList lines = itemList(QwtPlotItem::Rtti_PlotMarker);
    QVector<double> xs;
    for (const QwtPlotItem *item : lines)
        xs << maps[QwtPlot::xBottom].transform(static_cast<const QwtPlotMarker *>(item)->xValue());
    QVector<QRectF> placed;
    for (int i = 0; i < lines.size(); ++i) {
        auto *line = static_cast<QwtPlotMarker *>(lines[i]);
        QwtText value = line->title();
        value.setText(TimeText(line->xValue()));
        const Qt::Alignment own = ownPlaces.value(line);
        const std::pair<QwtText, Qt::Alignment> choices[]
            = {{line->title(), own}, {line->title(), Mirrored(own)}, {value, own}, {value, Mirrored(own)}};
        QwtText shown;
        for (const auto &[text, place] : choices) {
            const QRectF rect = LabelRect(text, place, line->spacing(), painter->font(), canvasRect, xs[i]);
            if (IsFree(rect, canvasRect, xs, placed)) {
                placed << rect;
                shown = text;
                line->setLabelAlignment(place);
                break;
            }
        }
        if (line->label().text() != shown.text())
            line->setLabel(shown);
    }
    DistributionPlot::drawItems(painter, canvasRect, maps);
}
