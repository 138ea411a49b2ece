// The main window's chapter with the steps of the reinstall procedures. Each does its work, tells the user what went
// wrong with it, and returns whether to go on; a step that STOP ended says nothing.
#include "app/mainwindow.h"

#include "disk/aside.h"
#include "backupcheck.h"
#include "downloadmanager.h"
#include "disk/tree.h"
#include "unpackedfolder.h"
#include "updateserver.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>

namespace {

constexpr int kCodeDownload = 1;

/// Whether one of the folders lies in the other, or they are the same.
bool overlap(const QString &one, const QString &other)
{
    const QString first = QFileInfo(one).canonicalFilePath() + QLatin1Char('/');
    const QString second = QFileInfo(other).canonicalFilePath() + QLatin1Char('/');
    return first.startsWith(second, Qt::CaseInsensitive) || second.startsWith(first, Qt::CaseInsensitive);
}

} // namespace

bool MainWindow::downloadSystem(QString &archive)
{
    showOperation(TEXT_DOWNLOADING_RELEASE);
    archive = downloadFile(updateServerUrl(kSystemArchivePath), true);
    if (archive.isEmpty() && !abortRequested)
        tellDownloadError(kCodeDownload);
    return !archive.isEmpty();
}

/// @p unpacked becomes the folder whose content belongs at the player's root.
bool MainWindow::unpackSystem(const QString &archive, QString &unpacked)
{
    showOperation(TEXT_COPYING_SYSTEM_TO_PC);
    const QString archiveFolder = QFileInfo(archive).absolutePath();
    const bool started = unpackArchive(archive);
    unpacked = unpackedFolder(archiveFolder);
    // The player is only touched for a system that is really there, not for a page that came in place of the archive.
    if (started && (abortRequested || holdsSystemFiles(unpacked)))
        return true;
    tell(QMessageBox::Information, tr("ERRORE"), tr("ERRORE"));
    return false;
}

bool MainWindow::chooseBackupFolder(QString &backup)
{
    backup = QFileDialog::getExistingDirectory(this, tr("Scegli una cartella per il salvataggio dei files"), QString(),
                                               QFileDialog::ShowDirsOnly | QFileDialog::DontResolveSymlinks);
    if (backup.isEmpty())
        return false;
    // The download empties its folder: a backup in or around it would be gone before it is needed.
    QDir().mkpath(DownloadManager::downloadFolder());
    if (!overlap(backup, DownloadManager::downloadFolder()))
        return true;
    tell(QMessageBox::Information, tr("ERRORE"), tr("ERRORE"));
    return false;
}

bool MainWindow::saveSongs(const QString &deviceRoot, const QString &backup)
{
    // The copy's own outcome is that of its last file; nothing is erased unless all of them are on the PC.
    if (backupSongs(deviceRoot, backup) && isBackupComplete(backup, deviceRoot, abortRequested) &&
        flushVolumeAside(backup))
        return true;
    if (!abortRequested)
        tell(QMessageBox::Information, langDbInfo(TEXT_BACKUP_ERROR_TITLE), langDbInfo(TEXT_BACKUP_ERROR));
    return false;
}

/// @p deviceRoot is the player's root as it is after the format.
bool MainWindow::formatDisk(QString &deviceRoot)
{
    // Much time has passed since the player was found, and its drive may be another one by now.
    if (!findDeviceAgain(deviceRoot))
        return false;
    if (!FormatCorvinDisk(deviceRoot)) {
        if (lastFormatOutcome == FormatOutcome::Failed)
            tell(QMessageBox::Information, langDbInfo(TEXT_FORMAT_ERROR_TITLE), langDbInfo(TEXT_FORMAT_ERROR));
        keptBackup.clear();
        return false;
    }
    return findDeviceAgain(deviceRoot);
}

bool MainWindow::installSystem(QString &deviceRoot, const QString &unpacked)
{
    if (!findDeviceAgain(deviceRoot))
        return false;
    showOperation(TEXT_TRANSFERRING_SYSTEM);
    if (transferSystem(deviceRoot, unpacked)) {
        removeFolder(DownloadManager::downloadFolder());
        return true;
    }
    if (!abortRequested)
        tell(QMessageBox::Information, tr("ERRORE"), tr("ERRORE"));
    return false;
}

bool MainWindow::bringSongsBack(const QString &backup, const QString &deviceRoot)
{
    // The transfer could not make a folder: the procedure ends with its own words, the songs wait on the PC.
    if (!procedureOk)
        return true;
    showOperation(TEXT_RESTORING_BACKUP);
    if (restoreSongs(backup, deviceRoot))
        return true;
    if (!abortRequested)
        tell(QMessageBox::Information, langDbInfo(TEXT_RESTORE_ERROR_TITLE), langDbInfo(TEXT_RESTORE_ERROR));
    return false;
}

void MainWindow::finishReinstall(const QString &deviceRoot)
{
    // What never reached the disk of a player that was pulled out must not be called installed.
    if (!isOnPlayer(deviceRoot))
        procedureOk = false;
    if (!procedureOk) {
        if (!abortRequested)
            tell(QMessageBox::Critical, tr("ERRORE"),
                 tr("Procedura terminata in modo inaspettato.\nProvare a reinstallare il sistema operativo."));
        return;
    }
    // From here on the songs are on the player; only a failed update is a reason to name the backup still.
    // The system is installed whether or not the update comes: its failure has its own box, and the closing one follows.
    const bool stopped = abortRequested;
    if (stopped || updateSystem(false) || abortRequested)
        keptBackup.clear();
    removeFolder(DownloadManager::downloadFolder());
    flushVolumeAside(deviceRoot);
    if (stopped || abortRequested)
        return;
    tell(QMessageBox::Information, langDbInfo(TEXT_INSTALLED_TITLE), langDbInfo(TEXT_INSTALLED));
}

/// The player's root as it is now; tells the user when the player is gone.
bool MainWindow::findDeviceAgain(QString &deviceRoot)
{
    deviceRoot = deviceLocator.findDeviceRoot();
    if (!deviceRoot.isEmpty())
        return true;
    tell(QMessageBox::Information, langDbInfo(TEXT_DEVICE_NOT_FOUND_TITLE), langDbInfo(TEXT_DEVICE_NOT_FOUND));
    return false;
}

/// A box with one button, which also says where the songs are when they may be on the PC alone.
void MainWindow::tell(QMessageBox::Icon icon, const QString &title, const QString &text)
{
    QMessageBox box(icon, title, text, QMessageBox::Ok, this);
    if (!keptBackup.isEmpty())
        box.setInformativeText(
            tr("La copia di sicurezza delle basi si trova in:\n%1").arg(QDir::toNativeSeparators(keptBackup)));
    box.exec();
}
