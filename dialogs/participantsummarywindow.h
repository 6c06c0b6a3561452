// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysiswindow.h"
#include "texttablemodel.h"

#include <memory>

struct SummaryResult;

namespace Ui {
class ParticipantSummaryWindow;
}

// The participant summary of the files in view: the settings, the table,
// what it left out, the command line that writes the same table, and the
// ways out (clipboard, CSV files, flags in the main table).
class ParticipantSummaryWindow : public AnalysisWindow
{
    Q_OBJECT

public:
    ParticipantSummaryWindow(AnalysisSession &session, QWidget *parent);
    ~ParticipantSummaryWindow() override;

private:
    void ConnectButtons();
    void ShowResult() override;
    QString CountsText(const SummaryResult &result) const;
    void SortByColumn(int column);
    void CopyTable();
    void FlagExcludedRows();
    void SaveFile(const QString &caption, const QString &name, const QByteArray &bytes);
    QString StartDirectory() const;

    std::unique_ptr<Ui::ParticipantSummaryWindow> ui;
    TextTableModel tableModel;
    // Where the last file was saved.
    QString lastDirectory;
};
