// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "summaryresult.h"
#include "texttable.h"

// The record of every row a summary left out, one line each by participant
// and row: participant, row, the row's condition values, code and reaction
// time as written in the file, the reason, the criterion it crossed, and
// the whole setting, so that the file documents itself.
class ExclusionRecord
{
public:
    static TextTable Of(const SummaryResult &result);
    // "too_fast", "too_slow", "invalid_rt", "low_accuracy", "hidden".
    static QString ReasonName(ExclusionReason reason);
};
