#include "basemodel.h"

BaseModel::BaseModel(QObject *parent)
    : QAbstractTableModel(parent)
    , sortIcons{QIcon(), QIcon(QStringLiteral(":../img/ascending.png")),
                QIcon(QStringLiteral(":../img/descending.png"))}
{
}

QVariant BaseModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role == Qt::DecorationRole && orientation == Qt::Horizontal && section == sortColumn
        && sortState > 0 && sortState < sortIcons.size())
        return sortIcons[sortState];
    return QAbstractTableModel::headerData(section, orientation, role);
}

int BaseModel::CycleSortState(int column)
{
    if (column != sortColumn)
        sortState = 1;
    else if (sortState == 2)
        sortState = 0;
    else
        sortState++;
    sortColumn = column;
    return sortState;
}
