#pragma once

#include <QMainWindow>

// The program's one window.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    MainWindow();
};
