#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QStringList>

// Writes small data files for tests, so that each test states its input
// next to its expectations:
//   DataFileBuilder().Experiment("Stroop").ProductTitles().Row({...}).Write(path)
class DataFileBuilder
{
public:
    DataFileBuilder &Dotted() { legacy = false; return *this; }
    DataFileBuilder &Legacy() { legacy = true; return *this; }
    DataFileBuilder &Experiment(const QString &name) { experiment = name; return *this; }
    DataFileBuilder &Date(const QString &value) { date = value; return *this; }
    DataFileBuilder &Field(const QString &key, const QString &value) { fields.append({key, value}); return *this; }
    // Lines written after the header fields and before the terminator.
    DataFileBuilder &HeaderLine(const QString &line) { headerLines.append(line); return *this; }
    // The line that ends a dotted header; empty by default.
    DataFileBuilder &Terminator(const QString &line) { terminator = line; return *this; }
    // Legacy lines 1 and 4, which the reader drops.
    DataFileBuilder &LegacyLines(const QString &first, const QString &fourth)
    {
        legacyFirst = first;
        legacyFourth = fourth;
        return *this;
    }
    DataFileBuilder &Titles(const QStringList &upper, const QStringList &lower)
    {
        upperTitles = upper;
        lowerTitles = lower;
        return *this;
    }
    // The sixteen columns as the product writes them: twelve fixed fields
    // ("Block\nName" fourth, "Trial\nName" fifth, "Reaction\nTime" twelfth),
    // "Key", "Pressed Or\nReleased", one trial variable "Congruency" and
    // the code column "Stimulus\nSide".
    DataFileBuilder &ProductTitles();
    // A row of ProductTitles() from the values that matter to statistics.
    DataFileBuilder &Trial(const QString &block, const QString &trial, const QString &code,
                           const QString &rt, const QString &congruency = QStringLiteral("congruent"),
                           const QString &side = QStringLiteral("left"));
    // Trial() for each of `rows`, given as "block,trial,code,time".
    DataFileBuilder &Trials(const QStringList &rows);
    DataFileBuilder &Row(const QStringList &cells)
    {
        rows.append(cells.join(QLatin1Char('\t')).toUtf8());
        return *this;
    }
    DataFileBuilder &RawLine(const QByteArray &line) { rows.append(line); return *this; }
    DataFileBuilder &LineEnd(const QByteArray &ending) { lineEnd = ending; return *this; }

    QByteArray Bytes() const;
    // Writes the file and returns its path.
    QString Write(const QString &path) const;

private:
    bool legacy = false;
    QString experiment = QStringLiteral("Test Experiment");
    QString date = QStringLiteral("2026-11-22 10:00:00");
    QList<QPair<QString, QString>> fields;
    QStringList headerLines;
    QString terminator;
    QString legacyFirst = QStringLiteral("Kelmarun Data File");
    QString legacyFourth;
    QStringList upperTitles;
    QStringList lowerTitles;
    QList<QByteArray> rows;
    QByteArray lineEnd = "\n";
};
