// The main window's chapter that every maintenance procedure begins and ends with.
#include "app/mainwindow.h"

#include "pages/avanzate.h"
#include "ui_mainwindow.h"

#include <QMessageBox>

namespace {
constexpr int kFullPercent = 100;
} // namespace

/// Shows the widgets of a running procedure, and takes its flags as if nothing had gone wrong yet.
void MainWindow::prepareOperation()
{
    abortRequested = false;
    procedureOk = true;
    // Events are processed while a procedure runs: a second one must not be started inside it.
    avanzate->setEnabled(false);
    ui->progressBar->setRange(0, kFullPercent);
    on_setProgressBarVisible(true);
}

/// Takes back what prepareOperation() did, whatever the procedure left behind.
void MainWindow::resetOperation()
{
    ui->progressBar->setRange(0, kFullPercent);
    on_setProgressBarVisible(false);
    avanzate->setEnabled(true);
}

/// Shows the operation text @p code in the status line, at once.
void MainWindow::showOperation(LANGUAGE_STRING_CODE code)
{
    on_updateLabelAction(langDbInfo(code));
    ui->labelAction->repaint();
}

/// Looks for the player and tells the user when there is none. Returns whether @p deviceRoot now holds its root.
bool MainWindow::findDeviceForOperation(QString &deviceRoot)
{
    showOperation(TEXT_LOOKING_FOR_DEVICE);
    deviceRoot = deviceLocator.findDeviceRoot();
    if (!deviceRoot.isEmpty())
        return true;
    QMessageBox::information(this, langDbInfo(TEXT_DEVICE_NOT_FOUND_TITLE), langDbInfo(TEXT_DEVICE_NOT_FOUND),
                             QMessageBox::Ok);
    return false;
}
