// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <QStringView>
#include <QVector>

#include <memory>
#include <unordered_map>
#include <vector>

class TitleMarkStore;

// A title row as the reader builds it: "Flag", then the file's titles, each
// repeat of an earlier title marked with as many "#" as set it apart. Beside
// each title stands the size of its text without trailing "#", so titles
// can be compared and looked at without walking their marks: n equal titles
// carry about n * n / 2 marks in all.
struct TitleRow
{
    QStringList titles;
    QVector<int> baseSizes;
    // Where the marks of the titles live; null when no title has any.
    std::shared_ptr<const TitleMarkStore> marks;

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
    std::shared_ptr<TitleMarkStore> store;
};

// The text of marked titles: each base text followed by one run of "#"
// that all titles with that base share, so that n equal titles cost the
// text of one and not n * n / 2 marks. A title is a view into its run, and
// so is every copy of it (a drop-down's item, a section's column name):
// whatever keeps such a copy keeps the store, and the store goes with the
// last of them.
class TitleMarkStore
{
public:
    TitleMarkStore() = default;
    TitleMarkStore(const TitleMarkStore &) = delete;
    TitleMarkStore &operator=(const TitleMarkStore &) = delete;

    // The text of `base` followed by `marks` "#".
    QString Marked(const QString &base, int marks);

private:
    // A run grows by being replaced with a longer one; replaced runs stay,
    // as titles may still point into them.
    struct Run
    {
        std::unique_ptr<QChar[]> text;
        int capacity = 0;
    };

    std::unordered_map<QString, Run> runs;
    std::vector<std::unique_ptr<QChar[]>> replaced;
};
