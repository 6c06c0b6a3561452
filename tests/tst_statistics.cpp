// SPDX-License-Identifier: GPL-3.0-or-later
// Statistics gathered while a file loads, the section table that shows
// them, the text of every number, and how hiding selected rows takes rows
// out of the statistics and showing all rows puts them back.

#include "tablecontents.h"
#include "testenvironment.h"
#include "testfiles.h"

#include <QtTest>
#include <QTableView>

using TableContents::Sections;

class TestStatistics : public QObject
{
    Q_OBJECT

    TestFiles files;

private slots:
    void countsRowsBySection_data()
    {
        QTest::addColumn<QString>("columns");
        QTest::addColumn<QStringList>("rows");
        QTest::addColumn<QString>("statistics");
        const QString usual = "Block/Name,Trial/Name,Error/Code,Reaction/Time";
        // Blocks and the whole file count "SC" as "C"; trials keep it in its
        // own slot, which the table heads "NR".
        QTest::newRow("self-correct") << usual << QStringList{"B1,T1,SC,300", "B1,T1,C,500", "B1,T2,E,700"}
                                      << "2 1 0 0 / 800 700 0 0; blocks: B1: 2 1 0 0; trials: T1: 1 0 0 1, T2: 0 1 0 0";
        QTest::newRow("times truncated, bad ones 0")
            << usual << QStringList{"B1,T1,C,512.9", "B1,T1,C,-3.2", "B1,T1,C,", "B1,T1,C,x", "B1,T1,E,1e3"}
            << "4 1 0 0 / 509 1000 0 0; blocks: B1: 4 1 0 0; trials: T1: 4 1 0 0";
        QTest::newRow("unknown codes make sections, count nothing")
            << usual << QStringList{"B1,T1,C,300", "B2,T2,X,300", "B2,T2,c,300"}
            << "1 0 0 0 / 300 0 0 0; blocks: B1: 1 0 0 0, B2: 0 0 0 0; trials: T1: 1 0 0 0, T2: 0 0 0 0";
        QTest::newRow("empty and <No Name> are one section, first appearance order")
            << usual << QStringList{"B2,T1,C,1", ",T1,C,1", "<No Name>,T1,E,1", "B2,T1,NR,"}
            << "2 1 1 0 / 2 1 0 0; blocks: B2: 1 0 1 0, <No Name>: 1 1 0 0; trials: T1: 2 1 1 0";
        // Short and empty lines lack cells, which count under "<No Name>"
        // where they first appear, also when the lines are read in parts.
        QTest::newRow("missing cells") << usual << QStringList{"B1,T1,C,300", "B1", "", "B2,T2,E,100", "B1,T1,SC,5"}
                                       << "2 1 0 0 / 305 100 0 0; blocks: B1: 2 0 0 0, <No Name>: 0 0 0 0, B2: 0 1 0 0; "
                                          "trials: T1: 1 0 0 1, <No Name>: 0 0 0 0, T2: 0 1 0 0";
        // Only rows in a block count for the whole file.
        QTest::newRow("no block column") << "Trial/Name,Error/Code,Reaction/Time" << QStringList{"T1,C,3"}
                                         << "0 0 0 0 / 0 0 0 0; blocks: ; trials: T1: 1 0 0 0";
        QTest::newRow("no code column") << "Block/Name,Reaction/Time" << QStringList{"B1,300", "B2,400"}
                                        << "0 0 0 0 / 0 0 0 0; blocks: B1: 0 0 0 0, B2: 0 0 0 0; trials: ";
        // With no "Reaction\nTime" every column stands right of it, "Flag" too.
        QTest::newRow("no time column") << "Block/Name,Error/Code" << QStringList{"B1,C", "B1,E"}
                                        << "1 1 0 0 / 0 0 0 0; blocks: B1: 1 1 0 0; trials: ; Block\nName: ; "
                                           "Error\nCode: C: 1 0 0 0, E: 0 1 0 0; Flag: <No Name>: 1 1 0 0";
        // Found by title wherever they stand; right of "Reaction\nTime" every
        // column is a trial variable or a code column, in the order of names.
        QTest::newRow("sections anywhere")
            << "Zeta/(Trial Variable),Error/Code,Reaction/Time,Hand/(Trial Variable),Block/Name,Mid/Code"
            << QStringList{"z1,C,1,left,B1,m1", "z2,SC,1,right,B1,m1"}
            << "2 0 0 0 / 2 0 0 0; blocks: B1: 2 0 0 0; trials: ; Hand: left: 1 0 0 0, right: 0 0 0 1; "
               "Zeta: z1: 1 0 0 0, z2: 0 0 0 1; Block\nName: ; Mid\nCode: m1: 1 0 0 1";
        QTest::newRow("titles only, right-hand entries made") << "Zeta/(Trial Variable),Error/Code,Reaction/Time,"
                                                                 "Hand/(Trial Variable),Key" << QStringList{}
                                                              << "0 0 0 0 / 0 0 0 0; blocks: ; trials: ; Hand: ; Key: ";
    }

    void countsRowsBySection()
    {
        QFETCH(QString, columns);
        QFETCH(QStringList, rows);
        QTEST(TableContents::Statistics(*files.Open(DataFileBuilder().Columns(columns).Rows(rows))), "statistics");
    }

    // The columns read C, E, SC, NR over the slots C, E, NR, SC. A cleared
    // drop-down (-1) shows its first entry, one beyond the end nothing.
    void showsPercentsAndAverages()
    {
        const auto file = files.Open(DataFileBuilder().Columns("Block/Name,Trial/Name,Error/Code,Reaction/Time,Hand/(Trial Variable)")
                                         .Rows({"B1,T1,C,500,h", "B1,T1,C,501,h", "B1,T1,NR,,h", "B1,T1,SC,300,h"}));
        SectionModel &sections = file->GetSectionModel();
        QSignalSpy changed(&sections, &SectionModel::dataChanged);
        QCOMPARE(QStringList({Sections(sections, 1, 0, 1), QString::number(changed.count()), Sections(sections, 1, 0, 2),
                              TableContents::Titles(sections).join(' '), Sections(sections, 2, -1), Sections(sections, 2, 1),
                              file->Overall().FormatAverageRt()}).join(" | "),
                 "T1: 50.00% 0.00% 25.00% 25.00% | 1 | T1: 500.50 0.00 0.00 300.00 | C E SC NR | h: 2 0 1 1 |  | 325.25");
    }

    // The hidden share is one record per section, read from model columns
    // 4, 5 and 13 on whatever their titles, while the load found sections by
    // title: the trial of column 5 is "<No Name>", and "Trial Variable" in a
    // title makes a trial variable there, though the load took a code column.
    void hiddenShareReadsFixedColumns()
    {
        const auto file = files.Open(DataFileBuilder()
                                         .Columns("Trial/Name,a,b,Block/Name,c,d,e,f,g,h,Error/Code,Reaction/Time,Trial Variable/X,Side")
                                         .Rows({"T1,,,B1,,,,,,,C,100,v,left", "T1,,,B1,,,,,,,C,200,v,left", "T2,,,B1,,,,,,,E,300,w,right"}));
        file->HideSelectedRows({0});
        file->HideSelectedRows({0});
        QStringList records;
        for (const HiddenSectionStats *record : file->GetSectionModel().HiddenStats())
            records << QString("%1/%2/%3 %4").arg(record->sectionType).arg(record->columnName, record->name).arg(record->TotalCount());
        QCOMPARE(records.join(", "), "0//B1 2, 1//<No Name> 2, 2/Trial Variable\nX/v 2, 3/Side/left 2");
        QCOMPARE(TableContents::Statistics(*file), "0 1 0 0 / 0 300 0 0; blocks: B1: 0 1 0 0; trials: T1: 2 0 0 0, T2: 0 1 0 0; "
                                                   "Trial Variable\nX: ; Side: right: 0 1 0 0; Trial Variable\nX: v: 2 0 0 0, w: 0 1 0 0");
    }

    void hidingSelectedRowsAndShowingAll_data()
    {
        QTest::addColumn<QStringList>("trials");
        QTest::addColumn<int>("sectionType");
        QTest::addColumn<int>("dataType");
        QTest::addColumn<QVector<int>>("hide");
        QTest::addColumn<QString>("seen");
        const QStringList four{"B1,T1,C,1", "B2,T1,E,2", "B3,T1,C,3", "B4,T1,C,4"};
        // The load counted "SC" as "C" for blocks; hiding takes it from the "SC" slot.
        QTest::newRow("self-correct asymmetry") << QStringList{"B1,T1,SC,100", "B1,T1,C,300", "B1,T2,E,500"} << 0 << 0 << QVector<int>{0}
            << "~0 | B1: 2 1 0 -0.99 | 2 1 0 -1 / 400 500 0 -100 || "
               "~0 | B1: 2 1 0 0 | 2 1 0 0 / 400 500 0 0";
        QTest::newRow("empty and <No Name> cells") << QStringList{",T1,C,100", "<No Name>,T1,E,200", "B1,T1,C,300"} << 0 << 0
                                                   << QVector<int>{0, 1, 0}
            << "-0 | B1: 1 0 0 0 | 1 0 0 0 / 300 0 0 0 || "
               "+1 ~1 | B1: 1 0 0 0, <No Name>: 1 1 0 0 | 2 1 0 0 / 400 200 0 0";
        // Sections that go are announced one by one at the row they hold after
        // the ones before them went, and come back at the end.
        QTest::newRow("from the bottom") << four << 0 << 0 << QVector<int>{3, 1, 0}
            << "-3 -1 -0 | B3: 1 0 0 0 | 1 0 0 0 / 3 0 0 0 || "
               "+1 ~1 +2 ~2 +3 ~3 | B3: 1 0 0 0, B4: 1 0 0 0, B2: 0 1 0 0, B1: 1 0 0 0 | 3 1 0 0 / 8 2 0 0";
        QTest::newRow("from the top") << four << 0 << 0 << QVector<int>{0, 3, 2}
            << "-0 -2 -1 | B2: 0 1 0 0 | 0 1 0 0 / 0 2 0 0 || "
               "+1 ~1 +2 ~2 +3 ~3 | B2: 0 1 0 0, B1: 1 0 0 0, B4: 1 0 0 0, B3: 1 0 0 0 | 3 1 0 0 / 8 2 0 0";
        QTest::newRow("one block goes, one shrinks") << QStringList{"B1,T1,C,1", "B2,T1,E,2", "B2,T2,C,3"} << 0 << 0 << QVector<int>{0, 1}
            << "-0 ~0 | B2: 1 0 0 0 | 1 0 0 0 / 3 0 0 0 || "
               "+1 ~1 ~0 | B2: 1 1 0 0, B1: 1 0 0 0 | 2 1 0 0 / 4 2 0 0";
        // A record is on show when its type equals the data type chosen: with
        // percentages, or with trials on show, views hear of one change of
        // layout, and nothing of the lists that are not on show.
        QTest::newRow("percentages") << four << 0 << 1 << QVector<int>{0, 2}
            << "layout | B2: 0.00% 100.00% 0.00% 0.00%, B4: 100.00% 0.00% 0.00% 0.00% | 1 1 0 0 / 4 2 0 0 || "
               "layout | B2: 0.00% 100.00% 0.00% 0.00%, B4: 100.00% 0.00% 0.00% 0.00%, B1: 100.00% 0.00% 0.00% 0.00%, "
               "B3: 100.00% 0.00% 0.00% 0.00% | 3 1 0 0 / 8 2 0 0";
        QTest::newRow("trials") << QStringList{"B1,T1,C,1", "B1,T2,E,2"} << 1 << 0 << QVector<int>{0}
            << "layout | T2: 0 1 0 0 | 0 1 0 0 / 0 2 0 0 || "
               "layout | T2: 0 1 0 0, T1: 1 0 0 0 | 1 1 0 0 / 1 2 0 0";
    }

    // What the section table tells its views, what a view shows, and the
    // whole file's counts and sums, after hiding and after showing all rows.
    void hidingSelectedRowsAndShowingAll()
    {
        QFETCH(QStringList, trials);
        QFETCH(int, sectionType);
        QFETCH(int, dataType);
        QFETCH(QVector<int>, hide);
        const auto file = files.Open(DataFileBuilder().KelmarunTitles().Trials(trials));
        SectionModel &sections = file->GetSectionModel();
        QTableView view;
        view.setModel(&file->GetSectionProxy());
        Sections(sections, sectionType, 0, dataType);
        QStringList seen;
        connect(&sections, &SectionModel::rowsRemoved, &view, [&](const QModelIndex &, int row) { seen << QString("-%1").arg(row); });
        connect(&sections, &SectionModel::rowsInserted, &view, [&](const QModelIndex &, int row) { seen << QString("+%1").arg(row); });
        connect(&sections, &SectionModel::dataChanged, &view, [&](const QModelIndex &from) { seen << QString("~%1").arg(from.row()); });
        connect(&sections, &SectionModel::layoutChanged, &view, [&] { seen << "layout"; });
        auto look = [&] {
            seen << "|" << TableContents::Rows(*view.model()).join(", ") << "|" << TableContents::Numbers(file->Overall().counts) << "/"
                 << TableContents::Numbers(file->Overall().sums);
        };
        file->HideSelectedRows(hide);
        look();
        seen << "||";
        file->ShowAllRows();
        look();
        QTEST(seen.join(' '), "seen");
        QVERIFY(sections.HiddenStats().isEmpty());
    }

    // Counts, percentages and averages in six significant digits; a slot
    // driven below zero by hiding prints as less than it is.
    void formatsNumbers()
    {
        QStringList texts;
        for (const auto &[value, mode] : {std::pair(12.0, 0), {0.0, 1}, {33.33333, 1}, {12.5, 1}, {12345.678, 2}, {123456.789, 2},
                                          {1000000.0, 0}, {1000000.0, 2}, {1234567.0, 2}, {-1.5, 2}, {-1.0, 0}})
            texts << FormatNumber(value, mode);
        QCOMPARE(texts.join(' '), "12 0.00% 33.33% 12.50% 12345.70 123457.00 1e+06 1e+06.00 1.23457e+06 -1.49 -0.99");
    }
};

ZEPHLANE_TEST_MAIN(TestStatistics)
#include "tst_statistics.moc"
