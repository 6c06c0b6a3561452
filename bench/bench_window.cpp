// SPDX-License-Identifier: GPL-3.0-or-later
// The main window's file list: opening a whole experiment's files in one
// go, and moving the focus to a large file, which must feel instant.

#include "benchdata.h"
#include "mainwindow.h"
#include "testenvironment.h"

#include <QListWidget>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

// The window reads and writes its settings; a temporary home keeps the
// user's own out of reach. Made before main(), so before the application.
const TestEnvironment environment;

const int kParticipants = 200;
const int kRowsPerParticipant = 500;
const int kLargeFileRows = 100000;

QStringList ParticipantFiles(const QTemporaryDir &dir)
{
    QStringList paths;
    for (int i = 0; i < kParticipants; ++i) {
        const QString path = dir.filePath(QStringLiteral("p%1.txt").arg(i));
        paths.append(BenchData::Participant(i, kRowsPerParticipant).Write(path));
    }
    return paths;
}

std::unique_ptr<MainWindow> ShownWindow()
{
    auto window = std::make_unique<MainWindow>();
    window->show();
    return window;
}

void BM_OpenParticipantFiles(benchmark::State &state)
{
    QTemporaryDir dir;
    const QStringList paths = ParticipantFiles(dir);
    for (auto _ : state) {
        state.PauseTiming();
        std::unique_ptr<MainWindow> window = ShownWindow();
        state.ResumeTiming();
        benchmark::DoNotOptimize(window->OpenFiles(paths));
        state.PauseTiming();
        window.reset();
        state.ResumeTiming();
    }
    state.counters["files"] = kParticipants;
    state.counters["rows"] = kParticipants * kRowsPerParticipant;
}
BENCHMARK(BM_OpenParticipantFiles)->Unit(benchmark::kMillisecond);

// From a small file to the large one: the connections, the views, the
// summary and the column widths of the large file.
void BM_FocusLargeFile(benchmark::State &state)
{
    QTemporaryDir dir;
    const QString small = BenchData::Participant(1, 20).Write(dir.filePath(QStringLiteral("small.txt")));
    const QString large = BenchData::Participant(0, kLargeFileRows).Write(dir.filePath(QStringLiteral("large.txt")));
    std::unique_ptr<MainWindow> window = ShownWindow();
    window->OpenFiles({small, large});
    QListWidget *list = window->findChild<QListWidget *>(QStringLiteral("fileNamesList"));
    for (auto _ : state) {
        state.PauseTiming();
        list->setCurrentRow(0);
        state.ResumeTiming();
        list->setCurrentRow(1);
    }
    state.counters["rows"] = kLargeFileRows;
}
BENCHMARK(BM_FocusLargeFile)->Unit(benchmark::kMillisecond);

} // namespace

ZEPHLANE_BENCHMARK_MAIN()
