// SPDX-License-Identifier: GPL-3.0-or-later
// The main window as a whole: its size and the settings kept between runs,
// the stored cloud credentials and the actions it starts with, and what its
// help menu opens.

#include "windowdriver.h"

// Receives what the help menu hands to the desktop, instead of a browser.
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

    // On a first run the file dialog opens in the current directory. Closed
    // with no file open, the window still stores every key, and only the
    // first thirteen column positions. The dialog would open in its last
    // directory anyway, so the directory is seen in what the restored window
    // stores again.
    void geometryDirectoryAndColumnOrderComeBack()
    {
        QTemporaryDir data;
        const QString path = WindowDriver::Stroop("Stroop", 2).Write(data.filePath("one.txt"));
        {
            WindowDriver driver;
            driver.AddFiles({path});
            QCOMPARE(driver.Catcher().FileDialogs(), QStringList("Select Files to Add|" + QDir::currentPath() + "|Text (*.txt)"));
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

    // Places out of range are skipped, and so are columns placed earlier.
    void storedColumnOrderIsApplied()
    {
        QStringList orders;
        for (const QVariantMap &stored : {QVariantMap({{"0", 13}, {"1", 99}, {"2", -1}, {"3", 4}}), QVariantMap({{"0", 1}, {"1", 1}, {"2", 1}})}) {
            QSettings settings("Talvox", "Zephlane");
            settings.clear();
            for (auto it = stored.cbegin(); it != stored.cend(); ++it)
                settings.setValue("ColumnOrder/" + it.key(), it.value());
            settings.sync();
            orders << VisualOrder(MainWindow());
        }
        QCOMPARE(orders, QStringList({"0 1 2 4 3 5 6", "1 0 2 3 4 5 6"}));
    }

    // The sign-in fields come filled from the application's own settings
    // file; every file action starts off. About opens its dialog and the web
    // page goes to the desktop.
    void startsWithStoredCredentialsAndHelpOpensItsPages()
    {
        QCoreApplication::setOrganizationName("Talvox");
        QCoreApplication::setApplicationName("Zephlane");
        const QString path = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + "/settings.ini";
        QSettings credentials(path, QSettings::IniFormat);
        credentials.setValue("Cloud/email", "ada@example.org");
        credentials.setValue("Cloud/pw", "p4ss word");
        credentials.sync();
        WindowDriver driver;
        QVERIFY(QFile::remove(path));
        QCOMPARE(driver.Find<QLineEdit>("edit_subscriber_email")->text() + '|' + driver.Find<QLineEdit>("edit_subscriber_pwd")->text()
                     + '|' + driver.ActionStates(),
                 "ada@example.org|p4ss word|00000 0000000000 0 11");
        UrlCatcher urls;
        QDesktopServices::setUrlHandler("https", &urls, "Open");
        driver.Trigger("actionAbout");
        driver.Trigger("actionTalvox_On_The_Web");
        QDesktopServices::unsetUrlHandler("https");
        QDialog *about = driver.Find<QDialog>("Dialog");
        QVERIFY(about->isVisible() && about->isModal());
        about->reject();
        QCOMPARE(urls.urls.size(), 1);
        QVERIFY(urls.urls.first().host().contains("talvox"));
    }
};

ZEPHLANE_TEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
