// SPDX-License-Identifier: GPL-3.0-or-later
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

    bool AtEnd() const { return position >= text.Size(); }
    // The next line's bytes; empty at the end.
    std::string_view NextLine();
    QString NextLineText();
    // Where the next line starts.
    qint64 Position() const { return position; }

private:
    const CellText &text;
    qint64 position = 0;
};
