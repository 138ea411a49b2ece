// The main window's chapter that moves between the pages.
#include "mainwindow.h"

#include "optimizer/endottimizza.h"
#include "optimizer/ottimizza.h"
#include "pages/avanzate.h"
#include "pages/check.h"
#include "pages/firstmenu.h"
#include "transfer/transfer.h"
#include "ui_mainwindow.h"

#include <QScrollBar>

namespace {

/// Shows a page from its top, where the window is too low for all of it.
void enter(QWidget &page, const QScrollArea &area)
{
    page.show();
    area.verticalScrollBar()->setValue(0);
}

} // namespace

void MainWindow::on_checkDone()
{
    m_check->hide();
    enter(*m_firstMenu, *ui->scrollArea);
}

void MainWindow::on_gotoTransfer()
{
    m_firstMenu->hide();
    // Looked up again: the player may have come back under another root since the check.
    m_transfer->prepare(m_deviceLocator.findDeviceRoot());
    enter(*m_transfer, *ui->scrollArea);
}

void MainWindow::on_gotoOptimizer()
{
    m_firstMenu->hide();
    enter(*m_ottimizza, *ui->scrollArea);
}

void MainWindow::on_gotoAvanzate()
{
    m_firstMenu->hide();
    enter(*m_avanzate, *ui->scrollArea);
}

void MainWindow::on_backFromOttimizzaToFirstMenu()
{
    m_ottimizza->hide();
    m_transfer->hide();
    enter(*m_firstMenu, *ui->scrollArea);
}

void MainWindow::on_backFromAvanzateToFirstMenu()
{
    m_avanzate->hide();
    enter(*m_firstMenu, *ui->scrollArea);
}

void MainWindow::on_backFromTransferToFirstMenu()
{
    m_transfer->hide();
    enter(*m_firstMenu, *ui->scrollArea);
}

void MainWindow::on_backFromTransferToOttimizza()
{
    m_transfer->hide();
    enter(*m_ottimizza, *ui->scrollArea);
}

void MainWindow::on_backFromOttimizzaToEndOttimizza(int code)
{
    m_ottimizza->hide();
    m_transfer->hide();
    m_firstMenu->hide();
    m_endOttimizza->setFailCodeAndShow(code);
    enter(*m_endOttimizza, *ui->scrollArea);
}

void MainWindow::on_backFromEndOttimizzaToFirstMenu()
{
    m_endOttimizza->hide();
    enter(*m_firstMenu, *ui->scrollArea);
}
