// SPDX-License-Identifier: GPL-3.0-or-later
// Several selected files shown as one record: rows, columns, names, dates
// and statistics of the combined record, and the sources left as they were.

#include "tablecontents.h"
#include "testenvironment.h"
#include "testfiles.h"

#include <QApplication>
#include <QtTest>

namespace {

// The titles, "~" after those marked empty, then each shown row's cells,
// "*" first if flagged, then the count of flagged rows.
QStringList Table(const MainModel &model)
{
    QStringList titles;
    for (int column = 1; column < model.columnCount(); ++column)
        titles << model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString() + (model.IsColumnEmpty(column) ? "~" : "");
    QStringList lines{titles.join('|')};
    const QStringList cells = TableContents::Cells(model);
    for (int row = 0; row < cells.size(); ++row)
        lines << (model.Flags()[row] ? "*" : "") + cells[row].mid(1);
    return lines << QString("%1 flagged").arg(model.FlaggedRowCount());
}

// What the file list builds for a selection.
std::unique_ptr<DataFile> Combine(const QList<DataFile *> &selection)
{
    auto combined = std::make_unique<DataFile>();
    combined->CopyFrom(*selection.first());
    for (int i = 1; i < selection.size(); ++i)
        combined->Combine(*selection[i]);
    return combined;
}

} // namespace

class TestCombining : public QObject
{
    Q_OBJECT

    TestFiles files;

private slots:
    void joinsColumnsByTitle_data()
    {
        QTest::addColumn<QString>("columns");
        QTest::addColumn<QStringList>("rows");
        QTest::addColumn<QStringList>("table");
        // The first file has an empty "Hand"; the later one has its first
        // row hidden and its second flagged. A column the first file left
        // empty stays marked so, though a later file fills it.
        QTest::newRow("column only in the later file, left of the others there")
            << "Extra,Block/Name,Error/Code,Reaction/Time,Hand" << QStringList{"e1,a3,b3,c3,d3", "e2,a4,b4,c4,d4"}
            << QStringList{"Block\nName|Error\nCode|Reaction\nTime|Hand~|Extra", "a1|b1|c1||", "a2|b2|c2||", "*a4|b4|c4|d4|e2",
                           "1 flagged"};
        // Repeated titles, common after editing in a spreadsheet, stay in step
        // with their cells.
        QTest::newRow("repeated titles and a column titled Flag") << "Flag,,,," << QStringList{"f1,g1,h1,i1,j1", "f2,g2,h2,i2,"}
            << QStringList{"Block\nName|Error\nCode|Reaction\nTime|Hand~|Flag#||#|##|###", "a1|b1|c1||||||", "a2|b2|c2||||||",
                           "*||||f2|g2|h2|i2|", "1 flagged"};
        // Columns only in the first file are left empty for the later rows.
        QTest::newRow("titles apart by a line break stay apart")
            << "Block/Name,Error/Code,Reaction Time" << QStringList{"a3,b3,c3", "a4,b4,c4"}
            << QStringList{"Block\nName|Error\nCode|Reaction\nTime|Hand~|Reaction Time", "a1|b1|c1||", "a2|b2|c2||", "*a4|b4|||c4",
                           "1 flagged"};
    }

    void joinsColumnsByTitle()
    {
        QFETCH(QString, columns);
        QFETCH(QStringList, rows);
        const auto first = files.Open(DataFileBuilder().Columns("Block/Name,Error/Code,Reaction/Time,Hand").Rows({"a1,b1,c1,", "a2,b2,c2,"}));
        const auto second = files.Open(DataFileBuilder().Columns(columns).Rows(rows));
        second->GetMainModel().HideRows({0});
        second->GetMainModel().SetRowFlag(0, true);
        QTEST(Table(Combine({first.get(), second.get()})->GetMainModel()), "table");
    }

    // Blocks, trials and trial variable values of the same name add up;
    // blocks fold "SC" into "C", trials keep it in its own slot.
    void addsSectionsOfTheSameName()
    {
        const auto first = files.Open(DataFileBuilder().Columns("Block/Name,Trial/Name,Error/Code,Reaction/Time,Hand/(Trial Variable)")
                                          .Rows({"B1,T1,C,300,left", "B2,T1,E,600,left", "B2,T2,C,500,left"}));
        const auto second = files.Open(DataFileBuilder().Columns("Hand/(Trial Variable),Trial/Name,Block/Name,Error/Code,Reaction/Time")
                                           .Rows({"left,T2,B3,C,200", "right,T2,B2,C,100", "left,T3,B2,SC,700"}));
        const auto combined = Combine({first.get(), second.get()});
        QCOMPARE(TableContents::Statistics(*combined), "5 1 0 0 / 1800 600 0 0; blocks: B1: 1 0 0 0, B2: 3 1 0 0, B3: 1 0 0 0; "
                                                       "trials: T1: 1 1 0 0, T2: 3 0 0 0, T3: 0 0 0 1; Hand: left: 3 1 0 1, right: 1 0 0 0");
        QCOMPARE(TableContents::Sections(combined->GetSectionModel(), 0, 0, 2),
                 "B1: 300.00 0.00 0.00 0.00, B2: 433.33 600.00 0.00 0.00, B3: 200.00 0.00 0.00 0.00");
        QCOMPARE(TableContents::Numbers(combined->Overall().averages), "360 600 0 0");
    }

    // Each change of selection drops the combined record and builds a new one;
    // what was done to the old one reaches neither the sources nor the new one.
    // An empty first name takes no " & "; the dates run together.
    void rebuildingLeavesSourcesUntouched()
    {
        std::vector<std::unique_ptr<DataFile>> opened;
        QList<DataFile *> sources;
        auto snapshot = [](DataFile &file) {
            return Table(file.GetMainModel()) << file.ExperimentName() << file.Date() << TableContents::Statistics(file)
                                              << TableContents::Statistics(file, 2);
        };
        QList<QStringList> before;
        for (const QString name : {"", "Flanker", "Simon"}) {
            const QString number = QString::number(sources.size() + 1);
            opened.push_back(files.Open(DataFileBuilder().Experiment(name).Date("2026-03-0" + number).KelmarunTitles()
                                            .Trial("B" + number, "T1", "C", "300").Trial("B1", "T2", "SC", "40" + number)));
            sources << opened.back().get();
            before << snapshot(*sources.last());
        }
        auto combined = Combine(sources);
        QCOMPARE(combined->ExperimentName() + "|" + combined->Date(), "Flanker & Simon|2026-03-012026-03-02 2026-03-03 ");
        const QStringList firstBuild = snapshot(*combined);
        combined->GetMainModel().SetRowFlag(0, true);
        combined->HideSelectedRows({1, 4});
        combined = Combine(sources);
        QCOMPARE(snapshot(*combined), firstBuild);
        for (int i = 0; i < sources.size(); ++i)
            QCOMPARE(snapshot(*sources[i]), before[i]);
    }
};

ZEPHLANE_TEST_MAIN(TestCombining)
#include "tst_combining.moc"
