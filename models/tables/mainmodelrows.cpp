// SPDX-License-Identifier: GPL-3.0-or-later
// MainModel's row flags, flag rules, hidden rows and row colours.

#include "mainmodel.h"

#include <algorithm>
#include <cmath>

void MainModel::SetRowFlag(int row, bool value)
{
    const int index = VectorIndex(row);
    flaggedCount += int(value) - int(flags[index]);
    flags[index] = value;
    allFlags[FileRow(row)] = value;
    emit RowChanged(0);
}

// visibleRows ascends: rows are only ever taken out of it, and it is filled
// anew in order.
int MainModel::VisibleIndexOf(int fileRow) const
{
    if (everyRowShown)
        return fileRow;
    const auto found = std::lower_bound(visibleRows.cbegin(), visibleRows.cend(), fileRow);
    return found == visibleRows.cend() || *found != fileRow ? -1 : int(found - visibleRows.cbegin());
}

int MainModel::FlagFileRows(const QVector<int> &fileRows)
{
    int set = 0;
    for (const int fileRow : fileRows) {
        const int index = VisibleIndexOf(fileRow);
        if (index < 0 || flags[index])
            continue;
        flags[index] = true;
        allFlags[fileRow] = true;
        ++flaggedCount;
        ++set;
    }
    if (set > 0) {
        EmitWholeTableChanged();
        emit RowChanged(0);
    }
    return set;
}

void MainModel::ChangeFlag(QModelIndex index)
{
    const int row = index.row();
    SetRowFlag(row, !IsFlagged(row));
    emit dataChanged(index, this->index(row, columnCount() - 1), {});
}

void MainModel::SetFlaggingOptions(int actionType, int flagMode)
{
    if (actionType == 0 || actionType == 1)
        applyFlags = actionType == 0;
    if (flagMode == 0 || flagMode == 1)
        flagValue = flagMode == 0;
}

// Each division includes its lower bound and excludes its upper one. The
// bounds are those of the rows visible when the dialog computed them.
void MainModel::SetFlagsSD(bool leftestDiv, bool leftDiv, bool rightDiv, bool rightestDiv, int SDs)
{
    const int column = reactionTimeColumn;
    const double d = SDs * standardDeviation;
    const double low = average - d;
    const double high = average + d;
    RunRule([=](int row) {
        if (column < 0)
            return false;
        const double rt = CellValue(column, row);
        return (leftestDiv && rt < low) || (leftDiv && rt >= low && rt < average)
               || (rightDiv && rt >= average && rt < high) || (rightestDiv && rt >= high);
    });
}

// The third argument goes with "SC" (slot 3) and the fourth with "NR" (slot 2).
void MainModel::SetFlagsEC(bool correct, bool incorrect, bool selfCorrect, bool noResponse)
{
    const int column = errorCodeColumn;
    const QVector<qint8> *codes = column < 0 ? nullptr : &CodeSlots(column).values;
    RunRule([=](int row) {
        if (!codes)
            return false;
        const int k = (*codes)[FileRow(row)];
        return (correct && k == 0) || (incorrect && k == 1) || (selfCorrect && k == 3)
               || (noResponse && k == 2);
    });
}

// The time rules read the cell as a whole number, so "512.9" reads as 0 here
// although the statistics see 512 and the deviation rule 512.9.
void MainModel::SetFlagsTL(bool lessOrEqual, int time1, bool greaterOrEqual, int time2)
{
    const QVector<int> *times = reactionTimeColumn < 0 ? nullptr : &Integers(reactionTimeColumn).values;
    RunRule([=](int row) {
        if (!times)
            return false;
        const int rt = (*times)[FileRow(row)];
        return (lessOrEqual && rt <= time1) || (greaterOrEqual && rt >= time2);
    });
}

void MainModel::SetFlagsTR(int time1, int time2)
{
    const QVector<int> *times = reactionTimeColumn < 0 ? nullptr : &Integers(reactionTimeColumn).values;
    RunRule([=](int row) {
        if (!times || time1 >= time2)
            return false;
        const int rt = (*times)[FileRow(row)];
        return rt >= time1 && rt <= time2;
    });
}

// Counts the visible rows that match and, when applying, writes their
// flags; views hear of nothing but RowChanged(0) per row written.
template <typename Matches>
void MainModel::RunRule(Matches matches)
{
    int counter = 0;
    const int rows = rowCount();
    for (int row = 0; row < rows; ++row) {
        if (!matches(row))
            continue;
        ++counter;
        if (applyFlags)
            SetRowFlag(row, flagValue);
    }
    emit MatchesCounted(counter);
}

double MainModel::CalculateAverage()
{
    double sum = 0;
    const int rows = rowCount();
    for (int row = 0; row < rows; ++row)
        sum += reactionTimeColumn < 0 ? 0.0 : CellValue(reactionTimeColumn, row);
    average = sum / rows;
    return average;
}

double MainModel::CalculateStandardDeviation()
{
    const double mean = CalculateAverage();
    double squares = 0;
    const int rows = rowCount();
    for (int row = 0; row < rows; ++row) {
        const double value = reactionTimeColumn < 0 ? 0.0 : CellValue(reactionTimeColumn, row);
        squares += (value - mean) * (value - mean);
    }
    standardDeviation = std::pow(squares / rows, 0.5);
    return standardDeviation;
}

double MainModel::CellValue(int column, int row) const
{
    double value = 0;
    CellNumber(index(row, column), &value);
    return value;
}

// Views hear of each row on its own, from the last upwards. Taking an entry
// out of visibleRows at each step would cost the whole vector every time,
// so removed positions are only noted, and skipped when rows are read,
// until one pass at the end takes them all out.
void MainModel::HideRows(QVector<int> rows)
{
    rows = RowsToHide(std::move(rows));
    if (!rows.isEmpty())
        ListVisibleRows();
    pendingRemovals.reserve(rows.size());
    for (int i = rows.size() - 1; i >= 0; --i) {
        const int r = rows[i];
        beginRemoveRows(QModelIndex(), r, r);
        // Every row taken out so far lay below r, so r is still its own position.
        pendingRemovals.append(r);
        flaggedCount -= int(flags[r]);
        endRemoveRows();
        hiddenRows.append(visibleRows[r]);
    }
    CompactRemovedRows();
    emit RowChanged(1);
}

// The rows that stay keep their order, and every persistent place moves
// with its row or, when its row goes, lets go.
void MainModel::HideRowsAsLayoutChange(QVector<int> rows)
{
    rows = RowsToHide(std::move(rows));
    emit layoutAboutToBeChanged();
    if (!rows.isEmpty())
        ListVisibleRows();
    const QModelIndexList places = persistentIndexList();
    pendingRemovals.reserve(rows.size());
    for (int i = rows.size() - 1; i >= 0; --i) {
        pendingRemovals.append(rows[i]);
        flaggedCount -= int(flags[rows[i]]);
        hiddenRows.append(visibleRows[rows[i]]);
    }
    CompactRemovedRows();
    QModelIndexList moved;
    moved.reserve(places.size());
    for (const QModelIndex &place : places) {
        const auto after = std::lower_bound(rows.cbegin(), rows.cend(), place.row());
        const bool gone = after != rows.cend() && *after == place.row();
        moved.append(gone ? QModelIndex() : index(place.row() - int(after - rows.cbegin()), place.column()));
    }
    changePersistentIndexList(places, moved);
    emit layoutChanged();
    emit RowChanged(1);
}

// Visible row numbers in ascending order, each once, out-of-range ones left out.
QVector<int> MainModel::RowsToHide(QVector<int> rows) const
{
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    const int visible = rowCount();
    rows.erase(std::remove_if(rows.begin(), rows.end(), [&](int row) { return row < 0 || row >= visible; }),
               rows.end());
    return rows;
}

int MainModel::IndexWhileHiding(int row) const
{
    // With the removed positions p ascending, the position of visible row
    // `row` is row + t for the smallest t with p[t] - t > row.
    const int count = pendingRemovals.size();
    auto ascending = [&](int i) { return pendingRemovals[count - 1 - i]; };
    int low = 0;
    int high = count;
    while (low < high) {
        const int middle = (low + high) / 2;
        if (ascending(middle) - middle > row)
            high = middle;
        else
            low = middle + 1;
    }
    return row + low;
}

void MainModel::CompactRemovedRows()
{
    if (pendingRemovals.isEmpty())
        return;
    int next = pendingRemovals.size() - 1;
    int kept = 0;
    for (int i = 0; i < visibleRows.size(); ++i) {
        if (next >= 0 && pendingRemovals[next] == i) {
            --next;
            continue;
        }
        visibleRows[kept] = visibleRows[i];
        flags[kept] = flags[i];
        ++kept;
    }
    visibleRows.resize(kept);
    flags.resize(kept);
    pendingRemovals.clear();
}

// The rows come back in their own places, though views are told of them as
// if they were added at the end.
void MainModel::RestoreRows()
{
    if (hiddenRows.isEmpty())
        return;
    hiddenRows.clear();
    beginInsertRows(QModelIndex(), rowCount(), TotalRowCount() - 1);
    flags = allFlags;
    visibleRows = QVector<int>();
    everyRowShown = true;
    flaggedCount = int(std::count(flags.begin(), flags.end(), true));
    endInsertRows();
    EmitWholeTableChanged();
    emit RowChanged(1);
}

void MainModel::ChangeRowColor(int rowType, QColor color)
{
    if (rowType < 0 || rowType >= rowColors.size())
        return;
    rowColors[rowType] = color;
    EmitWholeTableChanged();
}

void MainModel::ChangeColorOption(bool colorEntireRow, bool flagOverride)
{
    this->colorEntireRow = colorEntireRow;
    this->flagOverride = flagOverride;
    EmitWholeTableChanged();
}

// A table with no row has no cell to name, and nothing to repaint.
void MainModel::EmitWholeTableChanged()
{
    if (rowCount() > 0)
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1), {});
}
