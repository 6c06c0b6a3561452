#include "linecursor.h"

#include <cstring>

LineCursor::LineCursor(const CellText &text)
    : text(text)
    , data(text.bytes.constData())
    , size(text.bytes.size())
{
}

std::string_view LineCursor::NextLine()
{
    if (AtEnd())
        return std::string_view(data + size, 0);
    const char *start = data + position;
    const char *end = static_cast<const char *>(std::memchr(start, '\n', size_t(size - position)));
    if (!end) {
        position = size;
        return std::string_view(start, size_t(data + size - start));
    }
    position = int(end - data) + 1;
    return std::string_view(start, size_t(end - start));
}

QString LineCursor::NextLineText()
{
    const std::string_view line = NextLine();
    return text.Decode(line.data(), int(line.size()));
}

int LineCursor::LinesLeft() const
{
    int count = 0;
    const char *at = data + position;
    const char *end = data + size;
    while (at < end) {
        const char *feed = static_cast<const char *>(std::memchr(at, '\n', size_t(end - at)));
        ++count;
        at = feed ? feed + 1 : end;
    }
    return count;
}
