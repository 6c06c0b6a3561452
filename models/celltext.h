#pragma once

#include <QByteArray>
#include <QString>

class QTextCodec;

// Bytes that cells are cut from, with the decoding that turns a slice into
// the text a text stream over the same bytes would have produced.
struct CellText
{
    QByteArray bytes;
    // Null means UTF-8, the decoding of nearly every file.
    QTextCodec *codec = nullptr;

    QString Decode(const char *data, int size) const;

private:
    QString DecodeBytes(const char *data, int size) const;
};
