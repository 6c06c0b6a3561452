// Several selected files shown as one record: rows, columns, names, dates
// and statistics of the combined record, and the sources left as they were.

#include "datafile.h"
#include "datafilebuilder.h"
#include "tablecontents.h"
#include "testenvironment.h"
#include "testfiles.h"

#include <QApplication>
#include <QtTest>

#include <memory>

namespace {

// The titles, then one "a|b|c" line per shown row, "*" first if flagged.
QStringList Table(const MainModel &model)
{
    QStringList lines{TableContents::Titles(model).mid(1).join('|')};
    for (int row = 0; row < model.rowCount(); ++row) {
        QStringList cells;
        for (int column = 1; column < model.columnCount(); ++column)
            cells << model.data(model.index(row, column)).toString();
        lines << (model.Flags()[row] ? "*" : "") + cells.join('|');
    }
    return lines;
}

// Two rows, "a1 b1 ..." and "a2 b2 ...".
DataFileBuilder TwoRows(const QStringList &upper, const QStringList &lower)
{
    DataFileBuilder builder;
    builder.Titles(upper, lower);
    for (const QString row : {"1", "2"}) {
        QStringList cells;
        for (int column = 0; column < lower.size(); ++column)
            cells << QChar('a' + column) + row;
        builder.Row(cells);
    }
    return builder;
}

// One section table as "name: values", counts by default, 2 for averages.
QStringList Sections(SectionModel &model, int sectionType, int dataType = 0)
{
    model.ChangeSectionType(sectionType);
    model.ChangeSubIndex(0);
    model.ChangeDataType(dataType);
    return TableContents::Rows(model);
}

// Everything of a record that combining could disturb, as text.
QStringList Snapshot(DataFile &file)
{
    QStringList state = Table(file.GetMainModel());
    state << file.ExperimentName() << file.Date();
    for (const double value : file.Overall().counts + file.Overall().averages)
        state << QString::number(value);
    for (const int sectionType : {0, 1, 2})
        state << Sections(file.GetSectionModel(), sectionType) << Sections(file.GetSectionModel(), sectionType, 2);
    return state;
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

private slots:
    void joinsColumnsByTitle_data();
    void joinsColumnsByTitle();
    void addsSectionsOfTheSameName();
    void keepsWhatTheFirstFileLeftEmpty();
    void rebuildingLeavesSourcesUntouched();

private:
    TestFiles files;
};

void TestCombining::joinsColumnsByTitle_data()
{
    QTest::addColumn<QStringList>("upper2");
    QTest::addColumn<QStringList>("lower2");
    QTest::addColumn<QStringList>("table");
    // The first file has "Block\nName", "Error\nCode", "Reaction\nTime" and
    // "Hand"; the later one has its first row hidden and its second flagged.
    QTest::newRow("identical columns")
        << QStringList{"Block", "Error", "Reaction", ""} << QStringList{"Name", "Code", "Time", "Hand"}
        << QStringList{"Block\nName|Error\nCode|Reaction\nTime|Hand", "a1|b1|c1|d1", "a2|b2|c2|d2", "*a2|b2|c2|d2"};
    QTest::newRow("column only in the first file")
        << QStringList{"Block", "Error", "Reaction"} << QStringList{"Name", "Code", "Time"}
        << QStringList{"Block\nName|Error\nCode|Reaction\nTime|Hand", "a1|b1|c1|d1", "a2|b2|c2|d2", "*a2|b2|c2|"};
    QTest::newRow("column only in the later file, left of the others there")
        << QStringList{"", "Block", "Error", "Reaction", ""} << QStringList{"Extra", "Name", "Code", "Time", "Hand"}
        << QStringList{"Block\nName|Error\nCode|Reaction\nTime|Hand|Extra", "a1|b1|c1|d1|", "a2|b2|c2|d2|",
                       "*b2|c2|d2|e2|a2"};
    // Repeated titles, common after editing in a spreadsheet, stay in step
    // with their cells.
    QTest::newRow("repeated titles and a column titled Flag")
        << QStringList{"", "", "", "", ""} << QStringList{"Flag", "", "", "", ""}
        << QStringList{"Block\nName|Error\nCode|Reaction\nTime|Hand|Flag#||#|##|###", "a1|b1|c1|d1|||||",
                       "a2|b2|c2|d2|||||", "*||||a2|b2|c2|d2|e2"};
    QTest::newRow("titles apart by a line break stay apart")
        << QStringList{"Block", "Error", ""} << QStringList{"Name", "Code", "Reaction Time"}
        << QStringList{"Block\nName|Error\nCode|Reaction\nTime|Hand|Reaction Time", "a1|b1|c1|d1|", "a2|b2|c2|d2|",
                       "*a2|b2|||c2"};
}

void TestCombining::joinsColumnsByTitle()
{
    QFETCH(QStringList, upper2);
    QFETCH(QStringList, lower2);
    QFETCH(QStringList, table);
    const auto first = files.Open(TwoRows({"Block", "Error", "Reaction", ""}, {"Name", "Code", "Time", "Hand"}));
    const auto second = files.Open(TwoRows(upper2, lower2));
    second->GetMainModel().HideRows({0});
    second->GetMainModel().SetRowFlag(0, true);
    const auto combined = Combine({first.get(), second.get()});
    const MainModel &model = combined->GetMainModel();
    QCOMPARE(Table(model), table);
    QCOMPARE(model.FlaggedRowCount(), 1);
}

// Blocks, trials and trial variable values of the same name add up.
void TestCombining::addsSectionsOfTheSameName()
{
    const auto first = files.Open(DataFileBuilder().ProductTitles().Trial("B1", "T1", "C", "300")
                                      .Trial("B2", "T1", "E", "600").Trial("B2", "T2", "C", "500"));
    const auto second = files.Open(DataFileBuilder()
                                       .Titles({"Block", "Trial", "Error", "Reaction", "Congruency"},
                                               {"Name", "Name", "Code", "Time", "(Trial Variable)"})
                                       .Row({"B3", "T2", "C", "200", "congruent"})
                                       .Row({"B2", "T2", "C", "100", "incongruent"})
                                       .Row({"B2", "T3", "SC", "700", "congruent"}));
    const auto combined = Combine({first.get(), second.get()});
    SectionModel &sections = combined->GetSectionModel();
    // Blocks fold "SC" into "C"; trials keep it in its own slot.
    QCOMPARE(Sections(sections, 0), QStringList({"B1: 1 0 0 0", "B2: 3 1 0 0", "B3: 1 0 0 0"}));
    QCOMPARE(Sections(sections, 0, 2),
             QStringList({"B1: 300.00 0.00 0.00 0.00", "B2: 433.33 600.00 0.00 0.00", "B3: 200.00 0.00 0.00 0.00"}));
    QCOMPARE(Sections(sections, 1), QStringList({"T1: 1 1 0 0", "T2: 3 0 0 0", "T3: 0 0 0 1"}));
    QCOMPARE(Sections(sections, 2), QStringList({"congruent: 3 1 0 1", "incongruent: 1 0 0 0"}));
    QCOMPARE(combined->Overall().counts, QVector<double>({5, 1, 0, 0}));
    QCOMPARE(combined->Overall().averages, QVector<double>({360, 600, 0, 0}));
}

// An empty first name takes no " & "; HideEmptyColumns goes by the first
// file's mark, though a later file fills the column.
void TestCombining::keepsWhatTheFirstFileLeftEmpty()
{
    const QStringList upper{"Error", "Reaction", ""};
    const QStringList lower{"Code", "Time", "Notes"};
    const auto first = files.Open(DataFileBuilder().Experiment("").Titles(upper, lower).Row({"C", "300", ""}));
    const auto later = files.Open(DataFileBuilder().Experiment("Later").Titles(upper, lower).Row({"E", "400", "x"}));
    const auto combined = Combine({first.get(), later.get()});
    QCOMPARE(combined->ExperimentName(), QString("Later"));
    QCOMPARE(Table(combined->GetMainModel()).last(), QString("E|400|x"));
    QVERIFY(!combined->GetMainModel().IsColumnEmpty(2));
    QVERIFY(combined->GetMainModel().IsColumnEmpty(3));
}

// Each change of selection drops the combined record and builds a new one;
// what was done to the old one reaches neither the sources nor the new one.
void TestCombining::rebuildingLeavesSourcesUntouched()
{
    std::vector<std::unique_ptr<DataFile>> opened;
    QList<DataFile *> sources;
    QList<QStringList> before;
    for (const QString name : {"Stroop", "Flanker", "Simon"}) {
        const QString number = QString::number(sources.size() + 1);
        opened.push_back(files.Open(DataFileBuilder().Experiment(name).Date("2026-03-0" + number).ProductTitles()
                                        .Trial("B" + number, "T1", "C", "300").Trial("B1", "T2", "SC", "40" + number)));
        sources << opened.back().get();
        before << Snapshot(*sources.last());
    }

    auto combined = Combine(sources);
    QCOMPARE(combined->ExperimentName(), QString("Stroop & Flanker & Simon"));
    QCOMPARE(combined->Date(), QString("2026-03-012026-03-02 2026-03-03 "));
    const QStringList firstBuild = Snapshot(*combined);
    combined->GetMainModel().SetRowFlag(0, true);
    combined->HideSelectedRows({1, 4});
    combined = Combine(sources);

    QCOMPARE(Snapshot(*combined), firstBuild);
    for (int i = 0; i < sources.size(); ++i)
        QCOMPARE(Snapshot(*sources[i]), before[i]);
}

ZEPHLANE_TEST_MAIN(TestCombining)
#include "tst_combining.moc"
