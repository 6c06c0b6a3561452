// Flags, flag rules, hiding and restoring rows in the raw table, as the
// signals and an attached view see them.

#include "datafile.h"
#include "datafilebuilder.h"
#include "tablecontents.h"
#include "testfiles.h"
#include "testenvironment.h"

#include <QApplication>
#include <QTableView>
#include <QtTest>

#include <cmath>
#include <memory>

namespace {

QList<int> FlaggedRows(MainModel &model)
{
    QList<int> rows;
    for (int row = 0; row < model.rowCount(); ++row)
        if (model.data(model.index(row, 0), Qt::DecorationRole).isValid())
            rows << row;
    return rows;
}

// A file whose reaction times are `times`, all coded "C" unless given.
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
        connect(model, &MainModel::MatchesCounted, this, [this](int n) { log << QString("MatchesCounted %1").arg(n); });
        connect(model, &MainModel::rowsRemoved, this,
                [this](const QModelIndex &, int first, int last) { log << QString("rowsRemoved %1 %2").arg(first).arg(last); });
        connect(model, &MainModel::rowsInserted, this,
                [this](const QModelIndex &, int first, int last) { log << QString("rowsInserted %1 %2").arg(first).arg(last); });
        connect(model, &MainModel::dataChanged, this, [this](const QModelIndex &from, const QModelIndex &to) {
            log << QString("dataChanged %1,%2 %3,%4").arg(from.row()).arg(from.column()).arg(to.row()).arg(to.column());
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
    void hidesFromTheBottomUpAndRestoresInPlace();
    void hidingManyRowsLooksAsRowByRow_data();
    void hidingManyRowsLooksAsRowByRow();
    void restoringNothingSendsNothing();
    void changeFlagTogglesAndRepaintsTheRow();
    void paintsRowsByVisibleNumberAfterHiding();
    void flaggedRowColour_data();
    void flaggedRowColour();
    void deviationRuleDivisions_data();
    void deviationRuleDivisions();
    void countOnlyLeavesFlagsAlone();
    void applyingWritesEachRowBeforeTheCount();
    void unflaggingCountsRowsWithoutFlags();
    void errorCodeRuleArgumentOrder_data();
    void errorCodeRuleArgumentOrder();
    void timeRulesReadWholeNumbers_data();
    void timeRulesReadWholeNumbers();
    void rulesWithoutTheirColumnMatchNothing();
    void averageOfNoRowsIsNotANumber();

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
    QCOMPARE(model.FlaggedRowCount(), 2);
    // A flagged row out of sight no longer counts.
    model.HideRows({0});
    QCOMPARE(model.FlaggedRowCount(), 1);
    model.SetRowFlag(2, true);
    model.RestoreRows();
    QCOMPARE(TableContents::Column(model, 12), QStringList({"10", "11", "12", "13", "14", "15"}));
    QCOMPARE(FlaggedRows(model), QList<int>({1, 4, 5}));
    QCOMPARE(model.FlaggedRowCount(), 3);
    QCOMPARE(model.HiddenRowCount(), 0);
}

void TestRowFlags::hidesFromTheBottomUpAndRestoresInPlace()
{
    const auto file = files.Open(Rows({"10", "11", "12", "13", "14", "15", "16"}));
    MainModel &model = file->GetMainModel();
    MainProxy &proxy = file->GetMainProxy();
    QTableView view;
    view.setModel(&proxy);
    view.show();
    SignalLog signalLog(&model);
    model.HideRows({2, 5, 3});
    QCOMPARE(signalLog.log, QStringList({"rowsRemoved 5 5", "rowsRemoved 3 3", "rowsRemoved 2 2", "RowChanged 1"}));
    QCOMPARE(model.HiddenRowCount(), 3);
    QCOMPARE(TableContents::Column(proxy, 12), QStringList({"10", "11", "14", "16"}));
    QCOMPARE(view.model()->rowCount(), 4);

    signalLog.log.clear();
    model.RestoreRows();
    QCOMPARE(signalLog.log, QStringList({"rowsInserted 4 6", "dataChanged 0,0 6,16", "RowChanged 1"}));
    // Announced as added at the end, the rows are back in their own places.
    QCOMPARE(TableContents::Column(model, 12), QStringList({"10", "11", "12", "13", "14", "15", "16"}));
    QCOMPARE(proxy.rowCount(), 7);
    QCOMPARE(proxy.headerData(6, Qt::Vertical, Qt::DisplayRole), QVariant(7));
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
    for (int column = 0; column < 17; ++column)
        QCOMPARE(TableContents::Column(batch->GetMainProxy(), column), TableContents::Column(single->GetMainProxy(), column));
    auto selected = [](QTableView &view) {
        QList<int> rows;
        for (const QModelIndex &index : view.selectionModel()->selectedRows())
            rows << index.row();
        std::sort(rows.begin(), rows.end());
        return rows;
    };
    QCOMPARE(selected(singleView).size(), 2);
    QCOMPARE(selected(batchView), selected(singleView));
    QCOMPARE(batchView.currentIndex().row(), singleView.currentIndex().row());
    QCOMPARE(batchView.currentIndex().column(), 3);
    QCOMPARE(batchView.model()->rowCount(), 8);
}

void TestRowFlags::restoringNothingSendsNothing()
{
    const auto file = files.Open(Rows({"10", "11"}));
    SignalLog signalLog(&file->GetMainModel());
    file->GetMainModel().RestoreRows();
    QVERIFY(signalLog.log.isEmpty());
}

void TestRowFlags::changeFlagTogglesAndRepaintsTheRow()
{
    const auto file = files.Open(Rows({"10", "11"}));
    MainModel &model = file->GetMainModel();
    SignalLog signalLog(&model);
    model.ChangeFlag(model.index(1, 0));
    model.ChangeFlag(model.index(1, 3));
    QCOMPARE(signalLog.log, QStringList({"RowChanged 0", "dataChanged 1,0 1,16", "RowChanged 0", "dataChanged 1,3 1,16"}));
    QCOMPARE(FlaggedRows(model), QList<int>());
    model.ChangeFlag(model.index(0, 5));
    QCOMPARE(FlaggedRows(model), QList<int>({0}));
}

void TestRowFlags::paintsRowsByVisibleNumberAfterHiding()
{
    const auto file = files.Open(Rows({"10", "11", "12"}, {"E", "C", "NR"}));
    MainModel &model = file->GetMainModel();
    model.SetRowColors({Qt::green, Qt::red, Qt::gray, Qt::black, QColor()});
    model.HideRows({0});
    // Row 0 now shows file row 1 ("C") but is painted by file row 0 ("E").
    QCOMPARE(model.data(model.index(0, 11)).toString(), QString("C"));
    QCOMPARE(model.data(model.index(0, 11), Qt::BackgroundRole).value<QColor>(), QColor(Qt::red));
    QCOMPARE(model.data(model.index(1, 11), Qt::BackgroundRole).value<QColor>(), QColor(Qt::green));
}

void TestRowFlags::flaggedRowColour_data()
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

void TestRowFlags::flaggedRowColour()
{
    QFETCH(QColor, codeColor);
    QFETCH(QColor, flaggedColor);
    QFETCH(bool, override);
    QFETCH(QColor, background);
    const auto file = files.Open(Rows({"10"}, {"E"}));
    MainModel &model = file->GetMainModel();
    model.SetRowColors({QColor(), codeColor, QColor(), QColor(), flaggedColor});
    model.ChangeColorOption(false, override);
    model.SetRowFlag(0, true);
    QCOMPARE(model.data(model.index(0, 11), Qt::BackgroundRole).value<QColor>(), background);
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
    QTest::newRow("far left") << 1 << 1 << QStringList{"99.99", "x"};
    QTest::newRow("left holds the lower bound") << 2 << 1 << QStringList{"100", "150"};
    QTest::newRow("right holds the average") << 4 << 1 << QStringList{"200", "250"};
    QTest::newRow("far right holds the upper bound") << 8 << 1 << QStringList{"300", "300.01"};
    QTest::newRow("all") << 15 << 3 << QStringList{"100", "300", "200", "150", "250", "99.99", "300.01", "x"};
    QTest::newRow("none") << 0 << 1 << QStringList{};
    QTest::newRow("no deviations: inner divisions empty") << 6 << 0 << QStringList{};
    QTest::newRow("no deviations: outer divisions") << 9 << 0
                                                    << QStringList{"100", "300", "200", "150", "250", "99.99", "300.01", "x"};
}

void TestRowFlags::deviationRuleDivisions()
{
    QFETCH(int, divisions);
    QFETCH(int, SDs);
    QFETCH(QStringList, matched);
    const auto file = files.Open(Rows({"100", "300", "200", "150", "250", "99.99", "300.01", "x"}));
    MainModel &model = file->GetMainModel();
    model.HideRows({2, 3, 4, 5, 6, 7});
    QCOMPARE(model.CalculateStandardDeviation(), 100.0);
    model.RestoreRows();
    QSignalSpy counted(&model, &MainModel::MatchesCounted);
    model.SetFlaggingOptions(0, 0);
    model.SetFlagsSD(divisions & 1, divisions & 2, divisions & 4, divisions & 8, SDs);
    QStringList flagged;
    for (const int row : FlaggedRows(model))
        flagged << model.data(model.index(row, 12)).toString();
    QCOMPARE(flagged, matched);
    QCOMPARE(counted.takeFirst().first().toInt(), matched.size());
}

void TestRowFlags::countOnlyLeavesFlagsAlone()
{
    const auto file = files.Open(Rows({"10", "20", "30"}, {"C", "E", "C"}));
    MainModel &model = file->GetMainModel();
    SignalLog signalLog(&model);
    model.SetFlaggingOptions(1, 0);
    model.SetFlagsEC(true, false, false, false);
    QCOMPARE(signalLog.log, QStringList({"MatchesCounted 2"}));
    QCOMPARE(model.FlaggedRowCount(), 0);
    // Values outside the two tables leave the options as they were.
    model.SetFlaggingOptions(7, 9);
    model.SetFlagsEC(true, false, false, false);
    QCOMPARE(model.FlaggedRowCount(), 0);
}

void TestRowFlags::applyingWritesEachRowBeforeTheCount()
{
    const auto file = files.Open(Rows({"10", "20", "30"}, {"C", "E", "C"}));
    MainModel &model = file->GetMainModel();
    SignalLog signalLog(&model);
    model.SetFlaggingOptions(0, 0);
    model.SetFlagsEC(true, false, false, false);
    QCOMPARE(signalLog.log, QStringList({"RowChanged 0", "RowChanged 0", "MatchesCounted 2"}));
    QCOMPARE(FlaggedRows(model), QList<int>({0, 2}));
}

void TestRowFlags::unflaggingCountsRowsWithoutFlags()
{
    const auto file = files.Open(Rows({"10", "20", "30"}));
    MainModel &model = file->GetMainModel();
    model.SetRowFlag(1, true);
    QSignalSpy counted(&model, &MainModel::MatchesCounted);
    model.SetFlaggingOptions(0, 1);
    model.SetFlagsTL(true, 100, false, 0);
    QCOMPARE(counted.takeFirst().first().toInt(), 3);
    QCOMPARE(model.FlaggedRowCount(), 0);
}

void TestRowFlags::errorCodeRuleArgumentOrder_data()
{
    QTest::addColumn<int>("choice");
    QTest::addColumn<QList<int>>("rows");
    QTest::newRow("correct") << 0 << QList<int>{0};
    QTest::newRow("incorrect") << 1 << QList<int>{1};
    QTest::newRow("third argument is self-correct") << 2 << QList<int>{3};
    QTest::newRow("fourth argument is no response") << 3 << QList<int>{2};
}

void TestRowFlags::errorCodeRuleArgumentOrder()
{
    QFETCH(int, choice);
    QFETCH(QList<int>, rows);
    const auto file = files.Open(Rows({"1", "2", "3", "4", "5"}, {"C", "E", "NR", "SC", "X"}));
    MainModel &model = file->GetMainModel();
    model.SetFlaggingOptions(0, 0);
    model.SetFlagsEC(choice == 0, choice == 1, choice == 2, choice == 3);
    QCOMPARE(FlaggedRows(model), rows);
}

void TestRowFlags::timeRulesReadWholeNumbers_data()
{
    QTest::addColumn<QString>("rule");
    QTest::addColumn<int>("time1");
    QTest::addColumn<int>("time2");
    QTest::addColumn<QList<int>>("rows");
    // Times: 512.9 (reads 0), 400, 500, empty (0), 600.
    QTest::newRow("at most, decimals read as 0") << "TL<=" << 0 << 0 << QList<int>{0, 3};
    QTest::newRow("at most, bound included") << "TL<=" << 400 << 0 << QList<int>{0, 1, 3};
    QTest::newRow("at least, bound included") << "TL>=" << 0 << 500 << QList<int>{2, 4};
    QTest::newRow("range, bounds included") << "TR" << 400 << 500 << QList<int>{1, 2};
    QTest::newRow("range of one value matches nothing") << "TR" << 500 << 500 << QList<int>{};
    QTest::newRow("reversed range matches nothing") << "TR" << 600 << 0 << QList<int>{};
}

void TestRowFlags::timeRulesReadWholeNumbers()
{
    QFETCH(QString, rule);
    QFETCH(int, time1);
    QFETCH(int, time2);
    QFETCH(QList<int>, rows);
    const auto file = files.Open(Rows({"512.9", "400", "500", "", "600"}));
    MainModel &model = file->GetMainModel();
    QSignalSpy counted(&model, &MainModel::MatchesCounted);
    model.SetFlaggingOptions(0, 0);
    if (rule == "TR")
        model.SetFlagsTR(time1, time2);
    else
        model.SetFlagsTL(rule == "TL<=", time1, rule == "TL>=", time2);
    QCOMPARE(FlaggedRows(model), rows);
    QCOMPARE(counted.count(), 1);
}

void TestRowFlags::rulesWithoutTheirColumnMatchNothing()
{
    const auto file = files.Open(DataFileBuilder().Titles({"Block", "Trial"}, {"Name", "Name"}).Row({"B", "T"}).Row({"B", "U"}));
    MainModel &model = file->GetMainModel();
    QSignalSpy counted(&model, &MainModel::MatchesCounted);
    model.SetFlaggingOptions(0, 0);
    model.CalculateStandardDeviation();
    model.SetFlagsSD(true, true, true, true, 1);
    model.SetFlagsEC(true, true, true, true);
    model.SetFlagsTL(true, 100, true, 0);
    model.SetFlagsTR(0, 100);
    QCOMPARE(counted.count(), 4);
    for (const QList<QVariant> &signal : counted)
        QCOMPARE(signal.first().toInt(), 0);
    QCOMPARE(model.FlaggedRowCount(), 0);
}

void TestRowFlags::averageOfNoRowsIsNotANumber()
{
    const auto file = files.Open(Rows({"10", "30"}));
    MainModel &model = file->GetMainModel();
    QCOMPARE(model.CalculateAverage(), 20.0);
    QCOMPARE(model.CalculateStandardDeviation(), 10.0);
    model.HideRows({0, 1});
    QVERIFY(std::isnan(model.CalculateAverage()));
    QVERIFY(std::isnan(model.CalculateStandardDeviation()));
}

ZEPHLANE_TEST_MAIN(TestRowFlags)
#include "tst_rowflags.moc"
