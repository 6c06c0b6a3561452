// SPDX-License-Identifier: GPL-3.0-or-later
// Combining a selection of files into one record, and writing the merged
// output file of a large table in both layouts.

#include "datafile.h"
#include "benchdata.h"

#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

namespace {

const int kSelectedFiles = 200;
const int kRowsPerFile = 500;
const int kLargeFileRows = 100000;

std::vector<std::unique_ptr<DataFile>> OpenSelection(const QTemporaryDir &dir)
{
    std::vector<std::unique_ptr<DataFile>> files;
    for (int i = 0; i < kSelectedFiles; ++i) {
        const QString path = dir.filePath(QStringLiteral("p%1.txt").arg(i));
        files.push_back(std::make_unique<DataFile>(BenchData::Participant(i, kRowsPerFile).Write(path)));
    }
    return files;
}

// One change of selection: a fresh record from the first file, then the rest.
std::unique_ptr<DataFile> CombineSelection(const std::vector<std::unique_ptr<DataFile>> &files)
{
    auto combined = std::make_unique<DataFile>();
    combined->CopyFrom(*files.front());
    for (size_t i = 1; i < files.size(); ++i)
        combined->Combine(*files[i]);
    return combined;
}

void WriteMerged(benchmark::State &state, const DataFile &file, const QString &path)
{
    const bool transpose = state.range(0) != 0;
    for (auto _ : state) {
        QFile output(path);
        if (!output.open(QIODevice::WriteOnly | QIODevice::Text)) {
            state.SkipWithError("cannot open the output file");
            return;
        }
        // Writing is measured, not the window's success box.
        file.WriteMergedFile(output, 2, false, transpose, [](const QString &, const QString &) {});
    }
    state.SetLabel(transpose ? "transposed" : "plain");
    state.counters["bytes"] = double(QFile(path).size());
}

void BM_CombineSelection(benchmark::State &state)
{
    QTemporaryDir dir;
    const auto files = OpenSelection(dir);
    for (auto _ : state) {
        auto combined = CombineSelection(files);
        benchmark::DoNotOptimize(combined->GetMainModel().rowCount());
        combined.reset();
    }
    state.counters["rows"] = kSelectedFiles * kRowsPerFile;
}
BENCHMARK(BM_CombineSelection)->Unit(benchmark::kMillisecond);

void BM_WriteMergedFile(benchmark::State &state)
{
    QTemporaryDir dir;
    const DataFile file(BenchData::Participant(0, kLargeFileRows).Write(dir.filePath(QStringLiteral("large.txt"))));
    WriteMerged(state, file, dir.filePath(QStringLiteral("merged.txt")));
}
BENCHMARK(BM_WriteMergedFile)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

// The same number of rows, read through the many pieces of a combined record.
void BM_WriteMergedSelection(benchmark::State &state)
{
    QTemporaryDir dir;
    const auto files = OpenSelection(dir);
    const auto combined = CombineSelection(files);
    WriteMerged(state, *combined, dir.filePath(QStringLiteral("merged.txt")));
}
BENCHMARK(BM_WriteMergedSelection)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

} // namespace

ZEPHLANE_BENCHMARK_MAIN()
