// SPDX-License-Identifier: GPL-3.0-or-later
#include "linefacts.h"

#include <algorithm>

LineFacts::LineFacts(const QStringList &words)
    : words(words)
{
}

void LineFacts::Add(QStringView piece)
{
    if (piece.isEmpty())
        return;
    if (length == 0)
        first = piece.front();
    length += piece.size();
    for (const QChar c : piece) {
        if (c.unicode() < 128)
            seen.set(c.unicode());
    }
    if (!words.isEmpty() && !wordFound)
        SearchWords(piece);
}

// Every character these tests look at is ASCII: "." stops at LF and CR, and
// "\S" excludes blank, TAB, LF, VT, FF and CR.
bool LineFacts::IsFieldLine() const
{
    return first == QLatin1Char('.') && Contains('\t') && !Contains('\n') && !Contains('\r');
}

bool LineFacts::IsDotLine() const
{
    return length == 1 && first == QLatin1Char('.');
}

bool LineFacts::HasNoWhiteSpace() const
{
    return !Contains(' ') && !Contains('\t') && !Contains('\n') && !Contains('\v') && !Contains('\f')
           && !Contains('\r');
}

void LineFacts::SearchWords(QStringView piece)
{
    QString text = tail;
    text.append(piece);
    for (const QString &word : words) {
        if (text.contains(word)) {
            wordFound = true;
            return;
        }
    }
    int keep = 0;
    for (const QString &word : words)
        keep = std::max(keep, int(word.size()) - 1);
    tail = text.right(keep);
}
