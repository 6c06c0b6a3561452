// SPDX-License-Identifier: GPL-3.0-or-later
#include "mainproxy.h"

#include "mainmodel.h"

#include <algorithm>
#include <numeric>

namespace {

// Calls `run(first, last)` for each run of consecutive numbers in the
// ascending `positions`, from the last run to the first.
template <typename Run>
void ForEachRunFromLast(const QVector<int> &positions, Run run)
{
    int end = positions.size();
    while (end > 0) {
        int start = end - 1;
        while (start > 0 && positions[start - 1] == positions[start] - 1)
            --start;
        run(positions[start], positions[end - 1]);
        end = start;
    }
}

} // namespace

void MainProxy::setSourceModel(QAbstractItemModel *model)
{
    beginResetModel();
    if (sourceModel())
        disconnect(sourceModel(), nullptr, this, nullptr);
    QAbstractProxyModel::setSourceModel(model);
    rawTable = qobject_cast<const MainModel *>(model);
    sourceRows.clear();
    proxyRows.clear();
    pendingRemoved = 0;
    pendingInserted = 0;
    if (model) {
        using Model = QAbstractItemModel;
        connect(model, &Model::dataChanged, this, &MainProxy::SourceDataChanged);
        connect(model, &Model::headerDataChanged, this, &MainProxy::SourceHeaderDataChanged);
        connect(model, &Model::rowsAboutToBeInserted, this,
                [this](const QModelIndex &, int first, int last) { SourceRowsAboutToBeInserted(first, last); });
        connect(model, &Model::rowsInserted, this,
                [this](const QModelIndex &, int first, int last) { SourceRowsInserted(first, last); });
        connect(model, &Model::rowsAboutToBeRemoved, this,
                [this](const QModelIndex &, int first, int last) { SourceRowsAboutToBeRemoved(first, last); });
        connect(model, &Model::rowsRemoved, this,
                [this](const QModelIndex &, int first, int last) { SourceRowsRemoved(first, last); });
        // Moves are taken as changes of layout, and changes of columns as a
        // reset: the raw table makes neither.
        connect(model, &Model::layoutAboutToBeChanged, this, &MainProxy::SourceLayoutAboutToBeChanged);
        connect(model, &Model::rowsAboutToBeMoved, this, &MainProxy::SourceLayoutAboutToBeChanged);
        connect(model, &Model::columnsAboutToBeMoved, this, &MainProxy::SourceLayoutAboutToBeChanged);
        connect(model, &Model::layoutChanged, this, &MainProxy::SourceLayoutChanged);
        connect(model, &Model::rowsMoved, this, &MainProxy::SourceLayoutChanged);
        connect(model, &Model::columnsMoved, this, &MainProxy::SourceLayoutChanged);
        connect(model, &Model::modelAboutToBeReset, this, &MainProxy::beginResetModel);
        connect(model, &Model::columnsAboutToBeInserted, this, &MainProxy::beginResetModel);
        connect(model, &Model::columnsAboutToBeRemoved, this, &MainProxy::beginResetModel);
        connect(model, &Model::modelReset, this, &MainProxy::SourceReset);
        connect(model, &Model::columnsInserted, this, &MainProxy::SourceReset);
        connect(model, &Model::columnsRemoved, this, &MainProxy::SourceReset);
    }
    Resort();
    endResetModel();
}

QModelIndex MainProxy::index(int row, int column, const QModelIndex &parent) const
{
    if (parent.isValid() || row < 0 || column < 0 || row >= rowCount() || column >= columnCount())
        return QModelIndex();
    return createIndex(row, column);
}

// A table's cells have no children.
QModelIndex MainProxy::parent(const QModelIndex &) const
{
    return QModelIndex();
}

// The source is asked for once in each of these: views call them for
// every cell they read.
int MainProxy::rowCount(const QModelIndex &parent) const
{
    const QAbstractItemModel *source = sourceModel();
    if (parent.isValid() || !source)
        return 0;
    if (Mapped())
        return sourceRows.size();
    return source->rowCount() - pendingRemoved - pendingInserted;
}

int MainProxy::columnCount(const QModelIndex &parent) const
{
    const QAbstractItemModel *source = sourceModel();
    return parent.isValid() || !source ? 0 : source->columnCount();
}

bool MainProxy::hasChildren(const QModelIndex &parent) const
{
    return !parent.isValid() && rowCount() > 0 && columnCount() > 0;
}

QModelIndex MainProxy::mapToSource(const QModelIndex &proxyIndex) const
{
    const QAbstractItemModel *source = sourceModel();
    if (!proxyIndex.isValid() || proxyIndex.model() != this || !source)
        return QModelIndex();
    return source->index(SourceRow(proxyIndex.row()), proxyIndex.column());
}

QModelIndex MainProxy::mapFromSource(const QModelIndex &sourceIndex) const
{
    if (!sourceIndex.isValid() || sourceIndex.model() != sourceModel())
        return QModelIndex();
    const int row = ProxyRow(sourceIndex.row());
    return row < 0 ? QModelIndex() : index(row, sourceIndex.column());
}

// Sections outside the table go to the source as -1, or give nothing
// while the table has no cells, as a general proxy's do.
QVariant MainProxy::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (!sourceModel())
        return QVariant();
    if (role == Qt::DisplayRole && orientation == Qt::Vertical)
        return section + 1;
    const int count = orientation == Qt::Vertical ? rowCount() : columnCount();
    const bool inside = section >= 0 && section < count;
    if (!inside && rowCount() * columnCount() == 0)
        return QVariant();
    const int sourceSection = !inside ? -1 : orientation == Qt::Vertical ? SourceRow(section) : section;
    return sourceModel()->headerData(sourceSection, orientation, role);
}

// The order is worked out over the table's own arrays, by a stable sort of
// the rows in their order on screen with the answer to each comparison a
// general proxy would give, which matters where a column mixes numbers and
// text and no order is consistent.
void MainProxy::sort(int column, Qt::SortOrder order)
{
    emit layoutAboutToBeChanged(QList<QPersistentModelIndex>(), QAbstractItemModel::VerticalSortHint);
    const SavedPlaces places = SavePlaces();
    sortedColumn = column;
    sortedOrder = order;
    SetOrder(SortedRows(RowsOnScreen()));
    RestorePlaces(places);
    emit layoutChanged(QList<QPersistentModelIndex>(), QAbstractItemModel::VerticalSortHint);
}

void MainProxy::setSortLocaleAware(bool on)
{
    if (localeAware == on)
        return;
    localeAware = on;
    sort(sortedColumn, sortedOrder);
}

void MainProxy::setSortCaseSensitivity(Qt::CaseSensitivity sensitivity)
{
    if (caseSensitivity == sensitivity)
        return;
    caseSensitivity = sensitivity;
    sort(sortedColumn, sortedOrder);
}

// The rows left after hiding keep the order they had on screen, as they
// would if the proxy followed each removal: without a sort that is the
// table's order anyway, and with one the old order is kept, because sorting
// afresh could differ where cells compare as text beside numbers. The model
// tells of the hiding as a change of layout, through which selections and
// the current index stay on the rows they were on.
void MainProxy::HideRows(const QVector<int> &rows)
{
    MainModel *table = qobject_cast<MainModel *>(sourceModel());
    if (!table)
        return;
    const QVector<int> hidden = table->RowsToHide(rows);
    if (sortedColumn >= 0) {
        // Each row that stays, by the number it will have.
        QVector<int> staying;
        for (const int row : RowsOnScreen()) {
            const auto after = std::lower_bound(hidden.cbegin(), hidden.cend(), row);
            if (after == hidden.cend() || *after != row)
                staying.append(row - int(after - hidden.cbegin()));
        }
        orderAfterHiding = staying;
    }
    table->HideRowsAsLayoutChange(hidden);
    orderAfterHiding.reset();
}

bool MainProxy::SortsRows() const
{
    return rawTable && sortedColumn >= 0 && sortedColumn < rawTable->columnCount();
}

// Without a mapping, rows being taken out of the source are already gone
// here, and rows being put in not yet there.
int MainProxy::SourceRow(int row) const
{
    if (Mapped())
        return sourceRows.value(row, -1);
    return row >= pendingFirst ? row + pendingRemoved + pendingInserted : row;
}

int MainProxy::ProxyRow(int sourceRow) const
{
    if (Mapped())
        return proxyRows.value(sourceRow, -1);
    const int pending = pendingRemoved + pendingInserted;
    if (sourceRow < pendingFirst)
        return sourceRow;
    return sourceRow < pendingFirst + pending ? -1 : sourceRow - pending;
}

QVector<int> MainProxy::PlacesOnScreen(int first, int last) const
{
    QVector<int> places;
    for (int row = first; row <= last; ++row) {
        if (ProxyRow(row) >= 0)
            places.append(ProxyRow(row));
    }
    std::sort(places.begin(), places.end());
    return places;
}

QVector<int> MainProxy::RowsOnScreen() const
{
    if (Mapped())
        return sourceRows;
    QVector<int> rows(rowCount());
    std::iota(rows.begin(), rows.end(), 0);
    return rows;
}

// Without a column to sort by, the rows come in the table's own order
// whichever the sort order, which needs no mapping.
QVector<int> MainProxy::SortedRows(QVector<int> rows) const
{
    if (!SortsRows())
        return QVector<int>();
    const MainModel *table = rawTable;
    QVector<SortKey> keys = Keys(*table, rows);
    // An empty text comes before any other, and the text of a number is
    // never empty; a locale may see no difference between the empty text
    // and another, so there the texts are compared.
    const bool emptyFirst = !localeAware;
    const auto less = [&](const SortKey &left, const SortKey &right) {
        if (left.isNumber && right.isNumber)
            return left.number < right.number;
        if (emptyFirst && (left.isEmpty || right.isEmpty))
            return left.isEmpty && !right.isEmpty;
        return TextLessThan(*table, left.row, right.row);
    };
    std::stable_sort(keys.begin(), keys.end(), [&](const SortKey &left, const SortKey &right) {
        return sortedOrder == Qt::AscendingOrder ? less(left, right) : less(right, left);
    });
    std::transform(keys.cbegin(), keys.cend(), rows.begin(), [](const SortKey &key) { return key.row; });
    return rows;
}

// Side by side, so that the sort reads them in order rather than from
// all over the table.
QVector<MainProxy::SortKey> MainProxy::Keys(const MainModel &table, const QVector<int> &rows) const
{
    const MainModel::NumberColumn &numbers = table.Numbers(sortedColumn);
    QVector<SortKey> keys(rows.size());
    for (int i = 0; i < rows.size(); ++i) {
        const int fileRow = table.FileRowAt(rows[i]);
        std::string_view bytes;
        const bool isNumber = numbers.ok[fileRow];
        const bool isEmpty = !isNumber && table.CellAscii(table.index(rows[i], sortedColumn), &bytes) && bytes.empty();
        keys[i] = SortKey{numbers.values[fileRow], rows[i], isNumber, isEmpty};
    }
    return keys;
}

// Text of ASCII bytes orders as the bytes do, case-sensitively and without
// regard to locale, so such cells are compared without being decoded.
bool MainProxy::TextLessThan(const MainModel &table, int left, int right) const
{
    const QModelIndex leftCell = table.index(left, sortedColumn);
    const QModelIndex rightCell = table.index(right, sortedColumn);
    std::string_view leftBytes;
    std::string_view rightBytes;
    if (!localeAware && caseSensitivity == Qt::CaseSensitive && table.CellAscii(leftCell, &leftBytes)
        && table.CellAscii(rightCell, &rightBytes))
        return leftBytes < rightBytes;
    const QString leftText = table.CellText(leftCell);
    const QString rightText = table.CellText(rightCell);
    if (localeAware)
        return leftText.localeAwareCompare(rightText) < 0;
    return leftText.compare(rightText, caseSensitivity) < 0;
}

// An empty order is the table's own.
void MainProxy::SetOrder(QVector<int> rows)
{
    sourceRows = std::move(rows);
    proxyRows.clear();
    if (sourceRows.isEmpty())
        return;
    proxyRows.fill(-1, sourceModel()->rowCount());
    for (int row = 0; row < sourceRows.size(); ++row)
        proxyRows[sourceRows[row]] = row;
}

// A sort afresh starts from the table's own order.
void MainProxy::Resort()
{
    QVector<int> rows(sourceModel() ? sourceModel()->rowCount() : 0);
    std::iota(rows.begin(), rows.end(), 0);
    SetOrder(SortedRows(rows));
}

MainProxy::SavedPlaces MainProxy::SavePlaces() const
{
    SavedPlaces places;
    for (const QModelIndex &place : persistentIndexList())
        places.append(qMakePair(place, QPersistentModelIndex(mapToSource(place))));
    return places;
}

void MainProxy::RestorePlaces(const SavedPlaces &places)
{
    QModelIndexList from;
    QModelIndexList to;
    for (const auto &place : places) {
        from.append(place.first);
        to.append(mapFromSource(place.second));
    }
    changePersistentIndexList(from, to);
}

// One notice over the rows on screen that show the changed cells.
void MainProxy::SourceDataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight,
                                  const QVector<int> &roles)
{
    if (!topLeft.isValid() || !bottomRight.isValid())
        return;
    const int end = qMin(bottomRight.row(), sourceModel()->rowCount() - 1);
    int first = topLeft.row();
    int last = end;
    if (Mapped() || pendingRemoved + pendingInserted > 0) {
        first = INT_MAX;
        last = -1;
        for (int row = topLeft.row(); row <= end; ++row) {
            const int shown = ProxyRow(row);
            if (shown >= 0) {
                first = qMin(first, shown);
                last = qMax(last, shown);
            }
        }
    }
    if (first <= last)
        emit dataChanged(index(first, topLeft.column()), index(last, bottomRight.column()), roles);
}

void MainProxy::SourceHeaderDataChanged(Qt::Orientation orientation, int first, int last)
{
    if (orientation == Qt::Horizontal) {
        emit headerDataChanged(orientation, first, last);
        return;
    }
    ForEachRunFromLast(PlacesOnScreen(first, last),
                       [&](int from, int to) { emit headerDataChanged(orientation, from, to); });
}

void MainProxy::SourceRowsAboutToBeInserted(int first, int last)
{
    if (Mapped())
        return;
    pendingFirst = first;
    pendingInserted = last - first + 1;
}

// Rows added to a sorted table that has none are sorted too.
void MainProxy::SourceRowsInserted(int first, int last)
{
    if (Mapped() || SortsRows()) {
        InsertMappedRows(first, last);
        return;
    }
    beginInsertRows(QModelIndex(), first, last);
    pendingInserted = 0;
    endInsertRows();
}

// New rows go where a general proxy without dynamic sorting puts them:
// sorted among themselves, then placed by a binary search by row number
// through the order on screen, which puts rows added at the end of the
// table at the end of the screen.
void MainProxy::InsertMappedRows(int first, int last)
{
    const int count = last - first + 1;
    for (int &row : sourceRows) {
        if (row >= first)
            row += count;
    }
    QVector<int> added(count);
    std::iota(added.begin(), added.end(), first);
    const QVector<int> sorted = SortedRows(added);
    if (!sorted.isEmpty())
        added = sorted;
    struct Interval
    {
        int place;
        QVector<int> rows;
    };
    QVector<Interval> intervals;
    int low = 0;
    for (int next = 0; next < added.size();) {
        Interval interval{0, {added[next++]}};
        for (int high = sourceRows.size() - 1; low <= high;) {
            const int middle = (low + high) / 2;
            if (interval.rows.first() < sourceRows[middle])
                high = middle - 1;
            else
                low = middle + 1;
        }
        interval.place = low;
        for (; next < added.size() && (low >= sourceRows.size() || sourceRows[low] >= added[next]); ++next)
            interval.rows.append(added[next]);
        intervals.append(interval);
    }
    for (int i = intervals.size() - 1; i >= 0; --i) {
        const Interval &interval = intervals[i];
        beginInsertRows(QModelIndex(), interval.place, interval.place + interval.rows.size() - 1);
        SetOrder(sourceRows.mid(0, interval.place) + interval.rows + sourceRows.mid(interval.place));
        pendingInserted = 0;
        endInsertRows();
    }
}

// The rows go from the screen before they go from the source, each run of
// places on screen on its own, the last run first.
void MainProxy::SourceRowsAboutToBeRemoved(int first, int last)
{
    if (!Mapped()) {
        beginRemoveRows(QModelIndex(), first, last);
        pendingFirst = first;
        pendingRemoved = last - first + 1;
        endRemoveRows();
        return;
    }
    ForEachRunFromLast(PlacesOnScreen(first, last), [&](int from, int to) {
        beginRemoveRows(QModelIndex(), from, to);
        QVector<int> rows = sourceRows;
        rows.remove(from, to - from + 1);
        // With no row left on screen the source rows still there are
        // those going, and the proxy keeps no mapping from here.
        if (rows.isEmpty()) {
            pendingFirst = first;
            pendingRemoved = last - first + 1;
        }
        SetOrder(rows);
        endRemoveRows();
    });
}

void MainProxy::SourceRowsRemoved(int first, int last)
{
    pendingRemoved = 0;
    if (!Mapped())
        return;
    const int count = last - first + 1;
    for (int &row : sourceRows) {
        if (row > last)
            row -= count;
    }
    SetOrder(sourceRows);
}

void MainProxy::SourceLayoutAboutToBeChanged()
{
    emit layoutAboutToBeChanged();
    savedPlaces = SavePlaces();
}

void MainProxy::SourceLayoutChanged()
{
    if (orderAfterHiding)
        SetOrder(*orderAfterHiding);
    else
        Resort();
    RestorePlaces(savedPlaces);
    savedPlaces.clear();
    emit layoutChanged();
}

void MainProxy::SourceReset()
{
    pendingRemoved = 0;
    pendingInserted = 0;
    Resort();
    endResetModel();
}
