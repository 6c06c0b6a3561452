#include "celltext.h"

#include <QTextCodec>

QString CellText::Decode(const char *data, int size) const
{
    if (size <= 0)
        return QString();
    if (codec)
        return codec->toUnicode(data, size);
    // A byte order mark inside the file is text, not a header: only the one
    // at the very start of the file is skipped, and that one is gone already.
    const bool startsWithMark = size >= 3 && uchar(data[0]) == 0xEF && uchar(data[1]) == 0xBB
                                && uchar(data[2]) == 0xBF;
    if (!startsWithMark)
        return QString::fromUtf8(data, size);
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    return QTextCodec::codecForMib(106)->toUnicode(data, size, &state);
}
