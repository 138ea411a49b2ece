// The main window's chapter that shows what long work reports, and lets the user stop it.
#include "mainwindow.h"

#include "app/shared/questionbox.h"
#include "app/shared/shade.h"
#include "pacedbar.h"
#include "ui_mainwindow.h"

#include <QApplication>
#include <QDebug>
#include <QProgressBar>

void MainWindow::on_setProgressBarVisible(bool visible)
{
    m_pacedBar->settle();
    ui->progressBar->setVisible(visible);
    ui->progressBar->setValue(0);
    ui->progressBar->setFormat(QStringLiteral("%p%"));
    ui->labelAction->clear();
    ui->labelAction->setVisible(visible);
    ui->pushButtonStop->setVisible(visible);
}

void MainWindow::on_setProgressBarMinVal(int value)
{
    m_pacedBar->settle();
    ui->progressBar->setMinimum(value);
}

void MainWindow::on_setProgressBarMaxVal(int value)
{
    m_pacedBar->settle();
    ui->progressBar->setMaximum(value);
}

void MainWindow::on_setProgressBarFormat(const QString &format)
{
    ui->progressBar->setFormat(format);
}

void MainWindow::on_updateProgressBarVal(int value)
{
    m_pacedBar->setValue(value);
}

void MainWindow::on_increaseProgressBarVal()
{
    m_pacedBar->setValue(m_pacedBar->value() + 1);
}

void MainWindow::on_updateLabelAction(const QString &text)
{
    qInfo() << "MainWindow::on_updateLabelAction :" << text;
    ui->labelAction->setText(text);
}

void MainWindow::on_setPushButtonStopVisible(bool visible)
{
    ui->pushButtonStop->setVisible(visible);
}

void MainWindow::on_pushButtonStop_clicked()
{
    Question question;
    question.title = tr("Interrompi Operazione");
    question.text = tr("Vuoi interrompere le operazioni in corso ?");
    question.buttons = {{QMessageBox::Yes, tr("Si")}, {QMessageBox::No, tr("No")}};
    question.defaultButton = QMessageBox::Yes;
    question.escapeButton = QMessageBox::No;
    if (askQuestion(this, question) != QMessageBox::Yes)
        return;
    abortRequested = true;
    qInfo() << "MainWindow::on_pushButtonStop_clicked : !!! ABORT PRESSED !!!";
    emit stopActionPressed();
}

void MainWindow::on_pushButtonAboutQT_clicked()
{
    const Shade shade;
    QApplication::aboutQt();
}
