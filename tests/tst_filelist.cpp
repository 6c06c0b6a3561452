// The file list of the main window: adding files through the dialog and by
// dropping them, refused lists, moving the focus between single files and
// combined selections, removing files, and the state in which the record
// that had the focus is gone.

#include "mergedialog.h"
#include "testenvironment.h"
#include "windowdriver.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QStackedWidget>
#include <QTableView>
#include <QTest>

#include <algorithm>
#include <functional>

namespace {

// QObject::receivers is protected; naming it through a class that makes it
// public gives a member pointer that any QAction can be asked with.
struct ReceiverCount : QAction
{
    using QObject::receivers;
};

int CopyConnections(const QAction *copy)
{
    int (QObject::*receivers)(const char *) const = &ReceiverCount::receivers;
    return (copy->*receivers)(SIGNAL(triggered(bool)));
}

QStringList Texts(const QListWidget *list)
{
    QStringList texts;
    for (int row = 0; row < list->count(); ++row)
        texts.append(list->item(row)->text());
    return texts;
}

QList<int> SelectedRows(const QListWidget *list)
{
    QList<int> rows;
    for (const QListWidgetItem *item : list->selectedItems())
        rows.append(list->row(item));
    std::sort(rows.begin(), rows.end());
    return rows;
}

// The actions that follow whether any file is open.
const char *const kFileActions[] = {
    "actionRemove_Selected_Files", "actionMerge_Selected_Files", "actionSelect_All_Rows",
    "actionSelect_Flagged_Rows",   "actionSelect_Unflagged_Rows", "actionFlag_Special",
    "actionHide_Selected_Rows",    "actionHide_Flagged_Rows",     "actionHide_Unflagged_Rows",
    "actionShow_All_Rows",         "actionHide_Empty_Columns",    "actionShow_All_Columns",
    "actionRefresh_Column_Autosizing"};

} // namespace

class TestFileList : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void addingOneFileFocusesIt();
    void addingSeveralFocusesTheFirstNewOne();
    void aListFromACallerLeavesTheDirectoryAlone();
    void cancelledDialogAddsNothing();
    void refusedListsAddNothing_data();
    void refusedListsAddNothing();
    void droppedFilesAreOpened();
    void dragEnterAcceptsOnlyUrls();
    void focusMovesBetweenSingleFiles();
    void filesOfOneExperimentKeepTheName();
    void oneDifferentExperimentIsEnough();
    void addingToACombinedViewSelectsTheSecondNewFile();
    void focusedRecordDroppedByAddingOneFile();
    void removingAFileFocusesTheRowAbove();
    void removingTheFirstRowFocusesTheNewFirstRow();
    void removalAnchorIsTheFirstItemByAddress();
    void removingEveryFileLeavesTheEmptyGrid();
    void removalOnTheCloudTabLeavesStaleNames();
    void emptyAreaClickOnTheLocalListClearsOnlyTheSelection();
    void emptyAreaClickOnTheCloudListIsSwallowed();
    void pressOverACellEnablesFlagSelection();
    void everyFocusChangeAddsACopyConnection();

private:
    QString File(const QString &name, const QString &experiment, int trials);
    void OpenFive();
    QListWidget *List() const { return driver->Find<QListWidget>("fileNamesList"); }
    QString Shown(const QString &label) const { return driver->Find<QLabel>(label)->text(); }
    int Page(const QString &stack) const { return driver->Find<QStackedWidget>(stack)->currentIndex(); }
    const QAbstractItemModel *RawModel() const { return driver->Find<QTableView>("rawDataView")->model(); }
    void UseEveryCommand();

    std::unique_ptr<WindowDriver> driver;
};

void TestFileList::init()
{
    driver = std::make_unique<WindowDriver>();
}

void TestFileList::cleanup()
{
    driver.reset();
}

QString TestFileList::File(const QString &name, const QString &experiment, int trials)
{
    return driver->Write(name, WindowDriver::Stroop(experiment, trials));
}

// Stroop 2 rows, Stroop 3, Flanker 4, Stroop 5, Simon 6.
void TestFileList::OpenFive()
{
    driver->AddFiles({File("a.txt", "Stroop", 2), File("b.txt", "Stroop", 3), File("c.txt", "Flanker", 4),
                      File("d.txt", "Stroop", 5), File("e.txt", "Simon", 6)});
}

void TestFileList::addingOneFileFocusesIt()
{
    driver->AddFiles({File("stroop.txt", "Stroop", 3)});
    QCOMPARE(Texts(List()), QStringList("stroop.txt"));
    QCOMPARE(Texts(driver->Find<QListWidget>("list_cloud_filenames")), QStringList("stroop.txt"));
    QCOMPARE(SelectedRows(List()), QList<int>({0}));
    QCOMPARE(Page("stack_local_or_cloud_info"), 1);
    QCOMPARE(Page("stack_xpt_filename"), 0);
    QCOMPARE(Shown("label_xpt_filename"), QString("Stroop"));
    QCOMPARE(Shown("label_file_and_rows_info"), QString("1 file containing 3 rows"));
    QCOMPARE(RawModel()->rowCount(), 3);
    QCOMPARE(RawModel()->columnCount(), 17);
    QCOMPARE(RawModel()->headerData(12, Qt::Horizontal).toString(), QString("Reaction\nTime"));

    for (const char *name : kFileActions)
        QVERIFY2(driver->Find<QAction>(name)->isEnabled(), name);
    QVERIFY(driver->Find<QPushButton>("minusButton")->isEnabled());
    QVERIFY(driver->Find<QPushButton>("mergeButton")->isEnabled());
    QVERIFY(!driver->Find<QAction>("actionFlag_Selection")->isEnabled());

    // The dialog remembers the directory of the files it gave.
    driver->Catcher().Clear();
    driver->AddFiles({});
    QCOMPARE(driver->Catcher().FileDialogs(),
             QStringList("Select Files to Add|" + QFileInfo(driver->Path("stroop.txt")).absolutePath() + "|Text (*.txt)"));
}

void TestFileList::addingSeveralFocusesTheFirstNewOne()
{
    driver->AddFiles({File("a.txt", "Stroop", 2), File("b.txt", "Stroop", 3)});
    driver->AddFiles({File("c.txt", "Flanker", 4), File("d.txt", "Simon", 5)});
    QCOMPARE(Texts(List()), QStringList({"a.txt", "b.txt", "c.txt", "d.txt"}));
    QCOMPARE(SelectedRows(List()), QList<int>({2}));
    QCOMPARE(Shown("label_xpt_filename"), QString("Flanker"));
    QCOMPARE(RawModel()->rowCount(), 4);
}

void TestFileList::aListFromACallerLeavesTheDirectoryAlone()
{
    QDir(driver->Path(".")).mkdir("dropped");
    driver->AddFiles({File("a.txt", "Stroop", 2)});
    QVERIFY(driver->Window().OpenFiles({File("dropped/b.txt", "Stroop", 3)}));
    QCOMPARE(Texts(List()), QStringList({"a.txt", "b.txt"}));
    driver->Catcher().Clear();
    driver->AddFiles({});
    QCOMPARE(driver->Catcher().FileDialogs().value(0).section('|', 1, 1),
             QFileInfo(driver->Path("a.txt")).absolutePath());
}

void TestFileList::cancelledDialogAddsNothing()
{
    QVERIFY(driver->Window().OpenFiles());
    QCOMPARE(driver->Catcher().FileDialogs().size(), 1);
    QCOMPARE(List()->count(), 0);
    QCOMPARE(Page("stack_local_or_cloud_info"), 0);
    QVERIFY(!driver->Find<QAction>("actionRemove_Selected_Files")->isEnabled());
}

void TestFileList::refusedListsAddNothing_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QString>("message");

    const QString unreadable = "Zephlane|This file cannot be read. Please select a Kelmarun data file.";
    const QString oneUnreadable = "Zephlane|One of these files cannot be read. Please select Kelmarun data files.";
    const QString duplicate = "Talvox Zephlane|One of the files that you have selected has already been opened.";
    QTest::newRow("one unreadable file") << QStringList("notes.txt") << unreadable;
    QTest::newRow("unreadable among several") << QStringList({"new.txt", "notes.txt"}) << oneUnreadable;
    QTest::newRow("file already open") << QStringList("open.txt") << duplicate;
    QTest::newRow("already open after a new one") << QStringList({"new.txt", "open.txt"}) << duplicate;
}

void TestFileList::refusedListsAddNothing()
{
    QFETCH(QStringList, names);
    QFETCH(QString, message);
    driver->AddFiles({File("open.txt", "Stroop", 2)});
    File("new.txt", "Flanker", 3);
    QFile notes(driver->Path("notes.txt"));
    QVERIFY(notes.open(QIODevice::WriteOnly));
    notes.write("Shopping list\nmilk\neggs\n");
    notes.close();
    driver->Catcher().Clear();

    QStringList paths;
    for (const QString &name : names)
        paths.append(driver->Path(name));
    QVERIFY(!driver->Window().OpenFiles(paths));
    QCOMPARE(driver->Catcher().Messages(), QStringList(message));
    QCOMPARE(Texts(List()), QStringList("open.txt"));
    QCOMPARE(driver->Find<QListWidget>("list_cloud_filenames")->count(), 1);
    QCOMPARE(Shown("label_xpt_filename"), QString("Stroop"));
    QCOMPARE(RawModel()->rowCount(), 2);
}

void TestFileList::droppedFilesAreOpened()
{
    const QString first = File("a.txt", "Stroop", 2);
    const QString second = File("b.txt", "Flanker", 3);
    auto drop = [this](const QStringList &paths) {
        QMimeData data;
        QList<QUrl> urls;
        for (const QString &path : paths)
            urls.append(QUrl::fromLocalFile(path));
        data.setUrls(urls);
        // As in a real drag, the drop goes to the widget that accepted the entry.
        QDragEnterEvent enter(QPoint(200, 200), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&driver->Window(), &enter);
        QDropEvent event(QPointF(200, 200), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&driver->Window(), &event);
    };
    drop({first, second});
    QCOMPARE(Texts(List()), QStringList({"a.txt", "b.txt"}));
    QCOMPARE(Shown("label_xpt_filename"), QString("Stroop"));

    // A drop that holds a file already open is refused as a whole.
    drop({File("c.txt", "Simon", 4), second});
    QCOMPARE(driver->Catcher().Messages(),
             QStringList("Talvox Zephlane|One of the files that you have selected has already been opened."));
    QCOMPARE(List()->count(), 2);
}

void TestFileList::dragEnterAcceptsOnlyUrls()
{
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(File("a.txt", "Stroop", 2))});
    QDragEnterEvent withUrls(QPoint(100, 100), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&driver->Window(), &withUrls);
    QVERIFY(withUrls.isAccepted());

    QMimeData text;
    text.setText("a.txt");
    QDragEnterEvent withText(QPoint(100, 100), Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&driver->Window(), &withText);
    QVERIFY(!withText.isAccepted());
}

void TestFileList::focusMovesBetweenSingleFiles()
{
    OpenFive();
    driver->ClickRows({2});
    QCOMPARE(Shown("label_xpt_filename"), QString("Flanker"));
    QCOMPARE(Shown("label_file_and_rows_info"), QString("1 file containing 4 rows"));
    QCOMPARE(RawModel()->rowCount(), 4);
    driver->ClickRows({4});
    QCOMPARE(Shown("label_xpt_filename"), QString("Simon"));
    QCOMPARE(RawModel()->rowCount(), 6);
    QVERIFY(!driver->Find<QAction>("actionFlag_Selection")->isEnabled());
}

void TestFileList::filesOfOneExperimentKeepTheName()
{
    OpenFive();
    driver->ClickRows({0, 3, 1});
    QCOMPARE(Page("stack_xpt_filename"), 0);
    QCOMPARE(Shown("label_xpt_filename"), QString("Stroop"));
    QCOMPARE(Shown("label_file_and_rows_info"), QString("3 files containing 10 rows"));
    QCOMPARE(RawModel()->rowCount(), 10);

    // Back to one file: the singular text, and the focus on that file alone.
    driver->ClickRows({1});
    QCOMPARE(Shown("label_file_and_rows_info"), QString("1 file containing 3 rows"));
    QCOMPARE(RawModel()->rowCount(), 3);
}

void TestFileList::oneDifferentExperimentIsEnough()
{
    OpenFive();
    driver->ClickRows({0, 1, 2});
    QCOMPARE(Page("stack_xpt_filename"), 1);
    const QLabel *different = driver->Find<QWidget>("page_different_xpts")->findChild<QLabel *>("label_3");
    QVERIFY(different->isVisible());
    QCOMPARE(different->text(), QString("Different experiments"));
    QCOMPARE(Shown("label_file_and_rows_info"), QString("3 files containing 9 rows"));

    // A later file of the first experiment does not bring the name back.
    driver->ClickRows({0, 2, 3});
    QCOMPARE(Page("stack_xpt_filename"), 1);
    QCOMPARE(Shown("label_xpt_filename"), QString("Stroop & Flanker & Stroop"));
    QCOMPARE(RawModel()->rowCount(), 11);

    driver->ClickRows({4});
    QCOMPARE(Page("stack_xpt_filename"), 0);
    QCOMPARE(Shown("label_xpt_filename"), QString("Simon"));

    // Files are combined in the order they were selected.
    driver->ClickRows({4, 2});
    QCOMPARE(Shown("label_xpt_filename"), QString("Simon & Flanker"));
    QCOMPARE(RawModel()->index(5, 12).data().toString(), QString("405"));
    QCOMPARE(RawModel()->rowCount(), 10);
}

// The new rows are counted with the combined record still there, so the
// row selected is one further down than the first new file.
void TestFileList::addingToACombinedViewSelectsTheSecondNewFile()
{
    driver->AddFiles({File("a.txt", "Stroop", 2), File("b.txt", "Stroop", 3), File("c.txt", "Flanker", 4)});
    driver->ClickRows({0, 1});
    driver->AddFiles({File("d.txt", "Stroop", 5), File("e.txt", "Simon", 6)});
    QCOMPARE(SelectedRows(List()), QList<int>({4}));
    QCOMPARE(Shown("label_xpt_filename"), QString("Simon"));
    QCOMPARE(Shown("label_file_and_rows_info"), QString("1 file containing 6 rows"));
    QCOMPARE(RawModel()->rowCount(), 6);
}

// Every command a user can reach, and every slot a later connection could
// call, with the arguments that a click or a menu would give.
void TestFileList::UseEveryCommand()
{
    MainWindow &window = driver->Window();
    // Removing is tried where it has nothing to remove; the website would
    // start a browser.
    const QStringList skipped = {"actionRemove_Selected_Files", "actionTalvox_On_The_Web"};
    for (QAction *action : window.findChildren<QAction *>()) {
        if (action->menu() == nullptr && !skipped.contains(action->objectName()))
            action->trigger();
    }
    for (QDialog *dialog : window.findChildren<QDialog *>())
        dialog->reject();
    for (const char *button : {"plusButton", "mergeButton"})
        QTest::mouseClick(driver->Find<QPushButton>(button), Qt::LeftButton);
    for (int index : {2, 3, 1, 0})
        driver->Find<QComboBox>("basisDropDown")->setCurrentIndex(index);
    for (int index : {2, 1, 0})
        driver->Find<QComboBox>("filterDropDown")->setCurrentIndex(index);
    driver->Find<QTabWidget>("tabWidget")->setCurrentIndex(1);
    driver->Find<QTabWidget>("tabWidget")->setCurrentIndex(0);

    window.SelectAllRows();
    window.SelectFlaggedRows();
    window.SelectUnflaggedRows();
    window.FlagRow(RawModel()->index(0, 0));
    window.HideSelectedRows();
    window.HideFlaggedRows();
    window.HideUnflaggedRows();
    window.ShowAllRows();
    window.HideEmptyColumns();
    window.HideSelectedColumns();
    window.ShowAllColumns();
    window.AutosizeColumns();
    window.OpenFlagSpecialDialog();
    window.OpenMergeDialog();
    window.OutputMergedData();
    window.UpdateBottomInfo();
    window.UpdateSubDropDown(2);
    window.UpdateSubDropDown(3);
    window.CheckToSort(1);
    window.CheckToSort(1);
    window.Sort(2);
    window.CancelSortPrep();
    window.TabsSetActionsEnabled(1);
    window.TabsSetActionsEnabled(0);
    window.CopyHelper();
    for (QDialog *dialog : window.findChildren<QDialog *>())
        dialog->reject();
}

// Adding one file to a combined view drops the combined record, which had
// the focus, and selects a row past the end: nothing has the focus then.
void TestFileList::focusedRecordDroppedByAddingOneFile()
{
    driver->AddFiles({File("a.txt", "Stroop", 2), File("b.txt", "Stroop", 3), File("c.txt", "Flanker", 4)});
    driver->ClickRows({0, 2});
    driver->AddFiles({File("d.txt", "Simon", 5)});
    QCOMPARE(List()->count(), 4);
    QVERIFY(List()->selectedItems().isEmpty());
    QCOMPARE(RawModel()->columnCount(), 50);

    // With no record in focus there is nothing to list.
    driver->Find<QTabWidget>("tabWidget")->setCurrentIndex(1);
    driver->Find<QComboBox>("basisDropDown")->setCurrentIndex(3);
    QVERIFY(driver->Find<QComboBox>("specificBasisDropDown")->isVisible());
    QCOMPARE(driver->Find<QComboBox>("specificBasisDropDown")->count(), 0);
    QCOMPARE(driver->Find<QTableView>("sectionDataView")->model(), nullptr);

    driver->Catcher().Clear();
    UseEveryCommand();
    driver->Window().RemoveFiles();
    QTest::mouseClick(driver->Find<QPushButton>("minusButton"), Qt::LeftButton);
    MergeDialog *merge = driver->Window().findChild<MergeDialog *>();
    QVERIFY(!merge->isVisible());
    QCOMPARE(List()->count(), 4);
    QCOMPARE(RawModel()->columnCount(), 50);

    // A later focus change finds every record in order.
    driver->ClickRows({3});
    QCOMPARE(Shown("label_xpt_filename"), QString("Simon"));
    QCOMPARE(RawModel()->rowCount(), 5);
    driver->ClickRows({1, 3});
    QCOMPARE(Shown("label_file_and_rows_info"), QString("2 files containing 8 rows"));
    QTest::mouseClick(driver->Find<QPushButton>("mergeButton"), Qt::LeftButton);
    QVERIFY(merge->isVisible());
    merge->reject();
    UseEveryCommand();
    QCOMPARE(Shown("label_file_and_rows_info"), QString("2 files containing 8 rows"));
    QCOMPARE(SelectedRows(List()), QList<int>({1, 3}));
}

void TestFileList::removingAFileFocusesTheRowAbove()
{
    OpenFive();
    driver->ClickRows({2});
    QTest::mouseClick(driver->Find<QPushButton>("minusButton"), Qt::LeftButton);
    QCOMPARE(Texts(List()), QStringList({"a.txt", "b.txt", "d.txt", "e.txt"}));
    QCOMPARE(SelectedRows(List()), QList<int>({1}));
    QCOMPARE(Shown("label_xpt_filename"), QString("Stroop"));
    QCOMPARE(RawModel()->rowCount(), 3);

    // A combined selection goes with its files.
    driver->ClickRows({0, 1});
    driver->Find<QAction>("actionRemove_Selected_Files")->trigger();
    QCOMPARE(Texts(List()), QStringList({"d.txt", "e.txt"}));
    QCOMPARE(SelectedRows(List()), QList<int>({0}));
    QCOMPARE(Shown("label_file_and_rows_info"), QString("1 file containing 5 rows"));
}

void TestFileList::removingTheFirstRowFocusesTheNewFirstRow()
{
    OpenFive();
    driver->ClickRows({0});
    QTest::mouseClick(driver->Find<QPushButton>("minusButton"), Qt::LeftButton);
    QCOMPARE(Texts(List()), QStringList({"b.txt", "c.txt", "d.txt", "e.txt"}));
    QCOMPARE(SelectedRows(List()), QList<int>({0}));
    QCOMPARE(RawModel()->rowCount(), 3);
}

// The anchor is the row of the selected item with the lowest address, which
// need not be the topmost removed row.
void TestFileList::removalAnchorIsTheFirstItemByAddress()
{
    OpenFive();
    driver->ClickRows({1, 3});
    QList<QListWidgetItem *> items = List()->selectedItems();
    std::sort(items.begin(), items.end(), std::less<QListWidgetItem *>());
    const int anchor = List()->row(items.first());
    const QString expected = anchor == 1 ? "a.txt" : "e.txt";

    QTest::mouseClick(driver->Find<QPushButton>("minusButton"), Qt::LeftButton);
    QCOMPARE(Texts(List()), QStringList({"a.txt", "c.txt", "e.txt"}));
    QCOMPARE(List()->selectedItems().size(), 1);
    QCOMPARE(List()->selectedItems().first()->text(), expected);
}

void TestFileList::removingEveryFileLeavesTheEmptyGrid()
{
    OpenFive();
    driver->ClickRows({0, 1, 2, 3, 4});
    QTest::mouseClick(driver->Find<QPushButton>("minusButton"), Qt::LeftButton);
    QCOMPARE(List()->count(), 0);
    QCOMPARE(RawModel()->rowCount(), 50);
    QCOMPARE(RawModel()->columnCount(), 50);
    QCOMPARE(Shown("label_xpt_filename"), QString("(none)"));
    QCOMPARE(Shown("label_file_and_rows_info"), QString("No files selected"));
    QCOMPARE(Page("stack_local_or_cloud_info"), 0);
    for (const char *name : kFileActions)
        QVERIFY2(!driver->Find<QAction>(name)->isEnabled(), name);
    QVERIFY(!driver->Find<QPushButton>("minusButton")->isEnabled());
    QVERIFY(!driver->Find<QPushButton>("mergeButton")->isEnabled());
    QVERIFY(driver->Find<QAction>("actionCopy")->isEnabled());
    QVERIFY(driver->Find<QAction>("actionRow_Colors")->isEnabled());

    UseEveryCommand();
    QCOMPARE(RawModel()->columnCount(), 50);
    driver->AddFiles({File("f.txt", "Stroop", 7)});
    QCOMPARE(Shown("label_file_and_rows_info"), QString("1 file containing 7 rows"));
    QVERIFY(driver->Find<QPushButton>("minusButton")->isEnabled());
}

// Removing works on the local list alone; the cloud list keeps the names
// until it is rebuilt, and a click on such a name reaches no record.
void TestFileList::removalOnTheCloudTabLeavesStaleNames()
{
    driver->AddFiles({File("a.txt", "Stroop", 2), File("b.txt", "Flanker", 3), File("c.txt", "Simon", 4)});
    driver->ClickRows({2});
    driver->Find<QTabWidget>("tab_cloud_or_local_files")->setCurrentIndex(0);
    driver->Find<QStackedWidget>("stack_cloud")->setCurrentIndex(1);
    QListWidget *cloud = driver->Find<QListWidget>("list_cloud_filenames");
    QVERIFY(cloud->isVisible());

    driver->Find<QAction>("actionRemove_Selected_Files")->trigger();
    QCOMPARE(Texts(List()), QStringList({"a.txt", "b.txt"}));
    QCOMPARE(Texts(cloud), QStringList({"a.txt", "b.txt", "c.txt"}));

    driver->ClickRows(cloud, {1});
    QCOMPARE(Shown("label_xpt_filename"), QString("Flanker"));
    driver->ClickRows(cloud, {2});
    QCOMPARE(Shown("label_xpt_filename"), QString("Flanker"));
    QCOMPARE(RawModel()->rowCount(), 3);
    driver->ClickRows(cloud, {0, 2});
    QCOMPARE(Shown("label_xpt_filename"), QString("Stroop"));
    QCOMPARE(RawModel()->rowCount(), 2);
}

void TestFileList::emptyAreaClickOnTheLocalListClearsOnlyTheSelection()
{
    driver->AddFiles({File("a.txt", "Stroop", 2), File("b.txt", "Flanker", 3)});
    driver->ClickRows({1});
    const QPoint below(10, List()->viewport()->height() - 5);
    QTest::mouseClick(List()->viewport(), Qt::LeftButton, Qt::NoModifier, below);
    QVERIFY(List()->selectedItems().isEmpty());
    QCOMPARE(Shown("label_xpt_filename"), QString("Flanker"));
    QCOMPARE(RawModel()->rowCount(), 3);
    QCOMPARE(Page("stack_local_or_cloud_info"), 1);
}

void TestFileList::emptyAreaClickOnTheCloudListIsSwallowed()
{
    driver->AddFiles({File("a.txt", "Stroop", 2), File("b.txt", "Flanker", 3)});
    driver->Find<QTabWidget>("tab_cloud_or_local_files")->setCurrentIndex(0);
    driver->Find<QStackedWidget>("stack_cloud")->setCurrentIndex(1);
    QListWidget *cloud = driver->Find<QListWidget>("list_cloud_filenames");
    driver->ClickRows(cloud, {1});
    QCOMPARE(Shown("label_xpt_filename"), QString("Flanker"));

    const QPoint below(10, cloud->viewport()->height() - 5);
    QTest::mouseClick(cloud->viewport(), Qt::LeftButton, Qt::NoModifier, below);
    QTest::mouseDClick(cloud->viewport(), Qt::LeftButton, Qt::NoModifier, below);
    QCOMPARE(SelectedRows(cloud), QList<int>({1}));
    driver->ClickRows(cloud, {0});
    QCOMPARE(SelectedRows(cloud), QList<int>({0}));
    QCOMPARE(Shown("label_xpt_filename"), QString("Stroop"));
}

void TestFileList::pressOverACellEnablesFlagSelection()
{
    driver->AddFiles({File("a.txt", "Stroop", 2)});
    QTableView *view = driver->Find<QTableView>("rawDataView");
    QAction *flag = driver->Find<QAction>("actionFlag_Selection");
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier,
                      view->visualRect(view->model()->index(1, 3)).center());
    QVERIFY(flag->isEnabled());
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(10, view->viewport()->height() - 5));
    QVERIFY(!flag->isEnabled());
}

// Copy is connected at each focus change and never disconnected.
void TestFileList::everyFocusChangeAddsACopyConnection()
{
    // The Edit menu has its own connection to every action in it.
    const QAction *copy = driver->Find<QAction>("actionCopy");
    const int menu = CopyConnections(copy);
    driver->AddFiles({File("a.txt", "Stroop", 2), File("b.txt", "Flanker", 3)});
    // Both lists select the new row, and each selection moves the focus.
    QCOMPARE(CopyConnections(copy), menu + 2);
    driver->ClickRows({1});
    QCOMPARE(CopyConnections(copy), menu + 3);
    driver->ClickRows({0, 1});
    QCOMPARE(CopyConnections(copy), menu + 5);
    driver->ClickRows({0});
    QTest::mouseClick(driver->Find<QPushButton>("minusButton"), Qt::LeftButton);
    QCOMPARE(CopyConnections(copy), menu + 7);
}

ZEPHLANE_TEST_MAIN(TestFileList)
#include "tst_filelist.moc"
