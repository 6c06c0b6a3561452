// Flags, flag rules, hiding and restoring rows in the raw table, as the
// signals and an attached view see them.

#include "datafile.h"
#include "tablecontents.h"
#include "testenvironment.h"
#include "testfiles.h"

#include <QApplication>
#include <QTableView>
#include <QtTest>

#include <cmath>

namespace {

QList<int> FlaggedRows(const QAbstractItemModel &model)
{
    QList<int> rows;
    for (int row = 0; row < model.rowCount(); ++row)
        if (model.index(row, 0).data(Qt::DecorationRole).isValid())
            rows << row;
    return rows;
}

// A file whose reaction times are `times`, coded "C" unless given.
DataFileBuilder Rows(const QStringList &times, const QStringList &codes = {})
{
    DataFileBuilder builder;
    builder.ProductTitles();
    for (int i = 0; i < times.size(); ++i)
        builder.Trial("B1", "T" + QString::number(i), codes.value(i, "C"), times[i]);
    return builder;
}

// Records the model's signals in the order they came.
class SignalLog : public QObject
{
public:
    explicit SignalLog(MainModel *model)
    {
        connect(model, &MainModel::RowChanged, this, [this](int type) { log << QString("RowChanged %1").arg(type); });
        connect(model, &MainModel::MatchesCounted, this, [this](int n) { log << QString("Matches %1").arg(n); });
        connect(model, &MainModel::rowsRemoved, this,
                [this](const QModelIndex &, int first, int last) { log << QString("removed %1-%2").arg(first).arg(last); });
        connect(model, &MainModel::rowsInserted, this,
                [this](const QModelIndex &, int first, int last) { log << QString("inserted %1-%2").arg(first).arg(last); });
        connect(model, &MainModel::dataChanged, this, [this](const QModelIndex &from, const QModelIndex &to) {
            log << QString("changed %1,%2-%3,%4").arg(from.row()).arg(from.column()).arg(to.row()).arg(to.column());
        });
    }
    QStringList log;
};

} // namespace

class TestRowFlags : public QObject
{
    Q_OBJECT

private slots:
    void flagsFollowFileRowsThroughHideAndRestore();
    void hidingAndRestoringAsAViewSeesThem();
    void hidingManyRowsLooksAsRowByRow_data();
    void hidingManyRowsLooksAsRowByRow();
    void paintsFlaggedAndHiddenRows_data();
    void paintsFlaggedAndHiddenRows();
    void deviationRuleDivisions_data();
    void deviationRuleDivisions();
    void rulesMatchTheirRows_data();
    void rulesMatchTheirRows();
    void rulesCountOrApply();
    void rulesWithoutTheirColumnMatchNothing();

private:
    TestFiles files;
};

void TestRowFlags::flagsFollowFileRowsThroughHideAndRestore()
{
    const auto file = files.Open(Rows({"10", "11", "12", "13", "14", "15"}));
    MainModel &model = file->GetMainModel();
    model.SetRowFlag(1, true);
    model.SetRowFlag(4, true);
    model.HideRows({0, 2});
    QCOMPARE(TableContents::Column(model, 12), QStringList({"11", "13", "14", "15"}));
    QCOMPARE(FlaggedRows(model), QList<int>({0, 2}));
    // A flagged row out of sight no longer counts.
    model.HideRows({0});
    QCOMPARE(model.FlaggedRowCount(), 1);
    model.SetRowFlag(2, true);
    model.RestoreRows();
    QCOMPARE(FlaggedRows(model), QList<int>({1, 4, 5}));
    QCOMPARE(model.FlaggedRowCount(), 3);
    QCOMPARE(model.HiddenRowCount(), 0);
}

void TestRowFlags::hidingAndRestoringAsAViewSeesThem()
{
    const auto file = files.Open(Rows({"10", "11", "12", "13", "14", "15", "16"}));
    MainModel &model = file->GetMainModel();
    QTableView view;
    view.setModel(&file->GetMainProxy());
    SignalLog signalLog(&model);
    model.RestoreRows();
    QVERIFY(signalLog.log.isEmpty());
    model.HideRows({2, 5, 3});
    QCOMPARE(TableContents::Column(*view.model(), 12), QStringList({"10", "11", "14", "16"}));
    model.RestoreRows();
    // Announced as added at the end, the rows are back in their own places.
    QCOMPARE(TableContents::Column(*view.model(), 12), QStringList({"10", "11", "12", "13", "14", "15", "16"}));
    model.ChangeFlag(model.index(1, 3));
    QCOMPARE(signalLog.log, QStringList({"removed 5-5", "removed 3-3", "removed 2-2", "RowChanged 1", "inserted 4-6",
                                         "changed 0,0-6,16", "RowChanged 1", "RowChanged 0", "changed 1,3-1,16"}));
    QCOMPARE(FlaggedRows(*view.model()), QList<int>({1}));
}

void TestRowFlags::hidingManyRowsLooksAsRowByRow_data()
{
    QTest::addColumn<int>("sortColumn");
    QTest::addColumn<int>("order");
    QTest::newRow("unsorted") << -1 << int(Qt::AscendingOrder);
    QTest::newRow("ascending") << 12 << int(Qt::AscendingOrder);
    QTest::newRow("descending") << 12 << int(Qt::DescendingOrder);
}

// A file hides a batch of rows as one change to its proxy; a view must end
// up with the same rows, order and selection as if the proxy had followed
// each removal, also when a restore has left the sorted order mixed.
void TestRowFlags::hidingManyRowsLooksAsRowByRow()
{
    QFETCH(int, sortColumn);
    QFETCH(int, order);
    const QStringList times = {"300", "", "20", "abc", "1000", "5", "", "70", "300", "9", "x", "42"};
    const auto batch = files.Open(Rows(times));
    const auto single = files.Open(Rows(times));
    QTableView batchView;
    QTableView singleView;
    auto state = [](QTableView &view) {
        QStringList rows;
        for (const QModelIndex &index : view.selectionModel()->selectedRows(12))
            rows << index.data().toString();
        rows.sort();
        return TableContents::Column(*view.model(), 12) + rows << QString::number(view.currentIndex().row());
    };
    for (auto pair : {std::make_pair(batch.get(), &batchView), std::make_pair(single.get(), &singleView)}) {
        MainProxy &proxy = pair.first->GetMainProxy();
        pair.second->setModel(&proxy);
        proxy.sort(sortColumn, Qt::SortOrder(order));
        pair.first->GetMainModel().HideRows({1, 4});
        pair.first->GetMainModel().RestoreRows();
        pair.second->setCurrentIndex(proxy.index(9, 3));
        // Two rows that stay, and one that goes.
        for (const int row : {2, 5, 0})
            pair.second->selectionModel()->select(proxy.mapFromSource(proxy.sourceModel()->index(row, 0)),
                                                  QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    batch->HideRows({0, 3, 7, 10});
    single->GetMainModel().HideRows({0, 3, 7, 10});
    QCOMPARE(state(batchView), state(singleView));
    QCOMPARE(batchView.selectionModel()->selectedRows().size(), 2);
}

void TestRowFlags::paintsFlaggedAndHiddenRows_data()
{
    QTest::addColumn<QColor>("codeColor");
    QTest::addColumn<QColor>("flaggedColor");
    QTest::addColumn<bool>("override");
    QTest::addColumn<QColor>("background");
    QTest::newRow("code colour wins") << QColor(Qt::red) << QColor(Qt::blue) << false << QColor(Qt::red);
    QTest::newRow("flagged colour fills in") << QColor() << QColor(Qt::blue) << false << QColor(Qt::blue);
    QTest::newRow("override") << QColor(Qt::red) << QColor(Qt::blue) << true << QColor(Qt::blue);
    QTest::newRow("override without flagged colour") << QColor(Qt::red) << QColor() << true << QColor();
}

// Row 0, flagged, shows file row 1 ("C") once row 0 is hidden, but is
// painted by file row 0 ("E"): colours go by the visible row number.
void TestRowFlags::paintsFlaggedAndHiddenRows()
{
    QFETCH(QColor, codeColor);
    QFETCH(QColor, flaggedColor);
    QFETCH(bool, override);
    const auto file = files.Open(Rows({"10", "11"}, {"E", "C"}));
    MainModel &model = file->GetMainModel();
    model.SetRowColors({Qt::green, codeColor, QColor(), QColor(), flaggedColor});
    model.ChangeColorOption(false, override);
    model.SetRowFlag(1, true);
    model.HideRows({0});
    QCOMPARE(model.data(model.index(0, 11)).toString(), QString("C"));
    QTEST(model.data(model.index(0, 11), Qt::BackgroundRole).value<QColor>(), "background");
    // The text colour looks at the code's colour only.
    model.ChangeRowColor(4, Qt::black);
    QVERIFY(!model.data(model.index(0, 11), Qt::ForegroundRole).isValid());
}

void TestRowFlags::deviationRuleDivisions_data()
{
    QTest::addColumn<int>("divisions");
    QTest::addColumn<int>("SDs");
    QTest::addColumn<QStringList>("matched");
    // Bounds come from the first two rows alone: average 200, deviation 100.
    // "x" does not read as a number and counts as 0.
    const QStringList all{"100", "300", "200", "150", "250", "99.99", "300.01", "x"};
    QTest::newRow("far left") << 1 << 1 << QStringList{"99.99", "x"};
    QTest::newRow("left holds the lower bound") << 2 << 1 << QStringList{"100", "150"};
    QTest::newRow("right holds the average") << 4 << 1 << QStringList{"200", "250"};
    QTest::newRow("far right holds the upper bound") << 8 << 1 << QStringList{"300", "300.01"};
    QTest::newRow("all") << 15 << 3 << all;
    QTest::newRow("none") << 0 << 1 << QStringList{};
    QTest::newRow("no deviations: inner divisions empty") << 6 << 0 << QStringList{};
    QTest::newRow("no deviations: outer divisions") << 9 << 0 << all;
}

void TestRowFlags::deviationRuleDivisions()
{
    QFETCH(int, divisions);
    QFETCH(int, SDs);
    const auto file = files.Open(Rows({"100", "300", "200", "150", "250", "99.99", "300.01", "x"}));
    MainModel &model = file->GetMainModel();
    model.HideRows({2, 3, 4, 5, 6, 7});
    QCOMPARE(model.CalculateStandardDeviation(), 100.0);
    model.RestoreRows();
    model.SetFlaggingOptions(0, 0);
    model.SetFlagsSD(divisions & 1, divisions & 2, divisions & 4, divisions & 8, SDs);
    QStringList flagged;
    for (const int row : FlaggedRows(model))
        flagged << model.data(model.index(row, 12)).toString();
    QTEST(flagged, "matched");
}

void TestRowFlags::rulesMatchTheirRows_data()
{
    QTest::addColumn<QString>("rule");
    QTest::addColumn<QList<int>>("rows");
    // Rows: C 512.9, E 400, NR 500, SC empty, X 600. The time rules read a
    // whole number, so 512.9 and the empty cell read as 0.
    QTest::newRow("correct") << "EC 1 0 0 0" << QList<int>{0};
    QTest::newRow("third argument is self-correct") << "EC 0 0 1 0" << QList<int>{3};
    QTest::newRow("fourth argument is no response") << "EC 0 0 0 1" << QList<int>{2};
    QTest::newRow("at most 0") << "TL 1 0 0 0" << QList<int>{0, 3};
    QTest::newRow("at most, bound included") << "TL 1 400 0 0" << QList<int>{0, 1, 3};
    QTest::newRow("at least, bound included") << "TL 0 0 1 500" << QList<int>{2, 4};
    QTest::newRow("range, bounds included") << "TR 400 500" << QList<int>{1, 2};
    QTest::newRow("range of one value") << "TR 500 500" << QList<int>{};
    QTest::newRow("reversed range") << "TR 600 0" << QList<int>{};
}

void TestRowFlags::rulesMatchTheirRows()
{
    QFETCH(QString, rule);
    const auto file = files.Open(Rows({"512.9", "400", "500", "", "600"}, {"C", "E", "NR", "SC", "X"}));
    MainModel &model = file->GetMainModel();
    model.SetFlaggingOptions(0, 0);
    const QStringList parts = rule.split(' ');
    auto arg = [&](int i) { return parts[i].toInt(); };
    if (parts[0] == "EC")
        model.SetFlagsEC(arg(1), arg(2), arg(3), arg(4));
    else if (parts[0] == "TL")
        model.SetFlagsTL(arg(1), arg(2), arg(3), arg(4));
    else
        model.SetFlagsTR(arg(1), arg(2));
    QTEST(FlaggedRows(model), "rows");
}

// Counting changes nothing; applying writes each matching row, then
// reports the count; unflagging counts rows that had no flag.
void TestRowFlags::rulesCountOrApply()
{
    const auto file = files.Open(Rows({"10", "20", "30"}, {"C", "E", "C"}));
    MainModel &model = file->GetMainModel();
    SignalLog signalLog(&model);
    model.SetFlaggingOptions(1, 0);
    model.SetFlagsEC(true, false, false, false);
    QCOMPARE(model.FlaggedRowCount(), 0);
    model.SetFlaggingOptions(0, 0);
    model.SetFlagsEC(true, false, false, false);
    QCOMPARE(FlaggedRows(model), QList<int>({0, 2}));
    // Values outside the two tables leave the options as they were.
    model.SetFlaggingOptions(7, 1);
    model.SetFlagsTL(true, 100, false, 0);
    QCOMPARE(model.FlaggedRowCount(), 0);
    QCOMPARE(signalLog.log, QStringList({"Matches 2", "RowChanged 0", "RowChanged 0", "Matches 2", "RowChanged 0",
                                         "RowChanged 0", "RowChanged 0", "Matches 3"}));
}

void TestRowFlags::rulesWithoutTheirColumnMatchNothing()
{
    const auto file = files.Open(DataFileBuilder().Titles({"Block", "Trial"}, {"Name", "Name"}).Row({"B", "T"}).Row({"B", "U"}));
    MainModel &model = file->GetMainModel();
    SignalLog signalLog(&model);
    model.SetFlaggingOptions(0, 0);
    model.CalculateStandardDeviation();
    model.SetFlagsSD(true, true, true, true, 1);
    model.SetFlagsEC(true, true, true, true);
    model.SetFlagsTL(true, 100, true, 0);
    model.SetFlagsTR(0, 100);
    QCOMPARE(signalLog.log, QStringList({"Matches 0", "Matches 0", "Matches 0", "Matches 0"}));

    const auto times = files.Open(Rows({"10", "30"}));
    MainModel &timed = times->GetMainModel();
    QCOMPARE(timed.CalculateStandardDeviation(), 10.0);
    timed.HideRows({0, 1});
    QVERIFY(std::isnan(timed.CalculateAverage()));
    QVERIFY(std::isnan(timed.CalculateStandardDeviation()));
}

ZEPHLANE_TEST_MAIN(TestRowFlags)
#include "tst_rowflags.moc"
