#include "mainwindow.h"

MainWindow::MainWindow()
{
    setWindowTitle(QStringLiteral("Zephlane 4"));
}
