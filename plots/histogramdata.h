// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "histogrambins.h"

#include <qwt_series_data.h>

#include <memory>

// One condition's bins of a HistogramBins as a histogram's data: the kept
// times, or kept and removed together, the whole column that the removed
// part is drawn on top of. Empty bins are left out.
class HistogramData : public QwtSeriesData<QwtIntervalSample>
{
public:
    enum class Part { Kept, All };

    HistogramData(std::shared_ptr<const HistogramBins> bins, int series, Part part);

    size_t size() const override;
    QwtIntervalSample sample(size_t i) const override;
    QRectF boundingRect() const override;

private:
    int Count(int bin) const;

    std::shared_ptr<const HistogramBins> bins;
    const HistogramSeries &series;
    Part part;
    QVector<int> filled;
};
