// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "participanttrials.h"

class MainModel;

// Reads a file's rows out of its table into the columns that the
// participant summary computes on. The window reads each file of the view
// once and only renews the hidden marks as rows are hidden and shown; the
// command-line tool reads each file as it opens it.
class TrialExtractor
{
public:
    // Rows firstRow to firstRow + rowCount - 1 of `model`'s whole table,
    // hidden ones included and marked: one file of a combined view, or all
    // of a single file's table.
    static ParticipantTrials Extract(const MainModel &model, int firstRow, int rowCount, const QString &name);
    // The marks of the same rows that `model` hides now.
    static QVector<bool> HiddenRows(const MainModel &model, int firstRow, int rowCount);
    // A condition column's name for a column title: "\n(Trial Variable)"
    // taken out and each other line break made a space ("Block Name",
    // "Congruency", "Congruency#"). Empty for a title that names no
    // condition: only "Block Name", "Trial Name" and trial variables do.
    static QString ConditionColumnName(const QString &title);
};
