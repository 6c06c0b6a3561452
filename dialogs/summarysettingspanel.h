// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "summarysettings.h"

#include <QWidget>

#include <memory>

class AnalysisSession;
class QLineEdit;

namespace Ui {
class SummarySettingsPanel;
}

// The one editor of the participant summary's settings, which both analysis
// windows embed: the condition columns of the files in view, the procedure
// and its numbers, the accuracy threshold and, beside the summary's table,
// its layout. The settings live in the AnalysisSession, so a change made in
// one window shows in the other at once. Numbers are judged as they are
// typed; settings that cannot be used stay in the fields, marked and said,
// while the session keeps the last usable ones.
class SummarySettingsPanel : public QWidget
{
    Q_OBJECT

public:
    // What the window shows of the result: the summary's table, which has a
    // layout to choose, or a plot, which has none.
    enum class View { Table, Plot };

    explicit SummarySettingsPanel(QWidget *parent = nullptr);
    ~SummarySettingsPanel() override;

    void SetSession(AnalysisSession &session, View view);

private:
    void ShowSettings();
    void ShowColumns();
    void EnableFields();
    void Apply();
    // The settings the fields give, or why they give none that can be used.
    QString Read(SummarySettings &settings);
    bool ReadNumber(QLineEdit *edit, bool used, TypedNumber *number);
    QStringList TickedColumns() const;

    std::unique_ptr<Ui::SummarySettingsPanel> ui;
    AnalysisSession *session = nullptr;
    // Said after a problem: what the window shows meanwhile.
    QString lastUsableNote;
    // The fields are being set from the session, or the session from the
    // fields; either way neither answers the other.
    bool updating = false;
};
