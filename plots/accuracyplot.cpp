// SPDX-License-Identifier: GPL-3.0-or-later
#include "accuracyplot.h"

#include "conditionalaccuracy.h"

#include <algorithm>
#include <cmath>

AccuracyPlot::AccuracyPlot(QWidget *parent)
    : LinePlot(parent)
{
    SetAxisTitles(tr("Mean reaction time (ms)"), tr("Accuracy (proportion correct)"));
}

// Accuracy runs up to 1 and down to chance for two choices or below,
// from a whole tenth, so that conditions near ceiling are not spread over
// the whole height.
void AccuracyPlot::Show(const ConditionalAccuracy &accuracy)
{
    if (ShowLines(accuracy.Lines(), tr("No participant has %1 correct or incorrect trials with a time in a condition")
                                        .arg(ConditionalAccuracy::kMinimumRows))) {
        double lowest = 0.5;
        for (const PlotLine &line : accuracy.Lines())
            lowest = std::min(lowest, *std::min_element(line.y.begin(), line.y.end()));
        SetAxisRange(QwtPlot::yLeft, std::floor(lowest * 10) / 10, 1);
    }
    replot();
}
