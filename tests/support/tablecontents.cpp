// SPDX-License-Identifier: GPL-3.0-or-later
#include "tablecontents.h"

#include "datafile.h"

#include <QAbstractItemModel>

namespace TableContents {

namespace {

QStringList JoinedRows(const QAbstractItemModel &model, const QString &separator, bool withHeader)
{
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < model.columnCount(); ++column)
            cells << model.data(model.index(row, column)).toString();
        const QString header = model.headerData(row, Qt::Vertical, Qt::DisplayRole).toString();
        rows << (withHeader ? header + ": " : QString()) + cells.join(separator);
    }
    return rows;
}

} // namespace

QStringList Rows(const QAbstractItemModel &model)
{
    return JoinedRows(model, QStringLiteral(" "), true);
}

QStringList Cells(const QAbstractItemModel &model)
{
    return JoinedRows(model, QStringLiteral("|"), false);
}

QString Fields(const QAbstractItemModel &model, const QStringList &titles)
{
    const QStringList all = Titles(model);
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row) {
        QStringList cells;
        for (const QString &title : titles)
            cells << model.data(model.index(row, all.indexOf(title))).toString();
        rows << cells.join(QLatin1Char(' '));
    }
    return rows.join(QStringLiteral(", "));
}

QStringList Column(const QAbstractItemModel &model, int column)
{
    QStringList cells;
    for (int row = 0; row < model.rowCount(); ++row)
        cells << model.data(model.index(row, column)).toString();
    return cells;
}

QString FlaggedRows(const QAbstractItemModel &model)
{
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row) {
        if (model.index(row, 0).data(Qt::DecorationRole).isValid())
            rows << QString::number(row);
    }
    return rows.join(' ');
}

QVector<int> RowsFlagged(const MainModel &model, bool flagged)
{
    QVector<int> rows;
    for (int row = 0; row < model.Flags().size(); ++row) {
        if (model.Flags()[row] == flagged)
            rows.append(row);
    }
    return rows;
}

QStringList Titles(const QAbstractItemModel &model)
{
    QStringList titles;
    for (int column = 0; column < model.columnCount(); ++column)
        titles << model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    return titles;
}

QString Numbers(const SectionStats::Slots &values)
{
    QStringList texts;
    for (const double value : values)
        texts << QString::number(value);
    return texts.join(' ');
}

QString Sections(SectionModel &sections, int sectionType, int subIndex, int dataType)
{
    sections.ChangeSectionType(sectionType);
    sections.ChangeSubIndex(subIndex);
    sections.ChangeDataType(dataType);
    return Rows(sections).join(QStringLiteral(", "));
}

QString Statistics(DataFile &file, int dataType)
{
    SectionModel &sections = file.GetSectionModel();
    QStringList tables{Numbers(file.Overall().counts) + " / " + Numbers(file.Overall().sums),
                       "blocks: " + Sections(sections, 0, 0, dataType), "trials: " + Sections(sections, 1, 0, dataType)};
    for (const int type : {2, 3}) {
        const QStringList names = type == 2 ? sections.TrialVariableNames() : sections.CodeNames();
        for (int i = 0; i < names.size(); ++i)
            tables << names[i] + ": " + Sections(sections, type, i, dataType);
    }
    return tables.join(QStringLiteral("; "));
}

} // namespace TableContents
