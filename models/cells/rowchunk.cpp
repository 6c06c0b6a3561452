#include "rowchunk.h"

#include <QtAlgorithms>
#include <QtEndian>

#include <cstring>
#include <new>

namespace {

const int kRowPageBits = 16;
const quint64 kRowPageMask = (quint64(1) << kRowPageBits) - 1;
const quint64 kFirstUnitPage = quint64(1) << 12;
const quint64 kLargestUnitPage = HugePages::kHugePageBytes / sizeof(quint16);
// Entry headers: below kWide32 the header is the number of 16-bit ends.
const quint16 kWide32 = 0x8000;
const quint16 kWide64 = 0x8001;
const quint64 kLowBytes = 0x7F7F7F7F7F7F7F7FULL;

quint64 Load64(const quint16 *units)
{
    quint64 value;
    std::memcpy(&value, units, sizeof value);
    return value;
}

quint32 Load32(const quint16 *units)
{
    quint32 value;
    std::memcpy(&value, units, sizeof value);
    return value;
}

// The high bit of each byte of `word` that equals the byte of `pattern`.
// Index memory that cannot be had fails like any other allocation.
template <typename T>
HugePages::Block<T> Allocate(size_t count)
{
    HugePages::Block<T> block = HugePages::Allocate<T>(count);
    if (!block)
        throw std::bad_alloc();
    return block;
}

quint64 EqualBytes(quint64 word, quint64 pattern)
{
    const quint64 x = word ^ pattern;
    return ~(((x & kLowBytes) + kLowBytes) | x | kLowBytes);
}

} // namespace

// Walks the bytes eight at a time, finding TABs and LFs with word
// arithmetic rather than one byte at a time, and hands each line with the
// ends of its cells to the chunk.
class RowChunk::Scan
{
public:
    Scan(RowChunk &chunk, int columns)
        : chunk(chunk)
        , columns(columns)
    {
        chunk.columnHasText.assign(size_t(columns), 0);
    }

    void Run(qint64 begin, qint64 end)
    {
        const char *base = chunk.base;
        rowStart = begin;
        for (qint64 word = begin; word < end; word += 8) {
            quint64 bytes = 0;
            std::memcpy(&bytes, base + word, size_t(qMin<qint64>(8, end - word)));
            bytes = qFromLittleEndian(bytes);
            quint64 found = EqualBytes(bytes, 0x0909090909090909ULL) | EqualBytes(bytes, 0x0A0A0A0A0A0A0A0AULL);
            while (found) {
                const qint64 at = word + (qCountTrailingZeroBits(found) >> 3);
                found &= found - 1;
                CloseCell(at);
                if (base[at] == '\n')
                    CloseRow(at + 1);
            }
        }
        if (rowStart < end) {
            CloseCell(end);
            CloseRow(end);
        }
    }

private:
    // Cells past the file's columns are dropped, but still walked over.
    void CloseCell(qint64 at)
    {
        if (count >= columns)
            return;
        const quint64 cellStart = count == 0 ? 0 : ends[size_t(count - 1)] + 1;
        const quint64 cellEnd = quint64(at - rowStart);
        if (size_t(count) == ends.size())
            ends.push_back(cellEnd);
        else
            ends[size_t(count)] = cellEnd;
        if (!chunk.columnHasText[size_t(count)] && HasText(rowStart + qint64(cellStart), at))
            chunk.columnHasText[size_t(count)] = 1;
        ++count;
    }

    void CloseRow(qint64 next)
    {
        chunk.AddRow(rowStart, ends, count);
        rowStart = next;
        count = 0;
    }

    bool HasText(qint64 from, qint64 to) const
    {
        for (qint64 at = from; at < to; ++at) {
            if (chunk.base[at] != '\r')
                return true;
        }
        return false;
    }

    RowChunk &chunk;
    const int columns;
    qint64 rowStart = 0;
    qint64 count = 0;
    std::vector<quint64> ends;
};

RowChunk::RowChunk(std::string_view bytes, qint64 begin, qint64 end, int columns)
    : base(bytes.data())
{
    Scan(*this, columns).Run(begin, end);
}

qint64 RowChunk::CellCount(qint64 row) const
{
    const quint16 *entry = Entry(row);
    return entry[4] < kWide32 ? entry[4] : qint64(Load64(entry + 5));
}

std::string_view RowChunk::Cell(qint64 row, int column) const
{
    const quint16 *entry = Entry(row);
    const quint64 start = Load64(entry);
    const quint16 header = entry[4];
    quint64 cellStart = 0;
    quint64 cellEnd = 0;
    if (header < kWide32) {
        if (column >= header)
            return std::string_view();
        cellEnd = entry[5 + column];
        cellStart = column == 0 ? 0 : entry[4 + column] + 1u;
    } else {
        if (quint64(column) >= Load64(entry + 5))
            return std::string_view();
        const quint16 *ends = entry + 9;
        if (header == kWide32) {
            cellEnd = Load32(ends + 2 * column);
            cellStart = column == 0 ? 0 : Load32(ends + 2 * (column - 1)) + 1;
        } else {
            cellEnd = Load64(ends + 4 * qint64(column));
            cellStart = column == 0 ? 0 : Load64(ends + 4 * qint64(column - 1)) + 1;
        }
    }
    const char *first = base + start + cellStart;
    const char *last = base + start + cellEnd;
    while (first < last && *first == '\r')
        ++first;
    while (last > first && last[-1] == '\r')
        --last;
    return std::string_view(first, size_t(last - first));
}

void RowChunk::AddRow(qint64 start, const std::vector<quint64> &ends, qint64 count)
{
    const quint64 longest = count == 0 ? 0 : ends[size_t(count - 1)];
    quint16 header = quint16(count);
    int width = 1;
    if (count >= kWide32 || longest > 0xFFFF) {
        header = longest > 0xFFFFFFFFULL ? kWide64 : kWide32;
        width = header == kWide64 ? 4 : 2;
    }
    const quint64 units = 5 + (header < kWide32 ? 0 : 4) + quint64(width) * quint64(count);
    quint16 *entry = Reserve(units);
    const quint64 place = (quint64(unitPages.size() - 1) << 32) | (lastPageUsed - units);
    std::memcpy(entry, &start, sizeof start);
    entry[4] = header;
    quint16 *out = entry + 5;
    if (header >= kWide32) {
        const quint64 cells = quint64(count);
        std::memcpy(out, &cells, sizeof cells);
        out += 4;
    }
    if (width == 1) {
        for (qint64 i = 0; i < count; ++i)
            out[i] = quint16(ends[size_t(i)]);
    } else if (width == 2) {
        for (qint64 i = 0; i < count; ++i) {
            const quint32 end = quint32(ends[size_t(i)]);
            std::memcpy(out + 2 * i, &end, sizeof end);
        }
    } else {
        std::memcpy(out, ends.data(), size_t(count) * sizeof(quint64));
    }
    if ((quint64(rows) & kRowPageMask) == 0)
        rowPages.push_back(Allocate<quint64>(size_t(1) << kRowPageBits));
    rowPages.back()[quint64(rows) & kRowPageMask] = place;
    ++rows;
}

// An entry never spans two pages; one larger than a page gets a page of
// its own size.
quint16 *RowChunk::Reserve(quint64 units)
{
    if (unitPages.empty() || lastPageSize - lastPageUsed < units) {
        lastPageSize = qMax(units, unitPages.empty() ? kFirstUnitPage : qMin(2 * lastPageSize, kLargestUnitPage));
        unitPages.push_back(Allocate<quint16>(size_t(lastPageSize)));
        lastPageUsed = 0;
    }
    quint16 *entry = unitPages.back().get() + lastPageUsed;
    lastPageUsed += units;
    return entry;
}

const quint16 *RowChunk::Entry(qint64 row) const
{
    const quint64 place = rowPages[size_t(quint64(row) >> kRowPageBits)][quint64(row) & kRowPageMask];
    return unitPages[size_t(place >> 32)].get() + (place & 0xFFFFFFFFULL);
}
