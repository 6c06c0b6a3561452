// SPDX-License-Identifier: GPL-3.0-or-later
// MainWindow's file list: adding, dropping and removing files, and moving
// the focus to one file or to a combined record of several.

#include "mainwindow.h"
#include "ui_mainwindow.h"

#include "analysissession.h"
#include "datafile.h"
#include "datafilevalidator.h"
#include "filecombiner.h"
#include "flagspecialdialog.h"
#include "informationbox.h"
#include "rowcolorsdialog.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMimeData>
#include <QMouseEvent>
#include <QProgressDialog>

#include <algorithm>
#include <functional>
#include <utility>

bool MainWindow::OpenFiles(QStringList file_paths)
{
    cloudFilesShown = false;
    if (file_paths.isEmpty()) {
        file_paths = QFileDialog::getOpenFileNames(this, QStringLiteral("Select Files to Add"), lastDirectory,
                                                   QStringLiteral("Text (*.txt)"));
        if (!file_paths.isEmpty())
            lastDirectory = file_paths.first().left(file_paths.first().lastIndexOf(QLatin1Char('/')));
    }
    if (file_paths.isEmpty())
        return true;
    if (!ValidateDataFiles(file_paths, ShowInformationBox) || AnyFileAlreadyOpen(file_paths))
        return false;

    // Counted before a combined record is dropped, so with one present the
    // row selected below is the second new file, or none when only one was
    // added; skipping the first new file there is deliberate.
    const int firstNewRow = int(files.size());
    const bool combinedShown = combinedActive;
    AddFileNamesToLists(file_paths);
    if (combinedActive)
        DropCombinedFile();
    if (!LoadDataFiles(file_paths)) {
        // Every file was refused: the combined view dropped for them returns.
        if (combinedShown)
            ChangeFileFocus();
        return false;
    }
    if (!modelsConnected)
        SetFileActionsEnabled(true);
    ui->fileNamesList->clearSelection();
    ui->list_cloud_filenames->clearSelection();
    FocusNewFile(firstNewRow);
    if (ui->tabWidget->currentIndex() == 1)
        TabsSetActionsEnabled(1);
    return true;
}

void MainWindow::AddFileNamesToLists(const QStringList &file_paths)
{
    QStringList names;
    for (const QString &path : file_paths)
        names.append(QFileInfo(path).fileName());
    ui->fileNamesList->insertItems(ui->fileNamesList->count(), names);
    ui->list_cloud_filenames->insertItems(ui->list_cloud_filenames->count(), names);
}

// Reading can take seconds: the pointer shows the window is busy, and a
// drop of many files shows its progress once it has run for two seconds.
// A file that could not be read whole is refused, its name taken out of
// the lists again, and the user told once the others are in. True when at
// least one file was added.
bool MainWindow::LoadDataFiles(const QStringList &file_paths)
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
    QProgressDialog progress(QStringLiteral("Opening files..."), QString(), 0, file_paths.size(), this);
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(2000);
    // The names were just added at the ends of the lists, which need not be
    // equally long: a removal on the cloud tab leaves names in its list.
    const int localStart = ui->fileNamesList->count() - file_paths.size();
    const int cloudStart = ui->list_cloud_filenames->count() - file_paths.size();
    QStringList refused;
    for (int done = 0; done < file_paths.size(); ++done) {
        progress.setValue(done);
        auto file = std::make_unique<DataFile>(file_paths[done]);
        if (file->Failure() == ReadFailure::None) {
            files.push_back(std::move(file));
            continue;
        }
        const int added = done - refused.size();
        delete ui->fileNamesList->takeItem(localStart + added);
        delete ui->list_cloud_filenames->takeItem(cloudStart + added);
        refused.append(QStringLiteral("The file %1 could not be read whole (%2), so it was not opened.")
                           .arg(QFileInfo(file_paths[done]).fileName(), ReadFailureText(file->Failure())));
    }
    progress.setValue(file_paths.size());
    QApplication::restoreOverrideCursor();
    for (const QString &text : refused)
        ShowInformationBox(QStringLiteral("Zephlane"), text);
    return refused.size() < file_paths.size();
}

// Both lists take the row as their current one, and each change of their
// selection moves the focus to it again. Sizing the columns of a table of
// ordinary width a second time gives the widths of the first, so it is done
// once, after the last move. A wide table sizes the columns in view, which
// the first sizing changes, so it is sized on each move.
void MainWindow::FocusNewFile(int row)
{
    sizingHeld = true;
    ui->fileNamesList->setCurrentRow(row);
    ui->list_cloud_filenames->setCurrentRow(row);
    sizingHeld = false;
    if (std::exchange(sizingPending, false))
        AutosizeColumns();
}

// A combined record stands among the open files too, with an empty path.
bool MainWindow::AnyFileAlreadyOpen(const QStringList &file_paths) const
{
    QStringList openPaths;
    for (const std::unique_ptr<DataFile> &file : files)
        openPaths.append(file->Path());
    return AnyPathAlreadyOpen(file_paths, openPaths, ShowInformationBox);
}

void MainWindow::DropCombinedFile()
{
    if (!files.empty())
        DeleteDataFile(int(files.size()) - 1);
    combinedActive = false;
}

void MainWindow::DeleteDataFile(int index)
{
    if (files[index].get() == currentFile)
        ReleaseFocusedFile();
    files.erase(files.begin() + index);
}

// Lets go of the record in focus before it is deleted: its models lose
// their connections and the views their proxies, and no pointer to it stays.
void MainWindow::ReleaseFocusedFile()
{
    if (modelsConnected)
        DisconnectFocusedFile();
    SetViewModel(ui->rawDataView, blankModel);
    SetViewModel(ui->sectionDataView, nullptr);
    currentFile = nullptr;
    ShowFilesToAnalysis({});
}

void MainWindow::RemoveFiles()
{
    if (ui->fileNamesList->selectedItems().isEmpty())
        return;
    DisconnectFocusedFile();
    if (combinedActive)
        DropCombinedFile();

    removingFiles = true;
    // Ordered by address, not by row, deliberately: the row read as the
    // anchor below need not be the topmost one removed.
    QList<QListWidgetItem *> items = ui->fileNamesList->selectedItems();
    std::sort(items.begin(), items.end(), std::less<QListWidgetItem *>());
    const int anchor = ui->fileNamesList->row(items.first());
    for (int i = items.size() - 1; i >= 0; --i) {
        const int row = ui->fileNamesList->row(items[i]);
        if (row >= 0 && row < int(files.size()))
            DeleteDataFile(row);
        delete items[i];
    }
    removingFiles = false;

    if (ui->fileNamesList->count() == 0) {
        currentFile = nullptr;
        ResetFileInfo();
        SetFileActionsEnabled(false);
    } else {
        ui->fileNamesList->setCurrentRow(anchor == 0 ? 0 : anchor - 1);
    }
}

void MainWindow::ChangeFileFocus()
{
    ui->stack_local_or_cloud_info->setCurrentIndex(1);
    const QVector<int> rows = SelectedFileRows();
    if (removingFiles || rows.isEmpty())
        return;
    if (modelsConnected)
        DisconnectFocusedFile();
    if (combinedActive)
        DropCombinedFile();
    if (rows.size() == 1)
        currentFile = files[rows.first()].get();
    else if (BuildCombinedFile(rows))
        currentFile = files.back().get();
    else
        return;
    ConnectFocusedFile();
    ShowFocusedFile();
    UpdateBottomInfo();
    PushRowColorOptions();
    AutosizeColumns();
    ShowFilesToAnalysis(rows);
    // No row is under the pointer yet.
    ui->actionFlag_Selection->setEnabled(false);
}

QListWidget *MainWindow::VisibleFileList() const
{
    return ui->fileNamesList->isVisible() ? ui->fileNamesList : ui->list_cloud_filenames;
}

// The rows selected in the visible list, in the order they were selected,
// which is the order a combined record takes them in. A removal on the
// cloud tab leaves names behind in that list; their rows stand for no
// record and are passed over.
QVector<int> MainWindow::SelectedFileRows() const
{
    const QListWidget *list = VisibleFileList();
    const int fileCount = int(files.size()) - (combinedActive ? 1 : 0);
    QVector<int> rows;
    for (QListWidgetItem *item : list->selectedItems()) {
        const int row = list->row(item);
        if (row >= 0 && row < fileCount)
            rows.append(row);
    }
    return rows;
}

// The name stays only when every selected file comes from one experiment;
// one difference is enough to show "Different experiments" instead. When
// memory does not allow the combining, no record is made and the selection
// is cleared, so that the table shows nothing rather than part of the
// files; the files themselves stay as they were.
bool MainWindow::BuildCombinedFile(const QVector<int> &rows)
{
    FileCombiner combiner;
    for (const int row : rows) {
        if (!combiner.Add(*files[row])) {
            ReleaseFocusedFile();
            ResetFileInfo();
            VisibleFileList()->clearSelection();
            ShowInformationBox(QStringLiteral("Zephlane"),
                               QStringLiteral("Not enough memory to show these files together."));
            return false;
        }
    }
    ui->stack_xpt_filename->setCurrentIndex(combiner.SameExperiment() ? 0 : 1);
    files.push_back(combiner.Take());
    combinedActive = true;
    return true;
}

void MainWindow::ConnectFocusedFile()
{
    MainModel *model = &currentFile->GetMainModel();
    SectionModel *sections = &currentFile->GetSectionModel();
    const auto indexChanged = QOverload<int>::of(&QComboBox::currentIndexChanged);

    connect(model, &MainModel::RowChanged, this, &MainWindow::UpdateBottomInfo);
    connect(ui->rawDataView, &QTableView::pressed, this, &MainWindow::FlagRow);
    connect(flagSpecialDialog, &FlagSpecialDialog::SelectedSpecial, model, &MainModel::SetFlaggingOptions);
    connect(flagSpecialDialog, &FlagSpecialDialog::SelectedSD, model, &MainModel::SetFlagsSD);
    connect(flagSpecialDialog, &FlagSpecialDialog::SelectedEC, model, &MainModel::SetFlagsEC);
    connect(flagSpecialDialog, &FlagSpecialDialog::SelectedTL, model, &MainModel::SetFlagsTL);
    connect(flagSpecialDialog, &FlagSpecialDialog::SelectedTR, model, &MainModel::SetFlagsTR);
    connect(model, &MainModel::MatchesCounted, flagSpecialDialog, &FlagSpecialDialog::UpdateMatches);
    connect(rowColorsDialog, &RowColorsDialog::ColorSet, model, &MainModel::ChangeRowColor);
    connect(rowColorsDialog, &RowColorsDialog::ColorFlaggedOptionSet, model, &MainModel::ChangeColorOption);
    connect(ui->basisDropDown, indexChanged, sections, &SectionModel::ChangeSectionType);
    connect(ui->specificBasisDropDown, indexChanged, sections, &SectionModel::ChangeSubIndex);
    connect(ui->filterDropDown, indexChanged, sections, &SectionModel::ChangeDataType);
    // Never undone: each focus change adds one more, and Copy then runs once
    // per connection, writing the same text each time.
    connect(ui->actionCopy, &QAction::triggered, this, &MainWindow::CopyHelper);

    modelsConnected = true;
    sections->ChangeSectionType(ui->basisDropDown->currentIndex());
    sections->ChangeDataType(ui->filterDropDown->currentIndex());
}

// A record that has been deleted took its connections with it, so the
// models are disconnected only while a record is in focus.
void MainWindow::DisconnectFocusedFile()
{
    MainModel *model = currentFile ? &currentFile->GetMainModel() : nullptr;
    SectionModel *sections = currentFile ? &currentFile->GetSectionModel() : nullptr;
    const auto indexChanged = QOverload<int>::of(&QComboBox::currentIndexChanged);

    if (model)
        disconnect(model, &MainModel::RowChanged, this, &MainWindow::UpdateBottomInfo);
    disconnect(ui->rawDataView, &QTableView::pressed, this, &MainWindow::FlagRow);
    if (model) {
        disconnect(flagSpecialDialog, &FlagSpecialDialog::SelectedSpecial, model, &MainModel::SetFlaggingOptions);
        disconnect(flagSpecialDialog, &FlagSpecialDialog::SelectedSD, model, &MainModel::SetFlagsSD);
        disconnect(flagSpecialDialog, &FlagSpecialDialog::SelectedEC, model, &MainModel::SetFlagsEC);
        disconnect(flagSpecialDialog, &FlagSpecialDialog::SelectedTL, model, &MainModel::SetFlagsTL);
        disconnect(flagSpecialDialog, &FlagSpecialDialog::SelectedTR, model, &MainModel::SetFlagsTR);
        disconnect(model, &MainModel::MatchesCounted, flagSpecialDialog, &FlagSpecialDialog::UpdateMatches);
        disconnect(rowColorsDialog, &RowColorsDialog::ColorSet, model, &MainModel::ChangeRowColor);
        disconnect(rowColorsDialog, &RowColorsDialog::ColorFlaggedOptionSet, model, &MainModel::ChangeColorOption);
        disconnect(ui->basisDropDown, indexChanged, sections, &SectionModel::ChangeSectionType);
        disconnect(ui->specificBasisDropDown, indexChanged, sections, &SectionModel::ChangeSubIndex);
        disconnect(ui->filterDropDown, indexChanged, sections, &SectionModel::ChangeDataType);
    }
    modelsConnected = false;
}

void MainWindow::ShowFocusedFile()
{
    SetViewModel(ui->rawDataView, &currentFile->GetMainProxy());
    SetViewModel(ui->sectionDataView, &currentFile->GetSectionProxy());
    ui->label_xpt_filename->setText(currentFile->ExperimentName());

    const int selected = VisibleFileList()->selectedItems().size();
    const int rows = currentFile->GetMainModel().TotalRowCount();
    QString plural;
    if (selected < 2)
        ui->stack_xpt_filename->setCurrentIndex(0);
    else
        plural = QStringLiteral("s");
    ui->label_file_and_rows_info->setText(
        QStringLiteral("%1 file%2 containing %3 rows").arg(selected).arg(plural).arg(rows));

    UpdateGeneralSummary();
    UpdateSubDropDown(ui->basisDropDown->currentIndex());
}

// Colours chosen while another file had the focus apply to this one too.
void MainWindow::PushRowColorOptions()
{
    MainModel &model = currentFile->GetMainModel();
    model.SetRowColors(rowColorsDialog->Colors());
    model.SetColorEntireRow(rowColorsDialog->ColorEntireRow());
}

// A view makes a new selection model for each model it is given and keeps
// the old one; the old one goes here instead of piling up.
void MainWindow::SetViewModel(QTableView *view, QAbstractItemModel *model)
{
    if (view->model() == model)
        return;
    QItemSelectionModel *old = view->selectionModel();
    view->setModel(model);
    delete old;
}

void MainWindow::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

// Every dropped file is passed on; OpenFiles judges what it can read.
void MainWindow::dropEvent(QDropEvent *event)
{
    QStringList paths;
    for (const QUrl &url : event->mimeData()->urls())
        paths.append(url.toLocalFile());
    OpenFiles(paths);
}

// A click in the empty part of the visible list would clear its selection;
// it is swallowed so that the files in focus stay selected.
bool MainWindow::FileListFilter(QObject *watched, QEvent *event) const
{
    const QListWidget *list = VisibleFileList();
    if (watched != list->viewport())
        return false;
    if (event->type() != QEvent::MouseButtonPress && event->type() != QEvent::MouseButtonDblClick)
        return false;
    return list->itemAt(static_cast<QMouseEvent *>(event)->pos()) == nullptr;
}
