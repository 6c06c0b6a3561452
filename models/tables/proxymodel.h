// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSortFilterProxyModel>

// Sorts a table whose cells are all text, comparing two cells as numbers
// when both read as numbers and as text otherwise.
class ProxyModel : public QSortFilterProxyModel
{
public:
    ProxyModel() = default;

protected:
    bool lessThan(const QModelIndex &left, const QModelIndex &right) const override;
};
