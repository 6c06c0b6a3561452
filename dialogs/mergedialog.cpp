// SPDX-License-Identifier: GPL-3.0-or-later
#include "mergedialog.h"

#include "ui_mergedialog.h"

namespace {

QString Count(int value)
{
    return QStringLiteral("(%1)").arg(value);
}

} // namespace

MergeDialog::MergeDialog(QWidget *parent)
    : QDialog(parent, Qt::WindowTitleHint | Qt::WindowCloseButtonHint)
    , ui(std::make_unique<Ui::MergeDialog>())
{
    ui->setupUi(this);
    // Both panels answer to the form's one border rule.
    ui->rowsPanel->setObjectName(QStringLiteral("rows"));
    ui->optionsPanel->setObjectName(QStringLiteral("rows"));

    const QList<QAbstractButton *> options{ui->radioButton, ui->radioButton_2, ui->radioButton_3,
                                           ui->checkBox_2, ui->checkBox};
    for (QAbstractButton *option : options)
        connect(option, &QAbstractButton::clicked, this, &MergeDialog::UpdateOptions);
    connect(ui->pushButton, &QPushButton::clicked, this, &MergeDialog::reject);
}

MergeDialog::~MergeDialog() = default;

// Only a click changes the choices. A choice made at an earlier opening
// therefore stays in force here even when its button is now disabled or
// unchecked, and "All rows " pressed down only looks chosen.
void MergeDialog::Prepare(int rows, int flagged, int hidden)
{
    if (flagged < 1) {
        ui->radioButton_3->setDown(true);
        ui->radioButton->setEnabled(false);
        ui->radioButton_2->setEnabled(false);
        ui->label_3->clear();
        ui->label_2->clear();
        ui->label_4->clear();
    } else {
        ui->radioButton->setEnabled(true);
        ui->radioButton_2->setEnabled(true);
        ui->label_3->setText(Count(rows));
        ui->label_2->setText(Count(flagged));
        ui->label_4->setText(Count(rows - flagged));
    }
    if (hidden < 1) {
        ui->checkBox_2->setChecked(false);
        ui->checkBox_2->setEnabled(false);
        ui->label_6->clear();
    } else {
        ui->checkBox_2->setEnabled(true);
        ui->label_6->setText(Count(hidden));
    }
}

QPushButton *MergeDialog::MergeButton() const
{
    return ui->pushButton_2;
}

void MergeDialog::UpdateOptions()
{
    const QObject *source = sender();
    if (source == ui->radioButton)
        rowsToMerge = 0;
    else if (source == ui->radioButton_2)
        rowsToMerge = 1;
    else if (source == ui->radioButton_3)
        rowsToMerge = 2;
    else if (source == ui->checkBox_2)
        includeHiddenRows = ui->checkBox_2->isChecked();
    else if (source == ui->checkBox)
        transpose = ui->checkBox->isChecked();
}
