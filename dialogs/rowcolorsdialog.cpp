// SPDX-License-Identifier: GPL-3.0-or-later
#include "rowcolorsdialog.h"

#include "ui_rowcolorsdialog.h"

#include <QColorDialog>

namespace {

const int kOtherColor = 5;

// The colour of a drop-down entry; "Don't use color" is no colour.
QColor EntryColor(int entry)
{
    switch (entry) {
    case 1:
        return QColor(Qt::black);
    case 2:
        return QColor(Qt::green);
    case 3:
        return QColor(Qt::red);
    case 4:
        return QColor(Qt::gray);
    default:
        return QColor();
    }
}

} // namespace

RowColorsDialog::RowColorsDialog(QWidget *parent)
    : QDialog(parent, Qt::WindowTitleHint | Qt::WindowCloseButtonHint)
    , ui(std::make_unique<Ui::RowColorsDialog>())
{
    ui->setupUi(this);
    setModal(true);
    setFixedSize(size());
    // Reacts to every choice, also of the entry already shown, so that
    // "Other Color..." can be asked again.
    for (QComboBox *box : ColorBoxes())
        connect(box, QOverload<int>::of(&QComboBox::activated), this, &RowColorsDialog::SetColorOptions);
    // The two buttons are exclusive: one toggle covers both directions.
    connect(ui->radioButton, &QRadioButton::toggled, this, &RowColorsDialog::SetColorLimits);
    connect(ui->checkBox, &QCheckBox::stateChanged, this, &RowColorsDialog::SetColorLimits);
    connect(ui->pushButton, &QPushButton::clicked, this, &RowColorsDialog::reject);
}

RowColorsDialog::~RowColorsDialog() = default;

bool RowColorsDialog::ColorEntireRow() const
{
    return ui->radioButton_2->isChecked();
}

// A cancelled colour dialog puts the drop-down back on its former entry and
// keeps the colour in force; sending that colour again is deliberate.
void RowColorsDialog::SetColorOptions(int color)
{
    auto *box = qobject_cast<QComboBox *>(sender());
    const int rowType = ColorBoxes().indexOf(box);
    if (rowType < 0)
        return;
    const QColor chosen = color == kOtherColor ? QColorDialog::getColor(QColor(), this, QString(), {})
                                               : EntryColor(color);
    if (color == kOtherColor && !chosen.isValid()) {
        box->setCurrentIndex(choices[rowType]);
    } else {
        colors[rowType] = chosen;
        choices[rowType] = color;
    }
    emit ColorSet(rowType, colors[rowType]);
}

void RowColorsDialog::SetColorLimits()
{
    emit ColorFlaggedOptionSet(ui->radioButton_2->isChecked(), ui->checkBox->isChecked());
}

QVector<QComboBox *> RowColorsDialog::ColorBoxes() const
{
    return {ui->comboBox, ui->comboBox_3, ui->comboBox_4, ui->comboBox_2, ui->comboBox_5};
}
