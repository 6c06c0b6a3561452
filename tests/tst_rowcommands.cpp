// The row commands of the main window, the line of flagged and hidden
// counts, and which actions are on, as a user meets them.

#include "tablecontents.h"
#include "testenvironment.h"
#include "windowdriver.h"

#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QTabWidget>
#include <QTableView>
#include <QTableWidget>
#include <QScrollBar>
#include <QTest>

#include <memory>

namespace {

const char *const kRowActions[] = {"actionSelect_Flagged_Rows", "actionSelect_Unflagged_Rows", "actionFlag_Special",
                                   "actionHide_Selected_Rows",  "actionHide_Flagged_Rows",     "actionHide_Unflagged_Rows",
                                   "actionShow_All_Rows",       "actionHide_Empty_Columns",    "actionShow_All_Columns",
                                   "actionRefresh_Column_Autosizing"};

} // namespace

class TestRowCommands : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void pressingTheFlagCellFlagsWithEitherButton();
    void flagSelectionTogglesEachRowOnce();
    void flagSelectionWithNothingSelectedDoesNothing();
    void bottomLineReadsFlagsAndHiddenRows();
    void hidingSelectedRowsLeavesTheStatistics();
    void hidingOnASortedTableGoesByUnsortedPlace();
    void hidingByFlagLeavesEveryStatistic_data();
    void hidingByFlagLeavesEveryStatistic();
    void selectingFlaggedRowsGoesByNumberOnScreen();
    void selectAllServesBothTabs();
    void actionsFollowTheFileAndTheTab();

private:
    void Open(const DataFileBuilder &builder);
    QTableView *Raw() const { return driver->Find<QTableView>("rawDataView"); }
    QAction *Action(const QString &name) const { return driver->Find<QAction>(name); }
    void Press(int row, int column, Qt::MouseButton button = Qt::LeftButton);
    void SelectRows(int first, int last);
    QStringList Column(int column) const { return TableContents::Column(*Raw()->model(), column); }
    QStringList Flags() const;
    QString BottomLine() const;
    QStringList Summary() const;
    QStringList Blocks() const;

    std::unique_ptr<WindowDriver> driver;
};

void TestRowCommands::init()
{
    driver = std::make_unique<WindowDriver>();
}

void TestRowCommands::cleanup()
{
    driver.reset();
}

void TestRowCommands::Open(const DataFileBuilder &builder)
{
    static int written = 0;
    driver->AddFiles({driver->Write(QStringLiteral("data%1.txt").arg(++written), builder)});
}

void TestRowCommands::Press(int row, int column, Qt::MouseButton button)
{
    WindowDriver::ClickCell(Raw(), row, column, button);
}

// Clicks a cell of the first row and shift-clicks one of the last, so that
// several cells of each row are selected.
void TestRowCommands::SelectRows(int first, int last)
{
    WindowDriver::ClickCell(Raw(), first, 2);
    WindowDriver::ClickCell(Raw(), last, 4, Qt::LeftButton, Qt::ShiftModifier);
}

// "1" for each row on screen that shows the flag icon.
QStringList TestRowCommands::Flags() const
{
    QStringList flags;
    for (int row = 0; row < Raw()->model()->rowCount(); ++row)
        flags << (Raw()->model()->index(row, 0).data(Qt::DecorationRole).isValid() ? "1" : "0");
    return flags;
}

QString TestRowCommands::BottomLine() const
{
    return driver->Find<QLabel>("flaggedRows")->text() + "|" + driver->Find<QLabel>("hiddenRows")->text();
}

QStringList TestRowCommands::Summary() const
{
    const QTableWidget *table = driver->Find<QTableWidget>("generalTable");
    QStringList counts;
    for (int row = 0; row < table->rowCount(); ++row)
        counts << table->item(row, 0)->text() + " " + table->item(row, 2)->text();
    return counts;
}

QStringList TestRowCommands::Blocks() const
{
    return TableContents::Rows(*driver->Find<QTableView>("sectionDataView")->model());
}

void TestRowCommands::pressingTheFlagCellFlagsWithEitherButton()
{
    Open(WindowDriver::Stroop("S", 4));
    Press(1, 0);
    Press(3, 0, Qt::RightButton);
    Press(2, 5);
    QCOMPARE(Flags(), QStringList({"0", "1", "0", "1"}));
    Press(1, 0);
    QCOMPARE(Flags(), QStringList({"0", "0", "0", "1"}));
    QCOMPARE(BottomLine(), QString(" (1 flagged|)"));
}

void TestRowCommands::flagSelectionTogglesEachRowOnce()
{
    Open(WindowDriver::Stroop("S", 5));
    Press(1, 0);
    SelectRows(0, 2);
    QVERIFY(Action("actionFlag_Selection")->isEnabled());
    Action("actionFlag_Selection")->trigger();
    // Mixed flags are inverted row by row, not all set.
    QCOMPARE(Flags(), QStringList({"1", "0", "1", "0", "0"}));
    QCOMPARE(BottomLine(), QString(" (2 flagged|)"));
}

void TestRowCommands::flagSelectionWithNothingSelectedDoesNothing()
{
    Open(WindowDriver::Stroop("S", 60));
    Press(2, 3);
    Raw()->clearSelection();
    Raw()->scrollToBottom();
    const int scrolled = Raw()->verticalScrollBar()->value();
    Action("actionFlag_Selection")->trigger();
    QCOMPARE(Flags().count("1"), 0);
    QCOMPARE(Raw()->verticalScrollBar()->value(), scrolled);
}

void TestRowCommands::bottomLineReadsFlagsAndHiddenRows()
{
    Open(WindowDriver::Stroop("S", 8));
    QCOMPARE(BottomLine(), QString("|"));
    Press(0, 0);
    Press(1, 0);
    QCOMPARE(BottomLine(), QString(" (2 flagged|)"));
    SelectRows(4, 6);
    Action("actionHide_Selected_Rows")->trigger();
    QCOMPARE(BottomLine(), QString(" (2 flagged, |3 hidden)"));
    Press(0, 0);
    Press(1, 0);
    QCOMPARE(BottomLine(), QString(" (|3 hidden)"));
    Action("actionShow_All_Rows")->trigger();
    QCOMPARE(BottomLine(), QString("|"));
    // A flagged row out of sight does not count.
    Press(0, 0);
    Action("actionHide_Flagged_Rows")->trigger();
    QCOMPARE(BottomLine(), QString(" (|1 hidden)"));
}

void TestRowCommands::hidingSelectedRowsLeavesTheStatistics()
{
    Open(DataFileBuilder()
             .ProductTitles()
             .Trial("B1", "T1", "C", "300")
             .Trial("B1", "T2", "SC", "500")
             .Trial("B2", "T1", "E", "400")
             .Trial("B2", "T2", "C", "600"));
    driver->Find<QTabWidget>("tabWidget")->setCurrentIndex(0);
    SelectRows(1, 2);
    Action("actionHide_Selected_Rows")->trigger();
    QCOMPARE(Column(12), QStringList({"300", "600"}));
    // The "SC" row leaves "All Responses:" but not "Correct Responses:".
    QCOMPARE(Summary(), QStringList({"2 450.00 msec", "3 466.67 msec", "0 0.00 msec", "0 0.00 msec"}));
    QCOMPARE(Blocks(), QStringList({"B1: 2 0 0 -0.99", "B2: 1 0 0 0"}));
    Action("actionShow_All_Rows")->trigger();
    QCOMPARE(Column(12), QStringList({"300", "500", "400", "600"}));
    QCOMPARE(Summary(), QStringList({"4 450.00 msec", "3 466.67 msec", "1 400.00 msec", "0 0.00 msec"}));
    QCOMPARE(Blocks(), QStringList({"B1: 2 0 0 0", "B2: 1 1 0 0"}));
}

// The rows are chosen on screen but taken from the unsorted table.
void TestRowCommands::hidingOnASortedTableGoesByUnsortedPlace()
{
    Open(DataFileBuilder()
             .ProductTitles()
             .Trial("B1", "T1", "C", "300")
             .Trial("B1", "T2", "C", "100")
             .Trial("B1", "T3", "C", "200"));
    WindowDriver::ClickHeader(Raw(), 12);
    WindowDriver::ClickHeader(Raw(), 12);
    QCOMPARE(Column(12), QStringList({"100", "200", "300"}));
    SelectRows(0, 0);
    Action("actionHide_Selected_Rows")->trigger();
    QCOMPARE(Column(12), QStringList({"100", "200"}));
    QCOMPARE(Summary().first(), QString("2 150.00 msec"));
}

void TestRowCommands::hidingByFlagLeavesEveryStatistic_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QStringList>("left");
    QTest::newRow("flagged") << "actionHide_Flagged_Rows" << QStringList{"300", "600"};
    QTest::newRow("unflagged") << "actionHide_Unflagged_Rows" << QStringList{"500", "400"};
}

void TestRowCommands::hidingByFlagLeavesEveryStatistic()
{
    QFETCH(QString, action);
    QFETCH(QStringList, left);
    Open(DataFileBuilder()
             .ProductTitles()
             .Trial("B1", "T1", "C", "300")
             .Trial("B1", "T2", "C", "500")
             .Trial("B2", "T1", "E", "400")
             .Trial("B2", "T2", "C", "600"));
    const QStringList summary = Summary();
    const QStringList blocks = Blocks();
    Press(1, 0);
    Press(2, 0);
    Action(action)->trigger();
    QCOMPARE(Column(12), left);
    QCOMPARE(Summary(), summary);
    QCOMPARE(Blocks(), blocks);
    Action("actionShow_All_Rows")->trigger();
    QCOMPARE(Column(12).size(), 4);
    QCOMPARE(Summary(), summary);
    QCOMPARE(Blocks(), blocks);
}

// With a sort in force the flagged rows' numbers are selected on screen.
void TestRowCommands::selectingFlaggedRowsGoesByNumberOnScreen()
{
    Open(DataFileBuilder()
             .ProductTitles()
             .Trial("B1", "T1", "C", "300")
             .Trial("B1", "T2", "C", "100")
             .Trial("B1", "T3", "C", "200"));
    Press(0, 0);
    auto selected = [this] {
        QStringList times;
        for (const QModelIndex &index : Raw()->selectionModel()->selectedRows(12))
            times << index.data().toString();
        std::sort(times.begin(), times.end());
        return times;
    };
    Action("actionSelect_Flagged_Rows")->trigger();
    QCOMPARE(selected(), QStringList({"300"}));
    Action("actionSelect_Unflagged_Rows")->trigger();
    QCOMPARE(selected(), QStringList({"100", "200"}));
    driver->Find<QTableView>("rawDataView")->model()->sort(12, Qt::DescendingOrder);
    Action("actionSelect_Flagged_Rows")->trigger();
    QCOMPARE(selected(), QStringList({"300"}));
    Raw()->model()->sort(12, Qt::AscendingOrder);
    Action("actionSelect_Flagged_Rows")->trigger();
    QCOMPARE(selected(), QStringList({"100"}));
}

void TestRowCommands::selectAllServesBothTabs()
{
    Open(DataFileBuilder().ProductTitles().Trial("B1", "T1", "C", "300").Trial("B2", "T2", "C", "100"));
    Action("actionSelect_All_Rows")->trigger();
    QCOMPARE(Raw()->selectionModel()->selectedRows().size(), 2);
    driver->Find<QTabWidget>("tabWidget")->setCurrentIndex(1);
    Action("actionSelect_All_Rows")->trigger();
    QCOMPARE(driver->Find<QTableView>("sectionDataView")->selectionModel()->selectedIndexes().size(), 8);
}

void TestRowCommands::actionsFollowTheFileAndTheTab()
{
    auto states = [this](std::initializer_list<const char *> names) {
        QString on;
        for (const char *name : names)
            on += Action(name)->isEnabled() ? "1" : "0";
        return on;
    };
    QCOMPARE(states({"actionSelect_All_Rows", "actionHide_Selected_Rows", "actionCopy", "actionRow_Colors", "actionFlag_Selection"}),
             QString("00110"));
    Open(WindowDriver::Stroop("S", 3));
    for (const char *name : kRowActions)
        QVERIFY2(Action(name)->isEnabled(), name);
    QVERIFY(!Action("actionFlag_Selection")->isEnabled());
    Press(0, 2);
    QVERIFY(Action("actionFlag_Selection")->isEnabled());
    // A press below the rows switches it off again.
    QTest::mouseClick(Raw()->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(5, Raw()->viewport()->height() - 3));
    QVERIFY(!Action("actionFlag_Selection")->isEnabled());
    Press(0, 2);

    QTabWidget *tabs = driver->Find<QTabWidget>("tabWidget");
    tabs->setCurrentIndex(1);
    for (const char *name : kRowActions)
        QVERIFY2(!Action(name)->isEnabled(), name);
    QCOMPARE(states({"actionSelect_All_Rows", "actionRemove_Selected_Files", "actionMerge_Selected_Files", "actionFlag_Selection"}),
             QString("1110"));
    // Back on the raw tab the selection brings the flag action back.
    tabs->setCurrentIndex(0);
    QVERIFY(Action("actionShow_All_Rows")->isEnabled());
    QVERIFY(Action("actionFlag_Selection")->isEnabled());

    // Files added while the summary tab is on top find the row actions off.
    tabs->setCurrentIndex(1);
    Open(WindowDriver::Stroop("S", 2));
    QVERIFY(!Action("actionHide_Flagged_Rows")->isEnabled());
    tabs->setCurrentIndex(0);
    driver->ClickRows({0, 1});
    Action("actionRemove_Selected_Files")->trigger();
    QCOMPARE(states({"actionSelect_All_Rows", "actionHide_Selected_Rows", "actionShow_All_Columns", "actionCopy"}),
             QString("0001"));
}

ZEPHLANE_TEST_MAIN(TestRowCommands)
#include "tst_rowcommands.moc"
