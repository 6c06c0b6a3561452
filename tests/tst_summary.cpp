// The summary tab of the main window: the general summary of the file in
// focus, and the three drop-downs that choose what the section table shows.

#include "testenvironment.h"
#include "windowdriver.h"

#include <QApplication>
#include <QComboBox>
#include <QPushButton>
#include <QTableView>
#include <QTableWidget>
#include <QTest>

class TestSummary : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void generalSummaryOfTheFileInFocus();
    void selfCorrectedRowsCountAsCorrect();
    void rowsWithoutAKnownCodeGiveZeros();
    void aCombinedSelectionSumsItsFiles();
    void resetLeavesZerosEvenInTheUnwrittenCell();
    void subDropDownFollowsTheBasis_data();
    void subDropDownFollowsTheBasis();
    void subDropDownWithNoFileOnlyShows();
    void newFocusTakesTheDropDownChoices();

private:
    QStringList Summary() const;
    QStringList SubEntries() const;
    QComboBox *Combo(const QString &name) const { return driver->Find<QComboBox>(name); }
    const QAbstractItemModel *Sections() const { return driver->Find<QTableView>("sectionDataView")->model(); }
    QString Open(const QString &name, const DataFileBuilder &builder);

    std::unique_ptr<WindowDriver> driver;
};

void TestSummary::init()
{
    driver = std::make_unique<WindowDriver>();
}

void TestSummary::cleanup()
{
    driver.reset();
}

// The table row by row, cells joined by "|".
QStringList TestSummary::Summary() const
{
    const QTableWidget *table = driver->Find<QTableWidget>("generalTable");
    QStringList rows;
    for (int row = 0; row < table->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < table->columnCount(); ++column)
            cells.append(table->item(row, column)->text());
        rows.append(cells.join('|'));
    }
    return rows;
}

QStringList TestSummary::SubEntries() const
{
    QStringList entries;
    for (int i = 0; i < Combo("specificBasisDropDown")->count(); ++i)
        entries.append(Combo("specificBasisDropDown")->itemText(i));
    return entries;
}

QString TestSummary::Open(const QString &name, const DataFileBuilder &builder)
{
    const QString path = driver->Write(name, builder);
    driver->AddFiles({path});
    return path;
}

void TestSummary::generalSummaryOfTheFileInFocus()
{
    const QTableWidget *table = driver->Find<QTableWidget>("generalTable");
    QCOMPARE(table->item(0, 1)->text(), QString());
    QCOMPARE(table->horizontalHeaderItem(2)->text(), QString("Average RT"));
    QCOMPARE(table->verticalHeaderItem(3)->text(), QString("No Responses:"));

    Open("stroop.txt", DataFileBuilder()
                           .ProductTitles()
                           .Trial("B1", "T1", "C", "300")
                           .Trial("B1", "T2", "C", "500")
                           .Trial("B1", "T3", "E", "400")
                           .Trial("B2", "T1", "NR", "")
                           .Trial("B2", "T2", "C", "450")
                           .Trial("B2", "T3", "E", "615"));
    // The percentage of all responses is never written.
    QCOMPARE(Summary(), QStringList({"6||377.50 msec", "3|50.00%|416.67 msec", "2|33.33%|507.50 msec",
                                     "1|16.67%|0.00 msec"}));
}

// At load "SC" is counted under "C", both in the count and in the average.
void TestSummary::selfCorrectedRowsCountAsCorrect()
{
    Open("sc.txt", DataFileBuilder()
                       .ProductTitles()
                       .Trial("B1", "T1", "C", "300")
                       .Trial("B1", "T2", "SC", "600")
                       .Trial("B1", "T3", "E", "420"));
    QCOMPARE(Summary(), QStringList({"3||440.00 msec", "2|66.67%|450.00 msec", "1|33.33%|420.00 msec",
                                     "0|0.00%|0.00 msec"}));
}

void TestSummary::rowsWithoutAKnownCodeGiveZeros()
{
    Open("odd.txt", DataFileBuilder()
                        .ProductTitles()
                        .Trial("B1", "T1", "X", "300")
                        .Trial("B1", "T2", "", "500"));
    QCOMPARE(Summary(), QStringList({"0||0.00 msec", "0|0.00%|0.00 msec", "0|0.00%|0.00 msec",
                                     "0|0.00%|0.00 msec"}));
}

void TestSummary::aCombinedSelectionSumsItsFiles()
{
    Open("a.txt", DataFileBuilder().ProductTitles().Trial("B1", "T1", "C", "300").Trial("B1", "T2", "E", "500"));
    Open("b.txt", DataFileBuilder().ProductTitles().Trial("B1", "T1", "C", "700").Trial("B1", "T2", "NR", ""));
    QCOMPARE(Summary().first(), QString("2||350.00 msec"));
    driver->ClickRows({0, 1});
    QCOMPARE(Summary(), QStringList({"4||375.00 msec", "2|50.00%|500.00 msec", "1|25.00%|500.00 msec",
                                     "1|25.00%|0.00 msec"}));
    driver->ClickRows({0});
    QCOMPARE(Summary().at(1), QString("1|50.00%|300.00 msec"));
}

void TestSummary::resetLeavesZerosEvenInTheUnwrittenCell()
{
    Open("a.txt", DataFileBuilder().ProductTitles().Trial("B1", "T1", "C", "300"));
    driver->ClickRows({0});
    QTest::mouseClick(driver->Find<QPushButton>("minusButton"), Qt::LeftButton);
    QCOMPARE(Summary(), QStringList({"0|0|0", "0|0|0", "0|0|0", "0|0|0"}));
    Open("b.txt", DataFileBuilder().ProductTitles().Trial("B1", "T1", "E", "250"));
    QCOMPARE(Summary(), QStringList({"1|0|250.00 msec", "0|0.00%|0.00 msec", "1|100.00%|250.00 msec",
                                     "0|0.00%|0.00 msec"}));
}

void TestSummary::subDropDownFollowsTheBasis_data()
{
    QTest::addColumn<int>("basis");
    QTest::addColumn<bool>("shown");
    QTest::addColumn<QStringList>("entries");

    QTest::newRow("per block") << 0 << false << QStringList();
    QTest::newRow("per trial") << 1 << false << QStringList();
    // Trial variables lose their "(Trial Variable)" line; code columns keep their line break.
    QTest::newRow("per trial variable") << 2 << true << QStringList({"Congruency", "Hand"});
    QTest::newRow("per code value") << 3 << true << QStringList({"Key", "Pressed Or\nReleased", "Stimulus\nSide"});
}

void TestSummary::subDropDownFollowsTheBasis()
{
    QFETCH(int, basis);
    QFETCH(bool, shown);
    QFETCH(QStringList, entries);
    DataFileBuilder builder;
    builder
        .Titles({"Participant", "Session", "Block", "Block", "Trial", "Trial", "Trial", "Stimulus", "Expected",
                 "Actual", "Error", "Reaction", "", "Pressed Or", "Hand", "Congruency", "Stimulus"},
                {"Name", "Number", "Number", "Name", "Name", "Number", "Repetition", "Name", "Response",
                 "Response", "Code", "Time", "Key", "Released", "(Trial Variable)", "(Trial Variable)", "Side"})
        .Row({"P1", "1", "1", "B1", "T1", "1", "1", "s", "z", "z", "C", "300", "z", "Pressed", "left",
              "congruent", "left"})
        .Row({"P1", "1", "1", "B1", "T2", "2", "1", "s", "z", "m", "E", "350", "m", "Pressed", "right",
              "incongruent", "right"});
    Open("stroop.txt", builder);
    driver->Find<QTabWidget>("tabWidget")->setCurrentIndex(1);
    Combo("basisDropDown")->setCurrentIndex(basis);
    QCOMPARE(Combo("specificBasisDropDown")->isVisible(), shown);
    if (shown) {
        QCOMPARE(SubEntries(), entries);
        // The first name is chosen; the section table shows its values.
        QCOMPARE(Combo("specificBasisDropDown")->currentIndex(), 0);
        QCOMPARE(Sections()->rowCount(), 2);
        Combo("specificBasisDropDown")->setCurrentIndex(entries.size() - 1);
        QCOMPARE(Sections()->headerData(1, Qt::Vertical).toString(), QString("right"));
    }
}

// With no file the drop-down appears but nothing fills it.
void TestSummary::subDropDownWithNoFileOnlyShows()
{
    driver->Find<QTabWidget>("tabWidget")->setCurrentIndex(1);
    Combo("basisDropDown")->setCurrentIndex(2);
    QVERIFY(Combo("specificBasisDropDown")->isVisible());
    QCOMPARE(Combo("specificBasisDropDown")->count(), 0);
    Combo("basisDropDown")->setCurrentIndex(1);
    QVERIFY(!Combo("specificBasisDropDown")->isVisible());
}

// Each file keeps its own section model, and the one that takes the focus
// is set to what the drop-downs show.
void TestSummary::newFocusTakesTheDropDownChoices()
{
    Open("a.txt", DataFileBuilder()
                      .ProductTitles()
                      .Trial("B1", "T1", "C", "300")
                      .Trial("B2", "T2", "E", "500")
                      .Trial("B3", "T3", "C", "700"));
    Open("b.txt", DataFileBuilder()
                      .ProductTitles()
                      .Trial("B1", "T1", "C", "300", "congruent", "up")
                      .Trial("B1", "T1", "C", "320", "congruent", "down"));
    driver->Find<QTabWidget>("tabWidget")->setCurrentIndex(1);
    driver->ClickRows({0});
    QCOMPARE(Sections()->rowCount(), 3);
    Combo("basisDropDown")->setCurrentIndex(1);
    Combo("filterDropDown")->setCurrentIndex(1);
    QCOMPARE(Sections()->index(0, 0).data().toString(), QString("100.00%"));

    driver->ClickRows({1});
    QCOMPARE(Sections()->rowCount(), 1);
    QCOMPARE(Sections()->headerData(0, Qt::Vertical).toString(), QString("T1"));
    QCOMPARE(Sections()->index(0, 0).data().toString(), QString("100.00%"));

    Combo("basisDropDown")->setCurrentIndex(3);
    Combo("specificBasisDropDown")->setCurrentIndex(2);
    QCOMPARE(Sections()->headerData(1, Qt::Vertical).toString(), QString("down"));
    Combo("filterDropDown")->setCurrentIndex(2);
    QCOMPARE(Sections()->index(1, 0).data().toString(), QString("320.00"));

    // Back on the first file the code list is rebuilt and its first entry chosen.
    driver->ClickRows({0});
    QCOMPARE(Combo("specificBasisDropDown")->currentIndex(), 0);
    QCOMPARE(Sections()->headerData(0, Qt::Vertical).toString(), QString("z"));
    QCOMPARE(Sections()->index(0, 0).data().toString(), QString("500.00"));
}

ZEPHLANE_TEST_MAIN(TestSummary)
#include "tst_summary.moc"
