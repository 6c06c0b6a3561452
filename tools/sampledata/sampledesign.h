// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

// One trial of a design: its name, stimulus, the key that answers it, how
// much slower than the easiest trial it is answered, and its values of the
// design's own trial variables.
struct SampleTrial
{
    QByteArray name;
    QByteArray stimulus;
    QByteArray expectedKey;
    int extraMilliseconds;
    QVector<QByteArray> values;
};

// A column right of the reaction time: a trial variable or a code column.
// Its values come from the trial (`trialValue` >= 0) or are drawn per row.
struct SampleColumn
{
    QByteArray upper;
    QByteArray lower;
    int trialValue = -1;
    QVector<QByteArray> choices;
};

// What an experiment's files hold: the experiment's name, its trials, the
// keys used to answer, and the columns right of the reaction time.
class SampleDesign
{
public:
    // "stroop" or "lexical"; an empty design for any other name.
    static SampleDesign Named(const QString &name);
    static QStringList Names();

    bool IsValid() const { return !trials.isEmpty(); }
    QString ExperimentName() const { return experimentName; }
    const QVector<SampleTrial> &Trials() const { return trials; }
    const QVector<QByteArray> &Keys() const { return keys; }
    // `trialVariables` trial variable columns, then `codeColumns` code
    // columns: the design's own first, invented ones beyond them.
    QVector<SampleColumn> Columns(int trialVariables, int codeColumns) const;

private:
    static SampleDesign Stroop();
    static SampleDesign Lexical();

    QString experimentName;
    QVector<SampleTrial> trials;
    QVector<QByteArray> keys;
    QVector<SampleColumn> ownVariables;
    QVector<SampleColumn> ownCodeColumns;
};
