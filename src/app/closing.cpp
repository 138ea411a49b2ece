// The main window's chapter of its closing. A job lives on the stack of this window's slots: it ends before the window.
#include "mainwindow.h"

#include "app/shared/questionbox.h"
#include "optimizer/ottimizza.h"
#include "pages/check.h"
#include "transfer/transfer.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDebug>

namespace {
constexpr int kLookIntervalMs = 20;
}

bool MainWindow::isWorking() const
{
    return m_jobRunning || m_checkRunning || m_transfer->busy || m_ottimizza->isRunning();
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (isWorking()) {
        // Also what the system gets to hear that wants to end the session: it waits, or asks the user.
        event->ignore();
        askToClose();
        return;
    }
    m_closeTimer.stop();
    closeRequested = false;
    if (!m_transfer->isFinishPending()) {
        QMainWindow::closeEvent(event);
        return;
    }
    tellUser(this, QMessageBox::Information, tr("Trasferimento non completato"),
             tr("Prima di poter chiudere il programma,\nconcludi le operazioni di ottimizzazione cliccando sul tasto "
                "\"FINE\"."));
    m_transfer->goToFinish();
    event->ignore();
}

void MainWindow::askToClose()
{
    if (closeRequested)
        return;
    qInfo() << "MainWindow::closeEvent : !!! ABORT PRESSED !!!";
    closeRequested = true;
    emit stopActionPressed();
    endWork();
    m_closeTimer.start(kLookIntervalMs);
}

/// Whatever works now ends at its next test, also one that has begun, or has cleared its flag, since it was last told.
void MainWindow::endWork()
{
    abortRequested = true;
    if (m_checkRunning)
        m_check->on_closeRequested();
    if (m_transfer->busy)
        m_transfer->on_stopActionPressed();
    if (m_ottimizza->isRunning())
        m_ottimizza->on_closeRequested();
}

void MainWindow::closeOnceIdle()
{
    if (isWorking())
        endWork();
    // A box that is open is the user's to answer.
    else if (!QApplication::activeModalWidget())
        close();
}
