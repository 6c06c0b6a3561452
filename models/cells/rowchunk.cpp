#include "rowchunk.h"

#include <QtAlgorithms>
#include <QtEndian>

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

quint64 Delimiters(quint64 word)
{
    return EqualBytes(word, 0x0909090909090909ULL) | EqualBytes(word, 0x0A0A0A0A0A0A0A0AULL);
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

// Walks the bytes eight at a time, finding TABs and LFs with word
// arithmetic rather than one byte at a time, and hands each line with the
// ends of its cells to the chunk and the sink. The walk keeps its place in
// locals, so that storing a cell's end is not taken to change them.
class RowChunk::Scan
{
public:
    Scan(std::string_view bytes, int columns, RowChunk *chunk, const LineSink &sink)
        : base(bytes.data())
        , columns(columns)
        , chunk(chunk)
        , sink(sink)
        , ends(size_t(qMax(columns, 1)))
        , hasText(chunk ? size_t(qMax(columns, 0)) : 0, 0)
        , withoutText(chunk ? columns : 0)
    {
    }

    void Run(qint64 begin, qint64 end)
    {
        qint64 rowStart = begin;
        qint64 count = 0;
        quint64 *cellEnds = ends.data();
        // Cells past the file's columns are dropped, but still walked over.
        const auto closeCell = [&](qint64 at, bool tab) {
            if (count >= columns)
                return;
            if (withoutText > 0 && !hasText[size_t(count)])
                LookForText(count, rowStart + (count == 0 ? 0 : qint64(cellEnds[count - 1]) + 1), at);
            if ((count & (kCheckpointCells - 1)) == kCheckpointCells - 1 && tab && count + 1 < columns && chunk)
                checkpoints.push_back(quint64(at + 1 - rowStart));
            cellEnds[count] = quint64(at - rowStart);
            ++count;
        };
        const auto closeRow = [&](qint64 next) {
            EndLine(rowStart, count);
            rowStart = next;
            count = 0;
        };
        const auto close = [&](qint64 word, quint64 found) {
            while (found) {
                const qint64 at = word + (qCountTrailingZeroBits(found) >> 3);
                found &= found - 1;
                const bool lineFeed = base[at] == '\n';
                closeCell(at, !lineFeed);
                if (lineFeed)
                    closeRow(at + 1);
            }
        };
        qint64 word = begin;
        for (; word + 8 <= end; word += 8) {
            quint64 bytes;
            std::memcpy(&bytes, base + word, sizeof bytes);
            close(word, Delimiters(qFromLittleEndian(bytes)));
        }
        // The bytes past the end read as NULs, which are no delimiters.
        if (word < end) {
            quint64 bytes = 0;
            std::memcpy(&bytes, base + word, size_t(end - word));
            close(word, Delimiters(qFromLittleEndian(bytes)));
        }
        if (rowStart < end) {
            closeCell(end, false);
            closeRow(end);
        }
        if (chunk)
            chunk->columnHasText.assign(hasText.begin(), hasText.end());
    }

private:
    void EndLine(qint64 start, qint64 count)
    {
        if (chunk)
            chunk->AddLine(start, checkpoints);
        if (sink)
            sink(LineCells(base + start, ends.data(), count));
        checkpoints.clear();
    }

    void LookForText(qint64 column, qint64 from, qint64 to)
    {
        for (qint64 at = from; at < to; ++at) {
            if (base[at] != '\r') {
                hasText[size_t(column)] = 1;
                --withoutText;
                return;
            }
        }
    }

    const char *base;
    const int columns;
    RowChunk *chunk;
    const LineSink &sink;
    std::vector<quint64> ends;
    std::vector<quint64> checkpoints;
    // Which columns some line has text in, and how many have none yet.
    std::vector<char> hasText;
    int withoutText;
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
