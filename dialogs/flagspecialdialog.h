#pragma once

#include <QDialog>

// Lets the user flag or unflag rows by a rule and shows how many rows the
// rule matches. Created with the main window; while a file has the focus its
// signals reach that file's table model, which answers with UpdateMatches.
class FlagSpecialDialog : public QDialog
{
    Q_OBJECT

public:
    explicit FlagSpecialDialog(QWidget *parent = nullptr);

    // Shows the figures of the file in focus before the dialog opens.
    void Prepare(const QString &average, const QString &standardDeviation, int totalRows,
                 int flaggedRows);

signals:
    void SelectedSpecial(int actionType, int flagMode);
    void SelectedSD(bool leftestDiv, bool leftDiv, bool rightDiv, bool rightestDiv, int SDs);
    void SelectedEC(bool correct, bool incorrect, bool selfCorrect, bool noResponse);
    void SelectedTL(bool lessOrEqualTo, int time1, bool greaterOrEqualTo, int time2);
    void SelectedTR(int time1, int time2);

public slots:
    void UpdateMatches(int matches);
};
