// SPDX-License-Identifier: GPL-3.0-or-later
// The summary tab of the main window: the general summary of the file in
// focus, and the three drop-downs that choose what the section table shows.

#include "windowdriver.h"

class TestSummary : public QObject
{
    Q_OBJECT

    std::unique_ptr<WindowDriver> driver;

    void Open(const QString &trials) { driver->Open(WindowDriver::Trials(trials)); }
    QComboBox *Combo(const QString &name) const { return driver->Find<QComboBox>(name); }
    QString Sections() const { return TableContents::Rows(*driver->Sections()->model()).join(", "); }

private slots:
    void init() { driver = std::make_unique<WindowDriver>(); }
    void cleanup() { driver.reset(); }

    // Combined files add up: row 0 is all responses, then "C", "E" and "NR";
    // the form leaves the percentage of all responses empty, and nothing
    // writes it. Removing every file leaves zeros, and a new file, here with
    // no known code, fills all but that percentage again.
    void combinedFilesSumAndRemovalLeavesZeros()
    {
        Open("B1 T1 C 300, B1 T2 E 500");
        Open("B1 T1 C 700, B1 T2 NR");
        driver->ClickRows({0, 1});
        QStringList seen{driver->Summary()};
        driver->Click("minusButton");
        seen << driver->Summary();
        Open("B1 T1 X 250");
        QCOMPARE(seen << driver->Summary(), QStringList({"4||375.00 msec, 2|50.00%|500.00 msec, 1|25.00%|500.00 msec, 1|25.00%|0.00 msec",
                                                          "0|0|0, 0|0|0, 0|0|0, 0|0|0",
                                                          "0|0|0.00 msec, 0|0.00%|0.00 msec, 0|0.00%|0.00 msec, 0|0.00%|0.00 msec"}));
    }

    // The drop-down shows for the last two bases; with no file nothing fills
    // it, and with one the last name chosen sets what the table shows. A
    // trial variable loses its "(Trial Variable)" line; a code column keeps
    // its line break.
    void subDropDownFollowsTheBasis()
    {
        QStringList seen;
        for (int basis = 0; basis < 4; ++basis) {
            driver = std::make_unique<WindowDriver>();
            QComboBox *names = Combo("specificBasisDropDown");
            driver->ShowTab(1);
            Combo("basisDropDown")->setCurrentIndex(basis);
            QString shown = QString(names->isVisible() ? "shown " : "hidden ") + QString::number(names->count());
            Open("B1 T1 C 300 congruent left, B1 T2 E 350 incongruent right");
            names->setCurrentIndex(names->count() - 1);
            shown += QString(names->isVisible() ? " shown" : " hidden") + " | " + TableContents::Column(*names->model(), 0).join(", ");
            seen << shown + " | " + Sections();
        }
        QCOMPARE(seen, QStringList({"hidden 0 hidden |  | B1: 1 1 0 0", "hidden 0 hidden |  | T1: 1 0 0 0, T2: 0 1 0 0",
                                    "shown 0 shown | Congruency | congruent: 1 0 0 0, incongruent: 0 1 0 0",
                                    "shown 0 shown | Key, Pressed Or\nReleased, Stimulus\nSide | left: 1 0 0 0, right: 0 1 0 0"}));
    }

    // Repeated titles share their marks with the file that holds them; the
    // names listed stay readable after their file has gone, until the list
    // is filled again.
    void listedNamesOutliveTheirFile()
    {
        driver->Open(DataFileBuilder().Columns("Error/Code,Reaction/Time,Side,Side,Side").Rows({"C,300,l,l,r"}));
        driver->ShowTab(1);
        Combo("basisDropDown")->setCurrentIndex(3);
        driver->ClickRows({0});
        driver->Click("minusButton");
        QComboBox *names = Combo("specificBasisDropDown");
        QStringList seen{TableContents::Column(*names->model(), 0).join(", ")};
        names->grab();
        Open("B1 T1 C 300");
        seen << TableContents::Column(*names->model(), 0).join(", ");
        QCOMPARE(seen, QStringList({"Side, Side#, Side##", "Key, Pressed Or\nReleased, Stimulus\nSide"}));
    }

    // Each file keeps its own section model; the one that takes the focus is
    // set to what the drop-downs show, and the list of names starts again.
    void newFocusTakesTheDropDownChoices()
    {
        Open("B1 T1 C 300, B2 T2 E 500, B3 T3 C 700");
        Open("B1 T1 C 300 congruent up, B1 T1 C 320 congruent down");
        driver->ShowTab(1);
        Combo("basisDropDown")->setCurrentIndex(3);
        Combo("specificBasisDropDown")->setCurrentIndex(2);
        Combo("filterDropDown")->setCurrentIndex(2);
        QCOMPARE(Sections(), "up: 300.00 0.00 0.00 0.00, down: 320.00 0.00 0.00 0.00");
        driver->ClickRows({0});
        QCOMPARE(QString::number(Combo("specificBasisDropDown")->currentIndex()) + " | " + Sections(), "0 | z: 500.00 500.00 0.00 0.00");
    }
};

ZEPHLANE_TEST_MAIN(TestSummary)
#include "tst_summary.moc"
