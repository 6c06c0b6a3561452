// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

#include <memory>

class QPushButton;

namespace Ui {
class MergeDialog;
}

// Asks which rows go into the merged output file and whether to transpose
// it. Created with the main window and kept as long as it lives, so the
// choices carry over from one opening, and one file, to the next.
class MergeDialog : public QDialog
{
    Q_OBJECT

public:
    explicit MergeDialog(QWidget *parent = nullptr);
    ~MergeDialog() override;

    // Shows the row counts of the file in focus and enables what applies to it.
    void Prepare(int rows, int flagged, int hidden);
    // 0 flagged rows only, 1 unflagged rows only, anything else all rows.
    int RowsToMerge() const { return rowsToMerge; }
    bool IncludeHiddenRows() const { return includeHiddenRows; }
    bool Transpose() const { return transpose; }
    QPushButton *MergeButton() const;

public slots:
    void UpdateOptions();

private:
    std::unique_ptr<Ui::MergeDialog> ui;
    int rowsToMerge = -1;
    bool includeHiddenRows = false;
    bool transpose = false;
};
