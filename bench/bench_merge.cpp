// Combining a selection of files into one record, and writing the merged
// output file of a large table in both layouts.

#include "datafile.h"
#include "benchdata.h"

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
