// The main window's chapter that erases the player's disk with the system's own format command.
#include "app/mainwindow.h"

#include "app/shared/questionbox.h"
#include "disk/waitms.h"
#include "ui_mainwindow.h"

#include <QCoreApplication>
#include <QDebug>
#include <QProcess>

namespace {

constexpr int kStartTimeoutMs = 30000;
constexpr int kLookIntervalMs = 500;
constexpr int kSettleMs = 1000;
constexpr int kMaximumAfterFormat = 10;

bool confirmFormat(const QString &drive)
{
    Question question;
    question.title = MainWindow::tr("Cancellazione Drive");
    question.text =
        MainWindow::tr("ATTENZIONE: Il drive ") + drive + MainWindow::tr(" verrà cancellato.\nVuoi continuare?");
    question.buttons = {{QMessageBox::Yes, MainWindow::tr("Si")}, {QMessageBox::No, MainWindow::tr("No")}};
    question.defaultButton = QMessageBox::Yes;
    question.escapeButton = QMessageBox::No;
    return askQuestion(nullptr, question) == QMessageBox::Yes;
}

/// Runs the format command on @p drive ("E:"); the window stands still meanwhile. Returns whether it ran to its end.
bool runFormat(const QString &drive)
{
    const QString program = QStringLiteral("cmd.exe");
    const QStringList arguments = {QStringLiteral("/C"),        QStringLiteral("format"),     drive,
                                   QStringLiteral("/FS:exFAT"), QStringLiteral("/V:CORVIN4"), QStringLiteral("/Q"),
                                   QStringLiteral("/X"),        QStringLiteral("/Y")};
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments, QIODevice::ReadWrite);
    // Deliberate: what the command says and its exit code do not count, only that it ran to its end.
    const bool ran = process.waitForStarted(kStartTimeoutMs) && process.waitForFinished(-1);
    qDebug() << program << arguments.join(QStringLiteral(", ")) << QString::fromLocal8Bit(process.readAll());
    return ran;
}

} // namespace

bool MainWindow::FormatCorvinDisk(const QString &drive)
{
    lastFormatOutcome = FormatOutcome::Refused;
    if (!confirmFormat(drive))
        return false;
    qInfo() << "FormatCorvinDisk : Inizio";
    showOperation(TEXT_FORMATTING);
    ui->progressBar->setMaximum(0);
    ui->progressBar->setValue(0);
    lastFormatOutcome = runFormat(drive.chopped(qMin(1, drive.size()))) ? FormatOutcome::Done : FormatOutcome::Failed;

    waitMs(kLookIntervalMs);
    // Deliberate: waits without limit, STOP or not. A disk being formatted is not to be left alone.
    while (deviceLocator.findDeviceRoot().isEmpty()) {
        QCoreApplication::processEvents();
        waitMs(kLookIntervalMs);
    }
    waitMs(kSettleMs);
    ui->progressBar->setMaximum(kMaximumAfterFormat);
    qInfo() << "FormatCorvinDisk : Fine";
    return lastFormatOutcome == FormatOutcome::Done;
}
