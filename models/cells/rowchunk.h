#pragma once

#include "hugepages.h"

#include <QtGlobal>

#include <string_view>
#include <vector>

// Where the lines of one stretch of a file start and where their cells end,
// so that any cell is found in constant time without copying text. Only the
// cells a line has are kept: a short line costs no slot for the cells it
// lacks, and an empty line no more than its place.
//
// Each line has an entry: its start, then its number of cells and each
// cell's end relative to the start, in 16 bits for lines under 64 KiB, else
// in 32 or 64 bits. Entries and line places are kept in pages, which grow
// without ever copying what they hold; pages of entries double in size up
// to 2 MiB, so that a small file takes little room and a large one few
// page faults.
class RowChunk
{
public:
    // Indexes the lines of `bytes` from `begin` up to `end`, a place after a
    // line end or the end of the bytes, keeping at most `columns` cells of
    // each line.
    RowChunk(std::string_view bytes, qint64 begin, qint64 end, int columns);

    qint64 RowCount() const { return rows; }
    qint64 CellCount(qint64 row) const;
    // Cell `column` of `row` with the CRs at its ends left out, as they
    // decode to nothing; empty when the line has no such cell.
    std::string_view Cell(qint64 row, int column) const;
    // Whether some line has text in cell `column`.
    bool HasText(int column) const { return columnHasText[size_t(column)] != 0; }

private:
    class Scan;

    void AddRow(qint64 start, const std::vector<quint64> &ends, qint64 count);
    quint16 *Reserve(quint64 units);
    const quint16 *Entry(qint64 row) const;

    const char *base;
    qint64 rows = 0;
    std::vector<HugePages::Block<quint64>> rowPages;
    std::vector<HugePages::Block<quint16>> unitPages;
    quint64 lastPageUsed = 0;
    quint64 lastPageSize = 0;
    std::vector<char> columnHasText;
};
