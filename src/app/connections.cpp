// The main window's chapter that wires the pages: which signal reaches which slot, page by page, in a fixed order.
#include "mainwindow.h"

#include "optimizer/endottimizza.h"
#include "optimizer/ottimizza.h"
#include "pages/avanzate.h"
#include "pages/check.h"
#include "pages/firstmenu.h"
#include "transfer/transfer.h"

void MainWindow::connectPages()
{
    connectCheck();
    connectFirstMenu();
    connectOttimizza();
    connectAvanzate();
    connectTransfer();
}

void MainWindow::connectCheck()
{
    connect(m_check, &Check::setProgressBarVisible, this, &MainWindow::on_setProgressBarVisible);
    connect(m_check, &Check::setProgressBarMinVal, this, &MainWindow::on_setProgressBarMinVal);
    connect(m_check, &Check::setProgressBarMaxVal, this, &MainWindow::on_setProgressBarMaxVal);
    connect(m_check, &Check::updateProgressBarVal, this, &MainWindow::on_updateProgressBarVal);
    connect(m_check, &Check::updateLabelAction, this, &MainWindow::on_updateLabelAction);
    connect(m_check, &Check::setPushButtonStopVisible, this, &MainWindow::on_setPushButtonStopVisible);
    connect(m_check, &Check::reinstallOpSysOnly, this, &MainWindow::reinstallOpSysOnly);
    connect(m_check, &Check::checkDone, this, &MainWindow::on_checkDone);
}

void MainWindow::connectFirstMenu()
{
    connect(m_firstMenu, &FirstMenu::gotoTransfer, this, &MainWindow::on_gotoTransfer);
    connect(m_firstMenu, &FirstMenu::gotoAvanzate, this, &MainWindow::on_gotoAvanzate);
    connect(m_firstMenu, &FirstMenu::gotoOptimizer, this, &MainWindow::on_gotoOptimizer);
}

void MainWindow::connectOttimizza()
{
    connect(m_ottimizza, &Ottimizza::setProgressBarVisible, this, &MainWindow::on_setProgressBarVisible);
    connect(m_ottimizza, &Ottimizza::setProgressBarMinVal, this, &MainWindow::on_setProgressBarMinVal);
    connect(m_ottimizza, &Ottimizza::setProgressBarMaxVal, this, &MainWindow::on_setProgressBarMaxVal);
    connect(m_ottimizza, &Ottimizza::setProgressBarFormat, this, &MainWindow::on_setProgressBarFormat);
    connect(m_ottimizza, &Ottimizza::updateProgressBarVal, this, &MainWindow::on_updateProgressBarVal);
    connect(m_ottimizza, &Ottimizza::updateLabelAction, this, &MainWindow::on_updateLabelAction);
    connect(this, &MainWindow::stopActionPressed, m_ottimizza, &Ottimizza::on_stopActionPressed);
    connect(m_ottimizza, &Ottimizza::backFromOttimizzaToFirstMenu, this, &MainWindow::on_backFromOttimizzaToFirstMenu);
    connect(m_ottimizza, &Ottimizza::filesKept, m_endOttimizza, &EndOttimizza::setKeptFolder);
    connect(m_ottimizza, &Ottimizza::backFromOttimizzaToEndOttimizza, this,
            &MainWindow::on_backFromOttimizzaToEndOttimizza);
    connect(m_endOttimizza, &EndOttimizza::backFromEndOttimizzaToFirstMenu, this,
            &MainWindow::on_backFromEndOttimizzaToFirstMenu);
}

void MainWindow::connectAvanzate()
{
    connect(m_avanzate, &Avanzate::updateCorvinWithLastRelease, this, &MainWindow::updateCorvinWithLastRelease);
    connect(m_avanzate, &Avanzate::makeSecurityCopyOfSongs, this, &MainWindow::makeSecurityCopyOfSongs);
    connect(m_avanzate, &Avanzate::restoreSecurityCopyOfSongs, this, &MainWindow::restoreSecurityCopyOfSongs);
    connect(m_avanzate, &Avanzate::reinstallOpSysOnly, this, &MainWindow::reinstallOpSysOnly);
    connect(m_avanzate, &Avanzate::reinstallOpSysAndCleanSongs, this, &MainWindow::reinstallOpSysAndCleanSongs);
    connect(m_avanzate, &Avanzate::reinstallOpSysAndRestoreSongs, this, &MainWindow::reinstallOpSysAndRestoreSongs);
    connect(m_avanzate, &Avanzate::backFromAvanzateToFirstMenu, this, &MainWindow::on_backFromAvanzateToFirstMenu);
}

void MainWindow::connectTransfer()
{
    connect(m_transfer, &Transfer::setProgressBarVisible, this, &MainWindow::on_setProgressBarVisible);
    connect(m_transfer, &Transfer::setProgressBarMinVal, this, &MainWindow::on_setProgressBarMinVal);
    connect(m_transfer, &Transfer::setProgressBarMaxVal, this, &MainWindow::on_setProgressBarMaxVal);
    connect(m_transfer, &Transfer::setProgressBarFormat, this, &MainWindow::on_setProgressBarFormat);
    connect(m_transfer, &Transfer::updateProgressBarVal, this, &MainWindow::on_updateProgressBarVal);
    connect(m_transfer, &Transfer::increaseProgressBarVal, this, &MainWindow::on_increaseProgressBarVal);
    connect(m_transfer, &Transfer::updateLabelAction, this, &MainWindow::on_updateLabelAction);
    connect(m_transfer, &Transfer::setPushButtonStopVisible, this, &MainWindow::on_setPushButtonStopVisible);
    connect(this, &MainWindow::stopActionPressed, m_transfer, &Transfer::on_stopActionPressed);
    connect(m_transfer, &Transfer::startOttimizzaProcedure, m_ottimizza, &Ottimizza::startAllOptimization);
    connect(m_transfer, &Transfer::backFromTransferToOttimizza, this, &MainWindow::on_backFromTransferToOttimizza);
    connect(m_transfer, &Transfer::backFromTransferToFirstMenu, this, &MainWindow::on_backFromTransferToFirstMenu);
}
