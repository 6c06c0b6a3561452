#include "mainwindow.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    // Must be set before the application object exists.
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication app(argc, argv);
    MainWindow window;
    window.show();
    return app.exec();
}
