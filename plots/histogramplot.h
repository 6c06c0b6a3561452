// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "distributionplot.h"

#include <QHash>

#include <memory>

class HistogramBins;
class QwtInterval;
class QwtPlotMarker;
class QwtScaleMap;

// One panel of the histogram: one condition's correct reaction times, the
// kept ones in the condition's colour and the removed ones in grey on top
// of them, with the criteria and the absolute bounds as vertical lines.
// A line is labelled with its name and value, or on a small panel with its
// value alone, where the label fits the canvas whole and clear of the other
// lines and their labels; every line's name and value also stand in the
// canvas's tooltip, so that none is lost where two lines stand close.
// HistogramGrid sets the panels side by side and titles their axes.
class HistogramPlot : public DistributionPlot
{
    Q_OBJECT

public:
    explicit HistogramPlot(QWidget *parent = nullptr);

    // Draws series `series` of `bins`; the axes are set by SetRanges.
    void Show(const std::shared_ptr<const HistogramBins> &bins, int series);
    // The scales that the panels share, so that they compare at a glance.
    void SetRanges(const QwtInterval &times, const QwtInterval &counts);

protected:
    void Clear() override;
    void drawItems(QPainter *painter, const QRectF &canvasRect, const QwtScaleMap maps[axisCnt]) const override;

private:
    void AddHistogram(const std::shared_ptr<const HistogramBins> &bins, int series, bool kept, const QString &title);
    void AddLine(double time, const QString &label, Qt::PenStyle style, Qt::Alignment place);

    // Where each line's label stands by choice; drawItems moves it to the
    // other side of the line where only that side has room.
    QHash<const QwtPlotMarker *, Qt::Alignment> ownPlaces;
};
