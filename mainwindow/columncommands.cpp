// SPDX-License-Identifier: GPL-3.0-or-later
// MainWindow's column commands and the two-click sorting of both tables.

#include "mainwindow.h"
#include "ui_mainwindow.h"

#include "datafile.h"
#include "sizingdelegate.h"

#include <QCursor>
#include <QGuiApplication>
#include <QHeaderView>
#include <QMenu>
#include <QSignalBlocker>

namespace {

// About a second's work of sizing columns to their contents.
const int kColumnsSizedAtOnce = 500;

} // namespace

// Emptiness was settled when the file was read, over all its rows, hidden
// ones too; columns with values are left as they are.
void MainWindow::HideEmptyColumns()
{
    if (!modelsConnected || !currentFile)
        return;
    const MainModel &model = currentFile->GetMainModel();
    for (int column = 0; column < model.columnCount(); ++column) {
        if (model.IsColumnEmpty(column))
            ui->rawDataView->hideColumn(column);
    }
}

// Every column holding a selected cell goes. Hiding the column that orders
// the rows brings back the file order; the column keeps its width.
void MainWindow::HideSelectedColumns()
{
    QVector<int> done;
    for (const QModelIndex &cell : ui->rawDataView->selectionModel()->selectedIndexes()) {
        const int column = cell.column();
        if (done.contains(column))
            continue;
        done.append(column);
        if (modelsConnected && currentFile && column == currentFile->GetMainModel().SortColumn()) {
            currentFile->GetMainModel().SetSortState(0);
            currentFile->GetMainProxy().sort(-1, Qt::AscendingOrder);
        }
        ui->rawDataView->hideColumn(column);
    }
}

void MainWindow::ShowAllColumns()
{
    if (!modelsConnected || !currentFile)
        return;
    for (int column = 0; column < currentFile->GetMainModel().columnCount(); ++column)
        ui->rawDataView->showColumn(column);
}

// Sizing every column of a wide file to its contents would take minutes:
// there the columns in view are sized now and the others as they come into
// view. A table of ordinary width is sized whole at once.
void MainWindow::AutosizeColumns()
{
    const int columns = ui->rawDataView->model()->columnCount();
    const bool wide = columns > kColumnsSizedAtOnce;
    sizedColumns.assign(size_t(columns), !wide);
    sizingPending = sizingHeld && !wide;
    if (sizingPending)
        return;
    const SizingDelegate::Sizing sizing(*sizingDelegate);
    if (wide)
        SizeColumnsInView();
    else
        ui->rawDataView->resizeColumnsToContents();
}

void MainWindow::SizeColumnsInView()
{
    const QHeaderView *header = ui->rawDataView->horizontalHeader();
    const int width = ui->rawDataView->viewport()->width();
    const SizingDelegate::Sizing sizing(*sizingDelegate);
    for (int visual = qMax(0, header->visualIndexAt(0)); visual < header->count(); ++visual) {
        const int column = header->logicalIndex(visual);
        if (header->isSectionHidden(column))
            continue;
        if (header->sectionViewportPosition(column) >= width)
            break;
        if (size_t(column) < sizedColumns.size() && !sizedColumns[size_t(column)]) {
            sizedColumns[size_t(column)] = true;
            ui->rawDataView->resizeColumnToContents(column);
        }
    }
}

// The column under the pointer becomes the selection the menu acts on.
void MainWindow::ShowContextMenu()
{
    const QPoint position = ui->rawDataView->horizontalHeader()->mapFromGlobal(QCursor::pos());
    ui->rawDataView->selectColumn(ui->rawDataView->columnAt(position.x()));
    headerContextMenu->move(QCursor::pos());
    headerContextMenu->show();
}

// The first click on a header only prepares its column, so that a column
// can be selected without reordering the rows; a further click on the same
// column sorts. The flag column of the raw table never sorts.
void MainWindow::CheckToSort(int clicked_column)
{
    if (!modelsConnected || !currentFile)
        return;
    const bool sectionTable = sender() == ui->sectionDataView->horizontalHeader();
    if (!sectionTable && clicked_column == 0)
        return;
    BaseModel &model = SortedModel(sectionTable);
    if (clicked_column == model.SortPrepColumn())
        Sort(clicked_column);
    model.SetSortPrepColumn(clicked_column);
}

// Cycles ascending, descending, file order. The column widens by 25 pixels
// for the sort icon and gives them back when the sort ends.
void MainWindow::Sort(int clicked_column)
{
    if (!modelsConnected || !currentFile)
        return;
    const bool sectionTable = sender() == ui->sectionDataView->horizontalHeader();
    QAbstractItemModel &proxy = sectionTable ? static_cast<QAbstractItemModel &>(currentFile->GetSectionProxy())
                                             : currentFile->GetMainProxy();
    QTableView *view = sectionTable ? ui->sectionDataView : ui->rawDataView;
    const int state = SortedModel(sectionTable).CycleSortState(clicked_column);
    // Without a modifier key the column selected below replaces whatever is
    // selected now, so that goes first: the view then has no selected cells
    // to carry through the sort, one for each row of a selected column.
    if (QGuiApplication::keyboardModifiers() == Qt::NoModifier) {
        const QSignalBlocker quiet(view->selectionModel());
        view->selectionModel()->clearSelection();
    }
    int widthChange = 0;
    if (state == 1) {
        proxy.sort(clicked_column, Qt::AscendingOrder);
        widthChange = 25;
    } else if (state == 2) {
        proxy.sort(clicked_column, Qt::DescendingOrder);
    } else {
        proxy.sort(-1, Qt::AscendingOrder);
        widthChange = -25;
    }
    view->setColumnWidth(clicked_column, view->columnWidth(clicked_column) + widthChange);
    view->selectColumn(clicked_column);
}

// Only the raw table's cells are connected here, so a click in a cell of
// the section table cancels nothing there.
void MainWindow::CancelSortPrep()
{
    if (!modelsConnected || !currentFile)
        return;
    SortedModel(sender() == ui->sectionDataView).SetSortPrepColumn(-1);
}

BaseModel &MainWindow::SortedModel(bool sectionTable)
{
    if (sectionTable)
        return currentFile->GetSectionModel();
    return currentFile->GetMainModel();
}
