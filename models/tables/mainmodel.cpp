// SPDX-License-Identifier: GPL-3.0-or-later
#include "mainmodel.h"

#include "sectionstats.h"

#include <QTextStream>

#include <algorithm>
#include <numeric>

namespace {

// A title to look up by a hash of its size and its ends only: the marks of
// a repeated title stand at its end and make its size its own, and a long
// title is never walked in full to be found.
struct TitleKey
{
    QString text;

    bool operator==(const TitleKey &other) const { return text == other.text; }
};

uint qHash(const TitleKey &key, uint seed)
{
    const QStringView text(key.text);
    const qsizetype ends = qMin<qsizetype>(text.size(), 32);
    return ::qHash(text.size(), seed) ^ ::qHash(text.left(ends), seed) ^ ::qHash(text.right(ends), seed);
}

// The piece of a title on line 1 or 2 of the plain merged file. Every title
// keeps its place on both lines, so a title that gives one line no text
// still gives it its tab. "Key" and the code columns right of the reaction
// time go whole to the second line, a line break in them included; the
// other titles are split at their line breaks.
QString TitlePiece(const QString &title, bool afterReactionTime, int line)
{
    const bool codeColumn = afterReactionTime && !title.contains(QLatin1String("(Trial Variable)"));
    if (title == QLatin1String("Key") || codeColumn)
        return line == 1 ? QString() : title;
    return title.section(QLatin1Char('\n'), line - 1, line - 1);
}

// Each title goes out piece by piece: the titles of a wide file with many
// repeats hold far more text than the file, and never stand in memory at once.
void WriteTitleLine(QTextStream &stream, const QStringList &headers, int line)
{
    bool afterReactionTime = false;
    const int last = headers.size() - 1;
    for (int i = 1; i <= last; ++i) {
        stream << TitlePiece(headers[i], afterReactionTime, line);
        if (i != last)
            stream << '\t';
        if (headers[i] == QLatin1String("Reaction\nTime"))
            afterReactionTime = true;
    }
    stream << '\n';
}

} // namespace

MainModel::MainModel(QObject *parent, bool isPlaceholder)
    : BaseModel(parent)
    , isPlaceholder(isPlaceholder)
{
}

void MainModel::LoadData(QStringList &titles, QVector<DataColumn> &columns)
{
    headers.swap(titles);
    titles.clear();
    allColumns.swap(columns);
    columns.clear();
    const int rows = allColumns.isEmpty() ? 0 : allColumns.first().values.size();
    allFlags = QVector<bool>(rows, false);
    flags = allFlags;
    flaggedCount = 0;
    visibleRows.clear();
    everyRowShown = true;
    FindKeyColumns();
    ForgetParsedNumbers();
}

void MainModel::CopyRows(const MainModel &other)
{
    headers = other.headers;
    allFlags = other.allFlags;
    allColumns = other.allColumns;
    visibleRows = other.visibleRows;
    everyRowShown = other.everyRowShown;
    hiddenRows = other.hiddenRows;
    flags = other.flags;
    flaggedCount = other.flaggedCount;
    FindKeyColumns();
    ForgetParsedNumbers();
}

// Columns new in `other` go to the far right in its order. A column that
// this table had empty keeps its empty mark even when `other` fills it.
void MainModel::AppendRows(const MainModel &other)
{
    const int n = TotalRowCount();
    const int m = other.TotalRowCount();
    if (!everyRowShown || !other.everyRowShown) {
        ListVisibleRows();
        for (int row = 0; row < other.VisibleCount(); ++row)
            visibleRows.append(other.FileRow(row) + n);
    }
    for (const int row : other.hiddenRows)
        hiddenRows.append(row + n);
    for (DataColumn &column : allColumns)
        column.values.AppendEmpty(m);
    QHash<TitleKey, int> places;
    places.reserve(headers.size());
    for (int k = headers.size() - 1; k >= 0; --k)
        places.insert(TitleKey{headers[k]}, k);
    QStringList newTitles;
    for (int i = 0; i < other.headers.size(); ++i) {
        const int k = places.value(TitleKey{other.headers[i]}, -1);
        if (k < 0) {
            DataColumn column(n);
            column.Append(other.allColumns[i]);
            allColumns.append(column);
            newTitles.append(other.headers[i]);
        } else {
            allColumns[k].values.Truncate(n);
            allColumns[k].values.AppendList(other.allColumns[i].values);
        }
    }
    // The titles of a model are all different, so the new ones are exactly
    // those that joining and dropping repeats would add.
    headers.append(newTitles);
    allFlags.append(other.allFlags);
    flags.append(other.flags);
    flaggedCount += other.flaggedCount;
    std::sort(hiddenRows.begin(), hiddenRows.end());
    FindKeyColumns();
    ForgetParsedNumbers();
}

QModelIndex MainModel::index(int row, int column, const QModelIndex &parent) const
{
    if (parent.isValid() || row < 0 || column < 0 || row >= VisibleCount() || column >= headers.size())
        return QModelIndex();
    return createIndex(row, column);
}

// A table's cells have no children.
int MainModel::rowCount(const QModelIndex &parent) const
{
    if (parent.isValid() || allColumns.isEmpty())
        return 0;
    return VisibleCount();
}

void MainModel::ListVisibleRows()
{
    if (!everyRowShown)
        return;
    visibleRows.resize(TotalRowCount());
    std::iota(visibleRows.begin(), visibleRows.end(), 0);
    everyRowShown = false;
}

int MainModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : headers.size();
}

QVariant MainModel::data(const QModelIndex &index, int role) const
{
    // Views pass only valid cells; anything else is answered, not read.
    if (!index.isValid() || index.model() != this || index.row() >= MainModel::rowCount()
        || index.column() >= headers.size())
        return QVariant();
    switch (role) {
    case Qt::DisplayRole:
        return CellText(index);
    case Qt::DecorationRole:
        if (index.column() == 0 && IsFlagged(index.row()))
            return FlagIcon();
        return QVariant();
    case Qt::BackgroundRole:
    case Qt::ForegroundRole:
        return RowColor(index, role);
    default:
        return QVariant();
    }
}

QVariant MainModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role == Qt::DisplayRole && orientation == Qt::Horizontal)
        return headers.value(section);
    if (role == Qt::DisplayRole && orientation == Qt::Vertical)
        return isPlaceholder ? QVariant(QString()) : QVariant(section + 1);
    return BaseModel::headerData(section, orientation, role);
}

bool MainModel::IsColumnEmpty(int column) const
{
    if (column == 0)
        return true;
    return column > 0 && column < allColumns.size() && allColumns[column].allEmpty;
}

void MainModel::SetRowColors(const QVector<QColor> &colors)
{
    rowColors = colors;
    rowColors.resize(5);
}

void MainModel::SetColorEntireRow(bool value)
{
    colorEntireRow = value;
}

void MainModel::WriteMergedRows(QTextStream &stream, int rowsToMerge, bool includeHiddenRows,
                                bool transpose) const
{
    const QVector<int> rows = MergedRowNumbers(rowsToMerge, includeHiddenRows);
    if (transpose)
        WriteTransposedRows(stream, rows);
    else
        WritePlainRows(stream, rows);
}

QString MainModel::CellText(const QModelIndex &index) const
{
    return allColumns[index.column()].values.at(FileRow(index.row()));
}

bool MainModel::CellAscii(const QModelIndex &index, std::string_view *bytes) const
{
    return allColumns[index.column()].values.AsciiAt(FileRow(index.row()), bytes);
}

bool MainModel::CellNumber(const QModelIndex &index, double *value) const
{
    const NumberColumn &numbers = Numbers(index.column());
    const int row = FileRow(index.row());
    *value = numbers.values[row];
    return numbers.ok[row];
}

const MainModel::NumberColumn &MainModel::Numbers(int column) const
{
    return ReadOnce(parsedNumbers, column, [](const CellList &cells, int row, bool *ok) { return cells.ToDouble(row, ok); });
}

const MainModel::ReadColumn<int> &MainModel::Integers(int column) const
{
    return ReadOnce(parsedIntegers, column, [](const CellList &cells, int row, bool *ok) { return cells.ToInt(row, ok); });
}

const MainModel::ReadColumn<qint8> &MainModel::CodeSlots(int column) const
{
    return ReadOnce(parsedCodes, column, [](const CellList &cells, int row, bool *ok) {
        *ok = true;
        return qint8(CodeIndex(cells.at(row)));
    });
}

template <typename T, typename Read>
const MainModel::ReadColumn<T> &MainModel::ReadOnce(QHash<int, ReadColumn<T>> &kept, int column, Read read) const
{
    auto found = kept.find(column);
    if (found == kept.end()) {
        const CellList &cells = allColumns[column].values;
        ReadColumn<T> cellsRead{QVector<T>(cells.size()), QVector<bool>(cells.size())};
        for (int row = 0; row < cells.size(); ++row) {
            bool ok = false;
            cellsRead.values[row] = read(cells, row, &ok);
            cellsRead.ok[row] = ok;
        }
        found = kept.insert(column, cellsRead);
    }
    return *found;
}

void MainModel::ForgetParsedNumbers()
{
    parsedNumbers.clear();
    parsedIntegers.clear();
    parsedCodes.clear();
}

bool MainModel::ReadNumber(const QModelIndex &index, double *value) const
{
    bool ok = false;
    *value = allColumns[index.column()].values.ToDouble(FileRow(index.row()), &ok);
    return ok;
}

// Drawn only once a flag is shown, so that a model made without a GUI
// application, as the command-line tool makes them, never loads an image.
const QIcon &MainModel::FlagIcon() const
{
    if (flagIcon.isNull())
        flagIcon = QIcon(QStringLiteral(":/img/flag.png"));
    return flagIcon;
}

void MainModel::FindKeyColumns()
{
    errorCodeColumn = headers.indexOf(QStringLiteral("Error\nCode"));
    reactionTimeColumn = headers.indexOf(QStringLiteral("Reaction\nTime"));
}

// The code is read from allColumns at the visible row number, so once rows
// are hidden a row takes the colour of whichever file row has its number.
QVariant MainModel::RowColor(const QModelIndex &index, int role) const
{
    if (errorCodeColumn < 0 || reactionTimeColumn < 0)
        return QVariant();
    const int column = index.column();
    if (column != errorCodeColumn && column != reactionTimeColumn && !colorEntireRow)
        return QVariant();
    const int k = CodeIndex(allColumns[errorCodeColumn].values.at(index.row()));
    if (k < 0)
        return QVariant();
    if (role == Qt::ForegroundRole)
        return rowColors[k] == QColor(Qt::black) ? QVariant(QColor(Qt::white)) : QVariant();
    if (!flagOverride && rowColors[k].isValid())
        return rowColors[k];
    if (IsFlagged(index.row()))
        return rowColors[4].isValid() ? QVariant(rowColors[4]) : QVariant();
    return rowColors[k].isValid() ? QVariant(rowColors[k]) : QVariant();
}

// The loop counts shown rows but reads the full table by the same number, so
// with h rows hidden the last h rows of the file never go out, hidden or
// not. Leaving them out is deliberate.
QVector<int> MainModel::MergedRowNumbers(int rowsToMerge, bool includeHiddenRows) const
{
    QVector<bool> hidden(TotalRowCount(), false);
    for (const int row : hiddenRows)
        hidden[row] = true;
    QVector<int> rows;
    const int count = rowCount();
    for (int r = 0; r < count; ++r) {
        if ((rowsToMerge == 0 && !allFlags[r]) || (rowsToMerge == 1 && allFlags[r]))
            continue;
        if (hidden[r] && !includeHiddenRows)
            continue;
        rows.append(r);
    }
    return rows;
}

void MainModel::WritePlainRows(QTextStream &stream, const QVector<int> &rows) const
{
    WriteTitleLine(stream, headers, 1);
    WriteTitleLine(stream, headers, 2);
    for (const int r : rows) {
        for (int c = 1; c < allColumns.size(); ++c)
            stream << allColumns[c].values.at(r) << '\t';
        stream << '\n';
    }
}

// One line per column, its title first; every cell keeps its tab and the
// last line has no line end.
void MainModel::WriteTransposedRows(QTextStream &stream, const QVector<int> &rows) const
{
    const int last = headers.size() - 1;
    for (int i = 1; i <= last; ++i) {
        stream << QString(headers[i]).replace(QLatin1Char('\n'), QLatin1Char(' ')) << '\t';
        for (const int r : rows)
            stream << allColumns[i].values.at(r) << '\t';
        if (i != last)
            stream << '\n';
    }
}
