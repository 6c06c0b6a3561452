// SPDX-License-Identifier: GPL-3.0-or-later
// Flag rules over a large table (each runs at every keystroke in the rule
// dialog), and hiding and restoring many scattered rows.

#include "benchdata.h"
#include "datafile.h"

#include <QTableView>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

const int kRows = 100000;
const int kHidden = 10000;

DataFile &LargeFile()
{
    static QTemporaryDir dir;
    static DataFile file(BenchData::Participant(0, kRows).Write(dir.filePath(QStringLiteral("large.txt"))));
    return file;
}

QVector<int> ScatteredRows()
{
    QVector<int> rows;
    for (int row = 0; row < kRows; row += kRows / kHidden)
        rows.append(row);
    return rows;
}

void CountOnly(MainModel &model)
{
    model.SetFlaggingOptions(1, 0);
}

void BM_RuleDeviation(benchmark::State &state)
{
    MainModel &model = LargeFile().GetMainModel();
    model.CalculateStandardDeviation();
    CountOnly(model);
    for (auto _ : state)
        model.SetFlagsSD(true, false, false, true, 1);
    state.SetItemsProcessed(state.iterations() * model.rowCount());
}
BENCHMARK(BM_RuleDeviation)->Unit(benchmark::kMillisecond);

void BM_RuleErrorCode(benchmark::State &state)
{
    MainModel &model = LargeFile().GetMainModel();
    CountOnly(model);
    for (auto _ : state)
        model.SetFlagsEC(true, false, true, false);
    state.SetItemsProcessed(state.iterations() * model.rowCount());
}
BENCHMARK(BM_RuleErrorCode)->Unit(benchmark::kMillisecond);

void BM_RuleTimeLimits(benchmark::State &state)
{
    MainModel &model = LargeFile().GetMainModel();
    CountOnly(model);
    for (auto _ : state)
        model.SetFlagsTL(true, 300, true, 800);
    state.SetItemsProcessed(state.iterations() * model.rowCount());
}
BENCHMARK(BM_RuleTimeLimits)->Unit(benchmark::kMillisecond);

void BM_RuleTimeRange(benchmark::State &state)
{
    MainModel &model = LargeFile().GetMainModel();
    CountOnly(model);
    for (auto _ : state)
        model.SetFlagsTR(300, 800);
    state.SetItemsProcessed(state.iterations() * model.rowCount());
}
BENCHMARK(BM_RuleTimeRange)->Unit(benchmark::kMillisecond);

// Applying a rule writes the flag of every matching row, one signal each.
void BM_RuleApplied(benchmark::State &state)
{
    MainModel &model = LargeFile().GetMainModel();
    for (auto _ : state) {
        model.SetFlaggingOptions(0, 0);
        model.SetFlagsTL(true, 100000, false, 0);
        model.SetFlaggingOptions(0, 1);
        model.SetFlagsTL(true, 100000, false, 0);
    }
    state.SetItemsProcessed(state.iterations() * 2 * model.rowCount());
}
BENCHMARK(BM_RuleApplied)->Unit(benchmark::kMillisecond);

// A file's own model always has its proxy attached; this one has none.
void BM_HideRestoreModelOnly(benchmark::State &state)
{
    MainModel model;
    model.CopyRows(LargeFile().GetMainModel());
    const QVector<int> rows = ScatteredRows();
    for (auto _ : state) {
        model.HideRows(rows);
        model.RestoreRows();
    }
    state.SetItemsProcessed(state.iterations() * rows.size());
}
BENCHMARK(BM_HideRestoreModelOnly)->Unit(benchmark::kMillisecond);

// Argument 1 sorts the table first, which makes the proxy follow each row.
void HideAndRestore(benchmark::State &state, DataFile &file)
{
    const QVector<int> rows = ScatteredRows();
    file.GetMainProxy().sort(state.range(0) ? 12 : -1);
    file.GetMainProxy().rowCount();
    for (auto _ : state) {
        file.HideRows(rows);
        file.GetMainModel().RestoreRows();
    }
    file.GetMainProxy().sort(-1);
    state.SetItemsProcessed(state.iterations() * rows.size());
}

void BM_HideRestoreWithProxy(benchmark::State &state)
{
    HideAndRestore(state, LargeFile());
}
BENCHMARK(BM_HideRestoreWithProxy)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
void BM_HideRestoreWithView(benchmark::State &state)
{
    DataFile &file = LargeFile();
    QTableView view;
    view.setModel(&file.GetMainProxy());
    HideAndRestore(state, file);
    view.setModel(nullptr);
}
BENCHMARK(BM_HideRestoreWithView)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

// Hiding selected rows also takes them out of the statistics.
void BM_HideSelectedAndShowAll(benchmark::State &state)
{
    DataFile &file = LargeFile();
    const QVector<int> rows = ScatteredRows();
    for (auto _ : state) {
        file.HideSelectedRows(rows);
        file.ShowAllRows();
    }
    state.SetItemsProcessed(state.iterations() * rows.size());
}
BENCHMARK(BM_HideSelectedAndShowAll)->Unit(benchmark::kMillisecond);

// Every row its own trial: 100,000 trial sections to find names in.
void BM_HideSelectedManySections(benchmark::State &state)
{
    static QTemporaryDir dir;
    DataFileBuilder builder;
    builder.KelmarunTitles();
    for (int row = 0; row < kRows; ++row)
        builder.Trial(QStringLiteral("B%1").arg(row / 1000), QStringLiteral("T%1").arg(row), QStringLiteral("C"),
                      QString::number(300 + row % 500));
    DataFile file(builder.Write(dir.filePath(QStringLiteral("trials.txt"))));
    const QVector<int> rows = ScatteredRows();
    for (auto _ : state) {
        file.HideSelectedRows(rows);
        file.ShowAllRows();
    }
    state.SetItemsProcessed(state.iterations() * rows.size());
}
BENCHMARK(BM_HideSelectedManySections)->Unit(benchmark::kMillisecond);

} // namespace

ZEPHLANE_BENCHMARK_MAIN()
