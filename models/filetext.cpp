#include "filetext.h"

#include <QFile>
#include <QTextCodec>

#include <cstring>

namespace {

QByteArray ReadBytes(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray();
    const qint64 size = file.size();
    if (size <= 0 || size >= qint64(INT_MAX))
        return file.readAll();
    QByteArray bytes(int(size), Qt::Uninitialized);
    const qint64 got = file.read(bytes.data(), size);
    bytes.truncate(int(qMax<qint64>(got, 0)));
    return bytes;
}

// Text mode drops every CR, not only those before a line feed.
void RemoveCarriageReturns(QByteArray &bytes)
{
    char *begin = bytes.data();
    char *end = begin + bytes.size();
    char *from = static_cast<char *>(std::memchr(begin, '\r', size_t(end - begin)));
    if (!from)
        return;
    char *to = from;
    for (; from < end; ++from) {
        if (*from != '\r')
            *to++ = *from;
    }
    bytes.truncate(int(to - begin));
}

bool StartsWithUtf8Mark(const QByteArray &bytes)
{
    return bytes.startsWith("\xEF\xBB\xBF");
}

} // namespace

std::shared_ptr<CellText> FileText::Read(const QString &path)
{
    auto text = std::make_shared<CellText>();
    text->bytes = ReadBytes(path);
    RemoveCarriageReturns(text->bytes);

    QTextCodec *locale = QTextCodec::codecForLocale();
    QTextCodec *detected = QTextCodec::codecForUtfText(text->bytes, locale);
    if (StartsWithUtf8Mark(text->bytes)) {
        text->bytes.remove(0, 3);
    } else if (detected != locale && detected->mibEnum() != 106) {
        // UTF-16 and UTF-32 files are turned into UTF-8 once, so that cells
        // can still be cut at TAB and LF bytes.
        text->bytes = detected->toUnicode(text->bytes).toUtf8();
    } else if (locale->mibEnum() != 106) {
        text->codec = locale;
    }
    return text;
}
