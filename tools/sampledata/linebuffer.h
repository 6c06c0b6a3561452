// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

class QIODevice;

// Collects the bytes of a file in memory and hands them to the device in
// large pieces, so that writing a million lines costs a few hundred writes
// rather than one per cell.
class LineBuffer
{
public:
    explicit LineBuffer(QIODevice *device);
    ~LineBuffer();
    LineBuffer(const LineBuffer &) = delete;
    LineBuffer &operator=(const LineBuffer &) = delete;

    void Append(const QByteArray &bytes) { buffer.append(bytes); }
    void Append(char byte) { buffer.append(byte); }
    void AppendNumber(qint64 number);
    // `hundredths` / 100 with exactly two decimals: 51237 gives "512.37".
    void AppendHundredths(qint64 hundredths);
    // Ends the line and passes the buffer on once it has grown large.
    void EndLine();
    // Writes what is left; false if any write failed.
    bool Flush();

private:
    QIODevice *device;
    QByteArray buffer;
    bool failed = false;
};
