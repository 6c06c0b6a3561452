// The merged output file, byte for byte: both layouts, the rows that go
// out, the title lines, and the success box.

#include "datafile.h"
#include "datafilebuilder.h"
#include "modalcatcher.h"
#include "testenvironment.h"
#include "testfiles.h"

#include <QApplication>
#include <QtTest>

namespace {

// Ten rows "r0".."r9", so that each output line names its file row.
DataFileBuilder TenRows()
{
    DataFileBuilder builder;
    builder.Experiment("E").Date("D").Titles({"", "Error", "Reaction"}, {"Row", "Code", "Time"});
    for (int row = 0; row < 10; ++row)
        builder.Row({"r" + QString::number(row), "C", QString::number(300 + row)});
    return builder;
}

// The plain output of TenRows() with these file rows kept.
QByteArray Plain(const QList<int> &rows)
{
    QByteArray bytes = "\n{ E }\n{ D }\n\nRow\tError\tReaction\n\tCode\tTime\n";
    for (const int row : rows)
        bytes += "r" + QByteArray::number(row) + "\tC\t" + QByteArray::number(300 + row) + "\t\n";
    return bytes;
}

} // namespace

class TestMergedOutput : public QObject
{
    Q_OBJECT

private slots:
    void choosesRows_data();
    void choosesRows();
    void splitsTitlesOverTwoLines();
    void writesTwoCombinedExperiments();
    void reportsSuccessBeforeTheTextReachesTheDisk();

private:
    TestFiles files;
    ModalCatcher catcher;
};

void TestMergedOutput::choosesRows_data()
{
    QTest::addColumn<QVector<int>>("flagged"); // before any row is hidden
    QTest::addColumn<QVector<int>>("hidden");
    QTest::addColumn<int>("rowsToMerge");
    QTest::addColumn<bool>("includeHiddenRows");
    QTest::addColumn<bool>("transpose");
    QTest::addColumn<QByteArray>("expected");
    const QVector<int> none;
    QTest::newRow("flagged only") << QVector<int>{1, 3} << none << 0 << false << false << Plain({1, 3});
    QTest::newRow("flagged only, transposed")
        << QVector<int>{1, 3} << none << 0 << false << true
        << QByteArray("Row\tr1\tr3\t\nError Code\tC\tC\t\nReaction Time\t301\t303\t");
    QTest::newRow("all rows") << QVector<int>{1, 3} << none << 2 << false << false
                              << Plain({0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
    QTest::newRow("no flagged row") << none << none << 0 << false << false << Plain({});
    QTest::newRow("no flagged row, transposed") << none << none << 0 << false << true
                                                << QByteArray("Row\t\nError Code\t\nReaction Time\t");
    // Seven rows shown: file rows 0 to 6 are visited, 7 to 9 never go out.
    // -1, no choice made yet, also means all rows.
    QTest::newRow("hidden rows left out") << none << QVector<int>{2, 8, 9} << -1 << false << false
                                          << Plain({0, 1, 3, 4, 5, 6});
    QTest::newRow("hidden rows included up to the stop")
        << none << QVector<int>{2, 8, 9} << 2 << true << false << Plain({0, 1, 2, 3, 4, 5, 6});
    // Flags are read by file row, whichever row now shows at that number.
    QTest::newRow("unflagged only, hidden rows included")
        << QVector<int>{1, 3} << QVector<int>{0, 9} << 1 << true << false << Plain({0, 2, 4, 5, 6, 7});
}

void TestMergedOutput::choosesRows()
{
    QFETCH(QVector<int>, flagged);
    QFETCH(QVector<int>, hidden);
    QFETCH(int, rowsToMerge);
    QFETCH(bool, includeHiddenRows);
    QFETCH(bool, transpose);
    QFETCH(QByteArray, expected);
    const auto file = files.Open(TenRows());
    for (const int row : flagged)
        file->GetMainModel().SetRowFlag(row, true);
    file->GetMainModel().HideRows(hidden);
    QCOMPARE(files.Merge(*file, rowsToMerge, includeHiddenRows, transpose), expected);
}

// A one-line title and "Key" left of "Reaction\nTime", a trial variable
// and a code column right of it.
void TestMergedOutput::splitsTitlesOverTwoLines()
{
    const auto file = files.Open(DataFileBuilder().Experiment("E").Date("D").Titles(
        {"", "", "Error", "Reaction", "Hand", "Stimulus"},
        {"Trial", "Key", "Code", "Time", "(Trial Variable)", "Side"}));
    QCOMPARE(files.Merge(*file, 2, false, false), QByteArray("\n{ E }\n{ D }\n\n"
                                                             "Trial\t\tError\tReaction\tHand\t\n"
                                                             "\tKey\tCode\tTime\t(Trial Variable)\tStimulus\nSide\n"));
}

void TestMergedOutput::writesTwoCombinedExperiments()
{
    const auto first = files.Open(DataFileBuilder().Experiment("Stroop").Date("2026-03-01")
                                      .Titles({"Block", "Error", "Reaction"}, {"Name", "Code", "Time"})
                                      .Row({"B1", "C", "300"}).Row({"B1", "SC", "350"}));
    const auto second = files.Open(DataFileBuilder().Experiment("Flanker").Date("2026-03-02")
                                       .Titles({"Hand", "Block", "Error", "Reaction"},
                                               {"(Trial Variable)", "Name", "Code", "Time"})
                                       .Row({"left", "B2", "E", "400"}).Row({"right", "B3", "C", "450"})
                                       .Row({"left", "B4", "C", "500"}));
    // B3 stays hidden at its new number; B4 lies beyond the stop.
    second->GetMainModel().HideRows({1});
    DataFile combined;
    combined.CopyFrom(*first);
    combined.Combine(*second);
    QCOMPARE(files.Merge(combined, 2, false, false),
             QByteArray("\n{ Stroop & Flanker }\n{ 2026-03-012026-03-02  }\n\n"
                        "Block\tError\tReaction\tHand\nName\tCode\tTime\t(Trial Variable)\n"
                        "B1\tC\t300\t\t\nB1\tSC\t350\t\t\nB2\tE\t400\tleft\t\n"));
}

// The box comes up while the text still waits in the stream: the file on
// disk is empty until it is closed.
void TestMergedOutput::reportsSuccessBeforeTheTextReachesTheDisk()
{
    const auto file = files.Open(TenRows());
    const QString path = files.Path("merged.txt");
    qint64 sizeWhileBoxShows = -1;
    QTimer::singleShot(0, [&] { sizeWhileBoxShows = QFileInfo(path).size(); });
    catcher.Clear();
    QVERIFY(!files.Merge(*file, 2, false, false).isEmpty());
    QCOMPARE(sizeWhileBoxShows, qint64(0));
    QCOMPARE(catcher.Messages(), QStringList({"Talvox Zephlane|Data successfully written to " + path + "."}));
}

ZEPHLANE_TEST_MAIN(TestMergedOutput)
#include "tst_mergedoutput.moc"
