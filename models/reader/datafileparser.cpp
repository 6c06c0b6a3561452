// SPDX-License-Identifier: GPL-3.0-or-later
#include "datafileparser.h"

#include "headerline.h"
#include "linecursor.h"
#include "parallelparts.h"
#include "rowtable.h"

#include <algorithm>
#include <cstring>

namespace {

const QString kErrorCode = QStringLiteral("Error\nCode");
const QString kReactionTime = QStringLiteral("Reaction\nTime");
const QString kTrialVariable = QStringLiteral("(Trial Variable)");

// Bytes a stretch should hold per section column: each stretch keeps the
// tallies of every section column for itself, a few hundred bytes each,
// and merging walks them all, so a file of many section columns and few
// rows is read as one stretch rather than pay that for each.
const qint64 kStretchBytesPerSectionColumn = 4096;

// A codec other than UTF-8 decodes on the calling thread only.
int StretchCount(const CellText &text, qint64 begin, int sectionColumns)
{
    if (text.Codec())
        return 1;
    return ParallelParts::CountFor(text.Size() - begin, sectionColumns * kStretchBytesPerSectionColumn);
}

// Places where stretches of about equal size start, each at a line start,
// and the end of the bytes last.
std::vector<qint64> SplitAtLines(const CellText &text, qint64 begin, int parts)
{
    const qint64 end = text.Size();
    std::vector<qint64> starts{begin};
    for (int part = 1; part < parts; ++part) {
        const qint64 target = qMax(begin + (end - begin) * part / parts, starts.back() + 1);
        if (target >= end)
            break;
        const void *feed = std::memchr(text.Data() + target - 1, '\n', size_t(end - target + 1));
        if (!feed)
            break;
        const qint64 next = static_cast<const char *>(feed) - text.Data() + 1;
        if (next >= end)
            break;
        starts.push_back(next);
    }
    starts.push_back(end);
    return starts;
}

// The kind from the title's text without its marks, which holds every
// "(Trial Variable)" the title holds.
int KindOf(const TitleRow &row, int column, bool rightOfReactionTime)
{
    const QString &title = row.titles[column];
    if (title == QLatin1String("Block\nName"))
        return 0;
    if (title == QLatin1String("Trial\nName"))
        return 1;
    if (row.Base(column).contains(kTrialVariable))
        return 2;
    return rightOfReactionTime ? 3 : -1;
}

// Inserts the entries in the maps' own order, each at the end, which costs
// one comparison of titles per entry rather than a walk down the map.
void InsertInOrder(const TitleRow &row, QVector<int> order, const QVector<QVector<SectionStats>> &values,
                   QMap<QString, QVector<SectionStats>> *map)
{
    std::sort(order.begin(), order.end(), [&](int left, int right) { return row.Less(left, right); });
    for (const int column : order)
        map->insert(map->cend(), row.titles[column], values[column]);
}

} // namespace

int ColumnSectionKind(const QString &title, bool rightOfReactionTime)
{
    if (title == QLatin1String("Block\nName"))
        return 0;
    if (title == QLatin1String("Trial\nName"))
        return 1;
    if (title.contains(kTrialVariable))
        return 2;
    return rightOfReactionTime ? 3 : -1;
}

TitleRow BuildTitles(const QString &upper, const QString &lower)
{
    const QStringList top = upper.split(QLatin1Char('\t'));
    const QStringList bottom = lower.split(QLatin1Char('\t'));
    TitleRow row;
    row.titles.reserve(bottom.size() + 1);
    RepeatMarks marks;
    marks.Add(QStringLiteral("Flag"), &row);
    for (int i = 0; i < bottom.size(); ++i) {
        const bool twoLines = i < top.size() && !top[i].isEmpty();
        marks.Add(twoLines ? top[i] + QLatin1Char('\n') + bottom[i] : bottom[i], &row);
    }
    return row;
}

DataFileParser::DataFileParser(std::shared_ptr<const CellText> text)
    : text(std::move(text))
{
}

void DataFileParser::ReadFieldLines(LineCursor &lines, QMap<QString, QString> *fields)
{
    while (!lines.AtEnd()) {
        const QString line = lines.NextLineText();
        if (HeaderLine::IsFieldLine(line)) {
            const int tab = line.indexOf(QLatin1Char('\t'));
            fields->insert(line.left(tab), line.mid(tab + 1));
        } else if (!HeaderLine::IsDotLine(line)) {
            return;
        }
    }
}

bool DataFileParser::ReadTable(LineCursor &lines)
{
    const std::string_view upper = lines.NextLine();
    const std::string_view lower = lines.NextLine();
    if (qint64(upper.size()) > CellText::kMaxDecodedBytes || qint64(lower.size()) > CellText::kMaxDecodedBytes)
        return false;
    titleRow = BuildTitles(text->Decode(upper), text->Decode(lower));
    PlanStatistics();
    ReadRows(lines.Position());
    return statistics.has_value();
}

void DataFileParser::PlanStatistics()
{
    const QStringList &titles = titleRow.titles;
    plan.errorCode = titles.indexOf(kErrorCode);
    plan.reactionTime = titles.indexOf(kReactionTime);
    for (int column = 0; column < titles.size(); ++column) {
        const int kind = KindOf(titleRow, column, column > plan.reactionTime);
        if (kind >= 0)
            plan.sections.append(SectionColumn{column, kind});
    }
}

// Each stretch is indexed and counted on a thread of its own, in one walk
// over its bytes; the statistics are then merged in file order. Where the
// order of adding could show in the sums, the rows are counted again in
// one pass.
void DataFileParser::ReadRows(qint64 begin)
{
    const std::vector<qint64> starts = SplitAtLines(*text, begin, StretchCount(*text, begin, plan.sections.size()));
    const int parts = int(starts.size()) - 1;
    const int fields = titleRow.titles.size() - 1;
    std::vector<std::optional<RowChunk>> chunks(static_cast<size_t>(parts));
    std::vector<ChunkStatistics> counted;
    for (int part = 0; part < parts; ++part)
        counted.emplace_back(plan, *text, false);
    ParallelParts::Run(parts, [&](int part) {
        ChunkStatistics &statistics = counted[size_t(part)];
        chunks[size_t(part)].emplace(text->Bytes(), starts[size_t(part)], starts[size_t(part) + 1], fields,
                                     [&](const LineCells &line) { statistics.AddLine(line); });
        statistics.EndLines();
    });

    qint64 rows = 0;
    std::vector<RowChunk> indexed;
    for (std::optional<RowChunk> &chunk : chunks) {
        rows += chunk->RowCount();
        indexed.push_back(std::move(*chunk));
    }
    if (rows > qint64(INT_MAX))
        return;
    rowCount = int(rows);
    for (int part = 1; part < parts; ++part)
        counted[0].Merge(counted[size_t(part)]);
    statistics.emplace(std::move(counted[0]));
    counted.clear();
    if (!statistics->OrderFree()) {
        statistics.emplace(plan, *text, true);
        for (int part = 0; part < parts; ++part)
            RowChunk::ReadLines(text->Bytes(), starts[size_t(part)], starts[size_t(part) + 1], fields,
                                [&](const LineCells &line) { statistics->AddLine(line); });
        statistics->EndLines();
    }
    BuildColumns(std::make_shared<const RowTable>(text, std::move(indexed)));
}

// A column without a single value needs no cells at all.
void DataFileParser::BuildColumns(const std::shared_ptr<const RowTable> &table)
{
    const int fields = titleRow.titles.size() - 1;
    columns.reserve(fields + 1);
    columns.append(DataColumn(rowCount));
    for (int field = 0; field < fields; ++field) {
        const std::vector<RowChunk> &chunks = table->Chunks();
        const bool hasText =
            std::any_of(chunks.begin(), chunks.end(), [&](const RowChunk &chunk) { return chunk.HasText(field); });
        if (!hasText) {
            columns.append(DataColumn(rowCount));
            continue;
        }
        DataColumn column;
        column.values = CellList::FromTable(table, field);
        column.allEmpty = false;
        columns.append(column);
    }
}

SectionStores DataFileParser::TakeStatistics(SectionStats *overall)
{
    SectionStores stores;
    const QVector<QVector<SectionStats>> sections = statistics->Finish(overall);
    QVector<QVector<SectionStats>> byColumn(titleRow.titles.size());
    for (int i = 0; i < plan.sections.size(); ++i) {
        const SectionColumn &section = plan.sections[i];
        if (section.kind == 0)
            stores.blocks = sections[i];
        else if (section.kind == 1)
            stores.trials = sections[i];
        else
            byColumn[section.column] = sections[i];
    }
    FillTitleMaps(byColumn, &stores);
    return stores;
}

// Every column right of "Reaction\nTime" (all of them when there is none)
// has an entry, even one that no row fills; a trial variable column left of
// it has one once there are rows.
void DataFileParser::FillTitleMaps(const QVector<QVector<SectionStats>> &sections, SectionStores *stores) const
{
    QVector<int> trialVariables;
    QVector<int> codeColumns;
    for (int column = 0; column < titleRow.titles.size(); ++column) {
        const bool right = column > plan.reactionTime;
        if (!right && (rowCount == 0 || KindOf(titleRow, column, false) != 2))
            continue;
        if (titleRow.Base(column).contains(kTrialVariable))
            trialVariables.append(column);
        else
            codeColumns.append(column);
    }
    InsertInOrder(titleRow, trialVariables, sections, &stores->trialVariables);
    InsertInOrder(titleRow, codeColumns, sections, &stores->codeColumns);
}

void DataFileParser::HandOver(QStringList *titles, QVector<DataColumn> *tableColumns,
                              std::shared_ptr<const TitleMarkStore> *marks)
{
    titles->swap(titleRow.titles);
    *marks = std::move(titleRow.marks);
    tableColumns->swap(columns);
    titleRow = TitleRow();
    columns.clear();
    rowCount = 0;
}
