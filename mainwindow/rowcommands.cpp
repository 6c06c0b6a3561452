// MainWindow's row commands, the line of flagged and hidden counts, and the
// rules that enable the file actions.

#include "mainwindow.h"
#include "ui_mainwindow.h"

#include "datafile.h"
#include "rowcolorsdialog.h"

#include <QGraphicsColorizeEffect>
#include <QMouseEvent>

// Stand-in until the row commands are written.
void MainWindow::SelectAllRows()
{
}

// Stand-in until the row commands are written.
void MainWindow::SelectFlaggedRows()
{
}

// Stand-in until the row commands are written.
void MainWindow::SelectUnflaggedRows()
{
}

// Stand-in until the row commands are written.
void MainWindow::FlagRow(QModelIndex)
{
}

// Stand-in until the row commands are written.
void MainWindow::HideSelectedRows()
{
}

// Stand-in until the row commands are written.
void MainWindow::HideFlaggedRows()
{
}

// Stand-in until the row commands are written.
void MainWindow::HideUnflaggedRows()
{
}

// Stand-in until the row commands are written.
void MainWindow::ShowAllRows()
{
}

void MainWindow::OpenRowColorsDialog()
{
    rowColorsDialog->show();
}

// Stand-in until the flag rule dialog is written.
void MainWindow::OpenFlagSpecialDialog()
{
}

// The two labels read as one line: " (3 flagged, 2 hidden)", with the comma
// only when both counts are there.
void MainWindow::UpdateBottomInfo()
{
    if (!currentFile)
        return;
    const MainModel &model = currentFile->GetMainModel();
    const int flagged = model.FlaggedRowCount();
    const int hidden = model.HiddenRowCount();
    if (flagged == 0 && hidden == 0) {
        ui->flaggedRows->clear();
        ui->hiddenRows->clear();
        return;
    }
    QString first = QStringLiteral(" (");
    if (flagged > 0) {
        first += QString::number(flagged) + QStringLiteral(" flagged");
        if (hidden > 0)
            first += QStringLiteral(", ");
    }
    QString second;
    if (hidden > 0)
        second = QString::number(hidden) + QStringLiteral(" hidden");
    ui->flaggedRows->setText(first);
    ui->hiddenRows->setText(second + QStringLiteral(")"));
}

// The summary tab has no rows to act on, so the row and column actions go
// off there; selecting all, removing and merging stay as they are.
void MainWindow::TabsSetActionsEnabled(int index)
{
    if (!modelsConnected)
        return;
    const bool on = index == 0;
    if (on && ui->rawDataView->selectionModel() && ui->rawDataView->selectionModel()->hasSelection())
        ui->actionFlag_Selection->setEnabled(true);
    if (!on)
        ui->actionFlag_Selection->setEnabled(false);
    for (QAction *action : {ui->actionSelect_Flagged_Rows, ui->actionSelect_Unflagged_Rows, ui->actionFlag_Special,
                            ui->actionHide_Selected_Rows, ui->actionHide_Flagged_Rows,
                            ui->actionHide_Unflagged_Rows, ui->actionShow_All_Rows, ui->actionHide_Empty_Columns,
                            ui->actionShow_All_Columns, ui->actionRefresh_Column_Autosizing})
        action->setEnabled(on);
}

// "Flag Selection", "Copy" and "Row Colors..." are not file actions: the
// first follows the pointer, the other two stay on throughout.
void MainWindow::SetFileActionsEnabled(bool enabled)
{
    for (QAction *action : {ui->actionRemove_Selected_Files, ui->actionMerge_Selected_Files,
                            ui->actionSelect_All_Rows, ui->actionSelect_Flagged_Rows,
                            ui->actionSelect_Unflagged_Rows, ui->actionFlag_Special, ui->actionHide_Selected_Rows,
                            ui->actionHide_Flagged_Rows, ui->actionHide_Unflagged_Rows, ui->actionShow_All_Rows,
                            ui->actionHide_Empty_Columns, ui->actionShow_All_Columns,
                            ui->actionRefresh_Column_Autosizing})
        action->setEnabled(enabled);
    ui->mergeButton->setEnabled(enabled);
    // The effect is attached to no widget, so this has no visible result.
    disabledEffect->setEnabled(!enabled);
    ui->minusButton->setEnabled(enabled);
}

// A press over a cell may be followed by Space; a press elsewhere may not.
void MainWindow::UpdateFlagSelectionAction(QEvent *event)
{
    const QPoint position = static_cast<QMouseEvent *>(event)->pos();
    ui->actionFlag_Selection->setEnabled(ui->rawDataView->indexAt(position).isValid());
}
