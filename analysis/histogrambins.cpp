// SPDX-License-Identifier: GPL-3.0-or-later
#include "histogrambins.h"

#include "fixedpoint.h"
#include "quantile.h"
#include "summaryresult.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

const int kTimeDecimals = 2;

// The valid correct times of the chosen cells, in no particular order.
QVector<double> TimesOf(const SummaryResult &result, ParticipantChoice choice)
{
    QVector<double> times;
    for (const SummaryCell &cell : result.cells) {
        if (choice.Includes(cell))
            times += cell.times;
    }
    return times;
}

// Quantile::Type7 reads only the order statistics at floor((n - 1) p) and
// the one after it; nth_element puts those two in place without sorting
// the rest, which on a million times is the larger part of a redraw.
double QuantileOf(QVector<double> &times, double p)
{
    const int n = times.size();
    const int below = qBound(0, int(std::floor((n - 1) * p)), n - 1);
    std::nth_element(times.begin(), times.begin() + below, times.end());
    if (below + 1 < n)
        std::nth_element(times.begin() + below + 1, times.begin() + below + 1, times.end());
    return Quantile::Type7(times.constData(), n, p);
}

QString CriterionText(double criterion)
{
    return FixedPoint::Text(criterion, kTimeDecimals);
}

} // namespace

int HistogramSeries::Kept() const
{
    return std::accumulate(kept.begin(), kept.end(), 0);
}

int HistogramSeries::Removed() const
{
    return std::accumulate(removed.begin(), removed.end(), 0);
}

HistogramBins::HistogramBins(const SummaryResult &result, ParticipantChoice choice, double width)
{
    AddSeries(result, choice);
    // Each cell's times are in ascending order.
    double lowest = qInf();
    double highest = -qInf();
    for (const SummaryCell &cell : result.cells) {
        if (choice.Includes(cell) && !cell.times.isEmpty()) {
            lowest = std::min(lowest, cell.times.first());
            highest = std::max(highest, cell.times.last());
        }
    }
    if (lowest <= highest) {
        ChooseBins(lowest, highest, width > 0 ? width : DefaultWidth(TimesOf(result, choice)));
        Count(result, choice);
    }
    TakeBounds(result);
}

TextTable HistogramBins::Data() const
{
    TextTable table;
    table.header = QStringList{QStringLiteral("condition"), QStringLiteral("bin_start"), QStringLiteral("bin_end"),
                               QStringLiteral("kept"), QStringLiteral("removed"),
                               QStringLiteral("lower_criterion"), QStringLiteral("upper_criterion")};
    table.numeric = QVector<bool>{false, true, true, true, true, true, true};
    for (const HistogramSeries &bars : series) {
        for (int bin = 0; bin < binCount; ++bin) {
            table.rows.append(QStringList{bars.name, FixedPoint::Text(BinStart(bin), kTimeDecimals),
                                          FixedPoint::Text(BinStart(bin + 1), kTimeDecimals),
                                          QString::number(bars.kept[bin]), QString::number(bars.removed[bin]),
                                          CriterionText(bars.lowerCriterion), CriterionText(bars.upperCriterion)});
        }
    }
    return table;
}

double HistogramBins::DefaultWidth(QVector<double> times)
{
    const int n = times.size();
    const double iqr = QuantileOf(times, 0.75) - QuantileOf(times, 0.25);
    if (iqr > 0)
        return 2 * iqr / std::cbrt(double(n));
    const auto extremes = std::minmax_element(times.begin(), times.end());
    const double range = *extremes.second - *extremes.first;
    if (range > 0)
        return range / (std::ceil(std::log2(double(n))) + 1);
    return 1;
}

// Conditions in the order of the result, whatever order a participant's
// cells come in, so that a condition keeps its place (and colour) from one
// participant to the next.
void HistogramBins::AddSeries(const SummaryResult &result, ParticipantChoice choice)
{
    QVector<bool> present(result.conditions.size(), false);
    for (const SummaryCell &cell : result.cells) {
        if (choice.Includes(cell))
            present[cell.condition] = true;
    }
    for (int condition = 0; condition < present.size(); ++condition) {
        if (present[condition]) {
            HistogramSeries bars;
            bars.condition = condition;
            bars.name = result.ConditionLabel(condition);
            series.append(bars);
        }
    }
}

void HistogramBins::ChooseBins(double lowest, double highest, double asked)
{
    width = asked;
    // At the widened width the range spans kMaxBins - 2 widths, which
    // touch at most kMaxBins bins.
    if (BinOf(highest) - BinOf(lowest) >= kMaxBins)
        width = (highest - lowest) / (kMaxBins - 2);
    firstBin = BinOf(lowest);
    binCount = int(BinOf(highest) - firstBin + 1);
    for (HistogramSeries &bars : series) {
        bars.kept.fill(0, binCount);
        bars.removed.fill(0, binCount);
    }
}

void HistogramBins::Count(const SummaryResult &result, ParticipantChoice choice)
{
    QVector<int> seriesOf(result.conditions.size(), -1);
    for (int i = 0; i < series.size(); ++i)
        seriesOf[series[i].condition] = i;
    for (const SummaryCell &cell : result.cells) {
        if (!choice.Includes(cell))
            continue;
        HistogramSeries &bars = series[seriesOf[cell.condition]];
        for (int i = 0; i < cell.times.size(); ++i) {
            QVector<int> &counts = i >= cell.keptBegin && i < cell.keptEnd ? bars.kept : bars.removed;
            ++counts[int(BinOf(cell.times[i]) - firstBin)];
        }
        if (!choice.IsAll()) {
            bars.lowerCriterion = cell.lowerCriterion;
            bars.upperCriterion = cell.upperCriterion;
        }
    }
}

qint64 HistogramBins::BinOf(double time) const
{
    return qint64(std::floor(time / width));
}

void HistogramBins::TakeBounds(const SummaryResult &result)
{
    const SummarySettings &settings = result.settings;
    if (settings.procedure == SummarySettings::Procedure::Absolute)
        return;
    if (settings.min.Given())
        lowerBound = settings.min.value;
    if (settings.max.Given())
        upperBound = settings.max.value;
}
