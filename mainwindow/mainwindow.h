// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cloudcache.h"
#include "cloudclient.h"

#include <QMainWindow>
#include <QModelIndex>
#include <QStringList>

#include <memory>
#include <vector>

class AnalysisSession;
class BaseModel;
class DataFile;
class DistributionsWindow;
class FlagSpecialDialog;
class MainModel;
class MergeDialog;
class ParticipantSummaryWindow;
class QAbstractItemModel;
class QDialog;
class QGraphicsColorizeEffect;
class QKeyEvent;
class QListWidget;
class QMenu;
class QSettings;
class QTableView;
class RowColorsDialog;
class SizingDelegate;
class TitleMarkStore;

namespace Ui {
class MainWindow;
}

// The program's one window: the file lists, the raw and summary tables, the
// menus and the cloud panel. It owns every opened DataFile and the dialogs,
// and wires only the file in focus to the dialogs, drop-downs and tables.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    // The cloud service's address and limits are the compiled-in ones;
    // tests give their own.
    explicit MainWindow(const QByteArray &cloudBaseUrl = ZEPHLANE_CLOUD_BASE_URL,
                        const CloudLimits &cloudLimits = CloudLimits());
    ~MainWindow() override;

public slots:
    bool OpenFiles(QStringList file_paths = QStringList());
    void RemoveFiles();
    void ChangeFileFocus();
    void OutputMergedData();
    void SelectAllRows();
    void SelectFlaggedRows();
    void SelectUnflaggedRows();
    void FlagRow(QModelIndex index = QModelIndex());
    void HideSelectedRows();
    void HideFlaggedRows();
    void HideUnflaggedRows();
    void ShowAllRows();
    void HideEmptyColumns();
    void HideSelectedColumns();
    void ShowAllColumns();
    void AutosizeColumns();
    void OpenRowColorsDialog();
    void OpenFlagSpecialDialog();
    void OpenMergeDialog();
    void OpenAboutDialog();
    void UpdateBottomInfo();
    void UpdateSubDropDown(int sectionType);
    void ShowContextMenu();
    void CheckToSort(int clicked_column);
    void Sort(int clicked_column);
    void CancelSortPrep();
    void OpenWebsite();
    void TabsSetActionsEnabled(int index);
    void CopyHelper();
    void CloudLogin();
    void UpdateCloudParticipantsInfo(int currentRow);
    void CloudExpListDoubleClicked();
    void OpenCloudFiles();
    void ExportDataZip();
    void BackToCloudExpList();
    void DropDataFilesCleanUI(int index);
    void OnRefreshCloudParticipants();
    void BackToCloudLogin();

protected:
    void closeEvent(QCloseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // Start-up and settings.
    void ConnectForm();
    void InitialiseViews();
    void KeepSummaryColumnsWhole();
    void LoadBlankModel();
    void SetUpRawHeader();
    void ConnectWindow();
    void InstallEventFilters();
    void RestoreSettings();
    void RestoreColumnOrder(QSettings &settings);
    void SaveSettings() const;
    static QString CredentialsPath();

    // File list.
    void AddFileNamesToLists(const QStringList &file_paths);
    bool LoadDataFiles(const QStringList &file_paths);
    bool AnyFileAlreadyOpen(const QStringList &file_paths) const;
    void DropCombinedFile();
    void DeleteDataFile(int index);
    void ReleaseFocusedFile();
    QListWidget *VisibleFileList() const;
    QVector<int> SelectedFileRows() const;
    void FocusNewFile(int row);
    bool BuildCombinedFile(const QVector<int> &rows);
    void ConnectFocusedFile();
    void DisconnectFocusedFile();
    void ShowFocusedFile();
    void PushRowColorOptions();
    bool FileListFilter(QObject *watched, QEvent *event) const;
    static void SetViewModel(QTableView *view, QAbstractItemModel *model);

    // Analysis windows.
    void ShowFilesToAnalysis(const QVector<int> &rows);
    void OpenParticipantSummary();
    void OpenDistributions();

    // Summary tab.
    void UpdateGeneralSummary();
    void ResetFileInfo();

    // Row commands.
    void SelectRowsByFlag(bool flagged);
    void HideRowsByFlag(bool flagged);
    void SetFileActionsEnabled(bool enabled);
    void UpdateFlagSelectionAction(QEvent *event);

    // Column commands.
    BaseModel &SortedModel(bool sectionTable);
    void SizeColumnsInView();

    // Cloud panel.
    void ShowCloudAccount(QSettings &credentials, const QString &email, const QString &password);
    static void StoreCredentials(QSettings &credentials, const QString &email, const QString &password);
    CloudExperiment *ExperimentAt(int row) const;
    bool EnterCloudTab();
    bool EnterLocalTab();
    void FollowFileList(QListWidget *shown, QListWidget *hidden);
    void CloseAllFiles(int index);

    // Header keys.
    bool HeaderKeyFilter(QObject *watched, QEvent *event);
    void HeaderArrowKey(QTableView *view, QKeyEvent *event);
    int NextHeaderPosition(const QModelIndexList &selected, Qt::Orientation mode, QTableView *view,
                           const QKeyEvent *event);
    // The fixed end of a header selection that the arrow keys move, per view.
    int &ArrowAnchor(const QTableView *view);

    std::unique_ptr<Ui::MainWindow> ui;
    MainModel *blankModel = nullptr;
    std::vector<std::unique_ptr<DataFile>> files;
    // The record in focus; null when no record is, also after the record it
    // named was deleted, so that nothing reaches a deleted record.
    DataFile *currentFile = nullptr;
    bool modelsConnected = false;
    bool combinedActive = false;
    bool removingFiles = false;
    bool shiftHeld = false;
    bool cloudFilesShown = false;
    QMenu *headerContextMenu = nullptr;
    RowColorsDialog *rowColorsDialog = nullptr;
    FlagSpecialDialog *flagSpecialDialog = nullptr;
    MergeDialog *mergeDialog = nullptr;
    QDialog *aboutDialog = nullptr;
    QGraphicsColorizeEffect *disabledEffect = nullptr;
    SizingDelegate *sizingDelegate = nullptr;
    QString lastDirectory;
    // Columns of the raw table sized to their contents since the last
    // autosizing, by model column.
    std::vector<bool> sizedColumns;
    // While held, a table of ordinary width is not sized at once but once
    // the hold ends; pending says that it is to be sized then.
    bool sizingHeld = false;
    bool sizingPending = false;
    // The marks of the titles that specificBasisDropDown lists, kept while
    // it lists them, which may be after their file has gone.
    std::vector<std::shared_ptr<const TitleMarkStore>> listedTitleMarks;
    int rawArrowAnchor = -1;
    int sectionArrowAnchor = -1;
    // The files in view as the analysis windows see them.
    AnalysisSession *analysisSession = nullptr;
    // The analysis windows, made when first asked for.
    ParticipantSummaryWindow *summaryWindow = nullptr;
    DistributionsWindow *distributionsWindow = nullptr;
    CloudClient cloudClient;
    CloudCache cloudCache;
    CloudProfile cloudProfile;
    // The client's experiment list, once a sign-in has read it.
    QVector<CloudExperiment> *cloudExperiments = nullptr;
};
