#include "celltext.h"

#include <QTextCodec>

#include <cstring>

QString CellText::Decode(const char *data, int size) const
{
    if (size <= 0)
        return QString();
    QString text = DecodeBytes(data, size);
    // A text stream on a text-mode device decodes CRs like any byte and then
    // drops every one of them, also one in the middle of a line.
    if (std::memchr(data, '\r', size_t(size)))
        text.remove(QLatin1Char('\r'));
    return text;
}

QString CellText::DecodeBytes(const char *data, int size) const
{
    if (codec)
        return codec->toUnicode(data, size);
    // A byte order mark inside the file is text, not a header: only the one
    // at the very start of the file is skipped, and that one is gone already.
    // QString::fromUtf8 would skip a mark at the start of the cell.
    QString marks;
    while (size >= 3 && uchar(data[0]) == 0xEF && uchar(data[1]) == 0xBB && uchar(data[2]) == 0xBF) {
        marks += QChar(0xFEFF);
        data += 3;
        size -= 3;
    }
    return marks + QString::fromUtf8(data, size);
}
