#pragma once

#include "participantchoice.h"
#include "texttable.h"

#include <QWidget>

#include <memory>

class AnalysisSession;
struct SummaryResult;

namespace Ui {
class DistributionsWindow;
}

// The "Distributions..." window: the histogram, vincentiles, conditional
// accuracy function or delta plot of the files in view, drawn from the
// participant summary that the AnalysisSession keeps, so it follows the
// file selection, the hidden rows and every setting, and shares the
// settings with the summary window. It stays open beside the main window,
// exports the plot in view and copies the numbers behind it.
class DistributionsWindow : public QWidget
{
    Q_OBJECT

public:
    // The numeric values are the positions in the plot box and its pages.
    enum class PlotKind { Histogram, Vincentiles, ConditionalAccuracy, Delta };

    DistributionsWindow(AnalysisSession &session, QWidget *parent);
    ~DistributionsWindow() override;

    // Shows the window, or brings it to the front when it is open.
    void Open();

protected:
    // Keeps the settings and lets the session rest.
    void closeEvent(QCloseEvent *event) override;

private:
    void ShowChoices();
    void Redraw();
    void DrawHistogram(const SummaryResult &result, ParticipantChoice choice);
    void DrawDelta(const SummaryResult &result, ParticipantChoice choice);
    void EnableChoices();
    QWidget *PlotInView() const;
    // Says on the plot in view why there is nothing to draw.
    void ShowMessage(const QString &text);
    void ExportPlot();
    void CopyData();

    std::unique_ptr<Ui::DistributionsWindow> ui;
    AnalysisSession &session;
    // The numbers behind the plot in view, for "Copy Data".
    TextTable data;
    // Open, and so one of the session's viewers.
    bool viewing = false;
};
