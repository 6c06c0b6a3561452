// SPDX-License-Identifier: GPL-3.0-or-later
// Opening a data file as the file list does: the validator's look at its
// header and titles, then reading every row and all the statistics. Also
// reports what the open file costs in memory against the file's size.

#include "benchdata.h"
#include "datafile.h"
#include "datafilevalidator.h"
#include "informationbox.h"
#include "samplefilewriter.h"

#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <malloc.h>

#include <memory>

namespace {

// Sample files of Kelmarun's sixteen fields, written once per run.
QString SampleFile(int rows)
{
    static QTemporaryDir dir;
    static QMap<int, QString> paths;
    if (!paths.contains(rows)) {
        SampleFileOptions options;
        options.rows = rows;
        const QString path = dir.filePath(QStringLiteral("open_%1.txt").arg(rows));
        if (!SampleFileWriter(options).Write(path))
            qFatal("Cannot write %s", qPrintable(path));
        paths.insert(rows, path);
    }
    return paths.value(rows);
}

// Lets VmHWM start again from the present size, so that it shows the peak
// of one open rather than of the whole run.
void ResetPeak()
{
    QFile clearRefs(QStringLiteral("/proc/self/clear_refs"));
    if (clearRefs.open(QIODevice::WriteOnly))
        clearRefs.write("5");
}

// Memory growth while the file is open, and the highest growth while it
// opens, in MB and as a multiple of the file's size.
void ReportMemory(benchmark::State &state, const QString &path, double fileBytes)
{
    malloc_trim(0);
    const double before = BenchData::StatusBytes("VmRSS:");
    ResetPeak();
    const bool valid = ValidateDataFiles({path}, ShowInformationBox);
    const DataFile file(path);
    const double open = BenchData::StatusBytes("VmRSS:") - before;
    const double peak = BenchData::StatusBytes("VmHWM:") - before;
    benchmark::DoNotOptimize(valid);
    state.counters["open_MB"] = open / 1e6;
    state.counters["open_x_file"] = open / fileBytes;
    state.counters["peak_MB"] = peak / 1e6;
    state.counters["peak_x_file"] = peak / fileBytes;
}

void BM_OpenFile(benchmark::State &state)
{
    const int rows = int(state.range(0));
    const QString path = SampleFile(rows);
    const double fileBytes = double(QFileInfo(path).size());
    for (auto _ : state) {
        const bool valid = ValidateDataFiles({path}, ShowInformationBox);
        auto file = std::make_unique<DataFile>(path);
        benchmark::DoNotOptimize(valid);
        benchmark::DoNotOptimize(file->Overall().TotalCount());
        // Closing is not part of opening.
        state.PauseTiming();
        file.reset();
        state.ResumeTiming();
    }
    const double iterations = double(state.iterations());
    state.counters["rows/s"] = benchmark::Counter(rows * iterations, benchmark::Counter::kIsRate);
    state.counters["MB/s"] = benchmark::Counter(fileBytes / 1e6 * iterations, benchmark::Counter::kIsRate);
    state.counters["file_MB"] = fileBytes / 1e6;
    ReportMemory(state, path, fileBytes);
}
BENCHMARK(BM_OpenFile)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

ZEPHLANE_BENCHMARK_MAIN()
