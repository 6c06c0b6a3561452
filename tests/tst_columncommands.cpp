// Column commands of the raw table and the two-click sorting of both
// tables, through the headers as a user clicks them.

#include "tablecontents.h"
#include "testenvironment.h"
#include "windowdriver.h"

#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QMenu>
#include <QTabWidget>
#include <QTableView>
#include <QTest>

#include <memory>

class TestColumnCommands : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void flagColumnNeverSorts();
    void clicksCycleAscendingDescendingFileOrder();
    void cellClickCancelsPreparationOnlyOnTheRawTable();
    void sortsNumbersAsNumbersAndTheRestAsText_data();
    void sortsNumbersAsNumbersAndTheRestAsText();
    void hidingTheSortedColumnRestoresFileOrder();
    void rightClickSelectsTheColumnUnderThePointer();
    void emptyColumnsHideAndShowAllBringsThemBack();
    void columnMenuOnTheBlankGridDoesNoHarm();

private:
    void Open(const DataFileBuilder &builder);
    QTableView *Raw() const { return driver->Find<QTableView>("rawDataView"); }
    QTableView *Sections() const { return driver->Find<QTableView>("sectionDataView"); }
    QStringList Times() const { return TableContents::Column(*Raw()->model(), 12); }
    QIcon SortIcon(QTableView *view, int column) const
    {
        return view->model()->headerData(column, Qt::Horizontal, Qt::DecorationRole).value<QIcon>();
    }

    std::unique_ptr<WindowDriver> driver;
    int written = 0;
};

void TestColumnCommands::init()
{
    driver = std::make_unique<WindowDriver>();
}

void TestColumnCommands::cleanup()
{
    driver.reset();
}

void TestColumnCommands::Open(const DataFileBuilder &builder)
{
    driver->AddFiles({driver->Write(QStringLiteral("data%1.txt").arg(++written), builder)});
}

namespace {

DataFileBuilder ThreeTimes()
{
    return DataFileBuilder()
        .ProductTitles()
        .Trial("B2", "T1", "C", "300")
        .Trial("B1", "T2", "E", "100")
        .Trial("B3", "T3", "C", "200");
}

} // namespace

void TestColumnCommands::flagColumnNeverSorts()
{
    Open(ThreeTimes());
    WindowDriver::ClickCell(Raw(), 1, 0);
    WindowDriver::ClickHeader(Raw(), 0);
    WindowDriver::ClickHeader(Raw(), 0);
    WindowDriver::ClickHeader(Raw(), 0);
    QCOMPARE(Times(), QStringList({"300", "100", "200"}));
    QVERIFY(SortIcon(Raw(), 0).isNull());
}

void TestColumnCommands::clicksCycleAscendingDescendingFileOrder()
{
    Open(ThreeTimes());
    const int width = Raw()->columnWidth(12);
    WindowDriver::ClickHeader(Raw(), 12);
    QCOMPARE(Times(), QStringList({"300", "100", "200"}));
    QVERIFY(SortIcon(Raw(), 12).isNull());
    WindowDriver::ClickHeader(Raw(), 12);
    QCOMPARE(Times(), QStringList({"100", "200", "300"}));
    QVERIFY(!SortIcon(Raw(), 12).isNull());
    QCOMPARE(Raw()->columnWidth(12), width + 25);
    WindowDriver::ClickHeader(Raw(), 12);
    QCOMPARE(Times(), QStringList({"300", "200", "100"}));
    QCOMPARE(Raw()->columnWidth(12), width + 25);
    WindowDriver::ClickHeader(Raw(), 12);
    QCOMPARE(Times(), QStringList({"300", "100", "200"}));
    QVERIFY(SortIcon(Raw(), 12).isNull());
    QCOMPARE(Raw()->columnWidth(12), width);
    // The sorting click leaves the whole column selected.
    QCOMPARE(Raw()->selectionModel()->selectedColumns().size(), 1);
}

void TestColumnCommands::cellClickCancelsPreparationOnlyOnTheRawTable()
{
    Open(ThreeTimes());
    WindowDriver::ClickHeader(Raw(), 12);
    WindowDriver::ClickCell(Raw(), 0, 3);
    WindowDriver::ClickHeader(Raw(), 12);
    QCOMPARE(Times(), QStringList({"300", "100", "200"}));
    // Clicking another column moves the preparation there.
    WindowDriver::ClickHeader(Raw(), 4);
    WindowDriver::ClickHeader(Raw(), 12);
    QCOMPARE(Times(), QStringList({"300", "100", "200"}));
    WindowDriver::ClickHeader(Raw(), 12);
    QCOMPARE(Times(), QStringList({"100", "200", "300"}));

    driver->Find<QTabWidget>("tabWidget")->setCurrentIndex(1);
    const auto names = [this] {
        QStringList rows;
        for (const QString &row : TableContents::Rows(*Sections()->model()))
            rows << row.section(':', 0, 0);
        return rows;
    };
    QCOMPARE(names(), QStringList({"B2", "B1", "B3"}));
    WindowDriver::ClickHeader(Sections(), 0);
    WindowDriver::ClickCell(Sections(), 0, 1);
    WindowDriver::ClickHeader(Sections(), 0);
    // Counts 1, 0, 1 in column "C": sorted ascending, the zero first.
    QCOMPARE(names(), QStringList({"B1", "B2", "B3"}));
    QVERIFY(!SortIcon(Sections(), 0).isNull());
}

void TestColumnCommands::sortsNumbersAsNumbersAndTheRestAsText_data()
{
    QTest::addColumn<QStringList>("cells");
    QTest::addColumn<QStringList>("ascending");
    QTest::newRow("numbers") << QStringList{"10", "9", "100", "-1.5"} << QStringList{"-1.5", "9", "10", "100"};
    QTest::newRow("text") << QStringList{"b", "B", "a", "A"} << QStringList{"A", "B", "a", "b"};
    QTest::newRow("empty cells beside numbers") << QStringList{"9", "", "10"} << QStringList{"", "9", "10"};
}

void TestColumnCommands::sortsNumbersAsNumbersAndTheRestAsText()
{
    QFETCH(QStringList, cells);
    QFETCH(QStringList, ascending);
    DataFileBuilder builder;
    builder.ProductTitles();
    for (const QString &cell : cells)
        builder.Trial("B1", "T1", "C", cell);
    Open(builder);
    WindowDriver::ClickHeader(Raw(), 12);
    WindowDriver::ClickHeader(Raw(), 12);
    QCOMPARE(Times(), ascending);
}

void TestColumnCommands::hidingTheSortedColumnRestoresFileOrder()
{
    Open(ThreeTimes());
    WindowDriver::ClickHeader(Raw(), 12);
    WindowDriver::ClickHeader(Raw(), 12);
    QCOMPARE(Times(), QStringList({"100", "200", "300"}));
    const int width = Raw()->columnWidth(12);
    WindowDriver::ClickCell(Raw(), 0, 12);
    QMenu *menu = driver->Window().findChild<QMenu *>();
    QVERIFY(menu);
    menu->actions().first()->trigger();
    QVERIFY(Raw()->isColumnHidden(12));
    QCOMPARE(Times(), QStringList({"300", "100", "200"}));
    QVERIFY(SortIcon(Raw(), 12).isNull());
    menu->actions().last()->trigger();
    QVERIFY(!Raw()->isColumnHidden(12));
    QCOMPARE(Raw()->columnWidth(12), width);
}

void TestColumnCommands::rightClickSelectsTheColumnUnderThePointer()
{
    Open(ThreeTimes());
    WindowDriver::ClickCell(Raw(), 1, 2);
    QHeaderView *header = Raw()->horizontalHeader();
    const QPoint point(header->sectionViewportPosition(3) + 4, header->height() / 2);
    QCursor::setPos(header->viewport()->mapToGlobal(point));
    emit header->customContextMenuRequested(point);
    QCOMPARE(Raw()->selectionModel()->selectedColumns(), QModelIndexList({Raw()->model()->index(0, 3)}));
    QMenu *menu = driver->Window().findChild<QMenu *>();
    QVERIFY(menu->isVisible());
    QCOMPARE(menu->actions().size(), 3);
    QCOMPARE(menu->actions().first()->text(), QString("Hide Selected Columns"));
    QVERIFY(menu->actions().at(1)->isSeparator());
    QCOMPARE(menu->actions().last()->text(), QString("Show All Columns"));
    menu->hide();
}

void TestColumnCommands::emptyColumnsHideAndShowAllBringsThemBack()
{
    Open(DataFileBuilder()
             .Titles({"Block", "Error", "Reaction", "", "Note"}, {"Name", "Code", "Time", "Key", "Text"})
             .Row({"B1", "C", "300", "", ""})
             .Row({"B1", "C", "400", "", "late"}));
    driver->Find<QAction>("actionHide_Empty_Columns")->trigger();
    QList<int> hidden;
    for (int column = 0; column < Raw()->model()->columnCount(); ++column)
        if (Raw()->isColumnHidden(column))
            hidden << column;
    // The flag column counts as empty too.
    QCOMPARE(hidden, QList<int>({0, 4}));
    driver->Find<QAction>("actionShow_All_Columns")->trigger();
    for (int column = 0; column < Raw()->model()->columnCount(); ++column)
        QVERIFY(!Raw()->isColumnHidden(column));
}

void TestColumnCommands::columnMenuOnTheBlankGridDoesNoHarm()
{
    WindowDriver::ClickCell(Raw(), 2, 7);
    QMenu *menu = driver->Window().findChild<QMenu *>();
    menu->actions().first()->trigger();
    QVERIFY(Raw()->isColumnHidden(7));
    // Without a file "Show All Columns" does nothing.
    menu->actions().last()->trigger();
    QVERIFY(Raw()->isColumnHidden(7));
    Open(ThreeTimes());
    QCOMPARE(Times().size(), 3);
}

ZEPHLANE_TEST_MAIN(TestColumnCommands)
#include "tst_columncommands.moc"
