// SPDX-License-Identifier: GPL-3.0-or-later
// The main window as a whole: what is built at start-up and in which order,
// the settings restored at start and saved on close, and the event filter.

#include "mainwindow.h"
#include "ui_aboutdialog.h"
#include "ui_mainwindow.h"

#include "analysissession.h"
#include "datafile.h"
#include "distributionswindow.h"
#include "flagdelegate.h"
#include "sizingdelegate.h"
#include "flagspecialdialog.h"
#include "mainmodel.h"
#include "mergedialog.h"
#include "participantsummarywindow.h"
#include "rowcolorsdialog.h"

#include <QCloseEvent>
#include <QDesktopServices>
#include <QGraphicsColorizeEffect>
#include <QScreen>
#include <QScrollBar>
#include <QSettings>
#include <QStandardPaths>
#include <QUrl>

namespace {

const char *const kOrganisation = "Talvox";
const char *const kApplication = "Zephlane";
const char *const kWebsite = "https://www.talvox.com/";
// Only the first positions of the raw table's column order are kept.
const int kStoredColumns = 13;
const int kBlankGridSize = 50;

} // namespace

MainWindow::MainWindow(const QByteArray &cloudBaseUrl, const CloudLimits &cloudLimits)
    : ui(std::make_unique<Ui::MainWindow>())
    , headerContextMenu(new QMenu(this))
    , rowColorsDialog(new RowColorsDialog(this))
    , flagSpecialDialog(new FlagSpecialDialog(this))
    , mergeDialog(new MergeDialog(this))
    , aboutDialog(new QDialog(this, Qt::WindowTitleHint | Qt::WindowCloseButtonHint))
    , disabledEffect(new QGraphicsColorizeEffect(this))
    , analysisSession(new AnalysisSession(this))
    , cloudClient(cloudBaseUrl, cloudLimits)
    , cloudCache(cloudClient)
{
    QCoreApplication::setOrganizationName(QString::fromLatin1(kOrganisation));
    QCoreApplication::setApplicationName(QString::fromLatin1(kApplication));
    // The summary table's fixed widths are made for Segoe UI; where it is
    // missing, a font of like width stands in rather than a wider default.
    QFont::insertSubstitutions(QStringLiteral("Segoe UI"),
                               {QStringLiteral("Liberation Sans"), QStringLiteral("Arial"),
                                QStringLiteral("DejaVu Sans Condensed")});
    ui->setupUi(this);
    ConnectForm();
    InitialiseViews();

    Ui::AboutDialog aboutForm;
    aboutForm.setupUi(aboutDialog);
    aboutDialog->setFixedSize(aboutDialog->minimumSize());

    setAcceptDrops(true);
    SetUpRawHeader();
    headerContextMenu->addAction(QStringLiteral("Hide Selected Columns"), this, &MainWindow::HideSelectedColumns);
    headerContextMenu->addSeparator();
    headerContextMenu->addAction(QStringLiteral("Show All Columns"), this, &MainWindow::ShowAllColumns);
    ConnectWindow();
    for (QTableView *view : {ui->rawDataView, ui->sectionDataView}) {
        view->horizontalHeader()->setFocusPolicy(Qt::ClickFocus);
        view->verticalHeader()->setFocusPolicy(Qt::ClickFocus);
    }
    InstallEventFilters();
    RestoreSettings();
}

// The records go after the form, whatever the views still show.
MainWindow::~MainWindow()
{
    // The views outlive the form's pointers while the window is torn down.
    ui->rawDataView->horizontalScrollBar()->disconnect(this);
    ui.reset();
    files.clear();
}

// The form's own connections; their order decides which slot runs first.
void MainWindow::ConnectForm()
{
    connect(ui->plusButton, &QPushButton::clicked, this, [this] { OpenFiles(); });
    connect(ui->basisDropDown, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &MainWindow::UpdateSubDropDown);
    connect(ui->fileNamesList, &QListWidget::itemSelectionChanged, this, &MainWindow::ChangeFileFocus);
    connect(ui->list_cloud_filenames, &QListWidget::itemSelectionChanged, this, &MainWindow::ChangeFileFocus);
    connect(ui->actionOpen_Files, &QAction::triggered, this, [this] { OpenFiles(); });
    connect(ui->actionSelect_All_Rows, &QAction::triggered, this, &MainWindow::SelectAllRows);
    connect(ui->actionSelect_Flagged_Rows, &QAction::triggered, this, &MainWindow::SelectFlaggedRows);
    connect(ui->actionSelect_Unflagged_Rows, &QAction::triggered, this, &MainWindow::SelectUnflaggedRows);
    connect(ui->actionFlag_Selection, &QAction::triggered, this, [this] { FlagRow(); });
    connect(ui->actionHide_Selected_Rows, &QAction::triggered, this, &MainWindow::HideSelectedRows);
    connect(ui->actionShow_All_Rows, &QAction::triggered, this, &MainWindow::ShowAllRows);
    connect(ui->actionHide_Flagged_Rows, &QAction::triggered, this, &MainWindow::HideFlaggedRows);
    connect(ui->actionHide_Unflagged_Rows, &QAction::triggered, this, &MainWindow::HideUnflaggedRows);
    connect(ui->actionShow_All_Columns, &QAction::triggered, this, &MainWindow::ShowAllColumns);
    connect(ui->actionHide_Empty_Columns, &QAction::triggered, this, &MainWindow::HideEmptyColumns);
    connect(ui->actionRow_Colors, &QAction::triggered, this, &MainWindow::OpenRowColorsDialog);
    connect(ui->minusButton, &QPushButton::clicked, this, &MainWindow::RemoveFiles);
    connect(ui->actionRefresh_Column_Autosizing, &QAction::triggered, this, &MainWindow::AutosizeColumns);
    // Scrolling, a wider view or columns shown again bring columns into view.
    const QScrollBar *across = ui->rawDataView->horizontalScrollBar();
    connect(across, &QScrollBar::valueChanged, this, &MainWindow::SizeColumnsInView);
    connect(across, &QScrollBar::rangeChanged, this, &MainWindow::SizeColumnsInView);
    connect(ui->actionTalvox_On_The_Web, &QAction::triggered, this, &MainWindow::OpenWebsite);
    connect(ui->actionFlag_Special, &QAction::triggered, this, &MainWindow::OpenFlagSpecialDialog);
    connect(ui->actionRemove_Selected_Files, &QAction::triggered, this, &MainWindow::RemoveFiles);
    connect(ui->mergeButton, &QPushButton::clicked, this, &MainWindow::OpenMergeDialog);
    connect(ui->actionMerge_Selected_Files, &QAction::triggered, this, &MainWindow::OpenMergeDialog);
    connect(ui->tabWidget, &QTabWidget::currentChanged, this, &MainWindow::TabsSetActionsEnabled);
    connect(ui->actionAbout, &QAction::triggered, this, &MainWindow::OpenAboutDialog);
    connect(ui->actionParticipant_Summary, &QAction::triggered, this, &MainWindow::OpenParticipantSummary);
    connect(ui->actionDistributions, &QAction::triggered, this, &MainWindow::OpenDistributions);
}

void MainWindow::InitialiseViews()
{
    // A first run has no saved position, so the window stays where it is put.
    const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
    resize(available.width() * 3 / 4, available.height() * 3 / 4);

    sizingDelegate = new SizingDelegate(this);
    ui->rawDataView->setItemDelegate(sizingDelegate);
    LoadBlankModel();
    ui->rawDataView->setItemDelegateForColumn(0, new FlagDelegate(this));

    QHeaderView *rawRows = ui->rawDataView->verticalHeader();
    rawRows->setDefaultAlignment(Qt::AlignCenter);
    rawRows->setMinimumWidth(60);
    rawRows->setStyleSheet(QStringLiteral("QHeaderView::section {border-width: 0px 1px 1px 1px; "
                                          "border-style: solid; border-color: lightgray;}"));
    QHeaderView *rawColumns = ui->rawDataView->horizontalHeader();
    rawColumns->setSectionResizeMode(0, QHeaderView::Fixed);
    rawColumns->setStyleSheet(QStringLiteral("QHeaderView::section {border-width: 1px 1px 1px 0px; "
                                             "border-style: solid; border-color: lightgray; "
                                             "padding: 5px 10px 5px 10px;}"));

    ui->generalTable->horizontalHeader()->setStyleSheet(
        QStringLiteral("QHeaderView {color: darkblue; font-weight: bold;}"));
    ui->generalTable->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    ui->generalTable->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    ui->generalTable->setFocusPolicy(Qt::NoFocus);
    // The headers and the corner button took their look from the window's
    // style sheet, which the form sets before the table's own; polished
    // again, they follow the table's sheet.
    for (QWidget *part : ui->generalTable->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        part->style()->unpolish(part);
        part->style()->polish(part);
    }
    KeepSummaryColumnsWhole();

    ui->sectionDataView->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);

    ui->specificBasisDropDown->hide();
    ui->specificBasisDropDown->setSizeAdjustPolicy(QComboBox::AdjustToContents);

    ui->stack_local_or_cloud_info->setCurrentIndex(0);
    ui->tab_cloud_or_local_files->setCurrentIndex(1);
    ui->stack_cloud->setCurrentIndex(0);
    ui->stack_login_progress->setCurrentIndex(0);
    ui->stack_warn_if_overriding_local_files->setCurrentIndex(0);
    ui->stack_cloud_options->setCurrentIndex(0);
}

// The form's maximum width holds the row titles and three columns in the
// font it was drawn with; where the titles come out wider, the table grows
// just enough that its last column is not cut off.
void MainWindow::KeepSummaryColumnsWhole()
{
    QTableWidget *table = ui->generalTable;
    table->ensurePolished();
    const QMargins margins = table->contentsMargins();
    const int needed = margins.left() + table->verticalHeader()->sizeHint().width()
                       + table->columnCount() * table->horizontalHeader()->defaultSectionSize()
                       + margins.right();
    table->setMaximumWidth(qMax(table->maximumWidth(), needed));
}

// With no file open the table shows an empty grid rather than a bare view.
void MainWindow::LoadBlankModel()
{
    blankModel = new MainModel(this, true);
    QStringList titles;
    QVector<DataColumn> columns;
    for (int i = 0; i < kBlankGridSize; ++i) {
        titles.append(QString());
        columns.append(DataColumn(kBlankGridSize));
    }
    blankModel->LoadData(titles, columns);
    ui->rawDataView->setModel(blankModel);
}

void MainWindow::SetUpRawHeader()
{
    QHeaderView *header = ui->rawDataView->horizontalHeader();
    header->setSectionsMovable(true);
    header->setDragEnabled(true);
    header->setDragDropMode(QAbstractItemView::InternalMove);
    header->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(header, &QHeaderView::customContextMenuRequested, this, &MainWindow::ShowContextMenu);
}

void MainWindow::ConnectWindow()
{
    connect(mergeDialog->MergeButton(), &QPushButton::clicked, this, &MainWindow::OutputMergedData);
    connect(ui->rawDataView->horizontalHeader(), &QHeaderView::sectionClicked, this, &MainWindow::CheckToSort);
    connect(ui->sectionDataView->horizontalHeader(), &QHeaderView::sectionClicked, this,
            &MainWindow::CheckToSort);
    connect(ui->rawDataView, &QTableView::clicked, this, &MainWindow::CancelSortPrep);
    connect(ui->btn_connect_to_cloud, &QPushButton::clicked, this, &MainWindow::CloudLogin);
    connect(ui->btn_select_xpt, &QPushButton::clicked, this, &MainWindow::OpenCloudFiles);
    connect(ui->btn_export, &QPushButton::clicked, this, &MainWindow::ExportDataZip);
    connect(ui->list_of_cloud_experiments, &QListWidget::currentRowChanged, this,
            &MainWindow::UpdateCloudParticipantsInfo);
    connect(ui->list_of_cloud_experiments, &QListWidget::itemDoubleClicked, this,
            &MainWindow::CloudExpListDoubleClicked);
    connect(ui->btn_cloud_options, &QPushButton::clicked, this, &MainWindow::BackToCloudExpList);
    connect(ui->label_participants_refresh, &QLabel::linkActivated, this,
            &MainWindow::OnRefreshCloudParticipants);
    connect(ui->btn_sign_out, &QPushButton::clicked, this, &MainWindow::BackToCloudLogin);
    connect(ui->tab_cloud_or_local_files, &QTabWidget::currentChanged, this, &MainWindow::DropDataFilesCleanUI);
}

// The local file list's viewport is left out although the filter has a
// branch for it: there an empty-area click clears the selection as usual.
void MainWindow::InstallEventFilters()
{
    ui->list_cloud_filenames->viewport()->installEventFilter(this);
    ui->rawDataView->installEventFilter(this);
    ui->sectionDataView->installEventFilter(this);
    ui->rawDataView->viewport()->installEventFilter(this);
}

void MainWindow::RestoreSettings()
{
    QSettings settings(QString::fromLatin1(kOrganisation), QString::fromLatin1(kApplication));
    settings.beginGroup(QStringLiteral("MainWindow"));
    resize(settings.value(QStringLiteral("size"), size()).toSize());
    move(settings.value(QStringLiteral("pos"), pos()).toPoint());
    lastDirectory = settings.value(QStringLiteral("dir"), QString()).toString();
    settings.endGroup();
    RestoreColumnOrder(settings);

    const QSettings credentials(CredentialsPath(), QSettings::IniFormat);
    ui->edit_subscriber_email->setText(credentials.value(QStringLiteral("Cloud/email")).toString());
    ui->edit_subscriber_pwd->setText(credentials.value(QStringLiteral("Cloud/pw")).toString());
}

// Each stored position names the column to bring there. A column already
// placed at an earlier position is not found again, and a value out of
// range is passed over, so neither changes anything.
void MainWindow::RestoreColumnOrder(QSettings &settings)
{
    QHeaderView *header = ui->rawDataView->horizontalHeader();
    settings.beginGroup(QStringLiteral("ColumnOrder"));
    for (int i = 0; i < kStoredColumns; ++i) {
        const int wanted = settings.value(QString::number(i), i).toInt();
        if (wanted >= kStoredColumns)
            continue;
        for (int j = i; j < kStoredColumns; ++j) {
            if (header->logicalIndex(j) == wanted) {
                header->swapSections(i, j);
                break;
            }
        }
    }
    settings.endGroup();
}

QString MainWindow::CredentialsPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QStringLiteral("/settings.ini");
}

void MainWindow::SaveSettings() const
{
    QSettings settings(QString::fromLatin1(kOrganisation), QString::fromLatin1(kApplication));
    settings.beginGroup(QStringLiteral("MainWindow"));
    settings.setValue(QStringLiteral("size"), size());
    settings.setValue(QStringLiteral("pos"), pos());
    settings.setValue(QStringLiteral("dir"), lastDirectory);
    settings.endGroup();

    const QHeaderView *header = ui->rawDataView->horizontalHeader();
    settings.beginGroup(QStringLiteral("ColumnOrder"));
    for (int i = 0; i < kStoredColumns; ++i)
        settings.setValue(QString::number(i), header->logicalIndex(i));
    settings.endGroup();
}

// Flags, hidden rows and colours are not kept, so there is nothing to ask.
// Open analysis windows close too, and keep their settings as they do.
void MainWindow::closeEvent(QCloseEvent *event)
{
    for (QWidget *analysis : std::initializer_list<QWidget *>{summaryWindow, distributionsWindow}) {
        if (analysis && analysis->isVisible())
            analysis->close();
    }
    SaveSettings();
    event->accept();
}

void MainWindow::OpenAboutDialog()
{
    aboutDialog->show();
}

void MainWindow::OpenWebsite()
{
    QDesktopServices::openUrl(QUrl(QString::fromLatin1(kWebsite)));
}

bool MainWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (FileListFilter(watched, event))
        return true;
    if (HeaderKeyFilter(watched, event))
        return true;
    if (watched == ui->rawDataView->viewport() && event->type() == QEvent::MouseButtonPress) {
        UpdateFlagSelectionAction(event);
        return false;
    }
    return QMainWindow::eventFilter(watched, event);
}
