// The row commands of the main window, the line of flagged and hidden
// counts, and which actions are on, as a user meets them.

#include "windowdriver.h"

#include <QLabel>
#include <QScrollBar>

class TestRowCommands : public QObject
{
    Q_OBJECT

    std::unique_ptr<WindowDriver> driver;

    // Two blocks of two trials; the second is self-corrected.
    static DataFileBuilder TwoBlocks()
    {
        return WindowDriver::Trials("B1 T1 C 300, B1 T2 SC 500, B2 T1 E 400, B2 T2 C 600");
    }
    void Press(int row, int column, Qt::MouseButton button = Qt::LeftButton)
    {
        WindowDriver::ClickCell(driver->Raw(), row, column, button);
    }
    // Clicks a cell of the first row and shift-clicks one of the last, so that
    // two cells of each row are selected: a row toggled once per cell would
    // come back to where it was.
    void SelectRows(int first, int last)
    {
        WindowDriver::ClickCell(driver->Raw(), first, 2);
        WindowDriver::ClickCell(driver->Raw(), last, 3, Qt::LeftButton, Qt::ShiftModifier);
    }
    // The rows on screen that show the flag icon, then the line of counts.
    QString Flags() const
    {
        const QAbstractItemModel *model = driver->Raw()->model();
        QStringList rows;
        for (int row = 0; row < model->rowCount(); ++row) {
            if (model->index(row, 0).data(Qt::DecorationRole).isValid())
                rows.append(QString::number(row));
        }
        return rows.join(' ') + driver->Find<QLabel>("flaggedRows")->text() + "|" +
               driver->Find<QLabel>("hiddenRows")->text();
    }
    // The general summary, then the per block table.
    QString Statistics() const
    {
        return driver->Summary() + ", " + TableContents::Rows(*driver->Sections()->model()).join(", ");
    }

private slots:
    void init() { driver = std::make_unique<WindowDriver>(); }
    void cleanup() { driver.reset(); }

    // A press flags only in column 0, with either button; Flag Selection turns
    // each selected row once, so mixed flags are inverted, not all set.
    void flagsAndHiddenRowsReadOnTheBottomLine()
    {
        driver->Open(WindowDriver::Stroop("S", 60));
        QCOMPARE(Flags(), "|");
        Press(1, 0);
        Press(3, 0, Qt::RightButton);
        Press(2, 5);
        QCOMPARE(Flags(), "1 3 (2 flagged|)");
        SelectRows(0, 2);
        driver->Trigger("actionFlag_Selection");
        QCOMPARE(Flags(), "0 2 3 (3 flagged|)");

        // With nothing selected nothing changes, and the view does not move.
        driver->Raw()->clearSelection();
        driver->Raw()->scrollToBottom();
        const int scrolled = driver->Raw()->verticalScrollBar()->value();
        driver->Trigger("actionFlag_Selection");
        QCOMPARE(Flags(), "0 2 3 (3 flagged|)");
        QCOMPARE(driver->Raw()->verticalScrollBar()->value(), scrolled);

        SelectRows(4, 6);
        driver->Trigger("actionHide_Selected_Rows");
        QCOMPARE(Flags(), "0 2 3 (3 flagged, |3 hidden)");
        // A flagged row out of sight does not count.
        driver->Trigger("actionHide_Flagged_Rows");
        QCOMPARE(Flags(), " (|6 hidden)");
    }

    void hidingSelectedRowsLeavesTheStatistics()
    {
        driver->Open(TwoBlocks());
        SelectRows(1, 2);
        driver->Trigger("actionHide_Selected_Rows");
        QCOMPARE(driver->Column(12), QStringList({"300", "600"}));
        // The "SC" row leaves "All Responses:" but not "Correct Responses:".
        QCOMPARE(Statistics(), "2||450.00 msec, 3|150.00%|466.67 msec, 0|0.00%|0.00 msec, 0|0.00%|0.00 msec, "
                               "B1: 2 0 0 -0.99, B2: 1 0 0 0");
        driver->Trigger("actionShow_All_Rows");
        QCOMPARE(driver->Column(12), QStringList({"300", "500", "400", "600"}));
        QCOMPARE(Statistics(), "4||450.00 msec, 3|75.00%|466.67 msec, 1|25.00%|400.00 msec, 0|0.00%|0.00 msec, "
                               "B1: 2 0 0 0, B2: 1 1 0 0");
    }

    void hidingByFlagLeavesEveryStatistic_data()
    {
        QTest::addColumn<QString>("action");
        QTest::addColumn<QStringList>("left");
        QTest::newRow("flagged") << "actionHide_Flagged_Rows" << QStringList{"300", "600"};
        QTest::newRow("unflagged") << "actionHide_Unflagged_Rows" << QStringList{"500", "400"};
    }

    void hidingByFlagLeavesEveryStatistic()
    {
        QFETCH(QString, action);
        QFETCH(QStringList, left);
        driver->Open(TwoBlocks());
        const QString statistics = Statistics();
        Press(1, 0);
        Press(2, 0);
        driver->Trigger(action);
        QCOMPARE(driver->Column(12), left);
        QCOMPARE(Statistics(), statistics);
        driver->Trigger("actionShow_All_Rows");
        QCOMPARE(driver->Column(12).size(), 4);
        QCOMPARE(Statistics(), statistics);
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
        QCOMPARE(Flags(), "2 (1 flagged|)");
        const QItemSelectionModel *selection = driver->Raw()->selectionModel();
        driver->Trigger("actionSelect_Flagged_Rows");
        QVERIFY(selection->isRowSelected(0, {}) && !selection->isRowSelected(2, {}));
        driver->Trigger("actionSelect_Unflagged_Rows");
        QVERIFY(!selection->isRowSelected(0, {}) && selection->isRowSelected(2, {}));
        SelectRows(0, 0);
        driver->Trigger("actionHide_Selected_Rows");
        QCOMPARE(driver->Column(12), QStringList({"100", "200"}));
        QVERIFY(driver->Summary().startsWith("2||150.00 msec,"));
    }

    void actionsFollowTheFileAndTheTab()
    {
        // The first file, added on the summary tab, finds the row actions off.
        driver->ShowTab(1);
        driver->Open(WindowDriver::Stroop("S", 3));
        QCOMPARE(driver->ActionStates(), "11111 0000000000 0 11");
        driver->ShowTab(0);
        QCOMPARE(driver->ActionStates(), "11111 1111111111 0 11");
        // A press over a cell turns Flag Selection on, a press below the rows off.
        Press(0, 2);
        QCOMPARE(driver->ActionStates(), "11111 1111111111 1 11");
        QTest::mouseClick(driver->Raw()->viewport(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(5, driver->Raw()->viewport()->height() - 3));
        QCOMPARE(driver->ActionStates(), "11111 1111111111 0 11");
        Press(0, 2);
        driver->ShowTab(1);
        QCOMPARE(driver->ActionStates(), "11111 0000000000 0 11");
        // Select All serves the summary tab too.
        driver->Trigger("actionSelect_All_Rows");
        QCOMPARE(driver->Sections()->selectionModel()->selectedIndexes().size(), 4);
        // Back on the raw tab the selection brings Flag Selection back.
        driver->ShowTab(0);
        QCOMPARE(driver->ActionStates(), "11111 1111111111 1 11");
        driver->Trigger("actionSelect_All_Rows");
        QCOMPARE(driver->Raw()->selectionModel()->selectedRows().size(), 3);

        // A file that takes the focus has no row under the pointer yet.
        driver->Open(WindowDriver::Stroop("S", 2));
        QCOMPARE(driver->ActionStates(), "11111 1111111111 0 11");
        driver->ClickRows({0, 1});
        driver->Trigger("actionRemove_Selected_Files");
        QCOMPARE(driver->ActionStates(), "00000 0000000000 0 11");
    }
};

ZEPHLANE_TEST_MAIN(TestRowCommands)
#include "tst_rowcommands.moc"
