// The cloud client against a real HTTP server on the loopback address: what
// goes out on the wire, how replies and error pages are read, what a
// download leaves in the cache; and the unpacking of archives.

#include "cloudclient.h"
#include "loopbackserver.h"
#include "testenvironment.h"
#include "testfiles.h"
#include "unziparchive.h"
#include "zipbytes.h"

#include <QApplication>
#include <QDir>
#include <QRegularExpression>
#include <QTest>

Q_DECLARE_METATYPE(HttpMethod)
Q_DECLARE_METATYPE(QVector<RequestParam>)

namespace {

const char *const kLogin = "/api/user/v1/login";
const char *const kRefused = "http://127.0.0.1:1/api/";

// Records as one line each, so that a whole reply reads as one string.
QString Describe(bool returned, const CloudProfile &p)
{
    return QStringList{returned ? "true" : "false", p.name, p.email, p.expiryDate, p.isDelegate ? "delegate" : "-",
                       p.passwordSet ? "set" : "unset", p.parentName, p.parentEmail,
                       QString::number(p.numberOfDelegates), QString::number(p.delegatesCount),
                       QString::number(p.limitPackage), QString::number(p.uploadedExperimentsSize)}
        .join('|');
}

QString Describe(bool returned, const QVector<CloudExperiment> &experiments)
{
    QStringList text{returned ? "true" : "false"};
    for (const CloudExperiment &e : experiments)
        text.append(QStringLiteral("%1 %2 %3 %4 %5").arg(e.code).arg(e.name, e.expiryDate).arg(int(e.isTerminated)).arg(e.size));
    return text.join('|');
}

// The first line of a request that starts so, or "-".
QString Line(const QString &request, const QString &start)
{
    for (const QString &line : request.split('\n'))
        if (line.startsWith(start))
            return line;
    return QStringLiteral("-");
}

// What a directory holds, as "name=content" in name order.
QString Contents(const QString &path)
{
    QStringList entries;
    for (const QString &name : QDir(path).entryList(QDir::AllEntries | QDir::NoDotAndDotDot))
        entries.append(name + '=' + ReadAll(path + '/' + name));
    return entries.join(' ');
}

} // namespace

class TestCloudClient : public QObject
{
    Q_OBJECT

    LoopbackServer server;
    TestFiles files;

private slots:
    void init() { server.ClearRequests(); }

    // The token of a sign-in goes out with every later request, the next
    // sign-in included, until a failed one clears it.
    void headersFollowTheToken()
    {
        server.Answer(kLogin, R"({"success":true,"data":{"access_token":"T1"}})");
        CloudClient client(server.BaseUrl());
        client.Login("ann@example.com", "pa\"ss");
        client.DownloadRtInfo(7);
        server.Answer(kLogin, R"({"success":false})", "401 Unauthorized");
        client.Login("ann@example.com", "x");
        client.GetExperiments();

        const QStringList requests = server.Requests();
        const QString key = requests.value(0).section("X-Authorization: ", 1).section('\n', 0, 0);
        QVERIFY(QRegularExpression("^[A-Za-z0-9]{64}$").match(key).hasMatch());
        const QString common = "Host: 127.0.0.1:PORT\naccept: application/json\nX-Authorization: " + key + '\n';
        const QString json = "Content-Type: application/json\n";
        QCOMPARE(requests, QStringList({
            "POST /api/user/v1/login HTTP/1.1\n" + common + json
                + "Content-Length: 49\n\n{\"email\": \"ann@example.com\", \"password\": \"pa\"ss\"}",
            "GET /api/user/v1/download-rtinfo-file/7 HTTP/1.1\n" + common + "Authorization: Bearer T1",
            "POST /api/user/v1/login HTTP/1.1\n" + common + "Authorization: Bearer T1\n" + json
                + "Content-Length: 45\n\n{\"email\": \"ann@example.com\", \"password\": \"x\"}",
            "GET /api/user/v1/get-all-experiments HTTP/1.1\n" + common + json.trimmed()}));
    }

    void methodsAndBodies_data()
    {
        QTest::addColumn<HttpMethod>("method");
        QTest::addColumn<QVector<RequestParam>>("params");
        QTest::addColumn<QString>("sent");
        QTest::newRow("post without fields") << HttpMethod::Post << QVector<RequestParam>() << "POST|Content-Length: 0";
        QTest::newRow("get") << HttpMethod::Get << QVector<RequestParam>() << "GET|Content-Type: application/json";
        QTest::newRow("put, two fields") << HttpMethod::Put << QVector<RequestParam>{{"a", "1"}, {"b", "2"}}
                                         << R"(PUT|{"a": "1", "b": "2"})";
        QTest::newRow("patch, copied byte for byte")
            << HttpMethod::Patch << QVector<RequestParam>{{"k\\", "v\""}} << "PATCH|{\"k\\\": \"v\"\"}";
        QTest::newRow("delete") << HttpMethod::Delete << QVector<RequestParam>{{"a", ""}} << R"(DELETE|{"a": ""})";
        QTest::newRow("other value: libcurl's own") << HttpMethod(9) << QVector<RequestParam>() << "GET|Content-Type: application/json";
    }
    void methodsAndBodies()
    {
        QFETCH(HttpMethod, method);
        QFETCH(QVector<RequestParam>, params);
        CloudClient client(server.BaseUrl());
        client.RestCall("user/v1/x", params, method, nullptr);
        const QString request = server.Requests().value(0);
        QTEST(request.section(' ', 0, 0) + '|' + request.section('\n', -1), "sent");
    }

    void signInReadsOnlyJsonTrue_data()
    {
        QTest::addColumn<QByteArray>("status");
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<QString>("outcome");
        const QByteArray ok = "200 OK";
        QTest::newRow("token") << ok << QByteArray(R"({"success":true,"data":{"access_token":"T2"}})")
                               << "true ok Authorization: Bearer T2";
        QTest::newRow("no data") << ok << QByteArray(R"({"success":true})") << "true ok Authorization: Bearer ";
        QTest::newRow("401") << QByteArray("401 Unauthorized") << QByteArray(R"({"success":false})") << "false ok -";
        QTest::newRow("success 1") << ok << QByteArray(R"({"success":1,"data":{"access_token":"T2"}})") << "false ok -";
        QTest::newRow("success text") << ok << QByteArray(R"({"success":"true","data":{"access_token":"T2"}})")
                                      << "false ok -";
        QTest::newRow("html page") << QByteArray("500 Internal Server Error")
                                   << QByteArray("<html><body>{\"success\":true}</body></html>") << "false ok -";
        QTest::newRow("array") << ok << QByteArray(R"([{"success":true}])") << "false ok -";
        QTest::newRow("zero bytes") << ok << QByteArray("") << "false ok -";
        QTest::newRow("hung up") << QByteArray() << QByteArray() << "false failed -";
    }
    void signInReadsOnlyJsonTrue()
    {
        QFETCH(QByteArray, status);
        QFETCH(QByteArray, reply);
        CloudClient client(server.BaseUrl());
        server.Answer(kLogin, R"({"success":true,"data":{"access_token":"T1"}})");
        client.Login("a", "b");
        server.Answer(kLogin, reply, status);
        const bool returned = client.Login("a", "b");
        const bool failed = client.LastCallFailed();
        QCOMPARE(failed, !client.LastError().isEmpty());
        server.ClearRequests();
        client.GetExperiments();
        QTEST(QStringList({returned ? "true" : "false", failed ? "failed" : "ok",
                           Line(server.Requests().value(0), "Authorization:")}).join(' '),
              "outcome");
    }

    void repliesFillTheRecords_data()
    {
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<QString>("records");
        QTest::newRow("profile") << QByteArray("/api/user/v1/profile") << QByteArray(R"({"success":true,"data":{
            "name":"Ann","email":"ann@example.com","set_password":1,"delegates_count":2,"role":{"slug":"delegate"},
            "parent":{"name":"Bo","email":"bo@example.com"},"current_subscription":{"number_of_delegates":5,
            "limit_package":1e12,"uploaded_experiments_size":12.9,"expiry_date":"2030-01-31"}}})")
            << "true|Ann|ann@example.com|2030-01-31|delegate|set|Bo|bo@example.com|5|2|1000000000000|12";
        QTest::newRow("profile without role or parent") << QByteArray("/api/user/v1/profile")
            << QByteArray(R"({"success":true,"data":{"email":"e","set_password":true,"role":{"slug":"Delegate"},
                 "current_subscription":{"limit_package":-4,"uploaded_experiments_size":1e300}}})")
            << "true||e||-|unset|||0|0|0|18446744073709551615";
        QTest::newRow("profile failure keeps the old one") << QByteArray("/api/user/v1/profile")
            << QByteArray(R"({"success":false,"data":{"email":"new"}})") << "false||old||-|set|||0|0|0|0";
        QTest::newRow("experiments in reply order") << QByteArray("/api/user/v1/get-all-experiments")
            << QByteArray(R"({"success":true,"data":[{"code":5,"name":"B","expiry_date":"2030-01-01",
                 "is_terminated":1,"size":7},{"code":3,"name":"A","is_terminated":true,"size":1.5},
                 {"code":5,"name":"B","size":3000000000},"junk"]})")
            << "true|5 B 2030-01-01 1 7|3 A  0 0|5 B  0 0|0   0 0";
        QTest::newRow("no experiments") << QByteArray("/api/user/v1/get-all-experiments")
                                        << QByteArray(R"({"success":true,"data":[]})") << "true";
        QTest::newRow("experiments failure empties the list") << QByteArray("/api/user/v1/get-all-experiments")
            << QByteArray(R"({"success":"yes","data":[{"code":1}]})") << "false";
    }
    void repliesFillTheRecords()
    {
        QFETCH(QByteArray, path);
        QFETCH(QByteArray, reply);
        CloudClient client(server.BaseUrl());
        server.Answer("/api/user/v1/get-all-experiments", R"({"success":true,"data":[{"code":1}]})");
        client.GetExperiments();
        server.Answer(path, reply);
        CloudProfile profile;
        profile.email = "old";
        QTEST(path.endsWith("profile") ? Describe(client.GetProfile(profile), profile)
                                       : Describe(client.GetExperiments(), *client.Experiments()),
              "records");
    }

    // The file is emptied before the transfer and takes whatever arrives;
    // only its newlines count.
    void downloadsFillTheCache_data()
    {
        QTest::addColumn<QByteArray>("url");
        QTest::addColumn<QByteArray>("status");
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<int>("participants");
        const QByteArray ok = "200 OK";
        const QByteArray page = "<html>\n<body>gone</body>\n</html>\n";
        QTest::newRow("two lines") << QByteArray() << ok << QByteArray("a\tb\nc\n") << QByteArray("a\tb\nc\n") << 2;
        QTest::newRow("last line unended") << QByteArray() << ok << QByteArray("a\nb") << QByteArray("a\nb") << 1;
        QTest::newRow("empty") << QByteArray() << ok << QByteArray() << QByteArray() << 0;
        QTest::newRow("error page") << QByteArray() << QByteArray("404 Not Found") << page << page << 3;
        QTest::newRow("hung up") << QByteArray() << QByteArray() << QByteArray() << QByteArray() << 0;
        QTest::newRow("refused") << QByteArray(kRefused) << ok << QByteArray("x\n") << QByteArray() << 0;
    }
    void downloadsFillTheCache()
    {
        QFETCH(QByteArray, url);
        QFETCH(QByteArray, status);
        QFETCH(QByteArray, reply);
        const QString rtInfo = CloudClient::ExperimentDir(42) + "/rt_info";
        QFile old(rtInfo);
        QVERIFY(old.open(QIODevice::WriteOnly) && old.write("old\nold\nold\n") == 12);
        old.close();
        CloudClient client(url.isEmpty() ? server.BaseUrl() : url);
        server.Answer("/api/user/v1/download-rtinfo-file/42", reply, status);
        CloudExperiment experiment;
        experiment.participants = 9;
        client.UpdateParticipants(42, experiment);
        QCOMPARE(client.LastCallFailed(), status.isEmpty() || !url.isEmpty());
        QTEST(ReadAll(rtInfo), "file");
        QTEST(experiment.participants, "participants");
    }

    void progressIsReportedAndCancels()
    {
        server.Answer("/api/p", QByteArray(5000, ' '));
        CloudClient client(server.BaseUrl());
        for (const bool cancel : {false, true}) {
            ProgressState progress{cancel, -1};
            client.RestCall("p", {}, HttpMethod::Get, &progress);
            QCOMPARE(progress.percent, cancel ? -1 : 100);
            QCOMPARE(client.LastCallFailed(), cancel);
        }
    }

    // Nothing is written outside the destination, whatever the names, and
    // every archive comes to an end.
    void unpackingStaysInside_data()
    {
        QTest::addColumn<QByteArray>("archive");
        QTest::addColumn<bool>("unpacked");
        QTest::addColumn<QString>("contents");
        const QByteArray plain = ZipBytes({{"a.txt", "A"}, {"b.txt", "B"}});
        QByteArray unreadable = ZipBytes({{"b.txt", QByteArray(100, 'b')}, {"a.txt", "A"}});
        unreadable[30 + 5] = 0x07; // the first deflate block gets the reserved type
        QTest::newRow("directories first, middle and last")
            << ZipBytes({{"d1/", ""}, {"a.txt", "A"}, {"d2/", ""}, {"b.txt", "B"}, {"d3/", ""}}) << true
            << "a.txt=A b.txt=B";
        QTest::newRow("file in a subdirectory") << ZipBytes({{"sub/c.txt", "C"}, {"a.txt", "A"}}) << true << "a.txt=A";
        QTest::newRow("names that leave") << ZipBytes({{"../x", "X"}, {"/x", "X"}, {"ok/../../y", "Y"},
                                                       {QFile::encodeName(QDir::tempPath()) + "/zephlane-x", "X"},
                                                       {"a.txt", "A"}})
                                          << true << "a.txt=A";
        QTest::newRow("long name cut") << ZipBytes({{QByteArray(256, 'n'), "N"}}) << true
                                       << QString(255, 'n') + "=N";
        QTest::newRow("truncated") << plain.left(plain.size() / 2) << false << "";
        QTest::newRow("not a zip") << QByteArray("<html>error</html>") << false << "";
        QTest::newRow("unreadable entry") << unreadable << false << "b.txt=";
    }
    void unpackingStaysInside()
    {
        QFETCH(QByteArray, archive);
        QTemporaryDir root;
        const QString archivePath = files.Write(archive);
        QDir(root.path()).mkdir("data");
        const bool unpacked = UnzipArchive(QFile::encodeName(archivePath).constData(),
                                           QFile::encodeName(root.filePath("data/")).constData());
        QTEST(unpacked, "unpacked");
        QTEST(Contents(root.filePath("data")), "contents");
        QCOMPARE(QDir(root.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList("data"));
        QVERIFY(!QFile::exists(QDir::tempPath() + "/zephlane-x"));
    }
};

ZEPHLANE_TEST_MAIN(TestCloudClient)
#include "tst_cloudclient.moc"
