// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "typednumber.h"

#include <QStringList>

#include <optional>

class QSettings;

// Everything that decides a participant summary besides its files: the
// condition columns, the trimming procedure and its numbers, the accuracy
// threshold and the layout. One value that the window keeps in its settings
// and that the command line and the exclusion record spell out, so that
// each can be rebuilt from the other.
struct SummarySettings
{
    // The numeric values are positions in the name lists below.
    enum class Procedure { None, Absolute, Sd, Nonrecursive, ModifiedRecursive };
    enum class SdScope { Cell, Participant, Condition, All };
    enum class Layout { Long, Wide };
    // What makes settings unusable, the first found in this order.
    enum class Problem {
        None,
        BoundWithoutProcedure, // a bound with the procedure none
        AbsoluteWithoutBound,  // absolute with neither bound
        BoundsCrossed,         // the lower bound above the upper
        SdWithoutSdProcedure,  // a factor or a scope with a procedure other than sd
        SdNotPositive,         // a factor of 0 or below
        AccuracyOutOfRange,    // a threshold outside 0 to 1
    };

    // Names of condition columns (TrialExtractor::ConditionColumnName), in
    // the order of the table's columns.
    QStringList conditionColumns;
    Procedure procedure = Procedure::None;
    // Absolute bounds in ms; a time below `min` is too fast, above `max` too
    // slow, one equal to a bound is kept.
    TypedNumber min;
    TypedNumber max;
    // The sd procedure's factor k and the scope of its mean and deviation.
    TypedNumber sd;
    std::optional<SdScope> scope;
    // A participant whose accuracy is below this fraction is left out.
    TypedNumber minAccuracy;
    Layout layout = Layout::Long;

    // "none", "absolute", "sd", "nonrecursive", "modified-recursive".
    static const QStringList &ProcedureNames();
    // "cell", "participant", "condition", "all".
    static const QStringList &ScopeNames();
    // "long", "wide".
    static const QStringList &LayoutNames();

    // k: 2.5 unless given.
    double SdFactor() const { return sd.Given() ? sd.value : 2.5; }
    SdScope Scope() const { return scope.value_or(SdScope::Cell); }
    Problem Check() const;

    // The procedure field of the exclusion record: the procedure's name,
    // then "key=value" for min, max, sd, scope and min-accuracy where given,
    // numbers as typed, joined by "; ".
    QString ProcedureText() const;
    // The zephlane-summary command that computes the same table from these
    // files, each argument quoted for a POSIX shell where it needs it.
    QString CommandLine(const QStringList &paths) const;
    // A single argument as a POSIX shell reads it back unchanged.
    static QString ShellQuoted(const QString &argument);

    // Kept as names and typed texts in the current group of `store`; what
    // cannot be read back keeps its default.
    void Save(QSettings &store) const;
    static SummarySettings Load(const QSettings &store);

    bool operator==(const SummarySettings &other) const;
    bool operator!=(const SummarySettings &other) const { return !(*this == other); }
};
