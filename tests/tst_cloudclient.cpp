// SPDX-License-Identifier: GPL-3.0-or-later
// The cloud client against a real HTTP server on the loopback address: what
// goes out on the wire and how replies and error pages are read; and the
// unpacking of archives. What a download leaves in the cache shows in the
// panel's tests.

#include "cloudcache.h"
#include "cloudclient.h"
#include "loopbackserver.h"
#include "testenvironment.h"
#include "testfiles.h"
#include "unziparchive.h"
#include "zipbytes.h"

#include <QtTest>
#include <QDir>
#include <QDirIterator>
#include <QRegularExpression>
#include <QScopeGuard>

#include <limits>

#include <sys/stat.h>
#include <unistd.h>

namespace {

const QByteArray kLogin = "/api/user/v1/login";
const QByteArray kProfile = "/api/user/v1/profile";
const QByteArray kRtInfo = "/api/user/v1/download-rtinfo-file/7";
const QByteArray kResult = "/api/user/v1/download-result/7";
const QByteArray kGoodLogin = R"({"success":true,"data":{"access_token":"T1"}})";
const qint64 kNoRoomLeft = std::numeric_limits<qint64>::max() / 2;

// A good reply of `size` bytes: for rt_info that many newlines, for the
// JSON calls a sign-in and profile in one, padded out.
QByteArray Padded(const QByteArray &path, int size)
{
    if (path == kRtInfo)
        return QByteArray(size, '\n');
    const QByteArray start = R"({"success":true,"data":{"access_token":"T","email":"e"},"pad":")";
    return start + QByteArray(size - start.size() - 2, 'x') + "\"}";
}

QString StopName(WriteStop stop)
{
    static const char *const names[] = {"none", "too large", "disk nearly full", "write failed"};
    return names[int(stop)];
}

// What the client made of a call to `path` (JSON or the participants
// count, or how a download stopped), whether it failed, then what the
// server saw of each streamed reply. A client that was to leave at a time
// limit of one second is "in time" when it left after 0.5 to 10 seconds by
// the server's clock.
QStringList Outcome(CloudClient &client, LoopbackServer &server, const QByteArray &path, const QString &target,
                    bool timed = false)
{
    QStringList seen;
    CloudProfile profile;
    CloudExperiment experiment;
    if (path == kLogin)
        seen << (client.Login("a", "b") ? "true" : "false");
    else if (path == kProfile)
        seen << (client.GetProfile(profile) ? "true" : "false");
    else if (path == kRtInfo && target.isEmpty())
        seen << CloudCache(client).UpdateParticipants(7, experiment) << QString::number(experiment.participants);
    else
        seen << StopName(path == kResult ? client.DownloadResult(7, target) : client.DownloadRtInfo(7, target));
    seen << (client.LastCallFailed() ? "failed" : "ok");
    for (const int hangUp : server.TakeHangUps()) {
        if (hangUp < 0)
            seen << "took it all";
        else if (!timed)
            seen << "hung up";
        else
            seen << (hangUp >= 500 && hangUp < 10000 ? QString("hung up in time") : QString("hung up after %1 ms").arg(hangUp));
    }
    seen.removeAll(QString());
    return seen;
}

// The mode of each entry under `root`, root included, as "path 700".
QStringList Modes(const QString &root)
{
    QStringList modes;
    QDirIterator entries(root, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    for (QString path = root; !path.isEmpty(); path = entries.hasNext() ? entries.next() : QString()) {
        struct stat status;
        lstat(QFile::encodeName(path).constData(), &status);
        modes << QFileInfo(path).absoluteFilePath().mid(QFileInfo(root).absolutePath().size() + 1) + ' ' + QString::number(status.st_mode & 0777, 8);
    }
    modes.sort();
    return modes;
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
        // A token goes into a header line as it is: one that would break the
        // line, or end the token early, fails the sign-in.
        QTest::newRow("token with a line break") << kLogin << ok
            << QByteArray(R"({"success":true,"data":{"access_token":"T\r\nX-Injected: 1"}})") << "false ok";
        QTest::newRow("token with a space") << kLogin << ok << QByteArray(R"({"success":true,"data":{"access_token":"T 3"}})")
                                            << "false ok";
        QTest::newRow("token with a control character") << kLogin << ok
            << QByteArray(R"({"success":true,"data":{"access_token":"T\u0085"}})") << "false ok";
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
            seen << server.TakeRequests().value(0).split('\n').filter(QRegularExpression("^(Authorization|X-Injected):"));
        if (path.endsWith("profile"))
            seen << profile.email << (profile.passwordSet ? "set" : "unset") << (profile.isDelegate ? "delegate" : "-")
                 << profile.parentName << QString::number(profile.limitPackage);
        for (const CloudExperiment &e : *client.Experiments())
            if (path.endsWith("experiments"))
                seen << QStringLiteral("%1 %2 %3 %4 %5,").arg(e.code).arg(e.name, e.expiryDate).arg(int(e.isTerminated)).arg(e.size);
        QTEST(seen.join(' '), "read");
    }

    // A JSON reply or participants file of up to 16 MB is read; a larger
    // one, or one without end, is a failed call, given up at the limit.
    void repliesHaveALimit_data()
    {
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<int>("size");
        QTest::addColumn<QString>("read");
        const int limit = 16 << 20;
        QTest::newRow("sign-in of 16 MB") << kLogin << limit << "true ok";
        QTest::newRow("sign-in over 16 MB") << kLogin << limit + 1 << "false failed";
        QTest::newRow("profile without end") << kProfile << -1 << "false failed hung up";
        QTest::newRow("participants file of 16 MB") << kRtInfo << limit << "16777216 ok";
        QTest::newRow("participants file over 16 MB") << kRtInfo << limit + 1 << "0 failed";
        QTest::newRow("participants file without end") << kRtInfo << -1 << "0 failed hung up";
    }
    void repliesHaveALimit()
    {
        QFETCH(QByteArray, path);
        QFETCH(int, size);
        if (size < 0)
            server.Stream(path, Padded(path, 64 << 10).right(64 << 10), 1024);
        else
            server.Answer(path, Padded(path, size));
        CloudClient client(server.BaseUrl());
        QTEST(Outcome(client, server, path, QString()).join(' '), "read");
    }

    // A JSON call or participants file ends within its time in all, however
    // the service trickles; an archive goes on as long as it comes fast
    // enough. The limits are shortened to a second. The server sends one
    // chunk every 50 ms.
    void slowTransfersEnd_data()
    {
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<int>("chunkBytes");
        QTest::addColumn<int>("chunks");
        QTest::addColumn<QString>("read");
        // 20 bytes a second for 20 seconds: never stalled, never done in time.
        QTest::newRow("sign-in trickling") << kLogin << 1 << 400 << "false failed hung up in time";
        QTest::newRow("participants file trickling") << kRtInfo << 1 << 400 << "0 failed hung up in time";
        // 200 bytes a second, under the archive's least speed.
        QTest::newRow("archive trickling") << kResult << 10 << 400 << "none failed hung up in time";
        // 8 KB a second for two and a half seconds, longer than a call may last.
        QTest::newRow("archive slow but steady") << kResult << 400 << 50 << "none ok took it all";
    }
    void slowTransfersEnd()
    {
        QFETCH(QByteArray, path);
        QFETCH(int, chunkBytes);
        QFETCH(int, chunks);
        server.Stream(path, QByteArray(chunkBytes, '\n'), chunks, 50);
        CloudLimits limits;
        limits.callSeconds = 1;
        limits.slowSeconds = 1;
        CloudClient client(server.BaseUrl(), limits);
        QTEST(Outcome(client, server, path, path == kResult ? files.Path("slow.zip") : QString(), true).join(' '), "read");
    }

    // An archive stops at its limit, shortened to 64 KB, whether its size
    // is announced or it has no end; any download stops at the disk's
    // free-space reserve. Either is a failed call that leaves no file.
    void downloadsStopAtTheirLimits_data()
    {
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<int>("size");
        QTest::addColumn<qint64>("reserve");
        QTest::addColumn<QString>("read");
        QTest::newRow("archive of 64 KB") << kResult << 65536 << qint64(0) << "none ok 65536";
        QTest::newRow("archive announced over 64 KB") << kResult << 65537 << qint64(0) << "too large failed no file";
        QTest::newRow("archive without end") << kResult << -1 << qint64(0) << "too large failed hung up no file";
        QTest::newRow("archive, disk nearly full") << kResult << 10 << kNoRoomLeft << "disk nearly full failed no file";
        QTest::newRow("participants file, disk nearly full") << kRtInfo << 10 << kNoRoomLeft << "disk nearly full failed no file";
    }
    void downloadsStopAtTheirLimits()
    {
        QFETCH(QByteArray, path);
        QFETCH(int, size);
        QFETCH(qint64, reserve);
        if (size < 0)
            server.Stream(path, QByteArray(8 << 10, 'x'), 1024);
        else
            server.Answer(path, QByteArray(size, 'x'));
        const QString target = files.Write(QByteArray("earlier"));
        CloudLimits limits;
        limits.downloadBytes = 64 << 10;
        limits.freeSpaceReserve = reserve;
        CloudClient client(server.BaseUrl(), limits);
        QStringList seen = Outcome(client, server, path, target);
        QTEST((seen << (QFile::exists(target) ? QString::number(QFileInfo(target).size()) : "no file")).join(' '), "read");
    }

    // Unpacking stops once the archive has given more than 200 times its
    // size, when a write fails, or when the disk would fall below its
    // reserve: the entry being written is deleted, the files before it
    // stay and the rest are passed over. Contents as name and size.
    void unpackingStopsAtItsLimits_data()
    {
        QTest::addColumn<QByteArray>("archive");
        QTest::addColumn<QString>("fullFile");
        QTest::addColumn<qint64>("reserve");
        QTest::addColumn<QString>("read");
        // Forty entries share one compressed copy of 64 KB: those that fit
        // whole within 200 times the archive's size stay.
        const QByteArray overlapping = OverlappingZipBytes(QByteArray(64 << 10, 'x'), 40);
        QStringList fitting{"too large"};
        for (int i = 0; i < 200 * overlapping.size() / (64 << 10); ++i)
            fitting << QString::asprintf("f%04d.txt=65536", i);
        QTest::newRow("overlapping entries") << overlapping << QString() << qint64(0) << fitting.join(' ');
        const QByteArray wholeRatio = ZipBytes({{"a.txt", QByteArray(200, 'a')}});
        QTest::newRow("well within the ratio") << wholeRatio << QString() << qint64(0) << "none a.txt=200";
        // b.txt stands for a file on a full disk.
        QTest::newRow("a write fails") << ZipBytes({{"a.txt", "A"}, {"b.txt", "B"}, {"c.txt", "C"}}) << "b.txt" << qint64(0)
                                       << "write failed a.txt=1";
        QTest::newRow("disk nearly full") << ZipBytes({{"a.txt", ""}, {"b.txt", "B"}, {"c.txt", ""}}) << QString() << kNoRoomLeft
                                          << "disk nearly full a.txt=0";
    }
    void unpackingStopsAtItsLimits()
    {
        QFETCH(QByteArray, archive);
        QFETCH(QString, fullFile);
        QFETCH(qint64, reserve);
        const QTemporaryDir root;
        const QDir data(root.filePath("data"));
        QVERIFY(data.mkpath("."));
        if (!fullFile.isEmpty())
            QVERIFY(QFile::link("/dev/full", data.filePath(fullFile)));
        CloudLimits limits;
        limits.freeSpaceReserve = reserve;
        WriteStop stop = WriteStop::None;
        const bool unpacked = UnzipArchive(QFile::encodeName(files.Write(archive)).constData(),
                                           QFile::encodeName(data.path() + '/').constData(), limits, &stop);
        QStringList seen{StopName(stop)};
        for (const QFileInfo &file : data.entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System, QDir::Name))
            seen << file.fileName() + '=' + QString::number(file.size());
        QTEST(seen.join(' '), "read");
        QCOMPARE(unpacked, stop == WriteStop::None);
    }

    // The cache's folders and the files in them are for their owner alone,
    // whatever the umask; a folder or file there before is made so too.
    void cacheIsForItsOwnerOnly()
    {
        server.Answer(kRtInfo, "1\n2\n");
        server.Answer(kResult, ZipBytes({{"a.txt", "A"}, {"b.txt", "B"}}));
        QDir(CloudCache::AppDataDir() + "/Cloud").removeRecursively();
        const mode_t saved = umask(0);
        const auto restore = qScopeGuard([saved] { umask(saved); });
        CloudClient client(server.BaseUrl());
        CloudCache cache(client);
        CloudExperiment experiment;
        cache.UpdateParticipants(7, experiment);
        QVERIFY(QDir().mkpath(CloudCache::ExperimentDir(7) + "/data"));
        QFile earlier(CloudCache::ExperimentDir(7) + "/data/b.txt");
        QVERIFY(earlier.open(QIODevice::WriteOnly));
        earlier.close();
        cache.RefreshExperimentData(7, experiment.participants);
        QCOMPARE(Modes(CloudCache::AppDataDir() + "/Cloud"),
                 QStringList({"Cloud 700", "Cloud/7 700", "Cloud/7/data 700", "Cloud/7/data.zip 600", "Cloud/7/data/a.txt 600",
                              "Cloud/7/data/b.txt 600", "Cloud/7/rt_info 600"}));
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
        WriteStop stop = WriteStop::None;
        const bool unpacked = UnzipArchive(QFile::encodeName(files.Write(archive)).constData(),
                                           QFile::encodeName(root.filePath("data/")).constData(), CloudLimits(), &stop);
        QTEST(unpacked, "unpacked");
        QTEST(Contents(root.filePath("data")), "contents");
        QCOMPARE(QDir(root.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList("data"));
    }
};

ZEPHLANE_TEST_MAIN(TestCloudClient)
#include "tst_cloudclient.moc"
