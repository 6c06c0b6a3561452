// SPDX-License-Identifier: GPL-3.0-or-later
// Column work on large tables through the main window: sorting 100,000
// rows by a column of numbers and by a column of text with header clicks,
// and hiding the empty columns of a 500-column file.

#include "benchdata.h"
#include "mainwindow.h"
#include "testenvironment.h"

#include <QAction>
#include <QHeaderView>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace {

// The window reads and writes its settings; a temporary home keeps the
// user's own out of reach. Made before main(), so before the application.
const TestEnvironment environment;

const int kRows = 100000;
// Model columns of the benchmark files: 8 stimulus names, 12 reaction times.
const int kTextColumn = 8;
const int kNumberColumn = 12;
const int kWideColumns = 500;

std::unique_ptr<MainWindow> WindowWith(const QString &path)
{
    auto window = std::make_unique<MainWindow>();
    window->show();
    window->OpenFiles({path});
    return window;
}

void ClickHeader(QTableView *view, int column)
{
    view->scrollTo(view->model()->index(0, column));
    QHeaderView *header = view->horizontalHeader();
    const QPoint centre(header->sectionViewportPosition(column) + header->sectionSize(column) / 2, header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, centre);
}

// After one click that prepares the column, each iteration clicks three
// times: ascending, descending, file order again.
void SortThroughHeader(benchmark::State &state, int column)
{
    QTemporaryDir dir;
    const auto window = WindowWith(BenchData::Participant(0, kRows).Write(dir.filePath(QStringLiteral("large.txt"))));
    QTableView *view = window->findChild<QTableView *>(QStringLiteral("rawDataView"));
    ClickHeader(view, column);
    for (auto _ : state) {
        ClickHeader(view, column);
        ClickHeader(view, column);
        ClickHeader(view, column);
    }
    state.SetItemsProcessed(state.iterations() * 3 * kRows);
}

void BM_SortNumbersThroughHeader(benchmark::State &state)
{
    SortThroughHeader(state, kNumberColumn);
}
BENCHMARK(BM_SortNumbersThroughHeader)->Unit(benchmark::kMillisecond);

void BM_SortTextThroughHeader(benchmark::State &state)
{
    SortThroughHeader(state, kTextColumn);
}
BENCHMARK(BM_SortTextThroughHeader)->Unit(benchmark::kMillisecond);

// Every other column of the wide file is empty.
QString WideFile(const QTemporaryDir &dir)
{
    QStringList upper{"Error", "Reaction"};
    QStringList lower{"Code", "Time"};
    for (int column = 2; column < kWideColumns; ++column) {
        upper << QString();
        lower << QStringLiteral("Column %1").arg(column);
    }
    DataFileBuilder builder;
    builder.Titles(upper, lower);
    for (int row = 0; row < 1000; ++row) {
        QStringList cells{"C", QString::number(300 + row % 400)};
        for (int column = 2; column < kWideColumns; ++column)
            cells << (column % 2 ? QString::number(row) : QString());
        builder.Row(cells);
    }
    return builder.Write(dir.filePath(QStringLiteral("wide.txt")));
}

void BM_HideEmptyColumns(benchmark::State &state)
{
    QTemporaryDir dir;
    const auto window = WindowWith(WideFile(dir));
    QAction *hide = window->findChild<QAction *>(QStringLiteral("actionHide_Empty_Columns"));
    QAction *showAll = window->findChild<QAction *>(QStringLiteral("actionShow_All_Columns"));
    for (auto _ : state) {
        hide->trigger();
        state.PauseTiming();
        showAll->trigger();
        state.ResumeTiming();
    }
    state.counters["columns"] = kWideColumns;
}
BENCHMARK(BM_HideEmptyColumns)->Unit(benchmark::kMillisecond);

} // namespace

ZEPHLANE_BENCHMARK_MAIN()
