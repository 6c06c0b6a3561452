#include "benchdata.h"

#include <QFile>

namespace BenchData {

DataFileBuilder Participant(int participant, int rows)
{
    static const char *const codes[] = {"C", "C", "C", "E", "C", "NR", "C", "SC"};
    DataFileBuilder builder;
    builder.Experiment(QStringLiteral("Stroop")).Date(QStringLiteral("2026-03-%1").arg(participant % 28 + 1));
    const bool extra = participant % 10 == 9;
    if (extra) {
        builder.Titles({"Participant", "Session", "Block", "Block", "Trial", "Trial", "Trial", "Stimulus",
                        "Expected", "Actual", "Error", "Reaction", "", "Pressed Or", "Congruency", "Stimulus", "Hand"},
                       {"Name", "Number", "Number", "Name", "Name", "Number", "Repetition", "Name", "Response",
                        "Response", "Code", "Time", "Key", "Released", "(Trial Variable)", "Side", "(Trial Variable)"});
    } else {
        builder.ProductTitles();
    }
    for (int row = 0; row < rows; ++row) {
        const QString number = QString::number(row + 1);
        QStringList cells{QStringLiteral("P%1").arg(participant), "1", QString::number(row / 100 + 1),
                          QStringLiteral("Block %1").arg(row / 100 + 1), QStringLiteral("Trial %1").arg(row % 20),
                          number, "1", "stim" + number, "z", "z", codes[row % 8],
                          QString::number(250 + (row * 37) % 700) + ".5", "z", "Pressed",
                          row % 3 ? "congruent" : "incongruent", row % 2 ? "left" : "right"};
        if (extra)
            cells << (row % 2 ? "left hand" : "right hand");
        builder.Row(cells);
    }
    return builder;
}

double StatusBytes(const QByteArray &key)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly | QIODevice::Text))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(key))
            return line.mid(key.size()).trimmed().split(' ').value(0).toDouble() * 1024.0;
    }
    return 0;
}

void ResetPeak()
{
    QFile clearRefs(QStringLiteral("/proc/self/clear_refs"));
    if (clearRefs.open(QIODevice::WriteOnly))
        clearRefs.write("5");
}

} // namespace BenchData
