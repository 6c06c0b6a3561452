// SPDX-License-Identifier: GPL-3.0-or-later
// What `cmake --install` lays out for a desktop: the program, a valid menu
// entry and metainfo file, and the icon at every size of the icon theme;
// beside it the merge and summary tools, free of Qt Widgets; the manual
// pages, the licence and the changelog. And the Debian package that cpack
// makes of it, which Debian's own checker, lintian, must pass.

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
        QTest::newRow("summary tool") << "bin/zephlane-summary" << "";
        QTest::newRow("program manual") << "share/man/man1/zephlane.1.gz" << "";
        QTest::newRow("merge tool manual") << "share/man/man1/zephlane-merge.1.gz" << "";
        QTest::newRow("summary tool manual") << "share/man/man1/zephlane-summary.1.gz" << "";
        QTest::newRow("copyright") << "share/doc/zephlane/copyright" << "";
        QTest::newRow("changelog") << "share/doc/zephlane/changelog.gz" << "";
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

    // The changelog's latest entry and the metainfo's latest release are the
    // version being packaged; lintian looks at neither.
    void namesThePackagedVersion_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("pattern");
        QTest::newRow("changelog") << "share/doc/zephlane/changelog.gz" << "^zephlane \\(([^)]+)\\)";
        QTest::newRow("metainfo") << "share/metainfo/com.talvox.Zephlane.metainfo.xml" << "<release version=\"([^\"]+)\"";
    }
    void namesThePackagedVersion()
    {
        QFETCH(QString, path);
        QFETCH(QString, pattern);
        QProcess gzip;
        gzip.start("gzip", {"-dcf", QDir(prefix.path()).filePath(path)});
        QVERIFY(gzip.waitForFinished());
        const QRegularExpressionMatch match = QRegularExpression(pattern).match(QString::fromUtf8(gzip.readAllStandardOutput()));
        QVERIFY2(match.hasMatch(), qPrintable(path));
        QCOMPARE(match.captured(1), QStringLiteral(ZEPHLANE_VERSION));
    }

    // The package is made from the same install rules, in a directory of its
    // own, so that a package built by hand in the build directory stays.
    void debianPackagePassesLintian()
    {
        const QString lintian = QStandardPaths::findExecutable("lintian");
        if (lintian.isEmpty())
            QSKIP("lintian is not installed, so the package is not built and checked (tools/install-deps.sh installs it)");
        QTemporaryDir packageDir;
        QString failure = Failure(ZEPHLANE_CPACK, {"-G", "DEB", "--config", ZEPHLANE_BINARY_DIR "/CPackConfig.cmake", "-B", packageDir.path()});
        QVERIFY2(failure.isEmpty(), qPrintable(failure));
        const QFileInfoList packages = QDir(packageDir.path()).entryInfoList({"*.deb"}, QDir::Files);
        QCOMPARE(packages.size(), 1);
        failure = Failure(lintian, {"--fail-on", "error,warning", packages.first().filePath()});
        QVERIFY2(failure.isEmpty(), qPrintable(failure));
    }

    // Every file the program is built from names its licence in its first
    // lines, so that a file copied out of the tree still says it. The files
    // are those git tracks; a source tree without git is not checked.
    void everySourceFileNamesItsLicence()
    {
        QProcess git;
        git.start("git", {"-C", ZEPHLANE_SOURCE_DIR, "ls-files", "*.cpp", "*.h", "*.ui", "*CMakeLists.txt"});
        if (!git.waitForFinished() || git.exitCode() != 0)
            QSKIP("the source tree is not a git checkout, so its files are not listed");
        const QStringList files = QString::fromUtf8(git.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
        QVERIFY(files.size() > 100);
        QStringList unlicensed;
        for (const QString &name : files) {
            QFile file(QDir(ZEPHLANE_SOURCE_DIR).filePath(name));
            QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(name));
            if (!file.read(200).contains("SPDX-License-Identifier: GPL-3.0-or-later"))
                unlicensed << name;
        }
        QVERIFY2(unlicensed.isEmpty(), qPrintable(unlicensed.join(", ")));
    }
};

QTEST_GUILESS_MAIN(TestPackaging)
#include "tst_packaging.moc"
