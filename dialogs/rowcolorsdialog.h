// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QDialog>
#include <QVector>

#include <memory>

class QComboBox;

namespace Ui {
class RowColorsDialog;
}

// Lets the user choose a background colour per response code and for
// flagged rows. Created with the main window; the choices last as long as
// the program runs and reach the table model of the file in focus.
class RowColorsDialog : public QDialog
{
    Q_OBJECT

public:
    explicit RowColorsDialog(QWidget *parent = nullptr);
    ~RowColorsDialog() override;

    // By row type: 0 correct, 1 incorrect, 2 no response, 3 self-correct,
    // 4 flagged; an invalid colour means none.
    QVector<QColor> Colors() const { return colors; }
    bool ColorEntireRow() const;

signals:
    void ColorSet(int code, QColor color);
    void ColorFlaggedOptionSet(bool colorEntireRow, bool flagOverride);

private slots:
    void SetColorOptions(int color);
    void SetColorLimits();

private:
    // The drop-downs in row type order.
    QVector<QComboBox *> ColorBoxes() const;

    std::unique_ptr<Ui::RowColorsDialog> ui;
    QVector<QColor> colors = QVector<QColor>(5);
    // The drop-down entry last accepted for each row type.
    QVector<int> choices = QVector<int>(5);
};
