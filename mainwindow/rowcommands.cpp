// SPDX-License-Identifier: GPL-3.0-or-later
// MainWindow's row commands, the line of flagged and hidden counts, and the
// rules that enable the file actions.

#include "mainwindow.h"
#include "ui_mainwindow.h"

#include "datafile.h"
#include "flagspecialdialog.h"
#include "mainproxy.h"
#include "rowcolorsdialog.h"

#include <QGraphicsColorizeEffect>
#include <QItemSelectionModel>
#include <QSignalBlocker>
#include <QMouseEvent>

#include <algorithm>

// The one row command that also serves the summary tab.
void MainWindow::SelectAllRows()
{
    if (!modelsConnected)
        return;
    if (ui->tabWidget->currentIndex() == 0)
        ui->rawDataView->selectAll();
    else if (ui->tabWidget->currentIndex() == 1)
        ui->sectionDataView->selectAll();
}

void MainWindow::SelectFlaggedRows()
{
    SelectRowsByFlag(true);
}

void MainWindow::SelectUnflaggedRows()
{
    SelectRowsByFlag(false);
}

// The rows are given as rows of the model, not mapped through the proxy, so
// they take effect by their number on screen: while the table is sorted the
// rows selected are those at the flagged rows' numbers, not the flagged rows.
void MainWindow::SelectRowsByFlag(bool flagged)
{
    if (!modelsConnected || !currentFile)
        return;
    ui->rawDataView->clearSelection();
    const MainModel &model = currentFile->GetMainModel();
    const QVector<bool> &flags = model.Flags();
    QItemSelection selection;
    for (int first = 0; first < flags.size();) {
        if (flags[first] != flagged) {
            ++first;
            continue;
        }
        int last = first;
        while (last + 1 < flags.size() && flags[last + 1] == flagged)
            ++last;
        selection.append(QItemSelectionRange(model.index(first, 0), model.index(last, 0)));
        first = last + 1;
    }
    ui->rawDataView->selectionModel()->select(selection, QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

// Toggles the flag of every row that holds a selected cell (Space, or the
// menu), or of the row whose flag cell was pressed, with either button.
void MainWindow::FlagRow(QModelIndex index)
{
    if (!modelsConnected || !currentFile)
        return;
    QModelIndexList indexes;
    if (sender() == ui->actionFlag_Selection) {
        indexes = ui->rawDataView->selectionModel()->selectedIndexes();
    } else if (sender() == ui->rawDataView) {
        if (index.column() != 0)
            return;
        indexes.append(index);
    }
    if (indexes.isEmpty())
        return;
    MainModel &model = currentFile->GetMainModel();
    const MainProxy &proxy = currentFile->GetMainProxy();
    QVector<bool> seen(model.rowCount(), false);
    for (const QModelIndex &cell : qAsConst(indexes)) {
        if (cell.row() < 0 || cell.row() >= seen.size() || seen[cell.row()])
            continue;
        seen[cell.row()] = true;
        model.ChangeFlag(proxy.mapToSource(cell));
    }
    ui->rawDataView->scrollTo(indexes.first(), QAbstractItemView::EnsureVisible);
    UpdateBottomInfo();
}

// The selected rows are read on screen and used on the model unmapped, so
// while the table is sorted the rows that go are those at the same places
// of the unsorted table. Unlike hiding by flag, this takes the rows out of
// the statistics.
void MainWindow::HideSelectedRows()
{
    if (!modelsConnected || !currentFile)
        return;
    QItemSelectionModel *selection = ui->rawDataView->selectionModel();
    QVector<int> rows;
    QVector<bool> seen(currentFile->GetMainModel().rowCount(), false);
    for (const QItemSelectionRange &range : selection->selection()) {
        for (int row = range.top(); row <= range.bottom() && row < seen.size(); ++row) {
            if (!seen[row]) {
                seen[row] = true;
                rows.append(row);
            }
        }
    }
    // Where every selected row is among those that go, as always without a
    // sort, nothing selected stays: clearing the selection first spares the
    // view following each selected cell through the change, and the view
    // repaints whole after it anyway.
    const MainProxy &proxy = currentFile->GetMainProxy();
    if (std::all_of(rows.cbegin(), rows.cend(), [&](int row) { return seen[proxy.mapToSource(proxy.index(row, 0)).row()]; })) {
        const QSignalBlocker quiet(selection);
        selection->clearSelection();
    }
    currentFile->HideSelectedRows(rows);
    UpdateGeneralSummary();
}

void MainWindow::HideFlaggedRows()
{
    HideRowsByFlag(true);
}

void MainWindow::HideUnflaggedRows()
{
    HideRowsByFlag(false);
}

// These rows leave the table only; they go on counting in every statistic.
void MainWindow::HideRowsByFlag(bool flagged)
{
    if (!modelsConnected || !currentFile)
        return;
    const QVector<bool> &flags = currentFile->GetMainModel().Flags();
    QVector<int> rows;
    for (int row = 0; row < flags.size(); ++row) {
        if (flags[row] == flagged)
            rows.append(row);
    }
    currentFile->HideRows(rows);
}

void MainWindow::ShowAllRows()
{
    if (!modelsConnected || !currentFile || currentFile->GetMainModel().HiddenRowCount() == 0)
        return;
    currentFile->ShowAllRows();
    UpdateGeneralSummary();
}

void MainWindow::OpenRowColorsDialog()
{
    rowColorsDialog->show();
}

// The figures cover the rows now visible, as the rules do; the deviation
// rule keeps using the mean and deviation worked out here.
void MainWindow::OpenFlagSpecialDialog()
{
    if (!currentFile)
        return;
    MainModel &model = currentFile->GetMainModel();
    const QString average = FormatNumber(model.CalculateAverage(), 2);
    const QString deviation = FormatNumber(model.CalculateStandardDeviation(), 2);
    flagSpecialDialog->Prepare(average, deviation, model.rowCount(), model.FlaggedRowCount());
    flagSpecialDialog->show();
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
