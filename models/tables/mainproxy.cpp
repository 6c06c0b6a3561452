#include "mainproxy.h"

#include "mainmodel.h"

QVariant MainProxy::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role == Qt::DisplayRole && orientation == Qt::Vertical)
        return section + 1;
    return ProxyModel::headerData(section, orientation, role);
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
    if (sortColumn() >= 0) {
        rankOfFileRow.fill(-1, table->TotalRowCount());
        const int count = rowCount();
        for (int row = 0; row < count; ++row)
            rankOfFileRow[table->FileRowAt(mapToSource(index(row, 0)).row())] = row;
    }
    table->HideRowsAsLayoutChange(rows);
    rowCount();
    rankOfFileRow.clear();
}

bool MainProxy::lessThan(const QModelIndex &left, const QModelIndex &right) const
{
    if (rankOfFileRow.isEmpty())
        return ProxyModel::lessThan(left, right);
    const MainModel *table = RawTable();
    const int leftRank = rankOfFileRow[table->FileRowAt(left.row())];
    const int rightRank = rankOfFileRow[table->FileRowAt(right.row())];
    // A descending sort asks with the arguments swapped.
    return sortOrder() == Qt::AscendingOrder ? leftRank < rightRank : leftRank > rightRank;
}
