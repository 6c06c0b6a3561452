// SPDX-License-Identifier: GPL-3.0-or-later
// Column commands of the raw table and the two-click sorting of both
// tables, through the headers as a user clicks them.

#include "windowdriver.h"

#include <QScrollBar>

class TestColumnCommands : public QObject
{
    Q_OBJECT

    std::unique_ptr<WindowDriver> driver;

    // The reaction times, the columns that show the ascending (^) or
    // descending (v) icon, the columns hidden, and how much wider column 12 is
    // than `width` while it shows.
    QString Raw(int width) const
    {
        const auto image = [](const QIcon &icon) { return icon.pixmap(16).toImage().convertToFormat(QImage::Format_ARGB32); };
        const QImage ascending = image(QIcon(":../img/ascending.png"));
        QString marks;
        for (int column = 0; column < driver->Raw()->model()->columnCount(); ++column) {
            const QIcon icon = driver->Raw()->model()->headerData(column, Qt::Horizontal, Qt::DecorationRole).value<QIcon>();
            marks += QString(icon.isNull() ? "" : image(icon) == ascending ? " ^%1" : " v%1").arg(column)
                     + QString(driver->Raw()->isColumnHidden(column) ? " -%1" : "").arg(column);
        }
        return driver->Column(12).join(' ') + marks
               + (driver->Raw()->isColumnHidden(12) ? QString() : QString(" +%1").arg(driver->Raw()->columnWidth(12) - width));
    }

private slots:
    void init() { driver = std::make_unique<WindowDriver>(); }
    void cleanup() { driver.reset(); }

    void headerClicksSortOnlyTheSecondTime_data()
    {
        QTest::addColumn<QString>("trials");
        QTest::addColumn<QList<int>>("headers");
        QTest::addColumn<QString>("shown");
        const QString three = "B2 T1 C 300, B1 T2 E 100, B3 T3 C 200";
        // A negative entry clicks the cell of that column in the first row.
        // The first click only prepares; each further one moves the sort on.
        QTest::newRow("three clicks") << three << QList<int>{12, 12, 12} << "300 200 100 v12 +25";
        // File order again, and the room for the icon given back.
        QTest::newRow("four clicks") << three << QList<int>{12, 12, 12, 12} << "300 100 200 +0";
        QTest::newRow("flag column") << three << QList<int>{0, 0, 0} << "300 100 200 +0";
        // A cell click in between cancels the preparation.
        QTest::newRow("header, cell, header") << three << QList<int>{12, -3, 12} << "300 100 200 +0";
        // Another header moves the preparation, and the sort starts there.
        QTest::newRow("another header, then two") << three << QList<int>{12, 4, 12, 12} << "100 200 300 ^12 +25";
        // Numbers sort as numbers, the rest as text.
        QTest::newRow("numbers and an empty cell")
            << "B T C 10, B T C 9, B T C , B T C 100, B T C -1.5" << QList<int>{12, 12} << " -1.5 9 10 100 ^12 +25";
        QTest::newRow("text") << "B T C b, B T C B, B T C a, B T C A" << QList<int>{12, 12} << "A B a b ^12 +25";
    }

    void headerClicksSortOnlyTheSecondTime()
    {
        QFETCH(QString, trials);
        QFETCH(QList<int>, headers);
        driver->Open(WindowDriver::Trials(trials));
        const int width = driver->Raw()->columnWidth(12);
        for (int column : headers) {
            if (column < 0)
                WindowDriver::ClickCell(driver->Raw(), 0, -column);
            else
                WindowDriver::ClickHeader(driver->Raw(), column);
        }
        QTEST(Raw(width), "shown");
    }

    void sortingSelectsTheSortedColumn_data()
    {
        QTest::addColumn<int>("modifier");
        QTest::addColumn<QString>("selected");
        // Cells as "time of the row: column". Without a modifier the column
        // replaces the cells selected before; with Ctrl each click toggles
        // the column and the cells stay with their rows through the sort.
        QTest::newRow("no modifier") << int(Qt::NoModifier) << "100:12 200:12 300:12";
        QTest::newRow("Ctrl") << int(Qt::ControlModifier) << "100:5 100:12 200:12 300:3 300:12";
    }

    void sortingSelectsTheSortedColumn()
    {
        QFETCH(int, modifier);
        driver->Open(WindowDriver::ThreeTimes());
        QTableView *raw = driver->Raw();
        WindowDriver::ClickCell(raw, 0, 3);
        WindowDriver::ClickCell(raw, 1, 5, Qt::LeftButton, Qt::ControlModifier);
        raw->scrollTo(raw->model()->index(0, 12));
        for (int click = 0; click < 2; ++click) {
            const QHeaderView *header = raw->horizontalHeader();
            QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::KeyboardModifiers(modifier),
                              QPoint(header->sectionViewportPosition(12) + 5, header->height() / 2));
        }
        QStringList cells;
        for (const QModelIndex &cell : raw->selectionModel()->selectedIndexes())
            cells << QString("%1:%2").arg(raw->model()->index(cell.row(), 12).data().toString()).arg(cell.column());
        std::sort(cells.begin(), cells.end(), [](const QString &a, const QString &b) {
            return a.section(':', 0, 0) != b.section(':', 0, 0) ? a < b : a.section(':', 1).toInt() < b.section(':', 1).toInt();
        });
        QTEST(cells.join(' '), "selected");
        QCOMPARE(driver->Column(12).join(' '), "100 200 300");
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
        QVERIFY(!driver->Sections()->model()->headerData(0, Qt::Horizontal, Qt::DecorationRole).value<QIcon>().isNull());
    }

    // A right-click on a header selects that column alone before the menu
    // shows; hiding the column that sorts the table restores the file order,
    // and the column keeps its width. Empty columns go with their command:
    // Congruency is empty in every row, and the flag column counts as empty.
    void hidingAndShowingColumns()
    {
        driver->Open(WindowDriver::Trials("B2 T1 C 300  left, B1 T2 E 100  , B3 T3 C 200  "));
        const int width = driver->Raw()->columnWidth(12);
        WindowDriver::ClickHeader(driver->Raw(), 12);
        WindowDriver::ClickHeader(driver->Raw(), 12);
        WindowDriver::ClickCell(driver->Raw(), 1, 10);
        QHeaderView *header = driver->Raw()->horizontalHeader();
        const QPoint point(header->sectionViewportPosition(12) + 4, header->height() / 2);
        QCursor::setPos(header->viewport()->mapToGlobal(point));
        emit header->customContextMenuRequested(point);
        const QItemSelectionModel *selection = driver->Raw()->selectionModel();
        QMenu *menu = driver->Window().findChild<QMenu *>();
        QStringList seen{QString("%1 %2 %3").arg(selection->selectedIndexes().size()).arg(selection->selectedColumns().value(0).column())
                                                .arg(menu->isVisible())};
        menu->actions().first()->trigger();
        seen << Raw(width);
        menu->actions().last()->trigger();
        seen << Raw(width);
        driver->Trigger("actionHide_Empty_Columns");
        seen << Raw(width);
        driver->Trigger("actionShow_All_Columns");
        seen << Raw(width);
        QCOMPARE(seen, QStringList({"3 12 1", "300 100 200 -12", "300 100 200 +25", "300 100 200 -0 -15 +25", "300 100 200 +25"}));
    }

    // Cells alike are laid out once while columns are sized; the widths
    // are those that sizing every cell on its own gives, with a flag, with
    // texts that differ in width but not in length, and for a second file
    // opened while the first is shown, whose texts are longer.
    void sizesColumnsAsEachCellAsks()
    {
        const auto trials = [](const QString &wide) {
            QStringList rows;
            const QStringList words{"iii", wide, "\u00e9t\u00e9", "1", "11", "", "a-b"};
            for (int row = 0; row < 60; ++row)
                rows << QString("B%1 %2 %3 %4 %5").arg(row % 3).arg(words[row % words.size()]).arg(row % 4 ? "C" : "E")
                            .arg(row * 7 % 13).arg(words[row % 5]);
            return WindowDriver::Trials(rows.join(", "));
        };
        driver->Open(trials("WWW"));
        QTableView *raw = driver->Raw();
        const auto columnWidths = [raw] {
            QVector<int> widths;
            for (int column = 0; column < raw->model()->columnCount(); ++column)
                widths << raw->columnWidth(column);
            return widths;
        };
        QVector<int> widths;
        for (const QString &step : QStringList{"open", "flagged and refreshed", "second file"}) {
            if (step == "flagged and refreshed") {
                WindowDriver::ClickCell(raw, 2, 0);
                driver->Trigger("actionRefresh_Column_Autosizing");
            }
            if (step == "second file") {
                driver->Open(trials("WWWWWWWWWWWW"));
                QVERIFY(columnWidths() != widths);
            }
            widths = columnWidths();
            raw->resizeColumnsToContents();
            for (int column = 0; column < raw->model()->columnCount(); ++column)
                QVERIFY2(raw->columnWidth(column) == widths[column], qPrintable(QString("%1 column %2").arg(step).arg(column)));
        }
    }

    // A table too wide to size whole has its columns sized to their
    // contents as they come into view: at the start, scrolled to the end,
    // and after Refresh Column Autosizing.
    void sizesTheColumnsOfAWideTableAsTheyComeIntoView()
    {
        QStringList titles{"Code"};
        QStringList cells;
        for (int column = 0; column < 2'000; ++column) {
            titles << QString("K%1").arg(column);
            cells << (column % 2 ? "x" : QString(30, 'w'));
        }
        driver->Open(DataFileBuilder().Titles({"Error"}, titles).Row(cells));
        QTableView *raw = driver->Raw();
        for (const QString &step : QStringList{"open", "scrolled", "refreshed"}) {
            if (step == "scrolled")
                raw->horizontalScrollBar()->setValue(raw->horizontalScrollBar()->maximum());
            if (step == "refreshed")
                driver->Trigger("actionRefresh_Column_Autosizing");
            const int first = raw->columnAt(0);
            QVERIFY2(step == "open" ? first == 0 : first > 1'900, qPrintable(step));
            for (int column = first; column <= raw->columnAt(raw->viewport()->width() - 1); ++column) {
                const int width = raw->columnWidth(column);
                raw->resizeColumnToContents(column);
                QVERIFY2(raw->columnWidth(column) == width, qPrintable(QString("%1 column %2").arg(step).arg(column)));
            }
        }
    }
};

ZEPHLANE_TEST_MAIN(TestColumnCommands)
#include "tst_columncommands.moc"
