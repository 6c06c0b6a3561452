// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "sectionstats.h"

#include <QStringList>
#include <QVector>

class DataFile;
class MainModel;
class QAbstractItemModel;
class SectionModel;

// What a table shows, as text, for comparing in tests.
namespace TableContents {

// Each row as "vertical header: cell cell ...", as the section table reads.
QStringList Rows(const QAbstractItemModel &model);
// Each row's cells joined by "|", from the "Flag" column on.
QStringList Cells(const QAbstractItemModel &model);
// The display text of one column, top to bottom.
QStringList Column(const QAbstractItemModel &model, int column);
// The cells of the columns with these titles, a row's cells joined by " "
// and the rows by ", ".
QString Fields(const QAbstractItemModel &model, const QStringList &titles);
// The rows that show the flag icon, as "1 4".
QString FlaggedRows(const QAbstractItemModel &model);
// The rows of the whole table whose flag is `flagged`, hidden or not, as
// the hiding of flagged or unflagged rows takes them.
QVector<int> RowsFlagged(const MainModel &model, bool flagged);
// The horizontal header titles, from the first column.
QStringList Titles(const QAbstractItemModel &model);
// Statistic values as "1 0 2.5 0".
QString Numbers(const SectionStats::Slots &values);
// One section table as "name: values, name: values", after choosing it.
QString Sections(SectionModel &sections, int sectionType, int subIndex = 0, int dataType = 0);
// The whole file's counts and sums, then every table the section model can
// show (blocks, trials, each trial variable, each code column) in `dataType`.
QString Statistics(DataFile &file, int dataType = 0);

} // namespace TableContents
