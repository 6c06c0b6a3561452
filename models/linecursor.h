#pragma once

#include "celltext.h"

#include <QString>

#include <string_view>

// Walks the lines of a CellText as QTextStream::readLine and atEnd do:
// lines end at LF, and a last line without one still counts.
class LineCursor
{
public:
    explicit LineCursor(const CellText &text);

    bool AtEnd() const { return position >= size; }
    // The next line's bytes; empty at the end.
    std::string_view NextLine();
    QString NextLineText();
    // Lines from here to the end, counted without reading them.
    int LinesLeft() const;

private:
    const CellText &text;
    const char *data;
    int size;
    int position = 0;
};
