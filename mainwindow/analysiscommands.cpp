// SPDX-License-Identifier: GPL-3.0-or-later
// MainWindow's share of the analysis windows: opening them, and which
// files they see.

#include "mainwindow.h"

#include "analysissession.h"
#include "datafile.h"
#include "distributionswindow.h"
#include "participantsummarywindow.h"

// The record in focus: one file, or the files of a combined record in the
// order it took them. With no record in focus, nothing.
void MainWindow::ShowFilesToAnalysis(const QVector<int> &rows)
{
    QVector<DataFile *> shown;
    for (const int row : rows)
        shown.append(files[row].get());
    analysisSession->ShowFiles(currentFile ? &currentFile->GetMainModel() : nullptr, shown);
}

void MainWindow::OpenParticipantSummary()
{
    if (!summaryWindow)
        summaryWindow = new ParticipantSummaryWindow(*analysisSession, this);
    summaryWindow->Open();
}

void MainWindow::OpenDistributions()
{
    if (!distributionsWindow)
        distributionsWindow = new DistributionsWindow(*analysisSession, this);
    distributionsWindow->Open();
}
