#include "procedures/downloadmanager.h"

#include "support/httpserver.h"
#include "systemfixture.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryFile>
#include <QTest>
#include <cstdio>

#include <unistd.h>

namespace {

/// What the program prints on one of its console streams while this lives.
class ConsoleCapture
{
public:
    explicit ConsoleCapture(std::FILE *stream) : m_stream(stream), m_before(dup(fileno(stream)))
    {
        std::fflush(m_stream);
        if (m_file.open())
            dup2(m_file.handle(), fileno(m_stream));
    }
    ~ConsoleCapture()
    {
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

constexpr int kSize = 50000;

} // namespace

class TestDownloadManager : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void lastPartOfThePathIsTheName_data();
    void lastPartOfThePathIsTheName();
    void fileOfTheSameNameIsRemoved();
    void wholeFileIsSaved();
    void fileThatCannotBeOpenedIsNotDownloaded();
    void errorStatusIsAFailureWithItsPageSaved();
    void refusedConnectionIsAFailure();
    void cutFileIsAFailureAndStaysAsFarAsItGot();
    void secondDownloadTakesThePlaceOfTheFirst();
    void percentIsTruncated_data();
    void percentIsTruncated();
    void unknownSizeLeavesThePercentWhereItIs_data();
    void unknownSizeLeavesThePercentWhereItIs();
    void newDownloadStartsAtZeroPercent();
    void firstUrlOfAnEmptyQueueTellsThatTheQueueIsEmpty();
    void laterUrlsAreOnlyQueued();
    void textIsQueuedLikeAUrl();
    void queueIsTakenFromTheFront();
    void urlsThatCannotBeSavedArePassedOver();
    void nextDownloadDoesNotStartByItself();
    void destroyedManagerBreaksItsDownloadOff();
    void fullDiskLeavesNoFile();

private:
    QString saved(const QString &name) const { return m_pc->downloads() + QLatin1Char('/') + name; }

    QScopedPointer<TemporaryPc> m_pc;
    QScopedPointer<HttpServer> m_server;
};

void TestDownloadManager::init()
{
    m_pc.reset(new TemporaryPc);
    m_server.reset(new HttpServer);
    QVERIFY(QDir().mkpath(m_pc->downloads()));
}

void TestDownloadManager::cleanup()
{
    m_server.reset();
    m_pc.reset();
}

void TestDownloadManager::lastPartOfThePathIsTheName_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("name");
    const QString other = QStringLiteral("download");
    QTest::newRow("file") << QStringLiteral("http://h/download/Corvin4/CorvinUpdate.c4")
                          << QStringLiteral("CorvinUpdate.c4");
    QTest::newRow("query is no name") << QStringLiteral("http://h/a.zip?b=/c.zip") << QStringLiteral("a.zip");
    QTest::newRow("escaped blank") << QStringLiteral("http://h/a%20b.zip") << QStringLiteral("a b.zip");
    QTest::newRow("ends in a slash") << QStringLiteral("http://h/folder/") << other;
    QTest::newRow("no path") << QStringLiteral("http://h") << other;
    QTest::newRow("parent folder") << QStringLiteral("http://h/a/..") << other;
    QTest::newRow("this folder") << QStringLiteral("http://h/a/.") << other;
    // Where a backslash separates folders, it separates them here too.
    QTest::newRow("backslashes") << QStringLiteral("http://h/..%5C..%5Cevil.exe")
                                 << (QDir::separator() == QLatin1Char('/') ? other : QStringLiteral("evil.exe"));
    QTest::newRow("drive or stream") << QStringLiteral("http://h/c:evil.exe") << other;
}

void TestDownloadManager::lastPartOfThePathIsTheName()
{
    QFETCH(QString, url);
    QFETCH(QString, name);
    QCOMPARE(DownloadManager::saveFileName(QUrl(url)), saved(name));
}

void TestDownloadManager::fileOfTheSameNameIsRemoved()
{
    putFile(saved(QStringLiteral("a.zip")), "old");
    putFile(saved(QStringLiteral("b.zip")), "other");
    DownloadManager::saveFileName(QUrl(QStringLiteral("http://h/a.zip")));
    QCOMPARE(filesBelow(m_pc->downloads()), QStringList{QStringLiteral("b.zip")});
}

void TestDownloadManager::wholeFileIsSaved()
{
    const QByteArray content = noise(kSize);
    m_server->serve(QStringLiteral("/a.zip"), content);
    const QString url = m_server->url(QStringLiteral("/a.zip"));
    DownloadManager manager;
    ConsoleCapture out(stdout);
    QVERIFY(manager.download(url));
    QVERIFY(!manager.done);
    QVERIFY(manager.clock.isValid());
    QTRY_VERIFY(manager.done);
    QCOMPARE(manager.savePath, saved(QStringLiteral("a.zip")));
    QCOMPARE(contentOf(manager.savePath), content);
    QCOMPARE(manager.percent, 100);
    QCOMPARE(manager.downloadedCount, 1);
    QCOMPARE(out.text(), "Downloading " + url.toLatin1() + "...\nSucceeded.\n");
    QCOMPARE(m_server->requests(), QStringList{QStringLiteral("/a.zip")});
}

void TestDownloadManager::fileThatCannotBeOpenedIsNotDownloaded()
{
    QVERIFY(QDir().rmdir(m_pc->downloads()));
    const QString url = m_server->url(QStringLiteral("/a%20b.zip"));
    // Each system has its own words for it.
    QFile same(saved(QStringLiteral("a b.zip")));
    QVERIFY(!same.open(QIODevice::WriteOnly));
    DownloadManager manager;
    ConsoleCapture err(stderr);
    QVERIFY(!manager.download(url));
    QCOMPARE(err.text(), "Problem opening save file '" + same.fileName().toLocal8Bit() + "' for download '" +
                             url.toLatin1() + "': " + same.errorString().toLocal8Bit() + '\n');
    QVERIFY(m_server->requests().isEmpty());
}

void TestDownloadManager::errorStatusIsAFailureWithItsPageSaved()
{
    m_server->serveError(QStringLiteral("/a.zip"), 404, "<html>not here</html>");
    DownloadManager manager;
    ConsoleCapture out(stdout);
    ConsoleCapture err(stderr);
    QVERIFY(manager.download(m_server->url(QStringLiteral("/a.zip"))));
    QTRY_VERIFY(manager.done);
    QCOMPARE(manager.downloadedCount, 0);
    QVERIFY(err.text().startsWith("Failed: "));
    QVERIFY(err.text().endsWith("\n"));
    QVERIFY(!out.text().contains("Succeeded"));
    QCOMPARE(contentOf(manager.savePath), QByteArray("<html>not here</html>"));
}

void TestDownloadManager::refusedConnectionIsAFailure()
{
    m_server->refuse();
    DownloadManager manager;
    ConsoleCapture err(stderr);
    QVERIFY(manager.download(m_server->url(QStringLiteral("/a.zip"))));
    QTRY_VERIFY(manager.done);
    QCOMPARE(err.text(), QByteArray("Failed: Connection refused\n"));
    QCOMPARE(QFileInfo(manager.savePath).size(), 0);
}

void TestDownloadManager::cutFileIsAFailureAndStaysAsFarAsItGot()
{
    m_server->serveCut(QStringLiteral("/a.zip"), noise(kSize), kSize / 2);
    DownloadManager manager;
    ConsoleCapture err(stderr);
    QVERIFY(manager.download(m_server->url(QStringLiteral("/a.zip"))));
    QTRY_VERIFY(manager.done);
    QVERIFY(err.text().startsWith("Failed: "));
    QCOMPARE(contentOf(manager.savePath), noise(kSize).left(kSize / 2));
    QCOMPARE(manager.percent, 50);
}

void TestDownloadManager::secondDownloadTakesThePlaceOfTheFirst()
{
    m_server->serveStalled(QStringLiteral("/slow/a.zip"), noise(kSize), kSize / 2);
    m_server->serve(QStringLiteral("/a.zip"), "whole");
    DownloadManager manager;
    QVERIFY(manager.download(m_server->url(QStringLiteral("/slow/a.zip"))));
    QTRY_COMPARE(manager.percent, 50);
    QVERIFY(manager.download(m_server->url(QStringLiteral("/a.zip"))));
    QVERIFY(!manager.done);
    QTRY_VERIFY(manager.done);
    QCOMPARE(contentOf(saved(QStringLiteral("a.zip"))), QByteArray("whole"));
    QCOMPARE(manager.downloadedCount, 1);
}

void TestDownloadManager::percentIsTruncated_data()
{
    QTest::addColumn<qint64>("received");
    QTest::addColumn<qint64>("total");
    QTest::addColumn<qint32>("percent");
    QTest::newRow("nothing yet") << 0LL << 10LL << 0;
    QTest::newRow("a third") << 1LL << 3LL << 33;
    QTest::newRow("all but one byte") << 999LL << 1000LL << 99;
    QTest::newRow("all") << 1000LL << 1000LL << 100;
    QTest::newRow("more than 32 bits can count") << 6000000000LL << 8000000000LL << 75;
}

void TestDownloadManager::percentIsTruncated()
{
    QFETCH(qint64, received);
    QFETCH(qint64, total);
    QFETCH(qint32, percent);
    DownloadManager manager;
    manager.downloadProgress(received, total);
    QCOMPARE(manager.percent, percent);
}

void TestDownloadManager::unknownSizeLeavesThePercentWhereItIs_data()
{
    QTest::addColumn<qint64>("total");
    QTest::newRow("zero") << 0LL;
    QTest::newRow("unknown") << -1LL;
}

void TestDownloadManager::unknownSizeLeavesThePercentWhereItIs()
{
    QFETCH(qint64, total);
    DownloadManager manager;
    manager.downloadProgress(1, 2);
    manager.downloadProgress(900, total);
    QCOMPARE(manager.percent, 50);
}

void TestDownloadManager::newDownloadStartsAtZeroPercent()
{
    DownloadManager manager;
    manager.downloadProgress(1, 2);
    QVERIFY(manager.download(m_server->url(QStringLiteral("/a.zip"))));
    QCOMPARE(manager.percent, 0);
}

void TestDownloadManager::firstUrlOfAnEmptyQueueTellsThatTheQueueIsEmpty()
{
    DownloadManager manager;
    QSignalSpy finished(&manager, &DownloadManager::finished);
    int queuedThen = -1;
    connect(&manager, &DownloadManager::finished, this, [&] { queuedThen = manager.queue.size(); });
    ConsoleCapture out(stdout);
    manager.append(QUrl(m_server->url(QStringLiteral("/a.zip"))));
    QCOMPARE(out.text(), QByteArray("0/0 files downloaded successfully\n"));
    QCOMPARE(finished.count(), 1);
    QCOMPARE(queuedThen, 0);
    QCOMPARE(manager.queue, QList<QUrl>{QUrl(m_server->url(QStringLiteral("/a.zip")))});
    QCOMPARE(manager.totalCount, 1);
    QVERIFY(m_server->requests().isEmpty());
}

void TestDownloadManager::laterUrlsAreOnlyQueued()
{
    DownloadManager manager;
    manager.append(QUrl(QStringLiteral("http://h/a")));
    QSignalSpy finished(&manager, &DownloadManager::finished);
    manager.append(QUrl(QStringLiteral("http://h/b")));
    QCOMPARE(finished.count(), 0);
    QCOMPARE(manager.queue.size(), 2);
    QCOMPARE(manager.totalCount, 2);
}

void TestDownloadManager::textIsQueuedLikeAUrl()
{
    DownloadManager manager;
    QSignalSpy finished(&manager, &DownloadManager::finished);
    manager.append(QStringLiteral("http://h/a%20b"));
    QCOMPARE(manager.queue, QList<QUrl>{QUrl::fromEncoded("http://h/a%20b")});
    // The queue holds the URL, so nothing more is scheduled.
    QCoreApplication::processEvents();
    QCOMPARE(finished.count(), 1);
}

void TestDownloadManager::queueIsTakenFromTheFront()
{
    m_server->serve(QStringLiteral("/a.zip"), "a");
    m_server->serve(QStringLiteral("/b.zip"), "b");
    DownloadManager manager;
    manager.append(m_server->url(QStringLiteral("/a.zip")));
    manager.append(m_server->url(QStringLiteral("/b.zip")));
    manager.startNextDownload();
    QTRY_VERIFY(manager.done);
    manager.startNextDownload();
    QVERIFY(!manager.done);
    QTRY_VERIFY(manager.done);
    ConsoleCapture out(stdout);
    manager.startNextDownload();
    QCOMPARE(out.text(), QByteArray("2/2 files downloaded successfully\n"));
    QCOMPARE(m_server->requests(), (QStringList{QStringLiteral("/a.zip"), QStringLiteral("/b.zip")}));
    QCOMPARE(contentOf(saved(QStringLiteral("b.zip"))), QByteArray("b"));
}

void TestDownloadManager::urlsThatCannotBeSavedArePassedOver()
{
    m_server->serve(QStringLiteral("/b.zip"), "b");
    // A folder stands where the first file would be saved.
    QVERIFY(QDir().mkpath(saved(QStringLiteral("a.zip"))));
    DownloadManager manager;
    manager.append(m_server->url(QStringLiteral("/a.zip")));
    manager.append(m_server->url(QStringLiteral("/b.zip")));
    ConsoleCapture err(stderr);
    manager.startNextDownload();
    QVERIFY(err.text().startsWith("Problem opening save file '"));
    QTRY_VERIFY(manager.done);
    QCOMPARE(m_server->requests(), QStringList{QStringLiteral("/b.zip")});
    QVERIFY(manager.queue.isEmpty());
}

void TestDownloadManager::nextDownloadDoesNotStartByItself()
{
    m_server->serve(QStringLiteral("/a.zip"), "a");
    DownloadManager manager;
    manager.append(m_server->url(QStringLiteral("/a.zip")));
    manager.append(m_server->url(QStringLiteral("/b.zip")));
    manager.startNextDownload();
    QTRY_VERIFY(manager.done);
    QCoreApplication::processEvents();
    QCOMPARE(manager.queue.size(), 1);
    QCOMPARE(m_server->requests().size(), 1);
}

void TestDownloadManager::destroyedManagerBreaksItsDownloadOff()
{
    m_server->serveStalled(QStringLiteral("/a.zip"), noise(kSize), kSize / 2);
    {
        DownloadManager manager;
        QVERIFY(manager.download(m_server->url(QStringLiteral("/a.zip"))));
        QTRY_COMPARE(manager.percent, 50);
    }
    QCoreApplication::processEvents();
    QCOMPARE(QFileInfo(saved(QStringLiteral("a.zip"))).size(), kSize / 2);
}

void TestDownloadManager::fullDiskLeavesNoFile()
{
    QString why;
    if (!ExFatVolume::isPossible(&why))
        QSKIP(qPrintable(why));
    const ExFatVolume small(4);
    QVERIFY2(small.isMounted(), qPrintable(small.error()));
    qputenv("TMPDIR", QFile::encodeName(QDir::cleanPath(small.root())));
    QVERIFY(QDir().mkpath(DownloadManager::downloadFolder()));
    m_server->serve(QStringLiteral("/a.zip"), noise(8 * 1024 * 1024));
    DownloadManager manager;
    ConsoleCapture err(stderr);
    QVERIFY(manager.download(m_server->url(QStringLiteral("/a.zip"))));
    QTRY_VERIFY(manager.done);
    QVERIFY(err.text().startsWith("Failed: "));
    QCOMPARE(manager.downloadedCount, 0);
    QVERIFY(!QFile::exists(manager.savePath));
}

QTEST_GUILESS_MAIN(TestDownloadManager)
#include "tst_downloadmanager.moc"
