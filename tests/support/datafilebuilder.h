// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayList>
#include <QList>
#include <QStringList>

// Writes small data files for tests, so that each test states its input
// next to its expectations:
//   DataFileBuilder().Experiment("Stroop").Columns("Block/Name,Error/Code").Rows({"B1,C"}).Write(path)
class DataFileBuilder
{
public:
    // The four-line header of older files instead of the dotted one.
    DataFileBuilder &Legacy() { legacy = true; return *this; }
    DataFileBuilder &Experiment(const QString &name) { experiment = name; return *this; }
    DataFileBuilder &Date(const QString &value) { date = value; return *this; }
    DataFileBuilder &Titles(const QStringList &upper, const QStringList &lower)
    {
        upperTitles = upper;
        lowerTitles = lower;
        return *this;
    }
    // Titles given as "upper/lower" and joined by ",", such as
    // "Block/Name,Key,Reaction/Time"; a title without "/" has one line.
    DataFileBuilder &Columns(const QString &titles);
    // The sixteen columns as Kelmarun writes them: twelve fixed fields
    // ("Block\nName" fourth, "Trial\nName" fifth, "Reaction\nTime" twelfth),
    // "Key", "Pressed Or\nReleased", one trial variable "Congruency" and
    // the code column "Stimulus\nSide".
    DataFileBuilder &KelmarunTitles();
    // A row of KelmarunTitles() from the values that matter to statistics.
    DataFileBuilder &Trial(const QString &block, const QString &trial, const QString &code,
                           const QString &rt, const QString &congruency = QStringLiteral("congruent"),
                           const QString &side = QStringLiteral("left"));
    // Trial() for each of `rows`, given as "block,trial,code,time[,congruency[,side]]".
    DataFileBuilder &Trials(const QStringList &rows);
    DataFileBuilder &Row(const QStringList &cells)
    {
        rows.append(cells.join(QLatin1Char('\t')).toUtf8());
        return *this;
    }
    // Rows given as cells joined by ",", such as "B1,C,300".
    DataFileBuilder &Rows(const QStringList &rows);

    QByteArray Bytes() const;
    // Writes the file and returns its path.
    QString Write(const QString &path) const;

private:
    bool legacy = false;
    QString experiment = QStringLiteral("Test Experiment");
    QString date = QStringLiteral("2026-11-22 10:00:00");
    QStringList upperTitles;
    QStringList lowerTitles;
    QList<QByteArray> rows;
};
