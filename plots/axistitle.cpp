// SPDX-License-Identifier: GPL-3.0-or-later
#include "axistitle.h"

#include <QPainter>

#include <cmath>

namespace {

// Room between the title and the plots, as a plot leaves beside its own
// axis titles.
const int kSpacing = 4;

} // namespace

AxisTitle::AxisTitle(Qt::Orientation orientation, QWidget *parent)
    : QWidget(parent)
    , orientation(orientation)
{
    if (orientation == Qt::Horizontal)
        setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
    else
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Minimum);
}

void AxisTitle::SetText(const QwtText &text)
{
    this->text = text;
    this->text.setRenderFlags(Qt::AlignCenter);
    updateGeometry();
    update();
}

QString AxisTitle::Text() const
{
    return text.text();
}

QSize AxisTitle::sizeHint() const
{
    const QSizeF line = text.textSize(font());
    const QSize along(int(std::ceil(line.width())), int(std::ceil(line.height())) + kSpacing);
    return orientation == Qt::Horizontal ? along : along.transposed();
}

// A vertical title is drawn on its side: the rectangle turned so that its
// height becomes the length of the line.
void AxisTitle::Draw(QPainter *painter, const QRectF &rect) const
{
    painter->save();
    painter->setPen(palette().color(QPalette::Text));
    if (orientation == Qt::Horizontal) {
        text.draw(painter, rect.adjusted(0, kSpacing, 0, 0));
    } else {
        painter->translate(rect.bottomLeft());
        painter->rotate(-90);
        text.draw(painter, QRectF(0, 0, rect.height(), rect.width() - kSpacing));
    }
    painter->restore();
}

void AxisTitle::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    Draw(&painter, rect());
}
