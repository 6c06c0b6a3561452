#include "summarysettingspanel.h"

#include "ui_summarysettingspanel.h"

#include "analysissession.h"

#include <QSignalBlocker>

namespace {

using Procedure = SummarySettings::Procedure;
using Problem = SummarySettings::Problem;

void SetText(QLineEdit *edit, const QString &text)
{
    // Setting the same text again would move the cursor under the user's hands.
    if (edit->text() != text)
        edit->setText(text);
}

QString ProblemText(Problem problem)
{
    switch (problem) {
    case Problem::None:
    case Problem::BoundWithoutProcedure:
    case Problem::SdWithoutSdProcedure:
        break;
    case Problem::AbsoluteWithoutBound:
        return SummarySettingsPanel::tr("The absolute procedure needs a minimum or a maximum.");
    case Problem::BoundsCrossed:
        return SummarySettingsPanel::tr("The minimum lies above the maximum.");
    case Problem::SdNotPositive:
        return SummarySettingsPanel::tr("The SD factor must be above 0.");
    case Problem::AccuracyOutOfRange:
        return SummarySettingsPanel::tr("The minimum accuracy runs from 0 to 1.");
    }
    return QString();
}

} // namespace

SummarySettingsPanel::SummarySettingsPanel(QWidget *parent)
    : QGroupBox(parent)
    , ui(std::make_unique<Ui::SummarySettingsPanel>())
{
    ui->setupUi(this);
    ui->procedureBox->addItems(SummarySettings::ProcedureNames());
    ui->scopeBox->addItems(SummarySettings::ScopeNames());
    connect(ui->conditionColumnList, &QListWidget::itemChanged, this, &SummarySettingsPanel::Apply);
    connect(ui->procedureBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &SummarySettingsPanel::Apply);
    connect(ui->scopeBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &SummarySettingsPanel::Apply);
    for (QLineEdit *edit : {ui->minEdit, ui->maxEdit, ui->sdEdit, ui->minAccuracyEdit})
        connect(edit, &QLineEdit::textEdited, this, &SummarySettingsPanel::Apply);
}

SummarySettingsPanel::~SummarySettingsPanel() = default;

void SummarySettingsPanel::SetSession(AnalysisSession *session)
{
    this->session = session;
    connect(session, &AnalysisSession::SettingsChanged, this, &SummarySettingsPanel::ShowSettings);
    connect(session, &AnalysisSession::ResultChanged, this, &SummarySettingsPanel::ShowColumns);
    ShowSettings();
}

void SummarySettingsPanel::ShowSettings()
{
    showing = true;
    const SummarySettings &settings = session->Settings();
    ui->procedureBox->setCurrentIndex(int(settings.procedure));
    ui->scopeBox->setCurrentIndex(int(settings.Scope()));
    SetText(ui->minEdit, settings.min.text);
    SetText(ui->maxEdit, settings.max.text);
    SetText(ui->sdEdit, settings.sd.text);
    SetText(ui->minAccuracyEdit, settings.minAccuracy.text);
    for (QLineEdit *edit : {ui->minEdit, ui->maxEdit, ui->sdEdit, ui->minAccuracyEdit})
        edit->setStyleSheet(QString());
    ui->problemLabel->clear();
    EnableFields();
    showing = false;
    ShowColumns();
}

// The columns of the files in view, ticked as the settings have them; a
// column ticked for files no longer in view stays in the settings.
void SummarySettingsPanel::ShowColumns()
{
    const QStringList columns = session->ConditionColumns();
    const QStringList &ticked = session->Settings().conditionColumns;
    QStringList shown;
    for (int i = 0; i < ui->conditionColumnList->count(); ++i)
        shown.append(ui->conditionColumnList->item(i)->text());
    QStringList tickedInView;
    for (const QString &column : columns) {
        if (ticked.contains(column))
            tickedInView.append(column);
    }
    if (shown == columns && TickedColumns() == tickedInView)
        return;
    const QSignalBlocker blocker(ui->conditionColumnList);
    ui->conditionColumnList->clear();
    for (const QString &column : columns) {
        auto *item = new QListWidgetItem(column, ui->conditionColumnList);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable | Qt::ItemIsSelectable);
        item->setCheckState(ticked.contains(column) ? Qt::Checked : Qt::Unchecked);
    }
}

void SummarySettingsPanel::Apply()
{
    if (showing || !session)
        return;
    EnableFields();
    SummarySettings settings = session->Settings();
    if (Read(settings))
        session->SetSettings(settings);
}

bool SummarySettingsPanel::Read(SummarySettings &settings)
{
    const SummarySettings current = session->Settings();
    settings.procedure = Procedure(ui->procedureBox->currentIndex());
    const bool bounds = settings.procedure != Procedure::None;
    const bool sd = settings.procedure == Procedure::Sd;
    const QStringList inView = session->ConditionColumns();
    settings.conditionColumns.clear();
    for (const QString &column : current.conditionColumns) {
        if (!inView.contains(column))
            settings.conditionColumns.append(column);
    }
    settings.conditionColumns += TickedColumns();
    bool numbers = ReadNumber(ui->minEdit, settings.min, bounds);
    numbers = ReadNumber(ui->maxEdit, settings.max, bounds) && numbers;
    numbers = ReadNumber(ui->sdEdit, settings.sd, sd) && numbers;
    numbers = ReadNumber(ui->minAccuracyEdit, settings.minAccuracy, true) && numbers;
    // The default scope stays unnamed, as on a command line without it.
    const auto scope = SummarySettings::SdScope(ui->scopeBox->currentIndex());
    settings.scope.reset();
    if (sd && (current.scope || scope != SummarySettings::SdScope::Cell))
        settings.scope = scope;
    const Problem problem = settings.Check();
    ui->problemLabel->setText(numbers ? ProblemText(problem) : tr("A number is needed, such as 250 or 2.5."));
    return numbers && problem == Problem::None;
}

// An empty field gives no number; one that does not read as a number is
// marked and gives none either.
bool SummarySettingsPanel::ReadNumber(QLineEdit *edit, TypedNumber &number, bool used)
{
    number = TypedNumber();
    const bool valid = !used || edit->text().isEmpty() || TypedNumber::Read(edit->text(), &number);
    edit->setStyleSheet(valid ? QString() : QStringLiteral("background-color: #ffd6d6;"));
    return valid;
}

void SummarySettingsPanel::EnableFields()
{
    const auto procedure = Procedure(ui->procedureBox->currentIndex());
    for (QWidget *field : std::initializer_list<QWidget *>{ui->minEdit, ui->maxEdit, ui->minLabel, ui->maxLabel})
        field->setEnabled(procedure != Procedure::None);
    for (QWidget *field : std::initializer_list<QWidget *>{ui->sdEdit, ui->scopeBox, ui->sdLabel, ui->scopeLabel})
        field->setEnabled(procedure == Procedure::Sd);
}

QStringList SummarySettingsPanel::TickedColumns() const
{
    QStringList ticked;
    for (int i = 0; i < ui->conditionColumnList->count(); ++i) {
        const QListWidgetItem *item = ui->conditionColumnList->item(i);
        if (item->checkState() == Qt::Checked)
            ticked.append(item->text());
    }
    return ticked;
}
