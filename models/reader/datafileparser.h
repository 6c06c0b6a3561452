// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "celltext.h"
#include "chunkstatistics.h"
#include "datacolumn.h"
#include "sectionstats.h"
#include "titlemarks.h"

#include <QMap>
#include <QStringList>
#include <QVector>

#include <memory>
#include <optional>

class LineCursor;

// The four section stores of a file, in the order SectionModel takes them.
struct SectionStores
{
    QVector<SectionStats> blocks;
    QVector<SectionStats> trials;
    QMap<QString, QVector<SectionStats>> trialVariables;
    QMap<QString, QVector<SectionStats>> codeColumns;
};

// Section kind of a column: 0 blocks, 1 trials, 2 trial variable,
// 3 code column, -1 none.
int ColumnSectionKind(const QString &title, bool rightOfReactionTime);

// Builds the model's title row from a file's two title rows. No two titles
// of a model are ever equal, so columns of combined files join by title
// without falling out of step.
TitleRow BuildTitles(const QString &upper, const QString &lower);

// Turns the lines after a data file's header into the table of the file and
// its statistics. The rows are read in stretches on every core at once and
// the stretches' statistics merged in file order, which gives exactly what
// one pass over the rows would.
class DataFileParser
{
public:
    explicit DataFileParser(std::shared_ptr<const CellText> text);

    // Reads a dotted header block and drops the line that ends it.
    static void ReadFieldLines(LineCursor &lines, QMap<QString, QString> *fields);

    // Reads the two title rows, every row after them and their statistics.
    // False when the table cannot be held: a title row longer than text can
    // be, or more rows than a table can count.
    bool ReadTable(LineCursor &lines);
    // Fills `overall` and gives the section stores.
    SectionStores TakeStatistics(SectionStats *overall);
    // Gives the titles and columns of the table, with the "Flag" column in
    // front, and the store that the titles' marks live in (null when no
    // title has any); the parser is empty afterwards.
    void HandOver(QStringList *titles, QVector<DataColumn> *tableColumns,
                  std::shared_ptr<const TitleMarkStore> *marks);

private:
    void PlanStatistics();
    void ReadRows(qint64 begin);
    void BuildColumns(const std::shared_ptr<const RowTable> &table);
    void FillTitleMaps(const QVector<QVector<SectionStats>> &sections, SectionStores *stores) const;

    std::shared_ptr<const CellText> text;
    TitleRow titleRow;
    StatisticsPlan plan;
    std::optional<ChunkStatistics> statistics;
    QVector<DataColumn> columns;
    int rowCount = 0;
};
