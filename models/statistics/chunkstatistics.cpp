#include "chunkstatistics.h"

#include "cellnumber.h"

#include <QHash>
#include <QStringList>

#include <limits>
#include <string_view>
#include <unordered_map>

namespace {

const quint64 kExactDoubles = quint64(1) << 53;

int CodeSlot(std::string_view bytes, const CellText &text)
{
    if (text.Codec() || bytes.find('\r') != std::string_view::npos)
        return CodeIndex(text.Decode(bytes));
    if (bytes == "C")
        return 0;
    if (bytes == "E")
        return 1;
    if (bytes == "NR")
        return 2;
    return bytes == "SC" ? 3 : -1;
}

// The time as the statistics take it: read as a double, 0 when that
// fails, truncated toward zero.
int TruncatedTime(std::string_view bytes, const CellText &text)
{
    int value = 0;
    if (CellNumber::ParsePlainTruncated(bytes, &value))
        return value;
    bool ok = false;
    return CellNumber::TruncateToInt(text.ToDouble(bytes, &ok));
}

// Rows counted together, each slot as whole numbers.
struct RowSums
{
    qint64 rows = 0;
    qint64 counts[4] = {};
    qint64 sums[4] = {};

    void AddRow(int slot, int rt)
    {
        ++rows;
        if (slot >= 0) {
            ++counts[slot];
            sums[slot] += rt;
        }
    }

    void Add(const RowSums &other)
    {
        rows += other.rows;
        for (int k = 0; k < 4; ++k) {
            counts[k] += other.counts[k];
            sums[k] += other.sums[k];
        }
    }
};

} // namespace

void ChunkStatistics::Totals::AddToSlot(int slot, int rt)
{
    if (slot < 0)
        return;
    counts[slot] += 1;
    sums[slot] += rt;
}

void ChunkStatistics::Totals::Add(const Totals &other)
{
    for (int k = 0; k < 4; ++k) {
        counts[k] += other.counts[k];
        sums[k] += other.sums[k];
    }
}

SectionStats ChunkStatistics::Totals::Record(const QString &name) const
{
    SectionStats record(name);
    for (int k = 0; k < 4; ++k) {
        record.counts[k] = counts[k];
        record.sums[k] = sums[k];
    }
    return record;
}

// The sections of one column. Rows are matched to sections by the bytes of
// their cell first, so each distinct cell is decoded only once.
class ChunkStatistics::Tally
{
public:
    Tally(const CellText &text, bool foldsSelfCorrect)
        : text(&text)
        , foldsSelfCorrect(foldsSelfCorrect)
    {
    }

    void Add(std::string_view bytes, int slot, int rt) { totals[size_t(Find(bytes))].AddToSlot(Slot(slot), rt); }

    // An empty or missing cell files the row under "<No Name>".
    int NoName() { return Find(std::string_view()); }

    void AddSums(int position, const RowSums &sums)
    {
        Totals &record = totals[size_t(position)];
        for (int k = 0; k < 4; ++k) {
            record.counts[Slot(k)] += double(sums.counts[k]);
            record.sums[Slot(k)] += double(sums.sums[k]);
        }
    }

    void Merge(const Tally &later)
    {
        for (int i = 0; i < later.names.size(); ++i) {
            const int position = positions.value(later.names[i], -1);
            if (position >= 0) {
                totals[size_t(position)].Add(later.totals[size_t(i)]);
            } else {
                positions.insert(later.names[i], names.size());
                names.append(later.names[i]);
                totals.push_back(later.totals[size_t(i)]);
            }
        }
    }

    QVector<SectionStats> Sections() const
    {
        QVector<SectionStats> sections;
        sections.reserve(names.size());
        for (int i = 0; i < names.size(); ++i)
            sections.append(totals[size_t(i)].Record(names[i]));
        return sections;
    }

private:
    // The block column counts "SC" as "C", as the whole-file record does.
    int Slot(int slot) const { return foldsSelfCorrect && slot == 3 ? 0 : slot; }

    int Find(std::string_view bytes)
    {
        // Rows of one block or trial come in runs, so the last section is
        // the likeliest and cheapest to try.
        if (last >= 0 && bytes == lastBytes)
            return last;
        const auto found = byBytes.find(bytes);
        if (found != byBytes.end()) {
            last = found->second;
        } else {
            const QString name = bytes.empty() ? QStringLiteral("<No Name>") : text->Decode(bytes);
            last = positions.value(name, -1);
            if (last < 0) {
                last = names.size();
                positions.insert(name, last);
                names.append(name);
                totals.emplace_back();
            }
            byBytes.emplace(bytes, last);
        }
        lastBytes = bytes;
        return last;
    }

    const CellText *text;
    bool foldsSelfCorrect;
    // The sections in the order they first appear.
    QStringList names;
    std::vector<Totals> totals;
    QHash<QString, int> positions;
    std::unordered_map<std::string_view, int> byBytes;
    std::string_view lastBytes;
    int last = -1;
};

// Rows of a chunk by the number of cells they have, for the cells they lack.
struct ChunkStatistics::MissingCells
{
    RowSums all;
    // Rows by their first missing model column, up to the last section column.
    std::vector<RowSums> byFirstMissing;
};

ChunkStatistics::ChunkStatistics(const StatisticsPlan &plan, const CellText &text, bool inRowOrder)
    : plan(plan)
    , text(text)
    , inRowOrder(inRowOrder)
    , missing(std::make_unique<MissingCells>())
{
    tallies.reserve(size_t(plan.sections.size()));
    for (const SectionColumn &section : plan.sections) {
        tallies.emplace_back(text, section.kind == 0);
        countsOverall = countsOverall || section.kind == 0;
    }
}

ChunkStatistics::~ChunkStatistics() = default;
ChunkStatistics::ChunkStatistics(ChunkStatistics &&) noexcept = default;

void ChunkStatistics::AddLine(const LineCells &line)
{
    const int count = plan.sections.size();
    const int lastColumn = count == 0 ? 0 : plan.sections.last().column;
    // Model column c is field c - 1 of the line; column 0 is never there.
    auto cell = [&](int column) { return column > 0 ? line.Cell(column - 1) : std::string_view(); };
    const qint64 present = line.Count() + 1;
    const int slot = plan.errorCode < 0 ? -1 : CodeSlot(cell(plan.errorCode), text);
    const int rt = plan.reactionTime < 0 ? 0 : TruncatedTime(cell(plan.reactionTime), text);
    if (slot >= 0)
        timeMagnitudes += quint64(qAbs(qint64(rt)));
    if (countsOverall)
        overall.AddToSlot(slot == 3 ? 0 : slot, rt);
    const bool firstLine = lines++ == 0;
    if (inRowOrder) {
        for (int i = 0; i < count; ++i)
            tallies[size_t(i)].Add(cell(plan.sections[i].column), slot, rt);
        return;
    }
    int i = 0;
    if (count > 0 && plan.sections[0].column == 0) {
        if (firstLine)
            tallies[0].NoName();
        i = 1;
    }
    for (; i < count && plan.sections[i].column < present; ++i)
        tallies[size_t(i)].Add(line.Cell(plan.sections[i].column - 1), slot, rt);
    missing->all.AddRow(slot, rt);
    if (present > lastColumn)
        return;
    // The first row that lacks a column brings "<No Name>" into its order
    // of first appearance; its counts come at the end.
    if (present < fewestPresent) {
        for (int j = i; j < count && plan.sections[j].column < fewestPresent; ++j)
            tallies[size_t(j)].NoName();
        fewestPresent = int(present);
    }
    if (missing->byFirstMissing.empty())
        missing->byFirstMissing.resize(size_t(lastColumn) + 1);
    missing->byFirstMissing[size_t(present)].AddRow(slot, rt);
}

void ChunkStatistics::EndLines()
{
    if (!inRowOrder)
        AddMissing(*missing);
}

void ChunkStatistics::AddMissing(const MissingCells &missing)
{
    RowSums lacking;
    size_t firstMissing = 0;
    for (int i = 0; i < plan.sections.size(); ++i) {
        const size_t column = size_t(plan.sections[i].column);
        const RowSums *sums = &lacking;
        if (column == 0) {
            sums = &missing.all;
        } else {
            for (; firstMissing <= column && firstMissing < missing.byFirstMissing.size(); ++firstMissing)
                lacking.Add(missing.byFirstMissing[firstMissing]);
        }
        if (sums->rows > 0)
            tallies[size_t(i)].AddSums(tallies[size_t(i)].NoName(), *sums);
    }
}

void ChunkStatistics::Merge(const ChunkStatistics &later)
{
    overall.Add(later.overall);
    for (size_t i = 0; i < tallies.size(); ++i)
        tallies[i].Merge(later.tallies[i]);
    timeMagnitudes += later.timeMagnitudes;
}

bool ChunkStatistics::OrderFree() const
{
    return timeMagnitudes < kExactDoubles;
}

QVector<QVector<SectionStats>> ChunkStatistics::Finish(SectionStats *overall)
{
    *overall = this->overall.Record(QString());
    overall->Finish();
    QVector<QVector<SectionStats>> sections;
    sections.reserve(int(tallies.size()));
    for (const Tally &tally : tallies) {
        sections.append(tally.Sections());
        FinishAll(sections.last());
    }
    return sections;
}
