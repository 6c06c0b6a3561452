#pragma once

#include "celltext.h"
#include "datacolumn.h"
#include "sectionstats.h"

#include <QMap>
#include <QStringList>
#include <QVector>

#include <memory>

class LineCursor;
class MainModel;

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

// Builds the model's title row from a file's two title rows: "Flag", then
// the file's titles, each repeat of an earlier title marked with as many
// "#" as set it apart. No two titles of a model are ever equal, so columns
// of combined files join by title without falling out of step.
QStringList BuildTitles(const QString &upper, const QString &lower);

// Turns the lines after a data file's header into the table of the file and
// its statistics.
class DataFileParser
{
public:
    explicit DataFileParser(std::shared_ptr<const CellText> text);

    // Reads a dotted header block and drops the line that ends it.
    static void ReadFieldLines(LineCursor &lines, QMap<QString, QString> *fields);

    // Reads the two title rows and every row after them, with the "Flag"
    // column in front.
    void ReadTable(LineCursor &lines);
    // Fills `overall` and the section stores in one pass over the rows.
    SectionStores CollectStatistics(SectionStats *overall) const;
    // Gives the table to the model; the parser is empty afterwards.
    void HandOver(MainModel *model);

private:
    DataColumn ReadColumn(std::vector<CellSpan> spans) const;
    void CollectRowFacts(QVector<QString> *codes, QVector<int> *rts) const;
    void CreateRightHandEntries(SectionStores *stores) const;

    std::shared_ptr<const CellText> text;
    QStringList titles;
    QVector<DataColumn> columns;
    int rowCount = 0;
};
