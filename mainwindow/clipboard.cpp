// MainWindow's copying to the clipboard and the arrow keys on table headers.

#include "mainwindow.h"
#include "ui_mainwindow.h"

#include <QHeaderView>
#include <QKeyEvent>

// Stand-in until copying is written.
void MainWindow::CopyHelper()
{
}

// While a header of a table has focus every key goes to the header keys,
// also those that they ignore.
bool MainWindow::HeaderKeyFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease)
        return false;
    QTableView *view = watched == ui->rawDataView       ? ui->rawDataView
                       : watched == ui->sectionDataView ? ui->sectionDataView
                                                        : nullptr;
    if (!view || !(view->horizontalHeader()->hasFocus() || view->verticalHeader()->hasFocus()))
        return false;
    HeaderArrowKey(view, static_cast<QKeyEvent *>(event));
    return true;
}

// Stand-in until the header keys are written.
void MainWindow::HeaderArrowKey(QTableView *, QKeyEvent *)
{
}
