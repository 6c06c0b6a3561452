// SPDX-License-Identifier: GPL-3.0-or-later
#include "sectionindex.h"

SectionIndex::SectionIndex(QVector<SectionStats> *sections, bool eraseAtOnce)
    : sections(sections)
    , eraseAtOnce(eraseAtOnce)
    , erasedCounts(sections->size() + 1, 0)
    , erased(sections->size(), false)
{
    byName.reserve(sections->size());
    // Names are unique within a list; the first place wins all the same.
    for (int i = sections->size() - 1; i >= 0; --i)
        byName.insert(sections->at(i).name, i);
}

int SectionIndex::Find(const QString &name) const
{
    return byName.value(name, -1);
}

int SectionIndex::RowOf(int section) const
{
    return section - ErasedBefore(section);
}

SectionStats &SectionIndex::Record(int section)
{
    return (*sections)[eraseAtOnce ? RowOf(section) : section];
}

void SectionIndex::Erase(int section)
{
    const QString name = Record(section).name;
    if (byName.value(name, -1) == section)
        byName.remove(name);
    if (eraseAtOnce)
        sections->remove(RowOf(section));
    erased[section] = true;
    for (int i = section + 1; i < erasedCounts.size(); i += i & -i)
        erasedCounts[i]++;
}

int SectionIndex::Append(const SectionStats &record)
{
    const int section = sections->size();
    sections->append(record);
    byName.insert(record.name, section);
    erased.append(false);
    return section;
}

void SectionIndex::Finish()
{
    if (eraseAtOnce)
        return;
    int kept = 0;
    for (int i = 0; i < sections->size(); ++i) {
        if (i < erased.size() && erased[i])
            continue;
        if (kept != i)
            (*sections)[kept] = std::move((*sections)[i]);
        ++kept;
    }
    sections->resize(kept);
}

int SectionIndex::ErasedBefore(int section) const
{
    int count = 0;
    for (int i = qMin(section, erasedCounts.size() - 1); i > 0; i -= i & -i)
        count += erasedCounts[i];
    return count;
}
