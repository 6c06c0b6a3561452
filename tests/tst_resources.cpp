// The images are looked up by fixed resource paths all over the program, and
// the buttons and the bell curve are shown at their natural size.

#include "testenvironment.h"

#include <QApplication>
#include <QSettings>
#include <QtTest>

namespace {

QImage BellCurve(int zones)
{
    return QImage(QStringLiteral(":/img/bellcurve%1.png").arg(zones)).convertToFormat(QImage::Format_ARGB32);
}

} // namespace

class TestResources : public QObject
{
    Q_OBJECT

private slots:
    void everyImageLoadsAtItsSize_data();
    void everyImageLoadsAtItsSize();
    void bellCurveMarksTheZonesOfItsBits();
    void qtConfLooksForPluginsBesideTheProgram();
};

void TestResources::everyImageLoadsAtItsSize_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QSize>("size"); // 0: any size in that direction
    const auto add = [](const QString &path, int width, int height) {
        QTest::newRow(qPrintable(path)) << path << QSize(width, height);
    };
    for (const char *path : {":/img/flag.png", ":../img/ascending.png", ":../img/descending.png", ":/img/km_cloud.png",
                             ":/img/talvox.png"})
        add(path, 0, 0);
    add(":/img/warning_blue_w16.png", 16, 0);
    for (const char *name :
         {"new_std", "new_pressed", "delete_std", "delete_disabled", "delete_hover", "delete_pressed"})
        add(QStringLiteral(":/img/icon_lb_%1.png").arg(name), 28, 22);
    for (const char *state : {"std", "hover", "pressed"})
        add(QStringLiteral(":/img/icon_cloud_options_%1.png").arg(state), 50, 28);
    for (int zones = 0; zones < 16; ++zones)
        add(QStringLiteral(":/img/bellcurve%1.png").arg(zones), 180, 90);
}

void TestResources::everyImageLoadsAtItsSize()
{
    QFETCH(QString, path);
    QFETCH(QSize, size);
    const QImage image(path);
    QVERIFY(!image.isNull());
    QCOMPARE(QSize(size.width() ? image.width() : 0, size.height() ? image.height() : 0), size);
}

// The flag dialog toggles zone 1, 2, 4 or 8 for a click below x 64, from 64,
// from 90 and from 117. One point inside each range, under the curve, must
// look like the fully marked picture exactly when that zone's bit is set.
void TestResources::bellCurveMarksTheZonesOfItsBits()
{
    const QImage none = BellCurve(0);
    const QImage all = BellCurve(15);
    const int y = none.height() * 2 / 3;
    const int xs[] = {56, 77, 103, 125};
    for (int zones = 0; zones < 16; ++zones) {
        const QImage image = BellCurve(zones);
        for (int zone = 0; zone < 4; ++zone) {
            QVERIFY(none.pixel(xs[zone], y) != all.pixel(xs[zone], y));
            QCOMPARE(image.pixel(xs[zone], y), (zones & (1 << zone) ? all : none).pixel(xs[zone], y));
        }
    }
}

void TestResources::qtConfLooksForPluginsBesideTheProgram()
{
    const QSettings conf(":/qt.conf", QSettings::IniFormat);
    QCOMPARE(conf.value("Paths/Plugins").toString(), QString("."));
}

ZEPHLANE_TEST_MAIN(TestResources)
#include "tst_resources.moc"
