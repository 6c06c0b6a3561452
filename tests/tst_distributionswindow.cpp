// SPDX-License-Identifier: GPL-3.0-or-later
// The "Distributions..." window as a user drives it: it opens from the
// Analysis menu, draws the files in view, follows hidden rows, the file
// selection and the settings it shares with the summary, and exports the
// plot and copies its numbers.

#include "analysissession.h"
#include "distributionplot.h"
#include "distributionswindow.h"
#include "histogramgrid.h"
#include "histogramplot.h"
#include "windowdriver.h"

#include <qwt_plot_marker.h>

namespace {

QString KeptTitle(const HistogramPlot &panel)
{
    for (const QwtPlotItem *item : panel.itemList(QwtPlotItem::Rtti_PlotHistogram)) {
        if (item->title().text().contains("kept"))
            return item->title().text();
    }
    return QString();
}

} // namespace

class TestDistributionsWindow : public QObject
{
    Q_OBJECT

    std::unique_ptr<WindowDriver> driver;

    AnalysisSession &Session() const { return *driver->Find<AnalysisSession>("analysisSession"); }
    DistributionsWindow *Window() const { return driver->Find<DistributionsWindow>("DistributionsWindow"); }
    template <typename T>
    T *Find(const QString &name) const
    {
        return Window()->findChild<T *>(name);
    }
    // The legend of each histogram panel's kept times, joined by ", ".
    QString Histogram() const
    {
        QStringList titles;
        for (const HistogramPlot *panel : Find<HistogramGrid>("histogramGrid")->Panels())
            titles << (panel->Message().isEmpty() ? KeptTitle(*panel) : panel->Message());
        return titles.join(", ");
    }
    void Choose(const QString &box, int index) { Find<QComboBox>(box)->setCurrentIndex(index); }
    void Type(const QString &edit, const QString &text)
    {
        QLineEdit *field = Find<QLineEdit>(edit);
        field->selectAll();
        QTest::keyClicks(field, text);
    }
    QString CopiedData()
    {
        QGuiApplication::clipboard()->clear();
        QTest::mouseClick(Find<QPushButton>("copyDataButton"), Qt::LeftButton);
        return QGuiApplication::clipboard()->text();
    }
    // p1.txt: congruent 300, 320, 340, 360, incongruent 400, 420, 440 and
    // an error; p2.txt: congruent 500, 520.
    void OpenTwo()
    {
        driver->AddFiles({driver->Write("p1.txt", WindowDriver::Trials("B1 T1 C 300 con, B1 T1 C 320 con, "
                                                                       "B1 T1 C 340 con, B1 T1 C 360 con, "
                                                                       "B1 T2 C 400 inc, B1 T2 C 420 inc, "
                                                                       "B1 T2 C 440 inc, B1 T2 E 380 inc")),
                          driver->Write("p2.txt", WindowDriver::Trials("B1 T1 C 500 con, B1 T1 C 520 con"))});
    }
    // p1.txt: six conditions c1 to c6 of five correct times and an error
    // each, enough for a line of every plot in each.
    void OpenSix()
    {
        QStringList trials;
        for (int condition = 1; condition <= 6; ++condition) {
            for (int trial = 0; trial < 6; ++trial)
                trials << QStringLiteral("B1 T1 %1 %2 c%3").arg(trial ? "C" : "E").arg(300 + 150 * trial + condition).arg(condition);
        }
        driver->AddFiles({driver->Write("p1.txt", WindowDriver::Trials(trials.join(", ")))});
    }
    void OpenWindow()
    {
        driver->Trigger("actionDistributions");
        QVERIFY(Window());
        QVERIFY(QTest::qWaitForWindowExposed(Window()));
    }
    void ByCongruency()
    {
        SummarySettings settings = Session().Settings();
        settings.conditionColumns = QStringList{"Congruency"};
        Session().SetSettings(settings);
    }

private slots:
    void init()
    {
        QSettings("Talvox", "Zephlane").remove("Analysis");
        driver = std::make_unique<WindowDriver>();
    }
    void cleanup() { driver.reset(); }

    void opensBelowTheSummaryInTheAnalysisMenu()
    {
        QStringList entries;
        for (QAction *action : driver->Find<QMenu>("menuAnalysis")->actions())
            entries << action->text();
        QCOMPARE(entries, QStringList({"Participant Summary...", "Distributions..."}));
        QVERIFY(!Session().IsActive());
        OpenWindow();
        QVERIFY(Session().IsActive());
        QVERIFY(Window()->isWindow());
        QCOMPARE(Window()->parentWidget(), &driver->Window());
        QVERIFY(!Window()->isModal());
        Window()->close();
        QVERIFY(!Session().IsActive());
        driver->Trigger("actionDistributions");
        QVERIFY(Session().IsActive());
        // Closing the main window closes it too.
        driver->Window().close();
        QVERIFY(!Window()->isVisible());
        QVERIFY(!Session().IsActive());
    }

    // A row hidden in the table leaves the histogram; shown again, it
    // returns.
    void hidingARowChangesTheHistogram()
    {
        OpenTwo();
        driver->ClickRows({0});
        OpenWindow();
        ByCongruency();
        QCOMPARE(Histogram(), QString("con (4 kept), inc (3 kept)"));
        WindowDriver::ClickCell(driver->Raw(), 1, 2);
        driver->Trigger("actionHide_Selected_Rows");
        QCOMPARE(Histogram(), QString("con (3 kept), inc (3 kept)"));
        driver->Trigger("actionShow_All_Rows");
        QCOMPARE(Histogram(), QString("con (4 kept), inc (3 kept)"));
    }

    // The participants to choose follow the files in view, and a choice
    // that is still there stays.
    void followsTheSelection()
    {
        OpenTwo();
        driver->ClickRows({0});
        OpenWindow();
        QStringList participants;
        for (int i = 0; i < Find<QComboBox>("participantBox")->count(); ++i)
            participants << Find<QComboBox>("participantBox")->itemText(i);
        QCOMPARE(participants, QStringList({"All participants", "p1.txt"}));
        Choose("participantBox", 1);
        QCOMPARE(Histogram(), QString("All trials (7 kept)"));
        driver->ClickRows({0, 1});
        QCOMPARE(Find<QComboBox>("participantBox")->count(), 3);
        QCOMPARE(Find<QComboBox>("participantBox")->currentText(), QString("p1.txt"));
        Choose("participantBox", 0);
        QCOMPARE(Histogram(), QString("All trials (9 kept)"));
        driver->ClickRows({1});
        QCOMPARE(Histogram(), QString("All trials (2 kept)"));
    }

    // A setting typed here reaches the session, and so the summary window;
    // one set there shows here. Unusable input is marked and kept out.
    void sharesTheSettingsWithTheSummary()
    {
        OpenTwo();
        driver->ClickRows({0});
        OpenWindow();
        Choose("participantBox", 1);
        Find<QListWidget>("conditionList")->findItems("Congruency", Qt::MatchExactly)[0]->setCheckState(Qt::Checked);
        QCOMPARE(Session().Settings().conditionColumns, QStringList{"Congruency"});
        Choose("procedureBox", int(SummarySettings::Procedure::Absolute));
        QCOMPARE(Find<QLabel>("problemLabel")->text(),
                 QString("Absolute bounds need a lower bound, an upper bound or both. "
                         "The plot is for the last settings that could be used."));
        QCOMPARE(Session().Settings().procedure, SummarySettings::Procedure::None);
        Type("maxEdit", "33x");
        QVERIFY(Find<QLabel>("problemLabel")->text().startsWith("The upper bound is not a number"));
        QVERIFY(Find<QLineEdit>("maxEdit")->property("invalid").toBool());
        Type("maxEdit", "330");
        QCOMPARE(Session().Settings().procedure, SummarySettings::Procedure::Absolute);
        QCOMPARE(Session().Settings().max.text, QString("330"));
        QVERIFY(Find<QLabel>("problemLabel")->text().isEmpty());
        QCOMPARE(Histogram(), QString("con (2 kept), inc (0 kept)"));
        const HistogramPlot *con = Find<HistogramGrid>("histogramGrid")->Panels()[0];
        QCOMPARE(static_cast<const QwtPlotMarker *>(con->itemList(QwtPlotItem::Rtti_PlotMarker)[0])->xValue(), 330.0);

        SummarySettings fromSummary = Session().Settings();
        TypedNumber::Read("310", &fromSummary.min);
        Session().SetSettings(fromSummary);
        QCOMPARE(Find<QLineEdit>("minEdit")->text(), QString("310"));
        QCOMPARE(Histogram(), QString("con (1 kept), inc (0 kept)"));

        Window()->close();
        QCOMPARE(QSettings().value("Analysis/min").toString(), QString("310"));
    }

    // With six conditions, whatever the plot, the window can be as narrow as
    // a 1400-pixel screen and as low as a 768-pixel one, below its title
    // bar, magnified 1.5 times: the plots scroll rather than the window
    // growing, and the controls too.
    void fitsASmallScreenWithSixConditions_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("plot");
        QTest::newRow("histogram") << int(DistributionsWindow::PlotKind::Histogram) << QString();
        QTest::newRow("vincentiles") << int(DistributionsWindow::PlotKind::Vincentiles) << "vincentilePlot";
        QTest::newRow("conditional accuracy") << int(DistributionsWindow::PlotKind::ConditionalAccuracy)
                                              << "accuracyPlot";
        QTest::newRow("delta") << int(DistributionsWindow::PlotKind::Delta) << "deltaPlot";
    }

    void fitsASmallScreenWithSixConditions()
    {
        QFETCH(int, kind);
        QFETCH(QString, plot);
        const QSize screen = QSize(1400, 768) / 1.5;
        const int titleBar = 32;
        OpenSix();
        driver->ClickRows({0});
        OpenWindow();
        ByCongruency();
        Choose("participantBox", 1);
        QCOMPARE(Histogram().count("kept"), 6);
        Choose("plotKindBox", kind);
        QVERIFY(plot.isEmpty() || Find<DistributionPlot>(plot)->Message().isEmpty());
        const QSize least = Window()->minimumSizeHint();
        QVERIFY2(least.width() <= screen.width() && least.height() <= screen.height() - titleBar,
                 qPrintable(QStringLiteral("%1 x %2").arg(least.width()).arg(least.height())));
    }

    // The numbers behind the plot in view, with their header.
    void copiesTheNumbersOfThePlotInView()
    {
        OpenTwo();
        driver->ClickRows({0});
        OpenWindow();
        ByCongruency();
        Find<QDoubleSpinBox>("binWidthBox")->setValue(100);
        QCOMPARE(CopiedData(), QString("condition\tbin_start\tbin_end\tkept\tremoved\tlower_criterion\tupper_criterion\n"
                                       "con\t300.00\t400.00\t4\t0\t\t\n"
                                       "con\t400.00\t500.00\t0\t0\t\t\n"
                                       "inc\t300.00\t400.00\t0\t0\t\t\n"
                                       "inc\t400.00\t500.00\t3\t0\t\t\n"));
        Choose("plotKindBox", int(DistributionsWindow::PlotKind::ConditionalAccuracy));
        QVERIFY(CopiedData().startsWith("condition\tparticipants\tbin\trt\taccuracy\n"));
        Choose("plotKindBox", int(DistributionsWindow::PlotKind::Vincentiles));
        QCOMPARE(CopiedData(), QString("condition\tparticipants\tprobability\trt\n"));
    }

    // Nothing in view, one condition for a delta plot, or the same
    // condition twice: the plot says so.
    void saysWhyThereIsNothingToDraw()
    {
        OpenWindow();
        QCOMPARE(Histogram(), QString("No participant selected"));
        OpenTwo();
        driver->ClickRows({0});
        Choose("plotKindBox", int(DistributionsWindow::PlotKind::Delta));
        const DistributionPlot *delta = Find<DistributionPlot>("deltaPlot");
        QVERIFY(delta->Message().startsWith("The delta plot needs two conditions"));
        ByCongruency();
        QVERIFY(Find<QComboBox>("conditionABox")->isEnabled());
        Choose("conditionBBox", 0);
        QCOMPARE(delta->Message(), QString("Choose two different conditions a and b"));
        Choose("conditionBBox", 1);
        QCOMPARE(delta->Message(), QString("No participant has 5 kept correct times in both conditions"));
    }

    // The file dialog's name, its suffix added from the filter where it has
    // none; the PNG has the plot's size at the resolution chosen. A file
    // that cannot be written is said.
    void exportsThePlotInView()
    {
        OpenTwo();
        driver->ClickRows({0});
        OpenWindow();
        Choose("plotKindBox", int(DistributionsWindow::PlotKind::Vincentiles));
        Find<QSpinBox>("resolutionBox")->setValue(192);
        const QWidget *plot = Find<QWidget>("vincentilePlot");
        driver->Catcher().QueueFileAnswer({driver->Path("figure")});
        QTest::mouseClick(Find<QPushButton>("exportButton"), Qt::LeftButton);
        const QImage image(driver->Path("figure.png"));
        QCOMPARE(image.size(), plot->size() * 192 / plot->logicalDpiX());

        // Where no file can be made, whoever runs the test.
        driver->Catcher().QueueFileAnswer({"/proc/figure.pdf"});
        QTest::mouseClick(Find<QPushButton>("exportButton"), Qt::LeftButton);
        QCOMPARE(driver->Catcher().Messages(),
                 QStringList{"Export Plot|The plot could not be written to /proc/figure.pdf."});
    }
};

ZEPHLANE_TEST_MAIN(TestDistributionsWindow)
#include "tst_distributionswindow.moc"
