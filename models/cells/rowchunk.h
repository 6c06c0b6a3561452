// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "linecells.h"

#include <QtGlobal>

#include <functional>
#include <string_view>
#include <vector>

// Where the lines of one stretch of a file start, so that any cell is found
// without copying text: its line at once, the cell by walking the line's
// TABs. That keeps four bytes a line beside the file's own bytes. Lines of
// many cells also keep where every 64th cell starts, so that a cell far to
// the right is found after at most 63 TABs.
//
// Line starts are kept in pages of 65,536 lines as 32-bit offsets from the
// page's first line; a page whose lines span 4 GiB or more keeps them whole.
class RowChunk
{
public:
    // Told of each line as the scan finds it.
    using LineSink = std::function<void(const LineCells &)>;

    // Indexes the lines of `bytes` from `begin` up to `end`, a place after a
    // line end or the end of the bytes, keeping at most `columns` cells of
    // each line, and hands each line to `sink` if there is one.
    RowChunk(std::string_view bytes, qint64 begin, qint64 end, int columns, const LineSink &sink = nullptr);
    // Hands each line to `sink` as the constructor does, keeping nothing.
    static void ReadLines(std::string_view bytes, qint64 begin, qint64 end, int columns, const LineSink &sink);

    qint64 RowCount() const { return rows; }
    // Cell `column` of `row` with the CRs at its ends left out, as they
    // decode to nothing; empty when the line has no such cell.
    std::string_view Cell(qint64 row, int column) const;
    // Whether some line has text in cell `column`.
    bool HasText(int column) const { return columnHasText[size_t(column)] != 0; }

private:
    class Scan;

    struct Page
    {
        qint64 first = 0;
        std::vector<quint32> offsets;
        // Every start in full, once the page spans 4 GiB or more.
        std::vector<qint64> starts;
    };

    void AddLine(qint64 start, const std::vector<quint64> &checkpoints);
    qint64 LineStart(qint64 row) const;
    qint64 LineEnd(qint64 row) const;

    const char *base;
    qint64 end;
    int columns;
    qint64 rows = 0;
    std::vector<Page> pages;
    // Lines of more than 64 cells: where each 64th cell starts, from the
    // line's start, and for every line the first of its entries (with one
    // entry more at the end); empty while no line has that many cells.
    std::vector<quint32> checkpoints;
    std::vector<quint64> firstCheckpoint;
    std::vector<char> columnHasText;
};
