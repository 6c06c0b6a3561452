// The file list of the main window: adding files through the dialog and by
// dropping them, refused lists, moving the focus between single files and
// combined selections, removing files, and the state in which the record
// that had the focus is gone.

#include "testenvironment.h"
#include "windowdriver.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QMimeData>
#include <QStackedWidget>
#include <QTest>

namespace {

// QObject::receivers is protected; a member pointer taken through a
// subclass asks it of any action.
struct ReceiverCount : QAction
{
    static int Of(const QAction *action) { return (action->*&ReceiverCount::receivers)(SIGNAL(triggered(bool))); }
};

// The names of a list, the selected ones in brackets.
QString Names(const QListWidget *list)
{
    QStringList names;
    for (int row = 0; row < list->count(); ++row)
        names.append(list->item(row)->isSelected() ? '[' + list->item(row)->text() + ']' : list->item(row)->text());
    return names.join(' ');
}

} // namespace

class TestFileList : public QObject
{
    Q_OBJECT

    std::unique_ptr<WindowDriver> driver;

    QListWidget *List(const char *name = "fileNamesList") const { return driver->Find<QListWidget>(name); }
    QString File(const QString &name, const QString &experiment, int trials)
    {
        return driver->Write(name, WindowDriver::Stroop(experiment, trials));
    }

    // Stroop 2 rows, Stroop 3, Flanker 4, Stroop 5, Simon 6.
    void OpenFive()
    {
        driver->AddFiles({File("a.txt", "Stroop", 2), File("b.txt", "Stroop", 3), File("c.txt", "Flanker", 4),
                          File("d.txt", "Stroop", 5), File("e.txt", "Simon", 6)});
    }

    // As in a real drag, the drop reaches the window only if it accepted the entry.
    bool Drop(QMimeData &data)
    {
        QDragEnterEvent enter(QPoint(200, 200), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&driver->Window(), &enter);
        QDropEvent drop(QPointF(200, 200), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        return enter.isAccepted() && QApplication::sendEvent(&driver->Window(), &drop);
    }

    // Every command, as a menu, a click or a connection calls it; the
    // dialogs that open are closed again.
    void UseEveryCommand()
    {
        MainWindow &window = driver->Window();
        WindowDriver::ClickCell(driver->Raw(), 0, 0);
        for (QAction *action : window.findChildren<QAction *>()) {
            if (!action->menu() && !QStringList({"actionRemove_Selected_Files", "actionTalvox_On_The_Web"}).contains(action->objectName()))
                action->trigger();
        }
        for (const char *slot : {"UpdateBottomInfo", "ShowContextMenu", "OutputMergedData"})
            QVERIFY(QMetaObject::invokeMethod(&window, slot));
        WindowDriver::ClickHeader(driver->Raw(), 1);
        WindowDriver::ClickHeader(driver->Raw(), 1);
        for (int index : {2, 3, 0})
            driver->Find<QComboBox>("basisDropDown")->setCurrentIndex(index);
        driver->ShowTab(1);
        driver->ShowTab(0);
        for (QDialog *dialog : window.findChildren<QDialog *>())
            dialog->reject();
    }

private slots:
    void init() { driver = std::make_unique<WindowDriver>(); }
    void cleanup() { driver.reset(); }

    void addedFilesTakeTheFocus()
    {
        driver->AddFiles({File("a.txt", "Stroop", 2)});
        QCOMPARE(Names(List()) + " / " + Names(List("list_cloud_filenames")), "[a.txt] / [a.txt]");
        QCOMPARE(driver->Find<QStackedWidget>("stack_local_or_cloud_info")->currentIndex(), 1);
        QCOMPARE(driver->FileInfo(), "Stroop|1 file containing 2 rows");
        QCOMPARE(driver->Column(12), QStringList({"400", "401"}));
        QCOMPARE(driver->ActionStates(), "11111 1111111111 0 11");

        driver->AddFiles({File("b.txt", "Flanker", 4), File("c.txt", "Simon", 5)});
        QCOMPARE(Names(List()), "a.txt [b.txt] c.txt");
        // A click on the empty area of the local list clears its selection and nothing else.
        QTest::mouseClick(List()->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(10, List()->viewport()->height() - 5));
        QCOMPARE(Names(List()) + " " + driver->FileInfo(), "a.txt b.txt c.txt Flanker|1 file containing 4 rows");

        // The dialog opens again where the files came from; cancelled, it adds nothing.
        driver->Catcher().Clear();
        QVERIFY(driver->Window().OpenFiles());
        QCOMPARE(driver->Catcher().FileDialogs(), QStringList("Select Files to Add|" + QFileInfo(driver->Path("a.txt"))
                                                                                          .absolutePath() + "|Text (*.txt)"));
        QCOMPARE(List()->count(), 3);
    }

    void refusedListsAddNothing_data()
    {
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<QString>("message");
        QTest::newRow("one unreadable file")
            << QStringList("notes.txt") << "Zephlane|This file cannot be read. Please select a Kelmarun data file.";
        QTest::newRow("unreadable among several") << QStringList({"new.txt", "notes.txt"})
            << "Zephlane|One of these files cannot be read. Please select Kelmarun data files.";
        QTest::newRow("already open after a new one") << QStringList({"new.txt", "open.txt"})
            << "Talvox Zephlane|One of the files that you have selected has already been opened.";
    }

    void refusedListsAddNothing()
    {
        QFETCH(QStringList, names);
        QFETCH(QString, message);
        driver->AddFiles({File("open.txt", "Stroop", 2)});
        File("new.txt", "Flanker", 3);
        QFile notes(driver->Path("notes.txt"));
        QVERIFY(notes.open(QIODevice::WriteOnly) && notes.write("Shopping list\nmilk\n") > 0);
        notes.close();
        driver->Catcher().Clear();
        for (QString &name : names)
            name = driver->Path(name);
        QVERIFY(!driver->Window().OpenFiles(names));
        QCOMPARE(driver->Catcher().Messages(), QStringList(message));
        QCOMPARE(Names(List()) + " / " + Names(List("list_cloud_filenames")), "[open.txt] / [open.txt]");
        QCOMPARE(driver->FileInfo(), "Stroop|1 file containing 2 rows");
    }

    void droppedUrlsAreOpenedWithoutMovingTheDirectory()
    {
        driver->AddFiles({File("a.txt", "Stroop", 2)});
        QMimeData text;
        text.setText("a.txt");
        QVERIFY(!Drop(text));
        QVERIFY(QDir(driver->Path("")).mkdir("dropped"));
        QMimeData urls;
        urls.setUrls({QUrl::fromLocalFile(File("dropped/b.txt", "Flanker", 3)),
                      QUrl::fromLocalFile(File("dropped/c.txt", "Simon", 4))});
        QVERIFY(Drop(urls));
        QCOMPARE(Names(List()), "a.txt [b.txt] c.txt");
        // Only a list that the dialog gave moves the dialog's directory.
        driver->AddFiles({});
        QCOMPARE(driver->Catcher().FileDialogs().last().section('|', 1, 1), QFileInfo(driver->Path("a.txt")).absolutePath());
    }

    void focusFollowsTheSelection_data()
    {
        QTest::addColumn<QList<int>>("rows");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("lastTime");
        QTest::newRow("one file") << QList<int>{2} << "Flanker|1 file containing 4 rows" << "403";
        QTest::newRow("one experiment") << QList<int>{0, 3, 1} << "Stroop|3 files containing 10 rows" << "402";
        QTest::newRow("one different") << QList<int>{0, 1, 2} << "Different experiments|3 files containing 9 rows" << "403";
        // A later file of the first experiment does not bring the name back.
        QTest::newRow("first again") << QList<int>{0, 2, 3} << "Different experiments|3 files containing 11 rows" << "404";
        // Files are combined in the order they were selected.
        QTest::newRow("selection order") << QList<int>{4, 2} << "Different experiments|2 files containing 10 rows" << "403";
    }

    void focusFollowsTheSelection()
    {
        QFETCH(QList<int>, rows);
        QFETCH(QString, shown);
        QFETCH(QString, lastTime);
        OpenFive();
        driver->ClickRows({1, 2});
        driver->ClickRows(rows);
        QCOMPARE(driver->FileInfo(), shown);
        QCOMPARE(driver->Column(12).last(), lastTime);
    }

    void addingToACombinedViewSkipsOneNewFile_data()
    {
        QTest::addColumn<QStringList>("added");
        QTest::addColumn<QString>("names");
        QTest::addColumn<int>("columns");
        // The new rows are counted with the combined record still there, so the
        // second new file takes the focus, and the removal after it takes that file.
        QTest::newRow("two new files") << QStringList({"d.txt", "e.txt"}) << "a.txt b.txt c.txt [d.txt]" << 17;
        // The combined record, which had the focus, is dropped and nothing takes
        // its place: the blank grid shows, and the removal finds nothing to remove.
        QTest::newRow("one new file") << QStringList("d.txt") << "a.txt b.txt c.txt d.txt" << 50;
    }

    void addingToACombinedViewSkipsOneNewFile()
    {
        QFETCH(QStringList, added);
        QFETCH(QString, names);
        QFETCH(int, columns);
        driver->AddFiles({File("a.txt", "Stroop", 2), File("b.txt", "Stroop", 3), File("c.txt", "Flanker", 4)});
        driver->ClickRows({0, 2});
        for (QString &name : added)
            name = File(name, "Simon", 5);
        driver->AddFiles(added);
        driver->Click("minusButton");
        QCOMPARE(Names(List()), names);
        QCOMPARE(driver->Raw()->model()->columnCount(), columns);
        UseEveryCommand();
        // A later focus change finds every record in its place.
        driver->ClickRows({1, 3});
        UseEveryCommand();
        QCOMPARE(driver->FileInfo(), "Different experiments|2 files containing 8 rows");
    }

    void removingFilesFocusesTheRowAbove_data()
    {
        QTest::addColumn<QList<int>>("rows");
        QTest::addColumn<QString>("shown");
        QTest::newRow("middle") << QList<int>{2} << "a.txt [b.txt] d.txt e.txt Stroop|1 file containing 3 rows";
        QTest::newRow("first") << QList<int>{0} << "[b.txt] c.txt d.txt e.txt Stroop|1 file containing 3 rows";
        QTest::newRow("combined") << QList<int>{0, 1} << "[c.txt] d.txt e.txt Flanker|1 file containing 4 rows";
    }

    void removingFilesFocusesTheRowAbove()
    {
        QFETCH(QList<int>, rows);
        QFETCH(QString, shown);
        OpenFive();
        driver->ClickRows(rows);
        driver->Click("minusButton");
        QCOMPARE(Names(List()) + " " + driver->FileInfo(), shown);
    }

    void removingEveryFileLeavesTheBlankGrid()
    {
        driver->AddFiles({File("a.txt", "Stroop", 2), File("b.txt", "Stroop", 3)});
        driver->ClickRows({0, 1});
        driver->Trigger("actionRemove_Selected_Files");
        QCOMPARE(List()->count(), 0);
        QCOMPARE(driver->FileInfo(), "(none)|No files selected");
        QCOMPARE(driver->Find<QStackedWidget>("stack_local_or_cloud_info")->currentIndex(), 0);
        QCOMPARE(driver->ActionStates(), "00000 0000000000 0 11");
        UseEveryCommand();
        const QAbstractItemModel *blank = driver->Raw()->model();
        QCOMPARE(QSize(blank->columnCount(), blank->rowCount()), QSize(50, 50));
        driver->AddFiles({File("f.txt", "Simon", 7)});
        QCOMPARE(driver->FileInfo() + " " + driver->ActionStates(), "Simon|1 file containing 7 rows 11111 1111111111 0 11");
    }

    // Removing works on the local list alone: the cloud list keeps the names
    // until it is rebuilt, and a click on such a name reaches no record.
    void cloudListKeepsRemovedNamesAndItsSelection()
    {
        driver->AddFiles({File("a.txt", "Stroop", 2), File("b.txt", "Flanker", 3), File("c.txt", "Simon", 4)});
        driver->ClickRows({2});
        driver->Find<QTabWidget>("tab_cloud_or_local_files")->setCurrentIndex(0);
        driver->Find<QStackedWidget>("stack_cloud")->setCurrentIndex(1);
        QListWidget *cloud = List("list_cloud_filenames");
        driver->Trigger("actionRemove_Selected_Files");
        driver->ClickRows({1}, cloud);
        driver->ClickRows({2}, cloud);
        QCOMPARE(Names(List()) + " / " + Names(cloud), "a.txt [b.txt] / a.txt b.txt [c.txt]");
        QCOMPARE(driver->FileInfo(), "Flanker|1 file containing 3 rows");
        // A press or a double click on the empty area keeps the selection.
        const QPoint below(10, cloud->viewport()->height() - 5);
        QTest::mouseClick(cloud->viewport(), Qt::LeftButton, Qt::NoModifier, below);
        QTest::mouseDClick(cloud->viewport(), Qt::LeftButton, Qt::NoModifier, below);
        QCOMPARE(Names(cloud), "a.txt b.txt [c.txt]");
        driver->ClickRows({0, 2}, cloud);
        QCOMPARE(driver->Column(12), QStringList({"400", "401"}));
    }

    // Copy is connected at each focus change and never disconnected; the
    // Edit menu has a connection of its own.
    void everyFocusChangeAddsACopyConnection()
    {
        const QAction *copy = driver->Find<QAction>("actionCopy");
        const int menu = ReceiverCount::Of(copy);
        driver->AddFiles({File("a.txt", "Stroop", 2), File("b.txt", "Flanker", 3)});
        // Both lists select the new row, and each selection moves the focus.
        QCOMPARE(ReceiverCount::Of(copy), menu + 2);
        driver->ClickRows({1});
        driver->ClickRows({0, 1});
        QCOMPARE(ReceiverCount::Of(copy), menu + 5);
        driver->ClickRows({0});
        driver->Click("minusButton");
        QCOMPARE(ReceiverCount::Of(copy), menu + 7);
    }
};

ZEPHLANE_TEST_MAIN(TestFileList)
#include "tst_filelist.moc"
