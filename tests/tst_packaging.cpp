// What `cmake --install` lays out for a desktop: the program, a valid menu
// entry and metainfo file, and the icon at every size of the icon theme;
// and beside it the merge tool, free of Qt Widgets, with its manual page.

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QString kAppId = QStringLiteral("com.talvox.Zephlane");

// Runs a tool to its end; its exit status and whatever it printed.
QPair<int, QString> Run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    if (!process.waitForFinished(120000))
        return {-1, program + QStringLiteral(" did not finish")};
    return {process.exitCode(), QString::fromLocal8Bit(process.readAll())};
}

} // namespace

class TestPackaging : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void installsProgramMenuEntryAndIcons_data();
    void installsProgramMenuEntryAndIcons();
    void menuEntryAndMetainfoAreValid_data();
    void menuEntryAndMetainfoAreValid();

private:
    QTemporaryDir prefix;
};

void TestPackaging::initTestCase()
{
    const auto [status, output] =
        Run(QStringLiteral(ZEPHLANE_CMAKE), {"--install", ZEPHLANE_BINARY_DIR, "--prefix", prefix.path()});
    QVERIFY2(status == 0, qPrintable(output));
}

void TestPackaging::installsProgramMenuEntryAndIcons_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("program") << "bin/zephlane";
    QTest::newRow("merge tool") << "bin/zephlane-merge";
    QTest::newRow("merge tool manual") << "share/man/man1/zephlane-merge.1";
    QTest::newRow("menu entry") << "share/applications/" + kAppId + ".desktop";
    QTest::newRow("metainfo") << "share/metainfo/" + kAppId + ".metainfo.xml";
    for (const int side : {16, 24, 32, 48, 64, 128, 256})
        QTest::newRow(qPrintable(QString("icon %1").arg(side)))
            << QString("share/icons/hicolor/%1x%1/apps/%2.png").arg(side).arg(kAppId);
}

void TestPackaging::installsProgramMenuEntryAndIcons()
{
    QFETCH(QString, path);
    const QFileInfo installed(QDir(prefix.path()).filePath(path));
    QVERIFY2(installed.isFile(), qPrintable(path));
    // The merge tool runs where there is no display, so Qt Widgets must not
    // even be loaded.
    if (path.endsWith("-merge")) {
        const auto [status, output] = Run("readelf", {"-d", installed.filePath()});
        QVERIFY2(status == 0 && output.contains("libQt5Core") && !output.contains("Widgets"), qPrintable(output));
    }
    if (path.endsWith(".png")) {
        const QImage icon(installed.filePath());
        const int side = path.section('/', 3, 3).section('x', 0, 0).toInt();
        QCOMPARE(icon.size(), QSize(side, side));
    }
}

void TestPackaging::menuEntryAndMetainfoAreValid_data()
{
    QTest::addColumn<QString>("validator");
    QTest::addColumn<QStringList>("arguments");
    const QString share = prefix.path() + "/share/";
    QTest::newRow("menu entry") << "desktop-file-validate" << QStringList{share + "applications/" + kAppId + ".desktop"};
    QTest::newRow("metainfo") << "appstreamcli"
                              << QStringList{"validate", "--no-net", share + "metainfo/" + kAppId + ".metainfo.xml"};
}

void TestPackaging::menuEntryAndMetainfoAreValid()
{
    QFETCH(QString, validator);
    QFETCH(QStringList, arguments);
    const auto [status, output] = Run(validator, arguments);
    QVERIFY2(status == 0, qPrintable(output));
}

QTEST_GUILESS_MAIN(TestPackaging)
#include "tst_packaging.moc"
