// SPDX-License-Identifier: GPL-3.0-or-later
#include "linebuffer.h"

#include <QIODevice>

namespace {

const int kChunk = 1 << 20;

} // namespace

LineBuffer::LineBuffer(QIODevice *device)
    : device(device)
{
    buffer.reserve(kChunk + 4096);
}

LineBuffer::~LineBuffer()
{
    Flush();
}

void LineBuffer::AppendNumber(qint64 number)
{
    if (number < 0) {
        buffer.append('-');
        number = -number;
    }
    char digits[20];
    int count = 0;
    do {
        digits[count++] = char('0' + number % 10);
        number /= 10;
    } while (number > 0);
    while (count > 0)
        buffer.append(digits[--count]);
}

void LineBuffer::AppendHundredths(qint64 hundredths)
{
    if (hundredths < 0) {
        buffer.append('-');
        hundredths = -hundredths;
    }
    AppendNumber(hundredths / 100);
    buffer.append('.');
    buffer.append(char('0' + hundredths / 10 % 10));
    buffer.append(char('0' + hundredths % 10));
}

void LineBuffer::EndLine()
{
    buffer.append('\n');
    if (buffer.size() >= kChunk)
        Flush();
}

bool LineBuffer::Flush()
{
    if (!buffer.isEmpty() && device->write(buffer) != buffer.size())
        failed = true;
    buffer.resize(0);
    return !failed;
}
