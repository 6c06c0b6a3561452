// Combining a selection of files into one record, and writing the merged
// output file of a large table in both layouts.

#include "datafile.h"
#include "datafilebuilder.h"

#include <QApplication>
#include <QFile>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

namespace {

const int kSelectedFiles = 200;
const int kRowsPerFile = 500;
const int kLargeFileRows = 100000;

// Closes the success box as soon as its event loop runs, so that writing
// is measured rather than a person's reaction.
class SuccessBoxCloser : public QObject
{
public:
    SuccessBoxCloser() { qApp->installEventFilter(this); }
    ~SuccessBoxCloser() override { qApp->removeEventFilter(this); }

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        auto *box = qobject_cast<QMessageBox *>(object);
        if (box && event->type() == QEvent::Show)
            QTimer::singleShot(0, box, [box] { box->button(QMessageBox::Ok)->click(); });
        return false;
    }
};

// A file as the product writes it; every tenth participant also has a
// trial variable the others lack, so combining adds and pads a column.
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
        builder.ProductTitles();
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

std::vector<std::unique_ptr<DataFile>> OpenSelection(const QTemporaryDir &dir)
{
    std::vector<std::unique_ptr<DataFile>> files;
    for (int i = 0; i < kSelectedFiles; ++i) {
        const QString path = dir.filePath(QStringLiteral("p%1.txt").arg(i));
        files.push_back(std::make_unique<DataFile>(Participant(i, kRowsPerFile).Write(path)));
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
    SuccessBoxCloser closer;
    const bool transpose = state.range(0) != 0;
    for (auto _ : state) {
        QFile output(path);
        if (!output.open(QIODevice::WriteOnly | QIODevice::Text)) {
            state.SkipWithError("cannot open the output file");
            return;
        }
        file.WriteMergedFile(output, 2, false, transpose);
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
    const DataFile file(Participant(0, kLargeFileRows).Write(dir.filePath(QStringLiteral("large.txt"))));
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

int main(int argc, char *argv[])
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
