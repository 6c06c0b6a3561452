// Several selected files shown as one record: rows, columns, names, dates
// and statistics of the combined record, and the sources left as they were.

#include "datafile.h"
#include "datafilebuilder.h"
#include "tablecontents.h"
#include "testfiles.h"
#include "testenvironment.h"

#include <QApplication>
#include <QtTest>

#include <memory>

namespace {

// The titles, then one "a|b|c" line per shown row, the Flag column left out.
QStringList Table(MainModel &model)
{
    QStringList titles;
    for (int column = 1; column < model.columnCount(); ++column)
        titles << model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    QStringList lines{titles.join('|')};
    for (int row = 0; row < model.rowCount(); ++row) {
        QStringList cells;
        for (int column = 1; column < model.columnCount(); ++column)
            cells << model.data(model.index(row, column)).toString();
        lines << cells.join('|');
    }
    return lines;
}

// The section table now chosen, as "name: counts in column order".
QStringList Sections(SectionModel &model, int sectionType, int subIndex = 0, int dataType = 0)
{
    model.ChangeSectionType(sectionType);
    model.ChangeSubIndex(subIndex);
    model.ChangeDataType(dataType);
    return TableContents::Rows(model);
}

// Everything of a record that combining could disturb, as text.
QStringList Snapshot(DataFile &file)
{
    QStringList state = Table(file.GetMainModel());
    QStringList flags;
    for (const bool flag : file.GetMainModel().Flags())
        flags << (flag ? "1" : "0");
    state << flags.join(QString()) << file.ExperimentName() << file.Date();
    const SectionStats &overall = file.Overall();
    for (const QVector<double> *values : {&overall.counts, &overall.sums, &overall.percents, &overall.averages})
        for (const double value : *values)
            state << QString::number(value);
    SectionModel &sections = file.GetSectionModel();
    for (int dataType = 0; dataType < 3; ++dataType) {
        state << Sections(sections, 0, 0, dataType) << Sections(sections, 1, 0, dataType);
        for (int sub = 0; sub < sections.TrialVariableNames().size(); ++sub)
            state << Sections(sections, 2, sub, dataType);
        for (int sub = 0; sub < sections.CodeNames().size(); ++sub)
            state << Sections(sections, 3, sub, dataType);
    }
    Sections(sections, 0);
    return state;
}

// What BuildCombinedFile makes of a selection.
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
    void stacksRowsOfFilesWithIdenticalColumns();
    void joinsColumnsByExactTitle_data();
    void joinsColumnsByExactTitle();
    void keepsSectionsOfAColumnOnlyOneFileHas();
    void addsSectionsOfTheSameNameAcrossFiles();
    void joinsNamesAndRunsDatesTogether_data();
    void joinsNamesAndRunsDatesTogether();
    void keepsEmptyMarkOfTheFirstFile_data();
    void keepsEmptyMarkOfTheFirstFile();
    void rebuildingLeavesSourcesUntouched();

private:
    TestFiles files;
};

void TestCombining::stacksRowsOfFilesWithIdenticalColumns()
{
    const auto first = files.Open(DataFileBuilder().ProductTitles().Trial("B1", "T1", "C", "300").Trial("B1", "T2", "E", "410"));
    const auto second = files.Open(DataFileBuilder().ProductTitles().Trial("B2", "T1", "NR", "0"));
    const QStringList firstTable = Table(first->GetMainModel());
    const QStringList secondTable = Table(second->GetMainModel());

    const auto combined = Combine({first.get(), second.get()});
    MainModel &model = combined->GetMainModel();
    QCOMPARE(model.columnCount(), 17);
    QCOMPARE(model.rowCount(), 3);
    QCOMPARE(model.TotalRowCount(), 3);
    QCOMPARE(Table(model), firstTable + secondTable.mid(1));
    QCOMPARE(model.ErrorCodeColumn(), 11);
    QCOMPARE(model.ReactionTimeColumn(), 12);
    QCOMPARE(model.Flags(), QVector<bool>(3, false));
    QCOMPARE(combined->Path(), QString());
    QVERIFY(combined->HeaderFields().isEmpty());
}

void TestCombining::joinsColumnsByExactTitle_data()
{
    QTest::addColumn<QStringList>("upper1");
    QTest::addColumn<QStringList>("lower1");
    QTest::addColumn<QStringList>("upper2");
    QTest::addColumn<QStringList>("lower2");
    QTest::addColumn<QStringList>("table");

    // Each file has two rows: "a1", "a2" in its first column and so on.
    const QStringList blockCodeTime{"Block", "Error", "Reaction"};
    const QStringList nameCodeTime{"Name", "Code", "Time"};
    QTest::newRow("column only in the first file")
        << blockCodeTime + QStringList{"Hand"} << nameCodeTime + QStringList{"(Trial Variable)"}
        << blockCodeTime << nameCodeTime
        << QStringList{"Block\nName|Error\nCode|Reaction\nTime|Hand\n(Trial Variable)",
                       "a1|b1|c1|d1", "a2|b2|c2|d2", "a1|b1|c1|", "a2|b2|c2|"};
    QTest::newRow("column only in the later file, left of the others there")
        << blockCodeTime << nameCodeTime
        << QStringList{"", "Block", "Error", "Reaction"} << QStringList{"Extra"} + nameCodeTime
        << QStringList{"Block\nName|Error\nCode|Reaction\nTime|Extra",
                       "a1|b1|c1|", "a2|b2|c2|", "b1|c1|d1|a1", "b2|c2|d2|a2"};
    QTest::newRow("same titles in another order")
        << blockCodeTime << nameCodeTime
        << QStringList{"Reaction", "Block", "Error"} << QStringList{"Time", "Name", "Code"}
        << QStringList{"Block\nName|Error\nCode|Reaction\nTime",
                       "a1|b1|c1", "a2|b2|c2", "b1|c1|a1", "b2|c2|a2"};
    QTest::newRow("titles that differ only by their line break stay apart")
        << blockCodeTime << nameCodeTime
        << QStringList{"Block", "Error", ""} << QStringList{"Name", "Code", "Reaction Time"}
        << QStringList{"Block\nName|Error\nCode|Reaction\nTime|Reaction Time",
                       "a1|b1|c1|", "a2|b2|c2|", "a1|b1||c1", "a2|b2||c2"};
}

void TestCombining::joinsColumnsByExactTitle()
{
    QFETCH(QStringList, upper1);
    QFETCH(QStringList, lower1);
    QFETCH(QStringList, upper2);
    QFETCH(QStringList, lower2);
    QFETCH(QStringList, table);
    const auto open = [this](const QStringList &upper, const QStringList &lower) {
        DataFileBuilder builder;
        builder.Titles(upper, lower);
        for (const QString row : {"1", "2"}) {
            QStringList cells;
            for (int column = 0; column < lower.size(); ++column)
                cells << QChar('a' + column) + row;
            builder.Row(cells);
        }
        return files.Open(builder);
    };
    const auto first = open(upper1, lower1);
    const auto second = open(upper2, lower2);
    const auto combined = Combine({first.get(), second.get()});
    QCOMPARE(Table(combined->GetMainModel()), table);
}

void TestCombining::keepsSectionsOfAColumnOnlyOneFileHas()
{
    const auto first = files.Open(DataFileBuilder()
                                .Titles({"Block", "Error", "Reaction", "Congruency", "Stimulus"},
                                        {"Name", "Code", "Time", "(Trial Variable)", "Side"})
                                .Row({"B1", "C", "300", "congruent", "left"})
                                .Row({"B1", "E", "500", "incongruent", "right"}));
    const auto second = files.Open(DataFileBuilder()
                                 .Titles({"Block", "Error", "Reaction", ""}, {"Name", "Code", "Time", "Hand"})
                                 .Row({"B1", "C", "400", "right hand"}));
    const auto combined = Combine({first.get(), second.get()});

    MainModel &model = combined->GetMainModel();
    QCOMPARE(Table(model).last(), QString("B1|C|400|||right hand"));
    SectionModel &sections = combined->GetSectionModel();
    QCOMPARE(sections.TrialVariableNames(), QStringList({"Congruency"}));
    QCOMPARE(sections.CodeNames(), QStringList({"Hand", "Stimulus\nSide"}));
    // The second file's rows have no value there, yet add no "<No Name>" section.
    QCOMPARE(Sections(sections, 2), QStringList({"congruent: 1 0 0 0", "incongruent: 0 1 0 0"}));
    QCOMPARE(Sections(sections, 3, 0), QStringList({"right hand: 1 0 0 0"}));
    QCOMPARE(Sections(sections, 3, 1), QStringList({"left: 1 0 0 0", "right: 0 1 0 0"}));
    QCOMPARE(Sections(sections, 0), QStringList({"B1: 2 1 0 0"}));
}

void TestCombining::addsSectionsOfTheSameNameAcrossFiles()
{
    const auto first = files.Open(DataFileBuilder()
                                .ProductTitles()
                                .Trial("B1", "T1", "C", "300")
                                .Trial("B2", "T1", "E", "600")
                                .Trial("B2", "T2", "C", "500"));
    const auto second = files.Open(DataFileBuilder()
                                 .ProductTitles()
                                 .Trial("B3", "T2", "C", "200")
                                 .Trial("B2", "T2", "C", "100")
                                 .Trial("B2", "T3", "SC", "700"));
    const auto combined = Combine({first.get(), second.get()});
    SectionModel &sections = combined->GetSectionModel();

    // Blocks fold "SC" into "C"; trials keep it in its slot, headed "NR".
    QCOMPARE(Sections(sections, 0), QStringList({"B1: 1 0 0 0", "B2: 3 1 0 0", "B3: 1 0 0 0"}));
    QCOMPARE(Sections(sections, 0, 0, 2),
             QStringList({"B1: 300.00 0.00 0.00 0.00", "B2: 433.33 600.00 0.00 0.00", "B3: 200.00 0.00 0.00 0.00"}));
    QCOMPARE(Sections(sections, 1), QStringList({"T1: 1 1 0 0", "T2: 3 0 0 0", "T3: 0 0 0 1"}));
    QCOMPARE(Sections(sections, 2), QStringList({"congruent: 4 1 0 1"}));
    QCOMPARE(combined->Overall().counts, QVector<double>({5, 1, 0, 0}));
    QCOMPARE(combined->Overall().sums, QVector<double>({1800, 600, 0, 0}));
    QCOMPARE(combined->Overall().averages[0], 360.0);
    QCOMPARE(combined->Overall().percents[1], 100.0 / 6);
}

void TestCombining::joinsNamesAndRunsDatesTogether_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QString>("joined");
    QTest::newRow("three experiments") << QStringList{"Stroop", "Flanker", "Simon"} << "Stroop & Flanker & Simon";
    QTest::newRow("one experiment thrice") << QStringList{"Stroop", "Stroop", "Stroop"} << "Stroop & Stroop & Stroop";
    QTest::newRow("first name empty") << QStringList{"", "Flanker", "Simon"} << "Flanker & Simon";
}

void TestCombining::joinsNamesAndRunsDatesTogether()
{
    QFETCH(QStringList, names);
    QFETCH(QString, joined);
    std::vector<std::unique_ptr<DataFile>> opened;
    QList<DataFile *> selection;
    for (int i = 0; i < names.size(); ++i) {
        opened.push_back(files.Open(DataFileBuilder()
                                        .Experiment(names[i])
                                        .Date(QString("2026-03-0%1").arg(i + 1))
                                        .ProductTitles()
                                        .Trial("B1", "T1", "C", "300")));
        selection << opened.back().get();
    }
    const auto combined = Combine(selection);
    QCOMPARE(combined->ExperimentName(), joined);
    QCOMPARE(combined->Date(), QString("2026-03-012026-03-02 2026-03-03 "));
    QCOMPARE(combined->GetMainModel().rowCount(), 3);
}

void TestCombining::keepsEmptyMarkOfTheFirstFile_data()
{
    QTest::addColumn<bool>("firstHasColumn");
    QTest::addColumn<QString>("firstCell");
    QTest::addColumn<QString>("laterCell");
    QTest::addColumn<bool>("empty");
    QTest::newRow("empty first, filled later") << true << "" << "x" << true;
    QTest::newRow("filled first, empty later") << true << "x" << "" << false;
    QTest::newRow("empty in both") << true << "" << "" << true;
    QTest::newRow("new in the later file, filled") << false << "" << "x" << false;
    QTest::newRow("new in the later file, empty") << false << "" << "" << true;
}

void TestCombining::keepsEmptyMarkOfTheFirstFile()
{
    QFETCH(bool, firstHasColumn);
    QFETCH(QString, firstCell);
    QFETCH(QString, laterCell);
    QFETCH(bool, empty);
    const QStringList upper{"Error", "Reaction", ""};
    const QStringList lower{"Code", "Time", "Notes"};
    const auto first = files.Open(firstHasColumn ? DataFileBuilder().Titles(upper, lower).Row({"C", "300", firstCell})
                                           : DataFileBuilder().Titles(upper.mid(0, 2), lower.mid(0, 2)).Row({"C", "300"}));
    const auto later = files.Open(DataFileBuilder().Titles(upper, lower).Row({"E", "400", laterCell}));
    const auto combined = Combine({first.get(), later.get()});
    MainModel &model = combined->GetMainModel();
    QCOMPARE(model.headerData(3, Qt::Horizontal, Qt::DisplayRole).toString(), QString("Notes"));
    QCOMPARE(model.IsColumnEmpty(3), empty);
    QCOMPARE(model.data(model.index(1, 3)).toString(), laterCell);
    QVERIFY(!model.IsColumnEmpty(1));
    QVERIFY(model.IsColumnEmpty(0));
}

void TestCombining::rebuildingLeavesSourcesUntouched()
{
    const auto first = files.Open(DataFileBuilder()
                                .Experiment("Stroop")
                                .ProductTitles()
                                .Trial("B1", "T1", "C", "300", "congruent", "left")
                                .Trial("B2", "T2", "E", "650", "incongruent", "right"));
    const auto second = files.Open(DataFileBuilder()
                                 .Experiment("Flanker")
                                 .ProductTitles()
                                 .Trial("B1", "T1", "SC", "420", "neutral", "left")
                                 .Trial("B3", "T2", "NR", "0", "congruent", "up"));
    const auto third = files.Open(DataFileBuilder()
                                .Experiment("Simon")
                                .Titles({"Block", "Error", "Reaction", "Hand"}, {"Name", "Code", "Time", "(Trial Variable)"})
                                .Row({"B2", "C", "380", "left"}));
    const QList<DataFile *> sources{first.get(), second.get(), third.get()};
    QList<QStringList> before;
    for (DataFile *source : sources)
        before << Snapshot(*source);

    // Each change of selection drops the combined record and builds a new one.
    auto combined = Combine(sources);
    const QStringList firstBuild = Snapshot(*combined);
    combined.reset();
    combined = Combine({second.get(), first.get()});
    QCOMPARE(Sections(combined->GetSectionModel(), 0), QStringList({"B1: 2 0 0 0", "B3: 0 0 1 0", "B2: 0 1 0 0"}));
    combined.reset();
    combined = Combine(sources);

    QCOMPARE(Snapshot(*combined), firstBuild);
    QCOMPARE(combined->Overall().counts, QVector<double>({3, 1, 1, 0}));
    for (int i = 0; i < sources.size(); ++i)
        QCOMPARE(Snapshot(*sources[i]), before[i]);
}

ZEPHLANE_TEST_MAIN(TestCombining)
#include "tst_combining.moc"
