#pragma once

#include <QStringList>
#include <QVector>

class QAbstractItemModel;

// What a table shows, as text, for comparing in tests.
namespace TableContents {

// Each row as "vertical header: cell cell ...", as the section table reads.
QStringList Rows(const QAbstractItemModel &model);
// The display text of one column, top to bottom.
QStringList Column(const QAbstractItemModel &model, int column);
// The horizontal header titles, from the first column.
QStringList Titles(const QAbstractItemModel &model);
// Statistic values as "1 0 2.5 0".
QString Numbers(const QVector<double> &values);

} // namespace TableContents
