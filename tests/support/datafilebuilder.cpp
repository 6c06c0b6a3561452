#include "datafilebuilder.h"

#include <QFile>

DataFileBuilder &DataFileBuilder::ProductTitles()
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
        Trial(cells.value(0), cells.value(1), cells.value(2), cells.value(3));
    }
    return *this;
}

QByteArray DataFileBuilder::Bytes() const
{
    QList<QByteArray> lines;
    if (legacy) {
        lines << legacyFirst.toUtf8() << experiment.toUtf8() << date.toUtf8() << legacyFourth.toUtf8();
    } else {
        lines << ".Experiment Name\t" + experiment.toUtf8() << ".Date\t" + date.toUtf8();
        for (const auto &field : fields)
            lines << field.first.toUtf8() + '\t' + field.second.toUtf8();
        for (const QString &line : headerLines)
            lines << line.toUtf8();
        lines << terminator.toUtf8();
    }
    lines << upperTitles.join(QLatin1Char('\t')).toUtf8() << lowerTitles.join(QLatin1Char('\t')).toUtf8();
    lines << rows;
    QByteArray bytes;
    for (const QByteArray &line : lines)
        bytes += line + lineEnd;
    return bytes;
}

QString DataFileBuilder::Write(const QString &path) const
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(Bytes());
    return path;
}
