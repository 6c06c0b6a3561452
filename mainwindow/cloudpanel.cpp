// SPDX-License-Identifier: GPL-3.0-or-later
// MainWindow's cloud panel: signing in, the experiment list, viewing and
// exporting an experiment's files, and the change between the two tabs.

#include "mainwindow.h"
#include "ui_mainwindow.h"

#include "datafile.h"
#include "informationbox.h"

#include <QDate>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QSettings>

namespace {

const char *const kRefreshLink =
    "<html><head/><body><p><span style=\"color:#666666;\">participants (</span><a href=\"refresh\">"
    "<span style=\"color:#1460ff;\">refresh</span></a><span style=\" color:#666666;\">)</span></p>"
    "</body></html>";

void ShowMessage(QWidget *parent, const char *text)
{
    QMessageBox box(QMessageBox::NoIcon, QString(), QString::fromLatin1(text), QMessageBox::Ok, parent);
    box.exec();
}

// What the cache tells of a limit that stopped its work, each text once.
void ShowCacheNotices(QStringList notices)
{
    notices.removeAll(QString());
    notices.removeDuplicates();
    for (const QString &notice : notices)
        ShowInformationBox(QStringLiteral("Zephlane"), notice);
}

} // namespace

// A failed sign-in, for whatever reason, ends on the one error page. Events
// are let through twice so that the progress pages are painted before the
// window blocks on the network; nothing guards against a second press of
// Connect meanwhile.
void MainWindow::CloudLogin()
{
    ui->stack_login_progress->setCurrentIndex(1);
    QSettings credentials(CredentialsPath(), QSettings::IniFormat);
    const QString email = ui->edit_subscriber_email->text();
    const QString password = ui->edit_subscriber_pwd->text();
    ui->stack_login_progress->setCurrentIndex(1);
    QCoreApplication::processEvents();
    const bool signedIn =
        cloudClient.Login(email.toLocal8Bit().constData(), password.toLocal8Bit().constData());
    ui->list_of_cloud_experiments->clear();
    if (signedIn)
        ShowCloudAccount(credentials, email, password);
    ui->stack_login_progress->setCurrentIndex(signedIn ? 0 : 3);
}

// Every experiment's rt_info is fetched at each sign-in, one after the
// other, and the last experiment of the list is the one selected.
void MainWindow::ShowCloudAccount(QSettings &credentials, const QString &email, const QString &password)
{
    ui->stack_login_progress->setCurrentIndex(2);
    QCoreApplication::processEvents();
    cloudClient.GetProfile(cloudProfile);
    StoreCredentials(credentials, email, password);
    ui->stack_cloud->setCurrentIndex(2);
    ui->stack_xpt_info->setCurrentIndex(1);
    cloudClient.GetExperiments();
    cloudExperiments = cloudClient.Experiments();
    QStringList notices;
    for (CloudExperiment &experiment : *cloudExperiments) {
        notices.append(cloudCache.UpdateParticipants(experiment.code, experiment));
        ui->list_of_cloud_experiments->addItem(experiment.name);
    }
    ShowCacheNotices(notices);
    ui->stack_xpt_info->setCurrentIndex(cloudExperiments->isEmpty() ? 4 : 0);
    ui->list_of_cloud_experiments->setCurrentRow(ui->list_of_cloud_experiments->count() - 1);
    ui->label_current_user->setText(cloudProfile.email);
}

// The values go in as typed, in clear text, so the file is made readable by
// its owner alone before they are written; rewriting it keeps that.
void MainWindow::StoreCredentials(QSettings &credentials, const QString &email, const QString &password)
{
    QFile file(credentials.fileName());
    QDir().mkpath(QFileInfo(file).absolutePath());
    if (file.open(QIODevice::Append))
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    file.close();
    credentials.setValue(QStringLiteral("Cloud/email"), email);
    credentials.setValue(QStringLiteral("Cloud/pw"), password);
    credentials.sync();
}

// An experiment ends after its expiry day: on that day 0 days remain, and a
// date that cannot be read counts as that day.
void MainWindow::UpdateCloudParticipantsInfo(int currentRow)
{
    const CloudExperiment *experiment = ExperimentAt(currentRow);
    if (experiment == nullptr)
        return;
    const int participants = experiment->participants;
    const QDate expiry = QDate::fromString(experiment->expiryDate, Qt::ISODate);
    const int days = int(QDate::currentDate().daysTo(expiry));
    const bool ended = days < 0;
    const bool hasData = participants != 0;

    ui->stack_xpt_info->setCurrentIndex(!hasData && ended ? 1 : 0);
    ui->label_num_participants->setText(QString::number(participants));
    ui->label_days_remaining->setText(QString::number(days));
    ui->btn_select_xpt->setEnabled(hasData);
    ui->btn_export->setEnabled(hasData);
    ui->label_num_participants->setVisible(hasData);
    ui->label_days_remaining->setVisible(!ended);
    ui->label_participants_refresh->setText(hasData ? QString::fromLatin1(kRefreshLink)
                                                    : QStringLiteral("No data collected yet"));
    ui->label_exp_days_remaining->setText(ended ? QStringLiteral("Experiment has ended")
                                                : QStringLiteral("days remaining"));
}

// The experiment of a row of the list, or none. A second sign-in started
// while the first let events through can leave more rows than experiments.
CloudExperiment *MainWindow::ExperimentAt(int row) const
{
    if (cloudExperiments == nullptr || row < 0 || row >= cloudExperiments->size())
        return nullptr;
    return &(*cloudExperiments)[row];
}

void MainWindow::CloudExpListDoubleClicked()
{
    OpenCloudFiles();
}

// The open files are closed before anything else is decided, also when the
// experiment turns out to have nothing to show. Files chosen in the file
// dialog that an empty data directory leads to count as cloud files too.
void MainWindow::OpenCloudFiles()
{
    const CloudExperiment *experiment = ExperimentAt(ui->list_of_cloud_experiments->currentRow());
    if (experiment == nullptr)
        return;
    DropDataFilesCleanUI(0);
    if (experiment->participants == 0) {
        ShowMessage(this, "No data files to view!");
        return;
    }
    ui->stack_cloud->setCurrentIndex(1);
    ShowCacheNotices({cloudCache.RefreshExperimentData(experiment->code, experiment->participants)});
    OpenFiles(CloudCache::DataFiles(experiment->code));
    cloudFilesShown = true;
}

// The cached archive is copied and nothing is downloaded: an experiment
// never viewed here has none, and the copy then fails in silence after the
// chosen file was already removed.
void MainWindow::ExportDataZip()
{
    const CloudExperiment *experiment = ExperimentAt(ui->list_of_cloud_experiments->currentRow());
    if (experiment == nullptr)
        return;
    if (experiment->participants == 0) {
        ShowMessage(this, "No data files to export!");
        return;
    }
    const int code = experiment->code;
    const QString target = QFileDialog::getSaveFileName(this, QStringLiteral("Export Data Files"),
                                                        experiment->name, QStringLiteral("Zip (*.zip)"));
    if (target.isEmpty())
        return;
    const QString source = CloudCache::ArchivePath(code);
    if (QFile::exists(target))
        QFile::remove(target);
    QFile::copy(source, target);
}

void MainWindow::BackToCloudExpList()
{
    DropDataFilesCleanUI(0);
    ui->stack_cloud->setCurrentIndex(2);
    ui->stack_local_or_cloud_info->setCurrentIndex(2);
}

// Cloud files never outlive the cloud tab, and a signed-in user entering it
// replaces whatever was open; signed out, open files stay under a warning.
void MainWindow::DropDataFilesCleanUI(int index)
{
    const bool closeFiles = index == 0 ? EnterCloudTab() : EnterLocalTab();
    if (closeFiles)
        CloseAllFiles(index);
}

bool MainWindow::EnterCloudTab()
{
    const bool signedIn = !cloudProfile.email.isEmpty();
    ui->stack_cloud->setCurrentIndex(signedIn ? 2 : 0);
    ui->stack_cloud_options->setCurrentIndex(1);
    ui->stack_warn_if_overriding_local_files->setCurrentIndex(files.empty() ? 0 : 1);
    ui->stack_local_or_cloud_info->setCurrentIndex(signedIn && !files.empty() ? 1 : 2);
    if (!signedIn)
        return false;
    FollowFileList(ui->list_cloud_filenames, ui->fileNamesList);
    return true;
}

// Local files stay open unless cloud files were being shown.
bool MainWindow::EnterLocalTab()
{
    ui->stack_cloud->setCurrentIndex(1);
    ui->stack_cloud_options->setCurrentIndex(0);
    if (!cloudFilesShown) {
        ui->stack_local_or_cloud_info->setCurrentIndex(files.empty() ? 0 : 1);
        return false;
    }
    ui->stack_local_or_cloud_info->setCurrentIndex(0);
    FollowFileList(ui->fileNamesList, ui->list_cloud_filenames);
    return true;
}

// The connection is a plain one, deliberately: a list that is connected
// already gets one more, and ChangeFileFocus then runs once for each.
void MainWindow::FollowFileList(QListWidget *shown, QListWidget *hidden)
{
    connect(shown, &QListWidget::itemSelectionChanged, this, &MainWindow::ChangeFileFocus);
    disconnect(hidden, &QListWidget::itemSelectionChanged, this, &MainWindow::ChangeFileFocus);
}

// The file actions stay as they are, and cloudFilesShown is left for the
// next OpenFiles to clear.
void MainWindow::CloseAllFiles(int index)
{
    if (files.empty())
        return;
    DisconnectFocusedFile();
    ui->list_cloud_filenames->clear();
    ui->fileNamesList->clear();
    ReleaseFocusedFile();
    files.clear();
    combinedActive = false;
    ui->stack_local_or_cloud_info->setCurrentIndex(index == 0 ? 2 : 0);
}

// Only rt_info is fetched again, for the selected experiment. The page is
// set back to the counts even when the new count leaves nothing to show.
void MainWindow::OnRefreshCloudParticipants()
{
    const int row = ui->list_of_cloud_experiments->currentRow();
    if (row < 0)
        return;
    ui->stack_xpt_info->setCurrentIndex(3);
    QCoreApplication::processEvents();
    // A sign-in started meanwhile may have replaced the list.
    if (CloudExperiment *experiment = ExperimentAt(row)) {
        ShowCacheNotices({cloudCache.UpdateParticipants(experiment->code, *experiment)});
        UpdateCloudParticipantsInfo(row);
    }
    ui->stack_xpt_info->setCurrentIndex(0);
}

// Signing out forgets the account only: the token, the list and the typed
// credentials stay, and so do open files, under the warning.
void MainWindow::BackToCloudLogin()
{
    cloudProfile = CloudProfile();
    DropDataFilesCleanUI(0);
}
