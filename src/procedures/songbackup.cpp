// The main window's chapter that copies the songs to a folder of the PC and back.
#include "app/mainwindow.h"

#include "disk/aside.h"
#include "backupchoice.h"
#include "device/devicecase.h"
#include "disk/tree.h"
#include "ui_mainwindow.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QMessageBox>

namespace {

/// Up to here a backup starts without a question about the number of files.
constexpr int kFilesWithoutQuestion = 1000;

constexpr QDir::Filters kVisibleEntries = QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot;
constexpr QDir::Filters kAllEntries = kVisibleEntries | QDir::Hidden | QDir::System;

/// Deliberate: passes only names with a dot, folders' names too. A file without one is neither saved nor restored.
QStringList namesWithADot()
{
    return {QStringLiteral("*.*")};
}

bool holdsAnything(const QString &folder)
{
    // More than the copy itself ever looks at: nothing may be deleted unasked.
    return !QDir(folder).entryList(kAllEntries, QDir::NoSort).isEmpty();
}

} // namespace

void MainWindow::makeSecurityCopyOfSongs()
{
    prepareOperation();
    QString deviceRoot;
    if (findDeviceForOperation(deviceRoot)) {
        const QString destination =
            QFileDialog::getExistingDirectory(this, tr("Scegli una cartella per il salvataggio dei files"), QString(),
                                              QFileDialog::ShowDirsOnly | QFileDialog::DontResolveSymlinks);
        if (!destination.isEmpty())
            tellEndOfSongCopy(backupSongs(deviceRoot, destination) && flushVolumeAside(destination));
    }
    resetOperation();
}

void MainWindow::restoreSecurityCopyOfSongs()
{
    prepareOperation();
    QString deviceRoot;
    if (findDeviceForOperation(deviceRoot)) {
        if (!abortRequested)
            showOperation(TEXT_RESTORING_BACKUP);
        const QString source =
            QFileDialog::getExistingDirectory(this, tr("Scegli cartella da cui prendere i files salvati"), QString(),
                                              QFileDialog::ShowDirsOnly | QFileDialog::DontResolveSymlinks);
        if (!source.isEmpty())
            tellEndOfSongCopy(restoreSongs(source, deviceRoot));
    }
    resetOperation();
}

void MainWindow::tellEndOfSongCopy(bool good)
{
    // Deliberate: a failed restore has the texts of a failed backup.
    if (!good)
        QMessageBox::information(this, langDbInfo(TEXT_BACKUP_ERROR_TITLE), langDbInfo(TEXT_BACKUP_ERROR),
                                 QMessageBox::Ok);
    else if (!abortRequested)
        QMessageBox::information(this, tr("Fatto"), tr("Fatto"), QMessageBox::Ok);
}

bool MainWindow::backupSongs(const QString &deviceRoot, const QString &destination)
{
    showOperation(TEXT_LOOKING_FOR_DEVICE);
    ui->progressBar->setFormat(QStringLiteral("%v"));
    if (!emptyBackupFolder(deviceRoot, destination))
        return false;

    showOperation(TEXT_READING_DEVICE);
    ui->progressBar->setMaximum(0);
    ui->progressBar->setValue(0);
    QStringList files;
    if (!listSongs(deviceRoot, files) || !confirmManyFiles(files.size()))
        return false;
    if (abortRequested)
        return false;
    showOperation(TEXT_BACKING_UP);
    return copyFileList(files, destination + QDir::separator(), deviceRoot, ui->progressBar);
}

bool MainWindow::emptyBackupFolder(const QString &deviceRoot, const QString &destination)
{
    const QStringList keep = {QCoreApplication::applicationDirPath(), QDir::homePath()};
    if (mayBeEmptied(destination, deviceRoot, keep)) {
        if (holdsAnything(destination) &&
            QMessageBox::question(this, tr("Trovati alcuni files"),
                                  tr("ATTENZIONE! Il contenuto della cartella di destinazione verrà cancellato.\n\n"
                                     "Vuoi continuare ?"),
                                  QMessageBox::Yes | QMessageBox::No, QMessageBox::No) != QMessageBox::Yes)
            return false;
        // The root of a volume cannot be removed, so its content is not sacrificed to the attempt.
        if (!isVolumeRoot(destination) && emptyFolder(destination))
            return true;
    }
    QMessageBox::question(this, tr("ERRORE"), tr("ERRORE"), QMessageBox::Yes);
    return false;
}

bool MainWindow::listSongs(const QString &deviceRoot, QStringList &files)
{
    const bool complete = visitTree(deviceRoot, kVisibleEntries, namesWithADot(), [&](const QString &path) {
        if (abortRequested)
            return false;
        if (!isSystemPart(path, deviceRoot)) {
            files.append(path);
            ui->progressBar->repaint();
        }
        return true;
    });
    // Of the player's system its playlists alone are the user's.
    const QString playlists = resolveDevicePath(deviceRoot, QStringLiteral("System/playlist"));
    files += listTree(playlists, kAllEntries, {}, &abortRequested);
    // The listing of a player that was pulled out just ends early, and would pass for all there is.
    return complete && isStillConnected(deviceRoot);
}

bool MainWindow::confirmManyFiles(int count)
{
    if (count <= kFilesWithoutQuestion)
        return true;
    return QMessageBox::question(this, tr("BackUp"), tr("Saranno copiati %1 files\n\nVuoi continuare ?").arg(count),
                                 QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}

bool MainWindow::restoreSongs(const QString &source, const QString &deviceRoot)
{
    const QStringList files = listTree(source, kVisibleEntries, namesWithADot(), &abortRequested);
    if (abortRequested)
        return false;
    return copyFileList(files, deviceRoot, source, ui->progressBar) && isOnPlayer(deviceRoot);
}

bool MainWindow::isStillConnected(const QString &deviceRoot) const
{
    return deviceLocator.volumeLabel(deviceRoot).compare(QLatin1String("CORVIN4"), Qt::CaseInsensitive) == 0;
}

bool MainWindow::isOnPlayer(const QString &deviceRoot) const
{
    // Without the player its mount point may be left, an ordinary folder of the PC that takes the files as well.
    return flushVolumeAside(deviceRoot) && isStillConnected(deviceRoot);
}
