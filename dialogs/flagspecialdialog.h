// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <QPixmap>
#include <QVector>

#include <memory>

class QCheckBox;
class QLineEdit;

namespace Ui {
class FlagSpecialDialog;
}

// Lets the user flag or unflag rows by a rule and shows how many rows the
// rule matches. Created with the main window; while a file has the focus its
// signals reach that file's table model, which answers with UpdateMatches.
// The dialog itself computes nothing about rows.
class FlagSpecialDialog : public QDialog
{
    Q_OBJECT

public:
    explicit FlagSpecialDialog(QWidget *parent = nullptr);
    ~FlagSpecialDialog() override;

    // Shows the figures of the file in focus before the dialog opens; the
    // rules, the page and the counts stay as the last opening left them.
    void Prepare(const QString &average, const QString &standardDeviation, int totalRows,
                 int flaggedRows);

signals:
    // `actionType` 0 applies the rule that follows, 1 only counts its
    // matches; `flagMode` 0 flags, 1 unflags.
    void SelectedSpecial(int actionType, int flagMode);
    void SelectedSD(bool leftestDiv, bool leftDiv, bool rightDiv, bool rightestDiv, int SDs);
    void SelectedEC(bool correct, bool incorrect, bool selfCorrect, bool noResponse);
    void SelectedTL(bool lessOrEqualTo, int time1, bool greaterOrEqualTo, int time2);
    void SelectedTR(int time1, int time2);

public slots:
    void UpdateMatches(int matches);
    void ChangePage(int index);
    void ChangeFlagMode(int index);
    void BitwiseForBellCurve();
    void SendActionSignal(int actionType = 1);

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void ConnectForm();
    QVector<QLineEdit *> LineEdits() const;
    QCheckBox *ZoneBoxAt(int x) const;

    std::unique_ptr<Ui::FlagSpecialDialog> ui;
    QVector<QPixmap> bellCurves;
    QString average;
    QString standardDeviation;
    int totalRows = 0;
    int flaggedRows = 0;
    int flagMode = 0;
    // The count last shown on each rule page.
    QVector<int> pageMatches = QVector<int>(4);
};
