#include "downloadfixture.h"
#include "support/methods.h"

#include <QNetworkProxyFactory>
#include <cstdio>
#include <unistd.h>

namespace {

/// What the program prints on one of its console streams while this lives.
class ConsoleCapture
{
public:
    explicit ConsoleCapture(std::FILE *stream) : m_stream(stream), m_before(dup(fileno(stream))) {
        std::fflush(m_stream);
        if (m_file.open())
            dup2(m_file.handle(), fileno(m_stream));
    }
    ~ConsoleCapture() {
        dup2(m_before, fileno(m_stream));
        close(m_before);
    }
    Q_DISABLE_COPY(ConsoleCapture)
    QByteArray text() { return contentOf(m_file.fileName()); }

private:
    std::FILE *m_stream;
    int m_before;
    QTemporaryFile m_file;
};

} // namespace

class TestDownloadManager : public QObject
{
    Q_OBJECT

private slots:
    void signalsAndSlotsComeInTheirOrder() {
        QCOMPARE(methodsOf<DownloadManager>(QMetaMethod::Signal), words("finished()"));
        QCOMPARE(
            methodsOf<DownloadManager>(QMetaMethod::Slot),
            words("startNextDownload() downloadProgress(qlonglong,qlonglong) downloadFinished() downloadReadyRead()"));
    }

    void lastPartOfThePathIsTheNameAndAFileOfThatNameIsRemoved_data() {
        columns<QString, QString>("url", "name");
        row("file", "http://h/download/Corvin4/CorvinUpdate.c4"_s, "CorvinUpdate.c4"_s);
        row("query is no name", "http://h/a.zip?b=/c.zip"_s, "a.zip"_s);
        row("escaped blank", "http://h/a%20b.zip"_s, "a b.zip"_s);
        row("ends in a slash", "http://h/folder/"_s, "download"_s);
        row("no path", "http://h"_s, "download"_s);
        row("parent folder", "http://h/a/.."_s, "download"_s);
        row("this folder", "http://h/a/."_s, "download"_s);
        // Where a backslash separates folders, it separates them here too.
        const bool separates = QDir::separator() != QLatin1Char('/');
        row("backslashes", "http://h/..%5C..%5Cevil.exe"_s, separates ? "evil.exe"_s : "download"_s);
        row("drive or stream", "http://h/c:evil.exe"_s, "download"_s);
    }
    void lastPartOfThePathIsTheNameAndAFileOfThatNameIsRemoved() {
        QFETCH(QString, url);
        QFETCH(QString, name);
        const Downloads d;
        putFile(d.saved(name), "old");
        putFile(d.saved("other.zip"_s), "other");
        QCOMPARE(DownloadManager::saveFileName(QUrl(url)), d.saved(name));
        QCOMPARE(filesBelow(d.pc.downloads()), words("other.zip"));
    }

    void wholeFileIsSaved() {
        Downloads d;
        d.server.serve(kFile, noise(kSize));
        ConsoleCapture out(stdout);
        QVERIFY(d.manager.download(d.url()));
        QVERIFY(!d.manager.done);
        QVERIFY(d.manager.clock.isValid());
        QTRY_VERIFY(d.manager.done);
        QCOMPARE(d.manager.savePath, d.saved());
        QCOMPARE(d.content(), noise(kSize));
        QCOMPARE(d.manager.percent, 100);
        QCOMPARE(d.manager.downloadedCount, 1);
        QCOMPARE(out.text(), "Downloading " + d.url().toLatin1() + "...\nSucceeded.\n");
        QCOMPARE(d.server.requests(), QStringList{kFile});
    }

    void fileThatCannotBeOpenedIsNotDownloaded() {
        Downloads d;
        QVERIFY(QDir().rmdir(d.pc.downloads()));
        const QString url = d.url("/a%20b.zip"_s);
        // Each system has its own words for it.
        QFile same(d.saved("a b.zip"_s));
        QVERIFY(!same.open(QIODevice::WriteOnly));
        ConsoleCapture err(stderr);
        QVERIFY(!d.manager.download(url));
        QCOMPARE(err.text(), "Problem opening save file '" + same.fileName().toLocal8Bit() + "' for download '" +
                                 url.toLatin1() + "': " + same.errorString().toLocal8Bit() + '\n');
        QVERIFY(d.server.requests().isEmpty());
    }

    void failedDownloadStaysAsFarAsItGot_data() {
        columns<int, QByteArray, int, qint32>("status", "error", "arrives", "percent");
        row("error status, whose page is saved", 404, QByteArray("Failed: "), kSize, 100);
        row("cut", 200, QByteArray("Failed: "), kSize / 2, 50);
        row("refused", 0, QByteArray("Failed: Connection refused\n"), 0, 0);
    }
    void failedDownloadStaysAsFarAsItGot() {
        QFETCH(int, status);
        QFETCH(QByteArray, error);
        QFETCH(int, arrives);
        Downloads d;
        if (status == 404)
            d.server.serveError(kFile, status, noise(kSize));
        else if (status == 200)
            d.server.serveCut(kFile, noise(kSize), arrives);
        else
            d.server.refuse();
        ConsoleCapture out(stdout);
        ConsoleCapture err(stderr);
        d.fetch();
        QVERIFY2(err.text().startsWith(error) && err.text().endsWith('\n'), err.text().constData());
        QVERIFY(!out.text().contains("Succeeded"));
        QCOMPARE(d.content(), noise(kSize).left(arrives));
        QTEST(d.manager.percent, "percent");
        QCOMPARE(d.manager.downloadedCount, 0);
    }

    void systemsProxyIsUsed() {
        const DownloadManager manager;
        QVERIFY(QNetworkProxyFactory::usesSystemConfiguration());
    }

    void redirectionIsFollowed() {
        Downloads d;
        d.server.redirect(kFile, d.url(kOther).toLatin1());
        d.server.serve(kOther, noise(kSize));
        d.fetch();
        QVERIFY(d.manager.whole);
        QCOMPARE(d.content(), noise(kSize));
    }

    void secondDownloadTakesThePlaceOfTheFirst() {
        Downloads d;
        d.server.serveStalled("/slow/a.zip"_s, noise(kSize), kSize / 2);
        d.server.serve(kFile, "whole");
        QVERIFY(d.manager.download(d.url("/slow/a.zip"_s)));
        QTRY_COMPARE(d.manager.percent, 50);
        QVERIFY(d.manager.download(d.url()));
        QCOMPARE(d.manager.percent, 0);
        QVERIFY(!d.manager.done);
        QTRY_VERIFY(d.manager.done);
        QCOMPARE(d.content(), QByteArray("whole"));
        QCOMPARE(d.manager.downloadedCount, 1);
    }

    void percentIsTruncated_data() {
        columns<qint64, qint64, qint32>("received", "total", "percent");
        row("nothing yet", 0LL, 10LL, 0);
        row("a third", 1LL, 3LL, 33);
        row("all but one byte", 999LL, 1000LL, 99);
        row("all", 1000LL, 1000LL, 100);
        row("more than 32 bits can count", 6000000000LL, 8000000000LL, 75);
        row("stays where it is for size zero", 900LL, 0LL, 50);
        row("stays where it is for an unknown size", 900LL, -1LL, 50);
    }
    void percentIsTruncated() {
        QFETCH(qint64, received);
        QFETCH(qint64, total);
        DownloadManager manager;
        manager.downloadProgress(1, 2);
        manager.downloadProgress(received, total);
        QTEST(manager.percent, "percent");
    }

    void firstUrlOfAnEmptyQueueTellsThatTheQueueIsEmpty() {
        Downloads d;
        QSignalSpy finished(&d.manager, &DownloadManager::finished);
        int queuedThen = -1;
        connect(&d.manager, &DownloadManager::finished, this, [&] { queuedThen = d.manager.queue.size(); });
        ConsoleCapture out(stdout);
        d.manager.append(QUrl(d.url()));
        QCOMPARE(out.text(), QByteArray("0/0 files downloaded successfully\n"));
        QCOMPARE(finished.count(), 1);
        QCOMPARE(queuedThen, 0);
        QCOMPARE(d.manager.queue, QList<QUrl>{QUrl(d.url())});
        QCOMPARE(d.manager.totalCount, 1);
        QVERIFY(d.server.requests().isEmpty());
    }

    void textIsQueuedLikeAUrlAndLaterOnesAreOnlyQueued() {
        DownloadManager manager;
        QSignalSpy finished(&manager, &DownloadManager::finished);
        manager.append("http://h/a%20b"_s);
        // The queue holds the URL, so nothing more is scheduled.
        QCoreApplication::processEvents();
        manager.append(QUrl("http://h/b"_s));
        QCOMPARE(finished.count(), 1);
        QCOMPARE(manager.queue, (QList<QUrl>{QUrl::fromEncoded("http://h/a%20b"), QUrl("http://h/b"_s)}));
        QCOMPARE(manager.totalCount, 2);
    }

    void queueIsTakenFromTheFrontAndNotByItself() {
        Downloads d;
        d.server.serve(kFile, "a");
        d.server.serve(kOther, "b");
        d.manager.append(d.url(kFile));
        d.manager.append(d.url(kOther));
        d.manager.startNextDownload();
        QTRY_VERIFY(d.manager.done);
        QCoreApplication::processEvents();
        QCOMPARE(d.manager.queue.size(), 1);
        QCOMPARE(d.server.requests(), QStringList{kFile});
        d.manager.startNextDownload();
        QVERIFY(!d.manager.done);
        QTRY_VERIFY(d.manager.done);
        ConsoleCapture out(stdout);
        d.manager.startNextDownload();
        QCOMPARE(out.text(), QByteArray("2/2 files downloaded successfully\n"));
        QCOMPARE(d.server.requests(), (QStringList{kFile, kOther}));
        QCOMPARE(d.content("b.zip"_s), QByteArray("b"));
    }

    void urlsThatCannotBeSavedArePassedOver() {
        Downloads d;
        d.server.serve(kOther, "b");
        // A folder stands where the first file would be saved.
        d.pc.addFolder("Corvin/a.zip"_s);
        d.manager.append(d.url(kFile));
        d.manager.append(d.url(kOther));
        ConsoleCapture err(stderr);
        d.manager.startNextDownload();
        QVERIFY(err.text().startsWith("Problem opening save file '"));
        QTRY_VERIFY(d.manager.done);
        QCOMPARE(d.server.requests(), QStringList{kOther});
        QVERIFY(d.manager.queue.isEmpty());
    }

    void destroyedManagerBreaksItsDownloadOff() {
        Downloads d;
        d.server.serveStalled(kFile, noise(kSize), kSize / 2);
        {
            DownloadManager manager;
            QVERIFY(manager.download(d.url()));
            QTRY_COMPARE(manager.percent, 50);
        }
        QCoreApplication::processEvents();
        QCOMPARE(QFileInfo(d.saved()).size(), kSize / 2);
    }

    void fullDiskLeavesNoFile() {
        MOUNT_PLAYER(small, 4);
        Downloads d;
        qputenv("TMPDIR", QFile::encodeName(QDir::cleanPath(small.root())));
        QVERIFY(QDir().mkpath(DownloadManager::downloadFolder()));
        d.server.serve(kFile, noise(8 * 1024 * 1024));
        ConsoleCapture err(stderr);
        d.fetch();
        QVERIFY(err.text().startsWith("Failed: "));
        QCOMPARE(d.manager.downloadedCount, 0);
        QVERIFY(!QFile::exists(d.manager.savePath));
    }
};

QTEST_GUILESS_MAIN(TestDownloadManager)
#include "tst_downloadmanager.moc"
