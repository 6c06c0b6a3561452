#include "datafileparser.h"

#include "cellnumber.h"
#include "headerline.h"
#include "linecursor.h"
#include "mainmodel.h"

#include <cstring>
#include <string_view>
#include <unordered_map>

namespace {

const QString kErrorCode = QStringLiteral("Error\nCode");
const QString kReactionTime = QStringLiteral("Reaction\nTime");
const QString kTrialVariable = QStringLiteral("(Trial Variable)");

// Adds rows to one vector of sections. Rows are matched to sections by the
// bytes of their cell first, so each distinct cell is decoded only once.
class SectionTally
{
public:
    explicit SectionTally(QVector<SectionStats> *sections)
        : sections(sections)
    {
    }

    void Add(const CellList &cells, int row, const QString &code, int rt)
    {
        const std::string_view bytes = cells.BytesAt(row);
        // Rows of one block or trial come in runs, so the last section is
        // the likeliest and cheapest to try.
        if (lastPosition >= 0 && bytes == lastBytes) {
            (*sections)[lastPosition].AddRow(code, rt);
            return;
        }
        const auto found = byBytes.find(bytes);
        if (found != byBytes.end()) {
            lastPosition = found->second;
            (*sections)[lastPosition].AddRow(code, rt);
        } else {
            const QString name = bytes.empty() ? QStringLiteral("<No Name>") : cells.at(row);
            lastPosition = AccumulateSection(*sections, name, code, rt, &positions);
            byBytes.emplace(bytes, lastPosition);
        }
        lastBytes = bytes;
    }

private:
    QVector<SectionStats> *sections;
    QHash<QString, int> positions;
    std::unordered_map<std::string_view, int> byBytes;
    std::string_view lastBytes;
    int lastPosition = -1;
};

// Splits one line into `n` cells at TAB bytes: missing cells are empty and
// surplus ones are dropped.
void SplitLine(std::string_view line, int offset, std::vector<std::vector<CellSpan>> &spans)
{
    const char *at = line.data();
    const char *end = at + line.size();
    bool more = true;
    for (std::vector<CellSpan> &column : spans) {
        if (!more) {
            column.push_back(CellSpan{0, 0});
            continue;
        }
        const char *tab = static_cast<const char *>(std::memchr(at, '\t', size_t(end - at)));
        const char *cellStart = at;
        const char *cellEnd = tab ? tab : end;
        // CRs at either end of a cell decode to nothing; leaving them out
        // keeps "12.5\r" a plain number and "\r" an empty cell.
        while (cellStart < cellEnd && *cellStart == '\r')
            ++cellStart;
        while (cellEnd > cellStart && cellEnd[-1] == '\r')
            --cellEnd;
        column.push_back(CellSpan{quint32(offset + (cellStart - line.data())), quint32(cellEnd - cellStart)});
        more = tab != nullptr;
        at = tab ? tab + 1 : end;
    }
}

// Gives each title, in order, the fewest extra "#" that set it apart from
// every title before it. Titles are compared as their text without
// trailing "#" plus the number of them, so a title "A#" and a repeat "A"
// marked once meet as the same title.
class RepeatMarks
{
public:
    QString Unique(const QString &title)
    {
        int hashes = 0;
        while (hashes < title.size() && title.at(title.size() - 1 - hashes) == QLatin1Char('#'))
            ++hashes;
        const QString base = title.left(title.size() - hashes);
        const int marks = FreeCount(base, hashes);
        return marks == hashes ? title : title + QString(marks - hashes, QLatin1Char('#'));
    }

private:
    // Takes the lowest free count from `count` up. Each taken count points
    // at a count to try next, so a long run of equal titles is skipped in
    // one step rather than walked again for every repeat.
    int FreeCount(const QString &base, int count)
    {
        QHash<int, int> &next = taken[base];
        QVector<int> passed;
        for (auto found = next.constFind(count); found != next.constEnd(); found = next.constFind(count)) {
            passed.append(count);
            count = found.value();
        }
        for (const int skipped : passed)
            next[skipped] = count + 1;
        next.insert(count, count + 1);
        return count;
    }

    QHash<QString, QHash<int, int>> taken;
};

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

QStringList BuildTitles(const QString &upper, const QString &lower)
{
    const QStringList top = upper.split(QLatin1Char('\t'));
    const QStringList bottom = lower.split(QLatin1Char('\t'));
    QStringList titles;
    titles.reserve(bottom.size() + 1);
    RepeatMarks marks;
    titles.append(marks.Unique(QStringLiteral("Flag")));
    for (int i = 0; i < bottom.size(); ++i) {
        const bool twoLines = i < top.size() && !top[i].isEmpty();
        titles.append(marks.Unique(twoLines ? top[i] + QLatin1Char('\n') + bottom[i] : bottom[i]));
    }
    return titles;
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

void DataFileParser::ReadTable(LineCursor &lines)
{
    const QString upper = lines.NextLineText();
    const QString lower = lines.NextLineText();
    titles = BuildTitles(upper, lower);

    std::vector<std::vector<CellSpan>> spans(size_t(titles.size() - 1));
    const int expected = lines.LinesLeft();
    for (std::vector<CellSpan> &column : spans)
        column.reserve(size_t(expected));
    const char *base = text->bytes.constData();
    while (!lines.AtEnd()) {
        const std::string_view line = lines.NextLine();
        SplitLine(line, int(line.data() - base), spans);
        ++rowCount;
    }

    columns.reserve(titles.size());
    columns.append(DataColumn(rowCount));
    for (std::vector<CellSpan> &column : spans)
        columns.append(ReadColumn(std::move(column)));
}

DataColumn DataFileParser::ReadColumn(std::vector<CellSpan> spans) const
{
    bool empty = true;
    for (const CellSpan &span : spans) {
        if (span.length != 0) {
            empty = false;
            break;
        }
    }
    // A column without a single value needs no slices at all.
    if (empty)
        return DataColumn(int(spans.size()));
    DataColumn column;
    column.values = CellList::FromSpans(text, std::move(spans));
    column.allEmpty = false;
    return column;
}

SectionStores DataFileParser::CollectStatistics(SectionStats *overall) const
{
    SectionStores stores;
    CreateRightHandEntries(&stores);
    QVector<QString> codes;
    QVector<int> rts;
    CollectRowFacts(&codes, &rts);

    const int reactionTime = titles.indexOf(kReactionTime);
    for (int c = 0; c < columns.size() && rowCount > 0; ++c) {
        const int kind = ColumnSectionKind(titles[c], c > reactionTime);
        if (kind < 0)
            continue;
        QVector<SectionStats> *target = kind == 0   ? &stores.blocks
                                        : kind == 1 ? &stores.trials
                                        : kind == 2 ? &stores.trialVariables[titles[c]]
                                                    : &stores.codeColumns[titles[c]];
        SectionTally tally(target);
        const CellList &cells = columns[c].values;
        for (int row = 0; row < rowCount; ++row) {
            QString code = codes[row];
            if (kind == 0)
                overall->AccumulateOverall(code, rts[row]);
            tally.Add(cells, row, code, rts[row]);
        }
    }

    overall->Finish();
    FinishAll(stores.blocks);
    FinishAll(stores.trials);
    for (QVector<SectionStats> &sections : stores.trialVariables)
        FinishAll(sections);
    for (QVector<SectionStats> &sections : stores.codeColumns)
        FinishAll(sections);
    return stores;
}

// Every column right of "Reaction\nTime" (all of them when there is none)
// has an entry, even one that no row fills.
void DataFileParser::CreateRightHandEntries(SectionStores *stores) const
{
    const int reactionTime = titles.indexOf(kReactionTime);
    for (int c = reactionTime + 1; c < titles.size(); ++c) {
        if (titles[c].contains(kTrialVariable))
            stores->trialVariables[titles[c]];
        else
            stores->codeColumns[titles[c]];
    }
}

// The code and the truncated reaction time of each row. A file without one
// of the two columns reads as having no code and a time of 0 in every row.
void DataFileParser::CollectRowFacts(QVector<QString> *codes, QVector<int> *rts) const
{
    const int errorCode = titles.indexOf(kErrorCode);
    const int reactionTime = titles.indexOf(kReactionTime);
    codes->resize(rowCount);
    rts->resize(rowCount);
    std::unordered_map<std::string_view, QString> decoded;
    for (int row = 0; row < rowCount; ++row) {
        if (errorCode >= 0) {
            const CellList &cells = columns[errorCode].values;
            const std::string_view bytes = cells.BytesAt(row);
            auto found = decoded.find(bytes);
            if (found == decoded.end())
                found = decoded.emplace(bytes, cells.at(row)).first;
            (*codes)[row] = found->second;
        }
        if (reactionTime >= 0) {
            bool ok = false;
            (*rts)[row] = CellNumber::TruncateToInt(columns[reactionTime].values.ToDouble(row, &ok));
        }
    }
}

void DataFileParser::HandOver(MainModel *model)
{
    model->LoadData(titles, columns);
    rowCount = 0;
}
