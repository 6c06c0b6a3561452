#pragma once

#include "proxymodel.h"

// The sorting proxy of the raw table; it numbers rows by their place on
// screen, so the numbers run from 1 without gaps whatever is sorted or hidden.
class MainProxy : public ProxyModel
{
public:
    MainProxy() = default;

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    // Brackets a hiding of many rows. The model reports each row on its own,
    // and following each report would cost the proxy and its view the whole
    // table every time; the proxy takes them all as one change instead.
    void BeginRowRemovals();
    void EndRowRemovals();

protected:
    bool lessThan(const QModelIndex &left, const QModelIndex &right) const override;

private:
    void ConnectRowRemovals(bool connected);
    void InvokeLayoutSlot(const char *slot);
    QVector<int> RanksOfRemainingRows() const;

    bool removalsDeferred = false;
    // File rows in the order on screen when the hiding began.
    QVector<int> orderBefore;
    // While the rows are put in order again: each source row's place.
    QVector<int> forcedRanks;
};
