// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "sectionstats.h"

#include <QHash>
#include <QVector>

// Finds the sections of one list by name while hiding or showing rows
// changes the list. Sections that go are taken out at once when views are
// told of each one, and otherwise all together when the change is over, so
// that a list of many sections is not walked again for every one that goes.
// Sections are named by their place in the list when the change began.
class SectionIndex
{
public:
    SectionIndex(QVector<SectionStats> *sections, bool eraseAtOnce);

    // The section called `name`, or -1.
    int Find(const QString &name) const;
    // Where that section stands in the list now, as views count rows.
    int RowOf(int section) const;
    SectionStats &Record(int section);
    void Erase(int section);
    // Adds a section at the end and returns it; only while none has gone.
    int Append(const SectionStats &record);
    // Takes out the sections that Erase left standing.
    void Finish();

private:
    int ErasedBefore(int section) const;

    QVector<SectionStats> *sections;
    bool eraseAtOnce;
    QHash<QString, int> byName;
    // Counts of erased sections by place, as a binary indexed tree.
    QVector<int> erasedCounts;
    QVector<bool> erased;
};
