// SPDX-License-Identifier: GPL-3.0-or-later
#include "headerline.h"

namespace HeaderLine {

// Working on the characters rather than the UTF-8 bytes gives the same
// answers: every character the patterns look at is ASCII, and UTF-8 never
// encodes anything else with ASCII bytes. Hand-written, because a regex
// engine recurses per character and a huge line would exhaust the stack.
bool IsFieldLine(const QString &line)
{
    if (line.isEmpty() || line.at(0) != QLatin1Char('.'))
        return false;
    bool tab = false;
    for (int i = 1; i < line.size(); ++i) {
        const QChar c = line.at(i);
        // "." stops at line terminators, so no match can span them.
        if (c == QLatin1Char('\n') || c == QLatin1Char('\r'))
            return false;
        if (c == QLatin1Char('\t'))
            tab = true;
    }
    return tab;
}

bool IsDotLine(const QString &line)
{
    return line == QLatin1String(".");
}

} // namespace HeaderLine
