// SPDX-License-Identifier: GPL-3.0-or-later
// zephlane-merge as a script runs it: 1,000 participant files of 500 rows
// merged into one file, with the tool's peak memory set against the size of
// the files it reads.

#include "benchdata.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

void BM_MergeToolRun(benchmark::State &state)
{
    const QTemporaryDir dir;
    BenchData::RunToolOnParticipants(state, QStringLiteral(ZEPHLANE_MERGE), {}, dir, 1000, 500);
}
BENCHMARK(BM_MergeToolRun)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

} // namespace

ZEPHLANE_BENCHMARK_MAIN()
