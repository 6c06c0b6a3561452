// SPDX-License-Identifier: GPL-3.0-or-later
#include "proxymodel.h"

// Decided pair by pair: a number beside an empty or non-numeric cell
// compares as text, so a mixed column has no single consistent order.
bool ProxyModel::lessThan(const QModelIndex &left, const QModelIndex &right) const
{
    const QVariant leftCell = sourceModel()->data(left, Qt::DisplayRole);
    const QVariant rightCell = sourceModel()->data(right, Qt::DisplayRole);
    if (leftCell.type() == QVariant::String && rightCell.type() == QVariant::String) {
        bool leftOk = false;
        bool rightOk = false;
        const double leftNumber = leftCell.toDouble(&leftOk);
        const double rightNumber = rightCell.toDouble(&rightOk);
        if (leftOk && rightOk)
            return leftNumber < rightNumber;
    }
    return QSortFilterProxyModel::lessThan(left, right);
}
