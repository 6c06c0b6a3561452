// SPDX-License-Identifier: GPL-3.0-or-later
#include "participanttrials.h"

#include "sectionstats.h"

QVector<int> ParticipantTrials::CodeSlots() const
{
    QVector<int> slots;
    for (const QString &code : codes.texts)
        slots.append(CodeIndex(code));
    return slots;
}

QStringList ParticipantTrials::ConditionValues(const QStringList &names, int row) const
{
    QStringList values;
    for (const QString &name : names) {
        const int index = ConditionIndex(name);
        values.append(index >= 0 ? conditions[index].TextAt(row) : NoName());
    }
    return values;
}

QStringList ParticipantTrials::ConditionNamesOf(const QVector<ParticipantTrials> &participants)
{
    QStringList names;
    for (const ParticipantTrials &trials : participants) {
        for (const QString &name : trials.conditionNames) {
            if (!names.contains(name))
                names.append(name);
        }
    }
    return names;
}
