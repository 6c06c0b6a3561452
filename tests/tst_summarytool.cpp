// SPDX-License-Identifier: GPL-3.0-or-later
// zephlane-summary run as a script runs it: what it writes is the table and
// the record that the computation gives the window for the same files and
// settings, the command line that the settings spell out reproduces it, and
// what it refuses leaves nothing behind.

#include "capturedoutput.h"
#include "exclusionrecord.h"
#include "filetext.h"
#include "summaryfiles.h"
#include "summarytable.h"
#include "summarytool.h"
#include "testenvironment.h"
#include "testfiles.h"
#include "toolrun.h"

#include <QScopeGuard>
#include <QtTest>

namespace {

// The line run through a shell with the built tool first on the path.
ToolRun RunShell(const QString &commandLine)
{
    return ToolRun::Shell(commandLine, ZEPHLANE_SUMMARY);
}

ToolRun RunTool(const QStringList &arguments)
{
    QStringList quoted{"zephlane-summary"};
    for (const QString &argument : arguments)
        quoted << SummarySettings::ShellQuoted(argument);
    return RunShell(quoted.join(' '));
}

// Three participants under names that need quoting in a shell, two with the
// same file name; the third has no congruency column.
void WriteFiles(SummaryFiles &files)
{
    files.Participant("sub 1.txt", {"B1,T1,C,300,con", "B1,T1,C,310,inc", "B1,T1,E,450,con", "B2,T1,C,900,con",
                                    "B2,T1,C,320.5,con", "B2,T1,C,330,con", "B2,T1,C,2000,con", "B2,T1,C,abc,con"});
    files.Participant("o'neil.txt", {"B2,T1,C,400,con", "B1,T1,SC,350,con", "B1,T1,C,410,inc", "B1,T1,C,150,inc"});
    files.File("third.txt", DataFileBuilder().Columns("Block/Name,Error/Code,Reaction/Time").Rows({"B1,C,500", "B1,E,"}));
}

} // namespace

class TestSummaryTool : public QObject
{
    Q_OBJECT

    SummaryFiles files;

private slots:
    void initTestCase() { WriteFiles(files); }

    void writesWhatTheWindowExports_data()
    {
        QTest::addColumn<SummarySettings>("settings");
        using Procedure = SummarySettings::Procedure;
        QTest::newRow("defaults") << SummarySettings();
        QTest::newRow("two columns, bounds and modified-recursive")
            << SummaryFiles::Settings({"Block Name", "Congruency"}, Procedure::ModifiedRecursive, "200", "1500");
        SummarySettings settings = SummaryFiles::Settings({"Congruency"}, Procedure::Sd, "", "3e3");
        TypedNumber::Read("1.5", &settings.sd);
        settings.scope = SummarySettings::SdScope::Participant;
        TypedNumber::Read("0.5", &settings.minAccuracy);
        settings.layout = SummarySettings::Layout::Wide;
        QTest::newRow("wide, sd by participant, threshold") << settings;
    }

    // The command line the settings spell out, run through a shell, writes
    // the table and the record that the computation gives for the same
    // files, to a file and to standard output alike.
    void writesWhatTheWindowExports()
    {
        QFETCH(SummarySettings, settings);
        const SummaryResult result = files.Run(settings);
        const QByteArray table = SummaryTable::Of(result).Csv();
        const QByteArray record = ExclusionRecord::Of(result).Csv();
        QVERIFY(table.count('\n') > 2 && record.count('\n') > 1);

        const ToolRun toOutput = RunShell(settings.CommandLine(files.Paths()));
        QCOMPARE(toOutput.status, 0);
        QCOMPARE(toOutput.err, QByteArray());
        QCOMPARE(toOutput.out, table);

        TestFiles targets;
        const QString output = targets.Path("summary.csv");
        const QString exclusions = targets.Path("excluded.csv");
        const ToolRun toFiles = RunShell(settings.CommandLine(files.Paths()) + " -o " + SummarySettings::ShellQuoted(output)
                                         + " --exclusions " + SummarySettings::ShellQuoted(exclusions));
        QCOMPARE(toFiles.status, 0);
        QCOMPARE(toFiles.out + toFiles.err, QByteArray());
        QCOMPARE(ReadAll(output), table);
        QCOMPARE(ReadAll(exclusions), record);
    }

    void refusesAndWritesNothing_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("message");
        const QStringList paths = files.Paths();
        const QString bad = files.Paths()[0] + ".notes";
        DataFileBuilder().Titles({"A"}, {"B"}).Write(bad);
        QTest::newRow("not a data file") << QStringList{bad} << QByteArray("This file cannot be read. Please select a Kelmarun data file.\n");
        QTest::newRow("one of many") << paths + QStringList{bad}
                                     << QByteArray("One of these files cannot be read. Please select Kelmarun data files.\n");
        QTest::newRow("named twice") << QStringList{paths[0], paths[0]}
                                     << QByteArray("One of the files that you have selected has already been opened.\n");
        QTest::newRow("no file") << QStringList() << QByteArray("zephlane-summary: no file given\nUsage: ");
        QTest::newRow("unknown option") << QStringList{"--trim", paths[0]} << QByteArray("Unknown option 'trim'.\nUsage: ");
        QTest::newRow("unknown column")
            << QStringList{"--by", "Congruency", "--by", "Blok Name"} + paths
            << QByteArray("zephlane-summary: no file has the column \"Blok Name\"; the columns to group by are "
                          "\"Block Name\", \"Trial Name\", \"Congruency\"\n");
        QTest::newRow("a column twice") << QStringList{"--by", "Block Name", "--by", "Block Name", paths[0]}
                                        << QByteArray("zephlane-summary: --by names \"Block Name\" twice\n");
        QTest::newRow("malformed number") << QStringList{"--procedure", "absolute", "--min", "2OO", paths[0]}
                                          << QByteArray("zephlane-summary: --min takes a number, not \"2OO\"\n");
        QTest::newRow("decimal comma") << QStringList{"--procedure", "sd", "--sd", "2,5", paths[0]}
                                       << QByteArray("zephlane-summary: --sd takes a number, not \"2,5\"\n");
        QTest::newRow("unknown procedure")
            << QStringList{"--procedure", "hybrid", paths[0]}
            << QByteArray("zephlane-summary: --procedure takes one of none, absolute, sd, nonrecursive, "
                          "modified-recursive, not \"hybrid\"\n");
        QTest::newRow("unknown scope") << QStringList{"--procedure", "sd", "--sd-scope", "block", paths[0]}
                                       << QByteArray("zephlane-summary: --sd-scope takes one of cell, participant, "
                                                     "condition, all, not \"block\"\n");
        QTest::newRow("unknown layout") << QStringList{"--layout", "tall", paths[0]}
                                        << QByteArray("zephlane-summary: --layout takes one of long, wide, not \"tall\"\n");
        QTest::newRow("a bound with none") << QStringList{"--max", "2000", paths[0]}
                                           << QByteArray("zephlane-summary: --min and --max need a --procedure other than none\n");
        QTest::newRow("absolute without a bound")
            << QStringList{"--procedure", "absolute", paths[0]}
            << QByteArray("zephlane-summary: --procedure absolute needs --min, --max or both\n");
        QTest::newRow("bounds crossed") << QStringList{"--procedure", "absolute", "--min", "500", "--max", "3e2", paths[0]}
                                        << QByteArray("zephlane-summary: --min 500 is above --max 3e2\n");
        QTest::newRow("a factor without sd") << QStringList{"--procedure", "nonrecursive", "--sd", "3", paths[0]}
                                             << QByteArray("zephlane-summary: --sd and --sd-scope go with --procedure sd only\n");
        QTest::newRow("a scope without sd") << QStringList{"--sd-scope", "all", paths[0]}
                                            << QByteArray("zephlane-summary: --sd and --sd-scope go with --procedure sd only\n");
        QTest::newRow("no deviations") << QStringList{"--procedure", "sd", "--sd", "0", paths[0]}
                                       << QByteArray("zephlane-summary: --sd takes a number above 0, not 0\n");
        QTest::newRow("a percentage for a fraction") << QStringList{"--min-accuracy", "80", paths[0]}
                                                     << QByteArray("zephlane-summary: --min-accuracy takes a fraction from 0 to 1, not 80\n");
    }

    void refusesAndWritesNothing()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, message);
        TestFiles targets;
        const QString output = targets.Path("summary.csv");
        const QString exclusions = targets.Path("excluded.csv");
        const ToolRun run = RunTool(QStringList{"-o", output, "--exclusions", exclusions} + arguments);
        QCOMPARE(run.status, 2);
        QCOMPARE(run.err.left(message.size()), message);
        QVERIFY(run.out.isEmpty() && !QFile::exists(output) && !QFile::exists(exclusions));
    }

    void failedWriteKeepsTheEarlierFiles_data()
    {
        QTest::addColumn<QString>("output");
        QTest::addColumn<QString>("exclusions");
        QTest::addColumn<QByteArray>("message");
        const QString missing = files.Paths()[0] + ".d/excluded.csv";
        QTest::newRow("the record's directory is missing") << "summary.csv" << missing
                                                           << "zephlane-summary: cannot write " + missing.toUtf8() + ": ";
        QTest::newRow("a full device for the record") << "summary.csv" << "/dev/full"
                                                      << QByteArray("zephlane-summary: cannot write /dev/full: ");
        QTest::newRow("a full device for the table") << "/dev/full" << "excluded.csv"
                                                     << QByteArray("zephlane-summary: cannot write /dev/full: ");
        QTest::newRow("the record and the table in one file") << "summary.csv" << "summary.csv"
                                                              << QByteArray("zephlane-summary: --exclusions and --output name the same file\n");
    }

    // Neither file takes its name unless both are complete.
    void failedWriteKeepsTheEarlierFiles()
    {
        QFETCH(QString, output);
        QFETCH(QString, exclusions);
        QFETCH(QByteArray, message);
        TestFiles targets;
        const auto place = [&targets](const QString &name) { return name.startsWith('/') ? name : targets.Path(name); };
        QMap<QString, QByteArray> before;
        for (const QString &name : {output, exclusions}) {
            if (name.startsWith('/'))
                continue;
            QFile earlier(place(name));
            QVERIFY(earlier.open(QIODevice::WriteOnly));
            earlier.write("earlier " + name.toUtf8());
            before.insert(name, "earlier " + name.toUtf8());
        }
        const ToolRun run = RunTool(QStringList{"--procedure", "absolute", "--min", "200", "-o", place(output),
                                                "--exclusions", place(exclusions)}
                                    + files.Paths());
        QVERIFY2(run.err.startsWith(message) && run.err.count('\n') == 1, run.err);
        QCOMPARE(run.status, message.endsWith(": ") ? 1 : 2);
        for (auto earlier = before.cbegin(); earlier != before.cend(); ++earlier)
            QCOMPARE(ReadAll(place(earlier.key())), earlier.value());
    }

    // In-process, so that the reader fails where the test says.
    void fileNotReadWholeWritesNothing()
    {
        TestFiles targets;
        const QString output = targets.Path("summary.csv");
        const QString failing = files.Paths()[1];
        FileText::InjectFailure(failing, ReadFailure::OutOfMemory);
        const auto restore = qScopeGuard([&] { FileText::InjectFailure(failing, ReadFailure::None); });
        CapturedOutput captured;
        QCOMPARE(SummaryTool().Run(QStringList{"zephlane-summary", "-o", output} + files.Paths()),
                 int(SummaryTool::NotWritten));
        QCOMPARE(captured.Err(), failing.toUtf8() + ": could not be read whole (not enough memory)\n");
        QVERIFY(!QFile::exists(output));
    }

    // A participant's name is its file name; the second of two equal names
    // is told apart.
    void participantsAreTheFilesInOrder()
    {
        TestFiles targets;
        QDir(targets.Path("")).mkpath("other");
        const QString twin = targets.Path("other/sub 1.txt");
        QFile::copy(files.Paths()[0], twin);
        const ToolRun run = RunTool({files.Paths()[2], files.Paths()[0], twin});
        QCOMPARE(run.status, 0);
        QStringList names;
        for (const QByteArray &line : run.out.split('\n').mid(1, 3))
            names << QString(line).section(',', 0, 0);
        QCOMPARE(names, (QStringList{"third.txt", "sub 1.txt", "sub 1.txt (2)"}));
    }
};

ZEPHLANE_TEST_MAIN(TestSummaryTool)
#include "tst_summarytool.moc"
