// SPDX-License-Identifier: GPL-3.0-or-later
#include "filetext.h"

#include "parallelparts.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QTextCodec>

#include <algorithm>
#include <cstring>
#include <vector>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace {

// Pieces in which bytes are read and files in other encodings converted;
// small enough for the int sizes of Qt's own functions.
const qint64 kPieceBytes = qint64(1) << 26;
// Files from this size on are read in parts at once.
const qint64 kPartedBytes = qint64(1) << 25;

// A file larger than the machine's memory can never be held, and trying
// would only drive the system into swapping or its out-of-memory killer.
bool FitsInMemory(qint64 size)
{
#ifdef Q_OS_UNIX
    const long pages = sysconf(_SC_PHYS_PAGES);
    const long pageSize = sysconf(_SC_PAGE_SIZE);
    if (pages > 0 && pageSize > 0)
        return size <= qint64(pages) * qint64(pageSize);
#endif
    return true;
}

QHash<QString, ReadFailure> &InjectedFailures()
{
    static QHash<QString, ReadFailure> failures;
    return failures;
}

// Reads `size` bytes from the device's place into `buffer` or, at the
// device's end, fewer; false when reading fails.
bool ReadRange(QFile &file, char *buffer, qint64 size, qint64 *got)
{
    while (*got < size) {
        const qint64 read = file.read(buffer + *got, qMin(size - *got, kPieceBytes));
        if (read < 0)
            return false;
        if (read == 0)
            break;
        *got += read;
    }
    return true;
}

// Reads the file's present size, no more, so that a file growing meanwhile
// still reads as the size it had; a file that shrinks meanwhile ends where
// it now ends. A large file is read in parts at once, which also shares out
// the work of giving the program fresh memory for it.
std::shared_ptr<CellText> ReadBytes(const QString &path, ReadFailure *failure)
{
    *failure = InjectedFailures().value(path, ReadFailure::None);
    if (*failure != ReadFailure::None)
        return nullptr;
    auto text = std::make_shared<CellText>();
    const QFileInfo info(path);
    if (!info.isFile()) {
        text->Allocate(0);
        return text;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *failure = ReadFailure::ReadError;
        return nullptr;
    }
    const qint64 size = file.size();
    if (!FitsInMemory(size) || !text->Allocate(size)) {
        *failure = ReadFailure::OutOfMemory;
        return nullptr;
    }
    const int parts = size >= kPartedBytes ? ParallelParts::Count() : 1;
    std::vector<qint64> got(size_t(parts), 0);
    std::vector<char> failed(size_t(parts), 0);
    ParallelParts::Run(parts, [&](int part) {
        const qint64 from = size * part / parts;
        const qint64 to = size * (part + 1) / parts;
        QFile piece(path);
        failed[size_t(part)] = !piece.open(QIODevice::ReadOnly) || !piece.seek(from)
                               || !ReadRange(piece, text->Buffer() + from, to - from, &got[size_t(part)]);
    });
    if (std::find(failed.begin(), failed.end(), 1) != failed.end()) {
        *failure = ReadFailure::ReadError;
        return nullptr;
    }
    // A part that ends short has met the file's present end.
    qint64 end = 0;
    for (int part = 0; part < parts && end == size * part / parts; ++part)
        end += got[size_t(part)];
    text->Truncate(end);
    return text;
}

bool StartsWithUtf8Mark(const CellText &text)
{
    return text.Bytes().substr(0, 3) == "\xEF\xBB\xBF";
}

// UTF-16 and UTF-32 files are turned into UTF-8 once, piece by piece, so
// that cells can still be cut at TAB and LF bytes. The converter's state
// carries a character split between pieces.
std::shared_ptr<CellText> ToUtf8(const CellText &text, QTextCodec *codec)
{
    auto converted = std::make_shared<CellText>();
    // Two bytes of UTF-16 never take more than three of UTF-8.
    if (!converted->Allocate(text.Size() / 2 * 3 + 8))
        return nullptr;
    QTextCodec::ConverterState state;
    qint64 written = 0;
    for (qint64 done = 0; done < text.Size(); done += kPieceBytes) {
        const int length = int(qMin(text.Size() - done, kPieceBytes));
        const QByteArray piece =
            codec->toUnicode(text.Data() + done, length, &state).remove(QLatin1Char('\r')).toUtf8();
        std::memcpy(converted->Buffer() + written, piece.constData(), size_t(piece.size()));
        written += piece.size();
    }
    converted->Truncate(written);
    return converted;
}

// A text stream holds back the start of a multi-byte character until the
// rest arrives; at the end of the file it never does, and the bytes vanish.
void DropUnfinishedCharacter(CellText &text)
{
    const std::string_view bytes = text.Bytes();
    qint64 lead = text.Size() - 1;
    while (lead >= 0 && lead >= text.Size() - 3 && (uchar(bytes[size_t(lead)]) & 0xC0) == 0x80)
        --lead;
    if (lead < 0 || (uchar(bytes[size_t(lead)]) & 0xC0) != 0xC0)
        return;
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    const QString decoded = QTextCodec::codecForMib(106)->toUnicode(bytes.data() + lead,
                                                                     int(text.Size() - lead), &state);
    if (decoded.isEmpty() && state.remainingChars > 0)
        text.Truncate(lead);
}

} // namespace

std::shared_ptr<CellText> FileText::Read(const QString &path, ReadFailure *failure)
{
    std::shared_ptr<CellText> text = ReadBytes(path, failure);
    if (!text)
        return nullptr;

    QTextCodec *locale = QTextCodec::codecForLocale();
    const QByteArray start = QByteArray::fromRawData(text->Data(), int(qMin<qint64>(text->Size(), 4)));
    QTextCodec *detected = QTextCodec::codecForUtfText(start, locale);
    if (StartsWithUtf8Mark(*text)) {
        text->DropFront(3);
    } else if (detected != locale && detected->mibEnum() != 106) {
        text = ToUtf8(*text, detected);
        if (!text) {
            *failure = ReadFailure::OutOfMemory;
            return nullptr;
        }
    } else if (locale->mibEnum() != 106) {
        text->SetCodec(locale);
    }
    if (!text->Codec())
        DropUnfinishedCharacter(*text);
    // CRs at the very end decode to nothing, so they cannot make a last line.
    qint64 end = text->Size();
    while (end > 0 && text->Data()[end - 1] == '\r')
        --end;
    text->Truncate(end);
    return text;
}

void FileText::InjectFailure(const QString &path, ReadFailure failure)
{
    if (failure == ReadFailure::None)
        InjectedFailures().remove(path);
    else
        InjectedFailures().insert(path, failure);
}
