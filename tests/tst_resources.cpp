// The images are looked up by fixed resource paths all over the program, and
// the buttons and the bell curve are shown at their natural size.

#include "testenvironment.h"

#include <QtTest>
#include <QSettings>

class TestResources : public QObject
{
    Q_OBJECT

private slots:
    // Each image by its path, with the size it must have (0: any).
    void everyImageLoadsAtItsSize()
    {
        QStringList paths{":/img/flag.png 0x0", ":../img/ascending.png 0x0", ":../img/descending.png 0x0", ":/img/km_cloud.png 0x0",
                          ":/img/talvox.png 0x0", ":/img/warning_blue_w16.png 16x0"};
        for (const char *name : {"new_std", "new_pressed", "delete_std", "delete_disabled", "delete_hover", "delete_pressed"})
            paths << QString(":/img/icon_lb_%1.png 28x22").arg(name);
        for (const char *state : {"std", "hover", "pressed"})
            paths << QString(":/img/icon_cloud_options_%1.png 50x28").arg(state);
        for (int zones = 0; zones < 16; ++zones)
            paths << QString(":/img/bellcurve%1.png 180x90").arg(zones);
        for (const QString &path : paths) {
            const QImage image(path.section(' ', 0, 0));
            const QString size = QString("%1x%2").arg(path.contains(" 0x") ? 0 : image.width()).arg(path.endsWith("x0") ? 0 : image.height());
            QCOMPARE(path.section(' ', 0, 0) + ' ' + (image.isNull() ? "missing" : size), path);
        }
        QCOMPARE(QSettings(":/qt.conf", QSettings::IniFormat).value("Paths/Plugins").toString(), ".");
    }

    // The flag dialog toggles zone 1, 2, 4 or 8 for a click below x 64, from
    // 64, from 90 and from 117. One point inside each range, under the curve,
    // must look like the fully marked picture exactly when that zone's bit is
    // set.
    void bellCurveMarksTheZonesOfItsBits()
    {
        auto curve = [](int zones) { return QImage(QString(":/img/bellcurve%1.png").arg(zones)).convertToFormat(QImage::Format_ARGB32); };
        const QImage none = curve(0);
        const QImage all = curve(15);
        for (int zones = 0; zones < 16; ++zones) {
            for (int zone = 0; zone < 4; ++zone) {
                const QPoint point(QVector<int>{56, 77, 103, 125}[zone], none.height() * 2 / 3);
                QVERIFY(none.pixel(point) != all.pixel(point));
                QCOMPARE(curve(zones).pixel(point), (zones & (1 << zone) ? all : none).pixel(point));
            }
        }
    }
};

ZEPHLANE_TEST_MAIN(TestResources)
#include "tst_resources.moc"
