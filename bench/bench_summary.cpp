// SPDX-License-Identifier: GPL-3.0-or-later
// The participant summary as the window computes it again whenever a
// setting or a hidden row changes: 1,000,000 rows from the sample generator
// over 40 participants, two condition columns, modified-recursive trimming.
// The files are read into columns once, as the window reads them once per
// file; that reading is timed on its own.

#include "benchdata.h"
#include "summaryfiles.h"
#include "summarycomputation.h"
#include "summarytable.h"

#include <benchmark/benchmark.h>

namespace {

SummarySettings Settings()
{
    SummarySettings settings;
    settings.conditionColumns = QStringList{QStringLiteral("Block Name"), QStringLiteral("Congruency")};
    settings.procedure = SummarySettings::Procedure::ModifiedRecursive;
    return settings;
}

// The computation and the table that the window shows.
void BM_SummaryRecompute(benchmark::State &state)
{
    const QVector<ParticipantTrials> participants = SummaryFiles::ReadTrials(BenchData::MillionRowFiles());
    const SummarySettings settings = Settings();
    qint64 rows = 0;
    for (const ParticipantTrials &trials : participants)
        rows += trials.RowCount();
    int cells = 0;
    for (auto _ : state) {
        const SummaryResult result = SummaryComputation::Run(participants, settings);
        const TextTable table = SummaryTable::Of(result);
        cells = table.rows.size();
        benchmark::DoNotOptimize(table.rows.data());
    }
    state.counters["rows"] = double(rows);
    state.counters["cells"] = cells;
}
BENCHMARK(BM_SummaryRecompute)->Unit(benchmark::kMillisecond)->UseRealTime();

// Opening the files and reading each into columns, once per file.
void BM_SummaryReadFiles(benchmark::State &state)
{
    const QStringList &paths = BenchData::MillionRowFiles();
    for (auto _ : state)
        benchmark::DoNotOptimize(SummaryFiles::ReadTrials(paths).size());
}
BENCHMARK(BM_SummaryReadFiles)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(2);

} // namespace

ZEPHLANE_BENCHMARK_MAIN()
