// The main window's chapter with the three procedures that rebuild the player's system: each lists its steps in order,
// with STOP looked at after every one of them. The steps themselves are in reinstallsteps.cpp.
#include "app/mainwindow.h"

#include "app/shared/questionbox.h"

void MainWindow::reinstallOpSysOnly()
{
    prepareOperation();
    replaceSystem();
    resetOperation();
}

void MainWindow::reinstallOpSysAndCleanSongs()
{
    if (!confirmErasing())
        return;
    prepareOperation();
    eraseAndReplaceSystem();
    resetOperation();
}

void MainWindow::reinstallOpSysAndRestoreSongs()
{
    prepareOperation();
    saveSongsAndReplaceSystem();
    // Silence would leave the user with an empty player and no idea where the songs are.
    if (abortRequested && !keptBackup.isEmpty())
        tell(QMessageBox::Information, langDbInfo(TEXT_RESTORE_ERROR_TITLE), langDbInfo(TEXT_RESTORE_ERROR));
    keptBackup.clear();
    resetOperation();
}

void MainWindow::replaceSystem()
{
    QString deviceRoot;
    QString archive;
    QString unpacked;
    if (!findDeviceForOperation(deviceRoot) || abortRequested)
        return;
    if (!downloadSystem(archive) || abortRequested)
        return;
    if (!unpackSystem(archive, unpacked) || abortRequested)
        return;
    if (!installSystem(deviceRoot, unpacked) || abortRequested)
        return;
    finishReinstall(deviceRoot);
}

void MainWindow::eraseAndReplaceSystem()
{
    QString deviceRoot;
    QString archive;
    QString unpacked;
    if (!findDeviceForOperation(deviceRoot) || abortRequested)
        return;
    if (!downloadSystem(archive) || abortRequested)
        return;
    if (!unpackSystem(archive, unpacked) || abortRequested)
        return;
    if (!formatDisk(deviceRoot) || abortRequested)
        return;
    if (!installSystem(deviceRoot, unpacked) || abortRequested)
        return;
    finishReinstall(deviceRoot);
}

void MainWindow::saveSongsAndReplaceSystem()
{
    QString deviceRoot;
    QString backup;
    QString archive;
    QString unpacked;
    if (!findDeviceForOperation(deviceRoot) || abortRequested)
        return;
    if (!chooseBackupFolder(backup) || abortRequested)
        return;
    if (!saveSongs(deviceRoot, backup) || abortRequested)
        return;
    if (!downloadSystem(archive) || abortRequested)
        return;
    if (!unpackSystem(archive, unpacked) || abortRequested)
        return;
    keptBackup = backup;
    if (!formatDisk(deviceRoot) || abortRequested)
        return;
    if (!installSystem(deviceRoot, unpacked) || abortRequested)
        return;
    if (!bringSongsBack(backup, deviceRoot) || abortRequested)
        return;
    finishReinstall(deviceRoot);
}

bool MainWindow::confirmErasing()
{
    Question question;
    question.title = langDbInfo(TEXT_FORMAT_TITLE);
    question.text = langDbInfo(TEXT_FORMAT_QUESTION);
    question.buttons = {{QMessageBox::Yes, tr("Si")}, {QMessageBox::No, tr("No")}};
    question.defaultButton = QMessageBox::No;
    question.escapeButton = QMessageBox::No;
    return askQuestion(this, question) == QMessageBox::Yes;
}
