// SPDX-License-Identifier: GPL-3.0-or-later
#include "celltext.h"

#include "cellnumber.h"
#include "hugepages.h"

#include <QTextCodec>

#include <cstring>

bool CellText::Allocate(qint64 newSize)
{
    storage = HugePages::Allocate<char>(size_t(newSize + kPaddingBytes));
    start = 0;
    size = storage ? newSize : 0;
    if (storage)
        std::memset(storage.get() + newSize, 0, size_t(kPaddingBytes));
    return storage != nullptr;
}

void CellText::DropFront(qint64 count)
{
    count = qBound<qint64>(0, count, size);
    start += count;
    size -= count;
}

QString CellText::Decode(std::string_view bytes) const
{
    const int length = int(qMin<qint64>(qint64(bytes.size()), kMaxDecodedBytes));
    if (length <= 0)
        return QString();
    QString text = DecodeBytes(bytes.data(), length);
    // A text stream on a text-mode device decodes CRs like any byte and then
    // drops every one of them, also one in the middle of a line.
    if (std::memchr(bytes.data(), '\r', size_t(length)))
        text.remove(QLatin1Char('\r'));
    return text;
}

double CellText::ToDouble(std::string_view bytes, bool *ok) const
{
    double value = 0;
    if (CellNumber::ParsePlainDecimal(bytes, &value)) {
        *ok = true;
        return value;
    }
    value = Decode(bytes).toDouble(ok);
    return *ok ? value : 0.0;
}

int CellText::ToInt(std::string_view bytes, bool *ok) const
{
    int value = 0;
    if (CellNumber::ParsePlainInteger(bytes, &value)) {
        *ok = true;
        return value;
    }
    return Decode(bytes).toInt(ok, 10);
}

QString CellText::DecodeBytes(const char *data, int length) const
{
    if (codec)
        return codec->toUnicode(data, length);
    // A byte order mark inside the file is text, not a header: only the one
    // at the very start of the file is skipped, and that one is gone already.
    // QString::fromUtf8 would skip a mark at the start of the cell.
    int marks = 0;
    while (length - 3 * marks >= 3 && uchar(data[3 * marks]) == 0xEF && uchar(data[3 * marks + 1]) == 0xBB
           && uchar(data[3 * marks + 2]) == 0xBF)
        ++marks;
    if (marks == 0)
        return QString::fromUtf8(data, length);
    return QString(marks, QChar(0xFEFF)) + QString::fromUtf8(data + 3 * marks, length - 3 * marks);
}
