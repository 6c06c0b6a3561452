// The distributions window drawn again whenever a setting or a hidden row
// changes: on 1,000,000 rows from the sample generator over 40
// participants, the summary computed again as the analysis session does
// it (the summary benchmark's Block Name and Congruency, modified-recursive,
// with bounds of 200 and 2000 ms), then the numbers of the plot in view
// for all participants together and the plot drawn at the window's size,
// one benchmark per kind of plot.

#include "accuracyplot.h"
#include "benchdata.h"
#include "conditionalaccuracy.h"
#include "deltaplot.h"
#include "distributionswindow.h"
#include "histogrambins.h"
#include "histogramgrid.h"
#include "summarycomputation.h"
#include "vincentiledeltas.h"
#include "vincentileplot.h"
#include "vincentiles.h"

#include <benchmark/benchmark.h>

namespace {

using PlotKind = DistributionsWindow::PlotKind;

const QSize kPlotSize(780, 700);

SummarySettings Settings()
{
    SummarySettings settings;
    settings.conditionColumns = QStringList{QStringLiteral("Block Name"), QStringLiteral("Congruency")};
    settings.procedure = SummarySettings::Procedure::ModifiedRecursive;
    TypedNumber::Read(QStringLiteral("200"), &settings.min);
    TypedNumber::Read(QStringLiteral("2000"), &settings.max);
    return settings;
}

// The numbers and the picture of one kind of plot; returns the widget drawn.
QWidget *Draw(PlotKind kind, const SummaryResult &result, HistogramGrid &histogram, VincentilePlot &vincentiles,
              AccuracyPlot &accuracy, DeltaPlot &delta)
{
    const ParticipantChoice all;
    switch (kind) {
    case PlotKind::Histogram:
        histogram.Show(HistogramBins(result, all));
        return &histogram;
    case PlotKind::Vincentiles:
        vincentiles.Show(Vincentiles(result, all));
        return &vincentiles;
    case PlotKind::ConditionalAccuracy:
        accuracy.Show(ConditionalAccuracy(result, all));
        return &accuracy;
    case PlotKind::Delta:
        delta.Show(VincentileDeltas(result, Vincentiles(result, all), 0, 1));
        return &delta;
    }
    return nullptr;
}

void BM_DistributionsRedraw(benchmark::State &state)
{
    const auto kind = PlotKind(state.range(0));
    const QVector<ParticipantTrials> participants = BenchData::ReadTrials(BenchData::MillionRowFiles());
    const SummarySettings settings = Settings();
    HistogramGrid histogram;
    VincentilePlot vincentiles;
    AccuracyPlot accuracy;
    DeltaPlot delta;
    for (QWidget *plot : std::initializer_list<QWidget *>{&histogram, &vincentiles, &accuracy, &delta})
        plot->resize(kPlotSize);
    qint64 rows = 0;
    for (const ParticipantTrials &trials : participants)
        rows += trials.RowCount();
    for (auto _ : state) {
        const SummaryResult result = SummaryComputation::Run(participants, settings);
        QWidget *plot = Draw(kind, result, histogram, vincentiles, accuracy, delta);
        benchmark::DoNotOptimize(plot->grab().cacheKey());
    }
    state.counters["rows"] = double(rows);
}
BENCHMARK(BM_DistributionsRedraw)
    ->ArgName("plot")
    ->DenseRange(int(PlotKind::Histogram), int(PlotKind::Delta))
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

} // namespace

ZEPHLANE_BENCHMARK_MAIN()
