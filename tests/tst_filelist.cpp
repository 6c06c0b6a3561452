// SPDX-License-Identifier: GPL-3.0-or-later
// The file list of the main window: adding files through the dialog and by
// dropping them, refused lists, moving the focus between single files and
// combined selections, removing files, and the state in which the record
// that had the focus is gone.

#include "filecombiner.h"
#include "filetext.h"
#include "windowdriver.h"

#include <QComboBox>
#include <QDialog>
#include <QMimeData>
#include <QSettings>
#include <QScopeGuard>
#include <QStackedWidget>

#include <sys/resource.h>

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
    QListWidget *CloudList() const { return List("list_cloud_filenames"); }
    // The local list, then what the window says of the file in focus.
    QString Shown() const { return Names(List()) + ' ' + driver->FileInfo(); }
    // Both lists, the info page, the file in focus and the actions that are on.
    QString Window() const
    {
        const int page = driver->Find<QStackedWidget>("stack_local_or_cloud_info")->currentIndex();
        return Names(CloudList()) + " | " + Shown() + QString(" | page %1 | ").arg(page) + driver->ActionStates();
    }

    // Writes files given as "name experiment rows", such as "a Stroop 2, b Flanker 3", as a.txt and b.txt.
    QStringList Files(const QString &list)
    {
        QStringList paths;
        for (const QString &file : list.split(", ")) {
            const QStringList parts = file.split(' ');
            paths.append(driver->Write(parts[0] + ".txt", WindowDriver::Stroop(parts[1], parts[2].toInt())));
        }
        return paths;
    }

    // Drags `data` onto the window and drops it there; whether the window
    // took both.
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
            if (!action->menu() && action->objectName() != "actionRemove_Selected_Files" && action->objectName() != "actionTalvox_On_The_Web")
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

    // The first new file takes the focus in both lists. A click on the empty
    // area of the local list clears its selection and nothing else. Dropped
    // URLs are opened, text is not; only a list that the dialog gave moves the
    // dialog's directory, and a cancelled dialog adds nothing.
    void addingFilesByDialogAndByDropping()
    {
        driver->AddFiles(Files("a Stroop 2"));
        QCOMPARE(Window(), "[a.txt] | [a.txt] Stroop|1 file containing 2 rows | page 1 | 11111 1111111111 0 11");
        driver->AddFiles(Files("b Flanker 4, c Simon 5"));
        QTest::mouseClick(List()->viewport(), Qt::LeftButton, {}, QPoint(10, List()->viewport()->height() - 5));
        QCOMPARE(Window(), "a.txt [b.txt] c.txt | a.txt b.txt c.txt Flanker|1 file containing 4 rows | page 1 | 11111 1111111111 0 11");

        QMimeData text;
        text.setText("a.txt");
        QMimeData urls;
        QVERIFY(QDir(driver->Path("")).mkdir("dropped"));
        urls.setUrls({QUrl::fromLocalFile(Files("dropped/d Stroop 3")[0]), QUrl::fromLocalFile(Files("dropped/e Simon 4")[0])});
        QString accepted;
        for (QMimeData *data : {&text, &urls})
            accepted += Drop(*data) ? '1' : '0';
        QCOMPARE(accepted + ' ' + Shown(), "01 a.txt b.txt c.txt [d.txt] e.txt Stroop|1 file containing 3 rows");
        driver->AddFiles({});
        QCOMPARE(List()->count(), 5);
        driver->Window().close();
        QCOMPARE(driver->Catcher().FileDialogs().last().section('|', 1, 1), QFileInfo(driver->Path("a.txt")).absolutePath());
        QCOMPARE(QSettings("Talvox", "Zephlane").value("MainWindow/dir").toString(), QFileInfo(driver->Path("a.txt")).absolutePath());
    }

    // A drop of a thousand files, more than the process may hold open at
    // once, adds them all in order, and selecting them all combines them.
    void droppingAThousandFiles()
    {
        rlimit openFiles{};
        QCOMPARE(getrlimit(RLIMIT_NOFILE, &openFiles), 0);
        const rlimit saved = openFiles;
        openFiles.rlim_cur = 500;
        QCOMPARE(setrlimit(RLIMIT_NOFILE, &openFiles), 0);
        const auto restore = qScopeGuard([&] { setrlimit(RLIMIT_NOFILE, &saved); });
        QList<QUrl> urls;
        for (int i = 0; i < 1000; ++i)
            urls.append(QUrl::fromLocalFile(driver->Write(QString("f%1.txt").arg(i, 3, 10, QChar('0')), WindowDriver::Stroop("Stroop", 2))));
        QMimeData data;
        data.setUrls(urls);
        QVERIFY(Drop(data));
        QCOMPARE(List()->count(), 1000);
        QCOMPARE(List()->item(0)->text() + ' ' + List()->item(999)->text() + ' ' + driver->FileInfo(), "f000.txt f999.txt Stroop|1 file containing 2 rows");
        List()->selectAll();
        QCOMPARE(driver->FileInfo(), "Stroop|1000 files containing 2000 rows");
    }

    void refusedListsAddNothing_data()
    {
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<QString>("message");
        QTest::newRow("one unreadable file")
            << QStringList("notes.txt") << "Zephlane|This file cannot be read. Please select a Kelmarun data file.";
        QTest::newRow("unreadable among several")
            << QStringList({"new.txt", "notes.txt"}) << "Zephlane|One of these files cannot be read. Please select Kelmarun data files.";
        QTest::newRow("a directory among several")
            << QStringList({"new.txt", "folder"}) << "Zephlane|One of these files cannot be read. Please select Kelmarun data files.";
        QTest::newRow("already open after a new one")
            << QStringList({"new.txt", "open.txt"}) << "Talvox Zephlane|One of the files that you have selected has already been opened.";
    }

    void refusedListsAddNothing()
    {
        QFETCH(QStringList, names);
        driver->AddFiles(Files("open Stroop 2"));
        Files("new Flanker 3");
        driver->Write("notes.txt", DataFileBuilder().Columns("milk"));
        QVERIFY(QDir(driver->Path("")).mkdir("folder"));
        for (QString &name : names)
            name = driver->Path(name);
        QVERIFY(!driver->Window().OpenFiles(names));
        QTEST(driver->Catcher().Messages().join(""), "message");
        QCOMPARE(Names(CloudList()) + ' ' + Shown(), "[open.txt] [open.txt] Stroop|1 file containing 2 rows");
    }

    void filesNotReadWholeAreRefused_data()
    {
        QTest::addColumn<QString>("open");
        QTest::addColumn<QList<int>>("selected");
        QTest::addColumn<QString>("added");
        QTest::addColumn<ReadFailure>("failure");
        QTest::addColumn<QString>("shown");
        const QString readError = "Zephlane|The file y.txt could not be read whole (read error), so it was not opened.";
        const QString memory = "Zephlane|The file y.txt could not be read whole (not enough memory), so it was not opened.";
        QTest::newRow("one of three") << "a Stroop 2" << QList<int>{0} << "x Simon 3, y Simon 4, z Simon 5" << ReadFailure::ReadError
                                      << "a.txt [x.txt] z.txt | a.txt [x.txt] z.txt Simon|1 file containing 3 rows | page 1 | 11111 1111111111 0 11 | " + readError;
        // Refusing the only new file brings back the combined view it replaced;
        // in an empty window it leaves the form as it started.
        QTest::newRow("alone, into a combined view") << "a Stroop 2, b Stroop 3" << QList<int>{0, 1} << "y Simon 4" << ReadFailure::OutOfMemory
                                                     << "[a.txt] b.txt | [a.txt] [b.txt] Stroop|2 files containing 5 rows | page 1 | 11111 1111111111 0 11 | " + memory;
        QTest::newRow("into an empty window") << "" << QList<int>{} << "y Simon 4" << ReadFailure::ReadError
                                              << " |  (experiment file name)|2 files containing 485 rows. | page 0 | 00000 0000000000 0 11 | " + readError;
    }

    // A file that the reader could not read whole enters neither list and
    // is named in a box; the rest of the drop opens as usual.
    void filesNotReadWholeAreRefused()
    {
        QFETCH(QString, open);
        QFETCH(QList<int>, selected);
        QFETCH(QString, added);
        QFETCH(ReadFailure, failure);
        if (!open.isEmpty())
            driver->AddFiles(Files(open));
        driver->ClickRows(selected);
        const QStringList paths = Files(added);
        const QString failing = driver->Path("y.txt");
        FileText::InjectFailure(failing, failure);
        const auto restore = qScopeGuard([&] { FileText::InjectFailure(failing, ReadFailure::None); });
        driver->Catcher().Clear();
        QCOMPARE(driver->Window().OpenFiles(paths), paths.size() > 1);
        QTEST(Window() + " | " + driver->Catcher().Messages().join(", "), "shown");
        UseEveryCommand();
    }

    // A selection that memory does not allow combining leaves no combined
    // record and no selection, so the table shows nothing, and a box says
    // why. Every file keeps its flags and hidden rows, and the same
    // selection combines once memory allows.
    void combiningWithoutMemoryShowsNothing()
    {
        driver->AddFiles(Files("a Stroop 2, b Stroop 3, c Flanker 4"));
        driver->ClickRows({1});
        WindowDriver::ClickCell(driver->Raw(), 0, 0);
        WindowDriver::ClickCell(driver->Raw(), 2, 3);
        driver->Trigger("actionHide_Selected_Rows");
        const auto rows = [this] { return driver->Column(12).join(' ') + " flagged " + TableContents::FlaggedRows(*driver->Raw()->model()); };
        FileCombiner::InjectFailure(true);
        auto restore = qScopeGuard([] { FileCombiner::InjectFailure(false); });
        driver->Catcher().Clear();
        driver->ClickRows({0, 1});
        QCOMPARE(Window() + " | " + driver->Catcher().Messages().join(", "),
                 "[a.txt] b.txt c.txt | a.txt b.txt c.txt (none)|No files selected | page 1 | 11111 1111111111 0 11 | "
                 "Zephlane|Not enough memory to show these files together.");
        QCOMPARE(QSize(driver->Raw()->model()->columnCount(), driver->Raw()->model()->rowCount()), QSize(50, 50));
        UseEveryCommand();
        driver->ClickRows({1});
        QCOMPARE(rows(), "400 401 flagged 0");
        restore.dismiss();
        FileCombiner::InjectFailure(false);
        driver->ClickRows({0, 1});
        QCOMPARE(driver->FileInfo() + ' ' + rows(), "Stroop|2 files containing 5 rows 400 401 400 401 flagged 2");
    }

    void focusFollowsTheSelection_data()
    {
        QTest::addColumn<QList<int>>("rows");
        QTest::addColumn<QString>("shown");
        QTest::newRow("one file") << QList<int>{2} << "Flanker|1 file containing 4 rows, last 403";
        QTest::newRow("same") << QList<int>{0, 3, 1} << "Stroop|3 files containing 10 rows, last 402";
        QTest::newRow("mixed") << QList<int>{0, 1, 2} << "Different experiments|3 files containing 9 rows, last 403";
        // A later file of the first experiment does not bring the name back.
        QTest::newRow("again") << QList<int>{0, 2, 3} << "Different experiments|3 files containing 11 rows, last 404";
        // Files are combined in the order they were selected.
        QTest::newRow("order") << QList<int>{4, 2} << "Different experiments|2 files containing 10 rows, last 403";
    }

    // From a combined view of two experiments to the rows clicked.
    void focusFollowsTheSelection()
    {
        QFETCH(QList<int>, rows);
        driver->AddFiles(Files("a Stroop 2, b Stroop 3, c Flanker 4, d Stroop 5, e Simon 6"));
        driver->ClickRows({1, 2});
        driver->ClickRows(rows);
        QTEST(driver->FileInfo() + ", last " + driver->Column(12).last(), "shown");
    }

    void addingToACombinedViewSkipsOneNewFile_data()
    {
        QTest::addColumn<QString>("added");
        QTest::addColumn<QString>("shown");
        // The new rows are counted with the combined record still there, so the
        // second new file takes the focus, and the removal after it takes that file.
        QTest::newRow("two new files") << "d Simon 5, e Simon 5" << "a.txt b.txt c.txt [d.txt] 17";
        // The combined record, which had the focus, is dropped and nothing takes
        // its place: the blank grid shows, and the removal finds nothing to remove.
        QTest::newRow("one new file") << "d Simon 5" << "a.txt b.txt c.txt d.txt 50";
    }

    // A later focus change finds every record in its place.
    void addingToACombinedViewSkipsOneNewFile()
    {
        QFETCH(QString, added);
        driver->AddFiles(Files("a Stroop 2, b Stroop 3, c Flanker 4"));
        driver->ClickRows({0, 2});
        driver->AddFiles(Files(added));
        driver->Click("minusButton");
        QTEST(Names(List()) + ' ' + QString::number(driver->Raw()->model()->columnCount()), "shown");
        UseEveryCommand();
        driver->ClickRows({1, 3});
        UseEveryCommand();
        QCOMPARE(driver->FileInfo(), "Different experiments|2 files containing 8 rows");
    }

    // The row above the first one removed, or the new first row, takes the
    // focus; a combined selection goes with its files, down to none.
    void removingFilesDownToNone()
    {
        driver->AddFiles(Files("a Stroop 2, b Stroop 3, c Flanker 4, d Stroop 5"));
        driver->ClickRows({2});
        driver->Click("minusButton");
        QCOMPARE(Shown(), "a.txt [b.txt] d.txt Stroop|1 file containing 3 rows");
        driver->ClickRows({0});
        driver->Click("minusButton");
        QCOMPARE(Shown(), "[b.txt] d.txt Stroop|1 file containing 3 rows");
        driver->ClickRows({0, 1});
        driver->Trigger("actionRemove_Selected_Files");
        QCOMPARE(Window(), "[a.txt] b.txt c.txt d.txt |  (none)|No files selected | page 0 | 00000 0000000000 0 11");
        UseEveryCommand();
        QCOMPARE(QSize(driver->Raw()->model()->columnCount(), driver->Raw()->model()->rowCount()), QSize(50, 50));
    }

    // Removing works on the local list alone: the cloud list keeps the names
    // until it is rebuilt, and a click on such a name reaches no record. A
    // press or a double click on its empty area keeps the selection.
    void cloudListKeepsRemovedNamesAndItsSelection()
    {
        driver->AddFiles(Files("a Stroop 2, b Flanker 3, c Simon 4"));
        driver->ClickRows({2});
        driver->Find<QTabWidget>("tab_cloud_or_local_files")->setCurrentIndex(0);
        driver->Find<QStackedWidget>("stack_cloud")->setCurrentIndex(1);
        driver->Trigger("actionRemove_Selected_Files");
        driver->ClickRows({1}, CloudList());
        driver->ClickRows({2}, CloudList());
        const QPoint below(10, CloudList()->viewport()->height() - 5);
        QTest::mouseClick(CloudList()->viewport(), Qt::LeftButton, {}, below);
        QTest::mouseDClick(CloudList()->viewport(), Qt::LeftButton, {}, below);
        QCOMPARE(Names(CloudList()) + ' ' + Shown(), "a.txt b.txt [c.txt] a.txt [b.txt] Flanker|1 file containing 3 rows");
        driver->ClickRows({0, 2}, CloudList());
        QCOMPARE(driver->Column(12), QStringList({"400", "401"}));
    }

    // Copy is connected at each focus change and never disconnected; the
    // Edit menu has a connection of its own. Both lists select a new row,
    // and each selection moves the focus.
    void everyFocusChangeAddsACopyConnection()
    {
        const QAction *copy = driver->Find<QAction>("actionCopy");
        const int menu = ReceiverCount::Of(copy);
        driver->AddFiles(Files("a Stroop 2, b Flanker 3"));
        QCOMPARE(ReceiverCount::Of(copy), menu + 2);
        driver->ClickRows({1});
        driver->ClickRows({0, 1});
        QCOMPARE(ReceiverCount::Of(copy), menu + 5);
    }
};

ZEPHLANE_TEST_MAIN(TestFileList)
#include "tst_filelist.moc"
