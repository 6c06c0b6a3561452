// SPDX-License-Identifier: GPL-3.0-or-later
#include "flagspecialdialog.h"

#include "ui_flagspecialdialog.h"

#include <QIntValidator>
#include <QMouseEvent>

namespace {

const int kBellCurves = 16;
// Where the picture's zones begin, in pixels from its left edge: the lines
// (a - s), (a) and (a + s) of the bell curve images.
const int kLeftZoneEnd = 64;
const int kMeanX = 90;
const int kRightZoneStart = 117;

QString FlaggedRowsText(int flaggedRows, int totalRows)
{
    if (flaggedRows == 0)
        return QStringLiteral("No rows are currently flagged");
    if (flaggedRows > 0 && flaggedRows < totalRows)
        return QStringLiteral("%1 out of %2 rows are flagged").arg(flaggedRows).arg(totalRows);
    if (flaggedRows == totalRows)
        return QStringLiteral("All %1 rows are flagged").arg(totalRows);
    return QString();
}

} // namespace

FlagSpecialDialog::FlagSpecialDialog(QWidget *parent)
    : QDialog(parent, Qt::WindowTitleHint | Qt::WindowCloseButtonHint)
    , ui(std::make_unique<Ui::FlagSpecialDialog>())
{
    ui->setupUi(this);
    setModal(true);
    setFixedSize(minimumSize());
    for (int zones = 0; zones < kBellCurves; ++zones)
        bellCurves.append(QPixmap(QStringLiteral(":/img/bellcurve%1.png").arg(zones)));
    ui->label_8->setPixmap(bellCurves.first());
    ui->label_8->installEventFilter(this);
    for (QLineEdit *edit : LineEdits())
        edit->setValidator(new QIntValidator(1, 100000, this));
    ConnectForm();
}

FlagSpecialDialog::~FlagSpecialDialog() = default;

void FlagSpecialDialog::Prepare(const QString &average, const QString &standardDeviation, int totalRows,
                                int flaggedRows)
{
    this->average = average;
    this->standardDeviation = standardDeviation;
    this->totalRows = totalRows;
    this->flaggedRows = flaggedRows;
    ui->label_9->setText(
        QStringLiteral("where the average 'a' = %1 ms and\nthe desired standard deviations 's' = ")
            .arg(this->average));
    ui->label_6->setText(QStringLiteral("(1 standard deviation is %1 ms)").arg(this->standardDeviation));
    ui->label_10->setText(FlaggedRowsText(this->flaggedRows, this->totalRows));
}

void FlagSpecialDialog::UpdateMatches(int matches)
{
    pageMatches[ui->stackedWidget->currentIndex()] = matches;
    ui->label_3->setText(QString::number(matches));
}

// The count shown is the one this page had last; no new count is asked for.
void FlagSpecialDialog::ChangePage(int index)
{
    ui->stackedWidget->setCurrentIndex(index);
    UpdateMatches(pageMatches.value(index));
}

// The heading names the action on every page, the error code page too.
void FlagSpecialDialog::ChangeFlagMode(int index)
{
    flagMode = index;
    const QString action = index == 0   ? QStringLiteral("Flag")
                           : index == 1 ? QStringLiteral("Unflag")
                                        : QString();
    ui->label_4->setText(QStringLiteral("%1 rows where the participant's RT is:").arg(action));
}

// One picture per combination of the four zones, by their bit values.
void FlagSpecialDialog::BitwiseForBellCurve()
{
    int zones = 0;
    if (ui->checkBox_4->isChecked())
        zones += 1;
    if (ui->checkBox_3->isChecked())
        zones += 2;
    if (ui->checkBox->isChecked())
        zones += 4;
    if (ui->checkBox_2->isChecked())
        zones += 8;
    ui->label_8->setPixmap(bellCurves[zones]);
    SendActionSignal(1);
}

// Only "OK" applies the rule; every other change asks for a count. The rule
// signal must follow SelectedSpecial, whose options the model's rule reads.
// An empty field goes out as 0: the validators limit typing only.
void FlagSpecialDialog::SendActionSignal(int actionType)
{
    if (sender() == ui->pushButton_2)
        actionType = 0;
    emit SelectedSpecial(actionType, ui->comboBox->currentIndex());
    switch (ui->stackedWidget->currentIndex()) {
    case 0:
        emit SelectedSD(ui->checkBox_4->isChecked(), ui->checkBox_3->isChecked(), ui->checkBox->isChecked(),
                        ui->checkBox_2->isChecked(), ui->lineEdit->text().toInt());
        break;
    case 1:
        emit SelectedEC(ui->checkBox_6->isChecked(), ui->checkBox_7->isChecked(), ui->checkBox_8->isChecked(),
                        ui->checkBox_5->isChecked());
        break;
    case 2:
        emit SelectedTL(ui->checkBox_10->isChecked(), ui->lineEdit_2->text().toInt(), ui->checkBox_9->isChecked(),
                        ui->lineEdit_3->text().toInt());
        break;
    case 3:
        emit SelectedTR(ui->lineEdit_4->text().toInt(), ui->lineEdit_5->text().toInt());
        break;
    default:
        break;
    }
}

// A left click on the picture toggles the zone's box. The toggle sends its
// own count request and the direct call below a second one; the second
// count is deliberate and changes nothing else.
bool FlagSpecialDialog::eventFilter(QObject *object, QEvent *event)
{
    if (object != ui->label_8 || event->type() != QEvent::MouseButtonPress
        || static_cast<QMouseEvent *>(event)->button() != Qt::LeftButton)
        return QDialog::eventFilter(object, event);
    if (QCheckBox *box = ZoneBoxAt(static_cast<QMouseEvent *>(event)->x()))
        box->setChecked(!box->isChecked());
    BitwiseForBellCurve();
    return false;
}

// The form's connections. "OK" sends its request before it closes the
// dialog, which has no accepted state.
void FlagSpecialDialog::ConnectForm()
{
    const auto indexChanged = QOverload<int>::of(&QComboBox::currentIndexChanged);
    const auto send = [this] { SendActionSignal(); };
    connect(ui->pushButton, &QPushButton::clicked, this, &FlagSpecialDialog::reject);
    connect(ui->comboBox_2, indexChanged, this, &FlagSpecialDialog::ChangePage);
    connect(ui->comboBox, indexChanged, this, &FlagSpecialDialog::ChangeFlagMode);
    for (QCheckBox *zone : {ui->checkBox, ui->checkBox_2, ui->checkBox_3, ui->checkBox_4})
        connect(zone, &QCheckBox::stateChanged, this, &FlagSpecialDialog::BitwiseForBellCurve);
    connect(ui->pushButton_2, &QPushButton::clicked, this, send);
    connect(ui->pushButton_2, &QPushButton::clicked, this, &FlagSpecialDialog::reject);
    for (QLineEdit *edit : LineEdits())
        connect(edit, &QLineEdit::textEdited, this, send);
    for (QCheckBox *box : {ui->checkBox_5, ui->checkBox_6, ui->checkBox_7, ui->checkBox_8, ui->checkBox_9,
                           ui->checkBox_10})
        connect(box, &QCheckBox::stateChanged, this, send);
}

QVector<QLineEdit *> FlagSpecialDialog::LineEdits() const
{
    return {ui->lineEdit, ui->lineEdit_2, ui->lineEdit_3, ui->lineEdit_4, ui->lineEdit_5};
}

// Clicks right of the picture's width toggle nothing.
QCheckBox *FlagSpecialDialog::ZoneBoxAt(int x) const
{
    if (x < kLeftZoneEnd)
        return ui->checkBox_4;
    if (x < kMeanX)
        return ui->checkBox_3;
    if (x < kRightZoneStart)
        return ui->checkBox;
    if (x <= ui->label_8->width())
        return ui->checkBox_2;
    return nullptr;
}
