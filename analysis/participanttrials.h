// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "codedcolumn.h"
#include "textcolumn.h"

#include <QString>
#include <QStringList>
#include <QVector>

// One participant's rows as the participant summary reads them: taken from
// the file's table once (TrialExtractor) and kept as columns, so that the
// summary is computed again for any setting without going back to the
// cells. Position i of every column is the file's data row i, which the
// summary and its exclusion record call row i + 1. Implicitly shared, so a
// result may keep its input at no cost.
struct ParticipantTrials
{
    // The file name without its directory, made unique among the files
    // summarised together (ParticipantNames).
    QString name;
    // The "Error\nCode" cell as written; CodeIndex of the text is the code.
    // Empty texts where the file has no such column.
    CodedColumn codes;
    // The "Reaction\nTime" cell read as the statistics read it, but not
    // truncated; NaN for a cell that does not parse or gives an infinite or
    // undefined value, and where the file has no such column.
    QVector<double> times;
    // The same cell as written, for the exclusion record.
    TextColumn timeTexts;
    // Every column that can name a condition ("Block Name", "Trial Name" and
    // the trial variables), by name (ConditionColumnName), in file order;
    // an empty cell reads "<No Name>".
    QStringList conditionNames;
    QVector<CodedColumn> conditions;
    // The rows that the table in view hides; empty when none is.
    QVector<bool> hidden;

    int RowCount() const { return times.size(); }
    bool IsHidden(int row) const { return !hidden.isEmpty() && hidden[row]; }
    // CodeIndex of each text of `codes`, so that a row's code is
    // CodeSlots()[codes.ids[row]].
    QVector<int> CodeSlots() const;
    // Position of a condition column in `conditions`, or -1.
    int ConditionIndex(const QString &name) const { return conditionNames.indexOf(name); }
    // The row's values in the named condition columns; "<No Name>" in a
    // column that this participant's file lacks.
    QStringList ConditionValues(const QStringList &names, int row) const;

    // Every condition column that some participant has: the first
    // participant's in file order, then those new in each further one.
    static QStringList ConditionNamesOf(const QVector<ParticipantTrials> &participants);
    // What an empty condition cell reads.
    static QString NoName() { return QStringLiteral("<No Name>"); }
};
