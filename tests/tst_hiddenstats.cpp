// How hiding selected rows takes them out of the statistics and showing
// all rows puts them back, as the section table and its views see it.

#include "datafile.h"
#include "datafilebuilder.h"
#include "tablecontents.h"
#include "testfiles.h"
#include "testenvironment.h"

#include <QApplication>
#include <QTableView>
#include <QtTest>

#include <memory>

namespace {

QStringList Hidden(SectionModel &model)
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
    void vanishedBlockComesBackAtTheEnd();
    void sameSectionHiddenTwiceIsOneRecord();
    void selfCorrectRowDrivesSlotsBelowZero();
    void emptyAndNoNameCellsAreOneSection();
    void readsSectionsAtFixedColumns();
    void notifiesOnlyWhatIsOnShow();
    void viewsShowTheTruthWhenNotNotified();

private:
    TestFiles files;
};

void TestHiddenStats::vanishedBlockComesBackAtTheEnd()
{
    const auto file = files.Open(DataFileBuilder()
                               .ProductTitles()
                               .Trial("B1", "T1", "C", "100")
                               .Trial("B2", "T1", "E", "200")
                               .Trial("B2", "T2", "C", "300")
                               .Trial("B3", "T2", "C", "400"));
    SectionModel &sections = file->GetSectionModel();
    file->HideSelectedRows({2, 1});
    QCOMPARE(TableContents::Rows(sections), QStringList({"B1: 1 0 0 0", "B3: 1 0 0 0"}));
    QCOMPARE(file->Overall().TotalCount(), 2);
    QCOMPARE(file->Overall().FormatAverageRt(), QString("250.00"));
    file->ShowAllRows();
    QCOMPARE(TableContents::Rows(sections), QStringList({"B1: 1 0 0 0", "B3: 1 0 0 0", "B2: 1 1 0 0"}));
    QCOMPARE(file->Overall().TotalCount(), 4);
    QCOMPARE(file->Overall().FormatAverageRt(), QString("250.00"));
    QVERIFY(sections.HiddenStats().isEmpty());
    QCOMPARE(file->GetMainModel().rowCount(), 4);
}

void TestHiddenStats::sameSectionHiddenTwiceIsOneRecord()
{
    const auto file = files.Open(DataFileBuilder()
                               .ProductTitles()
                               .Trial("B1", "T1", "C", "100")
                               .Trial("B1", "T1", "C", "200")
                               .Trial("B1", "T2", "E", "300"));
    SectionModel &sections = file->GetSectionModel();
    file->HideSelectedRows({0});
    file->HideSelectedRows({0});
    QCOMPARE(Hidden(sections), QStringList({"0//B1 2", "1//T1 2", "3/Key/z 2", "3/Pressed Or\nReleased/Pressed 2",
                                            "2/Congruency\n(Trial Variable)/congruent 2", "3/Stimulus\nSide/left 2"}));
    sections.ChangeSectionType(1);
    QCOMPARE(TableContents::Rows(sections), QStringList({"T2: 0 1 0 0"}));
}

void TestHiddenStats::selfCorrectRowDrivesSlotsBelowZero()
{
    const auto file = files.Open(DataFileBuilder()
                               .ProductTitles()
                               .Trial("B1", "T1", "SC", "100")
                               .Trial("B1", "T1", "C", "300")
                               .Trial("B1", "T2", "E", "500"));
    QCOMPARE(file->Overall().counts, QVector<double>({2, 1, 0, 0}));
    file->HideSelectedRows({0});
    // The load counted "SC" as "C"; hiding takes it from the "SC" slot.
    QCOMPARE(file->Overall().counts, QVector<double>({2, 1, 0, -1}));
    QCOMPARE(file->Overall().TotalCount(), 2);
    QCOMPARE(TableContents::Rows(file->GetSectionModel()), QStringList({"B1: 2 1 0 -0.99"}));
    file->ShowAllRows();
    QCOMPARE(file->Overall().counts, QVector<double>({2, 1, 0, 0}));
}

void TestHiddenStats::emptyAndNoNameCellsAreOneSection()
{
    const auto file = files.Open(DataFileBuilder()
                               .ProductTitles()
                               .Trial("", "T1", "C", "100")
                               .Trial("<No Name>", "T1", "E", "200")
                               .Trial("B1", "T1", "C", "300"));
    file->HideSelectedRows({0, 1});
    QCOMPARE(TableContents::Rows(file->GetSectionModel()), QStringList({"B1: 1 0 0 0"}));
    QCOMPARE(Hidden(file->GetSectionModel()).first(), QString("0//<No Name> 2"));
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
    // Column 4 holds the block, so the record named "B1" is a block; column 5
    // holds "c"'s empty cell, filed as a trial. The column right of the time
    // has "Trial Variable" in its title and counts as a trial variable.
    QCOMPARE(Hidden(file->GetSectionModel()),
             QStringList({"0//B1 1", "1//<No Name> 1", "2/Trial Variable\nX/v 1"}));
    QCOMPARE(TableContents::Rows(file->GetSectionModel()), QStringList({"B1: 1 0 0 0"}));
    QCOMPARE(file->GetSectionModel().TrialVariableNames(), QStringList({"Trial Variable\nX"}));
}

void TestHiddenStats::notifiesOnlyWhatIsOnShow()
{
    const auto file = files.Open(DataFileBuilder()
                               .ProductTitles()
                               .Trial("B1", "T1", "C", "100")
                               .Trial("B2", "T1", "E", "200")
                               .Trial("B2", "T2", "C", "300"));
    SectionModel &sections = file->GetSectionModel();
    QTableView view;
    view.setModel(&file->GetSectionProxy());
    view.show();
    QSignalSpy removed(&sections, &SectionModel::rowsRemoved);
    QSignalSpy changed(&sections, &SectionModel::dataChanged);
    QSignalSpy inserted(&sections, &SectionModel::rowsInserted);
    // Counts of blocks on show: block records are on show, trial records not.
    file->HideSelectedRows({0});
    QCOMPARE(removed.count(), 1);
    QCOMPARE(removed.first().at(1).toInt(), 0);
    QCOMPARE(changed.count(), 0);
    file->HideSelectedRows({0});
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.first().at(0).toModelIndex().row(), 0);
    QCOMPARE(TableContents::Rows(*view.model()), QStringList({"B2: 1 0 0 0"}));
    file->ShowAllRows();
    QCOMPARE(inserted.count(), 1);
    QCOMPARE(TableContents::Rows(*view.model()), QStringList({"B2: 1 1 0 0", "B1: 1 0 0 0"}));
}

// With percentages chosen, block records are not on show although the
// blocks are: the views hear no row notification and still show the truth.
void TestHiddenStats::viewsShowTheTruthWhenNotNotified()
{
    const auto file = files.Open(DataFileBuilder()
                               .ProductTitles()
                               .Trial("B1", "T1", "C", "100")
                               .Trial("B2", "T1", "E", "200")
                               .Trial("B3", "T1", "C", "300")
                               .Trial("B4", "T1", "C", "300"));
    SectionModel &sections = file->GetSectionModel();
    QTableView view;
    view.setModel(&file->GetSectionProxy());
    view.show();
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
