// The main window's chapter that downloads one file and waits for it.
#include "app/mainwindow.h"

#include "disk/waitms.h"
#include "downloadmanager.h"
#include "disk/tree.h"
#include "ui_mainwindow.h"

#include <QFileInfo>

namespace {
constexpr int kWaitMs = 200;
constexpr int kFullPercent = 100;
// Deliberate: the size alone tells a release from the page that a server sends instead of one.
constexpr qint64 kSmallestRelease = 10000;
} // namespace

QString MainWindow::downloadFile(const QString &url, bool makeFolder)
{
    DownloadManager manager;
    if (makeFolder)
        emptyFolder(DownloadManager::downloadFolder());
    if (!manager.download(url))
        return QString();

    ui->progressBar->setRange(0, kFullPercent);
    ui->progressBar->setValue(0);
    while (!manager.done) {
        ui->progressBar->setValue(manager.percent);
        if (abortRequested)
            break;
        waitMs(kWaitMs);
    }
    ui->progressBar->setValue(kFullPercent);
    ui->progressBar->repaint();
    manager.disconnect();
    waitMs(kWaitMs);

    const QFileInfo saved(manager.savePath);
    return saved.size() >= kSmallestRelease ? saved.filePath() : QString();
}
