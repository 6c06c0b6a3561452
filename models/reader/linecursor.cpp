// SPDX-License-Identifier: GPL-3.0-or-later
#include "linecursor.h"

#include <cstring>

LineCursor::LineCursor(const CellText &text)
    : text(text)
{
}

std::string_view LineCursor::NextLine()
{
    const char *data = text.Data();
    const qint64 size = text.Size();
    if (AtEnd())
        return std::string_view(data + size, 0);
    const char *start = data + position;
    const char *end = static_cast<const char *>(std::memchr(start, '\n', size_t(size - position)));
    if (!end) {
        position = size;
        return std::string_view(start, size_t(data + size - start));
    }
    position = end - data + 1;
    return std::string_view(start, size_t(end - start));
}

QString LineCursor::NextLineText()
{
    return text.Decode(NextLine());
}
