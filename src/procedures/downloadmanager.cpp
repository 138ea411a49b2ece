#include "downloadmanager.h"

#include <QDir>
#include <QFileInfo>
#include <QNetworkProxyFactory>
#include <QNetworkReply>
#include <QTimer>
#include <cstdio>

namespace {

constexpr int kMostRequests = 4;

/// The console lines are read while the program runs, also through a pipe.
template <typename... Values> void print(std::FILE *stream, const char *format, Values... values)
{
    std::fprintf(stream, format, values...);
    std::fflush(stream);
}

QString fileNameOf(const QUrl &url)
{
    QString name = QFileInfo(url.path()).fileName();
    // The name comes from outside: none may lead out of the folder, on any system.
    if (name.isEmpty() || name == QLatin1String(".") || name == QLatin1String("..") ||
        name.contains(QLatin1Char('\\')) || name.contains(QLatin1Char(':')))
        return QStringLiteral("download");
    return name;
}

} // namespace

DownloadManager::DownloadManager(QObject *parent) : QObject(parent)
{
    // What the PC's other programs reach the net by.
    QNetworkProxyFactory::setUseSystemConfiguration(true);
    m_silence.setSingleShot(true);
    m_pause.setSingleShot(true);
    connect(&m_silence, &QTimer::timeout, this, [this] { takeUpAgain(QStringLiteral("The server is silent")); });
    connect(&m_pause, &QTimer::timeout, this, &DownloadManager::request);
}

DownloadManager::~DownloadManager()
{
    breakOff();
}

QString DownloadManager::downloadFolder()
{
    return QDir::cleanPath(QDir::tempPath() + QLatin1Char('/') + QStringLiteral("Corvin"));
}

QString DownloadManager::saveFileName(const QUrl &url)
{
    QString path = QDir::cleanPath(downloadFolder() + QLatin1Char('/') + fileNameOf(url));
    if (QFile::exists(path))
        QFile::remove(path);
    return path;
}

void DownloadManager::append(const QUrl &url)
{
    // Deliberate: asked before the URL is in the queue, so this only tells that there was nothing left to start.
    if (queue.isEmpty())
        startNextDownload();
    queue.append(url);
    ++totalCount;
}

void DownloadManager::append(const QString &url)
{
    append(QUrl::fromEncoded(url.toLocal8Bit()));
    if (queue.isEmpty())
        QTimer::singleShot(0, this, &DownloadManager::finished);
}

bool DownloadManager::download(const QString &url)
{
    return start(QUrl::fromEncoded(url.toLocal8Bit()));
}

void DownloadManager::startNextDownload()
{
    done = false;
    while (!queue.isEmpty()) {
        if (start(queue.takeFirst()))
            return;
    }
    print(stdout, "%d/%d files downloaded successfully\n", downloadedCount, totalCount);
    emit finished();
}

bool DownloadManager::start(const QUrl &url)
{
    breakOff();
    done = false;
    whole = false;
    percent = 0;
    savePath = saveFileName(url);
    output.setFileName(savePath);
    // Unbuffered: whoever gives up waiting judges the file by its size on the disk.
    if (!output.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        print(stderr, "Problem opening save file '%s' for download '%s': %s\n", qPrintable(savePath),
              url.toEncoded().constData(), qPrintable(output.errorString()));
        return false;
    }
    m_url = url;
    m_validator.clear();
    m_requestsLeft = kMostRequests;
    request();
    print(stdout, "Downloading %s...\n", url.toEncoded().constData());
    clock = QTime::currentTime();
    return true;
}

void DownloadManager::downloadProgress(qint64 bytesReceived, qint64 bytesTotal)
{
    // Without a known size there is nothing to count against: the bar stays where it is.
    if (bytesTotal > 0)
        percent = static_cast<qint32>(bytesReceived * kFullPercent / bytesTotal);
}

void DownloadManager::downloadReadyRead()
{
    if (!currentReply || !output.isOpen())
        return;
    m_silence.start(longestSilenceMs);
    const QByteArray received = currentReply->readAll();
    if (!takeHead() || output.write(received) == received.size())
        return;
    // The PC's disk is full. A file with a hole in it is no download, so nothing of it stays.
    print(stderr, "Failed: %s\n", qPrintable(output.errorString()));
    breakOff();
    QFile::remove(savePath);
    done = true;
}

void DownloadManager::downloadFinished()
{
    downloadReadyRead();
    if (!currentReply)
        return;
    if (mayGoOnBehind()) {
        takeUpAgain(currentReply->errorString());
        return;
    }
    if (currentReply->error() != QNetworkReply::NoError) {
        print(stderr, "Failed: %s\n", qPrintable(currentReply->errorString()));
    } else {
        print(stdout, "Succeeded.\n");
        ++downloadedCount;
        whole = announcedSize() < 0 || announcedSize() == output.size();
    }
    endReply();
    output.close();
    done = true;
}

/// Ends a download that still runs, without a word; its file stays as far as it got.
void DownloadManager::breakOff()
{
    m_pause.stop();
    endReply();
    output.close();
}
