// Column commands of the raw table and the two-click sorting of both
// tables, through the headers as a user clicks them.

#include "windowdriver.h"

#include <QHeaderView>
#include <QMenu>

class TestColumnCommands : public QObject
{
    Q_OBJECT

    std::unique_ptr<WindowDriver> driver;

    QString Times() const { return driver->Column(12).join(' '); }
    static bool HasSortIcon(const QTableView *view, int column)
    {
        return !view->model()->headerData(column, Qt::Horizontal, Qt::DecorationRole).value<QIcon>().isNull();
    }
    QList<int> Hidden() const
    {
        QList<int> hidden;
        for (int column = 0; column < driver->Raw()->model()->columnCount(); ++column) {
            if (driver->Raw()->isColumnHidden(column))
                hidden << column;
        }
        return hidden;
    }

private slots:
    void init() { driver = std::make_unique<WindowDriver>(); }
    void cleanup() { driver.reset(); }

    void headerClicksSortOnlyTheSecondTime_data()
    {
        QTest::addColumn<QList<int>>("headers");
        QTest::addColumn<QString>("times");
        QTest::addColumn<int>("widening");
        QTest::newRow("one click") << QList<int>{12} << "300 100 200" << 0;
        QTest::newRow("two clicks") << QList<int>{12, 12} << "100 200 300" << 25;
        QTest::newRow("three clicks") << QList<int>{12, 12, 12} << "300 200 100" << 25;
        // File order again, and the room for the icon given back.
        QTest::newRow("four clicks") << QList<int>{12, 12, 12, 12} << "300 100 200" << 0;
        QTest::newRow("flag column") << QList<int>{0, 0, 0} << "300 100 200" << 0;
        // A cell click in between cancels the preparation; another header moves it.
        QTest::newRow("header, cell, header") << QList<int>{12, -3, 12} << "300 100 200" << 0;
        QTest::newRow("another header, then two") << QList<int>{12, 4, 12, 12} << "100 200 300" << 25;
    }

    // A negative entry clicks the cell of that column in the first row.
    void headerClicksSortOnlyTheSecondTime()
    {
        QFETCH(QList<int>, headers);
        QFETCH(QString, times);
        QFETCH(int, widening);
        driver->Open(WindowDriver::ThreeTimes());
        const int width = driver->Raw()->columnWidth(12);
        for (int column : headers) {
            if (column < 0)
                WindowDriver::ClickCell(driver->Raw(), 0, -column);
            else
                WindowDriver::ClickHeader(driver->Raw(), column);
        }
        QCOMPARE(Times(), times);
        QCOMPARE(driver->Raw()->columnWidth(12) - width, widening);
        QCOMPARE(HasSortIcon(driver->Raw(), headers.last()), times != "300 100 200");
    }

    // Counts 1, 0, 1 in column "C": sorted ascending, B1 with its zero comes
    // first. The preparation is the section table's own, so a cell click in
    // the raw table does not cancel it either.
    void cellClickCancelsNoPreparationOnTheSectionTable()
    {
        driver->Open(WindowDriver::ThreeTimes());
        driver->ShowTab(1);
        WindowDriver::ClickHeader(driver->Sections(), 0);
        WindowDriver::ClickCell(driver->Sections(), 0, 1);
        driver->ShowTab(0);
        WindowDriver::ClickCell(driver->Raw(), 0, 3);
        driver->ShowTab(1);
        WindowDriver::ClickHeader(driver->Sections(), 0);
        QCOMPARE(TableContents::Rows(*driver->Sections()->model()).first(), "B1: 0 1 0 0");
        QVERIFY(HasSortIcon(driver->Sections(), 0));
    }

    void sortsNumbersAsNumbersAndTheRestAsText_data()
    {
        QTest::addColumn<QStringList>("cells");
        QTest::addColumn<QString>("ascending");
        QTest::newRow("numbers and an empty cell") << QStringList{"10", "9", "", "100", "-1.5"} << " -1.5 9 10 100";
        QTest::newRow("text") << QStringList{"b", "B", "a", "A"} << "A B a b";
    }

    void sortsNumbersAsNumbersAndTheRestAsText()
    {
        QFETCH(QStringList, cells);
        QFETCH(QString, ascending);
        DataFileBuilder builder;
        builder.ProductTitles();
        for (const QString &cell : cells)
            builder.Trial("B1", "T1", "C", cell);
        driver->Open(builder);
        WindowDriver::ClickHeader(driver->Raw(), 12);
        WindowDriver::ClickHeader(driver->Raw(), 12);
        QCOMPARE(Times(), ascending);
    }

    // A right-click on a header selects that column alone before the menu
    // shows; hiding the column that sorts the table restores the file order.
    void hidingTheSortedColumnFromItsMenu()
    {
        driver->Open(WindowDriver::ThreeTimes());
        WindowDriver::ClickHeader(driver->Raw(), 12);
        WindowDriver::ClickHeader(driver->Raw(), 12);
        const int width = driver->Raw()->columnWidth(12);
        WindowDriver::ClickCell(driver->Raw(), 1, 10);
        QHeaderView *header = driver->Raw()->horizontalHeader();
        const QPoint point(header->sectionViewportPosition(12) + 4, header->height() / 2);
        QCursor::setPos(header->viewport()->mapToGlobal(point));
        emit header->customContextMenuRequested(point);
        const QItemSelectionModel *selection = driver->Raw()->selectionModel();
        QCOMPARE(selection->selectedIndexes().size(), 3);
        QCOMPARE(selection->selectedColumns().value(0).column(), 12);
        QMenu *menu = driver->Window().findChild<QMenu *>();
        QVERIFY(menu->isVisible());
        QCOMPARE(menu->actions().first()->text() + '|' + menu->actions().last()->text(),
                 "Hide Selected Columns|Show All Columns");

        menu->actions().first()->trigger();
        QCOMPARE(Hidden(), QList<int>({12}));
        QCOMPARE(Times(), "300 100 200");
        QVERIFY(!HasSortIcon(driver->Raw(), 12));
        menu->actions().last()->trigger();
        QCOMPARE(Hidden(), QList<int>());
        QCOMPARE(driver->Raw()->columnWidth(12), width);
    }

    // Congruency is empty in every row, Stimulus Side in one; the flag column counts as empty.
    void emptyColumnsHideAndShowAllBringsThemBack()
    {
        driver->Open(WindowDriver::Trials("B1 T1 C 300  left, B1 T2 C 400  "));
        driver->Trigger("actionHide_Empty_Columns");
        QCOMPARE(Hidden(), QList<int>({0, 15}));
        driver->Trigger("actionShow_All_Columns");
        QCOMPARE(Hidden(), QList<int>());
    }
};

ZEPHLANE_TEST_MAIN(TestColumnCommands)
#include "tst_columncommands.moc"
