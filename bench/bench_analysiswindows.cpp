// SPDX-License-Identifier: GPL-3.0-or-later
// The analysis windows on a combined view of 1,000,000 rows from the sample
// generator over 40 participants, by Block Name and Congruency with
// modified-recursive trimming: what a setting changed, or a row hidden and
// shown in the main window, costs until the window shows the result anew,
// the summary's table or, for all participants, each kind of plot.

#include "analysissession.h"
#include "benchdata.h"
#include "distributionswindow.h"
#include "testenvironment.h"

#include <QComboBox>
#include <QStackedWidget>
#include <QTableView>

#include <benchmark/benchmark.h>

namespace {

using PlotKind = DistributionsWindow::PlotKind;

// The windows read and write their settings; a temporary home keeps the
// user's own out of reach. Made before main(), so before the application.
const TestEnvironment environment;

SummarySettings Settings(const QString &minAccuracy)
{
    SummarySettings settings;
    settings.conditionColumns = QStringList{QStringLiteral("Block Name"), QStringLiteral("Congruency")};
    settings.procedure = SummarySettings::Procedure::ModifiedRecursive;
    TypedNumber::Read(minAccuracy, &settings.minAccuracy);
    return settings;
}

// The main window with every participant's file selected, and one analysis
// window open on them. It takes seconds to make, so each benchmark makes
// it once.
class AnalysisScene : public BenchData::MillionRowWindow
{
public:
    // The summary window.
    AnalysisScene()
    {
        Open("actionParticipant_Summary");
        shown = Window().findChild<QTableView *>(QStringLiteral("summaryTable"))->viewport();
    }
    // The distributions window with a plot of this kind in view.
    explicit AnalysisScene(PlotKind plot)
    {
        Open("actionDistributions");
        Window().findChild<QComboBox *>(QStringLiteral("plotKindBox"))->setCurrentIndex(int(plot));
        shown = Window().findChild<QStackedWidget *>(QStringLiteral("plotStack"))->currentWidget();
    }

    // A threshold of 0 leaves everyone in, so each change computes all.
    void ChangeSetting()
    {
        Session().SetSettings(Settings(++changes % 2 ? QStringLiteral("0") : QString()));
        Paint();
    }
    // The main window's own work of hiding and showing is timed with it.
    void HideAndShowRow()
    {
        Raw()->selectRow(0);
        Trigger("actionHide_Selected_Rows");
        Paint();
        Trigger("actionShow_All_Rows");
        Paint();
    }

private:
    void Open(const char *action)
    {
        Session().SetSettings(Settings(QString()));
        Trigger(action);
    }
    // Painted now, as the next paint event would.
    void Paint() { shown->repaint(); }

    QWidget *shown = nullptr;
    int changes = 0;
};

void SettingChanged(benchmark::State &state, AnalysisScene &&scene)
{
    for (auto _ : state)
        scene.ChangeSetting();
    scene.Count(state);
}

void RowHiddenAndShown(benchmark::State &state, AnalysisScene &&scene)
{
    for (auto _ : state)
        scene.HideAndShowRow();
    scene.Count(state);
}

void Timed(benchmark::internal::Benchmark *benchmark)
{
    benchmark->Unit(benchmark::kMillisecond)->UseRealTime();
}

void EachPlot(benchmark::internal::Benchmark *benchmark)
{
    Timed(benchmark);
    benchmark->ArgName("plot")->DenseRange(int(PlotKind::Histogram), int(PlotKind::Delta));
}

void BM_SummaryWindowSettingChanged(benchmark::State &state)
{
    SettingChanged(state, AnalysisScene());
}
BENCHMARK(BM_SummaryWindowSettingChanged)->Apply(Timed)->Iterations(20);

void BM_SummaryWindowRowHiddenAndShown(benchmark::State &state)
{
    RowHiddenAndShown(state, AnalysisScene());
}
BENCHMARK(BM_SummaryWindowRowHiddenAndShown)->Apply(Timed)->Iterations(10);

void BM_DistributionsSettingChanged(benchmark::State &state)
{
    SettingChanged(state, AnalysisScene(PlotKind(state.range(0))));
}
BENCHMARK(BM_DistributionsSettingChanged)->Apply(EachPlot)->Iterations(10);

void BM_DistributionsRowHiddenAndShown(benchmark::State &state)
{
    RowHiddenAndShown(state, AnalysisScene(PlotKind(state.range(0))));
}
BENCHMARK(BM_DistributionsRowHiddenAndShown)->Apply(EachPlot)->Iterations(5);

} // namespace

ZEPHLANE_BENCHMARK_MAIN()
