#pragma once

#include "distributionplot.h"

#include <memory>

class HistogramBins;
class QwtInterval;

// One panel of the histogram: one condition's correct reaction times, the
// kept ones in the condition's colour and the removed ones in grey on top
// of them, with the criteria and the absolute bounds as vertical lines
// labelled with their values. HistogramGrid sets the panels side by side
// and titles their axes.
class HistogramPlot : public DistributionPlot
{
    Q_OBJECT

public:
    explicit HistogramPlot(QWidget *parent = nullptr);

    // Draws series `series` of `bins`; the axes are set by SetRanges.
    void Show(const std::shared_ptr<const HistogramBins> &bins, int series);
    // The scales that the panels share, so that they compare at a glance.
    void SetRanges(const QwtInterval &times, const QwtInterval &counts);

private:
    void AddHistogram(const std::shared_ptr<const HistogramBins> &bins, int series, bool kept, const QString &title);
    void AddLine(double time, const QString &label, Qt::PenStyle style, Qt::Alignment place);
};
