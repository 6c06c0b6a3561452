// SPDX-License-Identifier: GPL-3.0-or-later
#include "plotlinedata.h"

PlotLineData::PlotLineData(const PlotLine &line)
    : line(line)
{
}

size_t PlotLineData::size() const
{
    return PlotLine::kPoints;
}

QPointF PlotLineData::sample(size_t i) const
{
    return QPointF(line.x[i], line.y[i]);
}

QRectF PlotLineData::boundingRect() const
{
    if (d_boundingRect.width() < 0)
        d_boundingRect = qwtBoundingRect(*this);
    return d_boundingRect;
}
