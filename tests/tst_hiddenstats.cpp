// How hiding selected rows takes them out of the statistics and showing
// all rows puts them back, as the section table and its views see it.

#include "datafile.h"
#include "tablecontents.h"
#include "testenvironment.h"
#include "testfiles.h"

#include <QApplication>
#include <QTableView>
#include <QtTest>

namespace {

QStringList Hidden(const SectionModel &model)
{
    QStringList records;
    for (const HiddenSectionStats *record : model.HiddenStats())
        records << QString("%1/%2/%3 %4").arg(record->sectionType).arg(record->columnName, record->name).arg(record->TotalCount());
    return records;
}

} // namespace

class TestHiddenStats : public QObject
{
    Q_OBJECT

private slots:
    void hidingAndShowingAll_data();
    void hidingAndShowingAll();
    void hiddenShareIsOneRecordPerSection();
    void readsSectionsAtFixedColumns();
    void removedRowsAreNumberedAsTheyStand_data();
    void removedRowsAreNumberedAsTheyStand();
    void notifiesOnlyWhatIsOnShow();
    void viewsShowTheTruthWhenNotNotified();

private:
    TestFiles files;
};

void TestHiddenStats::hidingAndShowingAll_data()
{
    QTest::addColumn<QStringList>("rows");
    QTest::addColumn<QVector<int>>("hide");
    QTest::addColumn<QStringList>("blocksHidden");
    QTest::addColumn<QString>("overallHidden");
    QTest::addColumn<QStringList>("blocksShown");
    // A block that loses its last row goes, and comes back at the end.
    QTest::newRow("vanishing block") << QStringList{"B1,T1,C,100", "B2,T1,E,200", "B2,T2,C,300", "B3,T2,C,400"}
                                     << QVector<int>{2, 1} << QStringList{"B1: 1 0 0 0", "B3: 1 0 0 0"} << "2 0 0 0"
                                     << QStringList{"B1: 1 0 0 0", "B3: 1 0 0 0", "B2: 1 1 0 0"};
    // The load counted "SC" as "C"; hiding takes it from the "SC" slot.
    QTest::newRow("self-correct asymmetry") << QStringList{"B1,T1,SC,100", "B1,T1,C,300", "B1,T2,E,500"}
                                            << QVector<int>{0} << QStringList{"B1: 2 1 0 -0.99"} << "2 1 0 -1"
                                            << QStringList{"B1: 2 1 0 0"};
    QTest::newRow("empty and <No Name> cells") << QStringList{",T1,C,100", "<No Name>,T1,E,200", "B1,T1,C,300"}
                                               << QVector<int>{0, 1} << QStringList{"B1: 1 0 0 0"} << "1 0 0 0"
                                               << QStringList{"B1: 1 0 0 0", "<No Name>: 1 1 0 0"};
}

void TestHiddenStats::hidingAndShowingAll()
{
    QFETCH(QStringList, rows);
    QFETCH(QVector<int>, hide);
    const auto file = files.Open(DataFileBuilder().ProductTitles().Trials(rows));
    const QString average = file->Overall().FormatAverageRt();
    file->HideSelectedRows(hide);
    QTEST(TableContents::Rows(file->GetSectionModel()), "blocksHidden");
    QTEST(TableContents::Numbers(file->Overall().counts), "overallHidden");
    QCOMPARE(file->GetMainModel().rowCount(), rows.size() - hide.size());
    file->ShowAllRows();
    QTEST(TableContents::Rows(file->GetSectionModel()), "blocksShown");
    QCOMPARE(file->Overall().FormatAverageRt(), average);
    QVERIFY(file->GetSectionModel().HiddenStats().isEmpty());
    QCOMPARE(file->GetMainModel().rowCount(), rows.size());
}

void TestHiddenStats::hiddenShareIsOneRecordPerSection()
{
    const auto file = files.Open(DataFileBuilder().ProductTitles().Trials({"B1,T1,C,100", "B1,T1,C,200", "B1,T2,E,300"}));
    SectionModel &sections = file->GetSectionModel();
    file->HideSelectedRows({0});
    file->HideSelectedRows({0});
    QCOMPARE(Hidden(sections), QStringList({"0//B1 2", "1//T1 2", "3/Key/z 2", "3/Pressed Or\nReleased/Pressed 2",
                                            "2/Congruency\n(Trial Variable)/congruent 2", "3/Stimulus\nSide/left 2"}));
    sections.ChangeSectionType(1);
    QCOMPARE(TableContents::Rows(sections), QStringList({"T2: 0 1 0 0"}));
}

// The hidden share is read from model columns 4, 5 and 13 on, whatever
// their titles, while the load found sections by title.
void TestHiddenStats::readsSectionsAtFixedColumns()
{
    const auto file = files.Open(DataFileBuilder()
                                     .Titles({"Trial", "", "", "Block", "", "", "", "", "", "", "Error", "Reaction", "Trial Variable"},
                                             {"Name", "a", "b", "Name", "c", "d", "e", "f", "g", "h", "Code", "Time", "X"})
                                     .Row({"T1", "", "", "B1", "", "", "", "", "", "", "C", "100", "v"})
                                     .Row({"T1", "", "", "B1", "", "", "", "", "", "", "C", "100", "v"}));
    file->HideSelectedRows({0});
    // Column 4 holds the block; column 5's empty cell is filed as a trial;
    // "Trial Variable" in a title right of the time makes a trial variable.
    QCOMPARE(Hidden(file->GetSectionModel()), QStringList({"0//B1 1", "1//<No Name> 1", "2/Trial Variable\nX/v 1"}));
    QCOMPARE(TableContents::Rows(file->GetSectionModel()), QStringList({"B1: 1 0 0 0"}));
    QCOMPARE(file->GetSectionModel().TrialVariableNames(), QStringList({"Trial Variable\nX"}));
}

void TestHiddenStats::removedRowsAreNumberedAsTheyStand_data()
{
    QTest::addColumn<QVector<int>>("hide");
    QTest::addColumn<QList<int>>("removed");
    QTest::addColumn<QStringList>("left");
    QTest::newRow("from the bottom") << QVector<int>{3, 1, 0} << QList<int>{3, 1, 0} << QStringList{"B3: 1 0 0 0"};
    QTest::newRow("from the top") << QVector<int>{0, 3, 2} << QList<int>{0, 2, 1} << QStringList{"B2: 1 0 0 0"};
}

// One hiding that empties several blocks on show tells the views of each
// block's row as it stands after the ones before it went.
void TestHiddenStats::removedRowsAreNumberedAsTheyStand()
{
    QFETCH(QVector<int>, hide);
    const auto file = files.Open(DataFileBuilder().ProductTitles().Trials({"B1,T1,C,1", "B2,T1,C,2", "B3,T1,C,3", "B4,T1,C,4"}));
    SectionModel &sections = file->GetSectionModel();
    QTableView view;
    view.setModel(&file->GetSectionProxy());
    QList<int> removed;
    connect(&sections, &SectionModel::rowsRemoved, this, [&](const QModelIndex &, int first) { removed << first; });
    file->HideSelectedRows(hide);
    QTEST(removed, "removed");
    QTEST(TableContents::Rows(*view.model()), "left");
    file->ShowAllRows();
    QCOMPARE(TableContents::Rows(*view.model()).size(), 4);
}

// With counts chosen, block records are on show and trial records not.
void TestHiddenStats::notifiesOnlyWhatIsOnShow()
{
    const auto file = files.Open(DataFileBuilder().ProductTitles().Trials({"B1,T1,C,100", "B2,T1,E,200", "B2,T2,C,300"}));
    SectionModel &sections = file->GetSectionModel();
    QTableView view;
    view.setModel(&file->GetSectionProxy());
    QSignalSpy removed(&sections, &SectionModel::rowsRemoved);
    QSignalSpy changed(&sections, &SectionModel::dataChanged);
    QSignalSpy inserted(&sections, &SectionModel::rowsInserted);
    file->HideSelectedRows({0});
    QCOMPARE(removed.count(), 1);
    QCOMPARE(removed.first().at(1).toInt(), 0);
    QCOMPARE(changed.count(), 0);
    file->HideSelectedRows({0});
    QCOMPARE(changed.count(), 1);
    QCOMPARE(TableContents::Rows(*view.model()), QStringList({"B2: 1 0 0 0"}));
    file->ShowAllRows();
    QCOMPARE(inserted.count(), 1);
    QCOMPARE(TableContents::Rows(*view.model()), QStringList({"B2: 1 1 0 0", "B1: 1 0 0 0"}));
}

// With percentages chosen, block records are not on show although the
// blocks are: the views hear no row notification and still show the truth.
void TestHiddenStats::viewsShowTheTruthWhenNotNotified()
{
    const auto file = files.Open(DataFileBuilder().ProductTitles().Trials({"B1,T1,C,100", "B2,T1,E,200", "B3,T1,C,300", "B4,T1,C,300"}));
    SectionModel &sections = file->GetSectionModel();
    QTableView view;
    view.setModel(&file->GetSectionProxy());
    sections.ChangeDataType(1);
    QSignalSpy removed(&sections, &SectionModel::rowsRemoved);
    file->HideSelectedRows({0, 2});
    QCOMPARE(TableContents::Rows(*view.model()), QStringList({"B2: 0.00% 100.00% 0.00% 0.00%", "B4: 100.00% 0.00% 0.00% 0.00%"}));
    sections.ChangeDataType(0);
    file->ShowAllRows();
    file->HideSelectedRows({3});
    QCOMPARE(TableContents::Rows(*view.model()), QStringList({"B2: 0 1 0 0", "B1: 1 0 0 0", "B3: 1 0 0 0"}));
    QCOMPARE(removed.count(), 1);
}

ZEPHLANE_TEST_MAIN(TestHiddenStats)
#include "tst_hiddenstats.moc"
