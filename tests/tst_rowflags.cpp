// SPDX-License-Identifier: GPL-3.0-or-later
// Flags, flag rules, hiding and restoring rows in the raw table, as the
// signals and an attached view see them.

#include "tablecontents.h"
#include "testenvironment.h"
#include "testfiles.h"

#include <QtTest>
#include <QTableView>

#include <cmath>

using TableContents::FlaggedRows;

// Records the model's signals in the order they came.
class SignalLog : public QObject
{
public:
    explicit SignalLog(MainModel &model)
    {
        connect(&model, &MainModel::RowChanged, this, [this](int type) { log << QString("RowChanged %1").arg(type); });
        connect(&model, &MainModel::MatchesCounted, this, [this](int n) { log << QString("Matches %1").arg(n); });
        connect(&model, &MainModel::rowsRemoved, this, [this](const QModelIndex &, int row) { log << QString("removed %1").arg(row); });
        connect(&model, &MainModel::rowsInserted, this,
                [this](const QModelIndex &, int first, int last) { log << QString("inserted %1-%2").arg(first).arg(last); });
        connect(&model, &MainModel::dataChanged, this, [this](const QModelIndex &from, const QModelIndex &to) {
            log << QString("changed %1,%2-%3,%4").arg(from.row()).arg(from.column()).arg(to.row()).arg(to.column());
        });
    }
    QStringList log;
};

class TestRowFlags : public QObject
{
    Q_OBJECT

    TestFiles files;

    // A file of `rows` given as "code,time".
    std::unique_ptr<DataFile> Open(const QString &rows)
    {
        return files.Open(DataFileBuilder().Columns("Error/Code,Reaction/Time").Rows(rows.split(' ')));
    }

private slots:
    // Flags belong to file rows through hiding and restoring; a flagged row
    // out of sight does not count. Restored rows are announced as added at
    // the end, yet come back in their own places.
    void flagsFollowFileRowsThroughHideAndRestore()
    {
        const auto file = Open("C,10 C,11 C,12 C,13 C,14 C,15 C,16");
        MainModel &model = file->GetMainModel();
        QTableView view;
        view.setModel(&file->GetMainProxy());
        SignalLog signalLog(model);
        model.RestoreRows();
        model.SetRowFlag(1, true);
        model.SetRowFlag(4, true);
        QStringList seen;
        auto look = [&] {
            seen << TableContents::Column(*view.model(), 2).join(' ') + " | " + FlaggedRows(*view.model())
                        + QString(" | %1 flagged %2 hidden").arg(model.FlaggedRowCount()).arg(model.HiddenRowCount());
        };
        model.HideRows({2, 5, 0});
        look();
        model.HideRows({0});
        look();
        model.ChangeFlag(model.index(0, 1));
        model.RestoreRows();
        look();
        QCOMPARE(seen, QStringList({"11 13 14 16 | 0 2 | 2 flagged 3 hidden", "13 14 16 | 1 | 1 flagged 4 hidden",
                                    "10 11 12 13 14 15 16 | 1 3 4 | 3 flagged 0 hidden"}));
        QCOMPARE(signalLog.log, QStringList({"RowChanged 0", "RowChanged 0", "removed 5", "removed 2", "removed 0", "RowChanged 1",
                                             "removed 0", "RowChanged 1", "RowChanged 0", "changed 0,1-0,2", "inserted 3-6",
                                             "changed 0,0-6,2", "RowChanged 1"}));
    }

    // A file hides a batch of rows as one change to its proxy; a view must end
    // up with the same rows, order, selection and current row as if the proxy
    // had followed each removal, unsorted and sorted both ways, also when a
    // restore has left the sorted order mixed.
    void hidingManyRowsLooksAsRowByRow()
    {
        const QString rows = "C,300 C, C,20 C,abc C,1000 C,5 C, C,70 C,300 C,9 C,x C,42";
        for (const auto &[column, order] : {std::pair(-1, Qt::AscendingOrder), {2, Qt::AscendingOrder}, {2, Qt::DescendingOrder}}) {
            const auto batch = Open(rows);
            const auto single = Open(rows);
            QTableView views[2];
            QStringList states;
            for (const bool inOne : {true, false}) {
                DataFile &file = inOne ? *batch : *single;
                QTableView &view = views[inOne];
                MainProxy &proxy = file.GetMainProxy();
                view.setModel(&proxy);
                proxy.sort(column, order);
                file.GetMainModel().HideRows({1, 4});
                file.GetMainModel().RestoreRows();
                view.setCurrentIndex(proxy.index(9, 1));
                // Two rows that stay, and one that goes.
                for (const int row : {2, 5, 0})
                    view.selectionModel()->select(proxy.mapFromSource(proxy.sourceModel()->index(row, 0)),
                                                  QItemSelectionModel::Select | QItemSelectionModel::Rows);
                inOne ? file.HideRows({0, 3, 7, 10}) : file.GetMainModel().HideRows({0, 3, 7, 10});
                QStringList selected;
                for (const QModelIndex &index : view.selectionModel()->selectedRows(2))
                    selected << index.data().toString();
                selected.sort();
                states << TableContents::Column(proxy, 2).join(' ') + " | " + selected.join(' ')
                              + QString(" | %1 of %2").arg(view.currentIndex().row()).arg(selected.size());
            }
            QCOMPARE(states[0], states[1]);
            QVERIFY(states[0].endsWith("of 2"));
        }
    }

    void rulesMatchTheirRows_data()
    {
        QTest::addColumn<QString>("rule");
        QTest::addColumn<QString>("rows");
        // The boundaries the flag dialog's table leaves out. Deviation
        // divisions 1, 2, 4, 8 and the count of deviations; bounds from rows 0
        // and 1 alone, average 200 and deviation 100. Each division holds its
        // lower bound; "x" and the empty cell count as 0.
        QTest::newRow("far left stops short of the lower bound") << "SD 1 1" << "5 7 9";
        QTest::newRow("left holds the lower bound") << "SD 2 1" << "0 3";
        QTest::newRow("right holds the average") << "SD 4 1" << "2 4";
        QTest::newRow("far right holds the upper bound") << "SD 8 1" << "1 6 8";
        QTest::newRow("no deviations: inner divisions empty") << "SD 6 0" << "";
        // The third argument is "SC" and the fourth "NR".
        QTest::newRow("third argument is self-correct") << "EC 0 0 1 0" << "3 9";
        QTest::newRow("fourth argument is no response") << "EC 0 0 0 1" << "2 7";
        // The time rules read a whole number, so "99.99" and "512.9" read as 0.
        QTest::newRow("at most 0") << "TL 1 0 0 0" << "5 6 7 8 9";
        QTest::newRow("range of one value") << "TR 200 200" << "";
        QTest::newRow("reversed range") << "TR 600 0" << "";
    }
    void rulesMatchTheirRows()
    {
        QFETCH(QString, rule);
        const auto file = Open("C,100 E,300 NR,200 SC,150 X,250 C,99.99 E,300.01 NR,x C,512.9 SC,");
        MainModel &model = file->GetMainModel();
        model.HideRows({2, 3, 4, 5, 6, 7, 8, 9});
        QCOMPARE(model.CalculateStandardDeviation(), 100.0);
        model.RestoreRows();
        model.SetFlaggingOptions(0, 0);
        const QStringList parts = rule.split(' ');
        auto arg = [&](int i) { return parts[i].toInt(); };
        if (parts[0] == "SD")
            model.SetFlagsSD(arg(1) & 1, arg(1) & 2, arg(1) & 4, arg(1) & 8, arg(2));
        else if (parts[0] == "EC")
            model.SetFlagsEC(arg(1), arg(2), arg(3), arg(4));
        else if (parts[0] == "TL")
            model.SetFlagsTL(arg(1), arg(2), arg(3), arg(4));
        else
            model.SetFlagsTR(arg(1), arg(2));
        QTEST(FlaggedRows(model), "rows");
    }

    // Counting changes nothing; applying writes each matching row, then
    // reports the count, also of rows flagged already. Values outside the
    // two tables leave the options as they were. With no row in
    // sight there is no average; a rule whose column is missing matches
    // nothing.
    void rulesCountOrApply()
    {
        const auto file = Open("C,10 E,20 C,30");
        MainModel &model = file->GetMainModel();
        SignalLog signalLog(model);
        model.SetFlaggingOptions(1, 0);
        model.SetFlagsEC(true, false, false, false);
        model.SetFlaggingOptions(0, 0);
        model.SetFlagsEC(true, false, false, false);
        signalLog.log << FlaggedRows(model);
        model.SetFlaggingOptions(7, 7);
        model.SetFlagsTL(true, 100, false, 0);
        QCOMPARE(signalLog.log, QStringList({"Matches 2", "RowChanged 0", "RowChanged 0", "Matches 2", "0 2", "RowChanged 0",
                                             "RowChanged 0", "RowChanged 0", "Matches 3"}));
        QCOMPARE(model.FlaggedRowCount(), 3);
        model.HideRows({0, 1, 2});
        QVERIFY(std::isnan(model.CalculateAverage()) && std::isnan(model.CalculateStandardDeviation()));

        const auto untimed = files.Open(DataFileBuilder().Columns("Block/Name,Trial/Name").Rows({"B,T", "B,U"}));
        MainModel &other = untimed->GetMainModel();
        SignalLog matches(other);
        other.CalculateStandardDeviation();
        other.SetFlagsSD(true, true, true, true, 1);
        other.SetFlagsEC(true, true, true, true);
        other.SetFlagsTL(true, 100, true, 0);
        other.SetFlagsTR(0, 100);
        QCOMPARE(matches.log.join(' '), "Matches 0 Matches 0 Matches 0 Matches 0");
    }
};

ZEPHLANE_TEST_MAIN(TestRowFlags)
#include "tst_rowflags.moc"
