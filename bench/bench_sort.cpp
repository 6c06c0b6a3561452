// Sorting a large raw table by a column of numbers and by a column of text,
// as a header click does it, and back to file order.

#include "benchdata.h"
#include "datafile.h"

#include <QTableView>
#include <QTemporaryDir>

#include <memory>

namespace {

const int kRows = 100000;
// Model columns of the benchmark files: 8 stimulus names, 12 reaction times.
const int kTextColumn = 8;
const int kNumberColumn = 12;

std::unique_ptr<DataFile> LargeFile(const QTemporaryDir &dir)
{
    return std::make_unique<DataFile>(BenchData::Participant(0, kRows).Write(dir.filePath(QStringLiteral("large.txt"))));
}

// Each iteration sorts the column ascending, then descending, then restores
// the file order, as three header clicks do. The view is attached so that
// its header and selection follow, as on screen.
void SortThroughProxy(benchmark::State &state, int column)
{
    QTemporaryDir dir;
    const auto file = LargeFile(dir);
    MainProxy &proxy = file->GetMainProxy();
    QTableView view;
    view.setModel(&proxy);
    for (auto _ : state) {
        proxy.sort(column, Qt::AscendingOrder);
        proxy.sort(column, Qt::DescendingOrder);
        proxy.sort(-1, Qt::AscendingOrder);
    }
    state.SetItemsProcessed(state.iterations() * 3 * kRows);
}

void BM_SortNumbers(benchmark::State &state)
{
    SortThroughProxy(state, kNumberColumn);
}
BENCHMARK(BM_SortNumbers)->Unit(benchmark::kMillisecond);

void BM_SortText(benchmark::State &state)
{
    SortThroughProxy(state, kTextColumn);
}
BENCHMARK(BM_SortText)->Unit(benchmark::kMillisecond);

} // namespace

ZEPHLANE_BENCHMARK_MAIN()
