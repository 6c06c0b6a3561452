// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "sectionstats.h"

// The share of one section's statistics that hidden rows took away, with
// the list it belongs to: `sectionType` 0 blocks, 1 trials, 2 a trial
// variable column and 3 a code column, both named by `columnName`.
struct HiddenSectionStats : SectionStats
{
    int sectionType = 0;
    QString columnName;

    HiddenSectionStats(const QString &name, int sectionType, const QString &columnName)
        : SectionStats(name)
        , sectionType(sectionType)
        , columnName(columnName)
    {
    }

    // Tells records apart by list, column and section name together.
    QString Key() const { return QString::number(sectionType) + QChar(0) + columnName + QChar(0) + name; }
};
