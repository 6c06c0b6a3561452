// SPDX-License-Identifier: GPL-3.0-or-later
#include "rowtable.h"

#include <algorithm>

RowTable::RowTable(std::shared_ptr<const CellText> text, std::vector<RowChunk> chunks)
    : text(std::move(text))
    , chunks(std::move(chunks))
{
    for (const RowChunk &chunk : this->chunks) {
        firstRows.push_back(rows);
        rows += int(chunk.RowCount());
    }
}

std::string_view RowTable::Cell(int row, int column) const
{
    size_t chunk = 0;
    if (firstRows.size() > 1)
        chunk = size_t(std::upper_bound(firstRows.begin() + 1, firstRows.end(), row) - firstRows.begin()) - 1;
    return chunks[chunk].Cell(row - firstRows[chunk], column);
}
