#include "mainproxy.h"

QVariant MainProxy::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role == Qt::DisplayRole && orientation == Qt::Vertical)
        return section + 1;
    return ProxyModel::headerData(section, orientation, role);
}
