// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysissession.h"

#include "datafile.h"
#include "mainmodel.h"
#include "participantnames.h"
#include "summarycomputation.h"
#include "trialextractor.h"

#include <QSettings>

#include <algorithm>

namespace {

const char *const kOrganisation = "Talvox";
const char *const kApplication = "Zephlane";
const char *const kGroup = "Analysis";

} // namespace

AnalysisSession::AnalysisSession(QObject *parent)
    : QObject(parent)
{
    setObjectName(QStringLiteral("analysisSession"));
    QSettings store(QString::fromLatin1(kOrganisation), QString::fromLatin1(kApplication));
    store.beginGroup(QString::fromLatin1(kGroup));
    const SummarySettings stored = SummarySettings::Load(store);
    if (stored.Check() == SummarySettings::Problem::None)
        settings = stored;
}

void AnalysisSession::SetSettings(const SummarySettings &settings)
{
    if (settings == this->settings || settings.Check() != SummarySettings::Problem::None)
        return;
    this->settings = settings;
    emit SettingsChanged();
    Compute();
}

void AnalysisSession::SaveSettings() const
{
    QSettings store(QString::fromLatin1(kOrganisation), QString::fromLatin1(kApplication));
    store.beginGroup(QString::fromLatin1(kGroup));
    settings.Save(store);
}

void AnalysisSession::ShowFiles(MainModel *view, const QVector<DataFile *> &files)
{
    disconnect(viewConnection);
    this->view = view;
    if (view)
        viewConnection = connect(view, &MainModel::RowChanged, this, &AnalysisSession::ViewRowsChanged);
    viewFiles.clear();
    int firstRow = 0;
    for (DataFile *file : files) {
        const MainModel &model = file->GetMainModel();
        viewFiles.append(ViewFile{&model, file->Path(), firstRow, model.TotalRowCount()});
        firstRow += model.TotalRowCount();
    }
    if (IsActive()) {
        ReadParticipants();
        Compute();
    }
}

void AnalysisSession::AddViewer()
{
    if (viewers++ > 0)
        return;
    ReadParticipants();
    Compute();
}

void AnalysisSession::RemoveViewer()
{
    if (viewers == 0 || --viewers > 0)
        return;
    readFiles.clear();
    participants.clear();
    result = SummaryResult();
}

QStringList AnalysisSession::Paths() const
{
    QStringList paths;
    for (const ViewFile &file : viewFiles)
        paths.append(file.path);
    return paths;
}

bool AnalysisSession::HasHiddenRows() const
{
    return view && view->HiddenRowCount() > 0;
}

QStringList AnalysisSession::ConditionColumns() const
{
    return ParticipantTrials::ConditionNamesOf(participants);
}

QString AnalysisSession::CommandLine() const
{
    return SettingsInView().CommandLine(Paths());
}

// Visible rows are flagged through the view's own table, by their row in
// it; rows hidden there are already out of the summary and stay unflagged.
int AnalysisSession::FlagExcludedRows()
{
    if (!view)
        return 0;
    QVector<int> rows;
    for (const ExcludedRow &excluded : qAsConst(result.exclusions)) {
        if (excluded.reason == ExclusionReason::TooFast || excluded.reason == ExclusionReason::TooSlow)
            rows.append(viewFiles[excluded.participant].firstRow + excluded.fileRow);
    }
    return view->FlagFileRows(rows);
}

// A file that has left the view keeps its rows here while a viewer is
// open, so that selecting it again does not read its cells again.
void AnalysisSession::ReadParticipants()
{
    participants.clear();
    // A file deleted while it was still named here leaves the view.
    viewFiles.erase(std::remove_if(viewFiles.begin(), viewFiles.end(), [](const ViewFile &file) { return !file.model; }),
                    viewFiles.end());
    const QStringList names = ParticipantNames::ForPaths(Paths());
    for (int i = 0; i < viewFiles.size(); ++i) {
        participants.append(TrialsOf(viewFiles[i]));
        participants.last().name = names[i];
    }
    MarkHiddenRows();
}

const ParticipantTrials &AnalysisSession::TrialsOf(const ViewFile &file)
{
    const MainModel *model = file.model;
    auto known = readFiles.find(model);
    if (known == readFiles.end()) {
        known = readFiles.insert(model, TrialExtractor::Extract(*model, 0, file.rowCount, QString()));
        connect(model, &QObject::destroyed, this, &AnalysisSession::ForgetFile, Qt::UniqueConnection);
    }
    return *known;
}

void AnalysisSession::ForgetFile(QObject *model)
{
    readFiles.remove(model);
}

void AnalysisSession::MarkHiddenRows()
{
    if (!view)
        return;
    for (int i = 0; i < participants.size(); ++i)
        participants[i].hidden = TrialExtractor::HiddenRows(*view, viewFiles[i].firstRow, viewFiles[i].rowCount);
}

// RowChanged 1: rows were hidden or shown; 0, a flag, changes nothing here.
void AnalysisSession::ViewRowsChanged(int infoType)
{
    if (infoType != 1 || !IsActive())
        return;
    MarkHiddenRows();
    Compute();
}

void AnalysisSession::Compute()
{
    if (!IsActive())
        return;
    result = SummaryComputation::Run(participants, SettingsInView());
    emit ResultChanged();
}

// Only the ticked columns that the files in view have, in their order: a
// column no file in view has would group nothing and make a command line
// that the tool refuses.
SummarySettings AnalysisSession::SettingsInView() const
{
    SummarySettings inView = settings;
    inView.conditionColumns.clear();
    for (const QString &column : ConditionColumns()) {
        if (settings.conditionColumns.contains(column))
            inView.conditionColumns.append(column);
    }
    return inView;
}
