// SPDX-License-Identifier: GPL-3.0-or-later
// Edit > Copy and the arrow keys on the table headers, as a user selects
// cells and presses keys.

#include "windowdriver.h"

class TestClipboard : public QObject
{
    Q_OBJECT

    std::unique_ptr<WindowDriver> driver;

    // Steps: "row N" or "column N" clicks a header section, "cell R C" a cell,
    // "section R C" a cell of the summary tab's table, an arrow key's name
    // presses it where the focus is; each with "shift-" or "ctrl-" before it
    // held down. "summary" shows that tab; other steps trigger that action.
    void Act(const QString &step)
    {
        const QStringList words = step.section('-', -1).split(' ');
        const Qt::KeyboardModifiers modifiers = step.startsWith("shift-") ? Qt::ShiftModifier
                                                : step.startsWith("ctrl-") ? Qt::ControlModifier : Qt::NoModifier;
        const QStringList arrows{"Left", "Up", "Right", "Down"};
        QHeaderView *header = words[0] == "row" ? driver->Raw()->verticalHeader() : driver->Raw()->horizontalHeader();
        const int section = words.value(1).toInt();
        const int middle = header->sectionViewportPosition(section) + header->sectionSize(section) / 2;
        if (words[0] == "row" || words[0] == "column")
            QTest::mouseClick(header->viewport(), Qt::LeftButton, modifiers,
                              words[0] == "row" ? QPoint(10, middle) : QPoint(middle, 10));
        else if (words[0] == "cell" || words[0] == "section")
            WindowDriver::ClickCell(words[0] == "cell" ? driver->Raw() : driver->Sections(), section,
                                    words[2].toInt(), Qt::LeftButton, modifiers);
        else if (arrows.contains(words[0]))
            QTest::keyClick(QApplication::focusWidget(), Qt::Key(Qt::Key_Left + arrows.indexOf(words[0])), modifiers);
        else if (step == "summary")
            driver->ShowTab(1);
        else
            driver->Trigger(step);
    }

private slots:
    // Between Block and Error Code stands an empty column, Note.
    void init()
    {
        driver = std::make_unique<WindowDriver>();
        driver->Open(DataFileBuilder()
                         .Titles({"Block", "Note", "Error", "Reaction"}, {"Name", "", "Code", "Time"})
                         .Row({"B1", "", "C", "300"})
                         .Row({"B2", "", "E", "400"})
                         .Row({"B1", "", "C", "500"}));
        // Focus follows clicks only in the active window; the file dialog took that.
        driver->Window().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&driver->Window()));
    }
    void cleanup() { driver.reset(); }

    // The result: the text copied, then after arrow keys on a header the
    // current cell and whether the header kept the focus.
    void copiesTheSelectionInTheOrderItWasMade_data()
    {
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<QString>("result");
        QTest::newRow("two whole rows") << QStringList{"row 0", "shift-row 1"} << "\tB1\t\tC\t300\n\tB2\t\tE\t400";
        QTest::newRow("out of order") << QStringList{"cell 2 4", "ctrl-cell 0 1", "ctrl-cell 0 3"} << "500\nB1\tC";
        QTest::newRow("hidden column inside the row")
            << QStringList{"actionHide_Empty_Columns", "row 2"} << "\tB1\t\tC\t500";
        QTest::newRow("summary tab") << QStringList{"row 0", "summary", "section 0 0"} << "2";
        QTest::newRow("nothing selected") << QStringList{} << "";
        QTest::newRow("right to the table") << QStringList{"column 2", "Right"} << "C|0 3 table";
        QTest::newRow("past the first column") << QStringList{"column 0", "Left"} << "|-1 -1 table";
        QTest::newRow("down to the table") << QStringList{"row 1", "Down"} << "|2 0 table";
        QTest::newRow("shift right twice")
            << QStringList{"column 2", "shift-Right", "shift-Right"} << "\tC\t300\n\tE\t400\n\tC\t500|0 4 header";
        QTest::newRow("the edge away from the anchor moves")
            << QStringList{"column 3", "shift-Left", "shift-Left", "shift-Right"} << "\tC\n\tE\n\tC|0 2 header";
        QTest::newRow("shift up from rows")
            << QStringList{"row 2", "shift-Up"} << "\tB2\t\tE\t400\n\tB1\t\tC\t500|1 0 header";
    }

    void copiesTheSelectionInTheOrderItWasMade()
    {
        QFETCH(QStringList, steps);
        QFETCH(QString, result);
        for (const QString &step : steps)
            Act(step);
        QGuiApplication::clipboard()->setText("stale");
        driver->Trigger("actionCopy");
        QString copied = QGuiApplication::clipboard()->text();
        const QModelIndex current = driver->Raw()->currentIndex();
        if (steps.join(' ').contains(QRegularExpression("Left|Right|Up|Down")))
            copied += QString("|%1 %2 %3").arg(current.row()).arg(current.column())
                          .arg(QApplication::focusWidget() == driver->Raw() ? "table" : "header");
        QCOMPARE(copied, result);
    }
};

ZEPHLANE_TEST_MAIN(TestClipboard)
#include "tst_clipboard.moc"
