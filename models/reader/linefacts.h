// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

#include <bitset>

// What the validator asks of one line, gathered from the line's pieces in
// order, so that a line of any length costs a fixed amount of memory: its
// length, its first character, which ASCII characters it holds and, when
// words are given, whether it holds any of them.
class LineFacts
{
public:
    explicit LineFacts(const QStringList &words = QStringList());

    void Add(QStringView piece);

    bool IsEmpty() const { return length == 0; }
    // The answers of HeaderLine's tests for the whole line.
    bool IsFieldLine() const;
    bool IsDotLine() const;
    bool HasNoWhiteSpace() const;
    bool Contains(char ascii) const { return seen.test(size_t(uchar(ascii))); }
    bool ContainsAnyWord() const { return wordFound; }

private:
    void SearchWords(QStringView piece);

    qint64 length = 0;
    QChar first;
    std::bitset<128> seen;
    QStringList words;
    bool wordFound = false;
    // The end of the line so far, one character shorter than the longest
    // word, so that a word split across two pieces is still found.
    QString tail;
};
