#pragma once

#include "summarysettings.h"
#include "texttablemodel.h"

#include <QWidget>

#include <memory>

class AnalysisSession;
class QLineEdit;
struct SummaryResult;

namespace Ui {
class ParticipantSummaryWindow;
}

// The participant summary of the files in view, in a window that stays
// open beside the main one: the settings, the table, what it left out, the
// command line that writes the same table, and the ways out (clipboard,
// CSV files, flags in the main table). Made by the main window when first
// asked for and kept while it lives; computes through the AnalysisSession
// that it shares with the other analysis window.
class ParticipantSummaryWindow : public QWidget
{
    Q_OBJECT

public:
    ParticipantSummaryWindow(AnalysisSession &session, QWidget *parent);
    ~ParticipantSummaryWindow() override;

    // Shows the window, or brings it to the front when it is open.
    void Open();

protected:
    // Keeps the settings and lets the session rest.
    void closeEvent(QCloseEvent *event) override;

private:
    void ConnectControls();
    void ConnectButtons();
    void ShowSettings();
    void ShowConditionColumns();
    void EnableProcedureFields();
    void ApplySettings();
    QStringList TickedColumns() const;
    bool ReadNumber(QLineEdit *edit, bool used, TypedNumber *number) const;
    QString ProblemText(SummarySettings::Problem problem) const;
    void ShowResult();
    QString CountsText(const SummaryResult &result) const;
    void SortByColumn(int column);
    void CopyTable();
    void FlagExcludedRows();
    void SaveFile(const QString &caption, const QString &name, const QByteArray &bytes);
    QString StartDirectory() const;

    std::unique_ptr<Ui::ParticipantSummaryWindow> ui;
    AnalysisSession &session;
    TextTableModel tableModel;
    // Where the last file was saved.
    QString lastDirectory;
    // Open, and so one of the session's viewers.
    bool viewing = false;
    // The controls are being set from the session, or the session from the
    // controls; either way neither answers the other.
    bool updating = false;
};
