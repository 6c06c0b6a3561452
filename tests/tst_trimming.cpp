// SPDX-License-Identifier: GPL-3.0-or-later
// The numbers of the participant summary: quantiles and deviations as R
// gives them, fixed-point rounding, the moving-criterion table, and each
// trimming procedure on cells small enough to work out by hand.

#include "exclusionrecord.h"
#include "fixedpoint.h"
#include "movingcriterion.h"
#include "quantile.h"
#include "samplemoments.h"
#include "summaryfiles.h"
#include "summarytable.h"
#include "testenvironment.h"

#include <QtTest>

#include <tuple>

namespace {

using Procedure = SummarySettings::Procedure;
using SdScope = SummarySettings::SdScope;

SummarySettings Settings(Procedure procedure, const QString &min = QString(), const QString &max = QString(),
                         const QString &sd = QString())
{
    return SummaryFiles::Settings({}, procedure, min, max, sd);
}

// A measure of the summary's line for `cell`, as written.
QString Measure(const SummaryResult &result, int cell, const QString &measure)
{
    const TextTable table = SummaryTable::Long(result);
    return table.rows[cell][table.header.indexOf(measure)];
}

// "reaction_time reason bound procedure" of each line of the exclusion
// record.
QStringList Removed(const SummaryResult &result)
{
    const TextTable record = ExclusionRecord::Of(result);
    const int from = record.header.indexOf("reaction_time");
    QStringList lines;
    for (const QStringList &row : record.rows)
        lines << row.mid(from).join(' ');
    return lines;
}

QString Criteria(const SummaryCell &cell)
{
    return FixedPoint::Text(cell.lowerCriterion, 2) + ".." + FixedPoint::Text(cell.upperCriterion, 2);
}

QList<double> Repeated(double time, int count)
{
    QList<double> times;
    for (int i = 0; i < count; ++i)
        times << time;
    return times;
}

} // namespace

Q_DECLARE_METATYPE(SummarySettings::SdScope)

class TestTrimming : public QObject
{
    Q_OBJECT

private slots:
    void quantilesFollowRType7_data()
    {
        QTest::addColumn<QVector<double>>("sorted");
        QTest::addColumn<double>("p");
        QTest::addColumn<double>("expected");
        // quantile(c(1, 2, 3, 4, 10), p, type = 7): h = 4p, between x[floor h]
        // and the next; for p = 0.9, h = 3.6 and 4 + 0.6 * (10 - 4) = 7.6.
        const QVector<double> five{1, 2, 3, 4, 10};
        QTest::newRow("minimum") << five << 0.0 << 1.0;
        QTest::newRow("p = 0.1") << five << 0.1 << 1.4;
        QTest::newRow("lower quartile") << five << 0.25 << 2.0;
        QTest::newRow("median of an odd n") << five << 0.5 << 3.0;
        QTest::newRow("p = 0.9") << five << 0.9 << 7.6;
        QTest::newRow("maximum") << five << 1.0 << 10.0;
        QTest::newRow("median of an even n") << QVector<double>{1, 3} << 0.5 << 2.0;
        QTest::newRow("one value") << QVector<double>{5} << 0.3 << 5.0;
    }

    void quantilesFollowRType7()
    {
        QFETCH(QVector<double>, sorted);
        QFETCH(double, p);
        QFETCH(double, expected);
        QCOMPARE(Quantile::Type7(sorted.constData(), sorted.size(), p), expected);
    }

    // sd(c(2, 4, 4, 4, 5, 5, 7, 9)) in R: squared deviations from 5 add up
    // to 32, over n - 1 = 7.
    void deviationDividesByNMinusOne()
    {
        const QVector<double> values{2, 4, 4, 4, 5, 5, 7, 9};
        const SampleMoments moments = SampleMoments::Of(values.begin(), values.end());
        QCOMPARE(moments.n, 8);
        QCOMPARE(moments.mean, 5.0);
        QCOMPARE(moments.sd, std::sqrt(32.0 / 7));
        QVERIFY(std::isnan(SampleMoments::Of(values.begin(), values.begin() + 1).sd));
    }

    // 1000000.01, .02 and .03: mean 1000000.02, deviations of 0.01, sd
    // 0.01. A sum of squares near 3e12 has no digits left for that.
    void timesNearAMillionKeepTheirDigits()
    {
        SummaryFiles files;
        files.Participant("p1", SummaryFiles::Correct({1000000.01, 1000000.02, 1000000.03}));
        const SummaryResult result = files.Run(SummarySettings());
        QCOMPARE(Measure(result, 0, "rt_mean"), QString("1000000.02"));
        QCOMPARE(Measure(result, 0, "rt_sd"), QString("0.01"));
    }

    void numbersRoundHalfAwayFromZero_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<int>("decimals");
        QTest::addColumn<QString>("text");
        QTest::newRow("a tie goes up, not to even") << 0.125 << 2 << "0.13";
        QTest::newRow("a negative tie goes down") << -0.125 << 2 << "-0.13";
        QTest::newRow("1.005 is stored below the tie") << 1.005 << 2 << "1.00";
        QTest::newRow("999.995 is stored above it, and carries") << 999.995 << 2 << "1000.00";
        QTest::newRow("accuracy that rounds to one") << 0.99995 << 4 << "1.0000";
        QTest::newRow("two thirds") << 2.0 / 3 << 4 << "0.6667";
        QTest::newRow("large") << 123456789.125 << 2 << "123456789.13";
        QTest::newRow("whole") << 512.0 << 2 << "512.00";
        QTest::newRow("a negative that rounds to zero has no sign") << -0.001 << 2 << "0.00";
        QTest::newRow("no value") << qQNaN() << 2 << "";
    }

    void numbersRoundHalfAwayFromZero()
    {
        QFETCH(double, value);
        QFETCH(int, decimals);
        QFETCH(QString, text);
        QCOMPARE(FixedPoint::Text(value, decimals), text);
    }

    void movingCriteriaFollowTheTable_data()
    {
        QTest::addColumn<int>("n");
        QTest::addColumn<double>("nonrecursive");
        QTest::addColumn<double>("modifiedRecursive");
        const QList<std::tuple<int, double, double>> table{
            {4, 1.458, 8.0},   {5, 1.68, 6.2},    {6, 1.841, 5.3},    {7, 1.961, 4.8},  {8, 2.05, 4.475},
            {9, 2.12, 4.25},   {10, 2.17, 4.11},  {11, 2.22, 4.0},    {12, 2.246, 3.92}, {13, 2.274, 3.85},
            {14, 2.31, 3.8},   {15, 2.326, 3.75}, {20, 2.391, 3.64},  {25, 2.41, 3.595}, {30, 2.4305, 3.55},
            {35, 2.45, 3.54},  {50, 2.48, 3.51},  {100, 2.5, 3.5}};
        for (const auto &[n, nr, mr] : table)
            QTest::addRow("n = %d", n) << n << nr << mr;
        // A fifth of the way from 15 to 20.
        QTest::newRow("n = 16, interpolated") << 16 << 2.339 << 3.728;
        QTest::newRow("n = 40, interpolated") << 40 << 2.46 << 3.53;
        QTest::newRow("n above 100") << 250 << 2.5 << 3.5;
    }

    void movingCriteriaFollowTheTable()
    {
        QFETCH(int, n);
        QFETCH(double, nonrecursive);
        QFETCH(double, modifiedRecursive);
        QCOMPARE(MovingCriterion::Nonrecursive(n), nonrecursive);
        QCOMPARE(MovingCriterion::ModifiedRecursive(n), modifiedRecursive);
    }

    void proceduresTrimCellsWorkedByHand_data()
    {
        QTest::addColumn<SummarySettings>("settings");
        QTest::addColumn<QList<double>>("times");
        // "reaction_time reason bound procedure" per removed row, in row order.
        QTest::addColumn<QStringList>("removed");
        // rt_n, rt_mean, rt_median and rt_sd of what is kept.
        QTest::addColumn<QString>("kept");
        // The cell's lower and upper criteria, as the plots draw them.
        QTest::addColumn<QString>("criteria");

        // 299 < 300 and 501 > 500 go; 300 and 500 lie on the bounds and stay.
        // Kept 300, 450, 500: mean 416.67, deviations -116.67, 33.33, 83.33,
        // sd sqrt(21666.67 / 2) = 104.08.
        QTest::newRow("absolute, times on the bounds kept")
            << Settings(Procedure::Absolute, "300", "500") << QList<double>{299, 300, 450, 500, 501}
            << QStringList{"299 too_fast 300.00 absolute; min=300; max=500", "501 too_slow 500.00 absolute; min=300; max=500"}
            << "3 416.67 450.00 104.08" << "300.00..500.00";
        QTest::newRow("absolute, lower bound only")
            << Settings(Procedure::Absolute, "300") << QList<double>{250, 300, 900}
            << QStringList{"250 too_fast 300.00 absolute; min=300"} << "2 600.00 600.00 424.26" << "300.00..";

        // Nine times 10 and one 100: mean 19, squared deviations 9 * 81 +
        // 81^2 = 7290, sd sqrt(7290 / 9) = 28.46; 19 + 2.5 * 28.46 = 90.15.
        QTest::newRow("sd, the default 2.5 deviations")
            << Settings(Procedure::Sd) << Repeated(10, 9) + QList<double>{100}
            << QStringList{"100 too_slow 90.15 sd"} << "9 10.00 10.00 0.00" << "-52.15..90.15";
        // 1, 1, 3, 5, 5: mean 3, squared deviations 4 + 4 + 0 + 4 + 4 = 16,
        // sd sqrt(16 / 4) = 2, so with k = 1 the criteria are exactly 1 and 5.
        QTest::newRow("sd, times exactly on the criteria kept")
            << Settings(Procedure::Sd, "", "", "1") << QList<double>{1, 1, 3, 5, 5} << QStringList()
            << "5 3.00 3.00 2.00" << "1.00..5.00";
        QTest::newRow("sd, three times left whole")
            << Settings(Procedure::Sd) << QList<double>{10, 10, 1000} << QStringList() << "3 340.00 10.00 571.58"
            << "..";
        // The bound takes the 1 first; the rest is the cell above.
        QTest::newRow("sd on what the bounds keep")
            << Settings(Procedure::Sd, "5") << QList<double>{1} + Repeated(10, 9) + QList<double>{100}
            << QStringList{"1 too_fast 5.00 sd; min=5", "100 too_slow 90.15 sd; min=5"} << "9 10.00 10.00 0.00"
            << "-52.15..90.15";

        // 100, 100, 100, 400: mean 175, squared deviations 3 * 75^2 + 225^2
        // = 67500, sd sqrt(67500 / 3) = 150; NR(4) = 1.458, 175 + 218.70.
        QTest::newRow("nonrecursive, n = 4")
            << Settings(Procedure::Nonrecursive) << QList<double>{100, 100, 100, 400}
            << QStringList{"400 too_slow 393.70 nonrecursive"} << "3 100.00 100.00 0.00" << "-43.70..393.70";
        QTest::newRow("nonrecursive, n = 3 left whole")
            << Settings(Procedure::Nonrecursive) << QList<double>{100, 100, 1000} << QStringList()
            << "3 400.00 100.00 519.62" << "..";
        // Fifteen times 100 and one 500: mean 125, squared deviations 15 *
        // 625 + 375^2 = 150000, sd sqrt(150000 / 15) = 100; NR(16) = 2.339.
        QTest::newRow("nonrecursive, interpolated n = 16")
            << Settings(Procedure::Nonrecursive) << Repeated(100, 15) + QList<double>{500}
            << QStringList{"500 too_slow 358.90 nonrecursive"} << "15 100.00 100.00 0.00" << "-108.90..358.90";
        // A hundred times 100 and one 200: mean 100.99, squared deviations
        // 100 * 0.99^2 + 99.01^2 = 9900.99, sd sqrt(9900.99 / 100) = 9.95;
        // k = 2.5 from n = 100 on: 100.99 + 24.88 = 125.87.
        QTest::newRow("nonrecursive, n above 100")
            << Settings(Procedure::Nonrecursive) << Repeated(100, 100) + QList<double>{200}
            << QStringList{"200 too_slow 125.87 nonrecursive"} << "100 100.00 100.00 0.00" << "76.11..125.87";

        // Round 1, n = 7, MR = 4.8: both 1000s set aside; the rest 100, 100,
        // 200, 300, 300 has mean 200 and sd 100, and 1000 > 680 goes with
        // its equal. Round 2, n = 5, MR = 6.2: both 300s set aside; 100, 100,
        // 200 has mean 133.33 and sd 57.74, criteria -224.62 and 491.29;
        // nothing goes, and the rounds end.
        QTest::newRow("modified-recursive, ties at both ends")
            << Settings(Procedure::ModifiedRecursive) << QList<double>{1000, 100, 300, 200, 100, 1000, 300}
            << QStringList{"1000 too_slow 680.00 modified-recursive", "1000 too_slow 680.00 modified-recursive"}
            << "5 200.00 200.00 100.00" << "-224.62..491.29";
        // Two 100s, fourteen 490s, fourteen 510s and 520. Round 1, n = 31,
        // MR(31) = 3.548: 520 set aside; the rest has mean 14200 / 30 =
        // 473.33 and sd 101.96, so both 100s < 111.59 go. Round 2, n = 29,
        // MR(29) = 3.559: 520 set aside; the 490s and 510s have mean 500 and
        // sd sqrt(28 * 100 / 27) = 10.18, criteria 463.76 and 536.24; nothing
        // goes.
        QTest::newRow("modified-recursive, equal times too fast")
            << Settings(Procedure::ModifiedRecursive)
            << QList<double>{520, 100} + Repeated(490, 14) + QList<double>{100} + Repeated(510, 14)
            << QStringList{"100 too_fast 111.59 modified-recursive", "100 too_fast 111.59 modified-recursive"}
            << "29 500.69 510.00 10.67" << "463.76..536.24";
        // Round 1, n = 4: 400 set aside, the rest has sd 0, 400 > 100 goes.
        // Three times are left, so the rounds end.
        QTest::newRow("modified-recursive, n = 4")
            << Settings(Procedure::ModifiedRecursive) << QList<double>{100, 400, 100, 100}
            << QStringList{"400 too_slow 100.00 modified-recursive"} << "3 100.00 100.00 0.00" << "100.00..100.00";
        QTest::newRow("modified-recursive, n = 3 left whole")
            << Settings(Procedure::ModifiedRecursive) << QList<double>{100, 100, 1000} << QStringList()
            << "3 400.00 100.00 519.62" << "..";
        // Setting the largest aside leaves nothing to measure.
        QTest::newRow("modified-recursive, all times equal")
            << Settings(Procedure::ModifiedRecursive) << Repeated(200, 5) << QStringList() << "5 200.00 200.00 0.00"
            << "..";
        QTest::newRow("modified-recursive after a bound")
            << Settings(Procedure::ModifiedRecursive, "", "900") << QList<double>{1000, 100, 300, 200, 100, 300}
            << QStringList{"1000 too_slow 900.00 modified-recursive; max=900"} << "5 200.00 200.00 100.00"
            << "-224.62..491.29";
        // The bounds take 50 and 3000; the rest is the cell with ties at
        // both ends. Each removed time names what removed it, from the
        // outside in: a bound or the round's criterion.
        QTest::newRow("modified-recursive between both bounds")
            << Settings(Procedure::ModifiedRecursive, "80", "2000")
            << QList<double>{50, 1000, 100, 300, 200, 100, 1000, 300, 3000}
            << QStringList{"50 too_fast 80.00 modified-recursive; min=80; max=2000",
                           "1000 too_slow 680.00 modified-recursive; min=80; max=2000",
                           "1000 too_slow 680.00 modified-recursive; min=80; max=2000",
                           "3000 too_slow 2000.00 modified-recursive; min=80; max=2000"}
            << "5 200.00 200.00 100.00" << "-224.62..491.29";
    }

    void proceduresTrimCellsWorkedByHand()
    {
        QFETCH(SummarySettings, settings);
        QFETCH(QList<double>, times);
        QFETCH(QStringList, removed);
        QFETCH(QString, kept);
        QFETCH(QString, criteria);
        SummaryFiles files;
        files.Participant("p1", SummaryFiles::Correct(times));
        const SummaryResult result = files.Run(settings);
        QCOMPARE(Removed(result), removed);
        QCOMPARE(QStringList({Measure(result, 0, "rt_n"), Measure(result, 0, "rt_mean"), Measure(result, 0, "rt_median"),
                              Measure(result, 0, "rt_sd")})
                     .join(' '),
                 kept);
        QCOMPARE(Criteria(result.cells[0]), criteria);
    }

    void sdScopesPoolTheirTimes_data()
    {
        QTest::addColumn<SdScope>("scope");
        // excluded_low/excluded_high of the lines p1 A, p1 B, p2 A, p2 B.
        QTest::addColumn<QString>("excluded");
        QTest::addColumn<QString>("firstCriteria");
        // p1 has five times 100 in block A and five 130 in block B, p2 five
        // 160 in A and five 140 in B; k = 0.9.
        // Each cell alone has sd 0: its criteria are its own time.
        QTest::newRow("cell") << SdScope::Cell << "0/0 0/0 0/0 0/0" << "100.00..100.00";
        // p1: mean 115, squared deviations 10 * 15^2 = 2250, sd sqrt(2250 / 9)
        // = 15.81, criteria 115 -+ 14.23 = 100.77 and 129.23, which all of
        // p1's times lie beyond. p2: mean 150, sd 10.54, 140.51 and 159.49.
        QTest::newRow("participant") << SdScope::Participant << "5/0 0/5 0/5 5/0" << "100.77..129.23";
        // A: 100 and 160, mean 130, sd 31.62, criteria 101.54 and 158.46.
        // B: 130 and 140, mean 135, sd 5.27, criteria 130.26 and 139.74.
        QTest::newRow("condition") << SdScope::Condition << "5/0 5/0 0/5 0/5" << "101.54..158.46";
        // All: mean 132.5, squared deviations 5 * (32.5^2 + 2.5^2 + 27.5^2 +
        // 7.5^2) = 9375, sd sqrt(9375 / 19) = 22.21, criteria 112.51 and
        // 152.49: the 100s and 160s go.
        QTest::newRow("all") << SdScope::All << "5/0 0/0 0/5 0/0" << "112.51..152.49";
    }

    void sdScopesPoolTheirTimes()
    {
        QFETCH(SdScope, scope);
        QFETCH(QString, excluded);
        QFETCH(QString, firstCriteria);
        SummaryFiles files;
        const auto rows = [](double a, double b) {
            QStringList lines;
            for (int i = 0; i < 5; ++i)
                lines << QString("A,T1,C,%1,con").arg(a) << QString("B,T1,C,%1,con").arg(b);
            return lines;
        };
        files.Participant("p1", rows(100, 130)).Participant("p2", rows(160, 140));
        SummarySettings settings = Settings(Procedure::Sd, "", "", "0.9");
        settings.scope = scope;
        settings.conditionColumns = QStringList{"Block Name"};
        const SummaryResult result = files.Run(settings);
        QStringList lines;
        for (int cell = 0; cell < result.cells.size(); ++cell)
            lines << Measure(result, cell, "excluded_low") + '/' + Measure(result, cell, "excluded_high");
        QCOMPARE(lines.join(' '), excluded);
        QCOMPARE(Criteria(result.cells[0]), firstCriteria);
        // Every row of a scope is cut at the scope's criteria.
        for (const ExcludedRow &row : result.exclusions) {
            const SummaryCell &cell = result.cells[result.cellOfRow[row.participant][row.fileRow]];
            QCOMPARE(row.bound, row.reason == ExclusionReason::TooFast ? cell.lowerCriterion : cell.upperCriterion);
        }
    }

    // The conditional accuracy function's rows: correct and incorrect ones
    // with a valid time inside the bounds, in row order; ranked by time and
    // equal times by row.
    void responsesComeInRowOrderAndRankByTimeThenRow()
    {
        SummaryFiles files;
        files.Participant("p1", {"B1,T1,C,300,con", "B1,T1,E,200,con", "B1,T1,C,200,con", "B1,T1,NR,250,con",
                                 "B1,T1,C,,con", "B1,T1,E,900,con", "B1,T1,SC,100,con"});
        const SummaryResult result = files.Run(Settings(Procedure::Absolute, "", "800"));
        QVector<TimedResponse> responses = result.ResponsesByCell().value(0);
        QStringList inRowOrder;
        for (const TimedResponse &response : responses)
            inRowOrder << QString("%1@%2%3").arg(response.time).arg(response.fileRow + 1).arg(response.correct ? 'C' : 'E');
        QCOMPARE(inRowOrder, (QStringList{"300@1C", "200@2E", "200@3C"}));
        std::sort(responses.begin(), responses.end(), TimedResponse::Before);
        QCOMPARE(responses[0].fileRow + 1, 2);
        QCOMPARE(responses[1].fileRow + 1, 3);
    }
};

ZEPHLANE_TEST_MAIN(TestTrimming)
#include "tst_trimming.moc"
