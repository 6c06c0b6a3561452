// SPDX-License-Identifier: GPL-3.0-or-later
#include "chunkedlines.h"

#include "linefacts.h"

#include <QTextStream>

namespace {

// Below the stream's own buffer of 16 KB, so that reading a short header
// decodes no more of the file than a readLine would.
const int kChunkCharacters = 8192;

} // namespace

ChunkedLines::ChunkedLines(QTextStream &stream)
    : stream(stream)
{
}

bool ChunkedLines::AtEnd() const
{
    return position >= chunk.size() && stream.atEnd();
}

// No CR ever reaches the pieces: on a device opened in text mode the stream
// drops every one of them, so a line ends at LF alone.
void ChunkedLines::NextLine(LineFacts *facts)
{
    while (position < chunk.size() || Refill()) {
        const int lineFeed = chunk.indexOf(QLatin1Char('\n'), position);
        const int end = lineFeed < 0 ? chunk.size() : lineFeed;
        facts->Add(QStringView(chunk).mid(position, end - position));
        position = end;
        if (lineFeed >= 0) {
            ++position;
            return;
        }
    }
}

void ChunkedLines::Rewind()
{
    stream.seek(0);
    chunk.clear();
    position = 0;
}

bool ChunkedLines::Refill()
{
    chunk = stream.read(kChunkCharacters);
    position = 0;
    return !chunk.isEmpty();
}
