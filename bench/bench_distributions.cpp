// The distributions window on a combined view of 1,000,000 rows from the
// sample generator over 40 participants, with the summary benchmark's
// settings (Block Name and Congruency, modified-recursive): what a setting
// changed, or a row hidden and shown in the main window, costs until the
// plot in view, for all participants, is painted anew. One benchmark per
// kind of plot.

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

// The window reads and writes its settings; a temporary home keeps the
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

// The main window with every participant's file selected, and the
// distributions window open on them.
class DistributionsScene : public BenchData::MillionRowWindow
{
public:
    DistributionsScene()
    {
        Session().SetSettings(Settings(QString()));
        Trigger("actionDistributions");
    }

    void Show(PlotKind kind)
    {
        Distributions()->findChild<QComboBox *>(QStringLiteral("plotKindBox"))->setCurrentIndex(int(kind));
    }
    // The plot in view painted now, as the next paint event would.
    void PaintPlot()
    {
        Distributions()->findChild<QStackedWidget *>(QStringLiteral("plotStack"))->currentWidget()->repaint();
    }

private:
    DistributionsWindow *Distributions() { return Window().findChild<DistributionsWindow *>(); }
};

// The scene takes seconds to make, so each benchmark makes it once. A
// threshold of 0 leaves everyone in, so each setting computes all.
void BM_DistributionsSettingChanged(benchmark::State &state)
{
    DistributionsScene scene;
    scene.Show(PlotKind(state.range(0)));
    int iteration = 0;
    for (auto _ : state) {
        scene.Session().SetSettings(Settings(++iteration % 2 ? QStringLiteral("0") : QString()));
        scene.PaintPlot();
    }
    scene.Count(state);
}
BENCHMARK(BM_DistributionsSettingChanged)
    ->ArgName("plot")
    ->DenseRange(int(PlotKind::Histogram), int(PlotKind::Delta))
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(10);

// The main window's own work of hiding and showing is timed with it: two
// redraws an iteration.
void BM_DistributionsRowHiddenAndShown(benchmark::State &state)
{
    DistributionsScene scene;
    scene.Show(PlotKind(state.range(0)));
    for (auto _ : state) {
        scene.Raw()->selectRow(0);
        scene.Trigger("actionHide_Selected_Rows");
        scene.PaintPlot();
        scene.Trigger("actionShow_All_Rows");
        scene.PaintPlot();
    }
    scene.Count(state);
}
BENCHMARK(BM_DistributionsRowHiddenAndShown)
    ->ArgName("plot")
    ->DenseRange(int(PlotKind::Histogram), int(PlotKind::Delta))
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(5);

} // namespace

ZEPHLANE_BENCHMARK_MAIN()
