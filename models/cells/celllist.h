// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "rowtable.h"

#include <QString>

#include <memory>
#include <string_view>
#include <vector>

// The cells of one column. Cells are slices of their file's bytes, found
// through the file's RowTable and decoded only when asked for, so copying or
// appending whole columns copies no text. Runs of empty cells, such as the
// padding of combined files, take no room per cell.
class CellList
{
public:
    CellList() = default;
    // Field `column` of every row of `table`.
    static CellList FromTable(std::shared_ptr<const RowTable> table, int column);

    int size() const { return total; }
    QString at(int row) const;
    std::string_view BytesAt(int row) const;
    // The cell's bytes, when its text is exactly those bytes, each one
    // character: ASCII without CRs, read as UTF-8. False otherwise.
    bool AsciiAt(int row, std::string_view *bytes) const;
    // Bytes that every decoding a data file may have reads as themselves,
    // one character each: ASCII without CRs.
    static bool IsPlainAscii(std::string_view bytes);
    // The cell read as QString::toDouble or QString::toInt (base 10) would
    // read it, 0 when that fails.
    double ToDouble(int row, bool *ok) const;
    int ToInt(int row, bool *ok) const;

    void AppendEmpty(int count);
    void AppendList(const CellList &other);
    void Truncate(int count);

private:
    // A run of rows: `count` cells of field `column` of `table` from row
    // `first`, or empty cells when `table` is null.
    struct Segment
    {
        std::shared_ptr<const RowTable> table;
        int column;
        int first;
        int count;
    };

    const Segment *Locate(int row, int *local) const;
    // The text of the row's cell and the cell's bytes; null for an empty cell
    // that no file holds.
    const CellText *TextAt(int row, std::string_view *bytes) const;
    void AppendSegment(const Segment &segment);

    // A list of empty cells only has no segments at all.
    std::vector<Segment> segments;
    std::vector<int> ends;
    int total = 0;
};
