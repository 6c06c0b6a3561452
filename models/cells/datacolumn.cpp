// SPDX-License-Identifier: GPL-3.0-or-later
#include "datacolumn.h"

DataColumn::DataColumn(int count)
{
    values.AppendEmpty(count);
}

void DataColumn::Append(const DataColumn &other)
{
    values.AppendList(other.values);
    if (!other.allEmpty)
        allEmpty = false;
}
