// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFont>
#include <QHash>
#include <QSize>
#include <QString>
#include <QStyledItemDelegate>

// The delegate of the raw table's cells but the flag column. It paints as
// its base class does; while columns are sized to their contents it keeps
// the size of each cell, so that cells alike in everything that decides a
// size (many a column repeats its values) are laid out only once. Owned by
// the main window.
class SizingDelegate : public QStyledItemDelegate
{
public:
    explicit SizingDelegate(QObject *parent = nullptr);

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

    // Sizes are kept while a Sizing stands, and forgotten after it, as the
    // view's style or font may change between two sizings.
    class Sizing
    {
    public:
        explicit Sizing(SizingDelegate &delegate);
        ~Sizing();
        Sizing(const Sizing &) = delete;
        Sizing &operator=(const Sizing &) = delete;

    private:
        SizingDelegate &delegate;
    };

private:
    // Everything of a cell's style option that its size follows from.
    struct Look
    {
        QString text;
        QFont font;
        qint64 icon;
        QSize decorationSize;
        QSize bounds;
        int features;
        int state;
        int place;
        int alignment;
        int decorationPlace;
        int decorationAlignment;
        int elide;
        int checkState;
        int direction;

        bool operator==(const Look &other) const;
    };
    friend uint qHash(const Look &look, uint seed);

    static Look LookOf(const QStyleOptionViewItem &option);

    bool sizing = false;
    mutable QHash<Look, QSize> sizes;
};
