// SPDX-License-Identifier: GPL-3.0-or-later
// zephlane-summary as a script runs it: 1,000 participant files of 500 rows,
// two condition columns, modified-recursive trimming and the exclusion
// record, with the tool's peak memory set against the size of the files it
// reads.

#include "benchdata.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

void BM_SummaryToolRun(benchmark::State &state)
{
    const QTemporaryDir dir;
    const QStringList options{QStringLiteral("--by"),        QStringLiteral("Block Name"),
                              QStringLiteral("--by"),        QStringLiteral("Congruency"),
                              QStringLiteral("--procedure"), QStringLiteral("modified-recursive"),
                              QStringLiteral("--exclusions"), dir.filePath(QStringLiteral("excluded.csv"))};
    BenchData::RunToolOnParticipants(state, QStringLiteral(ZEPHLANE_SUMMARY), options, dir, 1000, 500);
}
BENCHMARK(BM_SummaryToolRun)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

} // namespace

ZEPHLANE_BENCHMARK_MAIN()
