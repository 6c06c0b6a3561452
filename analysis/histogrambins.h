// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "participantchoice.h"
#include "texttable.h"

#include <QString>
#include <QVector>

struct SummaryResult;

// One condition's bars: how many correct times in each bin the procedure
// kept and how many it removed, and, for one participant, the cell's
// criteria.
struct HistogramSeries
{
    // Position in SummaryResult::conditions, and its label.
    int condition = 0;
    QString name;
    QVector<int> kept;
    QVector<int> removed;
    // NaN where the procedure computed none, and for participants pooled.
    double lowerCriterion = qQNaN();
    double upperCriterion = qQNaN();

    int Kept() const;
    int Removed() const;
    int Total() const { return Kept() + Removed(); }
};

// The numbers behind the histogram of correct reaction times: the valid
// times of the correct rows of each condition, for one participant or all
// pooled, counted in bins of one width for every condition. Bin k holds
// the times from k * width up to, but not including, (k + 1) * width, so
// that bins start at multiples of the width.
class HistogramBins
{
public:
    // A width that would make more bins than this over the times shown is
    // widened to fit them in this many; a sub-millisecond width over a
    // minute-long outlier would otherwise make millions.
    static const int kMaxBins = 10000;

    // `width` above 0 is used as given (up to kMaxBins), anything else
    // takes DefaultWidth of every time shown, kept and removed, over all
    // conditions, so that the bins do not move when the procedure changes.
    HistogramBins(const SummaryResult &result, ParticipantChoice choice, double width = 0);

    double Width() const { return width; }
    int BinCount() const { return binCount; }
    double BinStart(int bin) const { return (firstBin + bin) * width; }
    // The conditions of the cells chosen, in the order of
    // SummaryResult::conditions.
    const QVector<HistogramSeries> &Series() const { return series; }
    // Whether no chosen cell has a correct row with a valid time.
    bool IsEmpty() const { return binCount == 0; }
    // The absolute bounds of the settings where they are given alongside
    // another procedure; the absolute procedure's bounds are its criteria.
    // NaN otherwise.
    double LowerBound() const { return lowerBound; }
    double UpperBound() const { return upperBound; }

    // One line per condition and bin, with the criteria.
    TextTable Data() const;

    // Freedman and Diaconis' width, 2 IQR / cube root of n, with the
    // quartiles of Quantile::Type7; where the IQR is 0, Sturges' range /
    // (ceil(log2 n) + 1); where all times are equal, 1 ms. `times` is in
    // any order and not empty.
    static double DefaultWidth(QVector<double> times);

private:
    void AddSeries(const SummaryResult &result, ParticipantChoice choice);
    void ChooseBins(double lowest, double highest, double asked);
    void Count(const SummaryResult &result, ParticipantChoice choice);
    qint64 BinOf(double time) const;
    void TakeBounds(const SummaryResult &result);

    double width = qQNaN();
    qint64 firstBin = 0;
    int binCount = 0;
    QVector<HistogramSeries> series;
    double lowerBound = qQNaN();
    double upperBound = qQNaN();
};
