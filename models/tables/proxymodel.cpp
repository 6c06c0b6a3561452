#include "proxymodel.h"

#include "mainmodel.h"

// Decided pair by pair: a number beside an empty or non-numeric cell
// compares as text, so a mixed column has no single consistent order.
bool ProxyModel::lessThan(const QModelIndex &left, const QModelIndex &right) const
{
    double leftNumber = 0;
    double rightNumber = 0;
    const bool leftOk = ReadNumber(left, &leftNumber);
    const bool rightOk = ReadNumber(right, &rightNumber);
    if (leftOk && rightOk)
        return leftNumber < rightNumber;
    return TextLessThan(left, right);
}

bool ProxyModel::ReadNumber(const QModelIndex &index, double *value) const
{
    if (const MainModel *table = RawTable())
        return table->CellNumber(index, value);
    const QVariant cell = sourceModel()->data(index, Qt::DisplayRole);
    if (cell.type() != QVariant::String)
        return false;
    bool ok = false;
    *value = cell.toDouble(&ok);
    return ok;
}

bool ProxyModel::TextLessThan(const QModelIndex &left, const QModelIndex &right) const
{
    const MainModel *table = RawTable();
    if (!table)
        return QSortFilterProxyModel::lessThan(left, right);
    const QString leftText = table->CellText(left);
    const QString rightText = table->CellText(right);
    if (isSortLocaleAware())
        return leftText.localeAwareCompare(rightText) < 0;
    return leftText.compare(rightText, sortCaseSensitivity()) < 0;
}

const MainModel *ProxyModel::RawTable() const
{
    if (sourceModel() != checkedSource) {
        checkedSource = sourceModel();
        rawTable = qobject_cast<const MainModel *>(checkedSource);
    }
    return rawTable;
}
