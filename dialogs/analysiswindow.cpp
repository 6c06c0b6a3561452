// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysiswindow.h"

#include "analysissession.h"

#include <QCloseEvent>
#include <QScreen>

AnalysisWindow::AnalysisWindow(AnalysisSession &session, QWidget *parent)
    : QWidget(parent, Qt::Window)
    , session(session)
{
    // A closed window leaves the result to the window still open.
    connect(&session, &AnalysisSession::ResultChanged, this, [this] {
        if (viewing)
            ShowResult();
    });
}

// The first viewer makes the session compute, which shows the result
// through ResultChanged; otherwise the result is there to be shown.
void AnalysisWindow::Open()
{
    const bool computed = session.IsActive();
    if (!viewing) {
        viewing = true;
        session.AddViewer();
    }
    if (computed)
        ShowResult();
    show();
    raise();
    activateWindow();
}

void AnalysisWindow::closeEvent(QCloseEvent *event)
{
    session.SaveSettings();
    if (viewing) {
        viewing = false;
        session.RemoveViewer();
    }
    QWidget::closeEvent(event);
}

void AnalysisWindow::FitToScreen()
{
    resize(size().boundedTo(parentWidget()->screen()->availableGeometry().size() * 9 / 10));
}
