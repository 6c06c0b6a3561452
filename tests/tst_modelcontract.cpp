// SPDX-License-Identifier: GPL-3.0-or-later
// Both table models and both proxies of a record keep Qt's item model
// contract through every change a user can make, each shown in a view with
// a selection. QAbstractItemModelTester aborts at the first break.

#include "datafile.h"
#include "tablecontents.h"
#include "testenvironment.h"
#include "testfiles.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QTableView>
#include <QtTest>

#include <memory>

namespace {

// B1 holds rows 0 and 1, so hiding both takes its section away.
DataFileBuilder FirstFile()
{
    return DataFileBuilder().KelmarunTitles().Trials(
        {"B1,T1,C,300", "B1,T2,E,512.9", "B2,T1,SC,100", "B2,T3,NR,", "B3,T2,C,700", "B3,T1,X,abc"});
}

// A column more before the code and time, so that hiding reads the time
// column as a code column the load never made.
DataFileBuilder ShiftedFile()
{
    return DataFileBuilder()
        .Titles({"Participant", "Session", "Block", "Block", "Trial", "Trial", "Trial", "Stimulus", "Expected",
                 "Actual", "Extra", "Error", "Reaction", "Stimulus"},
                {"Name", "Number", "Number", "Name", "Name", "Number", "Repetition", "Name", "Response",
                 "Response", "Column", "Code", "Time", "Side"})
        .Row({"P02", "1", "1", "B4", "T1", "1", "1", "s", "z", "z", "x", "C", "250", "left"})
        .Row({"P02", "1", "1", "B1", "T9", "2", "1", "s", "z", "z", "x", "E", "260", "right"});
}

// A record shown as the window shows it, with every row selected, and a
// tester on each model and proxy.
struct ShownRecord
{
    explicit ShownRecord(std::unique_ptr<DataFile> shown)
        : file(std::move(shown))
    {
        raw.setModel(&file->GetMainProxy());
        sections.setModel(&file->GetSectionProxy());
        raw.selectAll();
        sections.selectAll();
        for (QAbstractItemModel *model :
             std::initializer_list<QAbstractItemModel *>{&file->GetMainModel(), &file->GetMainProxy(),
                                                         &file->GetSectionModel(), &file->GetSectionProxy()})
            testers.push_back(std::make_unique<QAbstractItemModelTester>(
                model, QAbstractItemModelTester::FailureReportingMode::Fatal));
    }

    std::unique_ptr<DataFile> file;
    QTableView raw;
    QTableView sections;
    std::vector<std::unique_ptr<QAbstractItemModelTester>> testers;
};

QVector<int> Numbers(const QStringList &words)
{
    QVector<int> numbers;
    for (const QString &word : words)
        numbers.append(word.toInt());
    return numbers;
}

void RunRules(MainModel &model, int actionType)
{
    model.SetFlaggingOptions(actionType, 0);
    model.CalculateStandardDeviation();
    model.SetFlagsSD(true, false, true, false, 1);
    model.SetFlaggingOptions(actionType, 1);
    model.SetFlagsEC(true, false, true, true);
    model.SetFlaggingOptions(actionType, 0);
    model.SetFlagsTL(true, 200, true, 600);
    model.SetFlagsTR(100, 400);
}

void Sort(QAbstractItemModel &proxy, const QStringList &words)
{
    proxy.sort(words.value(1).toInt(), words.value(2) == "desc" ? Qt::DescendingOrder : Qt::AscendingOrder);
}

// One step as a user takes it, written "verb arguments...".
void Apply(DataFile &file, const QString &step)
{
    const QStringList words = step.split(' ', Qt::SkipEmptyParts);
    const QString verb = words.value(0);
    MainModel &model = file.GetMainModel();
    SectionModel &sections = file.GetSectionModel();
    if (verb == "flag") {
        // A user can only click a row that is there.
        const QModelIndex cell = model.index(words.value(1).toInt(), 0);
        if (cell.isValid())
            model.ChangeFlag(cell);
    } else if (verb == "rules" || verb == "count")
        RunRules(model, verb == "rules" ? 0 : 1);
    else if (verb == "colour")
        model.ChangeRowColor(words.value(1).toInt(), Qt::red);
    else if (verb == "entire")
        model.ChangeColorOption(true, words.value(1) == "override");
    else if (verb == "hide")
        file.HideSelectedRows(Numbers(words.mid(1)));
    else if (verb == "hideflagged" || verb == "hideunflagged")
        file.HideRows(TableContents::RowsFlagged(model, verb == "hideflagged"));
    else if (verb == "show")
        file.ShowAllRows();
    else if (verb == "sort")
        Sort(file.GetMainProxy(), words);
    else if (verb == "sortsections")
        Sort(file.GetSectionProxy(), words);
    else if (verb == "basis")
        sections.ChangeSectionType(words.value(1).toInt());
    else if (verb == "data")
        sections.ChangeDataType(words.value(1).toInt());
    else if (verb == "sub")
        sections.ChangeSubIndex(words.value(1).toInt());
    else
        QFAIL(qPrintable("unknown step " + step));
}

} // namespace

class TestModelContract : public QObject
{
    Q_OBJECT

private slots:
    void keepsTheContract_data();
    void keepsTheContract();

private:
    std::unique_ptr<DataFile> Record(const QString &kind);

    TestFiles files;
};

void TestModelContract::keepsTheContract_data()
{
    QTest::addColumn<QString>("record");
    QTest::addColumn<int>("basis");
    QTest::addColumn<int>("dataType");
    QTest::addColumn<QString>("steps");
    const QList<QPair<const char *, QString>> scenarios = {
        {"flags and colours", "flag 0, flag 3, flag 0, colour 0, colour 4, entire override, colour -1"},
        {"rules", "count, rules, hideflagged, rules, show"},
        {"hide selected and show", "hide 0 2, hide 0, hide 1, show"},
        {"hide a whole section", "hide 1 0, show, hide 5 4, hide 0 1 2 3, show"},
        {"hide by flag", "flag 1, flag 4, hideflagged, hideunflagged, colour 1, show, show"},
        {"sorted tables", "sort 12, sortsections 0 desc, hide 0 2, sort 12 desc, flag 1, hide 1, show, sort -1"},
        {"every row hidden", "hide 0 1 2 3 4 5, colour 2, entire, rules, show"},
        {"lists switched", "sub 2, hide 4, basis 3, hide 0, sub -1, basis 2, show, basis 1, sub 9, hide 2, show"},
    };
    for (const QString record : {"file", "no rows", "shifted", "self", "pair"}) {
        for (int basis = 0; basis < 4; ++basis) {
            for (int dataType = 0; dataType < 3; ++dataType) {
                for (const auto &scenario : scenarios)
                    QTest::addRow("%s/%s/%d/%d", scenario.first, qPrintable(record), basis, dataType)
                        << record << basis << dataType << scenario.second;
            }
        }
    }
}

// Each scenario runs on every list and data type the drop-downs choose.
void TestModelContract::keepsTheContract()
{
    QFETCH(QString, record);
    QFETCH(int, basis);
    QFETCH(int, dataType);
    QFETCH(QString, steps);
    ShownRecord shown(Record(record));
    DataFile &file = *shown.file;
    file.GetSectionModel().ChangeSectionType(basis);
    file.GetSectionModel().ChangeDataType(dataType);
    const int totalRows = file.GetMainModel().TotalRowCount();
    for (const QString &step : steps.split(", "))
        Apply(file, step);
    QCOMPARE(file.GetMainProxy().rowCount(), totalRows);
}

std::unique_ptr<DataFile> TestModelContract::Record(const QString &kind)
{
    if (kind == "no rows")
        return files.Open(DataFileBuilder().KelmarunTitles());
    if (kind == "shifted")
        return files.Open(ShiftedFile());
    auto first = files.Open(FirstFile());
    if (kind == "file")
        return first;
    auto combined = std::make_unique<DataFile>();
    combined->CopyFrom(*first);
    combined->Combine(kind == "self" ? *first : *files.Open(ShiftedFile()));
    return combined;
}

ZEPHLANE_TEST_MAIN(TestModelContract)
#include "tst_modelcontract.moc"
