// The participant summary window on a combined view of 1,000,000 rows from
// the sample generator over 40 participants, by two condition columns with
// modified-recursive trimming: what a setting changed, or a row hidden and
// shown in the main window, costs until the window's table is painted anew.

#include "analysissession.h"
#include "benchdata.h"
#include "participantsummarywindow.h"
#include "testenvironment.h"

#include <QTableView>

#include <benchmark/benchmark.h>

namespace {

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

// The main window with every participant's file selected, and the summary
// window open on them.
class SummaryScene : public BenchData::MillionRowWindow
{
public:
    SummaryScene()
    {
        Session().SetSettings(Settings(QString()));
        Trigger("actionParticipant_Summary");
    }

    // The summary table painted now, as the next paint event would.
    void PaintTable()
    {
        Window().findChild<ParticipantSummaryWindow *>()->findChild<QTableView *>(QStringLiteral("summaryTable"))
            ->viewport()
            ->repaint();
    }
};

// A threshold of 0 leaves everyone in, so each setting computes all.
void BM_SummaryWindowSettingChanged(benchmark::State &state)
{
    SummaryScene scene;
    int iteration = 0;
    for (auto _ : state) {
        scene.Session().SetSettings(Settings(++iteration % 2 ? QStringLiteral("0") : QString()));
        scene.PaintTable();
    }
    scene.Count(state);
}
// The scene takes seconds to make, so each benchmark makes it once.
BENCHMARK(BM_SummaryWindowSettingChanged)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(20);

// The main window's own work of hiding and showing is timed with it.
void BM_SummaryWindowRowHiddenAndShown(benchmark::State &state)
{
    SummaryScene scene;
    for (auto _ : state) {
        scene.Raw()->selectRow(0);
        scene.Trigger("actionHide_Selected_Rows");
        scene.PaintTable();
        scene.Trigger("actionShow_All_Rows");
        scene.PaintTable();
    }
    scene.Count(state);
}
BENCHMARK(BM_SummaryWindowRowHiddenAndShown)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(10);

} // namespace

ZEPHLANE_BENCHMARK_MAIN()
