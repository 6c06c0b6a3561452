// SPDX-License-Identifier: GPL-3.0-or-later
#include "sizingdelegate.h"

#include <QIcon>
#include <tuple>

SizingDelegate::SizingDelegate(QObject *parent)
    : QStyledItemDelegate(parent)
{
}

// The style lays out the same option the same way every time, so a size
// kept for an equal option is the size it would give again.
QSize SizingDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    if (!sizing || index.data(Qt::SizeHintRole).isValid())
        return QStyledItemDelegate::sizeHint(option, index);
    QStyleOptionViewItem look = option;
    initStyleOption(&look, index);
    const Look key = LookOf(look);
    auto kept = sizes.constFind(key);
    if (kept == sizes.constEnd())
        kept = sizes.insert(key, QStyledItemDelegate::sizeHint(option, index));
    return *kept;
}

SizingDelegate::Sizing::Sizing(SizingDelegate &delegate)
    : delegate(delegate)
{
    delegate.sizing = true;
}

SizingDelegate::Sizing::~Sizing()
{
    delegate.sizing = false;
    delegate.sizes.clear();
}

SizingDelegate::Look SizingDelegate::LookOf(const QStyleOptionViewItem &option)
{
    return Look{option.text,
                option.font,
                option.icon.isNull() ? 0 : option.icon.cacheKey(),
                option.decorationSize,
                option.rect.size(),
                int(option.features),
                int(option.state),
                int(option.viewItemPosition),
                int(option.displayAlignment),
                int(option.decorationPosition),
                int(option.decorationAlignment),
                int(option.textElideMode),
                int(option.checkState),
                int(option.direction)};
}

bool SizingDelegate::Look::operator==(const Look &other) const
{
    const auto fields = [](const Look &look) {
        return std::tie(look.text, look.font, look.icon, look.decorationSize, look.bounds, look.features, look.state,
                        look.place, look.alignment, look.decorationPlace, look.decorationAlignment, look.elide,
                        look.checkState, look.direction);
    };
    return fields(*this) == fields(other);
}

uint qHash(const SizingDelegate::Look &look, uint seed)
{
    return qHash(look.text, seed) ^ qHash(look.icon, seed) ^ uint(look.bounds.width()) ^ uint(look.state << 8);
}
