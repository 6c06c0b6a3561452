// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QVector>
#include <QWidget>

class AxisTitle;
class HistogramBins;
class HistogramPlot;
class QGridLayout;

// The histogram as small multiples: a panel per condition, one under the
// other for up to three and in two columns for up to six, on shared scales
// with one title for each axis, so that six conditions stay as readable as
// one.
class HistogramGrid : public QWidget
{
    Q_OBJECT

public:
    explicit HistogramGrid(QWidget *parent = nullptr);

    void Show(const HistogramBins &bins);
    // Says on a single panel why there is nothing to draw.
    void ShowMessage(const QString &text);
    // The panels in view, a condition each in the order of the bins'
    // series.
    const QVector<HistogramPlot *> &Panels() const { return panels; }

private:
    void SetPanelCount(int count);

    QGridLayout *grid;
    AxisTitle *timeTitle;
    AxisTitle *countTitle;
    QVector<HistogramPlot *> panels;
};
