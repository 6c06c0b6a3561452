// zephlane-merge as a script runs it: 1,000 participant files of 500 rows
// merged into one file, with the tool's peak memory set against the size of
// the files it reads.

#include "benchdata.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

const int kFiles = 1000;
const int kRowsPerFile = 500;

void BM_MergeToolRun(benchmark::State &state)
{
    QTemporaryDir dir;
    const QString output = dir.filePath(QStringLiteral("merged.txt"));
    QStringList arguments{QStringLiteral("--quiet"), QStringLiteral("-o"), output};
    const double inputBytes = BenchData::WriteParticipants(dir.path(), kFiles, kRowsPerFile, &arguments);
    BenchData::RunTool(state, QStringLiteral(ZEPHLANE_MERGE), arguments, inputBytes, output);
}
BENCHMARK(BM_MergeToolRun)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

} // namespace

ZEPHLANE_BENCHMARK_MAIN()
