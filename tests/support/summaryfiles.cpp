// SPDX-License-Identifier: GPL-3.0-or-later
#include "summaryfiles.h"

#include "datafile.h"
#include "summarycomputation.h"
#include "trialextractor.h"

#include <QFileInfo>

DataFileBuilder SummaryFiles::Short(const QStringList &rows)
{
    return DataFileBuilder()
        .Columns(QStringLiteral("Block/Name,Trial/Name,Error/Code,Reaction/Time,Congruency/(Trial Variable)"))
        .Rows(rows);
}

QStringList SummaryFiles::Correct(const QList<double> &times)
{
    QStringList rows;
    for (const double time : times)
        rows << QStringLiteral("B1,T1,C,%1,con").arg(QString::number(time, 'g', 15));
    return rows;
}

SummarySettings SummaryFiles::Settings(const QStringList &columns, SummarySettings::Procedure procedure,
                                       const QString &min, const QString &max, const QString &sd)
{
    SummarySettings settings;
    settings.conditionColumns = columns;
    settings.procedure = procedure;
    TypedNumber::Read(min, &settings.min);
    TypedNumber::Read(max, &settings.max);
    TypedNumber::Read(sd, &settings.sd);
    return settings;
}

SummaryFiles &SummaryFiles::Participant(const QString &name, const QStringList &rows)
{
    return File(name, Short(rows));
}

SummaryFiles &SummaryFiles::File(const QString &name, const DataFileBuilder &builder)
{
    paths << builder.Write(dir.filePath(name));
    return *this;
}

QVector<ParticipantTrials> SummaryFiles::ReadTrials(const QStringList &paths)
{
    QVector<ParticipantTrials> trials;
    for (const QString &path : paths) {
        DataFile file(path);
        const MainModel &model = file.GetMainModel();
        trials.append(TrialExtractor::Extract(model, 0, model.TotalRowCount(), QFileInfo(path).fileName()));
    }
    return trials;
}

SummaryResult SummaryFiles::Run(const SummarySettings &settings) const
{
    return SummaryComputation::Run(Trials(), settings);
}
