// Statistics gathered while a file loads, their arithmetic and their text.

#include "datafile.h"
#include "datafilebuilder.h"
#include "tablecontents.h"
#include "testfiles.h"
#include "sectionstats.h"
#include "testenvironment.h"

#include <QApplication>
#include <QtTest>

#include <memory>

namespace {

} // namespace

class TestStatistics : public QObject
{
    Q_OBJECT

private slots:
    void foldsSelfCorrectIntoCorrectForOverallAndBlocks();
    void fillsOverallOnlyThroughBlockColumn();
    void truncatesReactionTimes();
    void unknownCodeMakesSectionButCountsNothing();
    void emptyAndNoNameCellsShareASection();
    void keepsFirstAppearanceAndMapKeyOrder();
    void countsTrialVariableLeftOfReactionTime();
    void blockTitleRightOfReactionTimeCountsAsBlock();
    void showsChosenSectionsAndDataTypes();
    void finishComputesPercentsAndAverages();
    void mergeStatsAddsByNameInFirstAppearanceOrder();
    void formatsNumbers_data();
    void formatsNumbers();

private:
    TestFiles files;
};

void TestStatistics::foldsSelfCorrectIntoCorrectForOverallAndBlocks()
{
    const auto file = files.Open(DataFileBuilder()
                               .ProductTitles()
                               .Trial("B1", "T1", "SC", "300")
                               .Trial("B1", "T1", "C", "500")
                               .Trial("B1", "T2", "E", "700"));
    QCOMPARE(file->Overall().counts, QVector<double>({2, 1, 0, 0}));
    QCOMPARE(file->Overall().sums, QVector<double>({800, 700, 0, 0}));
    SectionModel &sections = file->GetSectionModel();
    QCOMPARE(TableContents::Rows(sections), QStringList({"B1: 2 1 0 0"}));
    sections.ChangeSectionType(1);
    // Trials keep "SC" in its own slot, which the table heads "NR".
    QCOMPARE(TableContents::Rows(sections), QStringList({"T1: 1 0 0 1", "T2: 0 1 0 0"}));
}

void TestStatistics::fillsOverallOnlyThroughBlockColumn()
{
    const auto file = files.Open(DataFileBuilder()
                               .Titles({"Trial", "Error", "Reaction"}, {"Name", "Code", "Time"})
                               .Row({"T1", "C", "300"})
                               .Row({"T1", "E", "400"}));
    QCOMPARE(file->Overall().TotalCount(), 0);
    file->GetSectionModel().ChangeSectionType(1);
    QCOMPARE(TableContents::Rows(file->GetSectionModel()), QStringList({"T1: 1 1 0 0"}));
}

void TestStatistics::truncatesReactionTimes()
{
    const auto file = files.Open(DataFileBuilder()
                               .ProductTitles()
                               .Trial("B1", "T1", "C", "512.9")
                               .Trial("B1", "T1", "C", "-3.7")
                               .Trial("B1", "T1", "C", "")
                               .Trial("B1", "T1", "C", "fast")
                               .Trial("B1", "T1", "E", " 1e3 "));
    QCOMPARE(file->Overall().counts, QVector<double>({4, 1, 0, 0}));
    QCOMPARE(file->Overall().sums, QVector<double>({509, 1000, 0, 0}));
    QCOMPARE(file->Overall().averages[0], 509.0 / 4);
}

void TestStatistics::unknownCodeMakesSectionButCountsNothing()
{
    const auto file = files.Open(DataFileBuilder()
                               .ProductTitles()
                               .Trial("B1", "T1", "C", "300")
                               .Trial("B2", "T2", "X", "300")
                               .Trial("B2", "T2", "c", "300"));
    QCOMPARE(file->Overall().TotalCount(), 1);
    QCOMPARE(TableContents::Rows(file->GetSectionModel()), QStringList({"B1: 1 0 0 0", "B2: 0 0 0 0"}));
}

void TestStatistics::emptyAndNoNameCellsShareASection()
{
    const auto file = files.Open(DataFileBuilder()
                               .ProductTitles()
                               .Trial("", "T1", "C", "300")
                               .Trial("<No Name>", "T1", "E", "300")
                               .Trial("B1", "T1", "C", "300"));
    QCOMPARE(TableContents::Rows(file->GetSectionModel()), QStringList({"<No Name>: 1 1 0 0", "B1: 1 0 0 0"}));
}

void TestStatistics::keepsFirstAppearanceAndMapKeyOrder()
{
    const auto file = files.Open(DataFileBuilder()
                               .Titles({"Block", "Error", "Reaction", "Zeta", "Alpha", "Mid"},
                                       {"Name", "Code", "Time", "(Trial Variable)", "(Trial Variable)", "Code"})
                               .Row({"Second", "C", "1", "z1", "a1", "m1"})
                               .Row({"First", "C", "1", "z2", "a1", "m1"})
                               .Row({"Second", "C", "1", "z1", "a2", "m2"}));
    SectionModel &sections = file->GetSectionModel();
    QCOMPARE(TableContents::Rows(sections), QStringList({"Second: 2 0 0 0", "First: 1 0 0 0"}));
    QCOMPARE(sections.TrialVariableNames(), QStringList({"Alpha", "Zeta"}));
    QCOMPARE(sections.CodeNames(), QStringList({"Mid\nCode"}));
    sections.ChangeSectionType(2);
    sections.ChangeSubIndex(1);
    QCOMPARE(TableContents::Rows(sections), QStringList({"z1: 2 0 0 0", "z2: 1 0 0 0"}));
    // Clearing the drop-down sends -1, which means the first entry.
    sections.ChangeSubIndex(-1);
    QCOMPARE(TableContents::Rows(sections), QStringList({"a1: 2 0 0 0", "a2: 1 0 0 0"}));
    sections.ChangeSubIndex(5);
    QCOMPARE(sections.rowCount(), 0);
}

void TestStatistics::countsTrialVariableLeftOfReactionTime()
{
    const auto file = files.Open(DataFileBuilder()
                               .Titles({"Hand", "Error", "Reaction"}, {"(Trial Variable)", "Code", "Time"})
                               .Row({"left", "C", "1"})
                               .Row({"right", "SC", "1"}));
    SectionModel &sections = file->GetSectionModel();
    QCOMPARE(sections.TrialVariableNames(), QStringList({"Hand"}));
    sections.ChangeSectionType(2);
    QCOMPARE(TableContents::Rows(sections), QStringList({"left: 1 0 0 0", "right: 0 0 0 1"}));

    const auto empty = files.Open(DataFileBuilder().Titles({"Hand", "Error", "Reaction"},
                                                     {"(Trial Variable)", "Code", "Time"}));
    QVERIFY(empty->GetSectionModel().TrialVariableNames().isEmpty());
}

void TestStatistics::blockTitleRightOfReactionTimeCountsAsBlock()
{
    const auto file = files.Open(DataFileBuilder()
                               .Titles({"Error", "Reaction", "Block"}, {"Code", "Time", "Name"})
                               .Row({"C", "10", "B1"}));
    SectionModel &sections = file->GetSectionModel();
    QCOMPARE(TableContents::Rows(sections), QStringList({"B1: 1 0 0 0"}));
    QCOMPARE(sections.CodeNames(), QStringList({"Block\nName"}));
    sections.ChangeSectionType(3);
    QCOMPARE(sections.rowCount(), 0);
}

void TestStatistics::showsChosenSectionsAndDataTypes()
{
    const auto file = files.Open(DataFileBuilder()
                               .ProductTitles()
                               .Trial("B1", "T1", "C", "500")
                               .Trial("B1", "T1", "C", "501")
                               .Trial("B1", "T1", "NR", "")
                               .Trial("B1", "T1", "SC", "300"));
    SectionModel &sections = file->GetSectionModel();
    sections.ChangeSectionType(1);
    QSignalSpy changed(&sections, &SectionModel::dataChanged);
    sections.ChangeDataType(1);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(TableContents::Rows(sections), QStringList({"T1: 50.00% 0.00% 25.00% 25.00%"}));
    sections.ChangeDataType(2);
    QCOMPARE(TableContents::Rows(sections), QStringList({"T1: 500.50 0.00 0.00 300.00"}));
    QCOMPARE(sections.headerData(2, Qt::Horizontal, Qt::DisplayRole).toString(), QString("SC"));
    QCOMPARE(sections.headerData(3, Qt::Horizontal, Qt::DisplayRole).toString(), QString("NR"));
    QCOMPARE(sections.data(sections.index(0, 0), Qt::TextAlignmentRole), QVariant(int(Qt::AlignRight)));
    QVERIFY(!sections.data(sections.index(0, 0), Qt::ToolTipRole).isValid());
    QCOMPARE(file->Overall().FormatAverageRt(), QString("325.25"));
}

void TestStatistics::finishComputesPercentsAndAverages()
{
    SectionStats stats(QStringLiteral("B"));
    stats.Finish();
    QCOMPARE(stats.percents, QVector<double>({0, 0, 0, 0}));
    QCOMPARE(stats.FormatAverageRt(), QString("0.00"));
    stats.AddRow("C", 100);
    stats.AddRow("C", 201);
    stats.AddRow("E", 50);
    stats.AddRow("Q", 999);
    stats.Finish();
    QCOMPARE(stats.TotalCount(), 3);
    QCOMPARE(stats.percents[0], 2.0 / 3 * 100);
    QCOMPARE(stats.averages, QVector<double>({150.5, 50, 0, 0}));
    QCOMPARE(stats.FormatValue(0, 1), QString("66.67%"));
    SectionStats copy = stats;
    copy.Subtract(stats);
    QCOMPARE(copy.TotalCount(), 0);
    // Add and Subtract leave the derived values to Finish.
    QCOMPARE(copy.averages, stats.averages);
}

void TestStatistics::mergeStatsAddsByNameInFirstAppearanceOrder()
{
    QVector<SectionStats> into;
    AccumulateSection(into, "B", "C", 10);
    AccumulateSection(into, "A", "E", 20);
    QVector<SectionStats> other;
    AccumulateSection(other, "C", "C", 5);
    AccumulateSection(other, "A", "E", 40);
    AccumulateSection(other, "A", "Z", 40);
    FinishAll(other);
    MergeStats(into, other);
    QCOMPARE(into.size(), 3);
    QCOMPARE(into[0].name, QString("B"));
    QCOMPARE(into[1].name, QString("A"));
    QCOMPARE(into[1].counts[1], 2.0);
    QCOMPARE(into[1].averages[1], 30.0);
    QCOMPARE(into[2].name, QString("C"));
    QCOMPARE(into[2].averages[0], 5.0);
}

void TestStatistics::formatsNumbers_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("text");
    QTest::newRow("count") << 12.0 << 0 << "12";
    QTest::newRow("zero percent") << 0.0 << 1 << "0.00%";
    QTest::newRow("third") << 33.33333 << 1 << "33.33%";
    QTest::newRow("half") << 12.5 << 1 << "12.50%";
    QTest::newRow("whole") << 100.0 << 1 << "100.00%";
    QTest::newRow("average") << 512.346 << 2 << "512.35";
    QTest::newRow("six digits") << 12345.678 << 2 << "12345.70";
    QTest::newRow("rounded up") << 123456.789 << 2 << "123457.00";
    QTest::newRow("million count") << 1000000.0 << 0 << "1e+06";
    QTest::newRow("million average") << 1000000.0 << 2 << "1e+06.00";
    QTest::newRow("big average") << 1234567.0 << 2 << "1.23457e+06";
    QTest::newRow("negative toward zero") << -1.5 << 2 << "-1.49";
    // A slot driven below zero by hiding prints as less than it is.
    QTest::newRow("negative count") << -1.0 << 0 << "-0.99";
}

void TestStatistics::formatsNumbers()
{
    QFETCH(double, value);
    QFETCH(int, mode);
    QFETCH(QString, text);
    QCOMPARE(FormatNumber(value, mode), text);
}

ZEPHLANE_TEST_MAIN(TestStatistics)
#include "tst_statistics.moc"
