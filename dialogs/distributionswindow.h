// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysiswindow.h"
#include "participantchoice.h"
#include "texttable.h"

#include <functional>
#include <memory>

struct SummaryResult;

namespace Ui {
class DistributionsWindow;
}

// The "Distributions..." window: the histogram, vincentiles, conditional
// accuracy function or delta plot of the files in view, drawn from the
// participant summary that the AnalysisSession keeps, so it follows the
// file selection, the hidden rows and every setting, and shares the
// settings with the summary window. It exports the plot in view and copies
// the numbers behind it.
class DistributionsWindow : public AnalysisWindow
{
    Q_OBJECT

public:
    // The numeric values are the positions in the plot box and its pages.
    enum class PlotKind { Histogram, Vincentiles, ConditionalAccuracy, Delta };

    DistributionsWindow(AnalysisSession &session, QWidget *parent);
    ~DistributionsWindow() override;

private:
    void ShowResult() override;
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
    // The numbers behind the plot in view, for "Copy Data": made only when
    // asked for, as the plot is redrawn at every change of a setting.
    std::function<TextTable()> data = [] { return TextTable(); };
};
