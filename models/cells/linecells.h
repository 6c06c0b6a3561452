// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <string_view>

// The cells of one line of a file as a scan finds them: where the line
// starts and where each of its cells ends, no further than the file's
// columns. A line without any TAB has one cell, an empty line one empty
// cell.
class LineCells
{
public:
    LineCells(const char *line, const quint64 *ends, qint64 count)
        : line(line)
        , ends(ends)
        , count(count)
    {
    }

    qint64 Count() const { return count; }
    const char *Start() const { return line; }
    // Where each cell ends, from the line's start.
    const quint64 *Ends() const { return ends; }
    // Cell `column` with the CRs at its ends left out, as they decode to
    // nothing; empty when the line has no such cell.
    std::string_view Cell(qint64 column) const
    {
        if (column < 0 || column >= count)
            return std::string_view();
        return PresentCell(column);
    }
    // Cell `column` of those the line has.
    std::string_view PresentCell(qint64 column) const
    {
        const quint64 start = column == 0 ? 0 : ends[column - 1] + 1;
        return WithoutEndCarriageReturns(line + start, line + ends[column]);
    }

    // The slice from `first` to `last` with its CRs at both ends left out.
    static std::string_view WithoutEndCarriageReturns(const char *first, const char *last)
    {
        if (first < last && (*first == '\r' || last[-1] == '\r')) {
            while (first < last && *first == '\r')
                ++first;
            while (last > first && last[-1] == '\r')
                --last;
        }
        return std::string_view(first, size_t(last - first));
    }

private:
    const char *line;
    const quint64 *ends;
    qint64 count;
};
