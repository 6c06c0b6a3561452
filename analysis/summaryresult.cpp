// SPDX-License-Identifier: GPL-3.0-or-later
#include "summaryresult.h"

#include <algorithm>
#include <cmath>

int SummaryResult::ParticipantsInTable() const
{
    return int(std::count_if(participants.begin(), participants.end(),
                             [](const SummaryParticipant &participant) { return !participant.lowAccuracy; }));
}

QString SummaryResult::ConditionLabel(int condition) const
{
    return conditions[condition].join(QStringLiteral(" / "));
}

QVector<QVector<TimedResponse>> SummaryResult::ResponsesByCell() const
{
    QVector<QVector<TimedResponse>> responses(cells.size());
    for (int i = 0; i < cells.size(); ++i)
        responses[i].reserve(cells[i].codes[0] + cells[i].codes[1]);
    for (int p = 0; p < participants.size(); ++p) {
        const ParticipantTrials &trials = input[p];
        const QVector<int> &cellOf = cellOfRow[p];
        const QVector<int> slots = trials.CodeSlots();
        for (int row = 0; row < trials.RowCount(); ++row) {
            const int code = slots[trials.codes.ids[row]];
            const double time = trials.times[row];
            // Code slots 0 and 1: C and E.
            if (cellOf[row] >= 0 && (code == 0 || code == 1) && !std::isnan(time) && InsideBounds(time))
                responses[cellOf[row]].append(TimedResponse{time, row, code == 0});
        }
    }
    return responses;
}

bool SummaryResult::InsideBounds(double time) const
{
    return (!settings.min.Given() || time >= settings.min.value)
           && (!settings.max.Given() || time <= settings.max.value);
}
