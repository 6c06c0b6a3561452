#include "datacolumn.h"

DataColumn::DataColumn(int count)
{
    values.AppendEmpty(count);
}

void DataColumn::Append(const QString &cell)
{
    values.Append(cell);
    if (!cell.isEmpty())
        allEmpty = false;
}

void DataColumn::Append(const DataColumn &other)
{
    values.AppendList(other.values);
    if (!other.allEmpty)
        allEmpty = false;
}
