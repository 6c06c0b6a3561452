// The merge dialog driven through its widgets, alone and from the main
// window, with the save dialog and the boxes answered by the catcher.

#include "datafilebuilder.h"
#include "mergedialog.h"
#include "testenvironment.h"
#include "testfiles.h"
#include "windowdriver.h"

#include <QAction>
#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QtTest>

namespace {

QAbstractButton *Button(const QWidget *dialog, const char *name)
{
    return dialog->findChild<QAbstractButton *>(QString::fromLatin1(name));
}

// On the indicator, as the layout may make a button wider than the part
// that takes clicks.
void Click(const QWidget *dialog, const char *name)
{
    QAbstractButton *button = Button(dialog, name);
    QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
}

// Each choice as "-" when disabled, "x" checked or "o" not, "v" when
// pressed down, then the count beside it.
QString Choices(const QWidget *dialog)
{
    const std::pair<const char *, const char *> choices[] = {
        {"radioButton", "label_2"}, {"radioButton_2", "label_4"}, {"radioButton_3", "label_3"},
        {"checkBox_2", "label_6"}};
    QStringList shown;
    for (const auto &[name, label] : choices) {
        const QAbstractButton *button = Button(dialog, name);
        shown << QString(button->isEnabled() ? "" : "-") + (button->isChecked() ? "x" : "o")
                     + (button->isDown() ? "v" : "") + dialog->findChild<QLabel *>(label)->text();
    }
    return shown.join(' ') + (Button(dialog, "checkBox")->isChecked() ? " x" : " o");
}

// RowsToMerge, IncludeHiddenRows and Transpose.
QString Values(const MergeDialog &dialog)
{
    return QString("%1 %2 %3").arg(dialog.RowsToMerge()).arg(int(dialog.IncludeHiddenRows()))
        .arg(int(dialog.Transpose()));
}

DataFileBuilder Blocks(int rows)
{
    DataFileBuilder builder;
    builder.Titles({"Block", "Error", "Reaction"}, {"Name", "Code", "Time"});
    for (int row = 0; row < rows; ++row)
        builder.Row({"B" + QString::number(row + 1), "C", QString::number(300 + row)});
    return builder;
}

} // namespace

class TestMergeDialog : public QObject
{
    Q_OBJECT

private slots:
    void startsWithTheForm();
    void clicksSetTheChoices();
    void mergesTheFocusedRecordWithTheChoicesMade();
};

void TestMergeDialog::startsWithTheForm()
{
    MergeDialog dialog;
    QCOMPARE(dialog.windowTitle(), QString("Merge Options"));
    QVERIFY(dialog.isModal());
    QVERIFY(!(dialog.windowFlags() & Qt::WindowContextHelpButtonHint));
    QCOMPARE(dialog.size(), QSize(413, 319));
    QStringList texts;
    for (const char *name : {"groupBox", "groupBox_2"})
        texts << dialog.findChild<QGroupBox *>(name)->title();
    for (const char *name :
         {"radioButton", "radioButton_2", "radioButton_3", "checkBox_2", "checkBox", "pushButton", "pushButton_2"})
        texts << Button(&dialog, name)->text();
    QCOMPARE(texts, QStringList({"Rows to Merge:", "Other Options:", "Flagged rows only ", "Unflagged rows only ",
                                 "All rows ", "Include hidden rows ", "Transpose rows and columns in the merged file",
                                 "Cancel", "Merge..."}));
    for (const char *name : {"pushButton", "pushButton_2"})
        QVERIFY(!dialog.findChild<QPushButton *>(name)->autoDefault());
    QCOMPARE(Choices(&dialog), QString("-o -o x -o o"));
    QCOMPARE(Values(dialog), QString("-1 0 0"));
    // Both panels answer to the one border rule.
    QCOMPARE(dialog.styleSheet(),
             QString("QWidget#rows\n{\n\tborder: 1px solid rgb(180, 180, 180);\n\tborder-radius: 3px;\n}"));
    QCOMPARE(dialog.findChildren<QWidget *>("rows").size(), 2);
}

void TestMergeDialog::clicksSetTheChoices()
{
    MergeDialog dialog;
    dialog.show();
    dialog.Prepare(10, 3, 2);
    Click(&dialog, "radioButton_2");
    QCOMPARE(Values(dialog), QString("1 0 0"));
    Click(&dialog, "radioButton_3");
    Click(&dialog, "checkBox");
    QCOMPARE(Values(dialog), QString("2 0 1"));
    Click(&dialog, "checkBox_2");
    Click(&dialog, "checkBox");
    QCOMPARE(Values(dialog), QString("2 1 0"));
    Click(&dialog, "checkBox_2");
    QCOMPARE(Values(dialog), QString("2 0 0"));
}

// Only clicks change the choices. "Flagged rows only " chosen while a
// combined view had flags stays in force once they are gone with the view,
// and "All rows " then only looks pressed: the rebuilt combined record goes
// out as its titles alone, transposed.
void TestMergeDialog::mergesTheFocusedRecordWithTheChoicesMade()
{
    WindowDriver driver;
    auto *dialog = driver.Window().findChild<MergeDialog *>();
    auto *mergeButton = driver.Find<QPushButton>("mergeButton");
    QVERIFY(QMetaObject::invokeMethod(&driver.Window(), "OpenMergeDialog"));
    QVERIFY(!dialog->isVisible());

    const QString first = driver.Write("a.txt", Blocks(6));
    const DataFileBuilder withHand = DataFileBuilder()
                                         .Titles({"Block", "Error", "Reaction", ""}, {"Name", "Code", "Time", "Hand"})
                                         .Row({"B9", "C", "300", "left"});
    driver.AddFiles({first, driver.Write("b.txt", withHand)});
    driver.ClickRows({0, 1});
    auto *table = driver.Find<QTableView>("rawDataView");
    WindowDriver::ClickCell(table, 0, 0);
    WindowDriver::ClickCell(table, 1, 0);
    WindowDriver::ClickCell(table, 6, 2);
    driver.Find<QAction>("actionHide_Selected_Rows")->trigger();
    QTest::mouseClick(mergeButton, Qt::LeftButton);
    QCOMPARE(Choices(dialog), QString("o(2) o(4) x(6) o(1) o"));
    for (const char *name : {"radioButton", "checkBox_2", "checkBox", "pushButton"})
        Click(dialog, name);
    QVERIFY(!dialog->isVisible());

    driver.ClickRows({0, 1});
    QTest::mouseClick(mergeButton, Qt::LeftButton);
    QCOMPARE(Choices(dialog), QString("-x -o ov -o x"));
    for (const char *name : {"radioButton_2", "checkBox_2"})
        Click(dialog, name); // disabled: no effect
    QCOMPARE(Values(*dialog), QString("0 1 1"));

    driver.Catcher().Clear();
    driver.Catcher().QueueFileAnswer({});
    Click(dialog, "pushButton_2");
    QCOMPARE(driver.Catcher().FileDialogs(),
             QStringList({"Save Merged Data File|" + QFileInfo(first).absolutePath() + "|Text (*.txt)"}));
    QVERIFY(driver.Catcher().Messages().isEmpty());
    QVERIFY(dialog->isVisible());

    // A longer file of that name is replaced whole.
    const QString output = driver.Write("merged.txt", Blocks(100));
    driver.Catcher().QueueFileAnswer({output});
    driver.Catcher().QueueMessageAnswer(QMessageBox::Yes);
    Click(dialog, "pushButton_2");
    QCOMPARE(ReadAll(output), QByteArray("Block Name\t\nError Code\t\nReaction Time\t\nHand\t"));
    QCOMPARE(driver.Catcher().Messages().last(), "Talvox Zephlane|Data successfully written to " + output + ".");
    QVERIFY(!dialog->isVisible());
}

ZEPHLANE_TEST_MAIN(TestMergeDialog)
#include "tst_mergedialog.moc"
