#pragma once

#include "proxymodel.h"

#include <QVector>

class MainModel;

// The sorting proxy of the raw table; it numbers rows by their place on
// screen, so the numbers run from 1 without gaps whatever is sorted or hidden.
class MainProxy : public ProxyModel
{
public:
    MainProxy() = default;

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

    // Hides visible rows of the raw table as one change rather than one per
    // row: following each row on its own would cost the proxy and its view
    // the whole table every time.
    void HideRows(const QVector<int> &rows);

protected:
    bool lessThan(const QModelIndex &left, const QModelIndex &right) const override;

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

    QVector<SortKey> Keys(const MainModel &table, int column) const;
    // The rows shown, as rows of the raw table.
    QVector<int> RowsOnScreen() const;
    // Ranks the source rows by their places in `rows`.
    void Rank(const QVector<int> &rows);

    // While a sort runs: the place of each source row in the order it ends in.
    QVector<int> rankOfRow;
};
