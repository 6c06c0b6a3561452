// The merged output file, byte for byte: both layouts, the rows chosen, the
// title lines and the success message.

#include "datafile.h"
#include "datafilebuilder.h"
#include "testfiles.h"
#include "mergedialog.h"
#include "modalcatcher.h"
#include "testenvironment.h"

#include <QApplication>
#include <QMessageBox>
#include <QRadioButton>
#include <QtTest>

#include <memory>

namespace {

QByteArray Fixture(const QString &name)
{
    QFile file(QStringLiteral(TEST_DATA_DIR "/") + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Notes how much of a file had reached the disk when a message box showed.
class BoxWatcher : public QObject
{
public:
    explicit BoxWatcher(const QString &path)
        : path(path)
    {
        qApp->installEventFilter(this);
    }
    ~BoxWatcher() override { qApp->removeEventFilter(this); }

    qint64 sizeAtBox = -1;

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::Show && qobject_cast<QMessageBox *>(object))
            sizeAtBox = QFileInfo(path).size();
        return false;
    }

private:
    QString path;
};

} // namespace

class TestMergedOutput : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void writesBothLayouts_data();
    void writesBothLayouts();
    void keepsRowsByChoice_data();
    void keepsRowsByChoice();
    void writesOnlyTitlesWhenNoRowIsKept_data();
    void writesOnlyTitlesWhenNoRowIsKept();
    void splitsTitlesOverTwoLines_data();
    void splitsTitlesOverTwoLines();
    void writesTwoCombinedExperiments_data();
    void writesTwoCombinedExperiments();
    void staleFlaggedChoiceLeavesOnlyTheHeader();
    void reportsSuccessBeforeTheTextReachesTheDisk();

private:
    QString OutputPath() const { return files.Path("merged.txt"); }

    TestFiles files;
    std::unique_ptr<ModalCatcher> catcher;
};

void TestMergedOutput::initTestCase()
{
    catcher = std::make_unique<ModalCatcher>();
}

void TestMergedOutput::init()
{
    catcher->Clear();
}

void TestMergedOutput::writesBothLayouts_data()
{
    QTest::addColumn<bool>("transpose");
    QTest::addColumn<QString>("expected");
    QTest::newRow("plain") << false << "merged_plain.txt";
    QTest::newRow("transposed") << true << "merged_transposed.txt";
}

void TestMergedOutput::writesBothLayouts()
{
    QFETCH(bool, transpose);
    QFETCH(QString, expected);
    const auto file = files.Open(DataFileBuilder()
                               .Experiment("Stroop")
                               .Date("2026-03-01 10:00")
                               .ProductTitles()
                               .Trial("B1", "T1", "C", "300", "congruent", "left")
                               .Trial("B1", "T2", "E", "512.9", "incongruent", "right")
                               .Trial("B2", "T1", "NR", "", "congruent", "left"));
    QCOMPARE(files.Merge(*file, 2, false, transpose), Fixture(expected));
}

void TestMergedOutput::keepsRowsByChoice_data()
{
    QTest::addColumn<int>("rowsToMerge");
    QTest::addColumn<bool>("keepsRows");
    // Nothing is flagged, so only "flagged rows only" leaves rows out.
    QTest::newRow("never chosen") << -1 << true;
    QTest::newRow("flagged rows only") << 0 << false;
    QTest::newRow("unflagged rows only") << 1 << true;
    QTest::newRow("all rows") << 2 << true;
    QTest::newRow("any other value") << 7 << true;
}

void TestMergedOutput::keepsRowsByChoice()
{
    QFETCH(int, rowsToMerge);
    QFETCH(bool, keepsRows);
    const auto file = files.Open(DataFileBuilder()
                               .Experiment("E")
                               .Date("D")
                               .Titles({"Error", "Reaction"}, {"Code", "Time"})
                               .Row({"C", "300"})
                               .Row({"E", "400"}));
    const QByteArray header = "\n{ E }\n{ D }\n\nError\tReaction\nCode\tTime\n";
    QCOMPARE(files.Merge(*file, rowsToMerge, false, false), keepsRows ? header + "C\t300\t\nE\t400\t\n" : header);
}

void TestMergedOutput::writesOnlyTitlesWhenNoRowIsKept_data()
{
    QTest::addColumn<bool>("withRows");
    QTest::addColumn<int>("rowsToMerge");
    QTest::addColumn<bool>("transpose");
    QTest::addColumn<QByteArray>("expected");
    const QByteArray plain = "\n{ E }\n{ D }\n\nError\tReaction\tHand\nCode\tTime\t(Trial Variable)\n";
    const QByteArray transposed = "Error Code\t\nReaction Time\t\nHand (Trial Variable)\t";
    QTest::newRow("file without rows, plain") << false << 2 << false << plain;
    QTest::newRow("file without rows, transposed") << false << 2 << true << transposed;
    QTest::newRow("no flagged row, plain") << true << 0 << false << plain;
    QTest::newRow("no flagged row, transposed") << true << 0 << true << transposed;
}

void TestMergedOutput::writesOnlyTitlesWhenNoRowIsKept()
{
    QFETCH(bool, withRows);
    QFETCH(int, rowsToMerge);
    QFETCH(bool, transpose);
    QFETCH(QByteArray, expected);
    DataFileBuilder builder;
    builder.Experiment("E").Date("D").Titles({"Error", "Reaction", "Hand"}, {"Code", "Time", "(Trial Variable)"});
    if (withRows)
        builder.Row({"C", "300", "left"}).Row({"E", "400", "right"});
    const auto file = files.Open(builder);
    QCOMPARE(files.Merge(*file, rowsToMerge, false, transpose), expected);
}

void TestMergedOutput::splitsTitlesOverTwoLines_data()
{
    QTest::addColumn<QStringList>("upper");
    QTest::addColumn<QStringList>("lower");
    QTest::addColumn<QByteArray>("titleLines");
    QTest::newRow("one-line title left of the reaction time")
        << QStringList{"", "Error", "Reaction"} << QStringList{"Trial", "Code", "Time"}
        << QByteArray("Trial\tError\tReaction\n\tCode\tTime\n");
    QTest::newRow("trial variable right of the reaction time")
        << QStringList{"Error", "Reaction", "Hand"} << QStringList{"Code", "Time", "(Trial Variable)"}
        << QByteArray("Error\tReaction\tHand\nCode\tTime\t(Trial Variable)\n");
    QTest::newRow("code column right of the reaction time, whole title below")
        << QStringList{"Error", "Reaction", "Stimulus", "Hand"} << QStringList{"Code", "Time", "Side", "(Trial Variable)"}
        << QByteArray("Error\tReaction\t\tHand\nCode\tTime\tStimulus\nSide\t(Trial Variable)\n");
    QTest::newRow("one-line code column")
        << QStringList{"Error", "Reaction", ""} << QStringList{"Code", "Time", "Side"}
        << QByteArray("Error\tReaction\t\nCode\tTime\tSide\n");
    QTest::newRow("key left of the reaction time")
        << QStringList{"", "Error", "Reaction"} << QStringList{"Key", "Code", "Time"}
        << QByteArray("\tError\tReaction\nKey\tCode\tTime\n");
    QTest::newRow("key right of the reaction time")
        << QStringList{"Error", "Reaction", ""} << QStringList{"Code", "Time", "Key"}
        << QByteArray("Error\tReaction\t\nCode\tTime\tKey\n");
    QTest::newRow("trial variable left of the reaction time")
        << QStringList{"Hand", "Error", "Reaction"} << QStringList{"(Trial Variable)", "Code", "Time"}
        << QByteArray("Hand\tError\tReaction\n(Trial Variable)\tCode\tTime\n");
    QTest::newRow("without a reaction time no title counts as a code column")
        << QStringList{"Stimulus", "Error", ""} << QStringList{"Side", "Code", "Latency"}
        << QByteArray("Stimulus\tError\tLatency\nSide\tCode\t\n");
    QTest::newRow("repeated titles keep their marks")
        << QStringList{"Error", "Reaction", "", ""} << QStringList{"Code", "Time", "Side", "Side"}
        << QByteArray("Error\tReaction\t\t\nCode\tTime\tSide\tSide#\n");
}

void TestMergedOutput::splitsTitlesOverTwoLines()
{
    QFETCH(QStringList, upper);
    QFETCH(QStringList, lower);
    QFETCH(QByteArray, titleLines);
    const auto file = files.Open(DataFileBuilder().Experiment("E").Date("D").Titles(upper, lower));
    QCOMPARE(files.Merge(*file, 2, false, false), "\n{ E }\n{ D }\n\n" + titleLines);
}

void TestMergedOutput::writesTwoCombinedExperiments_data()
{
    QTest::addColumn<bool>("transpose");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("plain") << false
                           << QByteArray("\n{ Stroop & Flanker }\n{ 2026-03-012026-03-02  }\n\n"
                                         "Block\tError\tReaction\tHand\n"
                                         "Name\tCode\tTime\t(Trial Variable)\n"
                                         "B1\tC\t300\t\t\n"
                                         "B1\tSC\t350\t\t\n"
                                         "B2\tE\t400\tleft\t\n");
    QTest::newRow("transposed") << true
                                << QByteArray("Block Name\tB1\tB1\tB2\t\n"
                                              "Error Code\tC\tSC\tE\t\n"
                                              "Reaction Time\t300\t350\t400\t\n"
                                              "Hand (Trial Variable)\t\t\tleft\t");
}

void TestMergedOutput::writesTwoCombinedExperiments()
{
    QFETCH(bool, transpose);
    QFETCH(QByteArray, expected);
    const auto first = files.Open(DataFileBuilder()
                                .Experiment("Stroop")
                                .Date("2026-03-01")
                                .Titles({"Block", "Error", "Reaction"}, {"Name", "Code", "Time"})
                                .Row({"B1", "C", "300"})
                                .Row({"B1", "SC", "350"}));
    const auto second = files.Open(DataFileBuilder()
                                 .Experiment("Flanker")
                                 .Date("2026-03-02")
                                 .Titles({"Hand", "Block", "Error", "Reaction"}, {"(Trial Variable)", "Name", "Code", "Time"})
                                 .Row({"left", "B2", "E", "400"}));
    DataFile combined;
    combined.CopyFrom(*first);
    combined.Combine(*second);
    QCOMPARE(files.Merge(combined, 2, false, transpose), expected);
}

// "Flagged rows only" chosen while a file had flags stays chosen for the
// next file, whose dialog shows "All rows " only pressed down.
void TestMergedOutput::staleFlaggedChoiceLeavesOnlyTheHeader()
{
    MergeDialog dialog;
    dialog.show();
    dialog.Prepare(5, 2, 0);
    QRadioButton *flaggedOnly = dialog.findChild<QRadioButton *>("radioButton");
    QTest::mouseClick(flaggedOnly, Qt::LeftButton, Qt::NoModifier, QPoint(8, flaggedOnly->height() / 2));
    QCOMPARE(dialog.RowsToMerge(), 0);
    dialog.reject();

    const auto file = files.Open(DataFileBuilder()
                               .Experiment("E")
                               .Date("D")
                               .Titles({"Error", "Reaction"}, {"Code", "Time"})
                               .Row({"C", "300"}));
    dialog.Prepare(file->GetMainModel().rowCount(), file->GetMainModel().FlaggedRowCount(),
                   file->GetMainModel().HiddenRowCount());
    dialog.show();
    QCOMPARE(files.Merge(*file, dialog.RowsToMerge(), dialog.IncludeHiddenRows(), dialog.Transpose()),
             QByteArray("\n{ E }\n{ D }\n\nError\tReaction\nCode\tTime\n"));
}

void TestMergedOutput::reportsSuccessBeforeTheTextReachesTheDisk()
{
    const auto file = files.Open(DataFileBuilder().Titles({"Error", "Reaction"}, {"Code", "Time"}).Row({"C", "300"}));
    BoxWatcher watcher(OutputPath());
    const QByteArray written = files.Merge(*file, 2, false, true);
    QCOMPARE(written, QByteArray("Error Code\tC\t\nReaction Time\t300\t"));
    QCOMPARE(watcher.sizeAtBox, qint64(0));
    QCOMPARE(catcher->Messages(), QStringList({"Talvox Zephlane|Data successfully written to " + OutputPath() + "."}));
}

ZEPHLANE_TEST_MAIN(TestMergedOutput)
#include "tst_mergedoutput.moc"
