// The main window as a whole: its size and the settings kept between runs,
// the stored cloud credentials, the pages and actions it starts with, and
// the dialogs its menus open.

#include "rowcolorsdialog.h"
#include "windowdriver.h"

#include <QDesktopServices>
#include <QDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QScreen>
#include <QSettings>
#include <QStandardPaths>
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

namespace {

// The logical columns at the first seven places of the raw table.
QString VisualOrder(const MainWindow &window)
{
    QStringList order;
    for (int i = 0; i < 7; ++i)
        order.append(QString::number(window.findChild<QTableView *>("rawDataView")->horizontalHeader()->logicalIndex(i)));
    return order.join(' ');
}

} // namespace

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void init() { QSettings("Talvox", "Zephlane").clear(); }

    // No directory stored: the dialog opens where it would anyway.
    void firstRunTakesThreeQuartersOfTheScreen()
    {
        WindowDriver driver;
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        QCOMPARE(driver.Window().size(), QSize(screen.width() * 3 / 4, screen.height() * 3 / 4).expandedTo(QSize(850, 450)));
        driver.AddFiles({});
        QCOMPARE(driver.Catcher().FileDialogs(), QStringList("Select Files to Add|" + QDir::currentPath() + "|Text (*.txt)"));
    }

    // Closed with no file open, the window still stores every key, and only
    // the first thirteen column positions. The file dialog would open in its
    // last directory anyway, so the directory is seen in what the restored
    // window stores again.
    void geometryDirectoryAndColumnOrderComeBack()
    {
        QTemporaryDir data;
        const QString path = WindowDriver::Stroop("Stroop", 2).Write(data.filePath("one.txt"));
        {
            WindowDriver driver;
            driver.AddFiles({path});
            driver.Click("minusButton");
            driver.Window().resize(990, 640);
            driver.Window().move(40, 30);
            driver.Raw()->horizontalHeader()->moveSection(5, 1);
            driver.Window().close();
        }
        QCOMPARE(QSettings("Talvox", "Zephlane").allKeys().size(), 3 + 13);
        MainWindow window;
        QCOMPARE(QRect(window.pos(), window.size()), QRect(40, 30, 990, 640));
        QCOMPARE(VisualOrder(window), "0 5 1 2 3 4 6");
        window.close();
        QCOMPARE(QSettings("Talvox", "Zephlane").value("MainWindow/dir").toString(), QFileInfo(path).absolutePath());
    }

    void storedColumnOrderIsApplied_data()
    {
        QTest::addColumn<QVariantMap>("stored");
        QTest::addColumn<QString>("order");
        QTest::newRow("out of range") << QVariantMap({{"0", 13}, {"1", 99}, {"2", -1}, {"3", 4}}) << "0 1 2 4 3 5 6";
        QTest::newRow("already placed earlier") << QVariantMap({{"0", 1}, {"1", 1}, {"2", 1}}) << "1 0 2 3 4 5 6";
    }

    void storedColumnOrderIsApplied()
    {
        QFETCH(QVariantMap, stored);
        QSettings settings("Talvox", "Zephlane");
        for (auto it = stored.cbegin(); it != stored.cend(); ++it)
            settings.setValue("ColumnOrder/" + it.key(), it.value());
        settings.sync();
        QTEST(VisualOrder(MainWindow()), "order");
    }

    // The sign-in fields come filled from the application's own settings
    // file; the window starts on the local tab with every file action off.
    void startsWithStoredCredentialsOnTheLocalTab()
    {
        QCoreApplication::setOrganizationName("Talvox");
        QCoreApplication::setApplicationName("Zephlane");
        const QString path = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + "/settings.ini";
        QSettings credentials(path, QSettings::IniFormat);
        credentials.setValue("Cloud/email", "ada@example.org");
        credentials.setValue("Cloud/pw", "p4ss word");
        credentials.sync();
        WindowDriver driver;
        QString pages;
        for (const char *name : {"stack_local_or_cloud_info", "stack_xpt_filename", "stack_cloud", "stack_login_progress",
                                 "stack_warn_if_overriding_local_files", "stack_cloud_options", "stack_xpt_info",
                                 "tab_cloud_or_local_files", "tabWidget"})
            pages += driver.Find<QWidget>(name)->property("currentIndex").toString();
        QCOMPARE(driver.Find<QLineEdit>("edit_subscriber_email")->text() + '|' + driver.Find<QLineEdit>("edit_subscriber_pwd")->text()
                     + '|' + pages + ' ' + driver.ActionStates(),
                 "ada@example.org|p4ss word|000000310 00000 0000000000 0 11");
        QVERIFY(QFile::remove(path));
    }

    void helpAndRowColorsOpenTheirDialogs()
    {
        WindowDriver driver;
        UrlCatcher urls;
        QDesktopServices::setUrlHandler("https", &urls, "Open");
        for (const char *action : {"actionAbout", "actionRow_Colors", "actionTalvox_On_The_Web"})
            driver.Trigger(action);
        QDesktopServices::unsetUrlHandler("https");
        QDialog *about = driver.Find<QDialog>("Dialog");
        QVERIFY(about->isVisible() && about->isModal() && driver.Window().findChild<RowColorsDialog *>()->isVisible());
        QCOMPARE(urls.urls.size(), 1);
        QVERIFY(urls.urls.first().host().contains("talvox"));
        about->reject();
    }
};

ZEPHLANE_TEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
