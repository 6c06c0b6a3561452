// SPDX-License-Identifier: GPL-3.0-or-later
#include "datafilevalidator.h"

#include "chunkedlines.h"
#include "linefacts.h"

#include <QFile>
#include <QFileInfo>
#include <QTextStream>

namespace {

// A line 3 with a colon passes only when it also holds one of / . -
bool LegacyLinesFail(const LineFacts &line2, const LineFacts &line3, const LineFacts &line4)
{
    const bool timeLike = line3.Contains(':') && !line3.Contains('/') && !line3.Contains('.') && !line3.Contains('-');
    const bool oneWord = !line4.IsEmpty() && line4.HasNoWhiteSpace();
    return line2.IsEmpty() || timeLike || oneWord;
}

// Steps through the header; leaves the lines before the two title lines,
// or returns false for a legacy header that fails.
bool SkipHeader(ChunkedLines &lines)
{
    bool sawDotted = false;
    while (!lines.AtEnd()) {
        LineFacts line;
        lines.NextLine(&line);
        if (line.IsFieldLine() || line.IsDotLine()) {
            sawDotted = true;
            continue;
        }
        if (sawDotted && line.IsEmpty())
            return true;
        lines.Rewind();
        LineFacts line1, line2, line3, line4;
        for (LineFacts *legacyLine : {&line1, &line2, &line3, &line4})
            lines.NextLine(legacyLine);
        return !LegacyLinesFail(line2, line3, line4);
    }
    return true;
}

// Only a regular file is opened at all: opening a named pipe would wait for
// a writer, and a device such as /dev/zero never ends.
bool IsDataFile(const QString &path)
{
    if (!QFileInfo(path).isFile())
        return false;
    QFile file(path);
    file.open(QIODevice::ReadOnly | QIODevice::Text);
    QTextStream stream(&file);
    ChunkedLines lines(stream);
    if (!SkipHeader(lines))
        return false;
    LineFacts upper({"Participant", "Pressed Or", "Error", "Reaction"});
    LineFacts lower({"Response", "Key", "Released", "Code", "Time"});
    lines.NextLine(&upper);
    lines.NextLine(&lower);
    return upper.ContainsAnyWord() && lower.ContainsAnyWord();
}

} // namespace

bool ValidateDataFiles(const QStringList &paths, const MessageReport &report)
{
    for (const QString &path : paths) {
        if (IsDataFile(path))
            continue;
        report(QStringLiteral("Zephlane"),
               paths.size() == 1 ? QStringLiteral("This file cannot be read. Please select a Kelmarun data file.")
                                 : QStringLiteral("One of these files cannot be read. Please select Kelmarun data files."));
        return false;
    }
    return true;
}

bool AnyPathAlreadyOpen(const QStringList &paths, const QStringList &openPaths, const MessageReport &report)
{
    for (const QString &path : paths) {
        if (openPaths.contains(path)) {
            report(QStringLiteral("Talvox Zephlane"),
                   QStringLiteral("One of the files that you have selected has already been opened."));
            return true;
        }
    }
    return false;
}
