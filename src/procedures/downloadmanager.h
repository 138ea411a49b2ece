#pragma once

#include <QFile>
#include <QList>
#include <QNetworkAccessManager>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTime>
#include <QTimer>
#include <QUrl>

class QNetworkReply;

/// Fetches files over HTTP, one after another, into the folder "Corvin" below the PC's temporary folder, and tells
/// about each on standard output and standard error. Asynchronous: needs events to be processed while a download runs;
/// whoever waits polls `done` and `percent`. A transfer that breaks off, or brings nothing for a minute, is taken up
/// where it broke off, or from its start where the server does not let it; after four requests it has failed. A manager
/// that is destroyed breaks its download off and leaves the file as far as it got.
///
/// The queue (append(), startNextDownload(), finished()) is there for outsiders: the program itself downloads one file
/// a manager, by download().
class DownloadManager : public QObject
{
    Q_OBJECT

public:
    static constexpr int kFullPercent = 100; ///< of a download of which everything has come

    explicit DownloadManager(QObject *parent = nullptr); ///< starts nothing
    ~DownloadManager() override;

    /// The folder that all downloads land in, absolute, with forward slashes.
    static QString downloadFolder();

    /// The path under which @p url is saved: in downloadFolder(), under the last component of the URL's path, or
    /// "download" when that is empty or no file's name. Removes a file that exists there.
    static QString saveFileName(const QUrl &url);

    /// Puts @p url at the end of the queue. startNextDownload() takes it from there.
    void append(const QUrl &url);
    /// The same for a URL as text.
    void append(const QString &url);

    /// Starts one download directly, past the queue, over a download that is still running. Returns whether the file
    /// could be opened for writing; whether the server can be reached shows later, by the file that is there or not.
    bool download(const QString &url);

    bool done = false;                    ///< false while a download runs, true once its reply has finished
    qint32 percent = 0;                   ///< progress of the current download; stays while the whole size is unknown
    QString savePath;                     ///< the file being written, or the last one that was
    QNetworkAccessManager network;        ///< sends the requests
    QList<QUrl> queue;                    ///< downloads still to start
    QFile output;                         ///< the file being written
    QPointer<QNetworkReply> currentReply; ///< the running request
    QTime clock;                          ///< when the current download was started
    bool whole = false;                   ///< after `done`: no error, and all the bytes that the server announced
    int longestSilenceMs = 60000;         ///< after which a transfer that brings nothing counts as broken off
    int downloadedCount = 0;              ///< downloads that succeeded
    int totalCount = 0;                   ///< downloads queued since construction

signals:
    /// The queue has nothing left to start.
    void finished();

public slots:
    /// Starts the first download of the queue whose file can be opened. With an empty queue prints how many succeeded
    /// and emits finished().
    void startNextDownload();
    void downloadProgress(qint64 bytesReceived, qint64 bytesTotal); ///< of the running request; keeps percent
    void downloadFinished();  ///< the running request has ended: takes the transfer up again, or ends it
    void downloadReadyRead(); ///< writes what has come to the file

private:
    bool start(const QUrl &url);
    void breakOff();

    // In downloadresume.cpp: one download as several requests.
    void request();
    bool takeHead();
    bool mayGoOnBehind() const;
    void endReply();
    void takeUpAgain(const QString &why);
    qint64 announcedSize() const;

    QUrl m_url;
    int m_requestsLeft = 0;
    bool m_headTaken = false;
    qint64 m_offset = 0;    ///< bytes that were there before the running request
    QByteArray m_validator; ///< which version of the file it is that has come so far; empty when nobody can tell
    QTimer m_silence;
    QTimer m_pause; ///< ahead of the next request
};
