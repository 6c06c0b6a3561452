// The participant summary as the window computes it again whenever a
// setting or a hidden row changes: 1,000,000 rows from the sample generator
// over 40 participants, two condition columns, modified-recursive trimming.
// The files are read into columns once, as the window reads them once per
// file; that reading is timed on its own.

#include "benchdata.h"
#include "datafile.h"
#include "samplefilewriter.h"
#include "summarycomputation.h"
#include "summarytable.h"
#include "trialextractor.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

const int kParticipants = 40;
const int kRowsPerParticipant = 25000;

const QStringList &SampleFiles()
{
    static QTemporaryDir dir;
    static QStringList paths;
    if (paths.isEmpty()) {
        SampleFileOptions options;
        options.rows = kRowsPerParticipant;
        paths = SampleFileWriter::WriteParticipants(dir.path(), kParticipants, options);
        if (paths.isEmpty())
            qFatal("Cannot write the sample files");
    }
    return paths;
}

QVector<ParticipantTrials> ReadTrials()
{
    QVector<ParticipantTrials> participants;
    for (const QString &path : SampleFiles()) {
        DataFile file(path);
        const MainModel &model = file.GetMainModel();
        participants.append(TrialExtractor::Extract(model, 0, model.TotalRowCount(), QFileInfo(path).fileName()));
    }
    return participants;
}

SummarySettings Settings()
{
    SummarySettings settings;
    settings.conditionColumns = QStringList{QStringLiteral("Block Name"), QStringLiteral("Congruency")};
    settings.procedure = SummarySettings::Procedure::ModifiedRecursive;
    return settings;
}

// The computation and the table that the window shows.
void BM_SummaryRecompute(benchmark::State &state)
{
    const QVector<ParticipantTrials> participants = ReadTrials();
    const SummarySettings settings = Settings();
    qint64 rows = 0;
    for (const ParticipantTrials &trials : participants)
        rows += trials.RowCount();
    int cells = 0;
    for (auto _ : state) {
        const SummaryResult result = SummaryComputation::Run(participants, settings);
        const TextTable table = SummaryTable::Of(result);
        cells = table.rows.size();
        benchmark::DoNotOptimize(table.rows.data());
    }
    state.counters["rows"] = double(rows);
    state.counters["cells"] = cells;
}
BENCHMARK(BM_SummaryRecompute)->Unit(benchmark::kMillisecond)->UseRealTime();

// Opening the files and reading each into columns, once per file.
void BM_SummaryReadFiles(benchmark::State &state)
{
    SampleFiles();
    for (auto _ : state)
        benchmark::DoNotOptimize(ReadTrials().size());
}
BENCHMARK(BM_SummaryReadFiles)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(2);

} // namespace

ZEPHLANE_BENCHMARK_MAIN()
