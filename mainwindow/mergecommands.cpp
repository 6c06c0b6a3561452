// SPDX-License-Identifier: GPL-3.0-or-later
// MainWindow's merge commands: opening the merge dialog and writing the
// merged output file of the record in focus.

#include "mainwindow.h"

#include "datafile.h"
#include "informationbox.h"
#include "mergedialog.h"

#include <QApplication>
#include <QFile>
#include <QFileDialog>

void MainWindow::OpenMergeDialog()
{
    if (!modelsConnected || !currentFile)
        return;
    const MainModel &model = currentFile->GetMainModel();
    mergeDialog->Prepare(model.rowCount(), model.FlaggedRowCount(), model.HiddenRowCount());
    mergeDialog->show();
}

// A cancelled save dialog or a file that cannot be opened ends quietly and
// leaves the merge dialog open for another try.
void MainWindow::OutputMergedData()
{
    if (!modelsConnected || !currentFile)
        return;
    const QString name = QFileDialog::getSaveFileName(this, QStringLiteral("Save Merged Data File"),
                                                      lastDirectory, QStringLiteral("Text (*.txt)"));
    if (name.isEmpty())
        return;
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text))
        return;
    // The pointer shows the window busy while the rows are written out, and
    // is itself again for the box that says they were.
    QApplication::setOverrideCursor(Qt::WaitCursor);
    currentFile->WriteMergedFile(file, mergeDialog->RowsToMerge(), mergeDialog->IncludeHiddenRows(),
                                 mergeDialog->Transpose(), [](const QString &title, const QString &text) {
                                     QApplication::restoreOverrideCursor();
                                     ShowInformationBox(title, text);
                                 });
    mergeDialog->reject();
}
