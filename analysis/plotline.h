// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QVector>

#include <array>

// One line of a picture drawn through five points per participant and
// averaged over participants: the vincentiles of a condition, its
// conditional accuracy, the deltas of two conditions. Each participant's
// points are added to running means as they come.
struct SummaryResult;

struct PlotLine
{
    static const int kPoints = 5;
    using Points = std::array<double, kPoints>;

    // Position in SummaryResult::conditions; -1 for a line of two.
    int condition = -1;
    QString name;
    // How many participants the means are over.
    int participants = 0;
    Points x{};
    Points y{};

    void Add(const Points &participantX, const Points &participantY);

    // Of lines indexed by condition, those that some participant entered,
    // each given its condition and named after it.
    static QVector<PlotLine> Entered(const QVector<PlotLine> &byCondition, const SummaryResult &result);
};
