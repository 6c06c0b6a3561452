#include "proxymodel.h"

#include "mainmodel.h"

// Decided pair by pair: a number beside an empty or non-numeric cell
// compares as text, so a mixed column has no single consistent order.
bool ProxyModel::lessThan(const QModelIndex &left, const QModelIndex &right) const
{
    if (const MainModel *table = RawTable()) {
        double leftNumber = 0;
        double rightNumber = 0;
        if (table->CellNumber(left, &leftNumber) && table->CellNumber(right, &rightNumber))
            return leftNumber < rightNumber;
        return RawTextLessThan(*table, left.column(), left.row(), right.row());
    }
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

// Text of ASCII bytes orders as the bytes do, case-sensitively and without
// regard to locale, so such cells are compared without being decoded.
bool ProxyModel::RawTextLessThan(const MainModel &table, int column, int left, int right) const
{
    const QModelIndex leftCell = table.index(left, column);
    const QModelIndex rightCell = table.index(right, column);
    std::string_view leftBytes;
    std::string_view rightBytes;
    if (!isSortLocaleAware() && sortCaseSensitivity() == Qt::CaseSensitive && table.CellAscii(leftCell, &leftBytes)
        && table.CellAscii(rightCell, &rightBytes))
        return leftBytes < rightBytes;
    return TextLessThan(table.CellText(leftCell), table.CellText(rightCell));
}

bool ProxyModel::TextLessThan(const QString &left, const QString &right) const
{
    if (isSortLocaleAware())
        return left.localeAwareCompare(right) < 0;
    return left.compare(right, sortCaseSensitivity()) < 0;
}

const MainModel *ProxyModel::RawTable() const
{
    if (sourceModel() != checkedSource) {
        checkedSource = sourceModel();
        rawTable = qobject_cast<const MainModel *>(checkedSource);
    }
    return rawTable;
}
