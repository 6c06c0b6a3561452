#include "filetext.h"

#include <QFile>
#include <QTextCodec>


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

bool StartsWithUtf8Mark(const QByteArray &bytes)
{
    return bytes.startsWith("\xEF\xBB\xBF");
}

// A text stream holds back the start of a multi-byte character until the
// rest arrives; at the end of the file it never does, and the bytes vanish.
void DropUnfinishedCharacter(QByteArray &bytes)
{
    int lead = bytes.size() - 1;
    while (lead >= 0 && lead >= bytes.size() - 3 && (uchar(bytes[lead]) & 0xC0) == 0x80)
        --lead;
    if (lead < 0 || (uchar(bytes[lead]) & 0xC0) != 0xC0)
        return;
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    const QString decoded =
        QTextCodec::codecForMib(106)->toUnicode(bytes.constData() + lead, bytes.size() - lead, &state);
    if (decoded.isEmpty() && state.remainingChars > 0)
        bytes.truncate(lead);
}

} // namespace

std::shared_ptr<CellText> FileText::Read(const QString &path)
{
    auto text = std::make_shared<CellText>();
    text->bytes = ReadBytes(path);

    QTextCodec *locale = QTextCodec::codecForLocale();
    QTextCodec *detected = QTextCodec::codecForUtfText(text->bytes, locale);
    if (StartsWithUtf8Mark(text->bytes)) {
        text->bytes.remove(0, 3);
    } else if (detected != locale && detected->mibEnum() != 106) {
        // UTF-16 and UTF-32 files are turned into UTF-8 once, so that cells
        // can still be cut at TAB and LF bytes.
        text->bytes = detected->toUnicode(text->bytes).remove(QLatin1Char('\r')).toUtf8();
    } else if (locale->mibEnum() != 106) {
        text->codec = locale;
    }
    if (!text->codec)
        DropUnfinishedCharacter(text->bytes);
    // CRs at the very end decode to nothing, so they cannot make a last line.
    int end = text->bytes.size();
    while (end > 0 && text->bytes[end - 1] == '\r')
        --end;
    text->bytes.truncate(end);
    return text;
}
