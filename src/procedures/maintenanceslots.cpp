// The main window's chapter that starts the maintenance procedures.
#include "app/mainwindow.h"

#include <QMessageBox>

void MainWindow::updateCorvinWithLastRelease()
{
    tellNotAvailable();
}

void MainWindow::makeSecurityCopyOfSongs()
{
    tellNotAvailable();
}

void MainWindow::restoreSecurityCopyOfSongs()
{
    tellNotAvailable();
}

void MainWindow::reinstallOpSysOnly()
{
    tellNotAvailable();
}

void MainWindow::reinstallOpSysAndCleanSongs()
{
    tellNotAvailable();
}

void MainWindow::reinstallOpSysAndRestoreSongs()
{
    tellNotAvailable();
}

void MainWindow::tellNotAvailable()
{
    QMessageBox::information(this, tr("Procedura non disponibile"),
                             tr("Questa procedura non è disponibile in questa versione del programma."),
                             QMessageBox::Ok);
}
