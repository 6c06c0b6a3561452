// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "datafilebuilder.h"
#include "mainwindow.h"

#include <QApplication>

class AnalysisSession;
class QTableView;
class QTemporaryDir;

#include <benchmark/benchmark.h>

// Data files for the benchmarks, written the way Kelmarun writes them.
namespace BenchData {

// One participant's file of `rows` trials; every tenth participant also has
// a trial variable the others lack, so that combining adds and pads a column.
DataFileBuilder Participant(int participant, int rows);

// Writes `files` participants' files of `rows` trials into `directory`,
// appends their paths to `paths` and returns their size in bytes.
double WriteParticipants(const QString &directory, int files, int rows, QStringList *paths);

// Runs a command-line tool as a script runs it, once per iteration, and
// reports its peak memory against `inputBytes`, the size of the files it
// reads, and the size of what it wrote to `output`.
void RunTool(benchmark::State &state, const QString &program, const QStringList &arguments, double inputBytes,
             const QString &output);
// Runs a command-line tool as RunTool does on `files` participants' files of
// `rows` trials written into `dir`: `options`, then "--quiet" and "-o" with a
// file in `dir`, then the files.
void RunToolOnParticipants(benchmark::State &state, const QString &program, QStringList options,
                           const QTemporaryDir &dir, int files, int rows);

// The sample generator's files of 40 participants with 25,000 trials
// each, 1,000,000 rows as the analysis windows must keep up with; written
// once per program into a temporary directory.
const QStringList &MillionRowFiles();

// The main window with MillionRowFiles() open and all selected, one
// combined view, for the benchmarks of the analysis windows; it takes
// seconds to make.
class MillionRowWindow
{
public:
    MillionRowWindow();

    MainWindow &Window() { return window; }
    AnalysisSession &Session();
    QTableView *Raw();
    void Trigger(const char *action);
    // The rows and cells of the summary in view.
    void Count(benchmark::State &state);

private:
    MainWindow window;
};

// A "VmRSS:"-style line of /proc/self/status, in bytes; 0 where there is none.
double StatusBytes(const QByteArray &key);
// Starts the peak of resident memory ("VmHWM:") afresh from the present
// use, where the system allows it.
void ResetPeak();

} // namespace BenchData

// main() of a benchmark program: widgets need an application object, which
// runs offscreen unless told otherwise.
#define ZEPHLANE_BENCHMARK_MAIN()                                                                  \
    int main(int argc, char *argv[])                                                               \
    {                                                                                              \
        if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))                                         \
            qputenv("QT_QPA_PLATFORM", "offscreen");                                               \
        QApplication app(argc, argv);                                                              \
        benchmark::Initialize(&argc, argv);                                                        \
        benchmark::RunSpecifiedBenchmarks();                                                       \
        benchmark::Shutdown();                                                                     \
        return 0;                                                                                  \
    }
