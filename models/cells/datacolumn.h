// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "celllist.h"

// One column of a table, one cell per row. Tables are kept column by column.
struct DataColumn
{
    CellList values;
    // True until a column with a non-empty cell is appended; never set back.
    bool allEmpty = true;

    DataColumn() = default;
    // `count` empty cells, as used to pad a column.
    explicit DataColumn(int count);

    // Appends every cell of `other`; the mark clears if the other's is clear.
    void Append(const DataColumn &other);
};
