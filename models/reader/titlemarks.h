#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <QStringView>
#include <QVector>

// A title row as the reader builds it: "Flag", then the file's titles, each
// repeat of an earlier title marked with as many "#" as set it apart. Beside
// each title stands the size of its text without trailing "#", so titles
// can be compared and looked at without walking their marks: n equal titles
// carry about n * n / 2 marks in all.
struct TitleRow
{
    QStringList titles;
    QVector<int> baseSizes;

    void Append(const QString &title, int baseSize);
    QStringView Base(int index) const { return QStringView(titles[index]).left(baseSizes[index]); }
    int Marks(int index) const { return titles[index].size() - baseSizes[index]; }
    // Orders titles as QString's operator< would order their whole texts.
    bool Less(int left, int right) const;
};

// Gives each title, in order, the fewest extra "#" that set it apart from
// every title before it. Titles are compared as their text without
// trailing "#" plus the number of them, so a title "A#" and a repeat "A"
// marked once meet as the same title.
class RepeatMarks
{
public:
    void Add(const QString &title, TitleRow *row);

private:
    int FreeCount(const QString &base, int count);

    QHash<QString, QHash<int, int>> taken;
};

// The text of `base` followed by `marks` "#". The marks of all titles with
// one base share a single run of "#" that lives as long as the program,
// since a copy of a title (a drop-down's item, a section's column name) may
// outlive the file it came from.
QString MarkedTitle(const QString &base, int marks);
