// SPDX-License-Identifier: GPL-3.0-or-later
#include "basemodel.h"

BaseModel::BaseModel(QObject *parent)
    : QAbstractTableModel(parent)
{
}

QVariant BaseModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role == Qt::DecorationRole && orientation == Qt::Horizontal && section == sortColumn
        && (sortState == 1 || sortState == 2))
        return SortIcon(sortState);
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

// Drawn only once a sorted header is shown, so that a model made without a
// GUI application, as the command-line tool makes them, loads no image.
const QIcon &BaseModel::SortIcon(int state) const
{
    if (sortIcons.isEmpty())
        sortIcons = {QIcon(), QIcon(QStringLiteral(":../img/ascending.png")),
                     QIcon(QStringLiteral(":../img/descending.png"))};
    return sortIcons[state];
}
