// The cloud tab driven as a user would, against a real HTTP server on the
// loopback address: signing in and failing to, the experiment list and its
// counts, viewing with and without a good cache, export, signing out, and
// which open files survive a change of tab.

#include "loopbackserver.h"
#include "testfiles.h"
#include "windowdriver.h"
#include "zipbytes.h"

#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QSettings>
#include <QStackedWidget>
#include <QStandardPaths>
#include <QTabBar>
#include <QTextDocumentFragment>

namespace {

// The account's experiments: code, name, days to expiry (or a date that is
// no date), lines of rt_info and data files in the archive. The last one is
// selected after signing in.
struct Experiment
{
    int code;
    const char *name;
    QString expiry;
    int participants;
    int files;
};

QString InDays(int days)
{
    return QDate::currentDate().addDays(days).toString(Qt::ISODate);
}

QByteArray Archive(const Experiment &experiment)
{
    QList<QPair<QByteArray, QByteArray>> entries;
    for (int i = 1; i <= experiment.files; ++i)
        entries.append({"s" + QByteArray::number(i) + ".txt", WindowDriver::Stroop(experiment.name, i).Bytes()});
    return ZipBytes(entries);
}

} // namespace

class TestCloudPanel : public QObject
{
    Q_OBJECT

    LoopbackServer server;
    std::unique_ptr<WindowDriver> driver;
    const QList<Experiment> experiments{{11, "Ended with data", InDays(-1), 2, 2},
                                        {12, "Ended without data", InDays(-1), 0, 0},
                                        {13, "Last day without data", InDays(0), 0, 0},
                                        {15, "Odd date", "31/12/2099", 1, 1},
                                        {14, "Running", InDays(5), 3, 3}};

    int Page(const char *stack) const { return driver->Find<QStackedWidget>(stack)->currentIndex(); }
    QListWidget *List(const char *name) const { return driver->Find<QListWidget>(name); }
    QString Text(const char *label) const { return driver->Find<QLabel>(label)->text(); }

    void ShowTab(int index)
    {
        QTabBar *bar = driver->Find<QTabWidget>("tab_cloud_or_local_files")->tabBar();
        QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->tabRect(index).center());
    }
    void SignIn()
    {
        ShowTab(0);
        driver->Find<QLineEdit>("edit_subscriber_email")->setText("Ann@Example.com");
        driver->Find<QLineEdit>("edit_subscriber_pwd")->setText("pw \"1\"");
        driver->Click("btn_connect_to_cloud");
    }
    // The pages of the panel, and the names in the local and the cloud file list.
    QString State() const
    {
        return QStringLiteral("cloud %1 login %2 warning %3 info %4 options %5 | %6 | %7")
            .arg(Page("stack_cloud")).arg(Page("stack_login_progress"))
            .arg(Page("stack_warn_if_overriding_local_files")).arg(Page("stack_local_or_cloud_info"))
            .arg(Page("stack_cloud_options")).arg(Names("fileNamesList"), Names("list_cloud_filenames"));
    }
    QString Names(const char *list) const
    {
        QStringList names;
        for (int row = 0; row < List(list)->count(); ++row)
            names.append(List(list)->item(row)->text());
        return names.join(' ');
    }
    // The request lines that arrived for paths holding `part`, and forgets them.
    QStringList Requests(const char *part)
    {
        QStringList requests = server.Requests().filter(part);
        server.ClearRequests();
        return requests.replaceInStrings(QRegularExpression(" HTTP/1.1\n.*", QRegularExpression::DotMatchesEverythingOption), "");
    }
    void View(int row)
    {
        driver->ClickRows({row}, List("list_of_cloud_experiments"));
        driver->Click("btn_select_xpt");
    }

private slots:
    void init()
    {
        server.Answer("/api/user/v1/login", R"({"success":true,"data":{"access_token":"T"}})");
        server.Answer("/api/user/v1/profile", R"({"success":true,"data":{"email":"ann@example.com"}})");
        QStringList list;
        for (const Experiment &e : experiments) {
            list.append(QStringLiteral(R"({"code":%1,"name":"%2","expiry_date":"%3"})").arg(e.code).arg(e.name, e.expiry));
            const QByteArray code = QByteArray::number(e.code);
            server.Answer("/api/user/v1/download-rtinfo-file/" + code, QByteArray(e.participants, '\n'));
            server.Answer("/api/user/v1/download-result/" + code, Archive(e));
        }
        server.Answer("/api/user/v1/get-all-experiments", R"({"success":true,"data":[)" + list.join(',').toUtf8() + "]}");
        driver = std::make_unique<WindowDriver>(server.BaseUrl());
        QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)).removeRecursively();
        server.ClearRequests();
    }
    void cleanup() { driver.reset(); }

    // Each experiment's count is fetched at sign-in; the service's address
    // is shown, and the credentials are kept as typed, for their owner only.
    void signingInListsTheExperiments()
    {
        SignIn();
        QCOMPARE(Requests("/api/"), QStringList({"POST /api/user/v1/login", "GET /api/user/v1/profile",
                                                 "GET /api/user/v1/get-all-experiments",
                                                 "GET /api/user/v1/download-rtinfo-file/11",
                                                 "GET /api/user/v1/download-rtinfo-file/12",
                                                 "GET /api/user/v1/download-rtinfo-file/13",
                                                 "GET /api/user/v1/download-rtinfo-file/15",
                                                 "GET /api/user/v1/download-rtinfo-file/14"}));
        QCOMPARE(State(), QString("cloud 2 login 0 warning 0 info 2 options 1 |  | "));
        QCOMPARE(List("list_of_cloud_experiments")->currentRow(), 4);
        QCOMPARE(Text("label_current_user"), QString("ann@example.com"));
        const QString path = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + "/settings.ini";
        const QSettings stored(path, QSettings::IniFormat);
        QCOMPARE(stored.value("Cloud/email").toString() + '|' + stored.value("Cloud/pw").toString(),
                 QString("Ann@Example.com|pw \"1\""));
        QCOMPARE(int(QFile::permissions(path) & ~(QFile::ReadUser | QFile::WriteUser)),
                 int(QFile::ReadOwner | QFile::WriteOwner));
    }

    void participantsShowFourWays_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("shown");
        QTest::newRow("data, running") << 4 << "0 3 5 participants (refresh) days remaining on";
        QTest::newRow("data, ended") << 0 << "0 2 - participants (refresh) Experiment has ended on";
        QTest::newRow("none, last day") << 2 << "0 - 0 No data collected yet days remaining off";
        QTest::newRow("none, ended") << 1 << "1 - - No data collected yet Experiment has ended off";
        QTest::newRow("date unread: last day") << 3 << "0 1 0 participants (refresh) days remaining on";
    }
    void participantsShowFourWays()
    {
        SignIn();
        Requests("");
        QFETCH(int, row);
        driver->ClickRows({row}, List("list_of_cloud_experiments"));
        const auto shown = [this](const char *label) {
            return driver->Find<QLabel>(label)->isHidden() ? QString("-") : Text(label);
        };
        const bool on = driver->Find<QWidget>("btn_select_xpt")->isEnabled();
        QCOMPARE(driver->Find<QWidget>("btn_export")->isEnabled(), on);
        QTEST(QStringList({QString::number(Page("stack_xpt_info")), shown("label_num_participants"),
                           shown("label_days_remaining"), 
                           QTextDocumentFragment::fromHtml(Text("label_participants_refresh")).toPlainText(),
                           Text("label_exp_days_remaining"), on ? "on" : "off"}).join(' '),
              "shown");
        QCOMPARE(Requests(""), QStringList());
    }

    void failedSignInStaysSignedOut_data()
    {
        QTest::addColumn<QByteArray>("status");
        QTest::addColumn<QByteArray>("reply");
        QTest::newRow("401") << QByteArray("401 Unauthorized") << QByteArray(R"({"success":false})");
        QTest::newRow("html page") << QByteArray("503 Service Unavailable") << QByteArray("<html>down</html>");
        QTest::newRow("hung up") << QByteArray() << QByteArray();
    }
    void failedSignInStaysSignedOut()
    {
        QFETCH(QByteArray, status);
        QFETCH(QByteArray, reply);
        server.Answer("/api/user/v1/login", reply, status);
        SignIn();
        ShowTab(1);
        ShowTab(0);
        QCOMPARE(State(), QString("cloud 0 login 3 warning 0 info 2 options 1 |  | "));
        QCOMPARE(Requests("/api/"), QStringList("POST /api/user/v1/login"));
        QVERIFY(!QFile::exists(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + "/settings.ini"));
    }

    // The archive is fetched only while data/ holds another number of
    // entries than rt_info has lines.
    void viewingUsesAGoodCache()
    {
        SignIn();
        Requests("");
        View(4);
        QCOMPARE(Requests("download"), QStringList("GET /api/user/v1/download-result/14"));
        QCOMPARE(State(), QString("cloud 1 login 0 warning 0 info 1 options 1 | s1.txt s2.txt s3.txt | s1.txt s2.txt s3.txt"));
        driver->Click("btn_cloud_options");
        QCOMPARE(State(), QString("cloud 2 login 0 warning 1 info 2 options 1 |  | "));
        QListWidget *list = List("list_of_cloud_experiments");
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, list->visualItemRect(list->item(4)).center());
        QCOMPARE(Requests("download"), QStringList());
        QCOMPARE(Names("list_cloud_filenames"), QString("s1.txt s2.txt s3.txt"));

        server.Answer("/api/user/v1/download-rtinfo-file/14", "\n\n\n\n");
        driver->Click("btn_cloud_options");
        emit driver->Find<QLabel>("label_participants_refresh")->linkActivated("refresh");
        QCOMPARE(Requests("download"), QStringList("GET /api/user/v1/download-rtinfo-file/14"));
        QCOMPARE(Text("label_num_participants"), QString("4"));
        View(4);
        QCOMPARE(Requests("download"), QStringList("GET /api/user/v1/download-result/14"));
    }

    // Export copies the cached archive over the chosen file; an experiment
    // without data has nothing to view or export.
    void exportAndEmptyExperiments()
    {
        SignIn();
        View(4);
        driver->Click("btn_cloud_options");
        Requests("");
        const QString target = driver->Path("export.zip");
        QVERIFY(QFile(target).open(QIODevice::WriteOnly));
        driver->Catcher().QueueFileAnswer({target});
        driver->Catcher().QueueMessageAnswer(QMessageBox::Yes);
        driver->Click("btn_export");
        QCOMPARE(ReadAll(target), Archive(experiments[4]));

        driver->ClickRows({1}, List("list_of_cloud_experiments"));
        QMetaObject::invokeMethod(&driver->Window(), "ExportDataZip");
        QListWidget *list = List("list_of_cloud_experiments");
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, list->visualItemRect(list->item(1)).center());
        QCOMPARE(driver->Catcher().Messages().filter("No data"),
                 QStringList({"|No data files to export!", "|No data files to view!"}));
        QCOMPARE(Requests("download-result"), QStringList());
    }

    // Local files stay under a warning while nobody is signed in; a signed-in
    // cloud tab replaces them, and cloud files close when the tab is left.
    void openFilesAcrossTabs()
    {
        driver->Open(WindowDriver::Stroop("Local", 2));
        ShowTab(0);
        QCOMPARE(State(), QString("cloud 0 login 0 warning 1 info 2 options 1 | data1.txt | data1.txt"));
        SignIn();
        driver->Click("btn_sign_out");
        QCOMPARE(State(), QString("cloud 0 login 0 warning 1 info 2 options 1 | data1.txt | data1.txt"));
        driver->Click("btn_connect_to_cloud");
        ShowTab(1);
        QCOMPARE(State(), QString("cloud 1 login 0 warning 1 info 1 options 0 | data1.txt | data1.txt"));
        ShowTab(0);
        QCOMPARE(State(), QString("cloud 2 login 0 warning 1 info 2 options 1 |  | "));
        View(0);
        QCOMPARE(State(), QString("cloud 1 login 0 warning 0 info 1 options 1 | s1.txt s2.txt | s1.txt s2.txt"));
        ShowTab(1);
        QCOMPARE(State(), QString("cloud 1 login 0 warning 0 info 0 options 0 |  | "));
        QCOMPARE(driver->Raw()->model()->rowCount(), 50);
    }
};

ZEPHLANE_TEST_MAIN(TestCloudPanel)
#include "tst_cloudpanel.moc"
