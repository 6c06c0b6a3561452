// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "texttable.h"

struct SummaryCell;
struct SummaryResult;

// The participant summary as a table of text, from a result's numbers:
// the long layout with one line per cell, or the wide layout with one line
// per participant. The window shows and exports it, the command-line tool
// writes it; numbers are fixed point with a full stop (FixedPoint).
class SummaryTable
{
public:
    // The layout of the result's settings.
    static TextTable Of(const SummaryResult &result);
    static TextTable Long(const SummaryResult &result);
    // After "participant", every measure of every condition, titled "<the
    // condition's values joined by ' / '>: <measure>", or with the bare
    // measure names when there is no condition column. Conditions come in
    // the order they first appear; a participant's missing cells are empty.
    // A participant whose rows are all hidden has a line of empty fields.
    static TextTable Wide(const SummaryResult &result);
    // The measures of a line, from "trials" to "rt_invalid".
    static const QStringList &MeasureNames();

private:
    static QStringList Measures(const SummaryCell &cell);
};
