// SPDX-License-Identifier: GPL-3.0-or-later
// MainWindow's copying to the clipboard and the arrow keys on table headers.

#include "mainwindow.h"
#include "ui_mainwindow.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>

// Cells go out in the selection model's order, range by range as the user
// made them, and hidden columns inside a range go out too. With nothing
// selected the clipboard is emptied; that is deliberate.
void MainWindow::CopyHelper()
{
    QTableView *view = ui->rawDataView->isVisible()       ? ui->rawDataView
                       : ui->sectionDataView->isVisible() ? ui->sectionDataView
                                                          : nullptr;
    QString text;
    if (view && view->selectionModel()) {
        const QModelIndexList indexes = view->selectionModel()->selectedIndexes();
        for (int i = 0; i < indexes.size(); ++i) {
            text += indexes[i].data(Qt::DisplayRole).toString();
            if (i + 1 < indexes.size())
                text += indexes[i + 1].row() == indexes[i].row() ? QLatin1Char('\t') : QLatin1Char('\n');
        }
    }
    QGuiApplication::clipboard()->setText(text, QClipboard::Clipboard);
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

// Without Shift an arrow leaves the header for the table body, at row 0 of
// the next column or column 0 of the next row; with Shift the header keeps
// the focus and the view's own Shift handling extends the selection. Shift
// is followed only while a header has focus, which is accepted.
void MainWindow::HeaderArrowKey(QTableView *view, QKeyEvent *event)
{
    if (event->key() == Qt::Key_Shift) {
        shiftHeld = event->type() == QEvent::KeyPress;
        return;
    }
    const QVector<int> arrows{Qt::Key_Left, Qt::Key_Up, Qt::Key_Right, Qt::Key_Down};
    if (event->type() != QEvent::KeyPress || !arrows.contains(event->key()))
        return;
    const QItemSelectionModel *selection = view->selectionModel();
    if (!selection || !selection->hasSelection())
        return;
    // The filter calls this only while one of the view's headers has focus.
    const Qt::Orientation mode = view->horizontalHeader()->hasFocus() ? Qt::Horizontal : Qt::Vertical;
    const QModelIndexList whole =
        mode == Qt::Horizontal ? selection->selectedColumns(0) : selection->selectedRows(0);
    // Cells may be selected with no whole column or row among them.
    if (whole.isEmpty())
        return;
    const int next = NextHeaderPosition(whole, mode, view, event);
    if (!shiftHeld) {
        const QAbstractItemModel *model = view->model();
        view->setCurrentIndex(mode == Qt::Horizontal ? model->index(0, next) : model->index(next, 0));
        view->setFocus(Qt::OtherFocusReason);
        ArrowAnchor(view) = -1;
    } else if (mode == Qt::Horizontal) {
        view->selectColumn(next);
    } else {
        view->selectRow(next);
    }
}

// The edge of the selection away from the anchor is the one that moves. The
// result is not clamped: one step before the first column gives -1, which
// selects nothing, and hidden columns are not skipped.
int MainWindow::NextHeaderPosition(const QModelIndexList &selected, Qt::Orientation mode, QTableView *view,
                                   const QKeyEvent *event)
{
    const auto position = [mode](const QModelIndex &index) {
        return mode == Qt::Horizontal ? index.column() : index.row();
    };
    int &anchor = ArrowAnchor(view);
    const int first = position(selected.first());
    const int last = position(selected.last());
    if (first == last)
        anchor = first;
    const int edge = anchor < last ? last : first;
    const int back = mode == Qt::Horizontal ? Qt::Key_Left : Qt::Key_Up;
    const int forward = mode == Qt::Horizontal ? Qt::Key_Right : Qt::Key_Down;
    if (event->key() == back)
        return edge - 1;
    if (event->key() == forward)
        return edge + 1;
    return edge;
}

int &MainWindow::ArrowAnchor(const QTableView *view)
{
    return view == ui->rawDataView ? rawArrowAnchor : sectionArrowAnchor;
}
