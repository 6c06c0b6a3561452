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
    // How lessThan compares rows `left` and `right` of the raw table in
    // `column` where the two cells are not both numbers.
    bool RawTextLessThan(const MainModel &table, int column, int left, int right) const;

private:
    bool TextLessThan(const QString &left, const QString &right) const;

    mutable const QAbstractItemModel *checkedSource = nullptr;
    mutable const MainModel *rawTable = nullptr;
};
