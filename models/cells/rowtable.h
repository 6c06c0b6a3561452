// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "celltext.h"
#include "rowchunk.h"

#include <memory>
#include <string_view>
#include <vector>

// Every data row of one file: the file's text and the chunks it was indexed
// in, one after another. Shared by all columns of the file and by every
// table that holds its rows, so that no cell text is ever copied.
class RowTable
{
public:
    RowTable(std::shared_ptr<const CellText> text, std::vector<RowChunk> chunks);

    int RowCount() const { return rows; }
    // Cell `column` of `row`, counting the file's fields from 0.
    std::string_view Cell(int row, int column) const;
    const CellText &Text() const { return *text; }
    const std::vector<RowChunk> &Chunks() const { return chunks; }

private:
    std::shared_ptr<const CellText> text;
    std::vector<RowChunk> chunks;
    // The first row of each chunk.
    std::vector<int> firstRows;
    int rows = 0;
};
