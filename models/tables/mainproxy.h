// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractProxyModel>
#include <QPersistentModelIndex>
#include <QVector>

#include <optional>

class MainModel;

// The sorting proxy of the raw table. It sorts as a QSortFilterProxyModel
// whose dynamic sort filter is off would, comparing two cells as numbers
// when both read as numbers and as text otherwise, and numbers rows by
// their place on screen, so the numbers run from 1 without gaps whatever is
// sorted or hidden. While the rows show in the table's own order it keeps
// no mapping of rows at all, and otherwise the order and its inverse, four
// bytes a row each: a general proxy would build and sort a mapping of every
// row as soon as a view is set on it.
class MainProxy : public QAbstractProxyModel
{
public:
    MainProxy() = default;

    void setSourceModel(QAbstractItemModel *model) override;
    QModelIndex index(int row, int column, const QModelIndex &parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    bool hasChildren(const QModelIndex &parent = QModelIndex()) const override;
    QModelIndex mapToSource(const QModelIndex &proxyIndex) const override;
    QModelIndex mapFromSource(const QModelIndex &sourceIndex) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

    int sortColumn() const { return sortedColumn; }
    Qt::SortOrder sortOrder() const { return sortedOrder; }
    // How text compares, as a QSortFilterProxyModel's properties of the
    // same names; a change sorts again.
    bool isSortLocaleAware() const { return localeAware; }
    void setSortLocaleAware(bool on);
    Qt::CaseSensitivity sortCaseSensitivity() const { return caseSensitivity; }
    void setSortCaseSensitivity(Qt::CaseSensitivity sensitivity);

    // Hides visible rows of the raw table as one change rather than one per
    // row: following each row on its own would cost the proxy and its view
    // the whole table every time.
    void HideRows(const QVector<int> &rows);

private:
    // What a sort compares a row by: the cell as a number, when it reads
    // as one, whether its text is empty, and otherwise its text, read
    // through the row.
    struct SortKey
    {
        double number;
        int row;
        bool isNumber;
        bool isEmpty;
    };
    using SavedPlaces = QVector<QPair<QModelIndex, QPersistentModelIndex>>;

    // Whether the sort column orders the rows at all.
    bool SortsRows() const;
    bool Mapped() const { return !sourceRows.isEmpty(); }
    int SourceRow(int row) const;
    int ProxyRow(int sourceRow) const;
    // The rows shown, as rows of the raw table, in their order on screen.
    QVector<int> RowsOnScreen() const;
    // The places on screen of source rows `first` to `last`, ascending.
    QVector<int> PlacesOnScreen(int first, int last) const;
    // The order a sort of `rows` gives, or the table's own order where the
    // column sorts nothing.
    QVector<int> SortedRows(QVector<int> rows) const;
    QVector<SortKey> Keys(const MainModel &table, const QVector<int> &rows) const;
    bool TextLessThan(const MainModel &table, int left, int right) const;
    void SetOrder(QVector<int> rows);
    void Resort();
    SavedPlaces SavePlaces() const;
    void RestorePlaces(const SavedPlaces &places);

    void SourceDataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight, const QVector<int> &roles);
    void SourceHeaderDataChanged(Qt::Orientation orientation, int first, int last);
    void SourceRowsAboutToBeInserted(int first, int last);
    void SourceRowsInserted(int first, int last);
    void InsertMappedRows(int first, int last);
    void SourceRowsAboutToBeRemoved(int first, int last);
    void SourceRowsRemoved(int first, int last);
    void SourceLayoutAboutToBeChanged();
    void SourceLayoutChanged();
    void SourceReset();

    int sortedColumn = -1;
    Qt::SortOrder sortedOrder = Qt::AscendingOrder;
    bool localeAware = false;
    Qt::CaseSensitivity caseSensitivity = Qt::CaseSensitive;
    // Proxy row to source row and back while the rows may stand in another
    // order than the table's own; both empty otherwise.
    QVector<int> sourceRows;
    QVector<int> proxyRows;
    // Source rows being taken out or put in while the proxy keeps no
    // mapping, which the proxy has not shown as gone or not yet shown.
    int pendingFirst = 0;
    int pendingRemoved = 0;
    int pendingInserted = 0;
    // The order the rows that stay will have after HideRows' change.
    std::optional<QVector<int>> orderAfterHiding;
    SavedPlaces savedPlaces;
    // The source, which is a raw table wherever the program sets one.
    const MainModel *rawTable = nullptr;
};
