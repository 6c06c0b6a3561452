#pragma once

#include "datafilebuilder.h"

#include <QApplication>

#include <benchmark/benchmark.h>

// Data files for the benchmarks, written the way the product writes them.
namespace BenchData {

// One participant's file of `rows` trials; every tenth participant also has
// a trial variable the others lack, so that combining adds and pads a column.
DataFileBuilder Participant(int participant, int rows);

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
