// SPDX-License-Identifier: GPL-3.0-or-later
// The images are looked up by fixed resource paths all over the program, and
// the bell curve's click zones are fixed in pixels.

#include "testenvironment.h"

#include <QtTest>
#include <QSettings>

class TestResources : public QObject
{
    Q_OBJECT

private slots:
    void everyImageLoads()
    {
        QStringList paths{":/img/flag.png", ":../img/ascending.png", ":../img/descending.png", ":/img/km_cloud.png",
                          ":/img/talvox.png", ":/img/warning_blue_w16.png"};
        for (const char *name : {"new_std", "new_pressed", "delete_std", "delete_disabled", "delete_hover", "delete_pressed"})
            paths << QString(":/img/icon_lb_%1.png").arg(name);
        for (const char *state : {"std", "hover", "pressed"})
            paths << QString(":/img/icon_cloud_options_%1.png").arg(state);
        for (const QString &path : paths)
            QVERIFY2(!QImage(path).isNull(), qPrintable(path));
        QCOMPARE(QSettings(":/qt.conf", QSettings::IniFormat).value("Paths/Plugins").toString(), ".");
    }

    // The flag dialog toggles zone 1, 2, 4 or 8 for a click below x 64, from
    // 64, from 90 and from 117. One point inside each range, under the curve,
    // must look like the fully marked picture exactly when that zone's bit is
    // set. Every picture has the size the zones are measured on.
    void bellCurveMarksTheZonesOfItsBits()
    {
        auto curve = [](int zones) { return QImage(QString(":/img/bellcurve%1.png").arg(zones)).convertToFormat(QImage::Format_ARGB32); };
        const QImage none = curve(0);
        const QImage all = curve(15);
        for (int zones = 0; zones < 16; ++zones) {
            QCOMPARE(curve(zones).size(), QSize(180, 90));
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
