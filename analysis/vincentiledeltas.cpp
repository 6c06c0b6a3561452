// SPDX-License-Identifier: GPL-3.0-or-later
#include "vincentiledeltas.h"

#include "fixedpoint.h"
#include "summaryresult.h"
#include "vincentiles.h"

VincentileDeltas::VincentileDeltas(const SummaryResult &result, const Vincentiles &vincentiles, int a, int b)
    : a(a)
    , b(b)
{
    const int conditions = result.conditions.size();
    if (a == b || a < 0 || b < 0 || a >= conditions || b >= conditions)
        return;
    nameA = result.ConditionLabel(a);
    nameB = result.ConditionLabel(b);
    line.name = nameB + QStringLiteral(" \u2212 ") + nameA;
    for (int participant = 0; participant < result.participants.size(); ++participant)
        AddParticipant(vincentiles, participant);
}

TextTable VincentileDeltas::Data() const
{
    TextTable table;
    table.header = QStringList{QStringLiteral("condition_a"), QStringLiteral("condition_b"),
                               QStringLiteral("participants"), QStringLiteral("probability"),
                               QStringLiteral("rt_mean"), QStringLiteral("delta")};
    table.numeric = QVector<bool>{false, false, true, true, true, true};
    if (IsEmpty())
        return table;
    for (int i = 0; i < PlotLine::kPoints; ++i) {
        table.rows.append(QStringList{nameA, nameB, QString::number(line.participants),
                                      FixedPoint::Text(Vincentiles::Probabilities()[i], 1),
                                      FixedPoint::Text(line.x[i], 2), FixedPoint::Text(line.y[i], 2)});
    }
    return table;
}

void VincentileDeltas::AddParticipant(const Vincentiles &vincentiles, int participant)
{
    const PlotLine::Points *timesA = vincentiles.Of(participant, a);
    const PlotLine::Points *timesB = vincentiles.Of(participant, b);
    if (!timesA || !timesB)
        return;
    PlotLine::Points means;
    PlotLine::Points deltas;
    for (int i = 0; i < PlotLine::kPoints; ++i) {
        means[i] = (timesA->at(i) + timesB->at(i)) / 2;
        deltas[i] = timesB->at(i) - timesA->at(i);
    }
    line.Add(means, deltas);
}
