#pragma once

#include "celltext.h"

#include <QString>

#include <memory>
#include <string_view>
#include <vector>

// One cell's place in a CellText.
struct CellSpan
{
    quint32 offset;
    quint32 length;
};

// The cells of one column. Cells are slices of their file's bytes, decoded
// only when asked for, so a column costs eight bytes a cell and copying or
// appending whole columns copies no text.
class CellList
{
public:
    CellList() = default;
    static CellList FromSpans(std::shared_ptr<const CellText> text, std::vector<CellSpan> spans);

    int size() const { return total; }
    QString at(int row) const;
    std::string_view BytesAt(int row) const;
    bool IsEmptyAt(int row) const { return BytesAt(row).empty(); }
    // The cell read as QString::toDouble or QString::toInt (base 10) would
    // read it, 0 when that fails.
    double ToDouble(int row, bool *ok) const;
    int ToInt(int row, bool *ok) const;

    void Append(const QString &cell);
    void AppendEmpty(int count);
    void AppendList(const CellList &other);
    void Truncate(int count);

private:
    struct Slices
    {
        std::shared_ptr<CellText> text;
        std::vector<CellSpan> spans;
    };
    // A run of rows: `count` spans of `slices` from `first`, or empty cells
    // when `slices` is null.
    struct Segment
    {
        std::shared_ptr<Slices> slices;
        int first;
        int count;
    };

    const Segment *Locate(int row, int *local) const;
    void AppendSegment(const Segment &segment);
    Slices *WritableTail();

    std::vector<Segment> segments;
    std::vector<int> ends;
    int total = 0;
};
