// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "celltext.h"
#include "linecells.h"
#include "sectionstats.h"

#include <QSet>
#include <QString>
#include <QVector>

#include <memory>
#include <vector>

// A column whose cells name sections: model column and section kind.
struct SectionColumn
{
    int column;
    int kind;
};

// What the statistics read from a table: the section columns in model
// order, and the model columns of the code and the reaction time (-1 when
// there is none). Model column 0 is "Flag", whose cells are always empty.
struct StatisticsPlan
{
    QVector<SectionColumn> sections;
    int errorCode = -1;
    int reactionTime = -1;
};

// The statistics of a stretch of rows: the whole-file record and the
// sections of each section column in the order they first appear. Stretches
// read on several threads are merged in file order, which keeps that order.
//
// Sums of reaction times are whole numbers, so while the total of their
// sizes stays below 2^53 any order of adding gives the very same doubles
// as one pass from the first row to the last; beyond that, only that pass
// does, and the caller reads the rows again in it.
class ChunkStatistics
{
public:
    // Rows added `inRowOrder` are counted into each section as they come;
    // otherwise cells that lines lack, which all count under "<No Name>",
    // are added up per column at the end, which costs nothing per missing
    // cell.
    ChunkStatistics(const StatisticsPlan &plan, const CellText &text, bool inRowOrder);
    ~ChunkStatistics();
    ChunkStatistics(ChunkStatistics &&) noexcept;

    // Adds the next row.
    void AddLine(const LineCells &line);
    // Ends the rows of a stretch.
    void EndLines();
    // Adds the statistics of the rows that follow these.
    void Merge(const ChunkStatistics &later);
    // Whether rows added in any order give the same result as in row order.
    bool OrderFree() const;
    // Lowers the total of time sizes up to which OrderFree holds, so that
    // the tests reach the pass in row order without files of millions of
    // rows; 0 sets it back to 2^53.
    static void SetOrderFreeLimit(quint64 limit);
    // Fills percentages and averages; the whole-file record and the
    // sections of each section column in plan order.
    QVector<QVector<SectionStats>> Finish(SectionStats *overall);

private:
    class Tally;
    struct MissingCells;
    // Rows waiting to be counted into the sections: each line's cells and
    // what the row counts as.
    class Batch
    {
    public:
        void Add(const LineCells &line, int slot, int rt);
        bool Full() const;
        int Rows() const { return int(starts.size()); }
        LineCells Line(int row) const;
        int Slot(int row) const { return codeSlots[size_t(row)]; }
        int Time(int row) const { return times[size_t(row)]; }
        void Clear();

    private:
        std::vector<const char *> starts;
        std::vector<size_t> firstEnds;
        std::vector<quint64> ends;
        std::vector<int> codeSlots;
        std::vector<int> times;
    };

    void AddToMissing(qint64 present, int slot, int rt);
    void CountBatch();
    void CountLine(const LineCells &line, int slot, int rt, int first, int last);
    void AddMissing(const MissingCells &missing);
    Tally &TallyAt(int section);

    const StatisticsPlan &plan;
    const CellText &text;
    bool inRowOrder;
    std::unique_ptr<MissingCells> missing;
    qint64 lines = 0;
    Batch batch;
    bool countsOverall = false;
    SlotTotals overall;
    // Every section name met, so that equal names share their text; kept
    // where the tallies find it when these statistics move.
    std::unique_ptr<QSet<QString>> knownNames;
    // The tallies of the section columns in blocks of columns, as they are
    // counted, each block of its own allocation.
    std::vector<std::vector<Tally>> tallyBlocks;
    // The field of the line each tally counts, -1 for the "Flag" column.
    std::vector<qint64> fields;
    quint64 timeMagnitudes = 0;
};
