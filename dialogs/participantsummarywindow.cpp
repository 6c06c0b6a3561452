// SPDX-License-Identifier: GPL-3.0-or-later
#include "participantsummarywindow.h"
#include "ui_participantsummarywindow.h"

#include "analysissession.h"
#include "exclusionrecord.h"
#include "summarytable.h"

#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QSaveFile>

#include <algorithm>

namespace {

// "1 row", "2 rows".
QString Counted(int count, const QString &noun)
{
    return QStringLiteral("%1 %2%3").arg(count).arg(noun, count == 1 ? QString() : QStringLiteral("s"));
}

} // namespace

ParticipantSummaryWindow::ParticipantSummaryWindow(AnalysisSession &session, QWidget *parent)
    : AnalysisWindow(session, parent)
    , ui(std::make_unique<Ui::ParticipantSummaryWindow>())
{
    ui->setupUi(this);
    FitToScreen();
    ui->settingsPanel->SetSession(session, SummarySettingsPanel::View::Table);
    ui->summaryTable->setModel(&tableModel);
    QHeaderView *header = ui->summaryTable->horizontalHeader();
    header->setSectionsClickable(true);
    header->setSortIndicatorShown(true);
    header->setSortIndicator(-1, Qt::AscendingOrder);
    connect(header, &QHeaderView::sectionClicked, this, &ParticipantSummaryWindow::SortByColumn);
    // Lines as high as the text needs, so that many fit.
    ui->summaryTable->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    ConnectButtons();
}

ParticipantSummaryWindow::~ParticipantSummaryWindow() = default;

void ParticipantSummaryWindow::ConnectButtons()
{
    connect(ui->copyCommandLineButton, &QPushButton::clicked, this,
            [this] { QApplication::clipboard()->setText(ui->commandLineEdit->text()); });
    connect(ui->copyButton, &QPushButton::clicked, this, &ParticipantSummaryWindow::CopyTable);
    connect(ui->exportButton, &QPushButton::clicked, this, [this] {
        SaveFile(QStringLiteral("Export CSV"), QStringLiteral("summary.csv"), tableModel.Table().Csv());
    });
    connect(ui->exclusionsButton, &QPushButton::clicked, this, [this] {
        SaveFile(QStringLiteral("Save Exclusion Record"), QStringLiteral("exclusions.csv"),
                 ExclusionRecord::Of(session.Result()).Csv());
    });
    connect(ui->flagButton, &QPushButton::clicked, this, &ParticipantSummaryWindow::FlagExcludedRows);
}

// The table keeps its sorting and, while its columns stay, their widths.
void ParticipantSummaryWindow::ShowResult()
{
    const SummaryResult &result = session.Result();
    const TextTable table = SummaryTable::Of(result);
    const bool newColumns = table.header != tableModel.Table().header;
    tableModel.SetTable(table);
    ui->summaryTable->horizontalHeader()->setSortIndicator(tableModel.SortColumn(), tableModel.SortOrder());
    if (newColumns)
        ui->summaryTable->resizeColumnsToContents();
    ui->countsLabel->setText(CountsText(result));
    ui->commandLineEdit->setText(session.Paths().isEmpty() ? QString() : session.CommandLine());
    ui->commandLineEdit->setCursorPosition(0);
    ui->hiddenRowsLabel->setVisible(session.HasHiddenRows());
}

// "3 participants, 12 cells, 40 rows left out (5 hidden), 1 participant
// below the minimum accuracy".
QString ParticipantSummaryWindow::CountsText(const SummaryResult &result) const
{
    const int hidden = int(std::count_if(result.exclusions.begin(), result.exclusions.end(),
                                         [](const ExcludedRow &row) { return row.reason == ExclusionReason::Hidden; }));
    const int belowAccuracy = result.participants.size() - result.ParticipantsInTable();
    QString text = QStringLiteral("%1, %2, %3 left out")
                       .arg(Counted(result.ParticipantsInTable(), QStringLiteral("participant")),
                            Counted(result.cells.size(), QStringLiteral("cell")),
                            Counted(result.exclusions.size(), QStringLiteral("row")));
    if (hidden > 0)
        text += QStringLiteral(" (%1 hidden)").arg(hidden);
    if (belowAccuracy > 0)
        text += QStringLiteral(", %1 below the minimum accuracy").arg(Counted(belowAccuracy, QStringLiteral("participant")));
    return text;
}

// A click sorts up, a second click down, a third gives back the table's
// own order: participants as the files stand in view.
void ParticipantSummaryWindow::SortByColumn(int column)
{
    Qt::SortOrder order = Qt::AscendingOrder;
    if (column == tableModel.SortColumn()) {
        if (tableModel.SortOrder() == Qt::AscendingOrder)
            order = Qt::DescendingOrder;
        else
            column = -1;
    }
    tableModel.sort(column, order);
    ui->summaryTable->horizontalHeader()->setSortIndicator(column, order);
}

// As the table is shown, sorted or not.
void ParticipantSummaryWindow::CopyTable()
{
    QApplication::clipboard()->setText(tableModel.ShownTable().TabSeparated());
}

void ParticipantSummaryWindow::FlagExcludedRows()
{
    const int flagged = session.FlagExcludedRows();
    ui->countsLabel->setText(CountsText(session.Result())
                             + QStringLiteral("; %1 flagged in the main window").arg(Counted(flagged, QStringLiteral("row"))));
}

// Written whole under a temporary name, or not at all.
void ParticipantSummaryWindow::SaveFile(const QString &caption, const QString &name, const QByteArray &bytes)
{
    const QString path = QFileDialog::getSaveFileName(this, caption, QDir(StartDirectory()).filePath(name),
                                                      QStringLiteral("CSV (*.csv)"));
    if (path.isEmpty())
        return;
    lastDirectory = QFileInfo(path).absolutePath();
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
        return;
    QMessageBox::warning(this, QStringLiteral("Zephlane"),
                         QStringLiteral("%1 could not be written: %2.").arg(QFileInfo(path).fileName(), file.errorString()));
}

// The last place saved to, else beside the first file in view.
QString ParticipantSummaryWindow::StartDirectory() const
{
    if (!lastDirectory.isEmpty() || session.Paths().isEmpty())
        return lastDirectory;
    return QFileInfo(session.Paths().first()).absolutePath();
}
