// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "basemodel.h"
#include "datacolumn.h"

#include <QColor>
#include <QHash>
#include <QIcon>
#include <QStringList>
#include <QVector>

#include <string_view>

class QTextStream;

// The table of the raw rows of one data file: every row of the file, the
// rows now visible, their flags and the row colours. Owned by its DataFile;
// the main window owns one more as the empty placeholder grid.
//
// The visible table is allColumns read through visibleRows: a second copy
// of the cells would only cost memory, and the time of taking cells out of
// every column one row at a time when rows are hidden.
class MainModel : public BaseModel
{
    Q_OBJECT

public:
    explicit MainModel(QObject *parent = nullptr, bool isPlaceholder = false);

    // Takes over a parsed table and empties the arguments.
    void LoadData(QStringList &titles, QVector<DataColumn> &columns);
    // Makes this table a copy of `other`'s titles, rows, flags and hidden rows.
    void CopyRows(const MainModel &other);
    // Adds `other`'s rows below these, joining the columns by exact title.
    void AppendRows(const MainModel &other);

    // A sort asks for two cells at each comparison, so this asks no
    // further virtual function.
    QModelIndex index(int row, int column, const QModelIndex &parent = QModelIndex()) const override;
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    int ErrorCodeColumn() const { return errorCodeColumn; }
    int ReactionTimeColumn() const { return reactionTimeColumn; }
    // allFlags has an entry for each row of allColumns.
    int TotalRowCount() const { return allFlags.size(); }
    int HiddenRowCount() const { return hiddenRows.size(); }
    int FlaggedRowCount() const { return flaggedCount; }
    const QVector<bool> &Flags() const { return flags; }
    bool IsColumnEmpty(int column) const;
    void SetRowColors(const QVector<QColor> &colors);
    void SetColorEntireRow(bool value);

    // Writes the titles and the chosen rows of the merged output file.
    // `rowsToMerge` 0 keeps flagged rows, 1 unflagged rows, anything else
    // all rows.
    void WriteMergedRows(QTextStream &stream, int rowsToMerge, bool includeHiddenRows, bool transpose) const;

    // What sorting compares: the cell's text, and the cell read as
    // QString::toDouble reads it (false when that fails).
    QString CellText(const QModelIndex &index) const;
    // The cell's text as its bytes in the file, where they are ASCII read
    // as UTF-8, each byte one character; false otherwise.
    bool CellAscii(const QModelIndex &index, std::string_view *bytes) const;
    bool CellNumber(const QModelIndex &index, double *value) const;
    // A column's cells read one way, by file row, and whether each read
    // succeeded. Cells never change once loaded, so each column is read
    // once, when first asked for, rather than at each comparison of a sort
    // or each run of a rule, which the rule dialog repeats at every change.
    template <typename T>
    struct ReadColumn
    {
        QVector<T> values;
        QVector<bool> ok;
    };
    using NumberColumn = ReadColumn<double>;
    // Read as QString::toDouble reads them.
    const NumberColumn &Numbers(int column) const;
    // The same read for a few cells, which the parse of a whole column
    // that CellNumber keeps would not pay for.
    bool ReadNumber(const QModelIndex &index, double *value) const;
    // Row of the whole file that visible row `row` shows; it names a row for
    // as long as the file is open, hidden or not.
    int FileRowAt(int row) const { return FileRow(row); }
    // What the participant summary reads: the cells of model column
    // `column` for every file row, hidden ones included, and the file rows
    // now hidden.
    const CellList &ColumnCells(int column) const { return allColumns[column].values; }
    const QVector<int> &HiddenFileRows() const { return hiddenRows; }

    // Writes the flag of visible row `row` and reports it with RowChanged(0).
    void SetRowFlag(int row, bool value);
    // Sets the flags of those of the given file rows that are visible, and
    // clears none; the table is repainted and RowChanged(0) sent once, if
    // anything changed. Returns the number of flags set.
    int FlagFileRows(const QVector<int> &fileRows);
    // Mean and population deviation of the visible rows' reaction times,
    // stored for the deviation rule; NaN when no row is visible.
    double CalculateAverage();
    double CalculateStandardDeviation();
    // Hides the given visible rows, one notification per row from the last.
    void HideRows(QVector<int> rows);
    // Hides the same rows as HideRows, told to views as one change of
    // layout: a sorting proxy follows that at the cost of one change, where
    // each removal on its own would cost it the whole table.
    void HideRowsAsLayoutChange(QVector<int> rows);
    // The rows that the two hide: visible rows, ascending, each once.
    QVector<int> RowsToHide(QVector<int> rows) const;
    void RestoreRows();

signals:
    // How many rows the last rule matched, whether it changed flags or not.
    void MatchesCounted(int matches);
    // 0: one row's flag was written; 1: rows were hidden or restored.
    void RowChanged(int infoType);

public slots:
    void ChangeFlag(QModelIndex index);
    // `actionType` 0 lets the next rule change flags, 1 only counts;
    // `flagMode` 0 flags matching rows, 1 unflags them.
    void SetFlaggingOptions(int actionType, int flagMode);
    void SetFlagsSD(bool leftestDiv, bool leftDiv, bool rightDiv, bool rightestDiv, int SDs);
    void SetFlagsEC(bool correct, bool incorrect, bool selfCorrect, bool noResponse);
    void SetFlagsTL(bool lessOrEqual, int time1, bool greaterOrEqual, int time2);
    void SetFlagsTR(int time1, int time2);
    void ChangeRowColor(int rowType, QColor color);
    void ChangeColorOption(bool colorEntireRow, bool flagOverride);

private:
    // Row of allColumns shown at visible row `row`.
    int FileRow(int row) const { return everyRowShown ? row : visibleRows[VectorIndex(row)]; }
    int VisibleCount() const
    {
        return everyRowShown ? TotalRowCount() : visibleRows.size() - pendingRemovals.size();
    }
    // Lists the visible rows, which are not kept while every row shows.
    void ListVisibleRows();
    // Position in visibleRows and flags of visible row `row`; differs from
    // `row` only while HideRows is taking rows out.
    int VectorIndex(int row) const { return pendingRemovals.isEmpty() ? row : IndexWhileHiding(row); }
    // Visible row that shows file row `fileRow`, or -1 while it is hidden.
    int VisibleIndexOf(int fileRow) const;
    int IndexWhileHiding(int row) const;
    bool IsFlagged(int row) const { return flags[VectorIndex(row)]; }
    double CellValue(int column, int row) const;
    template <typename Matches>
    void RunRule(Matches matches);
    void CompactRemovedRows();
    void EmitWholeTableChanged();
    const QIcon &FlagIcon() const;
    void FindKeyColumns();
    QVariant RowColor(const QModelIndex &index, int role) const;
    QVector<int> MergedRowNumbers(int rowsToMerge, bool includeHiddenRows) const;
    void WritePlainRows(QTextStream &stream, const QVector<int> &rows) const;
    void WriteTransposedRows(QTextStream &stream, const QVector<int> &rows) const;

    // Read as QString::toInt (base 10) reads them, and as CodeIndex.
    const ReadColumn<int> &Integers(int column) const;
    const ReadColumn<qint8> &CodeSlots(int column) const;
    template <typename T, typename Read>
    const ReadColumn<T> &ReadOnce(QHash<int, ReadColumn<T>> &kept, int column, Read read) const;
    void ForgetParsedNumbers();

    QStringList headers;
    QVector<DataColumn> allColumns;
    QVector<bool> allFlags;
    QVector<bool> flags;
    QVector<QColor> rowColors = QVector<QColor>(5);
    bool colorEntireRow = false;
    bool flagOverride = false;
    double average = 0;
    double standardDeviation = 0;
    QVector<int> hiddenRows;
    QVector<int> visibleRows;
    // True while no row is hidden; visibleRows is then empty, since it would
    // only count up from 0.
    bool everyRowShown = true;
    mutable QIcon flagIcon;
    bool applyFlags = false;
    bool isPlaceholder;
    bool flagValue = false;

    // Found again whenever the titles change, rather than at every cell painted.
    int errorCodeColumn = -1;
    int reactionTimeColumn = -1;
    // True entries of `flags`, kept as they change.
    int flaggedCount = 0;
    // Positions of visibleRows that HideRows has announced as removed but
    // not yet taken out, largest first.
    QVector<int> pendingRemovals;
    mutable QHash<int, NumberColumn> parsedNumbers;
    mutable QHash<int, ReadColumn<int>> parsedIntegers;
    mutable QHash<int, ReadColumn<qint8>> parsedCodes;
};
