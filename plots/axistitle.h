// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <qwt_text.h>

#include <QWidget>

// The title of one axis that a grid of plots shares: across the foot of the
// grid, or up its left side, in the font of a plot's own axis titles. It
// asks for room for its text on one line, so that it is never wrapped or
// cut however small the plots become. Owned by the grid.
class AxisTitle : public QWidget
{
    Q_OBJECT

public:
    // Horizontal reads left to right; vertical reads bottom to top, as a
    // y axis title does.
    explicit AxisTitle(Qt::Orientation orientation, QWidget *parent = nullptr);

    void SetText(const QwtText &text);
    QString Text() const;

    QSize sizeHint() const override;

    // Draws the title as it stands on screen into `rect` of `painter`, whose
    // transformation scales it to the device: for export.
    void Draw(QPainter *painter, const QRectF &rect) const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const Qt::Orientation orientation;
    QwtText text;
};
