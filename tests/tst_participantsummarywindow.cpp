// SPDX-License-Identifier: GPL-3.0-or-later
// The participant summary window as a researcher uses it beside the main
// window: settings chosen with its controls, the table, the counts, the
// files it saves and the command line that writes the same, rows hidden or
// flagged in the main window, and its settings kept from one opening to
// the next.

#include "participantsummarywindow.h"

#include <QAbstractItemModelTester>
#include "testfiles.h"
#include "toolrun.h"
#include "windowdriver.h"

namespace {

// Participant "sub 1.txt": accuracy 0.8, a time that is no number, two
// slow ones. "o'neil.txt": accuracy 0.75, one slow time. "c.txt":
// accuracy 0.5.
const char *const kSub1 = "B1 T1 C 300 con, B1 T2 C 310 inc, B1 T1 C 320 con, B1 T2 C 900 inc, B2 T1 C 305 con, "
                          "B2 T2 E 450 inc, B2 T1 C 315 con, B2 T2 C 2500 inc, B2 T1 C abc con, B1 T1 NR 0 con";
const char *const kOneil = "B1 T1 C 410 con, B1 T2 C 420 inc, B1 T1 C 430 con, B1 T2 C 1200 inc, B2 T1 E 500 con, "
                           "B2 T2 C 405 inc, B2 T1 C 415 con, B2 T2 SC 600 inc";
const char *const kC = "B1 T1 E 350 con, B1 T2 E 360 inc, B1 T1 C 370 con, B2 T2 C 1000 inc";

} // namespace

class TestParticipantSummaryWindow : public QObject
{
    Q_OBJECT

    std::unique_ptr<WindowDriver> driver;

    template <typename T>
    T *Find(const QString &name) const
    {
        return driver->Find<T>(name);
    }
    // The three participants, in the list in this order; the first selected.
    void OpenFiles()
    {
        driver->AddFiles({driver->Write("sub 1.txt", WindowDriver::Trials(kSub1))});
        driver->AddFiles({driver->Write("o'neil.txt", WindowDriver::Trials(kOneil))});
        driver->AddFiles({driver->Write("c.txt", WindowDriver::Trials(kC))});
        driver->ClickRows({0});
    }
    ParticipantSummaryWindow *OpenSummary()
    {
        driver->Trigger("actionParticipant_Summary");
        return Find<ParticipantSummaryWindow>("ParticipantSummaryWindow");
    }

    // Settings as a user gives them. Each step is "name=value": the
    // columns to tick ("columns=Block Name|Congruency"), a choice of
    // "procedure" or "scope" by its place in the list, "wide" or "long",
    // or text typed into a field.
    void Set(const QStringList &steps)
    {
        for (const QString &step : steps) {
            const QString name = step.section('=', 0, 0);
            const QString value = step.section('=', 1);
            if (name == "columns")
                Tick(value.split('|'));
            else if (name == "procedure" || name == "scope")
                Choose(Find<QComboBox>(name + "Box"), value.toInt());
            else if (name == "wide" || name == "long")
                QTest::mouseClick(Find<QRadioButton>(name + "Button"), Qt::LeftButton);
            else
                Type(Find<QLineEdit>(name + "Edit"), value);
        }
    }
    void Tick(const QStringList &columns)
    {
        auto *list = Find<QListWidget>("conditionList");
        for (int row = 0; row < list->count(); ++row) {
            QListWidgetItem *item = list->item(row);
            if ((item->checkState() == Qt::Checked) == columns.contains(item->text()))
                continue;
            QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(item).center());
            QTest::keyClick(list->viewport(), Qt::Key_Space);
        }
    }
    static void Choose(QComboBox *box, int index)
    {
        QTest::keyClick(box, Qt::Key_Home);
        for (int i = 0; i < index; ++i)
            QTest::keyClick(box, Qt::Key_Down);
    }
    static void Type(QLineEdit *edit, const QString &text)
    {
        QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(edit, Qt::Key_Backspace);
        QTest::keyClicks(edit, text);
    }
    // The file a button saves, through the save dialog.
    QByteArray Saved(const QString &button, const QString &name)
    {
        driver->Catcher().QueueFileAnswer({driver->Path(name)});
        driver->Click(button);
        return ReadAll(driver->Path(name));
    }
    QString Text(const QString &label) const { return Find<QLabel>(label)->text(); }
    QString CommandLine() const { return Find<QLineEdit>("commandLineEdit")->text().remove(driver->Path("") + '/'); }
    QString Table(const QStringList &titles) const
    {
        return TableContents::Fields(*Find<QTableView>("summaryTable")->model(), titles);
    }
    // What the controls show: ticked columns, then procedure, bounds,
    // factor, scope, threshold and layout.
    QString Controls() const
    {
        QStringList shown;
        auto *list = Find<QListWidget>("conditionList");
        for (int row = 0; row < list->count(); ++row)
            shown << (list->item(row)->checkState() == Qt::Checked ? list->item(row)->text() : QString());
        shown << QString::number(Find<QComboBox>("procedureBox")->currentIndex()) << Find<QLineEdit>("minEdit")->text()
              << Find<QLineEdit>("maxEdit")->text() << Find<QLineEdit>("sdEdit")->text()
              << QString::number(Find<QComboBox>("scopeBox")->currentIndex()) << Find<QLineEdit>("minAccuracyEdit")->text()
              << (Find<QRadioButton>("wideButton")->isChecked() ? "wide" : "long");
        return shown.join('|');
    }

private slots:
    void init()
    {
        QSettings("Talvox", "Zephlane").remove("Analysis");
        driver = std::make_unique<WindowDriver>();
    }
    void cleanup() { driver.reset(); }

    void exportIsWhatTheShownCommandLineWrites_data()
    {
        QTest::addColumn<QList<int>>("selection");
        QTest::addColumn<QStringList>("steps");
        QTest::newRow("one file, defaults") << QList<int>{0} << QStringList();
        QTest::newRow("combined out of order, two columns, bounds, modified-recursive")
            << QList<int>{2, 0, 1}
            << QStringList{"columns=Congruency|Block Name", "procedure=4", "min=200", "max=2000"};
        QTest::newRow("wide, sd by participant, minimum accuracy")
            << QList<int>{0, 1, 2}
            << QStringList{"columns=Block Name", "procedure=2", "sd=1.5", "scope=1", "minAccuracy=0.6", "wide"};
    }

    // With nothing hidden, the CSV and the exclusion record that the window
    // saves are what its command line, run in a shell, writes for the same
    // files; names with a blank and a quote come through the shell whole.
    void exportIsWhatTheShownCommandLineWrites()
    {
        QFETCH(QList<int>, selection);
        QFETCH(QStringList, steps);
        OpenFiles();
        driver->ClickRows(selection);
        OpenSummary();
        Set(steps);
        QCOMPARE(Text("problemLabel"), QString());
        const QByteArray table = Saved("exportButton", "export.csv");
        const QByteArray record = Saved("exclusionsButton", "record.csv");
        QVERIFY(table.count('\n') >= 2 && record.count('\n') >= 2);

        const QString recordPath = driver->Path("tool record.csv");
        const ToolRun run = ToolRun::Shell(Find<QLineEdit>("commandLineEdit")->text() + " --exclusions '" + recordPath + "'",
                                           ZEPHLANE_SUMMARY);
        QCOMPARE(run.err, QByteArray());
        QCOMPARE(run.status, 0);
        QCOMPARE(run.out, table);
        QCOMPARE(ReadAll(recordPath), record);
    }

    void countsWhatItShowsAndLeavesOut_data()
    {
        QTest::addColumn<QList<int>>("selection");
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<QString>("counts");
        QTest::newRow("one file") << QList<int>{0} << QStringList() << "1 participant, 1 cell, 1 row left out";
        QTest::newRow("by congruency, one too slow")
            << QList<int>{1} << QStringList{"columns=Congruency", "procedure=1", "max=1000"}
            << "1 participant, 2 cells, 1 row left out";
        QTest::newRow("below the minimum accuracy")
            << QList<int>{0, 1, 2} << QStringList{"minAccuracy=0.6"}
            << "2 participants, 2 cells, 5 rows left out, 1 participant below the minimum accuracy";
    }

    void countsWhatItShowsAndLeavesOut()
    {
        QFETCH(QList<int>, selection);
        QFETCH(QStringList, steps);
        QFETCH(QString, counts);
        OpenFiles();
        driver->ClickRows(selection);
        OpenSummary();
        Set(steps);
        QCOMPARE(Text("countsLabel"), counts);
    }

    // A row hidden in the main window leaves the table and stands in the
    // record as hidden; the command line, which reads every row, stays, and
    // a line says so until the row is shown again.
    void hiddenRowsLeaveTheTableButNotTheCommandLine()
    {
        OpenFiles();
        driver->ClickRows({1});
        QWidget *summary = OpenSummary();
        const QString header = "participant,row,code,reaction_time,reason,bound,procedure\n";
        QStringList seen{Table({"participant", "trials", "rt_mean"}), Text("countsLabel"), CommandLine(),
                         Saved("exclusionsButton", "before.csv")};
        QVERIFY(Find<QLabel>("hiddenRowsLabel")->isHidden());
        WindowDriver::ClickCell(driver->Raw(), 3, 2);
        driver->Trigger("actionHide_Selected_Rows");
        seen << Table({"participant", "trials", "rt_mean"}) << Text("countsLabel") << CommandLine()
             << Saved("exclusionsButton", "after.csv");
        QCOMPARE(seen, QStringList({"o'neil.txt 8 546.67", "1 participant, 1 cell, 0 rows left out",
                                    "zephlane-summary 'o'\\''neil.txt'", header,
                                    "o'neil.txt 7 416.00", "1 participant, 1 cell, 1 row left out (1 hidden)",
                                    "zephlane-summary 'o'\\''neil.txt'", header + "o'neil.txt,4,C,1200,hidden,,none\n"}));
        QVERIFY(summary->isVisible() && Find<QLabel>("hiddenRowsLabel")->isVisibleTo(summary));
        driver->Trigger("actionShow_All_Rows");
        QCOMPARE(Table({"participant", "trials", "rt_mean"}), QString("o'neil.txt 8 546.67"));
        QVERIFY(!Find<QLabel>("hiddenRowsLabel")->isVisibleTo(summary));
    }

    // In a combined view each row the procedure removes is flagged at its
    // place in the combined table (a correct row without a valid time is
    // left out but not flagged), and Hide Flagged Rows then takes them out
    // of the table and, as hidden rows, out of the summary.
    void flaggedExclusionsGoWithHideFlaggedRows()
    {
        OpenFiles();
        driver->ClickRows({1, 0});
        OpenSummary();
        Set({"procedure=1", "max=800"});
        driver->Click("flagButton");
        QCOMPARE(TableContents::FlaggedRows(*driver->Raw()->model()), QString("3 11 15"));
        QCOMPARE(Text("countsLabel"), QString("2 participants, 2 cells, 4 rows left out; 3 rows flagged in the main window"));

        driver->Trigger("actionHide_Flagged_Rows");
        QCOMPARE(driver->Column(12).join(' '), QString("410 420 430 500 405 415 600 300 310 320 305 450 315 abc 0"));
        QCOMPARE(Text("countsLabel"), QString("2 participants, 2 cells, 4 rows left out (3 hidden)"));
        const QByteArray record = Saved("exclusionsButton", "record.csv");
        QCOMPARE(record.count(",hidden,"), 3);
    }

    // Participants stand in the order of the selection. A header click sorts
    // numbers as numbers, a second click reverses, a third gives the order
    // back; the sorting outlives a new result, and Copy takes the table as
    // shown.
    void sortsByAHeaderClick()
    {
        OpenFiles();
        driver->ClickRows({2, 0, 1});
        OpenSummary();
        QTableView *table = Find<QTableView>("summaryTable");
        QAbstractItemModelTester tester(table->model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        table->selectRow(2);
        const int trials = TableContents::Titles(*table->model()).indexOf("trials");
        // The line selected stays selected wherever the sorting puts it.
        const auto shown = [&] {
            return Table({"participant"}) + " | " + table->selectionModel()->selectedRows().value(0).data().toString();
        };
        QStringList seen{shown()};
        for (int click = 0; click < 3; ++click) {
            WindowDriver::ClickHeader(table, trials);
            seen << shown();
        }

        WindowDriver::ClickHeader(table, 0);
        Set({"minAccuracy=0.7"});
        seen << Table({"participant"});
        QCOMPARE(seen, QStringList({"c.txt, sub 1.txt, o'neil.txt | o'neil.txt", "c.txt, o'neil.txt, sub 1.txt | o'neil.txt",
                                    "sub 1.txt, o'neil.txt, c.txt | o'neil.txt", "c.txt, sub 1.txt, o'neil.txt | o'neil.txt",
                                    "o'neil.txt, sub 1.txt"}));
        driver->Click("copyButton");
        const QStringList lines = QGuiApplication::clipboard()->text().split('\n');
        QCOMPARE(lines.mid(1, 2).replaceInStrings(QRegularExpression("\t.*"), ""),
                 QStringList({"o'neil.txt", "sub 1.txt"}));

    }

    void numbersAreJudgedAsTyped_data()
    {
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<QString>("problem");
        QTest::addColumn<QString>("marked");
        QTest::addColumn<QString>("options");
        QTest::newRow("absolute without a bound")
            << QStringList{"procedure=1"} << "Absolute bounds need a lower bound, an upper bound or both." << "" << "";
        // "3" could be used, "3," cannot.
        QTest::newRow("a decimal comma")
            << QStringList{"procedure=1", "max=3,000"}
            << "The upper bound is not a number; write it with a full stop, as in 2.5." << "max"
            << "--procedure absolute --max 3";
        QTest::newRow("bounds crossed") << QStringList{"procedure=3", "max=3e2", "min=500"}
                                        << "The lower bound is above the upper bound." << ""
                                        << "--procedure nonrecursive --min 50 --max 3e2";
        QTest::newRow("no deviations") << QStringList{"procedure=2", "sd=0"} << "The SD factor must be above 0." << ""
                                       << "--procedure sd";
        QTest::newRow("a percentage") << QStringList{"minAccuracy=80"}
                                      << "The minimum accuracy is a fraction from 0 to 1." << "" << "";
        QTest::newRow("a field the procedure does not use") << QStringList{"procedure=2", "sd=x", "procedure=0"} << ""
                                                            << "" << "";
    }

    // Settings that cannot be used are said and marked as they are typed,
    // and leave the table and its command line at the last usable ones.
    void numbersAreJudgedAsTyped()
    {
        QFETCH(QStringList, steps);
        QFETCH(QString, problem);
        QFETCH(QString, marked);
        QFETCH(QString, options);
        OpenFiles();
        OpenSummary();
        Set(steps);
        QCOMPARE(Text("problemLabel"),
                 problem.isEmpty() ? problem : problem + " The table is for the last settings that could be used.");
        QStringList invalid;
        for (const QString &field : QStringList{"min", "max", "sd", "minAccuracy"}) {
            if (Find<QLineEdit>(field + "Edit")->property("invalid").toBool())
                invalid << field;
        }
        QCOMPARE(invalid.join(' '), marked);
        QCOMPARE(CommandLine(), QString("zephlane-summary " + options + (options.isEmpty() ? "" : " ") + "'sub 1.txt'"));
    }

    void settingsComeBackAfterReopening_data()
    {
        QTest::addColumn<bool>("closeMainWindow");
        QTest::newRow("summary window closed") << false;
        QTest::newRow("main window closed") << true;
    }

    // Kept when the summary window closes, on its own or with the main
    // window, and shown again by the next program's summary window.
    void settingsComeBackAfterReopening()
    {
        QFETCH(bool, closeMainWindow);
        OpenFiles();
        QWidget *summary = OpenSummary();
        Set({"columns=Congruency", "procedure=2", "sd=3", "scope=2", "minAccuracy=0.5", "wide"});
        const QString chosen = Controls();
        QCOMPARE(chosen, QString("||Congruency|2|||3|2|0.5|wide"));
        closeMainWindow ? driver->Window().close() : summary->close();
        QVERIFY(!summary->isVisible());

        driver = std::make_unique<WindowDriver>();
        OpenFiles();
        OpenSummary();
        QCOMPARE(Controls(), chosen);
        QVERIFY(CommandLine().startsWith("zephlane-summary --by Congruency --procedure sd --sd 3 --sd-scope condition "
                                         "--min-accuracy 0.5 --layout wide"));
    }

    // Tab visits every control in reading order, and each label's letter
    // takes the keyboard to its field.
    void everyControlIsReachableByKeyboard()
    {
        OpenFiles();
        QWidget *summary = OpenSummary();
        QApplication::setActiveWindow(summary);
        QVERIFY(QTest::qWaitForWindowActive(summary));
        Set({"procedure=2"});
        Find<QWidget>("conditionList")->setFocus();
        QStringList visited;
        for (int i = 0; i < 15; ++i) {
            visited << QApplication::focusWidget()->objectName();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(visited.join(' '), QString("conditionList procedureBox minEdit maxEdit sdEdit scopeBox minAccuracyEdit "
                                            "longButton summaryTable commandLineEdit copyCommandLineButton copyButton "
                                            "exportButton exclusionsButton flagButton"));
        QCOMPARE(QApplication::focusWidget()->objectName(), QString("conditionList"));
        QStringList reached;
        for (const char key : QByteArray("NPLUTOMWD")) {
            QTest::keyClick(summary, Qt::Key(key), Qt::AltModifier);
            reached << QApplication::focusWidget()->objectName();
        }
        QCOMPARE(reached.join(' '), QString("conditionList procedureBox minEdit maxEdit sdEdit scopeBox minAccuracyEdit "
                                            "wideButton commandLineEdit"));
    }
};

ZEPHLANE_TEST_MAIN(TestParticipantSummaryWindow)
#include "tst_participantsummarywindow.moc"
