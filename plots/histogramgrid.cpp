// SPDX-License-Identifier: GPL-3.0-or-later
#include "histogramgrid.h"

#include "axistitle.h"
#include "histogrambins.h"
#include "histogramplot.h"

#include <qwt_interval.h>

#include <QGridLayout>

#include <cmath>
#include <memory>

namespace {

const int kOneColumnUpTo = 3;
const int kTwoColumnsUpTo = 6;

int ColumnsFor(int panels)
{
    if (panels <= kOneColumnUpTo)
        return 1;
    if (panels <= kTwoColumnsUpTo)
        return 2;
    return int(std::ceil(std::sqrt(double(panels))));
}

// The times every panel shows: all bins, and every criterion and bound,
// so that a line far from the data is seen to lie there.
QwtInterval TimeRange(const HistogramBins &bins)
{
    QwtInterval range(bins.BinStart(0), bins.BinStart(bins.BinCount()));
    const auto include = [&range](double time) {
        if (!std::isnan(time))
            range = range.extend(time);
    };
    for (const HistogramSeries &bars : bins.Series()) {
        include(bars.lowerCriterion);
        include(bars.upperCriterion);
    }
    include(bins.LowerBound());
    include(bins.UpperBound());
    return range;
}

// A title in the font that `plot` gives the titles of its own axes.
QwtText TitleFor(const QwtPlot &plot, const QString &text)
{
    QwtText title = plot.axisTitle(QwtPlot::xBottom);
    title.setText(text);
    return title;
}

int HighestColumn(const HistogramBins &bins)
{
    int highest = 1;
    for (const HistogramSeries &bars : bins.Series()) {
        for (int bin = 0; bin < bins.BinCount(); ++bin)
            highest = std::max(highest, bars.kept[bin] + bars.removed[bin]);
    }
    return highest;
}

} // namespace

HistogramGrid::HistogramGrid(QWidget *parent)
    : QWidget(parent)
    , grid(new QGridLayout(this))
    , timeTitle(new AxisTitle(Qt::Horizontal, this))
    , countTitle(new AxisTitle(Qt::Vertical, this))
{
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(4);
}

void HistogramGrid::Show(const HistogramBins &bins)
{
    if (bins.IsEmpty()) {
        ShowMessage(tr("No correct trials"));
        return;
    }
    const auto shared = std::make_shared<const HistogramBins>(bins);
    SetPanelCount(shared->Series().size());
    const QwtInterval times = TimeRange(bins);
    const QwtInterval counts(0, HighestColumn(bins));
    for (int i = 0; i < panels.size(); ++i) {
        panels[i]->Show(shared, i);
        panels[i]->SetRanges(times, counts);
        panels[i]->replot();
    }
}

void HistogramGrid::ShowMessage(const QString &text)
{
    SetPanelCount(1);
    panels[0]->ShowMessage(text);
}

// Panels are kept and reused; each is placed anew, right of the count
// axis's title, which spans their rows, and above the time axis's title,
// which spans their columns. Titled apart, the panels' canvases are all of
// one size, as shared scales ask, and a title is never squeezed into the
// height of one small panel.
void HistogramGrid::SetPanelCount(int count)
{
    while (panels.size() > count)
        delete panels.takeLast();
    while (panels.size() < count)
        panels.append(new HistogramPlot(this));
    const int columns = ColumnsFor(count);
    const int rows = (count + columns - 1) / columns;
    grid->removeWidget(countTitle);
    grid->removeWidget(timeTitle);
    for (HistogramPlot *panel : panels)
        grid->removeWidget(panel);
    grid->addWidget(countTitle, 0, 0, rows, 1);
    for (int i = 0; i < count; ++i)
        grid->addWidget(panels[i], i / columns, i % columns + 1);
    grid->addWidget(timeTitle, rows, 1, 1, columns);
    // Room beyond the panels' least is shared evenly by their rows, not by
    // their preferred heights, which grow with the ticks a taller axis is
    // given: one row taller than the others would stay so. Rows left from
    // more panels take none.
    for (int row = 0; row < grid->rowCount(); ++row)
        grid->setRowStretch(row, row < rows ? 1 : 0);
    timeTitle->SetText(TitleFor(*panels[0], tr("Reaction time (ms)")));
    countTitle->SetText(TitleFor(*panels[0], tr("Correct trials (count)")));
}
