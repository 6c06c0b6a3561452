#pragma once

#include <QSortFilterProxyModel>

class MainModel;

// Sorts a table whose cells are all text, comparing two cells as numbers
// when both read as numbers and as text otherwise.
class ProxyModel : public QSortFilterProxyModel
{
public:
    ProxyModel() = default;

protected:
    bool lessThan(const QModelIndex &left, const QModelIndex &right) const override;
    // The source when it is a raw table, which answers reads directly.
    const MainModel *RawTable() const;

private:
    bool ReadNumber(const QModelIndex &index, double *value) const;
    bool TextLessThan(const QModelIndex &left, const QModelIndex &right) const;

    mutable const QAbstractItemModel *checkedSource = nullptr;
    mutable const MainModel *rawTable = nullptr;
};
