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
// The base class's own layout handling keeps selections and the current
// index on the rows they were on.
void MainProxy::BeginRowRemovals()
{
    const MainModel *table = RawTable();
    if (removalsDeferred || !table)
        return;
    removalsDeferred = true;
    orderBefore.clear();
    if (sortColumn() >= 0) {
        const int rows = rowCount();
        orderBefore.reserve(rows);
        for (int row = 0; row < rows; ++row)
            orderBefore.append(table->FileRowAt(mapToSource(index(row, 0)).row()));
    }
    ConnectRowRemovals(false);
    InvokeLayoutSlot("_q_sourceLayoutAboutToBeChanged");
}

void MainProxy::EndRowRemovals()
{
    if (!removalsDeferred)
        return;
    removalsDeferred = false;
    ConnectRowRemovals(true);
    forcedRanks = RanksOfRemainingRows();
    InvokeLayoutSlot("_q_sourceLayoutChanged");
    rowCount();
    forcedRanks.clear();
    orderBefore.clear();
}

bool MainProxy::lessThan(const QModelIndex &left, const QModelIndex &right) const
{
    if (forcedRanks.isEmpty())
        return ProxyModel::lessThan(left, right);
    // A descending sort asks with the arguments swapped.
    const int leftRank = forcedRanks.value(left.row());
    const int rightRank = forcedRanks.value(right.row());
    return sortOrder() == Qt::AscendingOrder ? leftRank < rightRank : leftRank > rightRank;
}

QVector<int> MainProxy::RanksOfRemainingRows() const
{
    const MainModel *table = RawTable();
    if (orderBefore.isEmpty() || !table)
        return QVector<int>();
    QVector<int> rankOfFileRow(table->TotalRowCount(), -1);
    for (int rank = 0; rank < orderBefore.size(); ++rank)
        rankOfFileRow[orderBefore[rank]] = rank;
    const int rows = table->rowCount();
    QVector<int> ranks(rows);
    for (int row = 0; row < rows; ++row)
        ranks[row] = rankOfFileRow[table->FileRowAt(row)];
    return ranks;
}

void MainProxy::InvokeLayoutSlot(const char *slot)
{
    QMetaObject::invokeMethod(this, slot, Qt::DirectConnection,
                              Q_ARG(QList<QPersistentModelIndex>, {}),
                              Q_ARG(QAbstractItemModel::LayoutChangeHint, QAbstractItemModel::NoLayoutChangeHint));
}

// The base class connects these two itself, by name.
void MainProxy::ConnectRowRemovals(bool connected)
{
    const char *aboutToBeRemoved = SIGNAL(rowsAboutToBeRemoved(QModelIndex, int, int));
    const char *removed = SIGNAL(rowsRemoved(QModelIndex, int, int));
    const char *aboutToBeRemovedSlot = SLOT(_q_sourceRowsAboutToBeRemoved(QModelIndex, int, int));
    const char *removedSlot = SLOT(_q_sourceRowsRemoved(QModelIndex, int, int));
    if (connected) {
        connect(sourceModel(), aboutToBeRemoved, this, aboutToBeRemovedSlot);
        connect(sourceModel(), removed, this, removedSlot);
    } else {
        disconnect(sourceModel(), aboutToBeRemoved, this, aboutToBeRemovedSlot);
        disconnect(sourceModel(), removed, this, removedSlot);
    }
}
