// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "datafilebuilder.h"
#include "summaryresult.h"

#include <QMetaType>
#include <QTemporaryDir>

// Settings as a column of data-driven tests.
Q_DECLARE_METATYPE(SummarySettings)

// Writes the data files of a participant summary test, one per participant
// under the participant's name, and summarises them as the command-line
// tool does: every row of every file, in the order added.
//   SummaryFiles().Participant("p1", {"B1,T1,C,300,con"}).Run(settings)
class SummaryFiles
{
public:
    // The columns "Block Name", "Trial Name", "Error Code", "Reaction Time"
    // and the trial variable "Congruency", each row given as
    // "block,trial,code,time,congruency".
    static DataFileBuilder Short(const QStringList &rows);
    // One block and trial of correct rows with these times, all congruent.
    static QStringList Correct(const QList<double> &times);
    // Settings with these condition columns and this procedure, and the
    // numbers given as typed; an empty text leaves a number out.
    static SummarySettings Settings(const QStringList &columns,
                                    SummarySettings::Procedure procedure = SummarySettings::Procedure::None,
                                    const QString &min = QString(), const QString &max = QString(),
                                    const QString &sd = QString());

    SummaryFiles &Participant(const QString &name, const QStringList &rows);
    SummaryFiles &File(const QString &name, const DataFileBuilder &builder);

    QStringList Paths() const { return paths; }
    // Each file opened and read as the tool reads it, named by its file
    // name; ReadTrials does the same for files written elsewhere.
    QVector<ParticipantTrials> Trials() const { return ReadTrials(paths); }
    static QVector<ParticipantTrials> ReadTrials(const QStringList &paths);
    SummaryResult Run(const SummarySettings &settings) const;

private:
    QTemporaryDir dir;
    QStringList paths;
};
