// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "texttable.h"

#include <QAbstractTableModel>

// A TextTable for a view: its header and fields, sorted on request by one
// column, numbers by value and text as people read it ("p2" before "p10"),
// empty fields last either way. The table kept is never reordered, so that
// what is written from it stays in its own order.
class TextTableModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    // Takes a new table and sorts it as the last one was, by the column of
    // the same title; with no such column, it stands unsorted.
    void SetTable(const TextTable &table);
    const TextTable &Table() const { return table; }
    // The table with its rows in the order shown.
    TextTable ShownTable() const;
    // The column sorted by, or -1 while the table stands in its own order.
    int SortColumn() const { return sortColumn; }
    Qt::SortOrder SortOrder() const { return sortOrder; }

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    // A column of -1 puts the rows back in the table's own order.
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

private:
    void Order();
    bool IsNumeric(int column) const { return column < table.numeric.size() && table.numeric[column]; }

    TextTable table;
    // The table's row shown at each row of the view.
    QVector<int> shownRows;
    int sortColumn = -1;
    Qt::SortOrder sortOrder = Qt::AscendingOrder;
};
