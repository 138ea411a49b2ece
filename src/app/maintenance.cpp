// The main window's chapter that starts the maintenance jobs, shows that one is running, and notes how it ended.
#include "mainwindow.h"

#include "app/shared/questionbox.h"
#include "disk/awake.h"
#include "disk/worklock.h"
#include "pages/avanzate.h"
#include "procedures/diskformat.h"
#include "procedures/downloadmanager.h"
#include "procedures/filedownload.h"
#include "procedures/filelistcopy.h"
#include "procedures/reinstall.h"
#include "procedures/songbackup.h"
#include "procedures/songrestore.h"
#include "procedures/systemupdate.h"
#include "ui_mainwindow.h"
#include "windowjobview.h"

#include <QScopedValueRollback>

bool MainWindow::copyFileList(const QStringList &sources, const QString &destinationRoot, const QString &sourceRoot,
                              QProgressBar *bar)
{
    WindowJobView view(*this, *ui->labelAction, *bar, *ui->pushButtonStop);
    return noteEnd(FileListCopy(view, sources, destinationRoot, sourceRoot).run());
}

bool MainWindow::FormatCorvinDisk(const QString &drive)
{
    WindowJobView view(*this, *ui->labelAction, *ui->progressBar, *ui->pushButtonStop);
    return noteEnd(DiskFormat(view, drive).run());
}

QString MainWindow::downloadFile(const QString &url, bool makeFolder)
{
    WindowJobView view(*this, *ui->labelAction, *ui->progressBar, *ui->pushButtonStop);
    FileDownload download(view, url, makeFolder);
    noteEnd(download.run());
    return download.path();
}

void MainWindow::updateCorvinWithLastRelease()
{
    startJob<SystemUpdate>(true);
}

void MainWindow::makeSecurityCopyOfSongs()
{
    startJob<SongBackup>();
}

void MainWindow::restoreSecurityCopyOfSongs()
{
    startJob<SongRestore>();
}

void MainWindow::reinstallOpSysOnly()
{
    startJob<Reinstall>(Reinstall::Songs::Stay);
}

void MainWindow::reinstallOpSysAndCleanSongs()
{
    startJob<Reinstall>(Reinstall::Songs::AreErased);
}

void MainWindow::reinstallOpSysAndRestoreSongs()
{
    startJob<Reinstall>(Reinstall::Songs::ComeBack);
}

template <class Job, class... Arguments> void MainWindow::startJob(Arguments... arguments)
{
    WindowJobView view(*this, *ui->labelAction, *ui->progressBar, *ui->pushButtonStop);
    Job job(view, arguments...);
    runJob(job);
}

void MainWindow::runJob(MaintenanceJob &job)
{
    // Events are processed while a job runs: a second one must not be started inside it.
    if (m_jobRunning || closeRequested)
        return;
    const QScopedValueRollback<bool> running(m_jobRunning, true);
    const WorkLock lock;
    if (!lock.isTaken()) {
        tellOtherWindowWorks(this);
        return;
    }
    // The window may have been asked to close while the question was open.
    if (!job.confirm() || closeRequested)
        return;
    const StayAwake awake;
    abortRequested = false;
    procedureOk = true;
    m_avanzate->setEnabled(false);
    ui->progressBar->setRange(0, DownloadManager::kFullPercent);
    on_setProgressBarVisible(true);
    noteEnd(job.run());
    ui->progressBar->setRange(0, DownloadManager::kFullPercent);
    on_setProgressBarVisible(false);
    m_avanzate->setEnabled(true);
}

bool MainWindow::noteEnd(const JobEnd &end)
{
    if (end.failedAt(kMakingFolders) || end.failedAt(kFinishing))
        procedureOk = false;
    return end.isDone();
}
