#pragma once

#include "proxymodel.h"

// The sorting proxy of the raw table; it numbers rows by their place on
// screen, so the numbers run from 1 without gaps whatever is sorted or hidden.
class MainProxy : public ProxyModel
{
public:
    MainProxy() = default;

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    // Hides visible rows of the raw table as one change rather than one per
    // row: following each row on its own would cost the proxy and its view
    // the whole table every time.
    void HideRows(const QVector<int> &rows);

protected:
    bool lessThan(const QModelIndex &left, const QModelIndex &right) const override;

private:
    // While rows are hidden: the place on screen of each file row before.
    QVector<int> rankOfFileRow;
};
