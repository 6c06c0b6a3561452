// SPDX-License-Identifier: GPL-3.0-or-later
#include "sectionstats.h"

#include <cmath>

int CodeIndex(const QString &code)
{
    if (code == QLatin1String("C"))
        return 0;
    if (code == QLatin1String("E"))
        return 1;
    if (code == QLatin1String("NR"))
        return 2;
    if (code == QLatin1String("SC"))
        return 3;
    return -1;
}

SectionStats::SectionStats(const QString &name)
    : name(name)
{
}

void SectionStats::AddRow(const QString &code, int rt)
{
    AddToSlot(CodeIndex(code), rt);
}

void SectionStats::AccumulateOverall(QString &code, int rt)
{
    if (code == QLatin1String("SC"))
        code = QStringLiteral("C");
    AddRow(code, rt);
}

void SectionStats::Finish()
{
    const int total = TotalCount();
    for (int k = 0; k < 4; ++k)
        percents[k] = total == 0 ? 0.0 : counts[k] / total * 100;
    for (int k = 0; k < 4; ++k)
        averages[k] = counts[k] == 0 ? 0.0 : sums[k] / counts[k];
}

void SlotTotals::Add(const SlotTotals &other)
{
    for (int k = 0; k < 4; ++k) {
        counts[k] += other.counts[k];
        sums[k] += other.sums[k];
    }
}

void SlotTotals::Subtract(const SlotTotals &other)
{
    for (int k = 0; k < 4; ++k) {
        counts[k] -= other.counts[k];
        sums[k] -= other.sums[k];
    }
}

int SectionStats::TotalCount() const
{
    return int(counts[0] + counts[1] + counts[2] + counts[3]);
}

QString SectionStats::FormatValue(int position, int dataType) const
{
    const Slots &values = dataType == 1 ? percents : dataType == 2 ? averages : counts;
    return FormatNumber(values[position], dataType);
}

QString SectionStats::FormatAverageRt() const
{
    const int total = TotalCount();
    const double average = total == 0 ? 0.0 : (sums[0] + sums[1] + sums[2] + sums[3]) / total;
    return FormatNumber(average, 2);
}

int AccumulateSection(QVector<SectionStats> &sections, const QString &name, const QString &code,
                      int rt, QHash<QString, int> *positions)
{
    int position = -1;
    if (positions) {
        position = positions->value(name, -1);
    } else {
        for (int i = 0; i < sections.size() && position < 0; ++i) {
            if (sections[i].name == name)
                position = i;
        }
    }
    if (position < 0) {
        position = sections.size();
        sections.append(SectionStats(name));
        if (positions)
            positions->insert(name, position);
    }
    sections[position].AddRow(code, rt);
    return position;
}

void FinishAll(QVector<SectionStats> &sections)
{
    for (SectionStats &section : sections)
        section.Finish();
}

void MergeStats(QVector<SectionStats> &into, const QVector<SectionStats> &other)
{
    QHash<QString, int> positions;
    // Names within one vector are unique, so the first match is the only one.
    positions.reserve(into.size());
    for (int i = into.size() - 1; i >= 0; --i)
        positions.insert(into[i].name, i);
    for (const SectionStats &record : other) {
        const int position = positions.value(record.name, -1);
        if (position < 0) {
            positions.insert(record.name, into.size());
            into.append(record);
        } else {
            into[position].Add(record);
            into[position].Finish();
        }
    }
}

QString FormatNumber(double value, int mode)
{
    const double scale = 100;
    const double rounded = std::trunc(value * scale + 0.5) / scale;
    QString text = QString::number(rounded, 'g', 6);
    if (mode == 0)
        return text;
    const int dot = text.indexOf(QLatin1Char('.'));
    if (dot < 0)
        text += QLatin1String(".00");
    else
        while (text.size() - dot - 1 < 2)
            text += QLatin1Char('0');
    if (mode == 1)
        text += QLatin1Char('%');
    return text;
}
