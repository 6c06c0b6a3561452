// MainWindow's cloud panel: signing in, the experiment list, viewing and
// exporting an experiment's files, and the change between the two tabs.

#include "mainwindow.h"

// Stand-in until the cloud panel is written.
void MainWindow::CloudLogin()
{
}

// Stand-in until the cloud panel is written.
void MainWindow::UpdateCloudParticipantsInfo(int)
{
}

// Stand-in until the cloud panel is written.
void MainWindow::CloudExpListDoubleClicked()
{
}

// Stand-in until the cloud panel is written.
void MainWindow::OpenCloudFiles()
{
}

// Stand-in until the cloud panel is written.
void MainWindow::ExportDataZip()
{
}

// Stand-in until the cloud panel is written.
void MainWindow::BackToCloudExpList()
{
}

// Stand-in until the cloud panel is written.
void MainWindow::DropDataFilesCleanUI(int)
{
}

// Stand-in until the cloud panel is written.
void MainWindow::OnRefreshCloudParticipants()
{
}

// Stand-in until the cloud panel is written.
void MainWindow::BackToCloudLogin()
{
}
