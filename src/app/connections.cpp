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
    connectEndOttimizza();
}

void MainWindow::connectCheck()
{
    connect(check, &Check::setProgressBarVisible, this, &MainWindow::on_setProgressBarVisible);
    connect(check, &Check::setProgressBarMinVal, this, &MainWindow::on_setProgressBarMinVal);
    connect(check, &Check::setProgressBarMaxVal, this, &MainWindow::on_setProgressBarMaxVal);
    connect(check, &Check::updateProgressBarVal, this, &MainWindow::on_updateProgressBarVal);
    connect(check, &Check::updateLabelAction, this, &MainWindow::on_updateLabelAction);
    connect(check, &Check::setPushButtonStopVisible, this, &MainWindow::on_setPushButtonStopVisible);
    connect(check, &Check::reinstallOpSysOnly, this, &MainWindow::reinstallOpSysOnly);
    connect(check, &Check::checkDone, this, &MainWindow::on_checkDone);
}

void MainWindow::connectFirstMenu()
{
    connect(firstMenu, &FirstMenu::gotoTransfer, this, &MainWindow::on_gotoTransfer);
    connect(firstMenu, &FirstMenu::gotoAvanzate, this, &MainWindow::on_gotoAvanzate);
    connect(firstMenu, &FirstMenu::gotoOptimizer, this, &MainWindow::on_gotoOptimizer);
}

void MainWindow::connectOttimizza()
{
    connect(ottimizza, &Ottimizza::setProgressBarVisible, this, &MainWindow::on_setProgressBarVisible);
    connect(ottimizza, &Ottimizza::setProgressBarMinVal, this, &MainWindow::on_setProgressBarMinVal);
    connect(ottimizza, &Ottimizza::setProgressBarMaxVal, this, &MainWindow::on_setProgressBarMaxVal);
    connect(ottimizza, &Ottimizza::setProgressBarFormat, this, &MainWindow::on_setProgressBarFormat);
    connect(ottimizza, &Ottimizza::updateProgressBarVal, this, &MainWindow::on_updateProgressBarVal);
    connect(ottimizza, &Ottimizza::updateLabelAction, this, &MainWindow::on_updateLabelAction);
    connect(this, &MainWindow::stopActionPressed, ottimizza, &Ottimizza::on_stopActionPressed);
    connect(ottimizza, &Ottimizza::backFromOttimizzaToFirstMenu, this, &MainWindow::on_backFromOttimizzaToFirstMenu);
    connect(ottimizza, &Ottimizza::backFromOttimizzaToEndOttimizza, this,
            &MainWindow::on_backFromOttimizzaToEndOttimizza);
}

void MainWindow::connectAvanzate()
{
    connect(avanzate, &Avanzate::updateCorvinWithLastRelease, this, &MainWindow::updateCorvinWithLastRelease);
    connect(avanzate, &Avanzate::makeSecurityCopyOfSongs, this, &MainWindow::makeSecurityCopyOfSongs);
    connect(avanzate, &Avanzate::restoreSecurityCopyOfSongs, this, &MainWindow::restoreSecurityCopyOfSongs);
    connect(avanzate, &Avanzate::reinstallOpSysOnly, this, &MainWindow::reinstallOpSysOnly);
    connect(avanzate, &Avanzate::reinstallOpSysAndCleanSongs, this, &MainWindow::reinstallOpSysAndCleanSongs);
    connect(avanzate, &Avanzate::reinstallOpSysAndRestoreSongs, this, &MainWindow::reinstallOpSysAndRestoreSongs);
    connect(avanzate, &Avanzate::backFromAvanzateToFirstMenu, this, &MainWindow::on_backFromAvanzateToFirstMenu);
}

void MainWindow::connectTransfer()
{
    connect(transfer, &Transfer::setProgressBarVisible, this, &MainWindow::on_setProgressBarVisible);
    connect(transfer, &Transfer::setProgressBarMinVal, this, &MainWindow::on_setProgressBarMinVal);
    connect(transfer, &Transfer::setProgressBarMaxVal, this, &MainWindow::on_setProgressBarMaxVal);
    connect(transfer, &Transfer::setProgressBarFormat, this, &MainWindow::on_setProgressBarFormat);
    connect(transfer, &Transfer::updateProgressBarVal, this, &MainWindow::on_updateProgressBarVal);
    connect(transfer, &Transfer::increaseProgressBarVal, this, &MainWindow::on_increaseProgressBarVal);
    connect(transfer, &Transfer::updateLabelAction, this, &MainWindow::on_updateLabelAction);
    connect(transfer, &Transfer::setPushButtonStopVisible, this, &MainWindow::on_setPushButtonStopVisible);
    connect(this, &MainWindow::stopActionPressed, transfer, &Transfer::on_stopActionPressed);
    connect(transfer, &Transfer::startOttimizzaProcedure, ottimizza, &Ottimizza::startAllOptimization);
    connect(transfer, &Transfer::backFromTransferToOttimizza, this, &MainWindow::on_backFromTransferToOttimizza);
    connect(transfer, &Transfer::backFromTransferToFirstMenu, this, &MainWindow::on_backFromTransferToFirstMenu);
}

void MainWindow::connectEndOttimizza()
{
    connect(endOttimizza, &EndOttimizza::backFromEndOttimizzaToFirstMenu, this,
            &MainWindow::on_backFromEndOttimizzaToFirstMenu);
}
