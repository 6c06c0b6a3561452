// MainWindow's column commands and the two-click sorting of both tables.

#include "mainwindow.h"
#include "ui_mainwindow.h"

// Stand-in until the column commands are written.
void MainWindow::HideEmptyColumns()
{
}

// Stand-in until the column commands are written.
void MainWindow::HideSelectedColumns()
{
}

// Stand-in until the column commands are written.
void MainWindow::ShowAllColumns()
{
}

void MainWindow::AutosizeColumns()
{
    ui->rawDataView->resizeColumnsToContents();
}

// Stand-in until the column commands are written.
void MainWindow::ShowContextMenu()
{
}

// Stand-in until sorting is written.
void MainWindow::CheckToSort(int)
{
}

// Stand-in until sorting is written.
void MainWindow::Sort(int)
{
}

// Stand-in until sorting is written.
void MainWindow::CancelSortPrep()
{
}
