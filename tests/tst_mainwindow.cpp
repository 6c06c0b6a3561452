// The main window as a whole: its size and the settings kept between runs,
// the stored cloud credentials, the pages it starts on, and its menus,
// actions and dialogs as a user meets them.

#include "testenvironment.h"
#include "windowdriver.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDesktopServices>
#include <QDialog>
#include <QDir>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QStackedWidget>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTableView>
#include <QTest>
#include <QUrl>

// Receives what OpenWebsite hands to the desktop, instead of a browser.
class UrlCatcher : public QObject
{
    Q_OBJECT

public:
    QList<QUrl> urls;

public slots:
    void Open(const QUrl &url) { urls.append(url); }
};

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void firstRunTakesThreeQuartersOfTheScreen();
    void geometryDirectoryAndColumnOrderComeBack();
    void storedColumnOrderIsApplied_data();
    void storedColumnOrderIsApplied();
    void closingWithNoFileWritesEveryKey();
    void storedCredentialsFillTheSignInFields();
    void startsOnTheLocalTabWithTheDropHint();
    void actionsHaveTheirTextsShortcutsAndStates_data();
    void actionsHaveTheirTextsShortcutsAndStates();
    void menusHoldTheirActionsInOrder();
    void helpMenuOpensTheAboutBoxAndTheWebsite();
    void rowColorsOpensItsDialog();

private:
    static QStringList VisualOrder(const MainWindow &window, int count);
};

void TestMainWindow::init()
{
    QSettings(QStringLiteral("Talvox"), QStringLiteral("Zephlane")).clear();
}

QStringList TestMainWindow::VisualOrder(const MainWindow &window, int count)
{
    const QHeaderView *header = window.findChild<QTableView *>("rawDataView")->horizontalHeader();
    QStringList order;
    for (int i = 0; i < count; ++i)
        order.append(QString::number(header->logicalIndex(i)));
    return order;
}

void TestMainWindow::firstRunTakesThreeQuartersOfTheScreen()
{
    MainWindow window;
    const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
    const QSize expected = QSize(available.width() * 3 / 4, available.height() * 3 / 4).expandedTo(QSize(850, 450));
    QCOMPARE(window.size(), expected);
    QCOMPARE(window.minimumSize(), QSize(850, 450));

    // No directory stored: the first file dialog opens where the dialog would anyway.
    ModalCatcher catcher;
    window.findChild<QAction *>("actionOpen_Files")->trigger();
    QCOMPARE(catcher.FileDialogs(), QStringList("Select Files to Add|" + QDir::currentPath() + "|Text (*.txt)"));
}

void TestMainWindow::geometryDirectoryAndColumnOrderComeBack()
{
    // The directory has to outlive the first window for the dialog to open there.
    QTemporaryDir data;
    const QString path = WindowDriver::Stroop("Stroop", 2).Write(data.filePath("one.txt"));
    const QString directory = QFileInfo(path).absolutePath();
    {
        WindowDriver driver;
        driver.AddFiles({path});
        driver.Window().resize(990, 640);
        driver.Window().move(40, 30);
        QHeaderView *header = driver.Find<QTableView>("rawDataView")->horizontalHeader();
        header->moveSection(5, 1);
        driver.Window().close();
    }
    MainWindow window;
    QCOMPARE(window.size(), QSize(990, 640));
    QCOMPARE(window.pos(), QPoint(40, 30));
    QCOMPARE(VisualOrder(window, 7), QStringList({"0", "5", "1", "2", "3", "4", "6"}));

    ModalCatcher catcher;
    window.findChild<QAction *>("actionOpen_Files")->trigger();
    QCOMPARE(catcher.FileDialogs(), QStringList("Select Files to Add|" + directory + "|Text (*.txt)"));
}

void TestMainWindow::storedColumnOrderIsApplied_data()
{
    QTest::addColumn<QVariantMap>("stored");
    QTest::addColumn<QStringList>("order");

    QTest::newRow("nothing stored") << QVariantMap() << QStringList({"0", "1", "2", "3", "4"});
    QTest::newRow("two swapped") << QVariantMap({{"0", 2}, {"1", 1}, {"2", 0}})
                                 << QStringList({"2", "1", "0", "3", "4"});
    QTest::newRow("moved to the front") << QVariantMap({{"0", 3}, {"1", 0}, {"2", 1}, {"3", 2}})
                                        << QStringList({"3", "0", "1", "2", "4"});
    QTest::newRow("out of range passed over") << QVariantMap({{"0", 13}, {"1", 99}, {"2", -1}, {"3", 4}})
                                              << QStringList({"0", "1", "2", "4", "3"});
    QTest::newRow("already placed earlier") << QVariantMap({{"0", 1}, {"1", 1}, {"2", 1}})
                                            << QStringList({"1", "0", "2", "3", "4"});
    // Only the first thirteen positions are read.
    QTest::newRow("beyond the stored positions") << QVariantMap({{"13", 0}, {"14", 2}})
                                                 << QStringList({"0", "1", "2", "3", "4"});
}

void TestMainWindow::storedColumnOrderIsApplied()
{
    QFETCH(QVariantMap, stored);
    QFETCH(QStringList, order);
    {
        QSettings settings(QStringLiteral("Talvox"), QStringLiteral("Zephlane"));
        settings.beginGroup("ColumnOrder");
        for (auto it = stored.cbegin(); it != stored.cend(); ++it)
            settings.setValue(it.key(), it.value());
    }
    MainWindow window;
    QCOMPARE(VisualOrder(window, 5), order);
}

void TestMainWindow::closingWithNoFileWritesEveryKey()
{
    {
        MainWindow window;
        window.show();
        window.findChild<QTableView *>("rawDataView")->horizontalHeader()->moveSection(20, 0);
        window.close();
    }
    QSettings settings(QStringLiteral("Talvox"), QStringLiteral("Zephlane"));
    QCOMPARE(settings.childGroups(), QStringList({"ColumnOrder", "MainWindow"}));
    settings.beginGroup("MainWindow");
    QCOMPARE(settings.childKeys(), QStringList({"dir", "pos", "size"}));
    QCOMPARE(settings.value("dir").toString(), QString());
    settings.endGroup();
    settings.beginGroup("ColumnOrder");
    QCOMPARE(settings.childKeys().size(), 13);
    QCOMPARE(settings.value("0").toInt(), 20);
    QCOMPARE(settings.value("1").toInt(), 0);
    QCOMPARE(settings.value("12").toInt(), 11);
}

void TestMainWindow::storedCredentialsFillTheSignInFields()
{
    QCoreApplication::setOrganizationName("Talvox");
    QCoreApplication::setApplicationName("Zephlane");
    const QString path = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + "/settings.ini";
    {
        QSettings credentials(path, QSettings::IniFormat);
        credentials.setValue("Cloud/email", "ada@example.org");
        credentials.setValue("Cloud/pw", "p4ss word");
    }
    MainWindow window;
    QCOMPARE(window.findChild<QLineEdit *>("edit_subscriber_email")->text(), QString("ada@example.org"));
    const QLineEdit *password = window.findChild<QLineEdit *>("edit_subscriber_pwd");
    QCOMPARE(password->text(), QString("p4ss word"));
    QCOMPARE(password->echoMode(), QLineEdit::Password);
    QVERIFY(QFile::remove(path));
}

void TestMainWindow::startsOnTheLocalTabWithTheDropHint()
{
    WindowDriver driver;
    const QList<QPair<QString, int>> pages = {
        {"stack_local_or_cloud_info", 0}, {"stack_xpt_filename", 0}, {"stack_cloud", 0},
        {"stack_login_progress", 0},      {"stack_warn_if_overriding_local_files", 0},
        {"stack_cloud_options", 0},       {"stack_xpt_info", 3}};
    for (const auto &page : pages)
        QCOMPARE(driver.Find<QStackedWidget>(page.first)->currentIndex(), page.second);
    QCOMPARE(driver.Find<QTabWidget>("tab_cloud_or_local_files")->currentIndex(), 1);
    QCOMPARE(driver.Find<QTabWidget>("tabWidget")->currentIndex(), 0);
    QVERIFY(driver.Find<QWidget>("fileNamesList")->isVisible());
    QVERIFY(!driver.Find<QWidget>("specificBasisDropDown")->isVisible());
    QVERIFY(!driver.Find<QPushButton>("minusButton")->isEnabled());
    QVERIFY(!driver.Find<QPushButton>("mergeButton")->isEnabled());

    // The empty grid stands in for a table.
    const QAbstractItemModel *blank = driver.Find<QTableView>("rawDataView")->model();
    QCOMPARE(blank->rowCount(), 50);
    QCOMPARE(blank->columnCount(), 50);
    QCOMPARE(blank->headerData(3, Qt::Vertical).toString(), QString());
}

void TestMainWindow::actionsHaveTheirTextsShortcutsAndStates_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shortcut");
    QTest::addColumn<bool>("enabled");

    QTest::newRow("actionOpen_Files") << "Add Files..." << "Ctrl+O" << true;
    QTest::newRow("actionRemove_Selected_Files") << "Remove Selected Files" << "Ctrl+W" << false;
    QTest::newRow("actionMerge_Selected_Files") << "Merge Selected Files..." << "Ctrl+G" << false;
    QTest::newRow("actionUndo") << "Undo" << "Ctrl+Z" << false;
    QTest::newRow("actionCut") << "Cut" << "Ctrl+X" << false;
    QTest::newRow("actionCopy") << "Copy" << "Ctrl+C" << true;
    QTest::newRow("actionPaste") << "Paste" << "Ctrl+V" << false;
    QTest::newRow("actionSelect_All_Rows") << "Select All Rows" << "Ctrl+A" << false;
    QTest::newRow("actionSelect_Flagged_Rows") << "Select Flagged Rows" << "" << false;
    QTest::newRow("actionSelect_Unflagged_Rows") << "Select Unflagged Rows" << "" << false;
    QTest::newRow("actionFlag_Selection") << "Flag Selection" << "Space" << false;
    QTest::newRow("actionFlag_Special") << "Flag Special..." << "" << false;
    QTest::newRow("actionHide_Selected_Rows") << "Hide Selected Rows" << "" << false;
    QTest::newRow("actionHide_Flagged_Rows") << "Hide Flagged Rows" << "" << false;
    QTest::newRow("actionHide_Unflagged_Rows") << "Hide Unflagged Rows" << "" << false;
    QTest::newRow("actionShow_All_Rows") << "Show All Rows" << "" << false;
    QTest::newRow("actionRow_Colors") << "Row Colors..." << "" << true;
    QTest::newRow("actionHide_Empty_Columns") << "Hide Empty Columns" << "" << false;
    QTest::newRow("actionHide_Flag_Column") << "Hide Flag Column" << "" << false;
    QTest::newRow("actionShow_All_Columns") << "Show All Columns" << "" << false;
    QTest::newRow("actionRefresh_Column_Autosizing") << "Auto-size Columns" << "" << false;
    QTest::newRow("actionTalvox_On_The_Web") << "Talvox On The Web..." << "F1" << true;
    QTest::newRow("actionAbout") << "About..." << "" << true;
}

void TestMainWindow::actionsHaveTheirTextsShortcutsAndStates()
{
    QFETCH(QString, text);
    QFETCH(QString, shortcut);
    QFETCH(bool, enabled);
    MainWindow window;
    const QAction *action = window.findChild<QAction *>(QTest::currentDataTag());
    QVERIFY(action);
    QCOMPARE(action->text(), text);
    QCOMPARE(action->shortcut(), QKeySequence(shortcut));
    QCOMPARE(action->isEnabled(), enabled);
}

void TestMainWindow::menusHoldTheirActionsInOrder()
{
    MainWindow window;
    QStringList menus;
    for (QAction *menuAction : window.menuBar()->actions()) {
        QStringList entries;
        for (const QAction *action : menuAction->menu()->actions())
            entries.append(action->isSeparator() ? "-" : action->objectName());
        menus.append(menuAction->menu()->objectName() + " " + menuAction->text() + ": " + entries.join(" "));
    }
    QCOMPARE(menus,
             QStringList({"menuFile File: actionOpen_Files actionRemove_Selected_Files - actionMerge_Selected_Files",
                          "menuEdit Edit: actionUndo - actionCut actionCopy actionPaste - actionSelect_All_Rows "
                          "actionSelect_Flagged_Rows actionSelect_Unflagged_Rows",
                          "menuRows Rows: actionFlag_Selection actionFlag_Special - actionHide_Selected_Rows "
                          "actionHide_Flagged_Rows actionHide_Unflagged_Rows actionShow_All_Rows - actionRow_Colors",
                          "menuView Columns: actionHide_Empty_Columns actionShow_All_Columns - "
                          "actionRefresh_Column_Autosizing",
                          "menuHelp Help: actionTalvox_On_The_Web actionAbout"}));
}

void TestMainWindow::helpMenuOpensTheAboutBoxAndTheWebsite()
{
    WindowDriver driver;
    driver.Find<QAction>("actionAbout")->trigger();
    QDialog *about = driver.Find<QDialog>("Dialog");
    QVERIFY(about->isVisible());
    QVERIFY(about->isModal());
    QCOMPARE(about->windowTitle(), QString("About Zephlane 4"));
    QCOMPARE(about->size(), QSize(444, 282));
    QCOMPARE(about->minimumSize(), about->maximumSize());
    QTest::mouseClick(about->findChild<QPushButton *>(), Qt::LeftButton);
    QVERIFY(!about->isVisible());

    UrlCatcher urls;
    QDesktopServices::setUrlHandler("https", &urls, "Open");
    driver.Find<QAction>("actionTalvox_On_The_Web")->trigger();
    QDesktopServices::unsetUrlHandler("https");
    QCOMPARE(urls.urls.size(), 1);
    QVERIFY(urls.urls.first().host().contains("talvox"));
}

void TestMainWindow::rowColorsOpensItsDialog()
{
    WindowDriver driver;
    driver.Find<QAction>("actionRow_Colors")->trigger();
    QDialog *dialog = nullptr;
    for (QDialog *candidate : driver.Window().findChildren<QDialog *>()) {
        if (candidate->windowTitle() == "Row Colors")
            dialog = candidate;
    }
    QVERIFY(dialog);
    QVERIFY(dialog->isVisible());
    dialog->reject();
}

ZEPHLANE_TEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
