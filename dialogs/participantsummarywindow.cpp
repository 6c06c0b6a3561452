#include "participantsummarywindow.h"
#include "ui_participantsummarywindow.h"

#include "analysissession.h"
#include "exclusionrecord.h"
#include "summarytable.h"

#include <QClipboard>
#include <QCloseEvent>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QSaveFile>
#include <QScreen>
#include <QScopedValueRollback>

#include <algorithm>

namespace {

// "1 row", "2 rows".
QString Counted(int count, const QString &noun)
{
    return QStringLiteral("%1 %2%3").arg(count).arg(noun, count == 1 ? QString() : QStringLiteral("s"));
}

void MarkInvalid(QLineEdit *edit, bool invalid)
{
    if (edit->property("invalid").toBool() == invalid)
        return;
    edit->setProperty("invalid", invalid);
    edit->style()->unpolish(edit);
    edit->style()->polish(edit);
}

} // namespace

ParticipantSummaryWindow::ParticipantSummaryWindow(AnalysisSession &session, QWidget *parent)
    : QWidget(parent, Qt::Window)
    , ui(std::make_unique<Ui::ParticipantSummaryWindow>())
    , session(session)
{
    ui->setupUi(this);
    // On a small or magnified screen the form's size may not fit.
    const QRect available = parent->screen()->availableGeometry();
    resize(size().boundedTo(available.size() * 9 / 10));
    ui->summaryTable->setModel(&tableModel);
    QHeaderView *header = ui->summaryTable->horizontalHeader();
    header->setSectionsClickable(true);
    header->setSortIndicatorShown(true);
    header->setSortIndicator(-1, Qt::AscendingOrder);
    // Lines as high as the text needs, so that many fit.
    ui->summaryTable->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    ConnectControls();
    ConnectButtons();
    connect(&session, &AnalysisSession::SettingsChanged, this, [this] {
        if (!updating)
            ShowSettings();
    });
    connect(&session, &AnalysisSession::ResultChanged, this, &ParticipantSummaryWindow::ShowResult);
}

// The session may be gone already: the main window's children go in the
// order they were made, and the session came first.
ParticipantSummaryWindow::~ParticipantSummaryWindow() = default;

void ParticipantSummaryWindow::Open()
{
    ShowSettings();
    if (viewing) {
        ShowResult();
    } else {
        viewing = true;
        session.AddViewer();
    }
    show();
    raise();
    activateWindow();
}

void ParticipantSummaryWindow::closeEvent(QCloseEvent *event)
{
    session.SaveSettings();
    if (viewing) {
        viewing = false;
        session.RemoveViewer();
    }
    QWidget::closeEvent(event);
}

void ParticipantSummaryWindow::ConnectControls()
{
    const auto apply = [this] { ApplySettings(); };
    connect(ui->conditionList, &QListWidget::itemChanged, this, apply);
    connect(ui->procedureBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this, apply);
    connect(ui->scopeBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this, apply);
    for (QLineEdit *edit : {ui->minEdit, ui->maxEdit, ui->sdEdit, ui->minAccuracyEdit})
        connect(edit, &QLineEdit::textChanged, this, apply);
    connect(ui->wideButton, &QRadioButton::toggled, this, apply);
    connect(ui->summaryTable->horizontalHeader(), &QHeaderView::sectionClicked, this,
            &ParticipantSummaryWindow::SortByColumn);
}

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

void ParticipantSummaryWindow::ShowSettings()
{
    const QScopedValueRollback<bool> guard(updating, true);
    const SummarySettings &settings = session.Settings();
    ui->procedureBox->setCurrentIndex(int(settings.procedure));
    ui->minEdit->setText(settings.min.text);
    ui->maxEdit->setText(settings.max.text);
    ui->sdEdit->setText(settings.sd.text);
    ui->scopeBox->setCurrentIndex(int(settings.Scope()));
    ui->minAccuracyEdit->setText(settings.minAccuracy.text);
    (settings.layout == SummarySettings::Layout::Wide ? ui->wideButton : ui->longButton)->setChecked(true);
    for (QLineEdit *edit : {ui->minEdit, ui->maxEdit, ui->sdEdit, ui->minAccuracyEdit})
        MarkInvalid(edit, false);
    ui->problemLabel->clear();
    EnableProcedureFields();
    ShowConditionColumns();
}

// The list is made anew only when the files in view bring other columns,
// so that the place in it stays while settings change.
void ParticipantSummaryWindow::ShowConditionColumns()
{
    const QScopedValueRollback<bool> guard(updating, true);
    const QStringList columns = session.ConditionColumns();
    QStringList listed;
    for (int row = 0; row < ui->conditionList->count(); ++row)
        listed.append(ui->conditionList->item(row)->text());
    if (listed != columns) {
        ui->conditionList->clear();
        ui->conditionList->addItems(columns);
    }
    const QStringList &ticked = session.Settings().conditionColumns;
    for (int row = 0; row < ui->conditionList->count(); ++row) {
        QListWidgetItem *item = ui->conditionList->item(row);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(ticked.contains(item->text()) ? Qt::Checked : Qt::Unchecked);
    }
}

void ParticipantSummaryWindow::EnableProcedureFields()
{
    const int procedure = ui->procedureBox->currentIndex();
    const bool bounded = procedure != int(SummarySettings::Procedure::None);
    const bool sd = procedure == int(SummarySettings::Procedure::Sd);
    for (QWidget *widget : {static_cast<QWidget *>(ui->minLabel), static_cast<QWidget *>(ui->minEdit),
                            static_cast<QWidget *>(ui->maxLabel), static_cast<QWidget *>(ui->maxEdit)})
        widget->setEnabled(bounded);
    for (QWidget *widget : {static_cast<QWidget *>(ui->sdLabel), static_cast<QWidget *>(ui->sdEdit),
                            static_cast<QWidget *>(ui->scopeLabel), static_cast<QWidget *>(ui->scopeBox)})
        widget->setEnabled(sd);
}

// Numbers are judged as they are typed; settings that cannot be used stay
// in the fields, marked, while the table keeps the last usable ones. A
// field that the procedure does not use keeps its text for when it does.
void ParticipantSummaryWindow::ApplySettings()
{
    if (updating)
        return;
    EnableProcedureFields();
    SummarySettings settings = session.Settings();
    settings.conditionColumns = TickedColumns();
    settings.procedure = SummarySettings::Procedure(ui->procedureBox->currentIndex());
    const bool bounded = settings.procedure != SummarySettings::Procedure::None;
    const bool sd = settings.procedure == SummarySettings::Procedure::Sd;
    const struct
    {
        QLineEdit *edit;
        bool used;
        TypedNumber *number;
        const char *name;
    } fields[] = {{ui->minEdit, bounded, &settings.min, "lower bound"},
                  {ui->maxEdit, bounded, &settings.max, "upper bound"},
                  {ui->sdEdit, sd, &settings.sd, "SD factor"},
                  {ui->minAccuracyEdit, true, &settings.minAccuracy, "minimum accuracy"}};
    QString problem;
    for (const auto &field : fields) {
        if (!ReadNumber(field.edit, field.used, field.number) && problem.isEmpty())
            problem = QStringLiteral("The %1 is not a number; write it with a full stop, as in 2.5.")
                          .arg(QLatin1String(field.name));
    }
    settings.scope.reset();
    if (sd && ui->scopeBox->currentIndex() > 0)
        settings.scope = SummarySettings::SdScope(ui->scopeBox->currentIndex());
    settings.layout = ui->wideButton->isChecked() ? SummarySettings::Layout::Wide : SummarySettings::Layout::Long;
    if (problem.isEmpty())
        problem = ProblemText(settings.Check());
    ui->problemLabel->setText(
        problem.isEmpty() ? QString() : problem + QStringLiteral(" The table is for the last settings that could be used."));
    if (!problem.isEmpty())
        return;
    const QScopedValueRollback<bool> guard(updating, true);
    session.SetSettings(settings);
}

// The ticked columns join those ticked for files now out of view.
QStringList ParticipantSummaryWindow::TickedColumns() const
{
    QStringList columns = session.Settings().conditionColumns;
    for (int row = 0; row < ui->conditionList->count(); ++row) {
        const QListWidgetItem *item = ui->conditionList->item(row);
        columns.removeAll(item->text());
        if (item->checkState() == Qt::Checked)
            columns.append(item->text());
    }
    return columns;
}

// An empty field gives no number, which is always valid.
bool ParticipantSummaryWindow::ReadNumber(QLineEdit *edit, bool used, TypedNumber *number) const
{
    *number = TypedNumber();
    const QString text = edit->text().trimmed();
    const bool valid = !used || text.isEmpty() || TypedNumber::Read(text, number);
    MarkInvalid(edit, !valid);
    return valid;
}

QString ParticipantSummaryWindow::ProblemText(SummarySettings::Problem problem) const
{
    switch (problem) {
    case SummarySettings::Problem::None:
        return QString();
    case SummarySettings::Problem::BoundWithoutProcedure:
        return QStringLiteral("Bounds need a procedure.");
    case SummarySettings::Problem::AbsoluteWithoutBound:
        return QStringLiteral("Absolute bounds need a lower bound, an upper bound or both.");
    case SummarySettings::Problem::BoundsCrossed:
        return QStringLiteral("The lower bound is above the upper bound.");
    case SummarySettings::Problem::SdWithoutSdProcedure:
        return QStringLiteral("An SD factor or scope needs the procedure by standard deviations.");
    case SummarySettings::Problem::SdNotPositive:
        return QStringLiteral("The SD factor must be above 0.");
    case SummarySettings::Problem::AccuracyOutOfRange:
        return QStringLiteral("The minimum accuracy is a fraction from 0 to 1.");
    }
    return QString();
}

// The table keeps its sorting and, while its columns stay, their widths.
void ParticipantSummaryWindow::ShowResult()
{
    const SummaryResult &result = session.Result();
    ShowConditionColumns();
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
