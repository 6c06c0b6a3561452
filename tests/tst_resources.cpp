// The images are looked up by fixed resource paths all over the program, and
// the buttons and the bell curve are shown at their natural size.

#include "testenvironment.h"

#include <QApplication>
#include <QSettings>
#include <QtTest>

class TestResources : public QObject
{
    Q_OBJECT

private slots:
    // Each image by its path, with the width and height it must have ("0":
    // any size in that direction).
    void everyImageLoadsAtItsSize()
    {
        QStringList paths{":/img/flag.png 0 0", ":../img/ascending.png 0 0", ":../img/descending.png 0 0", ":/img/km_cloud.png 0 0",
                          ":/img/talvox.png 0 0", ":/img/warning_blue_w16.png 16 0"};
        for (const char *name : {"new_std", "new_pressed", "delete_std", "delete_disabled", "delete_hover", "delete_pressed"})
            paths << QString(":/img/icon_lb_%1.png 28 22").arg(name);
        for (const char *state : {"std", "hover", "pressed"})
            paths << QString(":/img/icon_cloud_options_%1.png 50 28").arg(state);
        for (int zones = 0; zones < 16; ++zones)
            paths << QString(":/img/bellcurve%1.png 180 90").arg(zones);
        for (const QString &path : paths) {
            const QStringList parts = path.split(' ');
            const QImage image(parts[0]);
            QVERIFY2(!image.isNull(), qPrintable(parts[0]));
            const QString size = QString("%1 %2").arg(parts[1] == "0" ? 0 : image.width()).arg(parts[2] == "0" ? 0 : image.height());
            QCOMPARE(parts[0] + ' ' + size, path);
        }
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
        const int y = none.height() * 2 / 3;
        for (int zones = 0; zones < 16; ++zones) {
            for (int zone = 0; zone < 4; ++zone) {
                const int x = QVector<int>{56, 77, 103, 125}[zone];
                QVERIFY(none.pixel(x, y) != all.pixel(x, y));
                QCOMPARE(curve(zones).pixel(x, y), (zones & (1 << zone) ? all : none).pixel(x, y));
            }
        }
    }

    void qtConfLooksForPluginsBesideTheProgram()
    {
        QCOMPARE(QSettings(":/qt.conf", QSettings::IniFormat).value("Paths/Plugins").toString(), ".");
    }
};

ZEPHLANE_TEST_MAIN(TestResources)
#include "tst_resources.moc"
