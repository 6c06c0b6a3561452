// SPDX-License-Identifier: GPL-3.0-or-later
// zephlane-merge run as a script runs it, with no display: what it writes
// is what the window's "Merge..." writes for the same files, and what it
// refuses leaves nothing behind.

#include "capturedoutput.h"
#include "filecombiner.h"
#include "filetext.h"
#include "mergedialog.h"
#include "mergetool.h"
#include "testfiles.h"
#include "toolrun.h"
#include "windowdriver.h"

#include <QAbstractButton>
#include <QProcess>
#include <QScopeGuard>

namespace {

// Started without DISPLAY or QT_QPA_PLATFORM, as over ssh on a compute
// server; `shell` runs first in the same process, to limit it.
ToolRun RunTool(const QStringList &arguments, const QString &shell = QString())
{
    return ToolRun::Shell(shell + "\nexec \"$0\" \"$@\"", ZEPHLANE_MERGE, arguments);
}

// Three files of two experiments, with a column that only one of them has.
QStringList WriteFiles(WindowDriver &driver)
{
    return {driver.Write("a.txt", WindowDriver::Trials("B1 T1 C 300 con left, B1 T2 E 410 inc right")),
            driver.Write("b.txt", WindowDriver::Stroop("Stroop", 3)),
            driver.Write("c.txt", DataFileBuilder().Experiment("Flanker").Columns("Block/Name,Error/Code,Reaction/Time,Hand")
                                      .Rows({"B9,C,300,left", "B9,NR,0,"}))};
}

} // namespace

class TestMergeTool : public QObject
{
    Q_OBJECT

    WindowDriver driver;
    QStringList paths = WriteFiles(driver);

private slots:
    void initTestCase() { driver.AddFiles(paths); }

    void writesWhatTheWindowWrites_data()
    {
        QTest::addColumn<QList<int>>("order");
        QTest::addColumn<bool>("transpose");
        QTest::newRow("plain") << QList<int>{0, 1, 2} << false;
        QTest::newRow("transposed, selected out of order") << QList<int>{2, 0, 1} << true;
        QTest::newRow("one file") << QList<int>{1} << false;
        QTest::newRow("one file transposed") << QList<int>{2} << true;
    }

    // To a file and to standard output alike.
    void writesWhatTheWindowWrites()
    {
        QFETCH(QList<int>, order);
        QFETCH(bool, transpose);
        const QString byWindow = driver.Path("window.txt");
        const QString byTool = driver.Path("tool.txt");
        driver.ClickRows(order);
        driver.Click("mergeButton");
        auto *dialog = driver.Window().findChild<MergeDialog *>();
        if (dialog->Transpose() != transpose)
            QTest::mouseClick(dialog->findChild<QAbstractButton *>("checkBox"), Qt::LeftButton, {}, QPoint(8, 8));
        QFile::remove(byWindow);
        driver.Catcher().QueueFileAnswer({byWindow});
        QTest::mouseClick(dialog->findChild<QAbstractButton *>("pushButton_2"), Qt::LeftButton);
        const QByteArray expected = ReadAll(byWindow);

        QStringList arguments;
        for (const int row : order)
            arguments << paths[row];
        if (transpose)
            arguments.prepend("--transpose");
        const ToolRun toFile = RunTool(QStringList{"-o", byTool} + arguments);
        QCOMPARE(toFile.status, 0);
        QCOMPARE(toFile.out + toFile.err, QByteArray());
        QCOMPARE(ReadAll(byTool), expected);
        const ToolRun toOutput = RunTool(arguments);
        QCOMPARE(toOutput.status, 0);
        QCOMPARE(toOutput.out, expected);
    }

    void refusesAndWritesNothing_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("message");
        const QString good = paths[0];
        const QString bad = driver.Write("notes.txt", DataFileBuilder().Titles({"A"}, {"B"}));
        const QString pipe = driver.Path("pipe");
        QProcess::execute("mkfifo", {pipe});
        const QByteArray one = "This file cannot be read. Please select a Kelmarun data file.\n";
        const QByteArray many = "One of these files cannot be read. Please select Kelmarun data files.\n";
        QTest::newRow("not a data file") << QStringList{bad} << one;
        QTest::newRow("one of many") << QStringList{good, paths[1], bad} << many;
        QTest::newRow("missing") << QStringList{driver.Path("missing.txt")} << one;
        QTest::newRow("named pipe") << QStringList{pipe} << one;
        QTest::newRow("directory") << QStringList{driver.Path(".")} << one;
        QTest::newRow("endless device") << QStringList{"/dev/zero"} << one;
        // Any spelling of the same file counts as the same file.
        QTest::newRow("named twice") << QStringList{good, paths[1], driver.Path("./a.txt")}
                                     << QByteArray("One of the files that you have selected has already been opened.\n");
        QTest::newRow("no file") << QStringList{} << QByteArray("zephlane-merge: no file given\nUsage: ");
        QTest::newRow("unknown option") << QStringList{"--bogus", good} << QByteArray("Unknown option 'bogus'.\nUsage: ");
    }

    void refusesAndWritesNothing()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, message);
        const QString target = driver.Path("refused.txt");
        const ToolRun run = RunTool(QStringList{"--output", target} + arguments);
        QCOMPARE(run.status, 2);
        QCOMPARE(run.err.left(message.size()), message);
        QVERIFY(run.out.isEmpty() && !QFile::exists(target));
    }

    // What the tool says names the target and why; a file already there
    // stays whole even when writing stops part way, as on a full disk.
    void failedWriteKeepsTheEarlierFile_data()
    {
        QTest::addColumn<QString>("target");
        QTest::addColumn<QString>("shell");
        QTest::addColumn<QByteArray>("message");
        const QString earlier = driver.Write("earlier.txt", WindowDriver::Stroop("Old", 1));
        QTest::newRow("disk fills up") << earlier << "trap '' XFSZ; ulimit -f 1"
                                       << ("zephlane-merge: cannot write " + earlier.toUtf8() + ": ");
        QTest::newRow("full device") << "/dev/full" << "" << QByteArray("zephlane-merge: cannot write /dev/full: ");
        QTest::newRow("directory missing") << driver.Path("none/out.txt") << ""
                                           << ("zephlane-merge: cannot write " + driver.Path("none/out.txt").toUtf8());
    }

    void failedWriteKeepsTheEarlierFile()
    {
        QFETCH(QString, target);
        QFETCH(QString, shell);
        QFETCH(QByteArray, message);
        const QByteArray before = QFileInfo(target).isFile() ? ReadAll(target) : QByteArray();
        // Longer than the text stream's buffer, so that the disk cuts a write short.
        const QString longer = driver.Write("longer.txt", WindowDriver::Stroop("Longer", 500));
        const ToolRun run = RunTool(QStringList{"-o", target, longer}, shell);
        QCOMPARE(run.status, 1);
        QVERIFY2(run.err.startsWith(message) && run.err.count('\n') == 1, run.err);
        QCOMPARE(QFileInfo(target).isFile() ? ReadAll(target) : QByteArray(), before);
    }

    void fileNotReadWholeWritesNothing_data()
    {
        QTest::addColumn<ReadFailure>("failure");
        QTest::addColumn<bool>("toFile");
        QTest::addColumn<QByteArray>("message");
        QTest::newRow("read error, to a file") << ReadFailure::ReadError << true << QByteArray("could not be read whole (read error)");
        QTest::newRow("memory, to a file") << ReadFailure::OutOfMemory << true << QByteArray("could not be read whole (not enough memory)");
        QTest::newRow("read error, to standard output") << ReadFailure::ReadError << false << QByteArray("could not be read whole (read error)");
        // Read whole, then memory runs short combining it with the first.
        QTest::newRow("memory, combining") << ReadFailure::None << true
                                           << QByteArray("could not be combined with the files before it (not enough memory)");
    }

    // The tool run in-process, so that the reader or the combining fails
    // where the test says: at the second of three files. An earlier output
    // stays as it was.
    void fileNotReadWholeWritesNothing()
    {
        QFETCH(ReadFailure, failure);
        QFETCH(bool, toFile);
        QFETCH(QByteArray, message);
        const QString target = driver.Write("kept.txt", WindowDriver::Stroop("Kept", 1));
        const QByteArray before = ReadAll(target);
        FileText::InjectFailure(paths[1], failure);
        FileCombiner::InjectFailure(failure == ReadFailure::None);
        const auto restore = qScopeGuard([&] {
            FileText::InjectFailure(paths[1], ReadFailure::None);
            FileCombiner::InjectFailure(false);
        });
        const QStringList arguments = QStringList{"zephlane-merge"} + (toFile ? QStringList{"-o", target} : QStringList()) + paths;
        CapturedOutput output;
        QCOMPARE(MergeTool().Run(arguments), int(MergeTool::NotWritten));
        QCOMPARE(output.Err(), paths[1].toUtf8() + ": " + message + "\n");
        QCOMPARE(output.Out(), QByteArray());
        QCOMPARE(ReadAll(target), before);
    }

    // Under a real limit on the tool's address space, as `ulimit -v` sets
    // it: a file too large to hold is reported, not merged as its header.
    // The limit leaves 128 MB above the least in which the tool merges a
    // small file, found by halving; the large file is sparse, 1 GB of NULs
    // after its rows.
    void fileBeyondTheMemoryLimitWritesNothing()
    {
#if defined(__SANITIZE_ADDRESS__)
        QSKIP("AddressSanitizer reserves more address space than the limit leaves");
#endif
        const QString target = driver.Path("limited.txt");
        const auto mergesWithin = [&](qint64 kilobytes, const QString &path) {
            QFile::remove(target);
            return RunTool({"-o", target, path}, QString("ulimit -v %1").arg(kilobytes));
        };
        qint64 fails = 1 << 12;
        qint64 works = 1 << 23;
        QCOMPARE(mergesWithin(works, paths[0]).status, 0);
        while (works - fails > 1024) {
            const qint64 middle = (fails + works) / 2;
            (mergesWithin(middle, paths[0]).status == 0 ? works : fails) = middle;
        }
        const QString big = driver.Write("big.txt", WindowDriver::Stroop("Big", 3));
        QVERIFY(QFile::resize(big, qint64(1) << 30));
        const ToolRun run = mergesWithin(works + (1 << 17), big);
        QCOMPARE(run.status, 1);
        QCOMPARE(run.err, big.toUtf8() + ": could not be read whole (not enough memory)\n");
        QVERIFY(!QFile::exists(target));
    }
};

ZEPHLANE_TEST_MAIN(TestMergeTool)
#include "tst_mergetool.moc"
