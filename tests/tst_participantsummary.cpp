// SPDX-License-Identifier: GPL-3.0-or-later
// The participant summary of data files: rows read from the table as the
// window and the tool read them, cells and their counts, the layouts, the
// exclusion record and the settings that describe them.

#include "datafile.h"
#include "exclusionrecord.h"
#include "filecombiner.h"
#include "participantnames.h"
#include "samplefilewriter.h"
#include "summarycomputation.h"
#include "summaryfiles.h"
#include "summarytable.h"
#include "testenvironment.h"
#include "trialextractor.h"

#include <QSettings>
#include <QtTest>

namespace {

using Procedure = SummarySettings::Procedure;
using Problem = SummarySettings::Problem;

SummarySettings Settings(const QStringList &columns, Procedure procedure = Procedure::None,
                         const QString &min = QString(), const QString &max = QString())
{
    return SummaryFiles::Settings(columns, procedure, min, max);
}

ParticipantTrials WholeFile(DataFile &file, const QString &name)
{
    const MainModel &model = file.GetMainModel();
    return TrialExtractor::Extract(model, 0, model.TotalRowCount(), name);
}

// Two participants: p1 has two blocks and a congruency value with a comma
// in it, p2 the blocks in the other order, a self-correction and a code
// that is none of the four. The second name needs quotes in a CSV file.
void WriteTwoParticipants(SummaryFiles &files)
{
    files.File("p1.txt", SummaryFiles::Short({"B1,T1,C,300,con", "B1,T1,C,310,con", "B1,T1,E,450,con"})
                             .Row({"B1", "T2", "C", "500", "inc, odd"})
                             .Rows({"B2,T1,C,320.5,con", "B2,T1,NR,,con"}));
    files.Participant("p2, retest.txt", {"B2,T1,C,400,con", "B1,T1,SC,350,con", "B1,T1,C,410,con", "B1,T1,X,300,con"});
}

QString ColumnOf(const TextTable &table, int row, const QString &title)
{
    return table.rows[row][table.header.indexOf(title)];
}

} // namespace

Q_DECLARE_METATYPE(SummarySettings::Problem)

class TestParticipantSummary : public QObject
{
    Q_OBJECT

private slots:
    // p1's cells in the order of their first rows, then p2's; B1 / con of
    // p1 has 300 and 310 (sd sqrt(50) = 7.07) and the incorrect 450.
    void longLayoutHasALinePerCell()
    {
        SummaryFiles files;
        WriteTwoParticipants(files);
        const SummaryResult result = files.Run(Settings({"Block Name", "Congruency"}));
        QCOMPARE(SummaryTable::Long(result).Csv(),
                 QByteArray("participant,Block Name,Congruency,trials,correct,incorrect,no_response,self_correct,accuracy,"
                            "rt_n,rt_mean,rt_median,rt_sd,error_rt_mean,excluded_low,excluded_high,excluded_percent,rt_invalid\n"
                            "p1.txt,B1,con,3,2,1,0,0,0.6667,2,305.00,305.00,7.07,450.00,0,0,0.00,0\n"
                            "p1.txt,B1,\"inc, odd\",1,1,0,0,0,1.0000,1,500.00,500.00,,,0,0,0.00,0\n"
                            "p1.txt,B2,con,2,1,0,1,0,0.5000,1,320.50,320.50,,,0,0,0.00,0\n"
                            "\"p2, retest.txt\",B2,con,1,1,0,0,0,1.0000,1,400.00,400.00,,,0,0,0.00,0\n"
                            "\"p2, retest.txt\",B1,con,3,1,0,0,1,0.3333,1,410.00,410.00,,,0,0,0.00,0\n"));
    }

    // Conditions in the order they first appear over the participants;
    // p2 has no "B1 / inc, odd" cell, and those fields stay empty.
    void wideLayoutHasALinePerParticipant()
    {
        SummaryFiles files;
        WriteTwoParticipants(files);
        const TextTable table = SummaryTable::Wide(files.Run(Settings({"Block Name", "Congruency"})));
        const int measures = SummaryTable::MeasureNames().size();
        QCOMPARE(table.header.size(), 1 + 3 * measures);
        QCOMPARE(table.header.mid(0, 3), (QStringList{"participant", "B1 / con: trials", "B1 / con: correct"}));
        QCOMPARE(table.header[1 + measures], QString("B1 / inc, odd: trials"));
        QCOMPARE(table.header[1 + 2 * measures + 5], QString("B2 / con: accuracy"));
        QCOMPARE(table.rows.size(), 2);
        QCOMPARE(table.rows[1][0], QString("p2, retest.txt"));
        QCOMPARE(ColumnOf(table, 1, "B1 / con: accuracy"), QString("0.3333"));
        QCOMPARE(ColumnOf(table, 1, "B2 / con: rt_mean"), QString("400.00"));
        QCOMPARE(table.rows[1].mid(1 + measures, measures), QStringList(QVector<QString>(measures).toList()));
        QCOMPARE(ColumnOf(table, 0, "B1 / inc, odd: rt_mean"), QString("500.00"));
        QVERIFY(table.Csv().startsWith("participant,B1 / con: trials,"));
        QVERIFY(table.Csv().contains(",\"B1 / inc, odd: trials\","));
    }

    void wideLayoutWithoutConditionsHasTheBareMeasures()
    {
        SummaryFiles files;
        WriteTwoParticipants(files);
        const TextTable table = SummaryTable::Wide(files.Run(Settings({})));
        QCOMPARE(table.header, QStringList{"participant"} + SummaryTable::MeasureNames());
        QCOMPARE(table.rows[0].mid(0, 7), (QStringList{"p1.txt", "6", "4", "1", "1", "0", "0.6667"}));
        QCOMPARE(table.rows[1].mid(0, 7), (QStringList{"p2, retest.txt", "4", "2", "0", "0", "1", "0.5000"}));
    }

    // Correct rows whose time does not parse, or parses to an infinite or
    // undefined value, count as correct without a time; 512.9 is kept
    // whole, not truncated as the statistics do. An incorrect row without a
    // time has no part in the error mean.
    void invalidTimesAreCountedApart()
    {
        SummaryFiles files;
        files.Participant("p1.txt", {"B1,T1,C,512.9,con", "B1,T1,C,,con", "B1,T1,C,abc,con", "B1,T1,C,inf,con",
                                     "B1,T1,C,nan,con", "B1,T1,C,1e999,con", "B1,T1,E,,con", "B1,T1,E,-0.5,con"});
        const SummaryResult result = files.Run(SummarySettings());
        const TextTable table = SummaryTable::Long(result);
        QCOMPARE(ColumnOf(table, 0, "correct"), QString("6"));
        QCOMPARE(ColumnOf(table, 0, "rt_invalid"), QString("5"));
        QCOMPARE(ColumnOf(table, 0, "rt_mean"), QString("512.90"));
        QCOMPARE(ColumnOf(table, 0, "error_rt_mean"), QString("-0.50"));
        // The share removed is of the valid times only: none here.
        QCOMPARE(ColumnOf(table, 0, "excluded_percent"), QString("0.00"));
        QStringList record;
        for (const QStringList &line : ExclusionRecord::Of(result).rows)
            record << line[1] + ':' + line[3] + ':' + line[4];
        QCOMPARE(record, (QStringList{"2::invalid_rt", "3:abc:invalid_rt", "4:inf:invalid_rt", "5:nan:invalid_rt",
                                      "6:1e999:invalid_rt"}));
    }

    void accuracyThresholdLeavesParticipantsOut_data()
    {
        QTest::addColumn<QString>("threshold");
        QTest::addColumn<QStringList>("inTable");
        QTest::addColumn<int>("lowAccuracyRows");
        // p1 has 3 correct of 4 rows, p2 2 of 4 (its hidden fifth row
        // aside).
        QTest::newRow("off") << QString() << QStringList{"p1.txt", "p2.txt"} << 0;
        QTest::newRow("equal to an accuracy is enough") << "0.75" << QStringList{"p1.txt"} << 4;
        QTest::newRow("above both") << "0.76" << QStringList() << 8;
        QTest::newRow("zero") << "0" << QStringList{"p1.txt", "p2.txt"} << 0;
    }

    void accuracyThresholdLeavesParticipantsOut()
    {
        QFETCH(QString, threshold);
        QFETCH(QStringList, inTable);
        QFETCH(int, lowAccuracyRows);
        SummaryFiles files;
        files.Participant("p1.txt", {"B1,T1,C,300,con", "B1,T1,C,310,con", "B1,T1,E,320,con", "B2,T1,C,330,con"});
        files.Participant("p2.txt", {"B1,T1,C,300,con", "B1,T1,E,310,con", "B1,T1,NR,,con", "B2,T1,C,330,con",
                                     "B2,T1,C,340,con"});
        QVector<ParticipantTrials> trials = files.Trials();
        trials[1].hidden = QVector<bool>{false, false, false, false, true};
        SummarySettings settings = Settings({"Block Name"});
        TypedNumber::Read(threshold, &settings.minAccuracy);
        const SummaryResult result = SummaryComputation::Run(trials, settings);

        QStringList longNames;
        for (const QStringList &row : SummaryTable::Long(result).rows)
            longNames << row[0];
        longNames.removeDuplicates();
        QCOMPARE(longNames, inTable);
        QStringList wideNames;
        for (const QStringList &row : SummaryTable::Wide(result).rows)
            wideNames << row[0];
        QCOMPARE(wideNames, inTable);
        QCOMPARE(result.ParticipantsInTable(), inTable.size());
        const auto isLow = [](const ExcludedRow &row) { return row.reason == ExclusionReason::LowAccuracy; };
        QCOMPARE(int(std::count_if(result.exclusions.begin(), result.exclusions.end(), isLow)), lowAccuracyRows);
    }

    void agreesWithTheStatistics_data()
    {
        QTest::addColumn<QString>("column");
        QTest::addColumn<int>("sectionType");
        QTest::newRow("trial name") << "Trial Name" << 1;
        QTest::newRow("trial variable") << "Congruency" << 2;
    }

    // A sample file, every correct time valid: the tallies of each line
    // are those of its section, no-response and self-corrected in their own
    // slots, and the mean differs from the section's only by the
    // statistics' truncation of each time to whole ms.
    void agreesWithTheStatistics()
    {
        QFETCH(QString, column);
        QFETCH(int, sectionType);
        QTemporaryDir dir;
        SampleFileOptions options;
        options.rows = 2000;
        const QString path = dir.filePath("sample.txt");
        QVERIFY(SampleFileWriter(options).Write(path));
        DataFile file(path);
        const SummaryResult result = SummaryComputation::Run({WholeFile(file, "sample.txt")}, Settings({column}));
        const TextTable table = SummaryTable::Long(result);

        SectionModel &sections = file.GetSectionModel();
        sections.ChangeSectionType(sectionType);
        sections.ChangeSubIndex(sections.TrialVariableNames().indexOf(column));
        QCOMPARE(table.rows.size(), sections.rowCount());
        int otherCodes = 0;
        for (int row = 0; row < sections.rowCount(); ++row) {
            const QString name = sections.headerData(row, Qt::Vertical, Qt::DisplayRole).toString();
            const int line = int(std::find_if(table.rows.begin(), table.rows.end(),
                                              [&](const QStringList &fields) { return fields[1] == name; })
                                 - table.rows.begin());
            QVERIFY2(line < table.rows.size(), qPrintable(name));
            QCOMPARE(ColumnOf(table, line, "rt_invalid"), QString("0"));
            sections.ChangeDataType(0);
            const QStringList tallies{"correct", "incorrect", "no_response", "self_correct"};
            int counted = 0;
            for (int slot = 0; slot < 4; ++slot) {
                QCOMPARE(ColumnOf(table, line, tallies[slot]), sections.index(row, slot).data().toString());
                counted += ColumnOf(table, line, tallies[slot]).toInt();
            }
            otherCodes += ColumnOf(table, line, "trials").toInt() - counted;
            sections.ChangeDataType(2);
            const double difference = ColumnOf(table, line, "rt_mean").toDouble() - sections.index(row, 0).data().toDouble();
            QVERIFY2(difference > -0.01 && difference < 1.01, qPrintable(QString::number(difference)));
        }
        // The sample writer's stray codes count in the trials only.
        QVERIFY(otherCodes > 0);
    }

    // A combined view holds the files one after another; read file by file
    // from it, with a row hidden there, it gives what the files give alone
    // with that row hidden. Rows count from 1 in each file.
    void combinedViewReadsFileByFile()
    {
        SummaryFiles files;
        WriteTwoParticipants(files);
        FileCombiner combiner;
        for (const QString &path : files.Paths())
            combiner.Add(DataFile(path));
        const std::unique_ptr<DataFile> combined = combiner.Take();
        combined->HideRows({7});
        const MainModel &model = combined->GetMainModel();
        const QStringList names = ParticipantNames::ForPaths(files.Paths());
        const SummarySettings settings = Settings({"Block Name", "Congruency"}, Procedure::Absolute, "305");
        const SummaryResult fromView = SummaryComputation::Run(
            {TrialExtractor::Extract(model, 0, 6, names[0]), TrialExtractor::Extract(model, 6, 4, names[1])}, settings);

        QVector<ParticipantTrials> alone = files.Trials();
        alone[1].hidden = QVector<bool>{false, true, false, false};
        const SummaryResult fromFiles = SummaryComputation::Run(alone, settings);
        QCOMPARE(SummaryTable::Long(fromView).Csv(), SummaryTable::Long(fromFiles).Csv());
        QCOMPARE(ExclusionRecord::Of(fromView).Csv(), ExclusionRecord::Of(fromFiles).Csv());
        QCOMPARE(ExclusionRecord::Of(fromView).rows.last().mid(0, 2), (QStringList{"p2, retest.txt", "2"}));
    }

    // What the window reads as hidden follows the table as rows are hidden
    // and shown again.
    void hiddenRowsFollowTheTable()
    {
        SummaryFiles files;
        files.Participant("p1.txt", {"B1,T1,C,300,con", "B1,T1,C,310,con", "B1,T1,C,320,con"});
        DataFile file(files.Paths()[0]);
        file.HideRows({0});
        file.HideRows({1});
        QCOMPARE(TrialExtractor::HiddenRows(file.GetMainModel(), 0, 3), (QVector<bool>{true, false, true}));
        QCOMPARE(TrialExtractor::HiddenRows(file.GetMainModel(), 1, 2), (QVector<bool>{false, true}));
        file.ShowAllRows();
        QVERIFY(TrialExtractor::HiddenRows(file.GetMainModel(), 0, 3).isEmpty());
    }

    // Every reason but low accuracy, which has its own test; the procedure
    // field repeats the setting on each line.
    void exclusionRecordOfASmallFile()
    {
        SummaryFiles files;
        files.Participant("p1.txt", {"B1,T1,C,150,con", "B1,T1,C,abc,con", "B2,T1,C,1200.5,con", "B2,T1,E,100,con",
                                     "B1,T1,C,500,con"});
        DataFile file(files.Paths()[0]);
        file.HideRows({3});
        const SummaryResult result =
            SummaryComputation::Run({WholeFile(file, "p1.txt")}, Settings({"Block Name"}, Procedure::Absolute, "200", "1000"));
        QCOMPARE(ExclusionRecord::Of(result).Csv(),
                 QByteArray("participant,row,Block Name,code,reaction_time,reason,bound,procedure\n"
                            "p1.txt,1,B1,C,150,too_fast,200.00,absolute; min=200; max=1000\n"
                            "p1.txt,2,B1,C,abc,invalid_rt,,absolute; min=200; max=1000\n"
                            "p1.txt,3,B2,C,1200.5,too_slow,1000.00,absolute; min=200; max=1000\n"
                            "p1.txt,4,B2,E,100,hidden,,absolute; min=200; max=1000\n"));
    }

    // Condition columns are the block and trial names and the trial
    // variables, named on one line; a column a file lacks reads "<No Name>"
    // for its rows, as an empty cell does.
    void conditionColumnsAndMissingValues()
    {
        SummaryFiles files;
        files.File("a.txt", DataFileBuilder()
                                .Columns("Block/Name,Error/Code,Reaction/Time,Hand/(Trial Variable),Block/Name,Stimulus/Side")
                                .Rows({"B1,C,300,left,X,s", ",C,310,,Y,s"}));
        files.File("b.txt", DataFileBuilder().Columns("Error/Code,Reaction/Time").Rows({"C,400"}));
        const QVector<ParticipantTrials> trials = files.Trials();
        QCOMPARE(ParticipantTrials::ConditionNamesOf(trials), (QStringList{"Block Name", "Hand", "Block Name#"}));
        const SummaryResult result = SummaryComputation::Run(trials, Settings({"Hand", "Block Name"}));
        QStringList cells;
        for (const QStringList &row : SummaryTable::Long(result).rows)
            cells << row.mid(0, 3).join('|');
        QCOMPARE(cells, (QStringList{"a.txt|left|B1", "a.txt|<No Name>|<No Name>", "b.txt|<No Name>|<No Name>"}));
        QCOMPARE(result.conditions.size(), 2);
    }

    void participantsAreNamedByFile()
    {
        QCOMPARE(ParticipantNames::ForPaths({"/a/s1.txt", "/b/s1.txt", "/c/s1.txt (2)", "/d/s1.txt", "s2.txt"}),
                 (QStringList{"s1.txt", "s1.txt (2)", "s1.txt (2) (2)", "s1.txt (3)", "s2.txt"}));
    }

    void procedureTextSpellsOutTheSetting_data()
    {
        QTest::addColumn<SummarySettings>("settings");
        QTest::addColumn<QString>("text");
        SummarySettings settings;
        QTest::newRow("default") << settings << "none";
        TypedNumber::Read("0.8", &settings.minAccuracy);
        QTest::newRow("threshold only") << settings << "none; min-accuracy=0.8";
        settings = Settings({}, Procedure::ModifiedRecursive, "200", "3000");
        QTest::newRow("bounds as typed") << settings << "modified-recursive; min=200; max=3000";
        settings = Settings({"Block Name"}, Procedure::Sd, "", "3e3");
        TypedNumber::Read("2.50", &settings.sd);
        settings.scope = SummarySettings::SdScope::Participant;
        QTest::newRow("every key in its order") << settings << "sd; max=3e3; sd=2.50; scope=participant";
    }

    void procedureTextSpellsOutTheSetting()
    {
        QFETCH(SummarySettings, settings);
        QFETCH(QString, text);
        QCOMPARE(settings.ProcedureText(), text);
    }

    void unusableSettingsAreFound_data()
    {
        QTest::addColumn<SummarySettings>("settings");
        QTest::addColumn<Problem>("problem");
        QTest::newRow("a bound with none") << Settings({}, Procedure::None, "100") << Problem::BoundWithoutProcedure;
        QTest::newRow("absolute without a bound") << Settings({}, Procedure::Absolute) << Problem::AbsoluteWithoutBound;
        QTest::newRow("bounds crossed") << Settings({}, Procedure::Sd, "500", "400") << Problem::BoundsCrossed;
        QTest::newRow("equal bounds") << Settings({}, Procedure::Absolute, "400", "400") << Problem::None;
        SummarySettings settings = Settings({}, Procedure::Nonrecursive);
        settings.scope = SummarySettings::SdScope::All;
        QTest::newRow("a scope without sd") << settings << Problem::SdWithoutSdProcedure;
        settings = Settings({}, Procedure::Sd);
        TypedNumber::Read("0", &settings.sd);
        QTest::newRow("no deviations") << settings << Problem::SdNotPositive;
        settings = Settings({});
        TypedNumber::Read("75", &settings.minAccuracy);
        QTest::newRow("a percentage for a fraction") << settings << Problem::AccuracyOutOfRange;
    }

    void unusableSettingsAreFound()
    {
        QFETCH(SummarySettings, settings);
        QFETCH(Problem, problem);
        QCOMPARE(settings.Check(), problem);
    }

    void typedNumbersAreCNotation_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("valid");
        QTest::newRow("whole") << "200" << true;
        QTest::newRow("decimals kept as typed") << "2.50" << true;
        QTest::newRow("exponent") << "3e3" << true;
        QTest::newRow("decimal comma") << "2,5" << false;
        QTest::newRow("thousands") << "1,000" << false;
        QTest::newRow("infinite") << "inf" << false;
        QTest::newRow("word") << "fast" << false;
        QTest::newRow("empty") << "" << false;
    }

    void typedNumbersAreCNotation()
    {
        QFETCH(QString, text);
        QFETCH(bool, valid);
        TypedNumber number;
        QCOMPARE(TypedNumber::Read(text, &number), valid);
        QCOMPARE(number.text, valid ? text : QString());
    }

    // Quoted only where a shell needs it; "--" before a path that starts
    // with a dash.
    void commandLineQuotesForAShell()
    {
        SummarySettings settings = Settings({"Block Name", "Congruency"}, Procedure::Sd, "150");
        TypedNumber::Read("3", &settings.sd);
        settings.scope = SummarySettings::SdScope::All;
        settings.layout = SummarySettings::Layout::Wide;
        QCOMPARE(settings.CommandLine({"/data/p 1.txt", "/data/o'neil.txt", "-odd.txt"}),
                 QString("zephlane-summary --by 'Block Name' --by Congruency --procedure sd --min 150 --sd 3 "
                         "--sd-scope all --layout wide -- '/data/p 1.txt' '/data/o'\\''neil.txt' -odd.txt"));
        QCOMPARE(SummarySettings().CommandLine({"a.txt"}), QString("zephlane-summary a.txt"));
    }

    void settingsComeBackFromTheStore()
    {
        QTemporaryDir dir;
        QSettings store(dir.filePath("settings.ini"), QSettings::IniFormat);
        SummarySettings settings = Settings({"Block Name", "Hand"}, Procedure::Sd, "200", "2000");
        TypedNumber::Read("2.0", &settings.sd);
        settings.scope = SummarySettings::SdScope::Condition;
        TypedNumber::Read("0.7", &settings.minAccuracy);
        settings.layout = SummarySettings::Layout::Wide;
        store.beginGroup("Analysis");
        settings.Save(store);
        QCOMPARE(SummarySettings::Load(store), settings);
        QCOMPARE(SummarySettings::Load(store).sd.value, 2.0);
        // What cannot be read keeps its default.
        store.setValue("procedure", "trimmed");
        store.setValue("min", "fast");
        store.setValue("scope", "");
        const SummarySettings damaged = SummarySettings::Load(store);
        QCOMPARE(damaged.procedure, Procedure::None);
        QVERIFY(!damaged.min.Given() && !damaged.scope);
        QCOMPARE(damaged.max.text, QString("2000"));
    }
};

ZEPHLANE_TEST_MAIN(TestParticipantSummary)
#include "tst_participantsummary.moc"
