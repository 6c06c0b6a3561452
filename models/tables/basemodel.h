// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractTableModel>
#include <QIcon>
#include <QVector>

// What the two table models share: the three-state sort indicator of a
// table's header (which column, which way, and the column waiting for the
// second click that sorts it). The proxies do the sorting itself.
class BaseModel : public QAbstractTableModel
{
public:
    explicit BaseModel(QObject *parent = nullptr);

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    // Advances the state for a click on `column`; 0 unsorted, 1 ascending,
    // 2 descending.
    virtual int CycleSortState(int column);
    int SortPrepColumn() const { return sortPrepColumn; }
    void SetSortPrepColumn(int column) { sortPrepColumn = column; }
    int SortColumn() const { return sortColumn; }
    void SetSortState(int state) { sortState = state; }

private:
    const QIcon &SortIcon(int state) const;

    mutable QVector<QIcon> sortIcons;
    int sortState = 0;
    int sortColumn = -1;
    int sortPrepColumn = -1;
};
