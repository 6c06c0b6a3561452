#include "tablecontents.h"

#include <QAbstractItemModel>

namespace TableContents {

QStringList Rows(const QAbstractItemModel &model)
{
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < model.columnCount(); ++column)
            cells << model.data(model.index(row, column)).toString();
        rows << model.headerData(row, Qt::Vertical, Qt::DisplayRole).toString() + ": " + cells.join(' ');
    }
    return rows;
}

QStringList Column(const QAbstractItemModel &model, int column)
{
    QStringList cells;
    for (int row = 0; row < model.rowCount(); ++row)
        cells << model.data(model.index(row, column)).toString();
    return cells;
}

QStringList Titles(const QAbstractItemModel &model)
{
    QStringList titles;
    for (int column = 0; column < model.columnCount(); ++column)
        titles << model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    return titles;
}

QString Numbers(const QVector<double> &values)
{
    QStringList texts;
    for (const double value : values)
        texts << QString::number(value);
    return texts.join(' ');
}

} // namespace TableContents
