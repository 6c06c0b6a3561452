// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStyledItemDelegate>

// Paints the "Flag" column of the raw table: the flag icon of a flagged row,
// centred, over the selection colour when the row is selected, and nothing
// else (no text, no row colour, no focus frame).
class FlagDelegate : public QStyledItemDelegate
{
public:
    explicit FlagDelegate(QObject *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
};
