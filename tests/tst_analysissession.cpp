// SPDX-License-Identifier: GPL-3.0-or-later
// The analysis session as the main window feeds it: the files in view as
// participants, in a combined view's order, the rows hidden in the table,
// the settings and the summary computed from them, and nothing computed
// while no analysis window is open.

#include "analysissession.h"
#include "exclusionrecord.h"
#include "summarytable.h"
#include "texttablemodel.h"
#include "windowdriver.h"

namespace {

// The named columns of a table, as the summary window shows it.
QString Fields(const TextTable &table, const QStringList &titles)
{
    TextTableModel model;
    model.SetTable(table);
    return TableContents::Fields(model, titles);
}

SummarySettings Absolute(const QString &max, const QStringList &columns = {})
{
    SummarySettings settings;
    settings.procedure = SummarySettings::Procedure::Absolute;
    TypedNumber::Read(max, &settings.max);
    settings.conditionColumns = columns;
    return settings;
}

} // namespace

class TestAnalysisSession : public QObject
{
    Q_OBJECT

    std::unique_ptr<WindowDriver> driver;

    AnalysisSession &Session() const { return *driver->Find<AnalysisSession>("analysisSession"); }
    // The participants with their hidden rows (file rows from 1), the
    // lines of the table, then the rows left out.
    QString Seen() const
    {
        QStringList participants;
        for (const ParticipantTrials &trials : Session().Participants()) {
            QString hidden;
            for (int row = 0; row < trials.RowCount(); ++row)
                hidden += trials.IsHidden(row) ? QString::number(row + 1) : QString();
            participants.append(trials.name + (hidden.isEmpty() ? "" : " hides " + hidden));
        }
        const SummaryResult &result = Session().Result();
        return participants.join(", ") + " | " + Fields(SummaryTable::Long(result), {"participant", "trials", "rt_mean"})
               + " | " + Fields(ExclusionRecord::Of(result), {"participant", "row", "reason"});
    }
    // Two participants: "a.txt" with a time of 5000 ms, "b.txt" with one
    // that is not a number, each in its own list row.
    void OpenTwo()
    {
        driver->AddFiles({driver->Write("a.txt", WindowDriver::Trials("B1 T1 C 300, B1 T2 C 320, B2 T1 E 500, B2 T2 C 5000")),
                          driver->Write("b.txt", WindowDriver::Trials("B1 T1 C 400, B2 T2 C abc"))});
    }

private slots:
    void init()
    {
        QSettings("Talvox", "Zephlane").remove("Analysis");
        driver = std::make_unique<WindowDriver>();
    }
    void cleanup() { driver.reset(); }

    // The menu stands between Columns and Help, and no two of the window's
    // actions answer to one key.
    void analysisMenuKeepsTheOthersAsTheyAre()
    {
        QStringList titles;
        for (QAction *menu : driver->Find<QMenuBar>("menuBar")->actions())
            titles << menu->text();
        QCOMPARE(titles, QStringList({"File", "Edit", "Rows", "Columns", "Analysis", "Help"}));
        QStringList shortcuts;
        for (QAction *action : driver->Window().findChildren<QAction *>()) {
            if (!action->shortcut().isEmpty())
                shortcuts << action->shortcut().toString();
        }
        QCOMPARE(shortcuts.removeDuplicates(), 0);
        QVERIFY(shortcuts.contains(driver->Find<QAction>("actionParticipant_Summary")->shortcut().toString()));
    }

    // Files opened and rows hidden with no analysis window open are read
    // only when one opens; after the last closes, nothing is kept.
    void computesOnlyWhileAWindowIsOpen()
    {
        QSignalSpy results(&Session(), &AnalysisSession::ResultChanged);
        OpenTwo();
        driver->ClickRows({0});
        WindowDriver::ClickCell(driver->Raw(), 1, 2);
        driver->Trigger("actionHide_Selected_Rows");
        Session().SetSettings(Absolute("3000"));
        QCOMPARE(results.count(), 0);
        QCOMPARE(Seen(), QString(" |  | "));

        Session().AddViewer();
        Session().AddViewer();
        QCOMPARE(results.count(), 1);
        QCOMPARE(Seen(), QString("a.txt hides 2 | a.txt 3 300.00 | a.txt 2 hidden, a.txt 4 too_slow"));
        Session().RemoveViewer();
        QVERIFY(Session().IsActive());
        Session().RemoveViewer();
        QVERIFY(!Session().IsActive());
        QCOMPARE(Seen(), QString(" |  | "));
    }

    // One file, then the other, then both in the order they were selected,
    // which is the combined view's; two files of one name are told apart.
    void followsTheFilesInView()
    {
        OpenTwo();
        Session().AddViewer();
        QStringList seen{Seen()};
        driver->ClickRows({1});
        seen << Seen();
        driver->ClickRows({1, 0});
        seen << Seen() << Session().Paths().join(' ').remove(driver->Path("") + '/');
        QCOMPARE(seen, QStringList({"a.txt | a.txt 4 1873.33 | ", "b.txt | b.txt 2 400.00 | b.txt 2 invalid_rt",
                                    "b.txt, a.txt | b.txt 2 400.00, a.txt 4 1873.33 | b.txt 2 invalid_rt", "b.txt a.txt"}));

        QDir().mkpath(driver->Path("again"));
        driver->AddFiles({driver->Write("again/a.txt", WindowDriver::Trials("B1 T1 C 250"))});
        driver->ClickRows({0, 2});
        QCOMPARE(Seen(), QString("a.txt, a.txt (2) | a.txt 4 1873.33, a.txt (2) 1 250.00 | "));
        QVERIFY(!Session().HasHiddenRows());
    }

    // Rows hidden in a combined view, by selection or by flag, leave the
    // summary as hidden rows of the file they came from; shown again, they
    // return. Flags alone change nothing.
    void followsHiddenAndShownRows()
    {
        OpenTwo();
        driver->ClickRows({0, 1});
        Session().AddViewer();
        QSignalSpy results(&Session(), &AnalysisSession::ResultChanged);
        WindowDriver::ClickCell(driver->Raw(), 0, 0);
        QCOMPARE(results.count(), 0);
        WindowDriver::ClickCell(driver->Raw(), 4, 2);
        driver->Trigger("actionHide_Selected_Rows");
        QStringList seen{Seen()};
        driver->Trigger("actionHide_Flagged_Rows");
        seen << Seen();
        QVERIFY(Session().HasHiddenRows());
        driver->Trigger("actionShow_All_Rows");
        seen << Seen();
        QCOMPARE(results.count(), 3);
        QCOMPARE(seen, QStringList({"a.txt, b.txt hides 1 | a.txt 4 1873.33, b.txt 1  | b.txt 1 hidden, b.txt 2 invalid_rt",
                                    "a.txt hides 1, b.txt hides 1 | a.txt 3 2660.00, b.txt 1  "
                                    "| a.txt 1 hidden, b.txt 1 hidden, b.txt 2 invalid_rt",
                                    "a.txt, b.txt | a.txt 4 1873.33, b.txt 2 400.00 | b.txt 2 invalid_rt"}));
        QVERIFY(!Session().HasHiddenRows());
    }

    // In a combined view, each row the procedure removes is flagged at its
    // place in the combined table; rows hidden there, rows left out for an
    // invalid time and flags already set stay as they are, and no flag is
    // cleared.
    void flagsTheRowsLeftOutInTheTableInView()
    {
        OpenTwo();
        driver->ClickRows({1, 0});
        Session().SetSettings(Absolute("3000"));
        Session().AddViewer();
        WindowDriver::ClickCell(driver->Raw(), 0, 0);
        WindowDriver::ClickCell(driver->Raw(), 2, 2);
        driver->Trigger("actionHide_Selected_Rows");
        QCOMPARE(Session().FlagExcludedRows(), 1);
        QCOMPARE(Session().FlagExcludedRows(), 0);
        QCOMPARE(TableContents::FlaggedRows(*driver->Raw()->model()), QString("0 4"));
        QCOMPARE(driver->Find<QLabel>("flaggedRows")->text(), QString(" (2 flagged, "));
    }

    // New settings are announced before the result they give; equal or
    // unusable settings change nothing.
    void recomputesForNewSettings()
    {
        OpenTwo();
        Session().AddViewer();
        QStringList signalOrder;
        connect(&Session(), &AnalysisSession::SettingsChanged, this, [&] { signalOrder << "settings"; });
        connect(&Session(), &AnalysisSession::ResultChanged, this, [&] { signalOrder << "result"; });
        Session().SetSettings(Absolute("3000"));
        Session().SetSettings(Absolute("3000"));
        Session().SetSettings(Absolute("-1", {"Block Name"}));
        SummarySettings crossed = Absolute("300");
        TypedNumber::Read("400", &crossed.min);
        Session().SetSettings(crossed);
        QCOMPARE(signalOrder, QStringList({"settings", "result", "settings", "result"}));
        QCOMPARE(Seen(), QString("a.txt | a.txt 2 , a.txt 2  | a.txt 1 too_slow, a.txt 2 too_slow, a.txt 4 too_slow"));
    }

    // Columns are ticked once for all files; those the files in view lack
    // take no part, and the others stand in the order of the files' columns.
    void groupsByTheTickedColumnsOfTheFilesInView()
    {
        const DataFileBuilder plain = DataFileBuilder().Columns("Block/Name,Error/Code,Reaction/Time").Rows({"B1,C,500"});
        driver->AddFiles({driver->Write("plain.txt", plain),
                          driver->Write("product.txt", WindowDriver::Trials("B1 T1 C 300 con"))});
        Session().AddViewer();
        Session().SetSettings(Absolute("3000", {"Congruency", "Block Name"}));
        QStringList seen{Session().ConditionColumns().join('|'), Session().Result().settings.conditionColumns.join('|'),
                         Session().CommandLine().remove(driver->Path("") + '/')};
        driver->ClickRows({1});
        seen << Session().ConditionColumns().join('|') << Session().Result().settings.conditionColumns.join('|')
             << Session().CommandLine().remove(driver->Path("") + '/');
        QCOMPARE(seen, QStringList({"Block Name", "Block Name",
                                    "zephlane-summary --by 'Block Name' --procedure absolute --max 3000 plain.txt",
                                    "Block Name|Trial Name|Congruency", "Block Name|Congruency",
                                    "zephlane-summary --by 'Block Name' --by Congruency --procedure absolute --max 3000 "
                                    "product.txt"}));
        QCOMPARE(Session().Settings().conditionColumns, QStringList({"Congruency", "Block Name"}));
    }

    // Saved in the group "Analysis" and read back by the next session;
    // stored settings that cannot be used give the defaults.
    void keepsItsSettingsInTheStore()
    {
        SummarySettings settings = Absolute("3000", {"Congruency"});
        settings.layout = SummarySettings::Layout::Wide;
        Session().SetSettings(settings);
        Session().SaveSettings();
        QCOMPARE(QSettings().value("Analysis/procedure").toString(), QString("absolute"));
        QVERIFY(AnalysisSession().Settings() == settings);

        QSettings().setValue("Analysis/min", "4000");
        QVERIFY(AnalysisSession().Settings() == SummarySettings());
    }
};

ZEPHLANE_TEST_MAIN(TestAnalysisSession)
#include "tst_analysissession.moc"
