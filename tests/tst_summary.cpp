// The summary tab of the main window: the general summary of the file in
// focus, and the three drop-downs that choose what the section table shows.

#include "tablecontents.h"
#include "testenvironment.h"
#include "windowdriver.h"

#include <QApplication>
#include <QComboBox>
#include <QTest>

namespace {

// One trial per entry, "code time".
DataFileBuilder Trials(const QStringList &trials)
{
    DataFileBuilder builder;
    builder.ProductTitles();
    for (const QString &trial : trials)
        builder.Trial("B1", "T1", trial.section(' ', 0, 0), trial.section(' ', 1));
    return builder;
}

} // namespace

class TestSummary : public QObject
{
    Q_OBJECT

private slots:
    void init() { driver = std::make_unique<WindowDriver>(); }
    void cleanup() { driver.reset(); }

    void generalSummaryOfTheFileInFocus_data()
    {
        QTest::addColumn<QStringList>("trials");
        QTest::addColumn<QStringList>("summary");

        // The form leaves the percentage of all responses empty, and nothing writes it.
        QTest::newRow("each code") << QStringList({"C 300", "C 500", "E 400", "NR", "C 450", "E 615"})
                                   << QStringList({"6||377.50 msec", "3|50.00%|416.67 msec", "2|33.33%|507.50 msec",
                                                   "1|16.67%|0.00 msec"});
        QTest::newRow("self-corrected counts as correct")
            << QStringList({"C 300", "SC 600", "E 420"})
            << QStringList({"3||440.00 msec", "2|66.67%|450.00 msec", "1|33.33%|420.00 msec", "0|0.00%|0.00 msec"});
        QTest::newRow("no known code") << QStringList({"X 300", " 500"})
                                       << QStringList({"0||0.00 msec", "0|0.00%|0.00 msec", "0|0.00%|0.00 msec",
                                                       "0|0.00%|0.00 msec"});
    }

    void generalSummaryOfTheFileInFocus()
    {
        QFETCH(QStringList, trials);
        QFETCH(QStringList, summary);
        driver->Open(Trials(trials));
        QCOMPARE(driver->Summary(), summary);
    }

    void combinedFilesSumAndRemovalLeavesZeros()
    {
        driver->Open(Trials({"C 300", "E 500"}));
        driver->Open(Trials({"C 700", "NR"}));
        driver->ClickRows({0, 1});
        QCOMPARE(driver->Summary(), QStringList({"4||375.00 msec", "2|50.00%|500.00 msec", "1|25.00%|500.00 msec",
                                                 "1|25.00%|0.00 msec"}));
        driver->Click("minusButton");
        QCOMPARE(driver->Summary(), QStringList({"0|0|0", "0|0|0", "0|0|0", "0|0|0"}));
        driver->Open(Trials({"E 250"}));
        QCOMPARE(driver->Summary(), QStringList({"1|0|250.00 msec", "0|0.00%|0.00 msec", "1|100.00%|250.00 msec",
                                                 "0|0.00%|0.00 msec"}));
    }

    void subDropDownFollowsTheBasis_data()
    {
        QTest::addColumn<int>("basis");
        QTest::addColumn<QStringList>("entries");
        QTest::addColumn<QStringList>("sections");

        QTest::newRow("per block") << 0 << QStringList() << QStringList({"B1: 1 1 0 0"});
        QTest::newRow("per trial") << 1 << QStringList() << QStringList({"T1: 1 0 0 0", "T2: 0 1 0 0"});
        // A trial variable loses its "(Trial Variable)" line; a code column keeps its line break.
        QTest::newRow("per trial variable") << 2 << QStringList("Congruency")
                                            << QStringList({"congruent: 1 0 0 0", "incongruent: 0 1 0 0"});
        QTest::newRow("per code value") << 3 << QStringList({"Key", "Pressed Or\nReleased", "Stimulus\nSide"})
                                        << QStringList({"left: 1 0 0 0", "right: 0 1 0 0"});
    }

    // The drop-down shows for the last two bases; with no file nothing fills
    // it, and with one the last name chosen sets what the table shows.
    void subDropDownFollowsTheBasis()
    {
        QFETCH(int, basis);
        QFETCH(QStringList, entries);
        QFETCH(QStringList, sections);
        QComboBox *names = Combo("specificBasisDropDown");
        driver->ShowTab(1);
        Combo("basisDropDown")->setCurrentIndex(basis);
        QCOMPARE(names->isVisible(), !entries.isEmpty());
        QCOMPARE(names->count(), 0);

        driver->Open(DataFileBuilder()
                         .ProductTitles()
                         .Trial("B1", "T1", "C", "300", "congruent", "left")
                         .Trial("B1", "T2", "E", "350", "incongruent", "right"));
        QStringList shown;
        for (int i = 0; i < names->count(); ++i)
            shown.append(names->itemText(i));
        QCOMPARE(shown, entries);
        QCOMPARE(names->isVisible(), !entries.isEmpty());
        names->setCurrentIndex(names->count() - 1);
        QCOMPARE(Sections(), sections);
    }

    // Each file keeps its own section model; the one that takes the focus is
    // set to what the drop-downs show, and the list of names starts again.
    void newFocusTakesTheDropDownChoices()
    {
        driver->Open(Trials({"C 300", "E 500", "C 700"}));
        driver->Open(DataFileBuilder()
                         .ProductTitles()
                         .Trial("B1", "T1", "C", "300", "congruent", "up")
                         .Trial("B1", "T1", "C", "320", "congruent", "down"));
        driver->ShowTab(1);
        Combo("basisDropDown")->setCurrentIndex(3);
        Combo("specificBasisDropDown")->setCurrentIndex(2);
        Combo("filterDropDown")->setCurrentIndex(2);
        QCOMPARE(Sections(), QStringList({"up: 300.00 0.00 0.00 0.00", "down: 320.00 0.00 0.00 0.00"}));
        driver->ClickRows({0});
        QCOMPARE(Combo("specificBasisDropDown")->currentIndex(), 0);
        QCOMPARE(Sections(), QStringList({"z: 500.00 500.00 0.00 0.00"}));
    }

private:
    QComboBox *Combo(const QString &name) const { return driver->Find<QComboBox>(name); }
    QStringList Sections() const { return TableContents::Rows(*driver->Sections()->model()); }

    std::unique_ptr<WindowDriver> driver;
};

ZEPHLANE_TEST_MAIN(TestSummary)
#include "tst_summary.moc"
