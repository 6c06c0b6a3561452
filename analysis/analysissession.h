// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "participanttrials.h"
#include "summaryresult.h"
#include "summarysettings.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QVector>

class DataFile;
class MainModel;

// What the analysis windows share: the files in view as participants, the
// settings both windows edit, and the participant summary computed from
// them. Owned by the main window, which tells it which files are in view;
// it follows the rows hidden and shown in the table in view by itself. It
// computes only while an analysis window is open (a viewer), so that the
// main window costs nothing more while none is.
class AnalysisSession : public QObject
{
    Q_OBJECT

public:
    // Reads the settings from the group "Analysis" of the native store;
    // stored settings that are not usable give the defaults.
    explicit AnalysisSession(QObject *parent = nullptr);

    // The settings as the user chose them. The result is computed with the
    // condition columns among them that the files in view have, in the
    // order of ConditionColumns() (Result().settings), so a column ticked
    // for one experiment is ticked again when its files return to view.
    const SummarySettings &Settings() const { return settings; }
    // Takes settings that pass SummarySettings::Check() (others are
    // passed over), emits SettingsChanged, then computes again and emits
    // ResultChanged. Equal settings change nothing.
    void SetSettings(const SummarySettings &settings);
    // Written when the summary window closes.
    void SaveSettings() const;

    // The files in view: `view` is the table in view, which holds the rows
    // of `files` one after another, in that order, as a combined record
    // does; a single file's own table holds its rows alone. A null view
    // and no files: nothing is in view.
    void ShowFiles(MainModel *view, const QVector<DataFile *> &files);

    // One call each when an analysis window opens and when it closes. The
    // first computes at once; after the last, the files' rows and the
    // result are let go.
    void AddViewer();
    void RemoveViewer();
    bool IsActive() const { return viewers > 0; }

    // One participant per file in view, in the view's order, names made
    // unique by ParticipantNames, the rows hidden in the table marked.
    // Empty while no analysis window is open.
    const QVector<ParticipantTrials> &Participants() const { return participants; }
    // The paths of the files in view, for the equivalent command line.
    QStringList Paths() const;
    // Whether the table in view hides rows, which the command line reads.
    bool HasHiddenRows() const;
    // Every condition column that the files in view have, in file order.
    QStringList ConditionColumns() const;
    // The summary of Participants() under Settings(); current while an
    // analysis window is open, and without participants while no file is
    // in view.
    const SummaryResult &Result() const { return result; }
    // The zephlane-summary command that computes Result() from the files,
    // their hidden rows aside.
    QString CommandLine() const;

    // Flags every row of the table in view that the trimming procedure
    // removes (too fast or too slow); a flag already set stays, none is
    // cleared. Rows left out for other reasons stay as they are: an invalid
    // time or a participant's low accuracy is no trimming, and hiding those
    // rows would take them out of the counts. Returns the number of flags set.
    int FlagExcludedRows();

signals:
    void SettingsChanged();
    // After every computation: files in view, rows hidden or shown, settings.
    void ResultChanged();

private:
    // One file of the view: where its rows stand in the view's table.
    struct ViewFile
    {
        QPointer<const MainModel> model;
        QString path;
        int firstRow;
        int rowCount;
    };

    void ReadParticipants();
    const ParticipantTrials &TrialsOf(const ViewFile &file);
    void ForgetFile(QObject *model);
    void MarkHiddenRows();
    void ViewRowsChanged(int infoType);
    void Compute();
    SummarySettings SettingsInView() const;

    SummarySettings settings;
    QPointer<MainModel> view;
    QMetaObject::Connection viewConnection;
    QVector<ViewFile> viewFiles;
    int viewers = 0;
    // Each file's rows read once while a viewer is open, by its own table;
    // a file's entry goes with its table.
    QHash<const QObject *, ParticipantTrials> readFiles;
    QVector<ParticipantTrials> participants;
    SummaryResult result;
};
