#pragma once

#include "datafilebuilder.h"
#include "mainwindow.h"
#include "modalcatcher.h"

#include <QListWidget>
#include <QTableView>
#include <QTemporaryDir>

#include <memory>

// Drives a shown MainWindow the way a user does: files written into a
// temporary directory and added through "Add Files...", list rows clicked,
// message boxes and file dialogs answered by a ModalCatcher.
class WindowDriver
{
public:
    WindowDriver();
    ~WindowDriver();

    MainWindow &Window() { return *window; }
    ModalCatcher &Catcher() { return catcher; }
    QString Path(const QString &name) const { return dir.filePath(name); }
    QString Write(const QString &name, const DataFileBuilder &builder) const;

    template <typename T>
    T *Find(const QString &name) const
    {
        return window->findChild<T *>(name);
    }

    // Through the file dialog of "Add Files..."; messages seen stay recorded.
    void AddFiles(const QStringList &paths);
    // Clicks the rows of the local list, holding Ctrl after the first.
    void ClickRows(const QList<int> &rows);
    void ClickRows(QListWidget *list, const QList<int> &rows);

    // Clicks a cell or a column header of a table, scrolling it into view first.
    static void ClickCell(QTableView *view, int row, int column, Qt::MouseButton button = Qt::LeftButton,
                          Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    static void ClickHeader(QTableView *view, int column, Qt::MouseButton button = Qt::LeftButton);

    // A small file of the product's columns for `experiment`, with `trials`
    // correct rows in one block.
    static DataFileBuilder Stroop(const QString &experiment, int trials);

private:
    QTemporaryDir dir;
    ModalCatcher catcher;
    std::unique_ptr<MainWindow> window;
};
