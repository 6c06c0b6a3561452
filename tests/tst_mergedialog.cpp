// The merge dialog driven through its widgets: its form, the counts that
// Prepare shows, and the choices that clicks make and later openings keep.

#include "mergedialog.h"
#include "testenvironment.h"

#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>

#include <memory>

class TestMergeDialog : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void startsWithTheFormsTextsAndState();
    void namesBothPanelsForTheBorderRule();
    void preparesCountsAndEnablesChoices_data();
    void preparesCountsAndEnablesChoices();
    void clicksSetTheChoices();
    void disabledChoicesIgnoreClicks();
    void earlierChoicesOutliveLaterPreparing();
    void cancelRejectsAndMergeLeavesItOpen();

private:
    template<typename T>
    T *Child(const char *name) const
    {
        T *child = dialog->findChild<T *>(QString::fromLatin1(name));
        if (!child)
            qFatal("no child %s", name);
        return child;
    }
    // On the button's indicator, as the layout may make a button wider than
    // the part that takes clicks.
    void Click(const char *name)
    {
        QAbstractButton *button = Child<QAbstractButton>(name);
        QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
    }

    std::unique_ptr<QWidget> window;
    MergeDialog *dialog = nullptr;
};

// The dialog lives as the main window's child, as in the program.
void TestMergeDialog::init()
{
    window = std::make_unique<QWidget>();
    dialog = new MergeDialog(window.get());
    window->show();
    dialog->show();
    QVERIFY(QTest::qWaitForWindowExposed(dialog));
}

void TestMergeDialog::cleanup()
{
    window.reset();
    dialog = nullptr;
}

void TestMergeDialog::startsWithTheFormsTextsAndState()
{
    QCOMPARE(dialog->windowTitle(), QString("Merge Options"));
    QVERIFY(dialog->isModal());
    QVERIFY(dialog->isWindow());
    // The form's size, before the layout fits it to the fonts at hand.
    QCOMPARE(MergeDialog().size(), QSize(413, 319));
    const Qt::WindowFlags flags = dialog->windowFlags();
    QCOMPARE(flags & Qt::WindowType_Mask, Qt::Dialog);
    QVERIFY(flags & Qt::WindowTitleHint);
    QVERIFY(flags & Qt::WindowCloseButtonHint);
    QVERIFY(!(flags & (Qt::WindowContextHelpButtonHint | Qt::WindowMinMaxButtonsHint)));

    QCOMPARE(Child<QGroupBox>("groupBox")->title(), QString("Rows to Merge:"));
    QCOMPARE(Child<QGroupBox>("groupBox_2")->title(), QString("Other Options:"));
    const QList<std::tuple<const char *, QString, bool, bool>> buttons{
        {"radioButton", "Flagged rows only ", false, false},
        {"radioButton_2", "Unflagged rows only ", false, false},
        {"radioButton_3", "All rows ", true, true},
        {"checkBox_2", "Include hidden rows ", false, false},
        {"checkBox", "Transpose rows and columns in the merged file", true, false}};
    for (const auto &[name, text, enabled, checked] : buttons) {
        QAbstractButton *button = Child<QAbstractButton>(name);
        QCOMPARE(button->text(), text);
        QCOMPARE(button->isEnabled(), enabled);
        QCOMPARE(button->isChecked(), checked);
    }
    for (const char *name : {"label_2", "label_4", "label_3", "label_6"})
        QCOMPARE(Child<QLabel>(name)->text(), QString());
    for (const auto &[name, text] : {std::pair{"pushButton", "Cancel"}, std::pair{"pushButton_2", "Merge..."}}) {
        QCOMPARE(Child<QPushButton>(name)->text(), QString(text));
        QVERIFY(!Child<QPushButton>(name)->autoDefault());
    }
    QCOMPARE(dialog->MergeButton(), Child<QPushButton>("pushButton_2"));
    QCOMPARE(dialog->RowsToMerge(), -1);
    QVERIFY(!dialog->IncludeHiddenRows());
    QVERIFY(!dialog->Transpose());
}

void TestMergeDialog::namesBothPanelsForTheBorderRule()
{
    QCOMPARE(dialog->styleSheet(),
             QString("QWidget#rows\n{\n\tborder: 1px solid rgb(180, 180, 180);\n\tborder-radius: 3px;\n}"));
    const QList<QWidget *> panels = dialog->findChildren<QWidget *>("rows");
    QCOMPARE(panels.size(), 2);
    QVERIFY(panels[0]->isAncestorOf(Child<QRadioButton>("radioButton")));
    QVERIFY(panels[0]->isAncestorOf(Child<QLabel>("label_3")));
    QVERIFY(panels[1]->isAncestorOf(Child<QCheckBox>("checkBox_2")));
    QVERIFY(panels[1]->isAncestorOf(Child<QCheckBox>("checkBox")));
    QCOMPARE(panels[0]->parentWidget(), Child<QGroupBox>("groupBox"));
    QCOMPARE(panels[1]->parentWidget(), Child<QGroupBox>("groupBox_2"));
}

void TestMergeDialog::preparesCountsAndEnablesChoices_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("flagged");
    QTest::addColumn<int>("hidden");
    QTest::addColumn<QStringList>("labels"); // label_2, label_4, label_3, label_6
    QTest::addColumn<bool>("flagChoices");
    QTest::addColumn<bool>("hiddenChoice");
    QTest::newRow("flagged and hidden rows") << 10 << 3 << 2 << QStringList{"(3)", "(7)", "(10)", "(2)"} << true << true;
    QTest::newRow("every row flagged") << 4 << 4 << 0 << QStringList{"(4)", "(0)", "(4)", ""} << true << false;
    QTest::newRow("no flags, rows hidden") << 8 << 0 << 1 << QStringList{"", "", "", "(1)"} << false << true;
    QTest::newRow("nothing flagged or hidden") << 8 << 0 << 0 << QStringList{"", "", "", ""} << false << false;
    QTest::newRow("empty file") << 0 << 0 << 0 << QStringList{"", "", "", ""} << false << false;
}

void TestMergeDialog::preparesCountsAndEnablesChoices()
{
    QFETCH(int, rows);
    QFETCH(int, flagged);
    QFETCH(int, hidden);
    QFETCH(QStringList, labels);
    QFETCH(bool, flagChoices);
    QFETCH(bool, hiddenChoice);
    // Start from the other state, so that each branch has to change it.
    dialog->Prepare(20, flagChoices ? 0 : 5, hiddenChoice ? 0 : 5);
    dialog->Prepare(rows, flagged, hidden);
    QStringList shown;
    for (const char *name : {"label_2", "label_4", "label_3", "label_6"})
        shown << Child<QLabel>(name)->text();
    QCOMPARE(shown, labels);
    QCOMPARE(Child<QRadioButton>("radioButton")->isEnabled(), flagChoices);
    QCOMPARE(Child<QRadioButton>("radioButton_2")->isEnabled(), flagChoices);
    QVERIFY(Child<QRadioButton>("radioButton_3")->isEnabled());
    QCOMPARE(Child<QCheckBox>("checkBox_2")->isEnabled(), hiddenChoice);
    QVERIFY(Child<QCheckBox>("checkBox")->isEnabled());
    if (!flagChoices)
        QVERIFY(Child<QRadioButton>("radioButton_3")->isDown());
}

void TestMergeDialog::clicksSetTheChoices()
{
    dialog->Prepare(10, 3, 2);
    Click("radioButton");
    QCOMPARE(dialog->RowsToMerge(), 0);
    Click("radioButton_2");
    QCOMPARE(dialog->RowsToMerge(), 1);
    QVERIFY(Child<QRadioButton>("radioButton_2")->isChecked());
    Click("radioButton_3");
    QCOMPARE(dialog->RowsToMerge(), 2);
    Click("checkBox_2");
    QVERIFY(dialog->IncludeHiddenRows());
    Click("checkBox");
    QVERIFY(dialog->Transpose());
    Click("checkBox_2");
    QVERIFY(!dialog->IncludeHiddenRows());
    Click("checkBox");
    QVERIFY(!dialog->Transpose());
    QCOMPARE(dialog->RowsToMerge(), 2);
}

void TestMergeDialog::disabledChoicesIgnoreClicks()
{
    Click("radioButton");
    Click("radioButton_2");
    Click("checkBox_2");
    QCOMPARE(dialog->RowsToMerge(), -1);
    QVERIFY(!dialog->IncludeHiddenRows());
    QVERIFY(Child<QRadioButton>("radioButton_3")->isChecked());
}

// Preparing changes widgets only; the choices change by clicks alone.
void TestMergeDialog::earlierChoicesOutliveLaterPreparing()
{
    dialog->Prepare(10, 3, 2);
    Click("radioButton");
    Click("checkBox_2");
    Click("checkBox");
    dialog->reject();

    dialog->Prepare(6, 0, 0);
    dialog->show();
    QRadioButton *flaggedOnly = Child<QRadioButton>("radioButton");
    QRadioButton *allRows = Child<QRadioButton>("radioButton_3");
    QVERIFY(!flaggedOnly->isEnabled());
    QVERIFY(flaggedOnly->isChecked());
    QVERIFY(allRows->isDown());
    QVERIFY(!allRows->isChecked());
    QVERIFY(!Child<QCheckBox>("checkBox_2")->isChecked());
    QVERIFY(!Child<QCheckBox>("checkBox_2")->isEnabled());
    QCOMPARE(dialog->RowsToMerge(), 0);
    QVERIFY(dialog->IncludeHiddenRows());
    QVERIFY(dialog->Transpose());

    // Only a real click on "All rows " changes the choice.
    Click("radioButton_3");
    QCOMPARE(dialog->RowsToMerge(), 2);
    QVERIFY(allRows->isChecked());
}

void TestMergeDialog::cancelRejectsAndMergeLeavesItOpen()
{
    QSignalSpy merges(dialog->MergeButton(), &QPushButton::clicked);
    Click("pushButton_2");
    QCOMPARE(merges.count(), 1);
    QVERIFY(dialog->isVisible());

    QSignalSpy rejected(dialog, &QDialog::rejected);
    Click("pushButton");
    QCOMPARE(rejected.count(), 1);
    QVERIFY(!dialog->isVisible());
    QCOMPARE(dialog->result(), int(QDialog::Rejected));
}

ZEPHLANE_TEST_MAIN(TestMergeDialog)
#include "tst_mergedialog.moc"
