// SPDX-License-Identifier: GPL-3.0-or-later
// The cloud tab driven as a user would, against a real HTTP server on the
// loopback address: signing in and failing to, the experiment list with the
// counts read from each rt_info, viewing with and without a good cache,
// export, signing out, and which open files survive a change of tab.

#include "loopbackserver.h"
#include "testfiles.h"
#include "windowdriver.h"
#include "zipbytes.h"

namespace {

// An experiment of the account; its rt_info is answered with the status and
// body given (no status: the connection is closed).
struct Experiment { int code; const char *name; QString expiry; QByteArray status, rtInfo; int files; };

QByteArray Archive(const Experiment &experiment)
{
    QList<QPair<QByteArray, QByteArray>> entries;
    for (int i = 1; i <= experiment.files; ++i)
        entries.append({"s" + QByteArray::number(i) + ".txt", WindowDriver::Stroop(experiment.name, i).Bytes()});
    return ZipBytes(entries);
}

QString Credentials() { return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + "/settings.ini"; }

QString InDays(int days) { return QDate::currentDate().addDays(days).toString(Qt::ISODate); }

} // namespace

class TestCloudPanel : public QObject
{
    Q_OBJECT

    LoopbackServer server;
    std::unique_ptr<WindowDriver> driver;
    // Counted 2, 0 (hung up), 0, 1 (an error page's one newline) and 3; the
    // last one is selected after signing in.
    const QList<Experiment> experiments{{11, "Ended with data", InDays(-1), "200 OK", "a\tb\nc\n", 2},
                                        {12, "Ended, none", InDays(-1), "", "", 0},
                                        {13, "Last day, none", InDays(0), "200 OK", "", 0},
                                        {15, "Odd date", "31/12/2099", "404 Not Found", "<html>\n</html>", 1},
                                        {14, "Running", InDays(5), "200 OK", "1\n2\n3\n", 3}};

    int Page(const char *stack) const { return driver->Find<QStackedWidget>(stack)->currentIndex(); }
    QString Text(const char *label) const { return driver->Find<QLabel>(label)->text(); }
    // The panel's pages, then the names in the local and in the cloud file list.
    QString State() const
    {
        QString state = QString("cloud %1 login %2 warning %3 info %4 options %5").arg(Page("stack_cloud"))
            .arg(Page("stack_login_progress")).arg(Page("stack_warn_if_overriding_local_files"))
            .arg(Page("stack_local_or_cloud_info")).arg(Page("stack_cloud_options"));
        for (const char *list : {"fileNamesList", "list_cloud_filenames"}) {
            state += " |";
            for (const QListWidgetItem *item : driver->Find<QListWidget>(list)->findItems("*", Qt::MatchWildcard))
                state += ' ' + item->text();
        }
        return state;
    }
    // The requests since the last look, as "METHOD path" after "/api/user/v1/".
    QString Requests()
    {
        const QRegularExpression line("^(\\S+) /api/user/v1/(\\S+) .*", QRegularExpression::DotMatchesEverythingOption);
        return server.TakeRequests().replaceInStrings(line, "\\1 \\2").join(", ");
    }
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
    void ClickExperiment(int row, bool doubleClick = false)
    {
        QListWidget *list = driver->Find<QListWidget>("list_of_cloud_experiments");
        const QPoint centre = list->visualItemRect(list->item(row)).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, centre);
        if (doubleClick)
            QTest::mouseDClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, centre);
    }
    // The info page, participants and days (or "-" when hidden), the two
    // labels' texts, and whether view and export are on.
    QString Participants() const
    {
        const auto shown = [this](const char *label) { return driver->Find<QLabel>(label)->isHidden() ? QString("-") : Text(label); };
        const bool on = driver->Find<QWidget>("btn_select_xpt")->isEnabled();
        const bool exportOn = driver->Find<QWidget>("btn_export")->isEnabled();
        return QStringList({QString::number(Page("stack_xpt_info")), shown("label_num_participants"), shown("label_days_remaining"),
                            QTextDocumentFragment::fromHtml(Text("label_participants_refresh")).toPlainText(),
                            Text("label_exp_days_remaining"), on ? "on" : "off", exportOn == on ? "" : "export differs"}).join(' ');
    }

private slots:
    void init()
    {
        server.Answer("/api/user/v1/login", R"({"success":true,"data":{"access_token":"T"}})");
        server.Answer("/api/user/v1/profile", R"({"success":true,"data":{"email":"ann@example.com"}})");
        QStringList list;
        for (const Experiment &e : experiments) {
            list.append(QStringLiteral(R"({"code":%1,"name":"%2","expiry_date":"%3"})").arg(e.code).arg(e.name, e.expiry));
            server.Answer("/api/user/v1/download-rtinfo-file/" + QByteArray::number(e.code), e.rtInfo, e.status);
            server.Answer("/api/user/v1/download-result/" + QByteArray::number(e.code), Archive(e));
        }
        server.Answer("/api/user/v1/get-all-experiments", R"({"success":true,"data":[)" + list.join(',').toUtf8() + "]}");
        driver = std::make_unique<WindowDriver>(server.BaseUrl());
        QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)).removeRecursively();
        server.TakeRequests();
    }
    void cleanup() { driver.reset(); }

    // Each experiment's count is fetched at sign-in; the service's address is
    // shown, and the credentials are kept as typed, for their owner only.
    // Participants show four ways, by data or none and running or ended; a
    // date that cannot be read counts as the last day. Choosing asks nothing.
    void signingInListsTheExperiments()
    {
        SignIn();
        QCOMPARE(Requests(), QString("POST login, GET profile, GET get-all-experiments, GET download-rtinfo-file/11, "
                                     "GET download-rtinfo-file/12, GET download-rtinfo-file/13, "
                                     "GET download-rtinfo-file/15, GET download-rtinfo-file/14"));
        QCOMPARE(State(), QString("cloud 2 login 0 warning 0 info 2 options 1 | |"));
        QCOMPARE(driver->Find<QListWidget>("list_of_cloud_experiments")->currentRow(), 4);
        QCOMPARE(Text("label_current_user"), QString("ann@example.com"));
        const QSettings stored(Credentials(), QSettings::IniFormat);
        QCOMPARE(stored.value("Cloud/email").toString() + '|' + stored.value("Cloud/pw").toString(), QString("Ann@Example.com|pw \"1\""));
        QCOMPARE(int(QFile::permissions(Credentials()) & ~(QFile::ReadUser | QFile::WriteUser)),
                 int(QFile::ReadOwner | QFile::WriteOwner));
        QStringList shown;
        for (const int row : {4, 0, 2, 1, 3}) {
            ClickExperiment(row);
            shown << Participants();
        }
        QCOMPARE(shown, QStringList({"0 3 5 participants (refresh) days remaining on ",
                                     "0 2 - participants (refresh) Experiment has ended on ",
                                     "0 - 0 No data collected yet days remaining off ",
                                     "1 - - No data collected yet Experiment has ended off ",
                                     "0 1 0 participants (refresh) days remaining on "}));
        QCOMPARE(Requests(), QString());
    }

    // The archive is fetched only while data/ holds another number of entries
    // than rt_info has lines; export copies the cached archive over the chosen
    // file; an experiment without data has nothing to give.
    void viewingAndExportUseTheCache()
    {
        SignIn();
        server.TakeRequests();
        driver->Click("btn_select_xpt");
        QCOMPARE(Requests(), QString("GET download-result/14"));
        QCOMPARE(State(), QString("cloud 1 login 0 warning 0 info 1 options 1 | s1.txt s2.txt s3.txt | s1.txt s2.txt s3.txt"));
        driver->Click("btn_cloud_options");
        QCOMPARE(State(), QString("cloud 2 login 0 warning 1 info 2 options 1 | |"));
        ClickExperiment(4, true);
        QCOMPARE(Requests(), QString());
        driver->Click("btn_cloud_options");

        const QString target = driver->Path("export.zip");
        QVERIFY(QFile(target).open(QIODevice::WriteOnly));
        driver->Catcher().QueueFileAnswer({target});
        driver->Catcher().QueueMessageAnswer(QMessageBox::Yes);
        driver->Click("btn_export");
        QCOMPARE(ReadAll(target), Archive(experiments[4]));

        WindowDriver::Stroop("Running", 1).Write(CloudCache::ExperimentDir(14) + "/data/Extra.txt");
        driver->Click("btn_select_xpt");
        QCOMPARE(Requests(), QString("GET download-result/14"));
        QCOMPARE(State(), QString("cloud 1 login 0 warning 0 info 1 options 1 | Extra.txt s1.txt s2.txt s3.txt | "
                                  "Extra.txt s1.txt s2.txt s3.txt"));

        driver->Click("btn_cloud_options");
        server.Answer("/api/user/v1/download-rtinfo-file/14", "", "");
        emit driver->Find<QLabel>("label_participants_refresh")->linkActivated("refresh");
        QCOMPARE(Requests() + ' ' + Text("label_participants_refresh"), QString("GET download-rtinfo-file/14 No data collected yet"));
        QMetaObject::invokeMethod(&driver->Window(), "ExportDataZip");
        ClickExperiment(4, true);
        QCOMPARE(driver->Catcher().Messages().filter("No data"), QStringList({"|No data files to export!", "|No data files to view!"}));
    }

    void viewingStopsAtALimit_data()
    {
        QTest::addColumn<QByteArray>("archive");
        QTest::addColumn<qint64>("downloadBytes");
        QTest::addColumn<qint64>("reserve");
        QTest::addColumn<QString>("fullFile");
        QTest::addColumn<QString>("shown");
        const qint64 plenty = qint64(1) << 40;
        // The download limit shortened to 100 bytes: every archive passes it.
        QTest::newRow("download over its limit") << QByteArray() << qint64(100) << qint64(0) << QString()
                                                 << "Zephlane|The download stopped: more than 4 GB. | 0 files";
        // Forty entries share one compressed data file; those that fit whole
        // within 200 times the archive's size are opened.
        const QByteArray content = WindowDriver::Stroop("Running", 2000).Bytes();
        const QByteArray overlapping = OverlappingZipBytes(content, 40);
        QTest::newRow("archive that unpacks too far")
            << overlapping << plenty << qint64(0) << QString()
            << QString("Zephlane|The experiment's archive was not unpacked whole: it unpacks to more than 200 times its size. | %1 files")
                   .arg(200 * overlapping.size() / content.size());
        // s2.txt stands for a file on a full disk.
        QTest::newRow("a file that cannot be written")
            << QByteArray() << plenty << qint64(0) << "s2.txt"
            << "Zephlane|The experiment's archive was not unpacked whole: a file could not be written. | 1 files";
        // Every participants file stops at sign-in, and is told of once;
        // no experiment then has data to view.
        QTest::newRow("disk nearly full") << QByteArray() << plenty << std::numeric_limits<qint64>::max() / 2 << QString()
                                          << "Zephlane|The download stopped: the disk is nearly full. | 0 files";
    }

    // A limit that stops a download or the unpacking is told in a box; the
    // files unpacked before it are opened as usual.
    void viewingStopsAtALimit()
    {
        QFETCH(QByteArray, archive);
        QFETCH(qint64, downloadBytes);
        QFETCH(qint64, reserve);
        QFETCH(QString, fullFile);
        CloudLimits limits;
        limits.downloadBytes = downloadBytes;
        limits.freeSpaceReserve = reserve;
        driver.reset();
        driver = std::make_unique<WindowDriver>(server.BaseUrl(), limits);
        if (!archive.isEmpty())
            server.Answer("/api/user/v1/download-result/14", archive);
        const QString data = CloudCache::ExperimentDir(14) + "/data/";
        if (!fullFile.isEmpty())
            QVERIFY(QDir().mkpath(data) && QFile::link("/dev/full", data + fullFile));
        SignIn();
        driver->Click("btn_select_xpt");
        const QListWidget *list = driver->Find<QListWidget>("list_cloud_filenames");
        QStringList listed;
        for (int row = 0; row < list->count(); ++row)
            listed << list->item(row)->text();
        QCOMPARE(listed, QDir(data).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System));
        QTEST(driver->Catcher().Messages().join(", ") + QString(" | %1 files").arg(listed.size()), "shown");
    }

    // A failed sign-in stays on its error page through a change of tab.
    // Local files stay under a warning while nobody is signed in; a signed-in
    // cloud tab replaces them, and cloud files close when the tab is left.
    void openFilesAcrossTabs()
    {
        driver->Open(WindowDriver::Stroop("Local", 2));
        server.Answer("/api/user/v1/login", R"({"success":false})", "401 Unauthorized");
        SignIn();
        ShowTab(1);
        ShowTab(0);
        QCOMPARE(State(), QString("cloud 0 login 3 warning 1 info 2 options 1 | data1.txt | data1.txt"));
        QVERIFY(!QFile::exists(Credentials()));
        server.Answer("/api/user/v1/login", R"({"success":true,"data":{"access_token":"T"}})");
        driver->Click("btn_connect_to_cloud");
        driver->Click("btn_sign_out");
        QCOMPARE(State(), QString("cloud 0 login 0 warning 1 info 2 options 1 | data1.txt | data1.txt"));
        driver->Click("btn_connect_to_cloud");
        ShowTab(1);
        QCOMPARE(State(), QString("cloud 1 login 0 warning 1 info 1 options 0 | data1.txt | data1.txt"));
        ShowTab(0);
        QCOMPARE(State(), QString("cloud 2 login 0 warning 1 info 2 options 1 | |"));
        ClickExperiment(0);
        driver->Click("btn_select_xpt");
        QCOMPARE(State(), QString("cloud 1 login 0 warning 0 info 1 options 1 | s1.txt s2.txt | s1.txt s2.txt"));
        ShowTab(1);
        QCOMPARE(State(), QString("cloud 1 login 0 warning 0 info 0 options 0 | |"));
        QCOMPARE(driver->Raw()->model()->rowCount(), 50);
    }
};

ZEPHLANE_TEST_MAIN(TestCloudPanel)
#include "tst_cloudpanel.moc"
