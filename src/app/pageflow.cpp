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
    check->hide();
    firstMenu->show();
}

void MainWindow::on_gotoTransfer()
{
    firstMenu->hide();
    // Looked up again: the player may have come back under another root since the check.
    transfer->prepare(deviceLocator.findDeviceRoot());
    transfer->show();
}

void MainWindow::on_gotoOptimizer()
{
    firstMenu->hide();
    ottimizza->show();
}

void MainWindow::on_gotoAvanzate()
{
    firstMenu->hide();
    avanzate->show();
}

void MainWindow::on_backFromOttimizzaToFirstMenu()
{
    ottimizza->hide();
    transfer->hide();
    firstMenu->show();
}

void MainWindow::on_backFromAvanzateToFirstMenu()
{
    avanzate->hide();
    firstMenu->show();
}

void MainWindow::on_backFromTransferToFirstMenu()
{
    transfer->hide();
    firstMenu->show();
}

void MainWindow::on_backFromTransferToOttimizza()
{
    transfer->hide();
    ottimizza->show();
}

void MainWindow::on_backFromOttimizzaToEndOttimizza(int code)
{
    ottimizza->hide();
    transfer->hide();
    firstMenu->hide();
    endOttimizza->setFailCodeAndShow(code);
}

void MainWindow::on_backFromEndOttimizzaToFirstMenu()
{
    endOttimizza->hide();
    firstMenu->show();
}
