// SPDX-License-Identifier: GPL-3.0-or-later
#include "flagdelegate.h"

#include <QIcon>
#include <QPainter>

FlagDelegate::FlagDelegate(QObject *parent)
    : QStyledItemDelegate(parent)
{
}

void FlagDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                         const QModelIndex &index) const
{
    const QRect rect = option.rect;
    const QIcon icon = index.data(Qt::DecorationRole).value<QIcon>();
    const QPixmap pixmap = icon.pixmap(rect.size() * 0.7, QIcon::Normal, QIcon::Off);
    if (option.state & QStyle::State_Selected)
        painter->fillRect(option.rect, QColor(QStringLiteral("#C7DDFC")));
    // The offsets use the pixmap as delivered, which can be smaller than asked.
    const int x = (rect.width() - pixmap.width()) / 2;
    const int y = (rect.height() - pixmap.height()) / 2;
    painter->drawPixmap(rect.topLeft() + QPoint(x, y), pixmap);
}
