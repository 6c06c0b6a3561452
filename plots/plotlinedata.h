// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plotline.h"

#include <qwt_series_data.h>

// A PlotLine's five points as a curve's data.
class PlotLineData : public QwtSeriesData<QPointF>
{
public:
    explicit PlotLineData(const PlotLine &line);

    size_t size() const override;
    QPointF sample(size_t i) const override;
    QRectF boundingRect() const override;

private:
    PlotLine line;
};
