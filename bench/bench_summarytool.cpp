// zephlane-summary as a script runs it: 1,000 participant files of 500 rows,
// two condition columns, modified-recursive trimming and the exclusion
// record, with the tool's peak memory set against the size of the files it
// reads.

#include "benchdata.h"

#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <sys/resource.h>

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
    double inputBytes = 0;
    for (int i = 0; i < kFiles; ++i) {
        const QString path = dir.filePath(QStringLiteral("p%1.txt").arg(i));
        arguments << BenchData::Participant(i, kRowsPerFile).Write(path);
        inputBytes += double(QFileInfo(path).size());
    }
    for (auto _ : state) {
        QProcess process;
        process.start(QStringLiteral(ZEPHLANE_SUMMARY), arguments);
        if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
            state.SkipWithError("zephlane-summary failed");
            return;
        }
    }
    // The largest resident size of any child this process has waited for:
    // here only the tool.
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    const double peakBytes = double(usage.ru_maxrss) * 1024;
    state.counters["input_MB"] = inputBytes / 1e6;
    state.counters["output_MB"] = double(QFileInfo(output).size()) / 1e6;
    state.counters["peak_MB"] = peakBytes / 1e6;
    state.counters["peak_per_input"] = peakBytes / inputBytes;
}
BENCHMARK(BM_SummaryToolRun)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

} // namespace

ZEPHLANE_BENCHMARK_MAIN()
