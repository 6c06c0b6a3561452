// SPDX-License-Identifier: GPL-3.0-or-later
#include "textcolumn.h"

void TextColumn::Reserve(int rows, int byteCount)
{
    ends.reserve(rows);
    bytes.reserve(byteCount);
}

void TextColumn::Append(const char *utf8, int size)
{
    bytes.append(utf8, size);
    ends.append(bytes.size());
}

QString TextColumn::at(int row) const
{
    const int start = row == 0 ? 0 : ends[row - 1];
    return QString::fromUtf8(bytes.constData() + start, ends[row] - start);
}
