// SPDX-License-Identifier: GPL-3.0-or-later
// The merged output file, byte for byte: both layouts, the rows that go
// out, the title lines and the success box; and the merge dialog driven
// through its widgets, alone and from the main window.

#include "mergedialog.h"
#include "testfiles.h"
#include "windowdriver.h"

#include <QAbstractButton>
#include <QLabel>

namespace {

// Ten rows "r0".."r9", so that each output line names its file row.
DataFileBuilder TenRows()
{
    DataFileBuilder builder;
    builder.Experiment("E").Date("D").Columns("Row,Error/Code,Reaction/Time");
    for (int row = 0; row < 10; ++row)
        builder.Row({"r" + QString::number(row), "C", QString::number(300 + row)});
    return builder;
}

// The plain output of TenRows() with these file rows kept.
QByteArray Plain(const QList<int> &rows)
{
    QByteArray bytes = "\n{ E }\n{ D }\n\nRow\tError\tReaction\n\tCode\tTime\n";
    for (const int row : rows)
        bytes += "r" + QByteArray::number(row) + "\tC\t" + QByteArray::number(300 + row) + "\t\n";
    return bytes;
}

// On the indicator, as the layout may make a button wider than the part
// that takes clicks.
void Click(const QWidget *dialog, const char *name)
{
    auto *button = dialog->findChild<QAbstractButton *>(name);
    QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
}

// Each choice as "-" when disabled, "x" checked or "o" not, "v" when
// pressed down, then the count beside it; then what the dialog hands on:
// RowsToMerge, IncludeHiddenRows and Transpose.
QString Choices(const MergeDialog *dialog)
{
    const std::pair<const char *, const char *> choices[] = {
        {"radioButton", "label_2"}, {"radioButton_2", "label_4"}, {"radioButton_3", "label_3"}, {"checkBox_2", "label_6"}};
    QStringList shown;
    for (const auto &[name, label] : choices) {
        const auto *button = dialog->findChild<QAbstractButton *>(name);
        shown << QString(button->isEnabled() ? "" : "-") + (button->isChecked() ? "x" : "o") + (button->isDown() ? "v" : "")
                     + dialog->findChild<QLabel *>(label)->text();
    }
    shown << (dialog->findChild<QAbstractButton *>("checkBox")->isChecked() ? "x" : "o");
    return shown.join(' ') + QString(" = %1 %2 %3").arg(dialog->RowsToMerge()).arg(dialog->IncludeHiddenRows()).arg(dialog->Transpose());
}

} // namespace

class TestMergedOutput : public QObject
{
    Q_OBJECT

    TestFiles files;
    // Its catcher answers the box that every merged file brings up.
    WindowDriver driver;

private slots:
    void choosesRows_data()
    {
        QTest::addColumn<QVector<int>>("flagged"); // before any row is hidden
        QTest::addColumn<QVector<int>>("hidden");
        QTest::addColumn<int>("rowsToMerge");
        QTest::addColumn<bool>("includeHiddenRows");
        QTest::addColumn<bool>("transpose");
        QTest::addColumn<QByteArray>("expected");
        const QVector<int> none;
        QTest::newRow("flagged only") << QVector<int>{1, 3} << none << 0 << false << false << Plain({1, 3});
        // One line per column, every cell with its TAB, no line end at the end.
        QTest::newRow("flagged only, transposed") << QVector<int>{1, 3} << none << 0 << false << true
                                                  << QByteArray("Row\tr1\tr3\t\nError Code\tC\tC\t\nReaction Time\t301\t303\t");
        QTest::newRow("all rows") << QVector<int>{1, 3} << none << 2 << false << false << Plain({0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
        QTest::newRow("no flagged row, transposed") << none << none << 0 << false << true
                                                    << QByteArray("Row\t\nError Code\t\nReaction Time\t");
        // Seven rows shown: file rows 0 to 6 are visited, 7 to 9 never go out.
        // -1, no choice made yet, also means all rows.
        QTest::newRow("hidden rows left out") << none << QVector<int>{2, 8, 9} << -1 << false << false << Plain({0, 1, 3, 4, 5, 6});
        QTest::newRow("hidden rows included up to the stop")
            << none << QVector<int>{2, 8, 9} << 2 << true << false << Plain({0, 1, 2, 3, 4, 5, 6});
        // Flags are read by file row, whichever row now shows at that number.
        QTest::newRow("unflagged only, hidden rows included")
            << QVector<int>{1, 3} << QVector<int>{0, 9} << 1 << true << false << Plain({0, 2, 4, 5, 6, 7});
    }

    void choosesRows()
    {
        QFETCH(QVector<int>, flagged);
        QFETCH(QVector<int>, hidden);
        QFETCH(int, rowsToMerge);
        QFETCH(bool, includeHiddenRows);
        QFETCH(bool, transpose);
        const auto file = files.Open(TenRows());
        for (const int row : flagged)
            file->GetMainModel().SetRowFlag(row, true);
        file->GetMainModel().HideRows(hidden);
        QTEST(files.Merge(*file, rowsToMerge, includeHiddenRows, transpose), "expected");
    }

    // A one-line title and "Key" left of "Reaction\nTime", a code column
    // and a trial variable right of it: "Key" and code columns go whole to
    // the second title line. T4 stays hidden at its new number; T5 lies
    // beyond the stop. The box comes up while the text still waits in the
    // stream: the file on disk is empty until it is closed.
    void writesTwoCombinedExperiments()
    {
        const auto first = files.Open(DataFileBuilder().Experiment("Stroop").Date("2026-03-01")
                                          .Columns("Trial,Key,Error/Code,Reaction/Time,Stimulus/Side").Rows({"T1,k,C,300,s", "T2,,SC,350,"}));
        const auto second = files.Open(DataFileBuilder().Experiment("Flanker").Date("2026-03-02")
                                           .Columns("Hand/(Trial Variable),Trial,Error/Code,Reaction/Time")
                                           .Rows({"left,T3,E,400", "right,T4,C,450", "left,T5,C,500"}));
        second->GetMainModel().HideRows({1});
        DataFile combined;
        combined.CopyFrom(*first);
        combined.Combine(*second);
        driver.Catcher().Clear();
        qint64 sizeWhileBoxShows = -1;
        QTimer::singleShot(0, [&] { sizeWhileBoxShows = QFileInfo(files.Path("merged.txt")).size(); });
        QCOMPARE(files.Merge(combined, 2, false, false),
                 QByteArray("\n{ Stroop & Flanker }\n{ 2026-03-012026-03-02  }\n\nTrial\t\tError\tReaction\t\tHand\n"
                            "\tKey\tCode\tTime\tStimulus\nSide\t(Trial Variable)\n"
                            "T1\tk\tC\t300\ts\t\t\nT2\t\tSC\t350\t\t\t\nT3\t\tE\t400\t\tleft\t\n"));
        QCOMPARE(QString::number(sizeWhileBoxShows) + ' ' + driver.Catcher().Messages().join(""),
                 "0 Talvox Zephlane|Data successfully written to " + files.Path("merged.txt") + ".");
    }

    void clicksSetTheChoices()
    {
        MergeDialog dialog;
        dialog.show();
        dialog.Prepare(10, 3, 2);
        QStringList seen{Choices(&dialog)};
        for (const char *name : {"radioButton_2", "radioButton_3", "checkBox", "checkBox_2", "checkBox", "checkBox_2"}) {
            Click(&dialog, name);
            seen << Choices(&dialog).section(" = ", 1);
        }
        QCOMPARE(seen.join(", "), "o(3) o(7) x(10) o(2) o = -1 0 0, 1 0 0, 2 0 0, 2 0 1, 2 1 1, 2 1 0, 2 0 0");
    }

    // Only clicks change the choices. "Flagged rows only " chosen while a
    // combined view had flags stays in force once they are gone with the
    // view, and "All rows " then only looks pressed: the rebuilt combined
    // record goes out as its titles alone, transposed.
    void mergesTheFocusedRecordWithTheChoicesMade()
    {
        auto *dialog = driver.Window().findChild<MergeDialog *>();
        QVERIFY(QMetaObject::invokeMethod(&driver.Window(), "OpenMergeDialog"));
        QVERIFY(!dialog->isVisible());
        const QString first = driver.Write("a.txt", DataFileBuilder().Columns("Block/Name,Error/Code,Reaction/Time")
                                                        .Rows({"B1,C,300", "B2,C,301", "B3,C,302", "B4,C,303", "B5,C,304", "B6,C,305"}));
        driver.AddFiles({first, driver.Write("b.txt", DataFileBuilder().Columns("Block/Name,Error/Code,Reaction/Time,Hand")
                                                          .Rows({"B9,C,300,left"}))});
        driver.ClickRows({0, 1});
        WindowDriver::ClickCell(driver.Raw(), 0, 0);
        WindowDriver::ClickCell(driver.Raw(), 1, 0);
        WindowDriver::ClickCell(driver.Raw(), 6, 2);
        driver.Trigger("actionHide_Selected_Rows");
        driver.Click("mergeButton");
        QCOMPARE(Choices(dialog), "o(2) o(4) x(6) o(1) o = -1 0 0");
        for (const char *name : {"radioButton", "checkBox_2", "checkBox", "pushButton"})
            Click(dialog, name);
        QVERIFY(!dialog->isVisible());

        driver.ClickRows({0, 1});
        driver.Click("mergeButton");
        for (const char *name : {"radioButton_2", "checkBox_2"})
            Click(dialog, name); // disabled: no effect
        QCOMPARE(Choices(dialog), "-x -o ov -o x = 0 1 1");

        driver.Catcher().Clear();
        driver.Catcher().QueueFileAnswer({});
        Click(dialog, "pushButton_2");
        QCOMPARE(driver.Catcher().FileDialogs(), QStringList("Save Merged Data File|" + QFileInfo(first).absolutePath() + "|Text (*.txt)"));
        QVERIFY(driver.Catcher().Messages().isEmpty() && dialog->isVisible());

        // A longer file of that name is replaced whole.
        const QString output = driver.Write("merged.txt", TenRows());
        driver.Catcher().QueueFileAnswer({output});
        driver.Catcher().QueueMessageAnswer(QMessageBox::Yes);
        Click(dialog, "pushButton_2");
        QCOMPARE(ReadAll(output), QByteArray("Block Name\t\nError Code\t\nReaction Time\t\nHand\t"));
        QCOMPARE(driver.Catcher().Messages().last(), "Talvox Zephlane|Data successfully written to " + output + ".");
        QVERIFY(!dialog->isVisible());
    }
};

ZEPHLANE_TEST_MAIN(TestMergedOutput)
#include "tst_mergedoutput.moc"
