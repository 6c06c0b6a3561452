// SPDX-License-Identifier: GPL-3.0-or-later
#include "histogramdata.h"

HistogramData::HistogramData(std::shared_ptr<const HistogramBins> bins, int series, Part part)
    : bins(std::move(bins))
    , series(this->bins->Series().at(series))
    , part(part)
{
    for (int bin = 0; bin < this->bins->BinCount(); ++bin) {
        if (Count(bin) > 0)
            filled.append(bin);
    }
}

size_t HistogramData::size() const
{
    return size_t(filled.size());
}

QwtIntervalSample HistogramData::sample(size_t i) const
{
    const int bin = filled[int(i)];
    return QwtIntervalSample(Count(bin), bins->BinStart(bin), bins->BinStart(bin + 1));
}

QRectF HistogramData::boundingRect() const
{
    if (d_boundingRect.width() < 0)
        d_boundingRect = qwtBoundingRect(*this);
    return d_boundingRect;
}

int HistogramData::Count(int bin) const
{
    return series.kept[bin] + (part == Part::All ? series.removed[bin] : 0);
}
