// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QString>
#include <QVector>

#include <array>

// Slot of a response code in every four-slot vector: "C" 0, "E" 1, "NR" 2,
// "SC" 3, anything else -1.
int CodeIndex(const QString &code);

// Counts and sums of reaction times by code slot, added up row by row.
// Four slots each; fixed arrays rather than containers, as a wide file
// holds hundreds of thousands of records.
struct SlotTotals
{
    using Slots = std::array<double, 4>;

    Slots counts = {};
    Slots sums = {};

    // Counts a row whose code is in `slot`; a slot of -1 counts nowhere.
    // Inline, as the reader calls it for every cell of a section column.
    void AddToSlot(int slot, int rt)
    {
        if (slot < 0)
            return;
        counts[slot] += 1;
        sums[slot] += rt;
    }
    void Add(const SlotTotals &other);
    void Subtract(const SlotTotals &other);
};

// Response statistics of the whole file or of one named section, by code slot.
struct SectionStats : SlotTotals
{
    QString name;
    Slots percents = {};
    Slots averages = {};

    SectionStats() = default;
    explicit SectionStats(const QString &name);

    void AddRow(const QString &code, int rt);
    // Counts "SC" as "C"; the caller's code is changed as well.
    void AccumulateOverall(QString &code, int rt);
    void Finish();
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
