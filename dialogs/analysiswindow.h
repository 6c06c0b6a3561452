// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class AnalysisSession;

// What the analysis windows have in common: a window of its own beside the
// main one, made by the main window when first asked for and kept while it
// lives, that looks at the shared AnalysisSession while it is open and
// keeps the settings when it closes. The session may be gone before the
// window (the main window's children go in the order they were made, and
// the session came first), so nothing touches it on the way out.
class AnalysisWindow : public QWidget
{
    Q_OBJECT

public:
    // Shows the window, or brings it to the front when it is open.
    void Open();

protected:
    AnalysisWindow(AnalysisSession &session, QWidget *parent);

    // Keeps the settings and lets the session rest.
    void closeEvent(QCloseEvent *event) override;

    // Gives the form's size up where a small or magnified screen has less
    // room; called once the form is set up.
    void FitToScreen();
    // Shows the session's result; called only while the window is open.
    virtual void ShowResult() = 0;

    AnalysisSession &session;

private:
    // Open, and so one of the session's viewers.
    bool viewing = false;
};
