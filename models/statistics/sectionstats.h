// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QString>
#include <QVector>

#include <array>

// Slot of a response code in every four-slot vector: "C" 0, "E" 1, "NR" 2,
// "SC" 3, anything else -1.
int CodeIndex(const QString &code);

// Response statistics of the whole file or of one named section, by code slot.
struct SectionStats
{
    // Four slots each; fixed arrays rather than containers, as a wide file
    // holds hundreds of thousands of records.
    using Slots = std::array<double, 4>;

    QString name;
    Slots counts = {};
    Slots sums = {};
    Slots percents = {};
    Slots averages = {};

    SectionStats() = default;
    explicit SectionStats(const QString &name);

    void AddRow(const QString &code, int rt);
    // AddRow for a code already turned into its slot.
    void AddToSlot(int slot, int rt);
    // Counts "SC" as "C"; the caller's code is changed as well.
    void AccumulateOverall(QString &code, int rt);
    void Finish();
    void Add(const SectionStats &other);
    void Subtract(const SectionStats &other);
    int TotalCount() const;

    // `dataType` 0 counts, 1 percents, 2 averages.
    QString FormatValue(int position, int dataType) const;
    QString FormatAverageRt() const;
};

// Adds the row to the record called `name`, appending the record first if
// there is none, and returns its position. `positions`, when given, indexes
// the records by name and is kept in step.
int AccumulateSection(QVector<SectionStats> &sections, const QString &name, const QString &code,
                      int rt, QHash<QString, int> *positions = nullptr);
void FinishAll(QVector<SectionStats> &sections);
// Adds each record of `other` to the first of `into` with its name, or
// appends a copy, keeping the order of first appearance.
void MergeStats(QVector<SectionStats> &into, const QVector<SectionStats> &other);

// The text of every statistic: mode 0 plain, 1 two decimals and "%",
// 2 two decimals.
QString FormatNumber(double value, int mode);
