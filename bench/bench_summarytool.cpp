// zephlane-summary as a script runs it: 1,000 participant files of 500 rows,
// two condition columns, modified-recursive trimming and the exclusion
// record, with the tool's peak memory set against the size of the files it
// reads.

#include "benchdata.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

const int kFiles = 1000;
const int kRowsPerFile = 500;

void BM_SummaryToolRun(benchmark::State &state)
{
    QTemporaryDir dir;
    const QString output = dir.filePath(QStringLiteral("summary.csv"));
    QStringList arguments{QStringLiteral("--quiet"), QStringLiteral("--by"), QStringLiteral("Block Name"),
                          QStringLiteral("--by"), QStringLiteral("Congruency"), QStringLiteral("--procedure"),
                          QStringLiteral("modified-recursive"), QStringLiteral("--exclusions"),
                          dir.filePath(QStringLiteral("excluded.csv")), QStringLiteral("-o"), output};
    const double inputBytes = BenchData::WriteParticipants(dir.path(), kFiles, kRowsPerFile, &arguments);
    BenchData::RunTool(state, QStringLiteral(ZEPHLANE_SUMMARY), arguments, inputBytes, output);
}
BENCHMARK(BM_SummaryToolRun)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

} // namespace

ZEPHLANE_BENCHMARK_MAIN()
