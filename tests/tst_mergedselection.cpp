// Flagged and hidden rows in combined records and in the merged output
// file: which rows go out, and which stay behind the deliberate stop.

#include "datafile.h"
#include "datafilebuilder.h"
#include "testfiles.h"
#include "modalcatcher.h"
#include "testenvironment.h"

#include <QApplication>
#include <QtTest>

#include <memory>

namespace {

// Rows "r0".."r<count-1>" under an "Error\nCode" and a "Reaction\nTime"
// column, so that each output line names its file row.
DataFileBuilder Rows(int count, const QString &prefix = QStringLiteral("r"))
{
    DataFileBuilder builder;
    builder.Experiment("E").Date("D").Titles({"", "Error", "Reaction"}, {"Row", "Code", "Time"});
    for (int row = 0; row < count; ++row)
        builder.Row({prefix + QString::number(row), "C", QString::number(300 + row)});
    return builder;
}

QByteArray PlainLines(const QList<int> &rows, const QString &prefix = QStringLiteral("r"))
{
    QByteArray bytes = "\n{ E }\n{ D }\n\nRow\tError\tReaction\n\tCode\tTime\n";
    for (const int row : rows)
        bytes += (prefix + QString::number(row)).toUtf8() + "\tC\t" + QByteArray::number(300 + row) + "\t\n";
    return bytes;
}

QStringList FirstColumn(MainModel &model)
{
    QStringList cells;
    for (int row = 0; row < model.rowCount(); ++row)
        cells << model.data(model.index(row, 1)).toString();
    return cells;
}

} // namespace

class TestMergedSelection : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void writesFlaggedUnflaggedOrAllRows_data();
    void writesFlaggedUnflaggedOrAllRows();
    void stopsShortByTheHiddenRows_data();
    void stopsShortByTheHiddenRows();
    void readsFlagsByFileRow();
    void combinedRecordKeepsHiddenRowsAndFlags();
    void writesHiddenRowsOfACombinedRecord();
    void flagsAndHidingInACombinedViewStayThere();

private:

    TestFiles files;
    std::unique_ptr<ModalCatcher> catcher;
};

void TestMergedSelection::initTestCase()
{
    catcher = std::make_unique<ModalCatcher>();
}

void TestMergedSelection::writesFlaggedUnflaggedOrAllRows_data()
{
    QTest::addColumn<int>("rowsToMerge");
    QTest::addColumn<bool>("transpose");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("flagged only") << 0 << false << PlainLines({1, 3});
    QTest::newRow("unflagged only") << 1 << false << PlainLines({0, 2});
    QTest::newRow("all rows") << 2 << false << PlainLines({0, 1, 2, 3});
    QTest::newRow("flagged only, transposed")
        << 0 << true << QByteArray("Row\tr1\tr3\t\nError Code\tC\tC\t\nReaction Time\t301\t303\t");
}

void TestMergedSelection::writesFlaggedUnflaggedOrAllRows()
{
    QFETCH(int, rowsToMerge);
    QFETCH(bool, transpose);
    QFETCH(QByteArray, expected);
    const auto file = files.Open(Rows(4));
    file->GetMainModel().SetRowFlag(1, true);
    file->GetMainModel().SetRowFlag(3, true);
    QCOMPARE(files.Merge(*file, rowsToMerge, false, transpose), expected);
}

void TestMergedSelection::stopsShortByTheHiddenRows_data()
{
    QTest::addColumn<QVector<int>>("hide");
    QTest::addColumn<bool>("includeHiddenRows");
    QTest::addColumn<QList<int>>("written");
    // Ten rows, three hidden: rows 0 to 6 are visited, 7 to 9 never go out.
    QTest::newRow("hidden in the middle") << QVector<int>{2, 5, 8} << false << QList<int>{0, 1, 3, 4, 6};
    QTest::newRow("hidden in the middle, included") << QVector<int>{2, 5, 8} << true << QList<int>{0, 1, 2, 3, 4, 5, 6};
    QTest::newRow("hidden at the start") << QVector<int>{0, 1, 2} << false << QList<int>{3, 4, 5, 6};
    QTest::newRow("hidden at the start, included") << QVector<int>{0, 1, 2} << true << QList<int>{0, 1, 2, 3, 4, 5, 6};
    QTest::newRow("hidden at the end") << QVector<int>{7, 8, 9} << false << QList<int>{0, 1, 2, 3, 4, 5, 6};
    QTest::newRow("hidden at the end, included") << QVector<int>{7, 8, 9} << true << QList<int>{0, 1, 2, 3, 4, 5, 6};
}

void TestMergedSelection::stopsShortByTheHiddenRows()
{
    QFETCH(QVector<int>, hide);
    QFETCH(bool, includeHiddenRows);
    QFETCH(QList<int>, written);
    const auto file = files.Open(Rows(10));
    file->GetMainModel().HideRows(hide);
    QCOMPARE(files.Merge(*file, 2, includeHiddenRows, false), PlainLines(written));
}

// The flag of file row r decides, whichever row now shows at r.
void TestMergedSelection::readsFlagsByFileRow()
{
    const auto file = files.Open(Rows(5));
    MainModel &model = file->GetMainModel();
    model.SetRowFlag(4, true);
    model.HideRows({0});
    QCOMPARE(files.Merge(*file, 0, false, false), PlainLines({}));
    model.SetRowFlag(0, true); // file row 1
    QCOMPARE(files.Merge(*file, 0, false, false), PlainLines({1}));
    QCOMPARE(files.Merge(*file, 1, true, false), PlainLines({0, 2, 3}));
}

void TestMergedSelection::combinedRecordKeepsHiddenRowsAndFlags()
{
    const auto first = files.Open(Rows(3, "a"));
    const auto second = files.Open(Rows(3, "b"));
    first->GetMainModel().HideRows({1});
    first->GetMainModel().SetRowFlag(1, true); // file row a2
    second->GetMainModel().HideRows({0, 2});
    second->GetMainModel().SetRowFlag(0, true); // file row b1

    DataFile combined;
    combined.CopyFrom(*first);
    combined.Combine(*second);
    MainModel &model = combined.GetMainModel();
    QCOMPARE(model.TotalRowCount(), 6);
    QCOMPARE(model.HiddenRowCount(), 3);
    QCOMPARE(FirstColumn(model), QStringList({"a0", "a2", "b1"}));
    QCOMPARE(model.Flags(), QVector<bool>({false, true, true}));
    QCOMPARE(model.FlaggedRowCount(), 2);
}

void TestMergedSelection::writesHiddenRowsOfACombinedRecord()
{
    const auto first = files.Open(Rows(3, "a"));
    const auto second = files.Open(Rows(3, "b"));
    first->GetMainModel().HideRows({1});
    second->GetMainModel().HideRows({0});
    DataFile combined;
    combined.CopyFrom(*first);
    combined.Combine(*second);
    // Four rows shown, so full rows 0 to 3 are visited: a0 a1 a2 b0.
    const QByteArray header = "\n{ E & E }\n{ DD  }\n\nRow\tError\tReaction\n\tCode\tTime\n";
    QCOMPARE(files.Merge(combined, 2, false, false), header + "a0\tC\t300\t\na2\tC\t302\t\n");
    QCOMPARE(files.Merge(combined, 2, true, false),
             header + "a0\tC\t300\t\na1\tC\t301\t\na2\tC\t302\t\nb0\tC\t300\t\n");
}

void TestMergedSelection::flagsAndHidingInACombinedViewStayThere()
{
    const auto first = files.Open(Rows(3, "a"));
    const auto second = files.Open(Rows(2, "b"));
    auto combined = std::make_unique<DataFile>();
    combined->CopyFrom(*first);
    combined->Combine(*second);
    combined->GetMainModel().SetRowFlag(0, true);
    combined->GetMainModel().SetRowFlag(4, true);
    combined->GetMainModel().HideRows({1, 3});
    combined.reset();

    for (DataFile *source : {first.get(), second.get()}) {
        MainModel &model = source->GetMainModel();
        QCOMPARE(model.HiddenRowCount(), 0);
        QCOMPARE(model.FlaggedRowCount(), 0);
        QCOMPARE(model.rowCount(), model.TotalRowCount());
    }
    QCOMPARE(FirstColumn(first->GetMainModel()), QStringList({"a0", "a1", "a2"}));
    QCOMPARE(FirstColumn(second->GetMainModel()), QStringList({"b0", "b1"}));
}

ZEPHLANE_TEST_MAIN(TestMergedSelection)
#include "tst_mergedselection.moc"
