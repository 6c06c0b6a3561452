#include "mainproxy.h"

#include "mainmodel.h"

#include <algorithm>

QVariant MainProxy::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role == Qt::DisplayRole && orientation == Qt::Vertical)
        return section + 1;
    return ProxyModel::headerData(section, orientation, role);
}

// The order is worked out here over the table's own arrays and handed to
// the base class as ranks, so that its sort, which asks for two cells at
// each comparison, compares two numbers. It is the very order the base
// class would reach: the same stable sort, from the rows in their order on
// screen, with the same answer to each comparison, which matters where a
// column mixes numbers and text and no order is consistent.
void MainProxy::sort(int column, Qt::SortOrder order)
{
    const MainModel *table = RawTable();
    if (table && column >= 0 && column < table->columnCount()) {
        QVector<SortKey> keys = Keys(*table, column);
        // An empty text comes before any other, and the text of a number
        // is never empty; a locale may see no difference between the empty
        // text and another, so there the texts are compared.
        const bool emptyFirst = !isSortLocaleAware();
        const auto less = [&](const SortKey &left, const SortKey &right) {
            if (left.isNumber && right.isNumber)
                return left.number < right.number;
            if (emptyFirst && (left.isEmpty || right.isEmpty))
                return left.isEmpty && !right.isEmpty;
            return RawTextLessThan(*table, column, left.row, right.row);
        };
        std::stable_sort(keys.begin(), keys.end(), [&](const SortKey &left, const SortKey &right) {
            return order == Qt::AscendingOrder ? less(left, right) : less(right, left);
        });
        QVector<int> rows(keys.size());
        std::transform(keys.cbegin(), keys.cend(), rows.begin(), [](const SortKey &key) { return key.row; });
        Rank(rows);
    }
    ProxyModel::sort(column, order);
    rankOfRow.clear();
}

// The rows left after hiding keep the order they had on screen, as they
// would if the proxy followed each removal: without a sort that is source
// order anyway, and with one the old order is put back by rank, because
// sorting afresh could differ where cells compare as text beside numbers.
// The model tells of the hiding as a change of layout, through which the
// base class keeps selections and the current index on the rows they were
// on; its sort runs while the ranks stand, and at the latest when the row
// count is asked for below.
void MainProxy::HideRows(const QVector<int> &rows)
{
    MainModel *table = qobject_cast<MainModel *>(sourceModel());
    if (!table)
        return;
    const QVector<int> hidden = table->RowsToHide(rows);
    if (sortColumn() >= 0) {
        // Each row that stays, by the number it will have.
        QVector<int> staying;
        for (const int row : RowsOnScreen()) {
            const auto after = std::lower_bound(hidden.cbegin(), hidden.cend(), row);
            if (after == hidden.cend() || *after != row)
                staying.append(row - int(after - hidden.cbegin()));
        }
        Rank(staying);
    }
    table->HideRowsAsLayoutChange(hidden);
    rowCount();
    rankOfRow.clear();
}

bool MainProxy::lessThan(const QModelIndex &left, const QModelIndex &right) const
{
    if (rankOfRow.isEmpty())
        return ProxyModel::lessThan(left, right);
    // A descending sort asks with the arguments swapped.
    const int leftRank = rankOfRow[left.row()];
    const int rightRank = rankOfRow[right.row()];
    return sortOrder() == Qt::AscendingOrder ? leftRank < rightRank : leftRank > rightRank;
}

// Side by side, so that the sort reads them in order rather than from
// all over the table.
QVector<MainProxy::SortKey> MainProxy::Keys(const MainModel &table, int column) const
{
    const MainModel::NumberColumn &numbers = table.Numbers(column);
    const QVector<int> rows = RowsOnScreen();
    QVector<SortKey> keys(rows.size());
    for (int i = 0; i < rows.size(); ++i) {
        const int fileRow = table.FileRowAt(rows[i]);
        std::string_view bytes;
        const bool isNumber = numbers.ok[fileRow];
        const bool isEmpty = !isNumber && table.CellAscii(table.index(rows[i], column), &bytes) && bytes.empty();
        keys[i] = SortKey{numbers.values[fileRow], rows[i], isNumber, isEmpty};
    }
    return keys;
}

QVector<int> MainProxy::RowsOnScreen() const
{
    const int count = rowCount();
    QVector<int> rows(count);
    for (int row = 0; row < count; ++row)
        rows[row] = mapToSource(index(row, 0)).row();
    return rows;
}

void MainProxy::Rank(const QVector<int> &rows)
{
    rankOfRow.resize(rows.size());
    for (int rank = 0; rank < rows.size(); ++rank)
        rankOfRow[rows[rank]] = rank;
}
