// SPDX-License-Identifier: GPL-3.0-or-later
// The distribution plots: what each draws for the numbers it is given
// (panels, lines and their legends, criteria, messages for nothing to
// draw), and each export read back.

#include "accuracyplot.h"
#include "axistitle.h"
#include "conditionalaccuracy.h"
#include "deltaplot.h"
#include "histogrambins.h"
#include "histogramgrid.h"
#include "histogramplot.h"
#include "plotexporter.h"
#include "summarycomputation.h"
#include "summaryfiles.h"
#include "testenvironment.h"
#include "vincentiledeltas.h"
#include "vincentileplot.h"
#include "vincentiles.h"

#include <qwt_plot_marker.h>
#include <qwt_scale_div.h>
#include <qwt_scale_draw.h>
#include <qwt_scale_map.h>

#include <QSvgRenderer>
#include <QTemporaryDir>
#include <QtTest>

namespace {

using Procedure = SummarySettings::Procedure;

const QStringList kByCongruency{QStringLiteral("Congruency")};

// Two participants, two conditions of six correct times each, and one
// error per condition; p2's inc cell has one time far out.
SummaryResult TwoConditions(const SummarySettings &settings)
{
    SummaryFiles files;
    files.Participant("p1", QStringList{"B1,T1,C,310,con", "B1,T1,C,350,con", "B1,T1,C,420,con",
                                        "B1,T1,C,380,con", "B1,T1,C,460,con", "B1,T1,C,500,con",
                                        "B1,T1,E,300,con", "B1,T1,C,450,inc", "B1,T1,C,480,inc",
                                        "B1,T1,C,520,inc", "B1,T1,C,610,inc", "B1,T1,C,560,inc",
                                        "B1,T1,C,700,inc", "B1,T1,E,400,inc"});
    files.Participant("p2", QStringList{"B1,T1,C,330,con", "B1,T1,C,360,con", "B1,T1,C,390,con",
                                        "B1,T1,C,440,con", "B1,T1,C,470,con", "B1,T1,C,530,con",
                                        "B1,T1,E,350,con", "B1,T1,C,470,inc", "B1,T1,C,500,inc",
                                        "B1,T1,C,540,inc", "B1,T1,C,590,inc", "B1,T1,C,650,inc",
                                        "B1,T1,C,2900,inc", "B1,T1,E,420,inc"});
    return files.Run(settings);
}

// One participant with two correct times, 300 ms and more and near
// 3000 ms, in each of `count` conditions "c1", "c2", ...: labels of four
// digits on the time axis.
SummaryResult Conditions(int count)
{
    QStringList rows;
    for (int i = 1; i <= count; ++i)
        rows << QStringLiteral("B1,T1,C,%1,c%2").arg(300 + 10 * i).arg(i)
             << QStringLiteral("B1,T1,C,%1,c%2").arg(2900 + 10 * i).arg(i);
    SummaryFiles files;
    files.Participant("p1", rows);
    return files.Run(SummaryFiles::Settings(kByCongruency));
}

// Neighbouring major tick labels of an axis that run into each other, as
// "a|b", joined by ", "; or how many labels there are where fewer than two.
QString CrowdedLabels(const QwtPlot &plot, int axis)
{
    const QwtScaleDraw *draw = plot.axisScaleDraw(axis);
    const QwtScaleMap map = plot.canvasMap(axis);
    const QFont font = plot.axisFont(axis);
    const QList<double> ticks = plot.axisScaleDiv(axis).ticks(QwtScaleDiv::MajorTick);
    if (ticks.size() < 2)
        return QStringLiteral("%1 labels").arg(ticks.size());
    QStringList crowded;
    for (int i = 1; i < ticks.size(); ++i) {
        const QSizeF before = draw->labelSize(font, ticks[i - 1]);
        const QSizeF after = draw->labelSize(font, ticks[i]);
        const double needed = axis == QwtPlot::xBottom ? (before.width() + after.width()) / 2
                                                       : (before.height() + after.height()) / 2;
        if (std::abs(map.transform(ticks[i]) - map.transform(ticks[i - 1])) < needed)
            crowded << draw->label(ticks[i - 1]).text() + "|" + draw->label(ticks[i]).text();
    }
    return crowded.join(", ");
}

QStringList Titles(const QwtPlot &plot, int rtti)
{
    QStringList titles;
    for (const QwtPlotItem *item : plot.itemList(rtti))
        titles << item->title().text();
    return titles;
}

QList<double> MarkerTimes(const QwtPlot &plot)
{
    QList<double> times;
    for (const QwtPlotItem *item : plot.itemList(QwtPlotItem::Rtti_PlotMarker))
        times << static_cast<const QwtPlotMarker *>(item)->xValue();
    std::sort(times.begin(), times.end());
    return times;
}

// How a panel's lines are labelled, a line each as "name value: label",
// where the label is what stands at the line, or "(none)"; and after them
// each label that is cut by the canvas's edge, runs into another label or
// is crossed by another line.
QStringList LineLabels(const HistogramPlot &panel)
{
    const QwtPlotItemList lines = panel.itemList(QwtPlotItem::Rtti_PlotMarker);
    const QwtScaleMap map = panel.canvasMap(QwtPlot::xBottom);
    const QRectF canvas = panel.canvas()->contentsRect();
    QStringList said;
    QVector<QRectF> rects;
    for (const QwtPlotItem *item : lines) {
        const auto *line = static_cast<const QwtPlotMarker *>(item);
        said << line->title().text() + ": " + (line->label().isEmpty() ? "(none)" : line->label().text());
        if (line->label().isEmpty())
            continue;
        const QSizeF along = line->label().textSize(panel.canvas()->font());
        const double x = map.transform(line->xValue());
        const Qt::Alignment place = line->labelAlignment();
        const double left = place & Qt::AlignLeft ? x - along.height() : x;
        const double top = place & Qt::AlignTop ? canvas.top() : canvas.bottom() - along.width();
        const QRectF rect(left, top, along.height(), along.width());
        if (!canvas.contains(rect))
            said << line->label().text() + " cut";
        for (const QRectF &other : rects) {
            if (other.intersects(rect))
                said << line->label().text() + " runs into another";
        }
        for (const QwtPlotItem *other : lines) {
            const double otherX = map.transform(static_cast<const QwtPlotMarker *>(other)->xValue());
            if (rect.left() + 1 < otherX && otherX < rect.right() - 1)
                said << line->label().text() + " crossed";
        }
        rects << rect;
    }
    return said;
}

// "lowest to highest" of `sizes` where they differ by more than a pixel.
QString Spread(const QVector<int> &sizes)
{
    const auto [lowest, highest] = std::minmax_element(sizes.begin(), sizes.end());
    return *highest - *lowest <= 1 ? QString() : QStringLiteral("%1 to %2").arg(*lowest).arg(*highest);
}

ParticipantChoice Only(int participant)
{
    ParticipantChoice choice;
    choice.participant = participant;
    return choice;
}

// As a scale factor enlarges the text beside the widgets' least sizes.
void ScaleFont(QWidget &widget, double scale)
{
    QFont font = widget.font();
    font.setPointSizeF(font.pointSizeF() * scale);
    widget.setFont(font);
}

} // namespace

class TestPlots : public QObject
{
    Q_OBJECT

private slots:
    // Each condition gets a panel of its own, named in its legend with the
    // kept count; removed times are drawn apart with their count; the
    // participant's criteria stand where the procedure put them.
    void histogramHasAPanelPerConditionWithItsCriteria()
    {
        const SummaryResult result = TwoConditions(SummaryFiles::Settings(kByCongruency, Procedure::Absolute,
                                                                          "320", "2000"));
        HistogramGrid grid;
        grid.resize(700, 500);
        grid.Show(HistogramBins(result, Only(1)));
        QCOMPARE(grid.Panels().size(), 2);
        const HistogramPlot &con = *grid.Panels()[0];
        const HistogramPlot &inc = *grid.Panels()[1];
        QCOMPARE(Titles(con, QwtPlotItem::Rtti_PlotHistogram), (QStringList{"0 removed", "con (6 kept)"}));
        QCOMPARE(Titles(inc, QwtPlotItem::Rtti_PlotHistogram),
                 (QStringList{"1 removed", "inc (5 kept)"}));
        QCOMPARE(MarkerTimes(inc), (QList<double>{320, 2000}));
        QVERIFY(con.Message().isEmpty());
        // Shared scales: a bound outside one panel's data is on every panel.
        QCOMPARE(con.axisScaleDiv(QwtPlot::xBottom), inc.axisScaleDiv(QwtPlot::xBottom));
        QVERIFY(con.axisScaleDiv(QwtPlot::xBottom).upperBound() >= 2900);

        // Bounds beside a procedure are drawn, far from the data as they
        // may be.
        grid.Show(HistogramBins(TwoConditions(SummaryFiles::Settings(kByCongruency, Procedure::Nonrecursive, "100",
                                                                     "5000")),
                                ParticipantChoice()));
        const QwtScaleDiv &times = grid.Panels()[0]->axisScaleDiv(QwtPlot::xBottom);
        QVERIFY(times.lowerBound() <= 100 && times.upperBound() >= 5000);
        QCOMPARE(MarkerTimes(*grid.Panels()[0]), (QList<double>{100, 5000}));
    }

    // Up to three conditions stand one under the other, up to six in two
    // columns. At the grid's least size and with room to spare, and in a
    // larger font, each axis has one title for all the panels, on one line
    // and whole, every panel's canvas has the same size, as shared scales
    // ask, and the labels along each axis stand apart: a short axis has
    // fewer ticks.
    void histogramPanelsStayReadableUpToSixConditions_data()
    {
        QTest::addColumn<int>("conditions");
        QTest::addColumn<int>("columns");
        QTest::addColumn<double>("fontScale");
        QTest::newRow("one") << 1 << 1 << 1.0;
        QTest::newRow("two") << 2 << 1 << 1.0;
        QTest::newRow("three") << 3 << 1 << 1.0;
        QTest::newRow("four") << 4 << 2 << 1.0;
        QTest::newRow("six") << 6 << 2 << 1.0;
        QTest::newRow("six, larger font") << 6 << 2 << 1.5;
        QTest::newRow("seven") << 7 << 3 << 1.0;
    }

    void histogramPanelsStayReadableUpToSixConditions()
    {
        QFETCH(int, conditions);
        QFETCH(int, columns);
        QFETCH(double, fontScale);
        HistogramGrid grid;
        ScaleFont(grid, fontScale);
        grid.Show(HistogramBins(Conditions(conditions), ParticipantChoice()));
        grid.resize(grid.minimumSizeHint());
        grid.show();
        QVERIFY(QTest::qWaitForWindowExposed(&grid));
        CheckPanels(grid, conditions, columns);
        if (QTest::currentTestFailed())
            return;
        // Room beyond the panels' least is shared evenly.
        grid.resize(grid.minimumSizeHint() + QSize(300, 400));
        QApplication::processEvents();
        CheckPanels(grid, conditions, columns);
    }

    // Every line's name and value can be read on every panel, large or
    // small: at the line where its label fits whole, clear of the other
    // lines and labels, and in the canvas's tooltip in any case. Here p1's
    // lower criterion in con, near 273 ms, stands close to the lower bound.
    void histogramLinesCanBeReadAtEverySize_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<double>("fontScale");
        QTest::newRow("small") << QSize(0, 0) << 1.0;
        QTest::newRow("small, larger font") << QSize(0, 0) << 1.5;
        QTest::newRow("large") << QSize(1000, 900) << 1.0;
    }

    void histogramLinesCanBeReadAtEverySize()
    {
        QFETCH(QSize, size);
        QFETCH(double, fontScale);
        HistogramGrid grid;
        ScaleFont(grid, fontScale);
        grid.Show(HistogramBins(TwoConditions(SummaryFiles::Settings(kByCongruency, Procedure::Nonrecursive, "265",
                                                                     "3000")),
                                Only(0)));
        grid.resize(size.expandedTo(grid.minimumSizeHint()));
        grid.show();
        QVERIFY(QTest::qWaitForWindowExposed(&grid));
        grid.grab();
        const HistogramPlot &con = *grid.Panels()[0];
        const QStringList labels = LineLabels(con);
        QVERIFY2(labels.filter(QRegularExpression(" (cut|runs into another|crossed)$")).isEmpty(),
                 qPrintable(labels.join("; ")));
        QStringList names;
        for (const QString &label : labels)
            names << label.section(": ", 0, 0);
        QCOMPARE(names, (QStringList{"criterion 273 ms", "criterion 533 ms", "min 265 ms", "max 3000 ms"}));
        QCOMPARE(con.canvas()->toolTip(), names.join('\n'));
        // With room, every line is labelled with its name, the close pair
        // on either side of the two lines.
        if (!size.isEmpty())
            QCOMPARE(labels.filter(QRegularExpression("^(.*): \\1$")), labels);
        // A message in place of the lines takes their values away.
        grid.ShowMessage("No participant selected");
        QCOMPARE(con.canvas()->toolTip(), QString());
    }

    void linesAreNamedWithTheirParticipants()
    {
        const SummaryResult result = TwoConditions(SummaryFiles::Settings(kByCongruency));
        const Vincentiles vincentiles(result, ParticipantChoice());
        VincentilePlot plot;
        plot.Show(vincentiles);
        QCOMPARE(Titles(plot, QwtPlotItem::Rtti_PlotCurve), (QStringList{"con (n = 2)", "inc (n = 2)"}));
        QVERIFY(plot.Message().isEmpty());

        AccuracyPlot accuracy;
        accuracy.Show(ConditionalAccuracy(result, Only(0)));
        QCOMPARE(Titles(accuracy, QwtPlotItem::Rtti_PlotCurve), (QStringList{"con (n = 1)", "inc (n = 1)"}));

        DeltaPlot delta;
        delta.Show(VincentileDeltas(result, vincentiles, 0, 1));
        QCOMPARE(Titles(delta, QwtPlotItem::Rtti_PlotCurve), QStringList{"inc \u2212 con (n = 2)"});
        // The line of no difference is on the axis.
        QVERIFY(delta.axisScaleDiv(QwtPlot::yLeft).lowerBound() <= 0);

        // With no condition column the one line is all trials.
        VincentilePlot pooled;
        pooled.Show(Vincentiles(TwoConditions(SummarySettings()), ParticipantChoice()));
        QCOMPARE(Titles(pooled, QwtPlotItem::Rtti_PlotCurve), QStringList{"All trials (n = 2)"});
    }

    // Nothing to draw is said on the plot, and a later draw takes the
    // message away.
    void emptyPlotsSaySo()
    {
        SummaryFiles files;
        files.Participant("p1", QStringList{"B1,T1,E,300,con", "B1,T1,C,310,con"});
        const SummaryResult sparse = files.Run(SummaryFiles::Settings(kByCongruency));
        const SummaryResult none = SummaryComputation::Run({}, SummaryFiles::Settings(kByCongruency));

        HistogramGrid grid;
        grid.Show(HistogramBins(none, ParticipantChoice()));
        QCOMPARE(grid.Panels().size(), 1);
        QCOMPARE(grid.Panels()[0]->Message(), QString("No correct trials"));
        QVERIFY(grid.Panels()[0]->itemList(QwtPlotItem::Rtti_PlotHistogram).isEmpty());
        grid.Show(HistogramBins(sparse, ParticipantChoice()));
        QVERIFY(grid.Panels()[0]->Message().isEmpty());

        VincentilePlot vincentiles;
        vincentiles.Show(Vincentiles(sparse, ParticipantChoice()));
        QCOMPARE(vincentiles.Message(), QString("No participant has 5 kept correct times in a condition"));
        QVERIFY(vincentiles.itemList(QwtPlotItem::Rtti_PlotCurve).isEmpty());

        AccuracyPlot accuracy;
        accuracy.Show(ConditionalAccuracy(sparse, ParticipantChoice()));
        QVERIFY(accuracy.Message().startsWith("No participant has 5 correct or incorrect trials"));

        const SummaryResult two = TwoConditions(SummaryFiles::Settings(kByCongruency));
        DeltaPlot delta;
        delta.Show(VincentileDeltas(two, Vincentiles(two, ParticipantChoice()), 0, 1));
        QVERIFY(delta.Message().isEmpty());
        delta.ShowMessage("No participant selected");
        QCOMPARE(delta.Message(), QString("No participant selected"));
        QVERIFY(delta.itemList(QwtPlotItem::Rtti_PlotCurve).isEmpty());
        delta.Show(VincentileDeltas(sparse, Vincentiles(sparse, ParticipantChoice()), 0, 1));
        QCOMPARE(delta.Message(), QString("No participant has 5 kept correct times in both conditions"));
    }

    void exportsReadBack_data()
    {
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<bool>("histogram");
        QTest::newRow("histogram png") << "png" << true;
        QTest::newRow("histogram svg") << "svg" << true;
        QTest::newRow("histogram pdf") << "pdf" << true;
        QTest::newRow("vincentiles png") << "png" << false;
        QTest::newRow("vincentiles svg") << "svg" << false;
        QTest::newRow("vincentiles pdf") << "pdf" << false;
    }

    // 100 x 60 mm at 300 dpi: 1181 x 709 pixels.
    void exportsReadBack()
    {
        QFETCH(QString, suffix);
        QFETCH(bool, histogram);
        const SummaryResult result = TwoConditions(SummaryFiles::Settings(kByCongruency));
        HistogramGrid grid;
        VincentilePlot plot;
        grid.Show(HistogramBins(result, ParticipantChoice()));
        plot.Show(Vincentiles(result, ParticipantChoice()));
        QWidget *figure = histogram ? static_cast<QWidget *>(&grid) : &plot;
        figure->resize(600, 400);
        figure->show();
        QVERIFY(QTest::qWaitForWindowExposed(figure));

        QTemporaryDir dir;
        const QString path = dir.filePath("figure." + suffix);
        QVERIFY(PlotExporter::Write(figure, path, QSizeF(100, 60)));
        if (suffix == "png") {
            const QImage image(path);
            QCOMPARE(image.size(), QSize(1181, 709));
            QCOMPARE(image.dotsPerMeterX(), qRound(300 / 0.0254));
            QCOMPARE(image.pixelColor(0, 0), QColor(Qt::white));
            // The first condition's colour is drawn somewhere.
            QVERIFY(ContainsColor(image, QColor(0xE6, 0x9F, 0x00)));
        } else if (suffix == "svg") {
            QSvgRenderer svg(path);
            QVERIFY(svg.isValid());
            QCOMPARE(svg.viewBox().size(), QSize(1181, 709));
            // The panels' shared axis titles are drawn with them, once each.
            QFile text(path);
            QVERIFY(text.open(QIODevice::ReadOnly));
            const QByteArray drawn = text.readAll();
            QCOMPARE(drawn.count("Reaction time (ms)"), 1);
            QCOMPARE(drawn.count("Correct trials (count)"), histogram ? 1 : 0);
        } else {
            QFile pdf(path);
            QVERIFY(pdf.open(QIODevice::ReadOnly));
            QVERIFY(pdf.size() > 1000);
            QCOMPARE(pdf.read(4), QByteArray("%PDF"));
        }
    }

    void exportAtAnotherResolution()
    {
        VincentilePlot plot;
        plot.resize(400, 300);
        QTemporaryDir dir;
        QVERIFY(PlotExporter::Write(&plot, dir.filePath("low.png"), QSizeF(254, 127), 72));
        QCOMPARE(QImage(dir.filePath("low.png")).size(), QSize(720, 360));
    }

    void exportRefusesWhatItCannotWrite()
    {
        VincentilePlot plot;
        plot.resize(400, 300);
        QTemporaryDir dir;
        QVERIFY(!PlotExporter::Write(&plot, dir.filePath("figure.bmp"), QSizeF(100, 60)));
        QVERIFY(!QFile::exists(dir.filePath("figure.bmp")));
        QVERIFY(!PlotExporter::Write(&plot, dir.filePath("missing/figure.png"), QSizeF(100, 60)));
    }

private:
    // One canvas size for all the panels, as shared scales ask, the panels
    // in `columns` columns, each axis titled once and whole, and the labels
    // along each axis apart.
    static void CheckPanels(const HistogramGrid &grid, int conditions, int columns)
    {
        QSet<int> lefts;
        QVector<int> widths;
        QVector<int> heights;
        QString panelTitles;
        QStringList crowded;
        for (const HistogramPlot *panel : grid.Panels()) {
            for (const int axis : {QwtPlot::xBottom, QwtPlot::yLeft}) {
                if (!CrowdedLabels(*panel, axis).isEmpty())
                    crowded << CrowdedLabels(*panel, axis);
            }
            lefts.insert(panel->x());
            widths << panel->canvas()->width();
            heights << panel->canvas()->height();
            panelTitles += panel->axisTitle(QwtPlot::xBottom).text() + panel->axisTitle(QwtPlot::yLeft).text();
        }
        QCOMPARE(grid.Panels().size(), conditions);
        QCOMPARE(lefts.size(), columns);
        // Canvases may differ by the pixel the layout has left over.
        QCOMPARE(Spread(widths), QString());
        QCOMPARE(Spread(heights), QString());
        QCOMPARE(panelTitles, QString());
        QCOMPARE(crowded.join("; "), QString());
        QCOMPARE(Titles(*grid.Panels().last(), QwtPlotItem::Rtti_PlotHistogram),
                 (QStringList{"0 removed", QStringLiteral("c%1 (2 kept)").arg(conditions)}));
        const QFontMetrics metrics(grid.Panels()[0]->axisTitle(QwtPlot::yLeft).font());
        QStringList shared;
        for (const AxisTitle *title : grid.findChildren<AxisTitle *>()) {
            const QSize room = title->size();
            const bool whole = std::max(room.width(), room.height()) >= metrics.horizontalAdvance(title->Text())
                               && std::min(room.width(), room.height()) >= metrics.height();
            shared << title->Text() + (whole ? "" : " (cut)");
        }
        QCOMPARE(shared, (QStringList{"Reaction time (ms)", "Correct trials (count)"}));
    }

    static bool ContainsColor(const QImage &image, const QColor &color)
    {
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixelColor(x, y) == color)
                    return true;
            }
        }
        return false;
    }
};

ZEPHLANE_TEST_MAIN(TestPlots)
#include "tst_plots.moc"
