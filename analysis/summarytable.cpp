// SPDX-License-Identifier: GPL-3.0-or-later
#include "summarytable.h"

#include "fixedpoint.h"
#include "summaryresult.h"

namespace {

const int kAccuracyDecimals = 4;
const int kTimeDecimals = 2;

QVector<bool> NumericColumns(int labels, int numbers)
{
    return QVector<bool>(labels, false) + QVector<bool>(numbers, true);
}

} // namespace

TextTable SummaryTable::Of(const SummaryResult &result)
{
    return result.settings.layout == SummarySettings::Layout::Wide ? Wide(result) : Long(result);
}

TextTable SummaryTable::Long(const SummaryResult &result)
{
    TextTable table;
    table.header = QStringList{QStringLiteral("participant")} + result.settings.conditionColumns + MeasureNames();
    table.numeric = NumericColumns(1 + result.settings.conditionColumns.size(), MeasureNames().size());
    for (const SummaryCell &cell : result.cells) {
        table.rows.append(QStringList{result.participants[cell.participant].name}
                          + result.conditions[cell.condition] + Measures(cell));
    }
    return table;
}

TextTable SummaryTable::Wide(const SummaryResult &result)
{
    TextTable table;
    table.header.append(QStringLiteral("participant"));
    for (int condition = 0; condition < result.conditions.size(); ++condition) {
        const QString label = result.ConditionLabel(condition);
        for (const QString &measure : MeasureNames())
            table.header.append(result.settings.conditionColumns.isEmpty() ? measure : label + QStringLiteral(": ") + measure);
    }
    table.numeric = NumericColumns(1, table.header.size() - 1);
    const QStringList missing = QVector<QString>(MeasureNames().size()).toList();
    for (const SummaryParticipant &participant : result.participants) {
        if (participant.lowAccuracy)
            continue;
        QVector<QStringList> byCondition(result.conditions.size(), missing);
        for (int i = participant.firstCell; i < participant.firstCell + participant.cellCount; ++i)
            byCondition[result.cells[i].condition] = Measures(result.cells[i]);
        QStringList row{participant.name};
        for (const QStringList &measures : byCondition)
            row += measures;
        table.rows.append(row);
    }
    return table;
}

const QStringList &SummaryTable::MeasureNames()
{
    static const QStringList names{
        QStringLiteral("trials"),        QStringLiteral("correct"),       QStringLiteral("incorrect"),
        QStringLiteral("no_response"),   QStringLiteral("self_correct"),  QStringLiteral("accuracy"),
        QStringLiteral("rt_n"),          QStringLiteral("rt_mean"),       QStringLiteral("rt_median"),
        QStringLiteral("rt_sd"),         QStringLiteral("error_rt_mean"), QStringLiteral("excluded_low"),
        QStringLiteral("excluded_high"), QStringLiteral("excluded_percent"), QStringLiteral("rt_invalid"),
    };
    return names;
}

QStringList SummaryTable::Measures(const SummaryCell &cell)
{
    return {
        QString::number(cell.trials),
        QString::number(cell.codes[0]),
        QString::number(cell.codes[1]),
        QString::number(cell.codes[2]),
        QString::number(cell.codes[3]),
        FixedPoint::Text(cell.Accuracy(), kAccuracyDecimals),
        QString::number(cell.kept.n),
        FixedPoint::Text(cell.kept.mean, kTimeDecimals),
        FixedPoint::Text(cell.median, kTimeDecimals),
        FixedPoint::Text(cell.kept.sd, kTimeDecimals),
        FixedPoint::Text(cell.errorMean, kTimeDecimals),
        QString::number(cell.ExcludedLow()),
        QString::number(cell.ExcludedHigh()),
        FixedPoint::Text(cell.ExcludedPercent(), kTimeDecimals),
        QString::number(cell.invalidTimes),
    };
}
