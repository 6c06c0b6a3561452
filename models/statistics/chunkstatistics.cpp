// SPDX-License-Identifier: GPL-3.0-or-later
#include "chunkstatistics.h"

#include "cellkeys.h"
#include "cellnumber.h"

#include <QHash>
#include <QSet>
#include <QStringList>

#include <atomic>
#include <string_view>

namespace {

const quint64 kExactDoubles = quint64(1) << 53;
// Below kExactDoubles only where the tests ask for the pass in row order.
std::atomic<quint64> orderFreeLimit{kExactDoubles};
const int kColumnBlock = 64;

// The cell's ends have no CRs, so a cell of one or two bytes has none at
// all and is its own text.
int CodeSlot(std::string_view bytes, const CellText &text)
{
    if (!text.Codec() && bytes.size() <= 2) {
        if (bytes.size() == 1)
            return bytes[0] == 'C' ? 0 : bytes[0] == 'E' ? 1 : -1;
        return bytes == "NR" ? 2 : bytes == "SC" ? 3 : -1;
    }
    if (text.Codec() || bytes.find('\r') != std::string_view::npos)
        return CodeIndex(text.Decode(bytes));
    return -1;
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

namespace {

// A record named `name` with these counts and sums.
SectionStats Record(const SlotTotals &totals, const QString &name)
{
    SectionStats record(name);
    static_cast<SlotTotals &>(record) = totals;
    return record;
}

} // namespace

// The sections of one column. Rows are matched to sections by the bytes of
// their cell first, so each distinct cell is decoded only once.
class ChunkStatistics::Tally
{
public:
    Tally(const CellText &text, QSet<QString> &names, bool foldsSelfCorrect)
        : text(&text)
        , knownNames(&names)
        , foldsSelfCorrect(foldsSelfCorrect)
    {
    }

    Q_ALWAYS_INLINE void Add(std::string_view bytes, int slot, int rt)
    {
        totals[size_t(Find(bytes))].AddToSlot(Slot(slot), rt);
    }

    // An empty or missing cell files the row under "<No Name>".
    int NoName() { return Find(std::string_view()); }
    // Whether a row lacking this column has been met; the first brings
    // "<No Name>" into the column's order.
    bool Lacked() const { return lacked; }
    void MarkLacked()
    {
        NoName();
        lacked = true;
    }

    void AddSums(int position, const RowSums &sums)
    {
        SlotTotals &record = totals[size_t(position)];
        for (int k = 0; k < 4; ++k) {
            record.counts[Slot(k)] += double(sums.counts[k]);
            record.sums[Slot(k)] += double(sums.sums[k]);
        }
    }

    void Merge(const Tally &later)
    {
        for (int i = 0; i < later.names.size(); ++i) {
            const int position = NamePosition(later.names[i]);
            if (position >= 0)
                totals[size_t(position)].Add(later.totals[size_t(i)]);
            else
                AddSection(later.names[i], later.totals[size_t(i)]);
        }
    }

    QVector<SectionStats> Sections() const
    {
        QVector<SectionStats> sections;
        sections.reserve(names.size());
        for (int i = 0; i < names.size(); ++i)
            sections.append(Record(totals[size_t(i)], names[i]));
        return sections;
    }

private:
    // Names beyond this many are found through a hash rather than by a walk.
    static const int kIndexedNames = 8;

    // The block column counts "SC" as "C", as the whole-file record does.
    int Slot(int slot) const { return foldsSelfCorrect && slot == 3 ? 0 : slot; }

    Q_ALWAYS_INLINE int Find(std::string_view bytes)
    {
        const int position = keys.Find(bytes);
        return position >= 0 ? position : FindNew(bytes);
    }

    // Bytes not met before: their text names a section, new or not.
    Q_NEVER_INLINE int FindNew(std::string_view bytes)
    {
        const QString name = bytes.empty() ? QStringLiteral("<No Name>") : text->Decode(bytes);
        int position = NamePosition(name);
        if (position < 0)
            position = AddSection(*knownNames->insert(name), SlotTotals());
        keys.Insert(bytes, position);
        return position;
    }

    int NamePosition(const QString &name) const
    {
        if (!positions.isEmpty())
            return positions.value(name, -1);
        return names.indexOf(name);
    }

    int AddSection(const QString &name, const SlotTotals &sums)
    {
        const int position = names.size();
        names.append(name);
        totals.push_back(sums);
        if (!positions.isEmpty() || names.size() > kIndexedNames) {
            for (int i = positions.size(); i < names.size(); ++i)
                positions.insert(names[i], i);
        }
        return position;
    }

    const CellText *text;
    QSet<QString> *knownNames;
    bool foldsSelfCorrect;
    // The sections in the order they first appear.
    QStringList names;
    std::vector<SlotTotals> totals;
    QHash<QString, int> positions;
    CellKeys keys;
    bool lacked = false;
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
    , knownNames(std::make_unique<QSet<QString>>())
{
    const int sections = plan.sections.size();
    tallyBlocks.resize(size_t((sections + kColumnBlock - 1) / kColumnBlock));
    for (int i = 0; i < sections; ++i) {
        const SectionColumn &section = plan.sections[i];
        // Model column c is field c - 1 of the line.
        fields.push_back(section.column - 1);
        std::vector<Tally> &block = tallyBlocks[size_t(i / kColumnBlock)];
        block.reserve(size_t(qMin(kColumnBlock, sections - i / kColumnBlock * kColumnBlock)));
        block.emplace_back(text, *knownNames, section.kind == 0);
        countsOverall = countsOverall || section.kind == 0;
    }
}

ChunkStatistics::~ChunkStatistics() = default;
ChunkStatistics::ChunkStatistics(ChunkStatistics &&) noexcept = default;

// What a row counts as, worked out as it comes. Where the section columns
// are few, its cells are counted into the sections at once; otherwise a
// batch of rows at a time.
void ChunkStatistics::AddLine(const LineCells &line)
{
    // Model column c is field c - 1 of the line; column 0 is never there.
    auto cell = [&](int column) { return column > 0 ? line.Cell(column - 1) : std::string_view(); };
    const int slot = plan.errorCode < 0 ? -1 : CodeSlot(cell(plan.errorCode), text);
    const int rt = plan.reactionTime < 0 ? 0 : TruncatedTime(cell(plan.reactionTime), text);
    if (slot >= 0)
        timeMagnitudes += quint64(qAbs(qint64(rt)));
    if (countsOverall)
        overall.AddToSlot(slot == 3 ? 0 : slot, rt);
    if (!inRowOrder)
        AddToMissing(line.Count() + 1, slot, rt);
    if (plan.sections.size() <= kColumnBlock) {
        CountLine(line, slot, rt, 0, plan.sections.size());
        return;
    }
    batch.Add(line, slot, rt);
    if (batch.Full())
        CountBatch();
}

void ChunkStatistics::Batch::Add(const LineCells &line, int slot, int rt)
{
    starts.push_back(line.Start());
    firstEnds.push_back(ends.size());
    ends.insert(ends.end(), line.Ends(), line.Ends() + line.Count());
    codeSlots.push_back(slot);
    times.push_back(rt);
}

// A few MB of cell ends at most; a line of more cells makes a batch alone.
bool ChunkStatistics::Batch::Full() const
{
    return starts.size() >= 4096 || ends.size() >= (size_t(1) << 19);
}

LineCells ChunkStatistics::Batch::Line(int row) const
{
    const size_t first = firstEnds[size_t(row)];
    const size_t last = size_t(row) + 1 < firstEnds.size() ? firstEnds[size_t(row) + 1] : ends.size();
    return LineCells(starts[size_t(row)], ends.data() + first, qint64(last - first));
}

void ChunkStatistics::Batch::Clear()
{
    starts.clear();
    firstEnds.clear();
    ends.clear();
    codeSlots.clear();
    times.clear();
}

// The batch's room goes with its last rows: a line of many cells makes it
// megabytes, which would stand beside the records made next.
void ChunkStatistics::EndLines()
{
    CountBatch();
    batch = Batch();
    if (!inRowOrder)
        AddMissing(*missing);
}

void ChunkStatistics::AddToMissing(qint64 present, int slot, int rt)
{
    const qint64 lastColumn = fields.empty() ? 0 : fields.back() + 1;
    if (lines++ == 0 && !fields.empty() && fields.front() < 0)
        TallyAt(0).NoName();
    missing->all.AddRow(slot, rt);
    if (present > lastColumn)
        return;
    if (missing->byFirstMissing.empty())
        missing->byFirstMissing.resize(size_t(lastColumn) + 1);
    missing->byFirstMissing[size_t(present)].AddRow(slot, rt);
}

// Each column's rows in order, which is all a section's order of first
// appearance and its sums follow, in blocks of columns: the sections of a
// block are used for a whole batch of rows rather than fetched again for
// every row, which tells where a file has thousands of columns, while the
// rows' cells of the block lie close together.
void ChunkStatistics::CountBatch()
{
    const int sections = plan.sections.size();
    for (int first = 0; first < sections; first += kColumnBlock) {
        const int last = qMin(first + kColumnBlock, sections);
        for (int row = 0; row < batch.Rows(); ++row)
            CountLine(batch.Line(row), batch.Slot(row), batch.Time(row), first, last);
    }
    batch.Clear();
}

ChunkStatistics::Tally &ChunkStatistics::TallyAt(int section)
{
    return tallyBlocks[size_t(section / kColumnBlock)][size_t(section % kColumnBlock)];
}

// Counts the row into the sections of section columns `first` to `last`,
// which lie in the block of columns that starts at `first`.
// Without `inRowOrder` the first row that lacks a column brings "<No Name>"
// into that column's order; its counts come at the end.
void ChunkStatistics::CountLine(const LineCells &line, int slot, int rt, int first, int last)
{
    if (first >= last)
        return;
    Tally *const block = tallyBlocks[size_t(first / kColumnBlock)].data();
    const qint64 *const blockFields = fields.data() + first;
    for (int i = 0; i < last - first; ++i) {
        const qint64 field = blockFields[i];
        Tally &tally = block[i];
        if (field >= 0 && field < line.Count())
            tally.Add(line.PresentCell(field), slot, rt);
        else if (inRowOrder)
            tally.Add(std::string_view(), slot, rt);
        else if (field >= 0 && !tally.Lacked())
            tally.MarkLacked();
    }
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
            TallyAt(i).AddSums(TallyAt(i).NoName(), *sums);
    }
}

void ChunkStatistics::Merge(const ChunkStatistics &later)
{
    overall.Add(later.overall);
    for (size_t block = 0; block < tallyBlocks.size(); ++block) {
        for (size_t i = 0; i < tallyBlocks[block].size(); ++i)
            tallyBlocks[block][i].Merge(later.tallyBlocks[block][i]);
    }
    timeMagnitudes += later.timeMagnitudes;
}

void ChunkStatistics::SetOrderFreeLimit(quint64 limit)
{
    orderFreeLimit = limit > 0 && limit < kExactDoubles ? limit : kExactDoubles;
}

bool ChunkStatistics::OrderFree() const
{
    return timeMagnitudes < orderFreeLimit;
}

QVector<QVector<SectionStats>> ChunkStatistics::Finish(SectionStats *overall)
{
    *overall = Record(this->overall, QString());
    overall->Finish();
    QVector<QVector<SectionStats>> sections;
    sections.reserve(plan.sections.size());
    // Each block of tallies goes as soon as its records stand, and its room
    // serves the records that follow, so that the two are not held whole at
    // once.
    for (std::vector<Tally> &block : tallyBlocks) {
        for (const Tally &tally : block) {
            sections.append(tally.Sections());
            FinishAll(sections.last());
        }
        std::vector<Tally>().swap(block);
    }
    return sections;
}
