// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class LineFacts;
class QTextStream;

// Reads the lines of a text stream as QTextStream::readLine and atEnd do,
// but hands each line over in pieces of a bounded size instead of holding
// it whole: a file of one endless line costs no more than a short one.
class ChunkedLines
{
public:
    explicit ChunkedLines(QTextStream &stream);

    bool AtEnd() const;
    // Passes the next line to `facts`, piece by piece; at the end of the
    // stream it passes nothing, as an empty line.
    void NextLine(LineFacts *facts);
    // Back to the first line, as QTextStream::seek(0) would go.
    void Rewind();

private:
    bool Refill();

    QTextStream &stream;
    QString chunk;
    int position = 0;
};
