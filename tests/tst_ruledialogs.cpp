// SPDX-License-Identifier: GPL-3.0-or-later
// The flag rule dialog and the row colours dialog, opened from the Rows
// menu and filled in as a user does.

#include "windowdriver.h"

#include "flagspecialdialog.h"
#include "rowcolorsdialog.h"

class TestRuleDialogs : public QObject
{
    Q_OBJECT

    std::unique_ptr<WindowDriver> driver;

    template <typename T>
    static T *In(QWidget *dialog, const QString &name) { return dialog->findChild<T *>(name); }
    // Steps: "open" adds a file with reaction times 300, 500, 400 and 600
    // (mean 450, deviation 111.80: one row in each zone of the bell curve);
    // "flag R" clicks row R's flag; "x:N" clicks the bell curve at x = N;
    // "#rrggbb" is the answer to the next colour dialog, which is cancelled
    // without one; "name=value" picks entry `value` of a drop-down from its
    // list or types into a field; a bare name clicks that box or button.
    void Act(QWidget *dialog, const QString &step)
    {
        const QString name = step.section('=', 0, 0);
        QComboBox *box = In<QComboBox>(dialog, name);
        if (step == "open") {
            driver->Open(WindowDriver::Trials("B1 T1 C 300, B1 T2 SC 500, B2 T1 E 400, B2 T2 NR 600"));
        } else if (step.startsWith("flag ")) {
            WindowDriver::ClickCell(driver->Raw(), step.mid(5).toInt(), 0);
        } else if (step.startsWith("x:")) {
            QTest::mouseClick(In<QWidget>(dialog, "label_8"), Qt::LeftButton, {}, QPoint(step.mid(2).toInt(), 40));
        } else if (step.startsWith('#')) {
            driver->Catcher().QueueColorAnswer(QColor(step));
        } else if (box) {
            box->showPopup();
            const QRect entry = box->view()->visualRect(box->model()->index(step.section('=', 1).toInt(), 0));
            QTest::mouseClick(box->view()->viewport(), Qt::LeftButton, {}, entry.center());
        } else if (step.contains('=')) {
            QTest::keyClicks(In<QWidget>(dialog, name), step.section('=', 1));
        } else {
            QTest::mouseClick(In<QWidget>(dialog, name), Qt::LeftButton, {}, QPoint(6, 8));
        }
    }
    QString Background(int row, int column) const
    {
        const QColor color = driver->Raw()->model()->index(row, column).data(Qt::BackgroundRole).value<QColor>();
        return color.isValid() ? color.name() : "-";
    }

private slots:
    void init() { driver = std::make_unique<WindowDriver>(); }
    void cleanup() { driver.reset(); }

    // The result: the count shown and the picture, the flags of the rows,
    // the action in the heading, and the flagged rows line at the next opening.
    void rulesCountAsTheyAreFilledInAndOkApplies_data()
    {
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<QString>("result");
        QTest::newRow("outer zones") << QStringList{"x:63", "x:117", "lineEdit=1", "pushButton_2"}
                                     << "2 9|0 3|Flag|2 out of 4 rows are flagged";
        QTest::newRow("inner zones from their first pixel, clicked twice")
            << QStringList{"x:64", "x:20", "x:90", "x:20", "lineEdit=1", "pushButton_2"}
            << "2 6|1 2|Flag|2 out of 4 rows are flagged";
        QTest::newRow("no deviations given") << QStringList{"x:20", "x:120", "pushButton_2"}
                                             << "4 9|0 1 2 3|Flag|All 4 rows are flagged";
        QTest::newRow("error codes") << QStringList{"comboBox_2=1", "checkBox_6", "checkBox_8", "pushButton_2"}
                                     << "2 0|0 1|Flag|2 out of 4 rows are flagged";
        QTest::newRow("time limits")
            << QStringList{"comboBox_2=2", "checkBox_10", "lineEdit_2=400", "checkBox_9", "lineEdit_3=600",
                           "pushButton_2"}
            << "3 0|0 2 3|Flag|3 out of 4 rows are flagged";
        QTest::newRow("unflag") << QStringList{"flag 1", "flag 2", "comboBox=1", "x:20", "pushButton_2"}
                                << "2 1|1|Unflag|1 out of 4 rows are flagged";
        // Back on a page, its last count shows again.
        QTest::newRow("time range, cancelled after changing pages")
            << QStringList{"comboBox_2=3", "lineEdit_4=400", "lineEdit_5=500", "comboBox_2=1", "checkBox_8",
                           "comboBox_2=3", "pushButton"}
            << "2 0||Flag|No rows are currently flagged";
    }

    void rulesCountAsTheyAreFilledInAndOkApplies()
    {
        QFETCH(QStringList, steps);
        QFETCH(QString, result);
        auto *dialog = driver->Window().findChild<FlagSpecialDialog *>();
        Act(dialog, "open");
        driver->Trigger("actionFlag_Special");
        for (const QString &step : steps)
            Act(dialog, step);
        QString shown = In<QLabel>(dialog, "label_3")->text();
        const QImage picture = In<QLabel>(dialog, "label_8")->pixmap(Qt::ReturnByValue).toImage();
        for (int zones = 0; zones < 16; ++zones) {
            if (picture == QPixmap(QString(":/img/bellcurve%1.png").arg(zones)).toImage())
                shown += ' ' + QString::number(zones);
        }
        shown += '|' + TableContents::FlaggedRows(*driver->Raw()->model());
        QVERIFY(!dialog->isVisible());
        driver->Trigger("actionFlag_Special");
        QCOMPARE(In<QLabel>(dialog, "label_9")->text() + In<QLabel>(dialog, "label_6")->text(),
                 "where the average 'a' = 450.00 ms and\nthe desired standard deviations 's' = (1 standard deviation "
                 "is 111.80 ms)");
        QCOMPARE(shown + '|' + In<QLabel>(dialog, "label_4")->text().section(' ', 0, 0) + '|'
                     + In<QLabel>(dialog, "label_10")->text(),
                 result);
    }

    // The result: the Reaction Time cell of each row, the Session Number cell
    // of the first, and the entries shown, row type by row type.
    void colourChoicesReachTheirRows_data()
    {
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<QString>("result");
        QTest::newRow("each code") << QStringList{"open", "comboBox=2", "comboBox_3=3", "comboBox_4=1", "comboBox_2=4"}
                                   << "#00ff00 #a0a0a4 #ff0000 #000000|-|23140";
        QTest::newRow("other colour asked again, then cancelled")
            << QStringList{"open", "#123456", "comboBox_2=5", "#abcdef", "comboBox_2=5", "comboBox_2=5"}
            << "- #abcdef - -|-|00050";
        QTest::newRow("cancel restores the entry; no colour clears")
            << QStringList{"open", "comboBox_3=3", "comboBox_3=5", "comboBox=2", "comboBox=0"}
            << "- - #ff0000 -|-|03000";
        QTest::newRow("entire row, chosen before a file") << QStringList{"comboBox=2", "radioButton_2", "open"}
                                                          << "#00ff00 - - -|#00ff00|20000";
        QTest::newRow("flagged rows override, entire row")
            << QStringList{"open", "flag 0", "flag 2", "comboBox=2", "comboBox_5=4", "radioButton_2", "checkBox"}
            << "#a0a0a4 - #a0a0a4 -|#a0a0a4|20004";
    }

    void colourChoicesReachTheirRows()
    {
        QFETCH(QStringList, steps);
        QFETCH(QString, result);
        driver->Trigger("actionRow_Colors");
        auto *dialog = driver->Window().findChild<RowColorsDialog *>();
        for (const QString &step : steps)
            Act(dialog, step);
        QStringList cells;
        for (int row = 0; row < 4; ++row)
            cells << Background(row, 12);
        QString shown;
        for (const char *name : {"comboBox", "comboBox_3", "comboBox_4", "comboBox_2", "comboBox_5"})
            shown += QString::number(In<QComboBox>(dialog, name)->currentIndex());
        QCOMPARE(cells.join(' ') + '|' + Background(0, 2) + '|' + shown, result);
    }
};

ZEPHLANE_TEST_MAIN(TestRuleDialogs)
#include "tst_ruledialogs.moc"
