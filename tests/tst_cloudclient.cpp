// The cloud client against a real HTTP server on the loopback address: what
// goes out on the wire and how replies and error pages are read; and the
// unpacking of archives. What a download leaves in the cache shows in the
// panel's tests.

#include "cloudclient.h"
#include "loopbackserver.h"
#include "testenvironment.h"
#include "testfiles.h"
#include "unziparchive.h"
#include "zipbytes.h"

#include <QtTest>
#include <QDir>
#include <QRegularExpression>

namespace {

const QByteArray kLogin = "/api/user/v1/login";
const QByteArray kGoodLogin = R"({"success":true,"data":{"access_token":"T1"}})";

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
    // Fields are joined as they are; the token of a sign-in goes out with
    // every later request, the next sign-in included, until a failed one
    // clears it; a call without fields sends no body.
    void requestsOnTheWire()
    {
        server.Answer(kLogin, kGoodLogin);
        CloudClient client(server.BaseUrl());
        client.Login("ann@example.com", "pa\"ss");
        client.DownloadRtInfo(7, files.Path("rt_info"));
        server.Answer(kLogin, R"({"success":false})", "401 Unauthorized");
        client.Login("b", "");
        client.RestCall("user/v1/x", {{"a", "1"}, {"b\\", "2"}}, HttpMethod::Put, nullptr);
        client.RestCall("user/v1/x", {}, HttpMethod::Post, nullptr);

        const QStringList requests = server.TakeRequests();
        const QString key = requests.value(0).section("X-Authorization: ", 1).section('\n', 0, 0);
        QVERIFY(QRegularExpression("^[A-Za-z0-9]{64}$").match(key).hasMatch());
        const QString head = " HTTP/1.1\nHost: 127.0.0.1:PORT\naccept: application/json\nX-Authorization: " + key + '\n';
        const QString json = "Content-Type: application/json\n";
        QCOMPARE(requests, QStringList({
            "POST /api/user/v1/login" + head + json
                + "Content-Length: 49\n\n{\"email\": \"ann@example.com\", \"password\": \"pa\"ss\"}",
            "GET /api/user/v1/download-rtinfo-file/7" + head + "Authorization: Bearer T1",
            "POST /api/user/v1/login" + head + "Authorization: Bearer T1\n" + json
                + "Content-Length: 30\n\n{\"email\": \"b\", \"password\": \"\"}",
            "PUT /api/user/v1/x" + head + json + "Content-Length: 21\n\n{\"a\": \"1\", \"b\\\": \"2\"}",
            "POST /api/user/v1/x" + head + json + "Content-Length: 0"}));

        CloudClient refused("http://127.0.0.1:1/api/");
        QVERIFY(!refused.Login("a", "b") && refused.LastCallFailed());
        server.Answer("/api/p", QByteArray(5000, ' '));
        for (const bool cancel : {false, true}) {
            ProgressState progress{cancel, -1};
            client.RestCall("p", {}, HttpMethod::Get, &progress);
            QCOMPARE(progress.percent, cancel ? -1 : 100);
            QCOMPARE(client.LastCallFailed(), cancel);
        }
    }

    // Only a JSON true is success, and only the number 1 counts as set; an
    // error page, an empty reply or a broken connection reads as failure.
    void repliesAreReadByType_data()
    {
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<QByteArray>("status");
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<QString>("read");
        const QByteArray ok = "200 OK";
        const QByteArray profile = "/api/user/v1/profile";
        const QByteArray list = "/api/user/v1/get-all-experiments";
        QTest::newRow("token") << kLogin << ok << QByteArray(R"({"success":true,"data":{"access_token":"T2"}})")
                               << "true ok Authorization: Bearer T2";
        QTest::newRow("no token") << kLogin << ok << QByteArray(R"({"success":true})") << "true ok Authorization: Bearer ";
        QTest::newRow("401") << kLogin << QByteArray("401 Unauthorized") << QByteArray(R"({"success":false})") << "false ok";
        QTest::newRow("success 1") << kLogin << ok << QByteArray(R"({"success":1})") << "false ok";
        QTest::newRow("success text") << list << ok << QByteArray(R"({"success":"true"})") << "false ok";
        QTest::newRow("html page") << kLogin << QByteArray("500 Internal Server Error")
                                   << QByteArray(R"(<html>{"success":true}</html>)") << "false ok";
        QTest::newRow("zero bytes") << kLogin << ok << QByteArray() << "false ok";
        QTest::newRow("hung up") << kLogin << QByteArray() << QByteArray() << "false failed";
        QTest::newRow("profile") << profile << ok << QByteArray(R"({"success":true,"data":{"email":"e","set_password":1,
            "role":{"slug":"delegate"},"parent":{"name":"P"},"current_subscription":{"limit_package":1e12}}})")
                                 << "true ok e set delegate P 1000000000000";
        QTest::newRow("profile, odd values") << profile << ok << QByteArray(R"({"success":true,"data":{"email":"e",
            "set_password":true,"role":{"slug":"Delegate"},"current_subscription":{"limit_package":-4}}})")
                                             << "true ok e unset -  0";
        QTest::newRow("profile failed") << profile << ok << QByteArray(R"({"success":false,"data":{"email":"e"}})")
                                        << "false ok old set -  0";
        QTest::newRow("experiments in reply order") << list << ok << QByteArray(R"({"success":true,"data":[
            {"code":5,"name":"B","expiry_date":"2030-01-01","is_terminated":1,"size":7},
            {"code":3,"name":"A","is_terminated":true,"size":1.5},{"code":5,"size":3000000000},"junk"]})")
            << "true ok 5 B 2030-01-01 1 7, 3 A  0 0, 5   0 0, 0   0 0,";
        QTest::newRow("no experiments") << list << ok << QByteArray(R"({"success":true,"data":[]})") << "true ok";
    }
    void repliesAreReadByType()
    {
        QFETCH(QByteArray, path);
        QFETCH(QByteArray, status);
        QFETCH(QByteArray, reply);
        CloudClient client(server.BaseUrl());
        server.Answer(kLogin, kGoodLogin);
        client.Login("a", "b");
        server.Answer("/api/user/v1/get-all-experiments", R"({"success":true,"data":[{"code":1}]})");
        client.GetExperiments();
        server.Answer(path, reply, status);
        CloudProfile profile;
        profile.email = "old";
        const bool read = path == kLogin ? client.Login("a", "b") : path.endsWith("profile") ? client.GetProfile(profile) : client.GetExperiments();
        QStringList seen{read ? "true" : "false", client.LastCallFailed() ? "failed" : "ok"};
        server.TakeRequests();
        client.RestCall("next", {}, HttpMethod::Get, nullptr);
        if (path == kLogin)
            seen << server.TakeRequests().value(0).split('\n').filter(QRegularExpression("^Authorization:"));
        if (path.endsWith("profile"))
            seen << profile.email << (profile.passwordSet ? "set" : "unset") << (profile.isDelegate ? "delegate" : "-")
                 << profile.parentName << QString::number(profile.limitPackage);
        for (const CloudExperiment &e : *client.Experiments())
            if (path.endsWith("experiments"))
                seen << QStringLiteral("%1 %2 %3 %4 %5,").arg(e.code).arg(e.name, e.expiryDate).arg(int(e.isTerminated)).arg(e.size);
        QTEST(seen.join(' '), "read");
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
            << ZipBytes({{"d1/", ""}, {"a.txt", "A"}, {"d2/", ""}, {"b.txt", "B"}, {"d3/", ""}}) << true << "a.txt=A b.txt=B";
        QTest::newRow("file in a subdirectory") << ZipBytes({{"sub/c.txt", "C"}, {"a.txt", "A"}}) << true << "a.txt=A";
        QTest::newRow("names that leave") << ZipBytes({{"../x", "X"}, {"/x", "X"}, {"ok/../../y", "Y"}, {"a.txt", "A"}})
                                          << true << "a.txt=A";
        QTest::newRow("long name cut") << ZipBytes({{QByteArray(256, 'n'), "N"}}) << true << QString(255, 'n') + "=N";
        QTest::newRow("truncated") << plain.left(plain.size() / 2) << false << "";
        QTest::newRow("not a zip") << QByteArray("<html>error</html>") << false << "";
        QTest::newRow("unreadable entry") << unreadable << false << "b.txt=";
    }
    void unpackingStaysInside()
    {
        QFETCH(QByteArray, archive);
        const QTemporaryDir root;
        QDir(root.path()).mkdir("data");
        const bool unpacked = UnzipArchive(QFile::encodeName(files.Write(archive)).constData(),
                                           QFile::encodeName(root.filePath("data/")).constData());
        QTEST(unpacked, "unpacked");
        QTEST(Contents(root.filePath("data")), "contents");
        QCOMPARE(QDir(root.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList("data"));
    }
};

ZEPHLANE_TEST_MAIN(TestCloudClient)
#include "tst_cloudclient.moc"
