// SPDX-License-Identifier: GPL-3.0-or-later
#include "texttablemodel.h"

#include <QCollator>

#include <algorithm>
#include <numeric>

void TextTableModel::SetTable(const TextTable &table)
{
    const QString sortTitle = sortColumn >= 0 ? this->table.header.value(sortColumn) : QString();
    beginResetModel();
    this->table = table;
    sortColumn = sortTitle.isEmpty() ? -1 : table.header.indexOf(sortTitle);
    Order();
    endResetModel();
}

TextTable TextTableModel::ShownTable() const
{
    TextTable shown = table;
    for (int row = 0; row < shownRows.size(); ++row)
        shown.rows[row] = table.rows[shownRows[row]];
    return shown;
}

int TextTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : table.rows.size();
}

int TextTableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : table.header.size();
}

QVariant TextTableModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return QVariant();
    if (role == Qt::DisplayRole)
        return table.rows[shownRows[index.row()]].value(index.column());
    if (role == Qt::TextAlignmentRole && IsNumeric(index.column()))
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    return QVariant();
}

QVariant TextTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return QVariant();
    if (orientation == Qt::Horizontal)
        return table.header.value(section);
    return section + 1;
}

void TextTableModel::sort(int column, Qt::SortOrder order)
{
    emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    const QModelIndexList before = persistentIndexList();
    QVector<int> tableRows;
    for (const QModelIndex &index : before)
        tableRows.append(shownRows[index.row()]);
    sortColumn = column >= 0 && column < table.header.size() ? column : -1;
    sortOrder = order;
    Order();
    QVector<int> rowOf(shownRows.size());
    for (int row = 0; row < shownRows.size(); ++row)
        rowOf[shownRows[row]] = row;
    QModelIndexList after;
    for (int i = 0; i < before.size(); ++i)
        after.append(index(rowOf[tableRows[i]], before[i].column()));
    changePersistentIndexList(before, after);
    emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

// A stable sort, so that rows with equal fields keep the table's order.
// Numbers are read with a full stop, as the table writes them.
void TextTableModel::Order()
{
    shownRows.resize(table.rows.size());
    std::iota(shownRows.begin(), shownRows.end(), 0);
    if (sortColumn < 0)
        return;
    const int column = sortColumn;
    const bool descending = sortOrder == Qt::DescendingOrder;
    const auto field = [&](int row) -> const QString & { return table.rows[row][column]; };
    QCollator collator;
    collator.setNumericMode(true);
    QVector<double> numbers(table.rows.size());
    if (IsNumeric(column)) {
        for (int row = 0; row < numbers.size(); ++row)
            numbers[row] = field(row).toDouble();
    }
    const auto before = [&](int a, int b) {
        return IsNumeric(column) ? numbers[a] < numbers[b] : collator.compare(field(a), field(b)) < 0;
    };
    std::stable_sort(shownRows.begin(), shownRows.end(), [&](int a, int b) {
        if (field(a).isEmpty() || field(b).isEmpty())
            return !field(a).isEmpty() && field(b).isEmpty();
        return descending ? before(b, a) : before(a, b);
    });
}
