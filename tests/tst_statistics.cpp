// Statistics gathered while a file loads, their arithmetic and their text.

#include "datafile.h"
#include "tablecontents.h"
#include "testenvironment.h"
#include "testfiles.h"

#include <QApplication>
#include <QtTest>

namespace {

QStringList Shown(SectionModel &sections, int sectionType, int dataType = 0)
{
    sections.ChangeSectionType(sectionType);
    sections.ChangeDataType(dataType);
    return TableContents::Rows(sections);
}

} // namespace

class TestStatistics : public QObject
{
    Q_OBJECT

private slots:
    void countsRowsBySection_data();
    void countsRowsBySection();
    void findsSectionColumnsByTitle();
    void showsPercentsAndAveragesInSwappedColumns();
    void finishAndMergeKeepTheirArithmetic();
    void formatsNumbers_data();
    void formatsNumbers();

private:
    TestFiles files;
};

void TestStatistics::countsRowsBySection_data()
{
    QTest::addColumn<QStringList>("rows");
    QTest::addColumn<QString>("overallCounts");
    QTest::addColumn<QString>("overallSums");
    QTest::addColumn<QStringList>("blocks");
    QTest::addColumn<QStringList>("trials");
    // Blocks and the whole file count "SC" as "C"; trials keep it in its own
    // slot, which the table heads "NR".
    QTest::newRow("self-correct") << QStringList{"B1,T1,SC,300", "B1,T1,C,500", "B1,T2,E,700"} << "2 1 0 0"
                                  << "800 700 0 0" << QStringList{"B1: 2 1 0 0"}
                                  << QStringList{"T1: 1 0 0 1", "T2: 0 1 0 0"};
    QTest::newRow("times truncated, bad ones 0") << QStringList{"B1,T1,C,512.9", "B1,T1,C,-3.7", "B1,T1,C,", "B1,T1,C,x", "B1,T1,E,1e3"}
                                                 << "4 1 0 0" << "509 1000 0 0" << QStringList{"B1: 4 1 0 0"}
                                                 << QStringList{"T1: 4 1 0 0"};
    QTest::newRow("unknown codes make sections, count nothing")
        << QStringList{"B1,T1,C,300", "B2,T2,X,300", "B2,T2,c,300"} << "1 0 0 0" << "300 0 0 0"
        << QStringList{"B1: 1 0 0 0", "B2: 0 0 0 0"} << QStringList{"T1: 1 0 0 0", "T2: 0 0 0 0"};
    QTest::newRow("empty and <No Name> are one section, first appearance order")
        << QStringList{"B2,T1,C,1", ",T1,C,1", "<No Name>,T1,E,1", "B2,T1,NR,"} << "2 1 1 0" << "2 1 0 0"
        << QStringList{"B2: 1 0 1 0", "<No Name>: 1 1 0 0"} << QStringList{"T1: 2 1 1 0"};
}

void TestStatistics::countsRowsBySection()
{
    QFETCH(QStringList, rows);
    const auto file = files.Open(DataFileBuilder().ProductTitles().Trials(rows));
    QTEST(TableContents::Numbers(file->Overall().counts), "overallCounts");
    QTEST(TableContents::Numbers(file->Overall().sums), "overallSums");
    QTEST(Shown(file->GetSectionModel(), 0), "blocks");
    QTEST(Shown(file->GetSectionModel(), 1), "trials");
}

// Sections are found by title wherever they stand; right of "Reaction\nTime"
// every column is a trial variable or a code column, with map keys in order.
void TestStatistics::findsSectionColumnsByTitle()
{
    const auto noBlock = files.Open(
        DataFileBuilder().Titles({"Trial", "Error", "Reaction"}, {"Name", "Code", "Time"}).Row({"T1", "C", "3"}));
    QCOMPARE(noBlock->Overall().TotalCount(), 0);
    QCOMPARE(Shown(noBlock->GetSectionModel(), 1), QStringList({"T1: 1 0 0 0"}));

    const auto file = files.Open(DataFileBuilder()
                                     .Titles({"Hand", "Error", "Reaction", "Zeta", "Block", "Mid"},
                                             {"(Trial Variable)", "Code", "Time", "(Trial Variable)", "Name", "Code"})
                                     .Row({"left", "C", "1", "z1", "B1", "m1"})
                                     .Row({"right", "SC", "1", "z2", "B1", "m1"}));
    SectionModel &sections = file->GetSectionModel();
    QCOMPARE(sections.TrialVariableNames(), QStringList({"Hand", "Zeta"}));
    QCOMPARE(sections.CodeNames(), QStringList({"Block\nName", "Mid\nCode"}));
    QCOMPARE(Shown(sections, 0), QStringList({"B1: 2 0 0 0"}));
    QCOMPARE(Shown(sections, 2), QStringList({"left: 1 0 0 0", "right: 0 0 0 1"}));
    sections.ChangeSubIndex(1);
    QCOMPARE(TableContents::Rows(sections), QStringList({"z1: 1 0 0 0", "z2: 0 0 0 1"}));
    // The block title right of the time still counts as blocks, so its code
    // entry stays empty; clearing the drop-down sends -1, the first entry.
    sections.ChangeSubIndex(0);
    QCOMPARE(Shown(sections, 3), QStringList());
    sections.ChangeSubIndex(-1);
    QCOMPARE(sections.rowCount(), 0);
    sections.ChangeSubIndex(1);
    QCOMPARE(sections.rowCount(), 1);
    sections.ChangeSubIndex(9);
    QCOMPARE(sections.rowCount(), 0);

    const auto titlesOnly = files.Open(DataFileBuilder().Titles({"Hand", "Error", "Reaction"},
                                                                {"(Trial Variable)", "Code", "Time"}));
    QVERIFY(titlesOnly->GetSectionModel().TrialVariableNames().isEmpty());
}

void TestStatistics::showsPercentsAndAveragesInSwappedColumns()
{
    const auto file = files.Open(DataFileBuilder().ProductTitles().Trials({"B1,T1,C,500", "B1,T1,C,501", "B1,T1,NR,", "B1,T1,SC,300"}));
    SectionModel &sections = file->GetSectionModel();
    QSignalSpy changed(&sections, &SectionModel::dataChanged);
    QCOMPARE(Shown(sections, 1, 1), QStringList({"T1: 50.00% 0.00% 25.00% 25.00%"}));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(Shown(sections, 1, 2), QStringList({"T1: 500.50 0.00 0.00 300.00"}));
    QCOMPARE(TableContents::Titles(sections), QStringList({"C", "E", "SC", "NR"}));
    QCOMPARE(sections.data(sections.index(0, 0), Qt::TextAlignmentRole), QVariant(int(Qt::AlignRight)));
    QVERIFY(!sections.data(sections.index(0, 0), Qt::ToolTipRole).isValid());
    QCOMPARE(file->Overall().FormatAverageRt(), QString("325.25"));
}

void TestStatistics::finishAndMergeKeepTheirArithmetic()
{
    SectionStats stats(QStringLiteral("B"));
    stats.Finish();
    QCOMPARE(stats.FormatAverageRt(), QString("0.00"));
    for (const auto &row : {std::make_pair("C", 100), std::make_pair("C", 201), std::make_pair("E", 50),
                            std::make_pair("Q", 999)})
        stats.AddRow(row.first, row.second);
    stats.Finish();
    QCOMPARE(stats.TotalCount(), 3);
    QCOMPARE(stats.FormatValue(0, 1), QString("66.67%"));
    QCOMPARE(TableContents::Numbers(stats.averages), QString("150.5 50 0 0"));
    SectionStats copy = stats;
    copy.Subtract(stats);
    QCOMPARE(copy.TotalCount(), 0);
    QCOMPARE(copy.averages, stats.averages);

    QVector<SectionStats> into;
    AccumulateSection(into, "B", "C", 10);
    AccumulateSection(into, "A", "E", 20);
    QVector<SectionStats> other;
    AccumulateSection(other, "C", "C", 5);
    AccumulateSection(other, "A", "E", 40);
    FinishAll(other);
    MergeStats(into, other);
    QStringList merged;
    for (const SectionStats &record : into)
        merged << record.name + " " + TableContents::Numbers(record.counts) + " / " + TableContents::Numbers(record.averages);
    QCOMPARE(merged, QStringList({"B 1 0 0 0 / 0 0 0 0", "A 0 2 0 0 / 0 30 0 0", "C 1 0 0 0 / 5 0 0 0"}));
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
