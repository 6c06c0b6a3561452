// SPDX-License-Identifier: GPL-3.0-or-later
#include "summarytool.h"

#include "datafile.h"
#include "exclusionrecord.h"
#include "participantnames.h"
#include "summarycomputation.h"
#include "summarytable.h"
#include "tooloutput.h"
#include "trialextractor.h"

#include <QCommandLineParser>
#include <QFileInfo>

namespace {

// What one --procedure, --sd-scope or --layout may be.
struct NamedOption
{
    QString option;
    const QStringList &names;
};

QString Quoted(const QString &text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

QString QuotedList(const QStringList &texts)
{
    QStringList quoted;
    for (const QString &text : texts)
        quoted << Quoted(text);
    return quoted.join(QStringLiteral(", "));
}

} // namespace

SummaryTool::SummaryTool()
    : CommandLineTool(QStringLiteral("zephlane-summary"), QStringLiteral("Data files, one per participant."))
{
}

void SummaryTool::DescribeOptions(QCommandLineParser &parser) const
{
    parser.setApplicationDescription(QStringLiteral(
        "Writes a participant summary of Kelmarun data files as CSV: per participant and condition the\n"
        "counts of each code, accuracy, and mean, median and SD of the correct reaction times after a\n"
        "trimming procedure; the table of Zephlane's \"Export CSV...\" for these files and settings."));
    parser.addOptions({
        {QStringLiteral("by"),
         QStringLiteral("Condition column to group by: \"Block Name\", \"Trial Name\" or a trial variable; "
                        "repeat for more."),
         QStringLiteral("column")},
        {QStringLiteral("procedure"),
         QStringLiteral("Trimming of correct times: none (default), absolute, sd, nonrecursive, modified-recursive."),
         QStringLiteral("name")},
        {QStringLiteral("min"), QStringLiteral("Remove correct times below <ms>; with any procedure but none."),
         QStringLiteral("ms")},
        {QStringLiteral("max"), QStringLiteral("Remove correct times above <ms>; with any procedure but none."),
         QStringLiteral("ms")},
        {QStringLiteral("sd"), QStringLiteral("With --procedure sd: remove times beyond <k> SDs of the mean (2.5)."),
         QStringLiteral("k")},
        {QStringLiteral("sd-scope"),
         QStringLiteral("With --procedure sd: times that mean and SD are taken over: cell (default), participant, "
                        "condition, all."),
         QStringLiteral("scope")},
        {QStringLiteral("min-accuracy"), QStringLiteral("Leave out participants whose accuracy is below <p>, 0 to 1."),
         QStringLiteral("p")},
        {QStringLiteral("layout"),
         QStringLiteral("long (default): a line per participant and condition; wide: a line per participant."),
         QStringLiteral("layout")},
        {QStringLiteral("exclusions"), QStringLiteral("Write the record of every row left out to <file>."),
         QStringLiteral("file")},
    });
}

bool SummaryTool::ReadOptions(const QCommandLineParser &parser)
{
    exclusionsName = parser.value(QStringLiteral("exclusions"));
    return ReadColumns(parser) && ReadNames(parser) && ReadNumbers(parser) && Usable();
}

bool SummaryTool::ReadColumns(const QCommandLineParser &parser)
{
    settings.conditionColumns = parser.values(QStringLiteral("by"));
    for (const QString &column : settings.conditionColumns) {
        if (settings.conditionColumns.count(column) > 1) {
            Complain(QStringLiteral("--by names %1 twice").arg(Quoted(column)));
            return false;
        }
    }
    return true;
}

bool SummaryTool::ReadNames(const QCommandLineParser &parser)
{
    const NamedOption options[] = {{QStringLiteral("procedure"), SummarySettings::ProcedureNames()},
                                   {QStringLiteral("sd-scope"), SummarySettings::ScopeNames()},
                                   {QStringLiteral("layout"), SummarySettings::LayoutNames()}};
    int chosen[3] = {};
    for (int i = 0; i < 3; ++i) {
        if (!parser.isSet(options[i].option))
            continue;
        chosen[i] = options[i].names.indexOf(parser.value(options[i].option));
        if (chosen[i] < 0) {
            Complain(QStringLiteral("--%1 takes one of %2, not %3")
                         .arg(options[i].option, options[i].names.join(QStringLiteral(", ")),
                              Quoted(parser.value(options[i].option))));
            return false;
        }
    }
    settings.procedure = SummarySettings::Procedure(chosen[0]);
    if (parser.isSet(options[1].option))
        settings.scope = SummarySettings::SdScope(chosen[1]);
    settings.layout = SummarySettings::Layout(chosen[2]);
    return true;
}

bool SummaryTool::ReadNumbers(const QCommandLineParser &parser)
{
    const std::pair<QString, TypedNumber *> numbers[] = {{QStringLiteral("min"), &settings.min},
                                                         {QStringLiteral("max"), &settings.max},
                                                         {QStringLiteral("sd"), &settings.sd},
                                                         {QStringLiteral("min-accuracy"), &settings.minAccuracy}};
    for (const auto &[option, number] : numbers) {
        if (parser.isSet(option) && !TypedNumber::Read(parser.value(option), number)) {
            Complain(QStringLiteral("--%1 takes a number, not %2").arg(option, Quoted(parser.value(option))));
            return false;
        }
    }
    return true;
}

bool SummaryTool::Usable()
{
    switch (settings.Check()) {
    case SummarySettings::Problem::None:
        return true;
    case SummarySettings::Problem::BoundWithoutProcedure:
        Complain(QStringLiteral("--min and --max need a --procedure other than none"));
        break;
    case SummarySettings::Problem::AbsoluteWithoutBound:
        Complain(QStringLiteral("--procedure absolute needs --min, --max or both"));
        break;
    case SummarySettings::Problem::BoundsCrossed:
        Complain(QStringLiteral("--min %1 is above --max %2").arg(settings.min.text, settings.max.text));
        break;
    case SummarySettings::Problem::SdWithoutSdProcedure:
        Complain(QStringLiteral("--sd and --sd-scope go with --procedure sd only"));
        break;
    case SummarySettings::Problem::SdNotPositive:
        Complain(QStringLiteral("--sd takes a number above 0, not %1").arg(settings.sd.text));
        break;
    case SummarySettings::Problem::AccuracyOutOfRange:
        Complain(QStringLiteral("--min-accuracy takes a fraction from 0 to 1, not %1").arg(settings.minAccuracy.text));
        break;
    }
    return false;
}

// Each file is read and let go before the next; only its columns stay.
int SummaryTool::Work(const QStringList &paths)
{
    if (!exclusionsName.isEmpty() && !OutputName().isEmpty()
        && QFileInfo(exclusionsName).absoluteFilePath() == QFileInfo(OutputName()).absoluteFilePath()) {
        Complain(QStringLiteral("--exclusions and --output name the same file"));
        return Refused;
    }
    const std::unique_ptr<ToolOutput> output = OpenOutput(OutputName(), QIODevice::WriteOnly);
    if (!output)
        return NotWritten;
    std::unique_ptr<ToolOutput> exclusions;
    if (!exclusionsName.isEmpty() && !(exclusions = OpenOutput(exclusionsName, QIODevice::WriteOnly)))
        return NotWritten;
    const QStringList names = ParticipantNames::ForPaths(paths);
    QVector<ParticipantTrials> participants;
    const bool read = ReadEach(paths, [&](DataFile &file) {
        const MainModel &model = file.GetMainModel();
        participants.append(TrialExtractor::Extract(model, 0, model.TotalRowCount(), names[participants.size()]));
        return QString();
    });
    if (!read)
        return NotWritten;
    if (!KnowsColumns(participants))
        return Refused;
    return Write(SummaryComputation::Run(participants, settings), *output, exclusions.get());
}

bool SummaryTool::KnowsColumns(const QVector<ParticipantTrials> &participants) const
{
    const QStringList there = ParticipantTrials::ConditionNamesOf(participants);
    for (const QString &column : settings.conditionColumns) {
        if (there.contains(column))
            continue;
        Complain(there.isEmpty() ? QStringLiteral("no file has the column %1, nor any other to group by").arg(Quoted(column))
                                 : QStringLiteral("no file has the column %1; the columns to group by are %2")
                                       .arg(Quoted(column), QuotedList(there)));
        return false;
    }
    return true;
}

// Both files are complete before either takes its name.
int SummaryTool::Write(const SummaryResult &result, ToolOutput &output, ToolOutput *exclusions) const
{
    if (exclusions) {
        exclusions->Device().write(ExclusionRecord::Of(result).Csv());
        if (!exclusions->Flush()) {
            PrintLine(exclusions->ErrorText());
            return NotWritten;
        }
    }
    output.Device().write(SummaryTable::Of(result).Csv());
    if (!output.Flush() || !output.Commit()) {
        PrintLine(output.ErrorText());
        return NotWritten;
    }
    if (exclusions && !exclusions->Commit()) {
        PrintLine(exclusions->ErrorText());
        return NotWritten;
    }
    if (ShowsProgress()) {
        PrintLine(QStringLiteral("%1 participants in the table, %2 cells, %3 rows left out")
                      .arg(result.ParticipantsInTable())
                      .arg(result.cells.size())
                      .arg(result.exclusions.size()));
    }
    return Written;
}
