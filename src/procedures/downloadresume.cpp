// The download manager's chapter of one download as several requests.
#include "downloadmanager.h"

#include <QDebug>
#include <QNetworkReply>
#include <cstdio>

namespace {

constexpr int kPauseMs = 500;
constexpr int kOk = 200;
constexpr int kPartial = 206;

int statusOf(const QNetworkReply &reply)
{
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

/// What "bytes 100-199/200" says: the first byte, 100, and the size of the whole, 200; -1 for what it does not.
struct ContentRange
{
    qint64 first = -1;
    qint64 size = -1;
};

ContentRange contentRange(const QNetworkReply &reply)
{
    const QList<QByteArray> parts = reply.rawHeader("Content-Range").trimmed().split('/');
    ContentRange range;
    bool isNumber = false;
    if (parts.size() != 2 || !parts.first().startsWith("bytes "))
        return range;
    const qint64 first = parts.first().mid(int(qstrlen("bytes "))).split('-').first().trimmed().toLongLong(&isNumber);
    range.first = isNumber ? first : -1;
    const qint64 size = parts.last().trimmed().toLongLong(&isNumber);
    range.size = isNumber ? size : -1;
    return range;
}

/// What tells this version of the file from others: a weak mark does not, byte for byte.
QByteArray validatorOf(const QNetworkReply &reply)
{
    const QByteArray mark = reply.rawHeader("ETag").trimmed();
    return mark.startsWith('"') ? mark : reply.rawHeader("Last-Modified").trimmed();
}

} // namespace

/// Sends the next request: for what is missing, where that can be told, else for the whole.
void DownloadManager::request()
{
    if (m_validator.isEmpty())
        output.resize(0);
    m_offset = output.size();
    output.seek(m_offset);
    m_headTaken = false;
    --m_requestsLeft;
    QNetworkRequest wanted(m_url);
    // The file is wanted as it lies on the server, and progress counted in its bytes.
    wanted.setRawHeader("Accept-Encoding", "identity");
    wanted.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    if (m_offset > 0) {
        wanted.setRawHeader("Range", "bytes=" + QByteArray::number(m_offset) + '-');
        wanted.setRawHeader("If-Range", m_validator);
    }
    currentReply = network.get(wanted);
    connect(currentReply, &QNetworkReply::downloadProgress, this, [this](qint64 received, qint64 total) {
        if (takeHead())
            downloadProgress(m_offset + received, total > 0 ? m_offset + total : total);
    });
    connect(currentReply, &QNetworkReply::finished, this, &DownloadManager::downloadFinished);
    connect(currentReply, &QNetworkReply::readyRead, this, &DownloadManager::downloadReadyRead);
    m_silence.start(longestSilenceMs);
}

/// Looks once at what the server answers. Returns whether what it sends belongs into the file.
bool DownloadManager::takeHead()
{
    const int status = statusOf(*currentReply);
    if (!m_headTaken && status != 0) {
        m_headTaken = true;
        if (m_offset > 0 && status == kOk) {
            // It gives no ranges, or has another version by now.
            m_offset = 0;
            output.resize(0);
            output.seek(0);
        }
        if (status == kOk)
            m_validator = validatorOf(*currentReply);
    }
    // To what has come already a page about an error is not added.
    return m_offset == 0 || (status == kPartial && contentRange(*currentReply).first == m_offset);
}

/// The size of the whole file by what the server says; -1 when it does not.
qint64 DownloadManager::announcedSize() const
{
    if (m_offset > 0)
        return contentRange(*currentReply).size;
    const QVariant length = currentReply->header(QNetworkRequest::ContentLengthHeader);
    return length.isValid() ? length.toLongLong() : -1;
}

/// Whether the reply, which has ended, is one that another request may make good.
bool DownloadManager::mayGoOnBehind() const
{
    const int status = statusOf(*currentReply);
    if (m_offset > 0 && (status != kPartial || contentRange(*currentReply).first != m_offset))
        return true;
    if (status != kOk && status != kPartial)
        return currentReply->error() == QNetworkReply::RemoteHostClosedError;
    return currentReply->error() != QNetworkReply::NoError || output.size() < announcedSize();
}

void DownloadManager::endReply()
{
    m_silence.stop();
    if (!currentReply)
        return;
    currentReply->disconnect(this);
    currentReply->abort();
    currentReply->deleteLater();
    currentReply = nullptr;
}

/// Sends another request after a while, if any is left; else the download has failed.
void DownloadManager::takeUpAgain(const QString &why)
{
    // A server that does not know the range may know the whole.
    constexpr int kNoSuchRange = 416;
    if (currentReply && (statusOf(*currentReply) == kNoSuchRange || statusOf(*currentReply) == kPartial) && !takeHead())
        m_validator.clear();
    endReply();
    qInfo().noquote() << "DownloadManager :" << why << "after" << output.size() << "bytes";
    if (m_requestsLeft > 0) {
        m_pause.start(kPauseMs);
        return;
    }
    std::fprintf(stderr, "Failed: %s\n", qPrintable(why));
    std::fflush(stderr);
    output.close();
    done = true;
}
