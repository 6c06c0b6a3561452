// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "hugepages.h"

#include <QString>
#include <QtGlobal>

#include <string_view>

class QTextCodec;

// The bytes that cells are cut from, with the decoding that turns a slice
// into the text a text stream over the same bytes would have produced. The
// bytes live in a buffer of their own rather than a QByteArray, which
// could not hold a file of 2 GB or more.
class CellText
{
public:
    // The longest slice that decodes in full: its text must fit a QString.
    static constexpr qint64 kMaxDecodedBytes = (qint64(1) << 30) - 64;
    // Bytes after the last that may be read, all NULs at first: a cell's
    // first eight bytes can then be read at once, however short it is.
    static constexpr qint64 kPaddingBytes = 8;

    // Makes room for `size` bytes; false when memory does not allow it.
    bool Allocate(qint64 size);
    char *Buffer() { return storage.get(); }
    const char *Data() const { return storage.get() + start; }
    qint64 Size() const { return size; }
    std::string_view Bytes() const { return std::string_view(Data(), size_t(size)); }
    void DropFront(qint64 count);
    void Truncate(qint64 newSize) { size = qBound<qint64>(0, newSize, size); }

    // Null means UTF-8, the decoding of nearly every file.
    QTextCodec *Codec() const { return codec; }
    void SetCodec(QTextCodec *value) { codec = value; }

    // A slice longer than kMaxDecodedBytes gives the text of its first
    // kMaxDecodedBytes bytes.
    QString Decode(std::string_view bytes) const;
    // The slice read as QString::toDouble or QString::toInt (base 10) would
    // read its text, 0 when that fails.
    double ToDouble(std::string_view bytes, bool *ok) const;
    int ToInt(std::string_view bytes, bool *ok) const;

private:
    QString DecodeBytes(const char *data, int length) const;

    HugePages::Block<char> storage;
    qint64 start = 0;
    qint64 size = 0;
    QTextCodec *codec = nullptr;
};
