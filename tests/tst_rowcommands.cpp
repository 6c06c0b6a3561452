// SPDX-License-Identifier: GPL-3.0-or-later
// The row commands of the main window, the line of flagged and hidden
// counts, and which actions are on, as a user meets them.

#include "testfiles.h"
#include "windowdriver.h"

class TestRowCommands : public QObject
{
    Q_OBJECT

    std::unique_ptr<WindowDriver> driver;

    void Press(int row, int column, Qt::MouseButton button = Qt::LeftButton) { WindowDriver::ClickCell(driver->Raw(), row, column, button); }
    // Clicks a cell of the first row and shift-clicks one of the last, so that
    // two cells of each row are selected: a row toggled once per cell would
    // come back to where it was.
    void SelectRows(int first, int last)
    {
        Press(first, 2);
        WindowDriver::ClickCell(driver->Raw(), last, 3, Qt::LeftButton, Qt::ShiftModifier);
    }
    // The reaction times on screen, the rows that show the flag icon, then
    // the line of counts.
    QString Rows() const
    {
        return driver->Column(12).join(' ') + " | " + TableContents::FlaggedRows(*driver->Raw()->model())
               + driver->Find<QLabel>("flaggedRows")->text() + "|" + driver->Find<QLabel>("hiddenRows")->text();
    }
    // The general summary, then the per block table.
    QString Statistics() const { return driver->Summary() + ", " + TableContents::Rows(*driver->Sections()->model()).join(", "); }

private slots:
    void init() { driver = std::make_unique<WindowDriver>(); }
    void cleanup() { driver.reset(); }

    // A press flags only in column 0, with either button; Flag Selection
    // turns each selected row once, so mixed flags are inverted, not all set.
    // With nothing selected nothing changes, and the view does not move. A
    // flagged row out of sight does not count.
    void flagsAndHiddenRowsReadOnTheBottomLine()
    {
        driver->Open(WindowDriver::ThreeTimes());
        QStringList seen{Rows()};
        Press(1, 0);
        Press(0, 0, Qt::RightButton);
        Press(2, 5);
        seen << Rows();
        SelectRows(1, 2);
        driver->Trigger("actionFlag_Selection");
        seen << Rows();
        SelectRows(1, 1);
        driver->Trigger("actionHide_Selected_Rows");
        seen << Rows();
        driver->Trigger("actionHide_Flagged_Rows");
        seen << Rows();
        QCOMPARE(seen, QStringList({"300 100 200 | |", "300 100 200 | 0 1 (2 flagged|)", "300 100 200 | 0 2 (2 flagged|)",
                                    "300 200 | 0 1 (2 flagged, |1 hidden)", " |  (|3 hidden)"}));

        driver->Open(WindowDriver::Stroop("S", 60));
        SelectRows(0, 2);
        driver->Raw()->clearSelection();
        driver->Raw()->scrollToBottom();
        const int scrolled = driver->Raw()->verticalScrollBar()->value();
        driver->Trigger("actionFlag_Selection");
        QCOMPARE(QString::number(driver->Raw()->verticalScrollBar()->value() - scrolled) + Rows().section(" | ", 1), "0|");
    }

    void hidingRowsAndShowingAll_data()
    {
        QTest::addColumn<QString>("action");
        QTest::addColumn<QString>("shown");
        // Hiding selected rows takes them out of the statistics: the "SC" row
        // leaves "All Responses:" but not "Correct Responses:".
        QTest::newRow("selected") << "actionHide_Selected_Rows" << "300 600 | 2||450.00 msec, 3|150.00%|466.67 msec, 0|0.00%|0.00 msec, "
                                                                   "0|0.00%|0.00 msec, B1: 2 0 0 -0.99, B2: 1 0 0 0";
        // Hiding by flag leaves every statistic.
        QTest::newRow("flagged") << "actionHide_Flagged_Rows" << "300 600 | 4||450.00 msec, 3|75.00%|466.67 msec, 1|25.00%|400.00 msec, "
                                                                 "0|0.00%|0.00 msec, B1: 2 0 0 0, B2: 1 1 0 0";
        QTest::newRow("unflagged") << "actionHide_Unflagged_Rows" << "500 400 | 4||450.00 msec, 3|75.00%|466.67 msec, 1|25.00%|400.00 msec, "
                                                                     "0|0.00%|0.00 msec, B1: 2 0 0 0, B2: 1 1 0 0";
    }

    // Rows 1 and 2 of two blocks, the second self-corrected, are flagged and
    // selected; Show All Rows brings back the rows and the statistics.
    void hidingRowsAndShowingAll()
    {
        QFETCH(QString, action);
        driver->Open(WindowDriver::Trials("B1 T1 C 300, B1 T2 SC 500, B2 T1 E 400, B2 T2 C 600"));
        const QString statistics = Statistics();
        Press(1, 0);
        Press(2, 0);
        SelectRows(1, 2);
        driver->Trigger(action);
        QTEST(driver->Column(12).join(' ') + " | " + Statistics(), "shown");
        driver->Trigger("actionShow_All_Rows");
        QCOMPARE(driver->Column(12).join(' ') + " | " + Statistics(), "300 500 400 600 | " + statistics);
    }

    // On a sorted table rows are chosen by their place on screen and taken at
    // the same place of the unsorted table: the file's first row, flagged,
    // shows last, yet Select Flagged Rows selects the first row shown, and
    // hiding the first row shown hides the file's first row.
    void sortedTableSelectsAndHidesByPlace()
    {
        driver->Open(WindowDriver::ThreeTimes());
        Press(0, 0);
        WindowDriver::ClickHeader(driver->Raw(), 12);
        WindowDriver::ClickHeader(driver->Raw(), 12);
        Press(1, 0);
        QString selected = Rows();
        const QItemSelectionModel *selection = driver->Raw()->selectionModel();
        for (const char *action : {"actionSelect_Flagged_Rows", "actionSelect_Unflagged_Rows"}) {
            driver->Trigger(action);
            selected += ' ';
            for (int row = 0; row < 3; ++row)
                selected += selection->isRowSelected(row, {}) ? '1' : '0';
        }
        SelectRows(0, 0);
        driver->Trigger("actionHide_Selected_Rows");
        QCOMPARE(selected + " | " + Rows() + " | " + driver->Summary().section(',', 0, 0),
                 "100 200 300 | 1 2 (2 flagged|) 101 010 | 100 200 | 1 (1 flagged, |1 hidden) | 2||150.00 msec");
    }

    void hidingSelectedRowsLeavesTheSelectionAsTheModelDoes_data()
    {
        QTest::addColumn<int>("headerClicks");
        QTest::addColumn<QVector<int>>("selected");
        QTest::addColumn<QPoint>("current");
        // Header clicks on the reaction time: none, two (ascending) or three
        // (descending). Rows are places on screen; `current` is (column, row).
        QTest::newRow("file order") << 0 << QVector<int>{1, 2, 5} << QPoint(4, 3);
        QTest::newRow("file order, current row goes") << 0 << QVector<int>{1, 2, 5} << QPoint(2, 5);
        QTest::newRow("ascending") << 2 << QVector<int>{0, 3, 6} << QPoint(4, 1);
        QTest::newRow("descending, current row goes") << 3 << QVector<int>{1, 2} << QPoint(3, 7);
        QTest::newRow("descending, all rows") << 3 << QVector<int>{0, 1, 2, 3, 4, 5, 6, 7} << QPoint(1, 7);
        QTest::newRow("descending, the row that goes is the row selected") << 3 << QVector<int>{4} << QPoint(2, 2);
    }

    // When every selected row goes the window clears the selection before
    // hiding; what stays selected and current is what the model's own
    // handling of the change leaves in a view that hides the same rows.
    void hidingSelectedRowsLeavesTheSelectionAsTheModelDoes()
    {
        QFETCH(int, headerClicks);
        QFETCH(QVector<int>, selected);
        QFETCH(QPoint, current);
        const DataFileBuilder builder =
            WindowDriver::Trials("B1 T1 C 500, B1 T2 E 100, B1 T3 C 700, B2 T1 C 300, B2 T2 SC 400, B2 T3 C 200, "
                                 "B3 T1 NR 800, B3 T2 C 600");
        driver->Open(builder);
        TestFiles files;
        const auto reference = files.Open(builder);
        QTableView view;
        view.setModel(&reference->GetMainProxy());
        for (int click = 0; click < headerClicks; ++click)
            WindowDriver::ClickHeader(driver->Raw(), 12);
        if (headerClicks > 1)
            reference->GetMainProxy().sort(12, headerClicks == 2 ? Qt::AscendingOrder : Qt::DescendingOrder);
        QStringList states;
        for (QTableView *table : {driver->Raw(), &view}) {
            QItemSelectionModel *selection = table->selectionModel();
            selection->clear();
            for (const int row : selected)
                selection->select(QItemSelection(table->model()->index(row, 1), table->model()->index(row, 13)),
                                  QItemSelectionModel::Select);
            selection->setCurrentIndex(table->model()->index(current.y(), current.x()), QItemSelectionModel::NoUpdate);
        }
        driver->Trigger("actionHide_Selected_Rows");
        reference->HideSelectedRows(selected);
        for (QTableView *table : {driver->Raw(), &view}) {
            QString state = TableContents::Column(*table->model(), 12).join(' ') + " |";
            for (const QItemSelectionRange &range : table->selectionModel()->selection())
                state += QString(" %1,%2-%3,%4").arg(range.top()).arg(range.left()).arg(range.bottom()).arg(range.right());
            const QModelIndex now = table->selectionModel()->currentIndex();
            states << state + QString(" | %1,%2 %3").arg(now.row()).arg(now.column()).arg(now.data().toString());
        }
        QCOMPARE(states[0], states[1]);
    }

    // The first file, added on the summary tab, finds the row actions off. A
    // press over a cell turns Flag Selection on, a press below the rows off;
    // back on the raw tab a selection brings it back. Select All serves the
    // summary tab too. A file that takes the focus has no row under the
    // pointer yet.
    void actionsFollowTheFileAndTheTab()
    {
        driver->ShowTab(1);
        driver->Open(WindowDriver::Stroop("S", 3));
        QStringList seen{driver->ActionStates()};
        driver->ShowTab(0);
        Press(0, 2);
        seen << driver->ActionStates();
        QTest::mouseClick(driver->Raw()->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(5, driver->Raw()->viewport()->height() - 3));
        seen << driver->ActionStates();
        Press(0, 2);
        driver->ShowTab(1);
        seen << driver->ActionStates();
        driver->Trigger("actionSelect_All_Rows");
        seen << QString::number(driver->Sections()->selectionModel()->selectedIndexes().size());
        driver->ShowTab(0);
        seen << driver->ActionStates();
        driver->Trigger("actionSelect_All_Rows");
        seen << QString::number(driver->Raw()->selectionModel()->selectedRows().size());
        driver->Open(WindowDriver::Stroop("S", 2));
        seen << driver->ActionStates();
        driver->ClickRows({0, 1});
        driver->Trigger("actionRemove_Selected_Files");
        seen << driver->ActionStates();
        QCOMPARE(seen, QStringList({"11111 0000000000 0 11", "11111 1111111111 1 11", "11111 1111111111 0 11", "11111 0000000000 0 11", "4",
                                    "11111 1111111111 1 11", "3", "11111 1111111111 0 11", "00000 0000000000 0 11"}));
    }
};

ZEPHLANE_TEST_MAIN(TestRowCommands)
#include "tst_rowcommands.moc"
