// SPDX-License-Identifier: GPL-3.0-or-later
#include "plotline.h"

#include "summaryresult.h"

// A running mean, m += (v - m) / n, keeps the digits of times near 10^6 ms
// however many participants there are.
void PlotLine::Add(const Points &participantX, const Points &participantY)
{
    ++participants;
    for (int i = 0; i < kPoints; ++i) {
        x[i] += (participantX[i] - x[i]) / participants;
        y[i] += (participantY[i] - y[i]) / participants;
    }
}

QVector<PlotLine> PlotLine::Entered(const QVector<PlotLine> &byCondition, const SummaryResult &result)
{
    QVector<PlotLine> lines;
    for (int condition = 0; condition < byCondition.size(); ++condition) {
        if (byCondition[condition].participants > 0) {
            lines.append(byCondition[condition]);
            lines.last().condition = condition;
            lines.last().name = result.ConditionLabel(condition);
        }
    }
    return lines;
}
