// SPDX-License-Identifier: GPL-3.0-or-later
#include "rowchunk.h"

#include "delimitermasks.h"

#include <QtAlgorithms>
#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace {

const int kPageBits = 16;
const qint64 kPageMask = (qint64(1) << kPageBits) - 1;
const int kCheckpointCells = 64;
const quint64 kLowBytes = 0x7F7F7F7F7F7F7F7FULL;

// The high bit of each byte of `word` that equals the byte of `pattern`.
quint64 EqualBytes(quint64 word, quint64 pattern)
{
    const quint64 x = word ^ pattern;
    return ~(((x & kLowBytes) + kLowBytes) | x | kLowBytes);
}

// The place after the `count`-th TAB from `at` on, or null when there are
// fewer before `last`; eight bytes at a time.
const char *SkipTabs(const char *at, const char *last, qint64 count)
{
    while (count > 0 && last - at >= 8) {
        quint64 bytes;
        std::memcpy(&bytes, at, sizeof bytes);
        for (quint64 tabs = EqualBytes(qFromLittleEndian(bytes), 0x0909090909090909ULL); tabs; tabs &= tabs - 1) {
            if (--count == 0)
                return at + (qCountTrailingZeroBits(tabs) >> 3) + 1;
        }
        at += 8;
    }
    for (; count > 0 && at < last; ++at) {
        if (*at == '\t')
            --count;
    }
    return count == 0 ? at : nullptr;
}

} // namespace

// Walks the bytes a block at a time, finding TABs and LFs with a few
// instructions per block rather than one byte at a time, and hands each
// line with the ends of its cells to the chunk and the sink. The walk keeps
// its place in locals, so that storing a cell's end is not taken to change
// them.
class RowChunk::Scan
{
public:
    Scan(std::string_view bytes, int columns, RowChunk *chunk, const LineSink &sink)
        : base(bytes.data())
        , columns(qMax(columns, 0))
        , chunk(chunk)
        , sink(sink)
        , ends(size_t(this->columns) + DelimiterMasks::kBlockBytes + 1)
    {
        if (!chunk)
            return;
        hasText.assign(size_t(this->columns), 0);
        for (int column = 0; column < this->columns; ++column)
            withoutText.push_back(column);
    }

    void Run(qint64 begin, qint64 end)
    {
        qint64 rowStart = begin;
        qint64 count = 0;
        quint64 *cellEnds = ends.data();
        // Cells past the file's columns are dropped, but still walked over.
        // The TABs before each LF of a block end cells of its line, the LF
        // its last cell and the line. The ends of a block's cells are
        // stored one after another, those past the columns among the spare
        // places that nothing reads, and the count is held to the columns
        // once per block and line.
        const auto block = [&](qint64 at, DelimiterMasks masks) {
            quint32 tabs = masks.tabs;
            quint32 feeds = masks.feeds;
            for (;;) {
                const quint32 firstFeed = feeds & (0U - feeds);
                const quint32 before = firstFeed ? firstFeed - 1 : ~0U;
                for (quint32 cells = tabs & before; cells; cells &= cells - 1)
                    cellEnds[count++] = quint64(at + qCountTrailingZeroBits(cells) - rowStart);
                count = qMin(count, qint64(columns));
                if (!firstFeed)
                    return;
                tabs &= ~(before | firstFeed);
                feeds ^= firstFeed;
                const qint64 feed = at + qCountTrailingZeroBits(firstFeed);
                cellEnds[count] = quint64(feed - rowStart);
                EndLine(rowStart, qMin(count + 1, qint64(columns)));
                rowStart = feed + 1;
                count = 0;
            }
        };
        qint64 at = begin;
        for (; at + DelimiterMasks::kBlockBytes <= end; at += DelimiterMasks::kBlockBytes)
            block(at, DelimiterMasks::Of(base + at));
        // The bytes past the end read as NULs, which are no delimiters.
        if (at < end) {
            char last[DelimiterMasks::kBlockBytes] = {};
            std::memcpy(last, base + at, size_t(end - at));
            block(at, DelimiterMasks::Of(last));
        }
        if (rowStart < end) {
            cellEnds[count] = quint64(end - rowStart);
            EndLine(rowStart, qMin(count + 1, qint64(columns)));
        }
        if (chunk)
            chunk->columnHasText.assign(hasText.begin(), hasText.end());
    }

private:
    void EndLine(qint64 start, qint64 count)
    {
        if (chunk) {
            if (!withoutText.empty())
                LookForText(start, count);
            chunk->AddLine(start, Checkpoints(count));
        }
        if (sink)
            sink(LineCells(base + start, ends.data(), count));
    }

    // Where every 64th cell but the last one of the line starts.
    const std::vector<quint64> &Checkpoints(qint64 count)
    {
        checkpoints.clear();
        for (qint64 cell = kCheckpointCells - 1; cell + 1 < count; cell += kCheckpointCells)
            checkpoints.push_back(ends[size_t(cell)] + 1);
        return checkpoints;
    }

    // Marks the columns that have text in this line among those that had
    // none so far; a CR alone is no text, as it decodes to nothing.
    void LookForText(qint64 start, qint64 count)
    {
        const auto found = [&](int column) {
            if (column >= count)
                return false;
            const char *first = base + start + (column == 0 ? 0 : qint64(ends[size_t(column) - 1]) + 1);
            const char *last = base + start + qint64(ends[size_t(column)]);
            if (std::find_if(first, last, [](char byte) { return byte != '\r'; }) == last)
                return false;
            hasText[size_t(column)] = 1;
            return true;
        };
        withoutText.erase(std::remove_if(withoutText.begin(), withoutText.end(), found), withoutText.end());
    }

    const char *base;
    const int columns;
    RowChunk *chunk;
    const LineSink &sink;
    // Where each cell of the line ends, from the line's start, and the
    // spare places for the ends of a block's cells past the columns.
    std::vector<quint64> ends;
    std::vector<quint64> checkpoints;
    // Which columns some line has text in, and those that have none yet.
    std::vector<char> hasText;
    std::vector<int> withoutText;
};

RowChunk::RowChunk(std::string_view bytes, qint64 begin, qint64 end, int columns, const LineSink &sink)
    : base(bytes.data())
    , end(end)
    , columns(columns)
{
    Scan(bytes, columns, this, sink).Run(begin, end);
}

void RowChunk::ReadLines(std::string_view bytes, qint64 begin, qint64 end, int columns, const LineSink &sink)
{
    Scan(bytes, columns, nullptr, sink).Run(begin, end);
}

std::string_view RowChunk::Cell(qint64 row, int column) const
{
    if (column < 0 || column >= columns)
        return std::string_view();
    const char *at = base + LineStart(row);
    const char *last = base + LineEnd(row);
    qint64 cell = 0;
    if (column >= kCheckpointCells && !firstCheckpoint.empty()) {
        const quint64 first = firstCheckpoint[size_t(row)];
        const quint64 kept = qMin<quint64>(quint64(column / kCheckpointCells), firstCheckpoint[size_t(row) + 1] - first);
        if (kept > 0) {
            at += checkpoints[size_t(first + kept - 1)];
            cell = qint64(kept) * kCheckpointCells;
        }
    }
    at = SkipTabs(at, last, column - cell);
    if (!at)
        return std::string_view();
    const void *tab = std::memchr(at, '\t', size_t(last - at));
    return LineCells::WithoutEndCarriageReturns(at, tab ? static_cast<const char *>(tab) : last);
}

// A line too long for its checkpoints to fit 32 bits keeps none and is
// walked from its start.
void RowChunk::AddLine(qint64 start, const std::vector<quint64> &lineCheckpoints)
{
    if ((rows & kPageMask) == 0) {
        pages.emplace_back();
        pages.back().first = start;
    }
    Page &page = pages.back();
    const quint64 offset = quint64(start - page.first);
    if (page.starts.empty() && offset > 0xFFFFFFFFULL) {
        for (const quint32 kept : page.offsets)
            page.starts.push_back(page.first + qint64(kept));
        page.offsets = std::vector<quint32>();
    }
    if (page.starts.empty())
        page.offsets.push_back(quint32(offset));
    else
        page.starts.push_back(start);

    const bool fits = !lineCheckpoints.empty() && lineCheckpoints.back() <= 0xFFFFFFFFULL;
    if (fits && firstCheckpoint.empty())
        firstCheckpoint.assign(size_t(rows) + 1, 0);
    if (fits)
        checkpoints.insert(checkpoints.end(), lineCheckpoints.begin(), lineCheckpoints.end());
    if (!firstCheckpoint.empty())
        firstCheckpoint.push_back(checkpoints.size());
    ++rows;
}

qint64 RowChunk::LineStart(qint64 row) const
{
    const Page &page = pages[size_t(row >> kPageBits)];
    const size_t index = size_t(row & kPageMask);
    return page.starts.empty() ? page.first + qint64(page.offsets[index]) : page.starts[index];
}

// Where the line's text ends: at its LF, or at the end of the stretch.
qint64 RowChunk::LineEnd(qint64 row) const
{
    if (row + 1 < rows)
        return LineStart(row + 1) - 1;
    return end > LineStart(row) && base[end - 1] == '\n' ? end - 1 : end;
}
