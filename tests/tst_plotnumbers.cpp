// SPDX-License-Identifier: GPL-3.0-or-later
// The numbers behind the distribution plots, on data small enough to work
// out by hand: histogram bins and counts, vincentiles averaged over
// participants, the conditional accuracy function's bins with ties, and
// the deltas of two conditions.

#include "conditionalaccuracy.h"
#include "histogrambins.h"
#include "summarycomputation.h"
#include "summaryfiles.h"
#include "testenvironment.h"
#include "vincentiledeltas.h"
#include "vincentiles.h"

#include <QtTest>

#include <cmath>

namespace {

using Procedure = SummarySettings::Procedure;

const QStringList kByCongruency{QStringLiteral("Congruency")};
const ParticipantChoice kAll;

ParticipantChoice Only(int participant)
{
    ParticipantChoice choice;
    choice.participant = participant;
    return choice;
}

// Correct rows of one condition with these times.
QStringList Times(const QString &congruency, const QList<double> &times)
{
    QStringList rows;
    for (const double time : times)
        rows << QStringLiteral("B1,T1,C,%1,%2").arg(time).arg(congruency);
    return rows;
}

// n times from `first`, `step` apart.
QList<double> Spaced(double first, double step, int n)
{
    QList<double> times;
    for (int i = 0; i < n; ++i)
        times << first + i * step;
    return times;
}

QVector<int> Counts(std::initializer_list<int> counts)
{
    return QVector<int>(counts);
}

QString Line(const TextTable &table, int row)
{
    return table.rows.at(row).join('\t');
}

QVector<double> Xs(const PlotLine &line)
{
    return QVector<double>(line.x.begin(), line.x.end());
}

QVector<double> Ys(const PlotLine &line)
{
    return QVector<double>(line.y.begin(), line.y.end());
}

} // namespace

class TestPlotNumbers : public QObject
{
    Q_OBJECT

private slots:
    // 300 320 340 360 380 400 420 900, n = 8. Type 7 quartiles: h = 7 * 0.25
    // = 1.75 gives 320 + 0.75 * 20 = 335, h = 5.25 gives 400 + 0.25 * 20 =
    // 405; IQR 70, cube root of 8 is 2, width 2 * 70 / 2 = 70. Bins start at
    // multiples of 70: 300..340 in [280, 350), 360..400 in [350, 420), 420
    // exactly on a start in [420, 490), 900 in [840, 910): bins 4 to 12.
    // With min = 310 and max = 800, 300 and 900 are removed; the bins stay
    // where they were.
    void histogramBinsFollowFreedmanDiaconis()
    {
        SummaryFiles files;
        files.Participant("p1", Times("con", {300, 320, 340, 360, 380, 400, 420, 900}));
        const SummaryResult all = files.Run(SummaryFiles::Settings(kByCongruency));
        const HistogramBins untrimmed(all, Only(0));
        QCOMPARE(untrimmed.Width(), 70.0);
        QCOMPARE(untrimmed.BinCount(), 9);
        QCOMPARE(untrimmed.BinStart(0), 280.0);
        QCOMPARE(untrimmed.Series().size(), 1);
        QCOMPARE(untrimmed.Series()[0].kept, Counts({3, 3, 1, 0, 0, 0, 0, 0, 1}));
        QCOMPARE(untrimmed.Series()[0].removed, Counts({0, 0, 0, 0, 0, 0, 0, 0, 0}));
        QVERIFY(std::isnan(untrimmed.Series()[0].upperCriterion));

        const SummaryResult trimmed = files.Run(SummaryFiles::Settings(kByCongruency, Procedure::Absolute, "310", "800"));
        const HistogramBins bins(trimmed, Only(0));
        QCOMPARE(bins.Width(), 70.0);
        QCOMPARE(bins.Series()[0].kept, Counts({2, 3, 1, 0, 0, 0, 0, 0, 0}));
        QCOMPARE(bins.Series()[0].removed, Counts({1, 0, 0, 0, 0, 0, 0, 0, 1}));
        QCOMPARE(bins.Series()[0].lowerCriterion, 310.0);
        QCOMPARE(bins.Series()[0].upperCriterion, 800.0);
        // The absolute procedure's bounds are drawn as its criteria, not twice.
        QVERIFY(std::isnan(bins.LowerBound()));
        QVERIFY(std::isnan(bins.UpperBound()));

        const TextTable data = bins.Data();
        QCOMPARE(data.header.join('\t'),
                 QString("condition\tbin_start\tbin_end\tkept\tremoved\tlower_criterion\tupper_criterion"));
        QCOMPARE(data.rows.size(), 9);
        QCOMPARE(Line(data, 0), QString("con\t280.00\t350.00\t2\t1\t310.00\t800.00"));
        QCOMPARE(Line(data, 8), QString("con\t840.00\t910.00\t0\t1\t310.00\t800.00"));

        // The same times split over two conditions give the same width,
        // that of all times together.
        SummaryFiles split;
        split.Participant("p1", Times("con", {340, 360, 400, 900}) + Times("inc", {300, 320, 380, 420}));
        const HistogramBins both(split.Run(SummaryFiles::Settings(kByCongruency)), Only(0));
        QCOMPARE(both.Width(), 70.0);
        QCOMPARE(both.Series()[0].kept, Counts({1, 2, 0, 0, 0, 0, 0, 0, 1}));
        QCOMPARE(both.Series()[1].kept, Counts({2, 1, 1, 0, 0, 0, 0, 0, 0}));
    }

    void histogramWidthWithoutSpread_data()
    {
        QTest::addColumn<QList<double>>("times");
        QTest::addColumn<double>("asked");
        QTest::addColumn<double>("width");
        QTest::addColumn<double>("firstStart");
        QTest::addColumn<QVector<int>>("kept");
        // Quartiles 500 and 500: Sturges, range 200 over ceil(log2 5) + 1 =
        // 4 bins, width 50; bins 10 to 14.
        QTest::newRow("IQR of 0 takes Sturges") << QList<double>{500, 500, 500, 500, 700} << 0.0 << 50.0 << 500.0
                                                << Counts({4, 0, 0, 0, 1});
        QTest::newRow("equal times take 1 ms") << QList<double>{500, 500} << 0.0 << 1.0 << 500.0 << Counts({2});
        // 300..380 in [300, 400), 400 and 420 in [400, 500), 900 alone.
        QTest::newRow("a width asked for") << QList<double>{300, 320, 340, 360, 380, 400, 420, 900} << 100.0
                                           << 100.0 << 300.0 << Counts({5, 2, 0, 0, 0, 0, 1});
        // A smallest start below 0 still lies on a multiple of the width.
        QTest::newRow("negative times") << QList<double>{-30, 10, 20} << 25.0 << 25.0 << -50.0
                                        << Counts({1, 0, 2});
    }

    void histogramWidthWithoutSpread()
    {
        QFETCH(QList<double>, times);
        QFETCH(double, asked);
        QFETCH(double, width);
        QFETCH(double, firstStart);
        QFETCH(QVector<int>, kept);
        SummaryFiles files;
        files.Participant("p1", Times("con", times));
        const HistogramBins bins(files.Run(SummaryFiles::Settings(kByCongruency)), kAll, asked);
        QCOMPARE(bins.Width(), width);
        QCOMPARE(bins.BinStart(0), firstStart);
        QCOMPARE(bins.Series()[0].kept, kept);
    }

    // A width far too small for the range is widened to fit kMaxBins.
    void histogramKeepsItsBinCountBounded()
    {
        SummaryFiles files;
        files.Participant("p1", Times("con", {0, 1000000}));
        const HistogramBins bins(files.Run(SummaryFiles::Settings(kByCongruency)), kAll, 1);
        QVERIFY(bins.BinCount() <= HistogramBins::kMaxBins);
        QVERIFY(bins.BinCount() > HistogramBins::kMaxBins / 2);
        QCOMPARE(bins.Series()[0].Total(), 2);
    }

    // p1 starts with "inc", p2 with "con"; the series come in the order of
    // the result's conditions (con first: p1's first row, then inc) for
    // either participant. Pooled, the counts add up and no participant's
    // criteria are drawn; alone, each participant's cell criteria are.
    // Width 100: p1 con 310, 320 and inc 450, 1500; p2 con 330, 2000.
    void histogramPoolsParticipantsPerCondition()
    {
        SummaryFiles files;
        files.Participant("p1", Times("con", {310, 320}) + Times("inc", {450, 1500}));
        files.Participant("p2", Times("con", {330, 2000}));
        const SummaryResult result = files.Run(SummaryFiles::Settings(kByCongruency, Procedure::Absolute, "", "1000"));
        QCOMPARE(result.ConditionLabel(0), QString("con"));

        const HistogramBins pooled(result, kAll, 100);
        QCOMPARE(pooled.BinStart(0), 300.0);
        QCOMPARE(pooled.BinCount(), 18);
        QCOMPARE(pooled.Series().size(), 2);
        QCOMPARE(pooled.Series()[0].name, QString("con"));
        QCOMPARE(pooled.Series()[0].kept[0], 3);
        QCOMPARE(pooled.Series()[0].removed[17], 1);
        QCOMPARE(pooled.Series()[1].name, QString("inc"));
        QCOMPARE(pooled.Series()[1].kept[1], 1);
        QCOMPARE(pooled.Series()[1].removed[12], 1);
        QCOMPARE(pooled.Series()[1].Total(), 2);
        QVERIFY(std::isnan(pooled.Series()[0].upperCriterion));

        const HistogramBins second(result, Only(1), 100);
        QCOMPARE(second.Series().size(), 1);
        QCOMPARE(second.Series()[0].name, QString("con"));
        QCOMPARE(second.Series()[0].upperCriterion, 1000.0);
        QCOMPARE(second.BinStart(0), 300.0);
        QCOMPARE(second.BinCount(), 18);
    }

    // Bounds given with another procedure are drawn as bounds beside that
    // procedure's criteria.
    void histogramShowsBoundsBesideAProcedure()
    {
        SummaryFiles files;
        files.Participant("p1", Times("con", Spaced(300, 10, 10)));
        const HistogramBins bins(files.Run(SummaryFiles::Settings(kByCongruency, Procedure::Nonrecursive, "150",
                                                                  "2000")), kAll);
        QCOMPARE(bins.LowerBound(), 150.0);
        QCOMPARE(bins.UpperBound(), 2000.0);
    }

    void nothingToShow()
    {
        const SummaryResult empty = SummaryComputation::Run({}, SummaryFiles::Settings(kByCongruency));
        QVERIFY(HistogramBins(empty, kAll).IsEmpty());
        QVERIFY(Vincentiles(empty, kAll).Lines().isEmpty());
        QVERIFY(ConditionalAccuracy(empty, kAll).Lines().isEmpty());
        QVERIFY(VincentileDeltas(empty, Vincentiles(empty, kAll), 0, 1).IsEmpty());

        SummaryFiles files;
        files.Participant("p1", QStringList{"B1,T1,E,300,con", "B1,T1,NR,,con"});
        const SummaryResult errorsOnly = files.Run(SummaryFiles::Settings(kByCongruency));
        const HistogramBins bins(errorsOnly, kAll);
        QVERIFY(bins.IsEmpty());
        QCOMPARE(bins.Series().size(), 1);
        QVERIFY(bins.Data().rows.isEmpty());
    }

    // Five evenly spaced times from a, d apart, have the type 7 quantiles
    // a + 4dp; eleven, a + 10dp.
    //   p1 con 300..700 by 100: 340 420 500 580 660
    //   p1 inc 400..800 by 100: 440 520 600 680 760
    //   p2 con 200..1200 by 100: 300 500 700 900 1100
    //   p2 inc 300..600 and 9000: 9000 removed (max 3000), 4 kept: out
    //   p3 con 100..400 and 5000: 4 kept: out
    //   p3 inc 500..900 by 100: 540 620 700 780 860
    // con over p1, p2: 320 460 600 740 880; inc over p1, p3: 490 570 650
    // 730 810.
    void vincentilesAverageParticipantsWithFiveKeptTimes()
    {
        SummaryFiles files;
        VincentileParticipants(files);
        const SummaryResult result = files.Run(SummaryFiles::Settings(kByCongruency, Procedure::Absolute, "", "3000"));
        const Vincentiles vincentiles(result, kAll);
        QCOMPARE(vincentiles.Lines().size(), 2);
        const PlotLine &con = vincentiles.Lines()[0];
        QCOMPARE(con.name, QString("con"));
        QCOMPARE(con.participants, 2);
        QCOMPARE(Xs(con), (QVector<double>{320, 460, 600, 740, 880}));
        QCOMPARE(Ys(con), (QVector<double>{0.1, 0.3, 0.5, 0.7, 0.9}));
        const PlotLine &inc = vincentiles.Lines()[1];
        QCOMPARE(inc.participants, 2);
        QCOMPARE(Xs(inc), (QVector<double>{490, 570, 650, 730, 810}));
        QVERIFY(!vincentiles.Of(1, 1));
        QCOMPARE(*vincentiles.Of(2, 1), (PlotLine::Points{540, 620, 700, 780, 860}));

        const TextTable data = vincentiles.Data();
        QCOMPARE(data.header.join('\t'), QString("condition\tparticipants\tprobability\trt"));
        QCOMPARE(data.rows.size(), 10);
        QCOMPARE(Line(data, 1), QString("con\t2\t0.3\t460.00"));
        QCOMPARE(Line(data, 9), QString("inc\t2\t0.9\t810.00"));

        const Vincentiles second(result, Only(1));
        QCOMPARE(second.Lines().size(), 1);
        QCOMPARE(second.Lines()[0].participants, 1);
        QCOMPARE(Xs(second.Lines()[0]), (QVector<double>{300, 500, 700, 900, 1100}));
    }

    // p1 and p3 as above, and p4: con 300..1100 by 200, 380 540 700 860
    // 1020; inc 500..1500 by 250, 600 800 1000 1200 1400. p2 and p3 lack a
    // condition. Per participant, b - a with a = con, b = inc:
    //   p1: deltas 100 100 100 100 100, means 390 470 550 630 710
    //   p4: deltas 220 260 300 340 380, means 490 670 850 1030 1210
    // Over both: deltas 160 180 200 220 240, means 440 570 700 830 960.
    void deltasAverageParticipantsInBothConditions()
    {
        SummaryFiles files;
        VincentileParticipants(files);
        files.Participant("p4", Times("con", Spaced(300, 200, 5)) + Times("inc", Spaced(500, 250, 5)));
        const SummaryResult result = files.Run(SummaryFiles::Settings(kByCongruency, Procedure::Absolute, "", "3000"));
        const Vincentiles vincentiles(result, kAll);
        const VincentileDeltas deltas(result, vincentiles, 0, 1);
        QCOMPARE(deltas.Line().participants, 2);
        QCOMPARE(deltas.Line().name, QString("inc \u2212 con"));
        QCOMPARE(Xs(deltas.Line()), (QVector<double>{440, 570, 700, 830, 960}));
        QCOMPARE(Ys(deltas.Line()), (QVector<double>{160, 180, 200, 220, 240}));
        QCOMPARE(Ys(VincentileDeltas(result, vincentiles, 1, 0).Line()),
                 (QVector<double>{-160, -180, -200, -220, -240}));

        const TextTable data = deltas.Data();
        QCOMPARE(data.header.join('\t'), QString("condition_a\tcondition_b\tparticipants\tprobability\trt_mean\tdelta"));
        QCOMPARE(Line(data, 0), QString("con\tinc\t2\t0.1\t440.00\t160.00"));

        QVERIFY(VincentileDeltas(result, vincentiles, 1, 1).IsEmpty());
        QVERIFY(VincentileDeltas(result, vincentiles, 0, 2).IsEmpty());
        const Vincentiles second(result, Only(1));
        QVERIFY(VincentileDeltas(result, second, 0, 1).IsEmpty());
        QVERIFY(VincentileDeltas(result, second, 0, 1).Data().rows.isEmpty());
    }

    // p1's seven responses ordered by time, equal times by row: row 2 (E
    // 300) before row 3 (C 300), row 4 (C 500) before row 7 (E 500). The
    // no-response row, the row above max and the error without a time take
    // no part; the sd procedure (k = 0.5) trims nothing here. With n = 7,
    // bin i ends at rank floor(7i / 5): ranks 1 | 2 | 3-4 | 5 | 6-7.
    //   bins: E300 | C300 | C400 E450 | C500 | E500 C600
    //   accuracy 0 1 0.5 1 0.5, mean time 300 300 425 500 550
    // p2's five rows, one per bin: C200 C300 E400 C500 E600. p3 has four
    // responses and stays out. Averaged over p1 and p2:
    //   accuracy 0.5 1 0.25 1 0.25, mean time 250 300 412.5 500 575
    void conditionalAccuracyBinsByRankWithTiesByRow()
    {
        SummaryFiles files;
        files.Participant("p1", QStringList{"B1,T1,C,400,con", "B1,T1,E,300,con", "B1,T1,C,300,con",
                                            "B1,T1,C,500,con", "B1,T1,E,450,con", "B1,T1,C,600,con",
                                            "B1,T1,E,500,con", "B1,T1,NR,350,con", "B1,T1,C,5000,con",
                                            "B1,T1,E,,con"});
        files.Participant("p2", QStringList{"B1,T1,C,200,con", "B1,T1,C,300,con", "B1,T1,E,400,con",
                                            "B1,T1,C,500,con", "B1,T1,E,600,con"});
        files.Participant("p3", QStringList{"B1,T1,C,200,con", "B1,T1,C,300,con", "B1,T1,E,400,con",
                                            "B1,T1,C,500,con"});
        const SummaryResult result =
            files.Run(SummaryFiles::Settings(kByCongruency, Procedure::Sd, "", "3000", "0.5"));

        const ConditionalAccuracy first(result, Only(0));
        QCOMPARE(Ys(first.Lines()[0]), (QVector<double>{0, 1, 0.5, 1, 0.5}));
        QCOMPARE(Xs(first.Lines()[0]), (QVector<double>{300, 300, 425, 500, 550}));

        const ConditionalAccuracy all(result, kAll);
        QCOMPARE(all.Lines().size(), 1);
        QCOMPARE(all.Lines()[0].participants, 2);
        QCOMPARE(Ys(all.Lines()[0]), (QVector<double>{0.5, 1, 0.25, 1, 0.25}));
        QCOMPARE(Xs(all.Lines()[0]), (QVector<double>{250, 300, 412.5, 500, 575}));

        const TextTable data = all.Data();
        QCOMPARE(data.header.join('\t'), QString("condition\tparticipants\tbin\trt\taccuracy"));
        QCOMPARE(Line(data, 0), QString("con\t2\t1\t250.00\t0.5000"));
        QCOMPARE(Line(data, 2), QString("con\t2\t3\t412.50\t0.2500"));

        QVERIFY(ConditionalAccuracy(result, Only(2)).Lines().isEmpty());
    }

    // n = 5 puts one response in each bin, n = 6 two in the last, n = 10
    // two in each; accuracy counts correct responses in each bin.
    void conditionalAccuracyBinSizes_data()
    {
        QTest::addColumn<int>("n");
        QTest::addColumn<QVector<double>>("accuracies");
        // Correct responses at the even ranks 2, 4, ...
        QTest::newRow("n = 5") << 5 << QVector<double>{0, 1, 0, 1, 0};
        QTest::newRow("n = 6") << 6 << QVector<double>{0, 1, 0, 1, 0.5};
        QTest::newRow("n = 10") << 10 << QVector<double>{0.5, 0.5, 0.5, 0.5, 0.5};
    }

    void conditionalAccuracyBinSizes()
    {
        QFETCH(int, n);
        QFETCH(QVector<double>, accuracies);
        // Given slowest first: the bins go by rank, not by the order given.
        QVector<TimedResponse> responses;
        for (int rank = n; rank >= 1; --rank)
            responses.append(TimedResponse{100.0 * rank, rank - 1, rank % 2 == 0});
        PlotLine::Points times;
        PlotLine::Points found;
        ConditionalAccuracy::Bin(responses, times, found);
        QCOMPARE(QVector<double>(found.begin(), found.end()), accuracies);
        QCOMPARE(times[0], n == 10 ? 150.0 : 100.0);
    }

private:
    static void VincentileParticipants(SummaryFiles &files)
    {
        files.Participant("p1", Times("con", Spaced(300, 100, 5)) + Times("inc", Spaced(400, 100, 5)));
        files.Participant("p2", Times("con", Spaced(200, 100, 11)) + Times("inc", {300, 400, 500, 600, 9000}));
        files.Participant("p3", Times("con", {100, 200, 300, 400, 5000}) + Times("inc", Spaced(500, 100, 5)));
    }
};

ZEPHLANE_TEST_MAIN(TestPlotNumbers)
#include "tst_plotnumbers.moc"
