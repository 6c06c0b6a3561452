// SPDX-License-Identifier: GPL-3.0-or-later
#include "mainwindow.h"

#include <QApplication>
#include <QIcon>

int main(int argc, char *argv[])
{
    // Must be set before the application object exists.
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication app(argc, argv);
    // The same drawing that the desktop's menu shows, at every size drawn.
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 64, 128, 256})
        icon.addFile(QStringLiteral(":/img/zephlane-%1.png").arg(side));
    app.setWindowIcon(icon);
    // The menu entry's name, which the window carries (as its Wayland app
    // ID, for one) so that the desktop shows it as that entry's window.
    QGuiApplication::setDesktopFileName(QStringLiteral(ZEPHLANE_APP_ID));
    MainWindow window;
    window.show();
    return app.exec();
}
