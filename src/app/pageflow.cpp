// The main window's chapter that moves between the pages.
#include "mainwindow.h"

#include "optimizer/endottimizza.h"
#include "optimizer/ottimizza.h"
#include "pages/avanzate.h"
#include "pages/check.h"
#include "pages/firstmenu.h"
#include "transfer/transfer.h"

void MainWindow::on_checkDone()
{
    m_check->hide();
    m_firstMenu->show();
}

void MainWindow::on_gotoTransfer()
{
    m_firstMenu->hide();
    // Looked up again: the player may have come back under another root since the check.
    m_transfer->prepare(m_deviceLocator.findDeviceRoot());
    m_transfer->show();
}

void MainWindow::on_gotoOptimizer()
{
    m_firstMenu->hide();
    m_ottimizza->show();
}

void MainWindow::on_gotoAvanzate()
{
    m_firstMenu->hide();
    m_avanzate->show();
}

void MainWindow::on_backFromOttimizzaToFirstMenu()
{
    m_ottimizza->hide();
    m_transfer->hide();
    m_firstMenu->show();
}

void MainWindow::on_backFromAvanzateToFirstMenu()
{
    m_avanzate->hide();
    m_firstMenu->show();
}

void MainWindow::on_backFromTransferToFirstMenu()
{
    m_transfer->hide();
    m_firstMenu->show();
}

void MainWindow::on_backFromTransferToOttimizza()
{
    m_transfer->hide();
    m_ottimizza->show();
}

void MainWindow::on_backFromOttimizzaToEndOttimizza(int code)
{
    m_ottimizza->hide();
    m_transfer->hide();
    m_firstMenu->hide();
    m_endOttimizza->setFailCodeAndShow(code);
}

void MainWindow::on_backFromEndOttimizzaToFirstMenu()
{
    m_endOttimizza->hide();
    m_firstMenu->show();
}
