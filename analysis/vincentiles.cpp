// SPDX-License-Identifier: GPL-3.0-or-later
#include "vincentiles.h"

#include "fixedpoint.h"
#include "quantile.h"
#include "summaryresult.h"

Vincentiles::Vincentiles(const SummaryResult &result, ParticipantChoice choice)
{
    QVector<PlotLine> byCondition(result.conditions.size());
    for (const SummaryCell &cell : result.cells) {
        const int kept = int(cell.KeptEnd() - cell.KeptBegin());
        if (!choice.Includes(cell) || kept < kMinimumTimes)
            continue;
        PlotLine::Points times;
        for (int i = 0; i < PlotLine::kPoints; ++i)
            times[i] = Quantile::Type7(cell.KeptBegin(), kept, Probabilities()[i]);
        quantiles.insert(qMakePair(cell.participant, cell.condition), times);
        byCondition[cell.condition].Add(times, Probabilities());
    }
    lines = PlotLine::Entered(byCondition, result);
}

const PlotLine::Points &Vincentiles::Probabilities()
{
    static const PlotLine::Points probabilities{0.1, 0.3, 0.5, 0.7, 0.9};
    return probabilities;
}

const PlotLine::Points *Vincentiles::Of(int participant, int condition) const
{
    const auto found = quantiles.constFind(qMakePair(participant, condition));
    return found == quantiles.constEnd() ? nullptr : &found.value();
}

TextTable Vincentiles::Data() const
{
    TextTable table;
    table.header = QStringList{QStringLiteral("condition"), QStringLiteral("participants"),
                               QStringLiteral("probability"), QStringLiteral("rt")};
    table.numeric = QVector<bool>{false, true, true, true};
    for (const PlotLine &line : lines) {
        for (int i = 0; i < PlotLine::kPoints; ++i) {
            table.rows.append(QStringList{line.name, QString::number(line.participants),
                                          FixedPoint::Text(line.y[i], 1), FixedPoint::Text(line.x[i], 2)});
        }
    }
    return table;
}
