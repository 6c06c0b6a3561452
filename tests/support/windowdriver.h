// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "datafilebuilder.h"
#include "mainwindow.h"
#include "modalcatcher.h"
#include "tablecontents.h"
#include "testenvironment.h"

#include <QTemporaryDir>
#include <QtTest>
#include <QtWidgets>

#include <memory>

// Drives a shown MainWindow the way a user does: files written into a
// temporary directory and added through "Add Files...", list rows clicked,
// message boxes and file dialogs answered by a ModalCatcher. It also reads
// back what the window shows, as text that a test compares in one go. Its
// header brings what a window test needs.
class WindowDriver
{
public:
    // The window's cloud client talks to cloudBaseUrl within these limits.
    explicit WindowDriver(const QByteArray &cloudBaseUrl = ZEPHLANE_CLOUD_BASE_URL,
                          const CloudLimits &cloudLimits = CloudLimits());
    ~WindowDriver();

    MainWindow &Window() { return *window; }
    ModalCatcher &Catcher() { return catcher; }
    QString Path(const QString &name) const { return dir.filePath(name); }
    QString Write(const QString &name, const DataFileBuilder &builder) const { return builder.Write(Path(name)); }

    template <typename T>
    T *Find(const QString &name) const
    {
        return window->findChild<T *>(name);
    }
    QTableView *Raw() const { return Find<QTableView>(QStringLiteral("rawDataView")); }
    QTableView *Sections() const { return Find<QTableView>(QStringLiteral("sectionDataView")); }
    void Trigger(const QString &action) { Find<QAction>(action)->trigger(); }

    // Through the file dialog of "Add Files..."; messages seen stay recorded.
    void AddFiles(const QStringList &paths);
    // Writes the file under a name of its own and adds it.
    void Open(const DataFileBuilder &builder) { AddFiles({Write(QString("data%1.txt").arg(++written), builder)}); }
    // Clicks the rows of a list (the local one by default), holding Ctrl after the first.
    void ClickRows(const QList<int> &rows, QListWidget *list = nullptr);
    void Click(const QString &button) { QTest::mouseClick(Find<QWidget>(button), Qt::LeftButton); }
    void ShowTab(int index) { Find<QWidget>(QStringLiteral("tabWidget"))->setProperty("currentIndex", index); }

    // Clicks a cell or a column header of a table, scrolling it into view first.
    static void ClickCell(QTableView *view, int row, int column, Qt::MouseButton button = Qt::LeftButton,
                          Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    static void ClickHeader(QTableView *view, int column);

    // The raw table's column, top to bottom.
    QStringList Column(int column) const;
    // The general summary, rows joined by ", " and their cells by "|".
    QString Summary() const;
    // The experiment shown (or "Different experiments") and the file count line, joined by "|".
    QString FileInfo() const;
    // 1 or 0 for each command that follows the file and the tab, in four
    // groups: Remove, Merge, Select All and the two buttons; the ten row and
    // column actions that a tab change switches; Flag Selection; Copy and
    // Row Colors.
    QString ActionStates() const;

    // A small file of Kelmarun's columns for `experiment`, with `trials`
    // correct rows in one block, reaction times 400, 401 and on.
    static DataFileBuilder Stroop(const QString &experiment, int trials);
    // Trials of Kelmarun's columns, given as "block trial code time
    // [congruency [side]]" and joined by ", ".
    static DataFileBuilder Trials(const QString &trials);
    // Reaction times 300, 100 and 200 in blocks B2, B1 and B3; the second an error.
    static DataFileBuilder ThreeTimes() { return Trials(QStringLiteral("B2 T1 C 300, B1 T2 E 100, B3 T3 C 200")); }

private:
    QTemporaryDir dir;
    ModalCatcher catcher;
    std::unique_ptr<MainWindow> window;
    int written = 0;
};
