// SPDX-License-Identifier: GPL-3.0-or-later
#include "exclusionrecord.h"

#include "fixedpoint.h"

namespace {

const int kBoundDecimals = 2;

} // namespace

TextTable ExclusionRecord::Of(const SummaryResult &result)
{
    const QStringList &columns = result.settings.conditionColumns;
    TextTable table;
    table.header = QStringList{QStringLiteral("participant"), QStringLiteral("row")} + columns
                   + QStringList{QStringLiteral("code"), QStringLiteral("reaction_time"), QStringLiteral("reason"),
                                 QStringLiteral("bound"), QStringLiteral("procedure")};
    table.numeric = QVector<bool>(table.header.size(), false);
    table.numeric[1] = true;
    table.numeric[table.header.size() - 2] = true;
    const QString procedure = result.settings.ProcedureText();
    for (const ExcludedRow &excluded : result.exclusions) {
        const ParticipantTrials &trials = result.input[excluded.participant];
        table.rows.append(QStringList{trials.name, QString::number(excluded.fileRow + 1)}
                          + trials.ConditionValues(columns, excluded.fileRow)
                          + QStringList{trials.codes.TextAt(excluded.fileRow), trials.timeTexts.at(excluded.fileRow),
                                        ReasonName(excluded.reason), FixedPoint::Text(excluded.bound, kBoundDecimals),
                                        procedure});
    }
    return table;
}

QString ExclusionRecord::ReasonName(ExclusionReason reason)
{
    switch (reason) {
    case ExclusionReason::TooFast:
        return QStringLiteral("too_fast");
    case ExclusionReason::TooSlow:
        return QStringLiteral("too_slow");
    case ExclusionReason::InvalidRt:
        return QStringLiteral("invalid_rt");
    case ExclusionReason::LowAccuracy:
        return QStringLiteral("low_accuracy");
    case ExclusionReason::Hidden:
        break;
    }
    return QStringLiteral("hidden");
}
