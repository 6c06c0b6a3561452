// What `cmake --install` lays out for a desktop: the program, a valid menu
// entry and metainfo file, and the icon at every size of the icon theme;
// and beside it the merge and summary tools, free of Qt Widgets, with their
// manual pages.

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

class TestPackaging : public QObject
{
    Q_OBJECT

    QTemporaryDir prefix;

    // Runs a tool to its end; whatever it printed if it failed, else nothing.
    static QString Failure(const QString &program, const QStringList &arguments)
    {
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(program, arguments);
        if (!process.waitForFinished(120000))
            return program + " did not finish";
        return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0 ? QString() : program + ": " + process.readAll();
    }

private slots:
    void initTestCase()
    {
        const QString failure = Failure(ZEPHLANE_CMAKE, {"--install", ZEPHLANE_BINARY_DIR, "--prefix", prefix.path()});
        QVERIFY2(failure.isEmpty(), qPrintable(failure));
    }

    // Each file where a desktop looks for it; the menu entry and metainfo
    // pass their validators, each icon has the size its directory names.
    void installsValidFiles_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("validator");
        const QString id = "com.talvox.Zephlane";
        QTest::newRow("program") << "bin/zephlane" << "";
        QTest::newRow("merge tool") << "bin/zephlane-merge" << "";
        QTest::newRow("merge tool manual") << "share/man/man1/zephlane-merge.1" << "";
        QTest::newRow("summary tool") << "bin/zephlane-summary" << "";
        QTest::newRow("summary tool manual") << "share/man/man1/zephlane-summary.1" << "";
        QTest::newRow("menu entry") << "share/applications/" + id + ".desktop" << "desktop-file-validate";
        QTest::newRow("metainfo") << "share/metainfo/" + id + ".metainfo.xml" << "appstreamcli validate --no-net";
        for (const int side : {16, 24, 32, 48, 64, 128, 256})
            QTest::newRow(qPrintable(QString("icon %1").arg(side))) << QString("share/icons/hicolor/%1x%1/apps/%2.png").arg(side).arg(id) << "";
    }
    void installsValidFiles()
    {
        QFETCH(QString, path);
        QFETCH(QString, validator);
        const QString installed = QDir(prefix.path()).filePath(path);
        QVERIFY2(QFileInfo(installed).isFile(), qPrintable(path));
        // The tools run where there is no display, so Qt Widgets must not
        // even be loaded.
        if (path.startsWith("bin/zephlane-")) {
            QProcess readelf;
            readelf.start("readelf", {"-d", installed});
            QVERIFY(readelf.waitForFinished());
            const QByteArray needed = readelf.readAll();
            QVERIFY2(needed.contains("libQt5Core") && !needed.contains("Widgets"), needed.constData());
        }
        if (path.endsWith(".png")) {
            const int side = path.section('/', 3, 3).section('x', 0, 0).toInt();
            QCOMPARE(QImage(installed).size(), QSize(side, side));
        }
        QStringList arguments = validator.split(' ', Qt::SkipEmptyParts);
        if (!arguments.isEmpty()) {
            const QString failure = Failure(arguments.takeFirst(), arguments << installed);
            QVERIFY2(failure.isEmpty(), qPrintable(failure));
        }
    }
};

QTEST_GUILESS_MAIN(TestPackaging)
#include "tst_packaging.moc"
