// SPDX-License-Identifier: GPL-3.0-or-later
#include "datafilebuilder.h"

#include <QFile>

DataFileBuilder &DataFileBuilder::KelmarunTitles()
{
    return Titles({"Participant", "Session", "Block", "Block", "Trial", "Trial", "Trial", "Stimulus",
                   "Expected", "Actual", "Error", "Reaction", "", "Pressed Or", "Congruency", "Stimulus"},
                  {"Name", "Number", "Number", "Name", "Name", "Number", "Repetition", "Name",
                   "Response", "Response", "Code", "Time", "Key", "Released", "(Trial Variable)", "Side"});
}

DataFileBuilder &DataFileBuilder::Trial(const QString &block, const QString &trial, const QString &code,
                                        const QString &rt, const QString &congruency, const QString &side)
{
    const QString number = QString::number(rows.size() + 1);
    return Row({"P01", "1", "1", block, trial, number, "1", "stim" + number, "z", "z", code, rt, "z",
                "Pressed", congruency, side});
}

DataFileBuilder &DataFileBuilder::Trials(const QStringList &rows)
{
    for (const QString &row : rows) {
        const QStringList cells = row.split(QLatin1Char(','));
        Trial(cells.value(0), cells.value(1), cells.value(2), cells.value(3), cells.value(4, QStringLiteral("congruent")),
              cells.value(5, QStringLiteral("left")));
    }
    return *this;
}

DataFileBuilder &DataFileBuilder::Columns(const QString &titles)
{
    upperTitles.clear();
    lowerTitles.clear();
    for (const QString &title : titles.split(QLatin1Char(','))) {
        const int slash = title.indexOf(QLatin1Char('/'));
        upperTitles << (slash < 0 ? QString() : title.left(slash));
        lowerTitles << title.mid(slash + 1);
    }
    return *this;
}

DataFileBuilder &DataFileBuilder::Rows(const QStringList &rows)
{
    for (const QString &row : rows)
        Row(row.split(QLatin1Char(',')));
    return *this;
}

QByteArray DataFileBuilder::Bytes() const
{
    QList<QByteArray> lines;
    if (legacy)
        lines << "Kelmarun Data File" << experiment.toUtf8() << date.toUtf8() << "";
    else
        lines << ".Experiment Name\t" + experiment.toUtf8() << ".Date\t" + date.toUtf8() << "";
    lines << upperTitles.join(QLatin1Char('\t')).toUtf8() << lowerTitles.join(QLatin1Char('\t')).toUtf8() << rows;
    return lines.join('\n') + '\n';
}

QString DataFileBuilder::Write(const QString &path) const
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(Bytes());
    return path;
}
