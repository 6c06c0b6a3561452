// SPDX-License-Identifier: GPL-3.0-or-later
// MainWindow's summary tab: the general summary table of the file in focus
// and the drop-down that picks a trial variable or code column.

#include "mainwindow.h"
#include "ui_mainwindow.h"

#include "datafile.h"

namespace {

const int kSummaryRows = 4;
const int kSummaryColumns = 3;

} // namespace

// Row 0 is the whole file; rows 1 to 3 are "C", "E" and "NR". The
// percentage of row 0 has no writer and keeps whatever text it has.
void MainWindow::UpdateGeneralSummary()
{
    if (!currentFile)
        return;
    const SectionStats &overall = currentFile->Overall();
    const QString msec = QStringLiteral(" msec");
    QTableWidget *table = ui->generalTable;
    table->item(0, 0)->setText(QString::number(overall.TotalCount()));
    table->item(0, 2)->setText(overall.FormatAverageRt() + msec);
    for (int slot = 0; slot < 3; ++slot) {
        table->item(slot + 1, 0)->setText(overall.FormatValue(slot, 0));
        table->item(slot + 1, 1)->setText(overall.FormatValue(slot, 1));
        table->item(slot + 1, 2)->setText(overall.FormatValue(slot, 2) + msec);
    }
}

void MainWindow::ResetFileInfo()
{
    ui->stack_local_or_cloud_info->setCurrentIndex(0);
    ui->label_xpt_filename->setText(QStringLiteral("(none)"));
    ui->label_file_and_rows_info->setText(QStringLiteral("No files selected"));
    for (int row = 0; row < kSummaryRows; ++row) {
        for (int column = 0; column < kSummaryColumns; ++column)
            ui->generalTable->item(row, column)->setText(QStringLiteral("0"));
    }
    SetViewModel(ui->rawDataView, blankModel);
}

// Rebuilding the list while a model is connected sends it the index -1 and
// then 0, so the choice returns to the first name each time.
void MainWindow::UpdateSubDropDown(int sectionType)
{
    if (sectionType != 2 && sectionType != 3) {
        ui->specificBasisDropDown->hide();
        return;
    }
    ui->specificBasisDropDown->show();
    if (files.empty() || !currentFile)
        return;
    ui->specificBasisDropDown->clear();
    const SectionModel &sections = currentFile->GetSectionModel();
    const QStringList names = sectionType == 2 ? sections.TrialVariableNames() : sections.CodeNames();
    ui->specificBasisDropDown->insertItems(ui->specificBasisDropDown->count(), names);
    listedTitleMarks = currentFile->GetTitleMarks();
}
