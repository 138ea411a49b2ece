// The main window's chapter that unpacks a downloaded archive.
#include "app/mainwindow.h"

#include "disk/waitms.h"
#include "archivetool.h"
#include "ui_mainwindow.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

namespace {
constexpr int kWaitMs = 200;
}

bool MainWindow::unpackArchive(const QString &archivePath)
{
    const QString folder = QFileInfo(archivePath).absolutePath();
    const QString program = archiveTool(QCoreApplication::applicationDirPath());
    const QStringList arguments = {archivePath, QStringLiteral("-o"), folder, QStringLiteral("-no-directory")};

    QProcess tool;
    bool ended = false;
    connect(&tool, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this, [&ended] { ended = true; });
    tool.setWorkingDirectory(QFileInfo(program).absolutePath());
    tool.setProcessChannelMode(QProcess::MergedChannels);
    // A tool that asks (for a password, or whether to overwrite) must not wait for an answer that never comes.
    tool.setStandardInputFile(QProcess::nullDevice());
    tool.start(program, arguments);
    const bool started = tool.waitForStarted(-1);
    waitMs(kWaitMs);
    ui->progressBar->setMaximum(0);
    ui->progressBar->setValue(0);
    while (started && !ended) {
        if (abortRequested)
            tool.kill();
        ui->progressBar->repaint();
        waitMs(kWaitMs);
    }
    qDebug() << "unpackArchive :" << program << arguments.join(QStringLiteral(", ")) << tool.exitCode()
             << QString::fromLocal8Bit(tool.readAll());
    if (!started)
        return false;
    // Deliberate: the exit code is not looked at; what the archive brought shows in the folder.
    QFile::remove(archivePath);
    removeUnpackedLinks(folder);
    return true;
}
