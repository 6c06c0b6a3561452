#include "celllist.h"

#include "cellnumber.h"

#include <algorithm>

CellList CellList::FromSpans(std::shared_ptr<const CellText> text, std::vector<CellSpan> spans)
{
    CellList list;
    const int count = int(spans.size());
    if (count == 0)
        return list;
    // Slices never write through a text they did not create (see WritableTail).
    auto slices = std::make_shared<Slices>(
        Slices{std::const_pointer_cast<CellText>(std::move(text)), std::move(spans)});
    list.AppendSegment(Segment{std::move(slices), 0, count});
    return list;
}

QString CellList::at(int row) const
{
    int local = 0;
    const Segment *segment = Locate(row, &local);
    if (!segment || !segment->slices)
        return QString();
    const CellSpan span = segment->slices->spans[size_t(segment->first + local)];
    return segment->slices->text->Decode(segment->slices->text->bytes.constData() + span.offset,
                                         int(span.length));
}

std::string_view CellList::BytesAt(int row) const
{
    int local = 0;
    const Segment *segment = Locate(row, &local);
    if (!segment || !segment->slices)
        return std::string_view();
    const CellSpan span = segment->slices->spans[size_t(segment->first + local)];
    return std::string_view(segment->slices->text->bytes.constData() + span.offset, span.length);
}

double CellList::ToDouble(int row, bool *ok) const
{
    double value = 0;
    if (CellNumber::ParsePlainDecimal(BytesAt(row), &value)) {
        *ok = true;
        return value;
    }
    value = at(row).toDouble(ok);
    return *ok ? value : 0.0;
}

int CellList::ToInt(int row, bool *ok) const
{
    int value = 0;
    if (CellNumber::ParsePlainInteger(BytesAt(row), &value)) {
        *ok = true;
        return value;
    }
    return at(row).toInt(ok, 10);
}

void CellList::Append(const QString &cell)
{
    Slices *tail = WritableTail();
    if (!tail) {
        auto slices = std::make_shared<Slices>(Slices{std::make_shared<CellText>(), {}});
        AppendSegment(Segment{slices, 0, 0});
        tail = slices.get();
    }
    const QByteArray bytes = cell.toUtf8();
    tail->spans.push_back(CellSpan{quint32(tail->text->bytes.size()), quint32(bytes.size())});
    tail->text->bytes.append(bytes);
    segments.back().count++;
    ends.back()++;
    total++;
}

void CellList::AppendEmpty(int count)
{
    if (count > 0)
        AppendSegment(Segment{nullptr, 0, count});
}

void CellList::AppendList(const CellList &other)
{
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
}

const CellList::Segment *CellList::Locate(int row, int *local) const
{
    if (row < 0 || row >= total)
        return nullptr;
    size_t index = 0;
    if (segments.size() > 1)
        index = size_t(std::upper_bound(ends.begin(), ends.end(), row) - ends.begin());
    *local = row - (ends[index] - segments[index].count);
    return &segments[index];
}

void CellList::AppendSegment(const Segment &segment)
{
    if (segment.count <= 0 && segment.slices == nullptr)
        return;
    // Neighbouring runs of empty cells become one, which keeps long padded
    // columns of combined files short.
    if (!segment.slices && !segments.empty() && !segments.back().slices) {
        segments.back().count += segment.count;
        ends.back() += segment.count;
    } else {
        segments.push_back(segment);
        ends.push_back(total + segment.count);
    }
    total += segment.count;
}

CellList::Slices *CellList::WritableTail()
{
    if (segments.empty() || !segments.back().slices)
        return nullptr;
    Segment &last = segments.back();
    Slices *slices = last.slices.get();
    // Only cells that this list alone has built may grow in place; anything
    // shared with another list or cut from a file stays as it is.
    const bool ownsAll = last.slices.use_count() == 1 && slices->text.use_count() == 1;
    const bool reachesEnd = size_t(last.first + last.count) == slices->spans.size();
    return ownsAll && reachesEnd ? slices : nullptr;
}
