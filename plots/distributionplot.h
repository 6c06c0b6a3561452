// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <qwt_interval.h>
#include <qwt_plot.h>

class QwtPlotTextLabel;

// What every distribution plot shares: a white canvas with a light grid,
// axes titled with their units and only as many ticks as their labels have
// room for, and a message said on the canvas where there is nothing to
// draw, in place of an empty frame.
class DistributionPlot : public QwtPlot
{
    Q_OBJECT

public:
    explicit DistributionPlot(QWidget *parent = nullptr);

    // Takes away what was drawn and says why there is nothing.
    void ShowMessage(const QString &text);
    // The message on the canvas; empty while data is drawn.
    QString Message() const;

    // A condition's name in a legend; "All trials" with no condition
    // column chosen, where a condition has no name.
    static QString LegendName(const QString &condition);

protected:
    // Takes away the data drawn and the message, keeping the grid.
    virtual void Clear();
    void SetAxisTitles(const QString &x, const QString &y);
    // Gives an axis the scale engine's rounded bounds around min to max,
    // ruled again whenever the plot's size changes.
    void SetAxisRange(int axis, double min, double max);

    void resizeEvent(QResizeEvent *event) override;

private:
    void ApplyAxisRange(int axis);
    // Lets each axis have as many major ticks as its labels fit side by
    // side along the canvas; returns whether an axis changed.
    bool FitTicks();
    int TicksThatFit(int axis) const;

    QwtPlotTextLabel *message;
    // What SetAxisRange was asked for, by axis.
    QwtInterval ranges[QwtPlot::axisCnt];
};
