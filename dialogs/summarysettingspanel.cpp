// SPDX-License-Identifier: GPL-3.0-or-later
#include "summarysettingspanel.h"

#include "ui_summarysettingspanel.h"

#include "analysissession.h"

#include <QScopedValueRollback>

namespace {

using Procedure = SummarySettings::Procedure;
using Problem = SummarySettings::Problem;

// Setting the same text again would move the cursor under the user's hands.
void SetText(QLineEdit *edit, const QString &text)
{
    if (edit->text() != text)
        edit->setText(text);
}

void MarkInvalid(QLineEdit *edit, bool invalid)
{
    if (edit->property("invalid").toBool() == invalid)
        return;
    edit->setProperty("invalid", invalid);
    edit->style()->unpolish(edit);
    edit->style()->polish(edit);
}

QString ProblemText(Problem problem)
{
    switch (problem) {
    case Problem::None:
        return QString();
    case Problem::BoundWithoutProcedure:
        return SummarySettingsPanel::tr("Bounds need a procedure.");
    case Problem::AbsoluteWithoutBound:
        return SummarySettingsPanel::tr("Absolute bounds need a lower bound, an upper bound or both.");
    case Problem::BoundsCrossed:
        return SummarySettingsPanel::tr("The lower bound is above the upper bound.");
    case Problem::SdWithoutSdProcedure:
        return SummarySettingsPanel::tr("An SD factor or scope needs the procedure by standard deviations.");
    case Problem::SdNotPositive:
        return SummarySettingsPanel::tr("The SD factor must be above 0.");
    case Problem::AccuracyOutOfRange:
        return SummarySettingsPanel::tr("The minimum accuracy is a fraction from 0 to 1.");
    }
    return QString();
}

} // namespace

SummarySettingsPanel::SummarySettingsPanel(QWidget *parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui::SummarySettingsPanel>())
{
    ui->setupUi(this);
    const auto apply = [this] { Apply(); };
    connect(ui->conditionList, &QListWidget::itemChanged, this, apply);
    connect(ui->procedureBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this, apply);
    connect(ui->scopeBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this, apply);
    for (QLineEdit *edit : {ui->minEdit, ui->maxEdit, ui->sdEdit, ui->minAccuracyEdit})
        connect(edit, &QLineEdit::textChanged, this, apply);
    connect(ui->wideButton, &QRadioButton::toggled, this, apply);
}

SummarySettingsPanel::~SummarySettingsPanel() = default;

void SummarySettingsPanel::SetSession(AnalysisSession &session, View view)
{
    this->session = &session;
    const bool table = view == View::Table;
    ui->longButton->setVisible(table);
    ui->wideButton->setVisible(table);
    if (table)
        ui->participantsGroup->setTitle(tr("Participants and layout"));
    lastUsableNote = table ? tr("The table is for the last settings that could be used.")
                           : tr("The plot is for the last settings that could be used.");
    connect(&session, &AnalysisSession::SettingsChanged, this, [this] {
        if (!updating)
            ShowSettings();
    });
    connect(&session, &AnalysisSession::ResultChanged, this, &SummarySettingsPanel::ShowColumns);
    ShowSettings();
}

void SummarySettingsPanel::ShowSettings()
{
    const QScopedValueRollback<bool> guard(updating, true);
    const SummarySettings &settings = session->Settings();
    ui->procedureBox->setCurrentIndex(int(settings.procedure));
    SetText(ui->minEdit, settings.min.text);
    SetText(ui->maxEdit, settings.max.text);
    SetText(ui->sdEdit, settings.sd.text);
    ui->scopeBox->setCurrentIndex(int(settings.Scope()));
    SetText(ui->minAccuracyEdit, settings.minAccuracy.text);
    (settings.layout == SummarySettings::Layout::Wide ? ui->wideButton : ui->longButton)->setChecked(true);
    for (QLineEdit *edit : {ui->minEdit, ui->maxEdit, ui->sdEdit, ui->minAccuracyEdit})
        MarkInvalid(edit, false);
    ui->problemLabel->clear();
    EnableFields();
    ShowColumns();
}

// The list is made anew only when the files in view bring other columns,
// so that the place in it stays while settings change.
void SummarySettingsPanel::ShowColumns()
{
    const QScopedValueRollback<bool> guard(updating, true);
    const QStringList columns = session->ConditionColumns();
    QStringList listed;
    for (int row = 0; row < ui->conditionList->count(); ++row)
        listed.append(ui->conditionList->item(row)->text());
    if (listed != columns) {
        ui->conditionList->clear();
        ui->conditionList->addItems(columns);
    }
    const QStringList &ticked = session->Settings().conditionColumns;
    for (int row = 0; row < ui->conditionList->count(); ++row) {
        QListWidgetItem *item = ui->conditionList->item(row);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(ticked.contains(item->text()) ? Qt::Checked : Qt::Unchecked);
    }
}

// A field that the procedure does not use keeps its text for when it does.
void SummarySettingsPanel::EnableFields()
{
    const auto procedure = Procedure(ui->procedureBox->currentIndex());
    for (QWidget *field : std::initializer_list<QWidget *>{ui->minLabel, ui->minEdit, ui->maxLabel, ui->maxEdit})
        field->setEnabled(procedure != Procedure::None);
    for (QWidget *field : std::initializer_list<QWidget *>{ui->sdLabel, ui->sdEdit, ui->scopeLabel, ui->scopeBox})
        field->setEnabled(procedure == Procedure::Sd);
}

void SummarySettingsPanel::Apply()
{
    if (updating || !session)
        return;
    EnableFields();
    SummarySettings settings;
    const QString problem = Read(settings);
    ui->problemLabel->setText(problem.isEmpty() ? QString() : problem + QLatin1Char(' ') + lastUsableNote);
    if (!problem.isEmpty())
        return;
    const QScopedValueRollback<bool> guard(updating, true);
    session->SetSettings(settings);
}

QString SummarySettingsPanel::Read(SummarySettings &settings)
{
    settings.conditionColumns = TickedColumns();
    settings.procedure = Procedure(ui->procedureBox->currentIndex());
    const bool bounded = settings.procedure != Procedure::None;
    const bool sd = settings.procedure == Procedure::Sd;
    const struct
    {
        QLineEdit *edit;
        bool used;
        TypedNumber *number;
        QString name;
    } fields[] = {{ui->minEdit, bounded, &settings.min, tr("lower bound")},
                  {ui->maxEdit, bounded, &settings.max, tr("upper bound")},
                  {ui->sdEdit, sd, &settings.sd, tr("SD factor")},
                  {ui->minAccuracyEdit, true, &settings.minAccuracy, tr("minimum accuracy")}};
    QString problem;
    for (const auto &field : fields) {
        if (!ReadNumber(field.edit, field.used, field.number) && problem.isEmpty())
            problem = tr("The %1 is not a number; write it with a full stop, as in 2.5.").arg(field.name);
    }
    // The default scope stays unnamed, as on a command line without it.
    if (sd && ui->scopeBox->currentIndex() > 0)
        settings.scope = SummarySettings::SdScope(ui->scopeBox->currentIndex());
    settings.layout = ui->wideButton->isChecked() ? SummarySettings::Layout::Wide : SummarySettings::Layout::Long;
    return problem.isEmpty() ? ProblemText(settings.Check()) : problem;
}

// An empty field gives no number, which is always valid; one that does not
// read as a number is marked.
bool SummarySettingsPanel::ReadNumber(QLineEdit *edit, bool used, TypedNumber *number)
{
    const QString text = edit->text().trimmed();
    const bool valid = !used || text.isEmpty() || TypedNumber::Read(text, number);
    MarkInvalid(edit, !valid);
    return valid;
}

// The ticked columns join those ticked for files now out of view.
QStringList SummarySettingsPanel::TickedColumns() const
{
    QStringList columns = session->Settings().conditionColumns;
    for (int row = 0; row < ui->conditionList->count(); ++row) {
        const QListWidgetItem *item = ui->conditionList->item(row);
        columns.removeAll(item->text());
        if (item->checkState() == Qt::Checked)
            columns.append(item->text());
    }
    return columns;
}
