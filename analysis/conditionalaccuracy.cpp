// SPDX-License-Identifier: GPL-3.0-or-later
#include "conditionalaccuracy.h"

#include "fixedpoint.h"
#include "summaryresult.h"

#include <algorithm>

ConditionalAccuracy::ConditionalAccuracy(const SummaryResult &result, ParticipantChoice choice)
{
    QVector<QVector<TimedResponse>> responses = result.ResponsesByCell();
    QVector<PlotLine> byCondition(result.conditions.size());
    for (int i = 0; i < result.cells.size(); ++i) {
        const SummaryCell &cell = result.cells[i];
        if (!choice.Includes(cell) || responses[i].size() < kMinimumRows)
            continue;
        PlotLine::Points times;
        PlotLine::Points accuracies;
        Bin(responses[i], times, accuracies);
        byCondition[cell.condition].Add(times, accuracies);
    }
    lines = PlotLine::Entered(byCondition, result);
}

TextTable ConditionalAccuracy::Data() const
{
    TextTable table;
    table.header = QStringList{QStringLiteral("condition"), QStringLiteral("participants"), QStringLiteral("bin"),
                               QStringLiteral("rt"), QStringLiteral("accuracy")};
    table.numeric = QVector<bool>{false, true, true, true, true};
    for (const PlotLine &line : lines) {
        for (int i = 0; i < PlotLine::kPoints; ++i) {
            table.rows.append(QStringList{line.name, QString::number(line.participants), QString::number(i + 1),
                                          FixedPoint::Text(line.x[i], 2), FixedPoint::Text(line.y[i], 4)});
        }
    }
    return table;
}

// A bin's members are a set of ranks, whatever their order within it, so
// the responses are partitioned at each bin's end rather than sorted: the
// same bins for a fraction of the time on a participant's thousands.
void ConditionalAccuracy::Bin(QVector<TimedResponse> &responses, PlotLine::Points &times,
                              PlotLine::Points &accuracies)
{
    const int n = responses.size();
    for (int bin = 0; bin < PlotLine::kPoints; ++bin) {
        const int begin = bin * n / PlotLine::kPoints;
        const int end = (bin + 1) * n / PlotLine::kPoints;
        if (end < n)
            std::nth_element(responses.begin() + begin, responses.begin() + end, responses.end(), TimedResponse::Before);
        double sum = 0;
        int correct = 0;
        for (int rank = begin; rank < end; ++rank) {
            sum += responses[rank].time;
            correct += responses[rank].correct ? 1 : 0;
        }
        times[bin] = sum / (end - begin);
        accuracies[bin] = double(correct) / (end - begin);
    }
}
