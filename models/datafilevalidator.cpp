#include "datafilevalidator.h"

#include "headerline.h"

#include <QFile>
#include <QMessageBox>
#include <QTextStream>

namespace {

bool ContainsAny(const QString &line, std::initializer_list<const char *> words)
{
    for (const char *word : words) {
        if (line.contains(QLatin1String(word)))
            return true;
    }
    return false;
}

// A line 3 with a colon passes only when it also holds one of / . -
bool LegacyLinesFail(const QString &line2, const QString &line3, const QString &line4)
{
    const bool timeLike = line3.contains(QLatin1Char(':')) && !line3.contains(QLatin1Char('/'))
                          && !line3.contains(QLatin1Char('.')) && !line3.contains(QLatin1Char('-'));
    const bool oneWord = !line4.isEmpty() && HeaderLine::HasNoWhiteSpace(line4);
    return line2.isEmpty() || timeLike || oneWord;
}

// Steps through the header; leaves the stream before the two title lines,
// or returns false for a legacy header that fails.
bool SkipHeader(QTextStream &stream)
{
    bool sawDotted = false;
    while (!stream.atEnd()) {
        const QString line = stream.readLine();
        if (HeaderLine::IsFieldLine(line) || HeaderLine::IsDotLine(line)) {
            sawDotted = true;
            continue;
        }
        if (sawDotted && line.isEmpty())
            return true;
        stream.seek(0);
        stream.readLine();
        const QString line2 = stream.readLine();
        const QString line3 = stream.readLine();
        const QString line4 = stream.readLine();
        return !LegacyLinesFail(line2, line3, line4);
    }
    return true;
}

bool IsDataFile(const QString &path)
{
    QFile file(path);
    file.open(QIODevice::ReadOnly | QIODevice::Text);
    QTextStream stream(&file);
    if (!SkipHeader(stream))
        return false;
    const QString upper = stream.readLine();
    const QString lower = stream.readLine();
    return ContainsAny(upper, {"Participant", "Pressed Or", "Error", "Reaction"})
           && ContainsAny(lower, {"Response", "Key", "Released", "Code", "Time"});
}

} // namespace

bool ValidateDataFiles(const QStringList &paths)
{
    for (const QString &path : paths) {
        if (IsDataFile(path))
            continue;
        const QString text = paths.size() == 1
                                 ? QStringLiteral("This file cannot be read. Please select a Kelmarun data file.")
                                 : QStringLiteral("One of these files cannot be read. Please select Kelmarun data files.");
        QMessageBox::information(nullptr, QStringLiteral("Zephlane"), text);
        return false;
    }
    return true;
}
