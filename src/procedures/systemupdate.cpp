// The main window's chapter that brings the player the latest release.
#include "app/mainwindow.h"

#include "disk/aside.h"
#include "device/devicecase.h"
#include "downloadmanager.h"
#include "disk/tree.h"
#include "ui_mainwindow.h"
#include "updateserver.h"

#include <QFileInfo>
#include <QMessageBox>

namespace {

constexpr int kCodeDownload = 1;
constexpr int kCodeUnpack = 2;
constexpr int kCodeCopy = 3;

const QString kUpdateFolder = QStringLiteral("CorvinUpdate");

} // namespace

void MainWindow::updateCorvinWithLastRelease()
{
    prepareOperation();
    updateSystem(true);
    resetOperation();
}

bool MainWindow::updateSystem(bool showFinalMessage)
{
    abortRequested = false;
    QString deviceRoot;
    if (!findDeviceForOperation(deviceRoot) || abortRequested)
        return false;

    showOperation(TEXT_DOWNLOADING_RELEASE);
    const QString archive = downloadFile(updateServerUrl(kUpdateArchivePath), true);
    if (abortRequested)
        return false;
    if (archive.isEmpty()) {
        tellDownloadError(kCodeDownload);
        return false;
    }
    if (!unpackArchive(archive)) {
        tellDownloadError(kCodeUnpack);
        return false;
    }
    if (abortRequested)
        return false;

    showOperation(TEXT_COPYING_UPDATE);
    const bool copied = copyUpdate(deviceRoot, QFileInfo(archive).absolutePath()) && isOnPlayer(deviceRoot);
    if (!copied || abortRequested) {
        // Off the player before the box: whoever reads it may pull the cable at once.
        removeFolder(resolveDevicePath(deviceRoot, kUpdateFolder));
        flushVolumeAside(deviceRoot);
        tellDownloadError(kCodeCopy);
        removeFolder(DownloadManager::downloadFolder());
        return false;
    }
    finishUpdate(showFinalMessage);
    removeFolder(DownloadManager::downloadFolder());
    return true;
}

/// Replaces the player's "CorvinUpdate" by the one in @p archiveFolder. Returns whether it was copied.
bool MainWindow::copyUpdate(const QString &deviceRoot, const QString &archiveFolder)
{
    // Looked up again: the path of a player that was pulled meanwhile may by now be a folder of the PC.
    if (deviceLocator.findDeviceRoot() != deviceRoot)
        return false;
    if (!removeFolder(resolveDevicePath(deviceRoot, kUpdateFolder))) {
        QMessageBox::information(this, tr("ERRORE"), tr("ERRORE"), QMessageBox::Ok);
        return false;
    }
    const QString source = archiveFolder + QLatin1Char('/') + kUpdateFolder;
    QStringList files = listTree(source, QDir::Dirs | QDir::Files | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                 {QStringLiteral("*.*")});
    // An archive that brought no update must not end with the words that one was copied.
    if (files.isEmpty())
        return false;
    files.sort(Qt::CaseSensitive);
    return copyFileList(files, deviceRoot + kUpdateFolder, source, ui->progressBar);
}

void MainWindow::finishUpdate(bool showFinalMessage)
{
    ui->labelAction->clear();
    ui->labelAction->hide();
    ui->progressBar->hide();
    // Alone it would fill the whole line, and there is nothing left to stop.
    ui->pushButtonStop->hide();
    if (showFinalMessage)
        QMessageBox::information(this, langDbInfo(TEXT_UPDATED_TITLE), langDbInfo(TEXT_UPDATED), QMessageBox::Ok);
}

/// Deliberate: the same text whatever the code, and a blank before the comma of the title.
void MainWindow::tellDownloadError(int code)
{
    QMessageBox::critical(this, langDbInfo(TEXT_DOWNLOAD_ERROR_TITLE) + tr(", Cod %1").arg(code),
                          langDbInfo(TEXT_DOWNLOAD_ERROR), QMessageBox::Ok);
}
