#include "testenvironment.h"

#include <QApplication>
#include <QImage>
#include <QPixmap>
#include <QSettings>
#include <QtTest>

// The images are looked up by fixed resource paths all over the program, and
// the buttons and the bell curve are shown at their natural size.
class ResourcesTest : public QObject
{
    Q_OBJECT

private slots:
    void everyImageLoadsAtItsPath_data();
    void everyImageLoadsAtItsPath();
    void buttonStatesLookDifferent_data();
    void buttonStatesLookDifferent();
    void bellCurveMarksTheZonesOfItsBits_data();
    void bellCurveMarksTheZonesOfItsBits();
    void qtConfLooksForPluginsBesideTheProgram();
};

namespace {

// Width or height 0: the image may have any size in that direction.
void AddImage(const QString &path, int width, int height)
{
    QTest::newRow(qPrintable(path)) << path << width << height;
}

QString BellCurvePath(int zones)
{
    return QStringLiteral(":/img/bellcurve%1.png").arg(zones);
}

} // namespace

void ResourcesTest::everyImageLoadsAtItsPath_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    AddImage(QStringLiteral(":/img/flag.png"), 0, 0);
    AddImage(QStringLiteral(":../img/ascending.png"), 0, 0);
    AddImage(QStringLiteral(":../img/descending.png"), 0, 0);
    AddImage(QStringLiteral(":/img/warning_blue_w16.png"), 16, 0);
    AddImage(QStringLiteral(":/img/km_cloud.png"), 0, 0);
    AddImage(QStringLiteral(":/img/talvox.png"), 0, 0);
    for (const char *name : {"new_std", "new_pressed", "delete_std", "delete_disabled", "delete_hover",
                             "delete_pressed"})
        AddImage(QStringLiteral(":/img/icon_lb_%1.png").arg(QLatin1String(name)), 28, 22);
    for (const char *state : {"std", "hover", "pressed"})
        AddImage(QStringLiteral(":/img/icon_cloud_options_%1.png").arg(QLatin1String(state)), 50, 28);
    for (int zones = 0; zones < 16; ++zones)
        AddImage(BellCurvePath(zones), 180, 90);
}

void ResourcesTest::everyImageLoadsAtItsPath()
{
    QFETCH(QString, path);
    QFETCH(int, width);
    QFETCH(int, height);
    const QPixmap pixmap(path);
    QVERIFY2(!pixmap.isNull(), qPrintable(path));
    if (width > 0)
        QCOMPARE(pixmap.width(), width);
    if (height > 0)
        QCOMPARE(pixmap.height(), height);
}

void ResourcesTest::buttonStatesLookDifferent_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    const auto add = [](const char *first, const char *second) {
        QTest::newRow(qPrintable(QStringLiteral("%1/%2").arg(QLatin1String(first), QLatin1String(second))))
            << QStringLiteral(":/img/%1.png").arg(QLatin1String(first))
            << QStringLiteral(":/img/%1.png").arg(QLatin1String(second));
    };
    add("icon_lb_new_std", "icon_lb_new_pressed");
    add("icon_lb_new_std", "icon_lb_delete_std");
    add("icon_lb_delete_std", "icon_lb_delete_disabled");
    add("icon_lb_delete_std", "icon_lb_delete_hover");
    add("icon_lb_delete_hover", "icon_lb_delete_pressed");
    add("icon_cloud_options_std", "icon_cloud_options_hover");
    add("icon_cloud_options_hover", "icon_cloud_options_pressed");
}

void ResourcesTest::buttonStatesLookDifferent()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    const QImage a(first);
    const QImage b(second);
    QVERIFY(!a.isNull() && !b.isNull());
    QVERIFY(a.convertToFormat(QImage::Format_ARGB32) != b.convertToFormat(QImage::Format_ARGB32));
}

void ResourcesTest::bellCurveMarksTheZonesOfItsBits_data()
{
    QTest::addColumn<int>("zones");
    for (int zones = 0; zones < 16; ++zones)
        QTest::newRow(qPrintable(QString::number(zones))) << zones;
}

// The flag dialog toggles zone 1, 2, 4 or 8 for a click below x 64, from 64,
// from 90 and from 117. One point inside each range, under the curve, must
// look like the fully marked picture exactly when that zone's bit is set.
void ResourcesTest::bellCurveMarksTheZonesOfItsBits()
{
    QFETCH(int, zones);
    const QImage none = QImage(BellCurvePath(0)).convertToFormat(QImage::Format_ARGB32);
    const QImage all = QImage(BellCurvePath(15)).convertToFormat(QImage::Format_ARGB32);
    const QImage image = QImage(BellCurvePath(zones)).convertToFormat(QImage::Format_ARGB32);
    const int y = image.height() * 2 / 3;
    const int xs[] = {56, 77, 103, 125};
    for (int zone = 0; zone < 4; ++zone) {
        const int x = xs[zone];
        QVERIFY2(none.pixel(x, y) != all.pixel(x, y), qPrintable(QStringLiteral("zone %1").arg(zone)));
        const QRgb expected = (zones & (1 << zone)) ? all.pixel(x, y) : none.pixel(x, y);
        QCOMPARE(image.pixel(x, y), expected);
    }
}

void ResourcesTest::qtConfLooksForPluginsBesideTheProgram()
{
    const QSettings conf(QStringLiteral(":/qt.conf"), QSettings::IniFormat);
    QCOMPARE(conf.value(QStringLiteral("Paths/Plugins")).toString(), QStringLiteral("."));
}

ZEPHLANE_TEST_MAIN(ResourcesTest)

#include "tst_resources.moc"
