// SPDX-License-Identifier: GPL-3.0-or-later
#include "celllist.h"

#include <algorithm>

CellList CellList::FromTable(std::shared_ptr<const RowTable> table, int column)
{
    CellList list;
    const int count = table->RowCount();
    list.AppendSegment(Segment{std::move(table), column, 0, count});
    return list;
}

QString CellList::at(int row) const
{
    std::string_view bytes;
    const CellText *text = TextAt(row, &bytes);
    return text ? text->Decode(bytes) : QString();
}

std::string_view CellList::BytesAt(int row) const
{
    std::string_view bytes;
    TextAt(row, &bytes);
    return bytes;
}

bool CellList::AsciiAt(int row, std::string_view *bytes) const
{
    *bytes = std::string_view();
    const CellText *text = TextAt(row, bytes);
    if (text && text->Codec())
        return false;
    return IsPlainAscii(*bytes);
}

bool CellList::IsPlainAscii(std::string_view bytes)
{
    return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return uchar(byte) < 0x80 && byte != '\r'; });
}

double CellList::ToDouble(int row, bool *ok) const
{
    std::string_view bytes;
    const CellText *text = TextAt(row, &bytes);
    *ok = false;
    return text ? text->ToDouble(bytes, ok) : 0.0;
}

int CellList::ToInt(int row, bool *ok) const
{
    std::string_view bytes;
    const CellText *text = TextAt(row, &bytes);
    *ok = false;
    return text ? text->ToInt(bytes, ok) : 0;
}

const CellText *CellList::TextAt(int row, std::string_view *bytes) const
{
    int local = 0;
    const Segment *segment = Locate(row, &local);
    if (!segment || !segment->table)
        return nullptr;
    *bytes = segment->table->Cell(segment->first + local, segment->column);
    return &segment->table->Text();
}

void CellList::AppendEmpty(int count)
{
    if (count > 0)
        AppendSegment(Segment{nullptr, 0, 0, count});
}

void CellList::AppendList(const CellList &other)
{
    if (other.segments.empty())
        AppendEmpty(other.total);
    for (const Segment &segment : other.segments)
        AppendSegment(segment);
}

void CellList::Truncate(int count)
{
    while (total > count && !segments.empty()) {
        Segment &last = segments.back();
        const int excess = total - count;
        if (last.count > excess) {
            last.count -= excess;
            ends.back() -= excess;
            total = count;
        } else {
            total -= last.count;
            segments.pop_back();
            ends.pop_back();
        }
    }
    total = qBound(0, count, total);
}

const CellList::Segment *CellList::Locate(int row, int *local) const
{
    if (row < 0 || row >= total || segments.empty())
        return nullptr;
    size_t index = 0;
    if (segments.size() > 1)
        index = size_t(std::upper_bound(ends.begin(), ends.end(), row) - ends.begin());
    *local = row - (ends[index] - segments[index].count);
    return &segments[index];
}

void CellList::AppendSegment(const Segment &segment)
{
    if (segment.count <= 0)
        return;
    if (!segment.table && segments.empty()) {
        total += segment.count;
        return;
    }
    // Cells so far were all empty and had no segment of their own.
    if (segments.empty() && total > 0) {
        segments.push_back(Segment{nullptr, 0, 0, total});
        ends.push_back(total);
    }
    // Neighbouring runs of empty cells become one, which keeps long padded
    // columns of combined files short.
    if (!segment.table && !segments.back().table) {
        segments.back().count += segment.count;
        ends.back() += segment.count;
    } else {
        segments.push_back(segment);
        ends.push_back(total + segment.count);
    }
    total += segment.count;
}
