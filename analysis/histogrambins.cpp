#include "histogrambins.h"

#include "fixedpoint.h"
#include "quantile.h"
#include "summaryresult.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

const int kTimeDecimals = 2;

// The valid correct times of the chosen cells in ascending order. Each
// cell's times are sorted already, so neighbouring runs are merged
// pairwise rather than the whole sorted again.
QVector<double> SortedTimes(const SummaryResult &result, ParticipantChoice choice)
{
    QVector<double> times;
    QVector<int> ends;
    for (const SummaryCell &cell : result.cells) {
        if (choice.Includes(cell) && !cell.times.isEmpty()) {
            times += cell.times;
            ends.append(times.size());
        }
    }
    while (ends.size() > 1) {
        QVector<int> merged;
        for (int i = 0; i < ends.size(); i += 2) {
            if (i + 1 < ends.size()) {
                const int begin = i > 0 ? ends[i - 1] : 0;
                std::inplace_merge(times.begin() + begin, times.begin() + ends[i], times.begin() + ends[i + 1]);
            }
            merged.append(ends[std::min(i + 1, ends.size() - 1)]);
        }
        ends = merged;
    }
    return times;
}

QString CriterionText(double criterion)
{
    return FixedPoint::Text(criterion, kTimeDecimals);
}

} // namespace

int HistogramSeries::Total() const
{
    return std::accumulate(kept.begin(), kept.end(), 0) + std::accumulate(removed.begin(), removed.end(), 0);
}

HistogramBins::HistogramBins(const SummaryResult &result, ParticipantChoice choice, double width)
{
    AddSeries(result, choice);
    const QVector<double> sorted = SortedTimes(result, choice);
    if (!sorted.isEmpty()) {
        ChooseBins(sorted, width);
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

double HistogramBins::DefaultWidth(const QVector<double> &sorted)
{
    const int n = sorted.size();
    const double iqr = Quantile::Type7(sorted.constData(), n, 0.75) - Quantile::Type7(sorted.constData(), n, 0.25);
    if (iqr > 0)
        return 2 * iqr / std::cbrt(double(n));
    const double range = sorted.last() - sorted.first();
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

void HistogramBins::ChooseBins(const QVector<double> &sorted, double asked)
{
    width = asked > 0 ? asked : DefaultWidth(sorted);
    // At the widened width the range spans kMaxBins - 2 widths, which
    // touch at most kMaxBins bins.
    if (BinOf(sorted.last()) - BinOf(sorted.first()) >= kMaxBins)
        width = (sorted.last() - sorted.first()) / (kMaxBins - 2);
    firstBin = BinOf(sorted.first());
    binCount = int(BinOf(sorted.last()) - firstBin + 1);
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
