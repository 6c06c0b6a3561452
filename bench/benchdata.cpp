// SPDX-License-Identifier: GPL-3.0-or-later
#include "benchdata.h"

#include "analysissession.h"
#include "samplefilewriter.h"

#include <QAction>
#include <QFile>
#include <QFileInfo>
#include <QListWidget>
#include <QProcess>
#include <QTableView>
#include <QTemporaryDir>

#include <sys/resource.h>

namespace BenchData {

namespace {

const int kMillionRowParticipants = 40;
const int kMillionRowTrials = 25000;

} // namespace

DataFileBuilder Participant(int participant, int rows)
{
    static const char *const codes[] = {"C", "C", "C", "E", "C", "NR", "C", "SC"};
    DataFileBuilder builder;
    builder.Experiment(QStringLiteral("Stroop")).Date(QStringLiteral("2026-03-%1").arg(participant % 28 + 1));
    const bool extra = participant % 10 == 9;
    if (extra) {
        builder.Titles({"Participant", "Session", "Block", "Block", "Trial", "Trial", "Trial", "Stimulus",
                        "Expected", "Actual", "Error", "Reaction", "", "Pressed Or", "Congruency", "Stimulus", "Hand"},
                       {"Name", "Number", "Number", "Name", "Name", "Number", "Repetition", "Name", "Response",
                        "Response", "Code", "Time", "Key", "Released", "(Trial Variable)", "Side", "(Trial Variable)"});
    } else {
        builder.KelmarunTitles();
    }
    for (int row = 0; row < rows; ++row) {
        const QString number = QString::number(row + 1);
        QStringList cells{QStringLiteral("P%1").arg(participant), "1", QString::number(row / 100 + 1),
                          QStringLiteral("Block %1").arg(row / 100 + 1), QStringLiteral("Trial %1").arg(row % 20),
                          number, "1", "stim" + number, "z", "z", codes[row % 8],
                          QString::number(250 + (row * 37) % 700) + ".5", "z", "Pressed",
                          row % 3 ? "congruent" : "incongruent", row % 2 ? "left" : "right"};
        if (extra)
            cells << (row % 2 ? "left hand" : "right hand");
        builder.Row(cells);
    }
    return builder;
}

double WriteParticipants(const QString &directory, int files, int rows, QStringList *paths)
{
    double bytes = 0;
    for (int i = 0; i < files; ++i) {
        const QString path = Participant(i, rows).Write(directory + QStringLiteral("/p%1.txt").arg(i));
        paths->append(path);
        bytes += double(QFileInfo(path).size());
    }
    return bytes;
}

void RunTool(benchmark::State &state, const QString &program, const QStringList &arguments, double inputBytes,
             const QString &output)
{
    for (auto _ : state) {
        QProcess process;
        process.start(program, arguments);
        if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
            state.SkipWithError(qPrintable(QFileInfo(program).fileName() + QStringLiteral(" failed")));
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

void RunToolOnParticipants(benchmark::State &state, const QString &program, QStringList options,
                           const QTemporaryDir &dir, int files, int rows)
{
    const QString output = dir.filePath(QStringLiteral("output"));
    options << QStringLiteral("--quiet") << QStringLiteral("-o") << output;
    const double inputBytes = WriteParticipants(dir.path(), files, rows, &options);
    RunTool(state, program, options, inputBytes, output);
}

const QStringList &MillionRowFiles()
{
    static QTemporaryDir dir;
    static QStringList paths;
    if (paths.isEmpty()) {
        SampleFileOptions options;
        options.rows = kMillionRowTrials;
        paths = SampleFileWriter::WriteParticipants(dir.path(), kMillionRowParticipants, options);
        if (paths.isEmpty())
            qFatal("Cannot write the sample files");
    }
    return paths;
}

MillionRowWindow::MillionRowWindow()
{
    window.show();
    window.OpenFiles(MillionRowFiles());
    window.findChild<QListWidget *>(QStringLiteral("fileNamesList"))->selectAll();
}

AnalysisSession &MillionRowWindow::Session()
{
    return *window.findChild<AnalysisSession *>(QStringLiteral("analysisSession"));
}

QTableView *MillionRowWindow::Raw()
{
    return window.findChild<QTableView *>(QStringLiteral("rawDataView"));
}

void MillionRowWindow::Trigger(const char *action)
{
    window.findChild<QAction *>(QString::fromLatin1(action))->trigger();
}

void MillionRowWindow::Count(benchmark::State &state)
{
    state.counters["rows"] = kMillionRowParticipants * kMillionRowTrials;
    state.counters["cells"] = Session().Result().cells.size();
}

double StatusBytes(const QByteArray &key)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly | QIODevice::Text))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(key))
            return line.mid(key.size()).trimmed().split(' ').value(0).toDouble() * 1024.0;
    }
    return 0;
}

void ResetPeak()
{
    QFile clearRefs(QStringLiteral("/proc/self/clear_refs"));
    if (clearRefs.open(QIODevice::WriteOnly))
        clearRefs.write("5");
}

} // namespace BenchData
