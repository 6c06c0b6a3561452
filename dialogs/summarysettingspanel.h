#pragma once

#include "summarysettings.h"

#include <QGroupBox>

#include <memory>

class AnalysisSession;
class QLineEdit;

namespace Ui {
class SummarySettingsPanel;
}

// The participant summary's settings as the distributions window edits
// them: the condition columns of the files in view, the procedure and its
// numbers, the accuracy threshold. They live in the AnalysisSession, so
// the summary window sees each change at once and its changes show here.
// A field the procedure does not use is disabled and left out; numbers are
// checked as they are typed, and only usable settings reach the session.
class SummarySettingsPanel : public QGroupBox
{
    Q_OBJECT

public:
    explicit SummarySettingsPanel(QWidget *parent = nullptr);
    ~SummarySettingsPanel() override;

    void SetSession(AnalysisSession *session);

private:
    void ShowSettings();
    void ShowColumns();
    void Apply();
    // The settings the fields give; false with the problem said where they
    // give none that can be used.
    bool Read(SummarySettings &settings);
    bool ReadNumber(QLineEdit *edit, TypedNumber &number, bool used);
    void EnableFields();
    QStringList TickedColumns() const;

    std::unique_ptr<Ui::SummarySettingsPanel> ui;
    AnalysisSession *session = nullptr;
    // While the fields show the session's settings, their edits are not
    // taken back as the user's.
    bool showing = false;
};
