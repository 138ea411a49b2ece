#include "app/mainwindow.h"

#include "support/boxanswerer.h"
#include "support/httpserver.h"
#include "support/platform.h"
#include "support/simulatedplayer.h"
#include "systemfixture.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QProgressBar>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

namespace {

constexpr int kLeast = 10000;
constexpr int kLongWaitMs = 30000;
const QString kPath = QStringLiteral("/download/Corvin4/CorvinUpdate.c4");
const QString kName = QStringLiteral("CorvinUpdate.c4");

} // namespace

class TestFileDownload : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void fileOfTenThousandBytesIsARelease_data();
    void fileOfTenThousandBytesIsARelease();
    void anotherServersFileIsTheSame();
    void badLines_data();
    void badLines();
    void refusedConnectionGivesNothing();
    void urlThatEndsInASlashIsSavedAsDownload();
    void barRunsFromZeroToHundred();
    void barStaysAtZeroWhileTheSizeIsUnknown();
    void stopEndsTheWaitAtOnce_data();
    void stopEndsTheWaitAtOnce();
    void folderIsEmptiedWhenAskedFor();
    void folderIsLeftWhenNotAskedFor();
    void folderThatCannotBeEmptiedIsUsedAsItIs();
    void missingFolderGivesNothing();
    void secondDownloadReplacesTheFirst();

private:
    QString download(bool makeFolder = true) { return (*m_window)->downloadFile(m_server->url(kPath), makeFolder); }
    QString saved(const QString &name = kName) const { return m_pc->downloads() + QLatin1Char('/') + name; }

    QScopedPointer<TemporaryPc> m_pc;
    QScopedPointer<HttpServer> m_server;
    QScopedPointer<ProcedureWindow> m_window;
};

void TestFileDownload::init()
{
    SimulatedPlayer::disconnect();
    m_pc.reset(new TemporaryPc);
    m_server.reset(new HttpServer);
    m_window.reset(new ProcedureWindow);
}

void TestFileDownload::cleanup()
{
    m_window.reset();
    m_server.reset();
    m_pc.reset();
}

void TestFileDownload::fileOfTenThousandBytesIsARelease_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<bool>("good");
    QTest::newRow("0") << 0 << false;
    QTest::newRow("1") << 1 << false;
    QTest::newRow("9999") << kLeast - 1 << false;
    QTest::newRow("10000") << kLeast << true;
    QTest::newRow("10001") << kLeast + 1 << true;
    QTest::newRow("3 million") << 3000000 << true;
}

void TestFileDownload::fileOfTenThousandBytesIsARelease()
{
    QFETCH(int, size);
    QFETCH(bool, good);
    m_server->serve(kPath, noise(size));
    QCOMPARE(download(), good ? saved() : QString());
    QCOMPARE(contentOf(saved()), noise(size));
}

void TestFileDownload::anotherServersFileIsTheSame()
{
    SKIP_ON_WINDOWS("the other server is a program of Linux");
    const QTemporaryDir files;
    putFile(files.path() + kPath, noise(300000));
    QProcess server;
    server.setProcessChannelMode(QProcess::MergedChannels);
    server.start(QStringLiteral("/usr/bin/python3"),
                 {QStringLiteral("-u"), QStringLiteral("-m"), QStringLiteral("http.server"), QStringLiteral("0"),
                  QStringLiteral("--bind"), QStringLiteral("127.0.0.1"), QStringLiteral("--directory"), files.path()});
    QString said;
    QRegularExpressionMatch port;
    QTRY_VERIFY((said += QString::fromLocal8Bit(server.readAll()),
                 port = QRegularExpression(QStringLiteral("port (\\d+)")).match(said), port.hasMatch()));
    const QString address = QStringLiteral("http://127.0.0.1:") + port.captured(1);
    QCOMPARE((*m_window)->downloadFile(address + kPath, true), saved());
    QCOMPARE(contentOf(saved()), noise(300000));
    // Its page for a missing file is a short one.
    QCOMPARE((*m_window)->downloadFile(address + QStringLiteral("/missing.zip"), true), QString());
    server.kill();
    server.waitForFinished();
}

void TestFileDownload::badLines_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("arrives");
    // Deliberate: the size on the disk alone decides, even for half a file and for a long error page.
    QTest::newRow("cut early") << QStringLiteral("cut") << 40000 << kLeast - 1;
    QTest::newRow("cut late") << QStringLiteral("cut") << 40000 << kLeast;
    QTest::newRow("unknown length") << QStringLiteral("no length") << 40000 << 40000;
    QTest::newRow("unknown length, short") << QStringLiteral("no length") << 500 << 500;
    QTest::newRow("length 0 for no content") << QStringLiteral("length 0") << 0 << 0;
    QTest::newRow("too long a length") << QStringLiteral("long length") << 40000 << 40000;
    QTest::newRow("short error page") << QStringLiteral("404") << 300 << 300;
    QTest::newRow("long error page") << QStringLiteral("404") << 40000 << 40000;
}

void TestFileDownload::badLines()
{
    QFETCH(QString, fault);
    QFETCH(int, size);
    QFETCH(int, arrives);
    const QByteArray content = noise(size);
    if (fault == QStringLiteral("cut"))
        m_server->serveCut(kPath, content, arrives);
    else if (fault == QStringLiteral("no length"))
        m_server->serveWithoutLength(kPath, content);
    else if (fault == QStringLiteral("404"))
        m_server->serveError(kPath, 404, content);
    else if (fault == QStringLiteral("length 0"))
        m_server->serveUnderLength(kPath, content, 0);
    else
        m_server->serveUnderLength(kPath, content, size * 2LL);
    QCOMPARE(download(), arrives >= kLeast ? saved() : QString());
    QCOMPARE(contentOf(saved()), content.left(arrives));
}

void TestFileDownload::refusedConnectionGivesNothing()
{
    m_server->refuse();
    QCOMPARE(download(), QString());
}

void TestFileDownload::urlThatEndsInASlashIsSavedAsDownload()
{
    m_server->serve(QStringLiteral("/folder/"), noise(kLeast));
    QCOMPARE((*m_window)->downloadFile(m_server->url(QStringLiteral("/folder/")), true),
             saved(QStringLiteral("download")));
}

void TestFileDownload::barRunsFromZeroToHundred()
{
    m_server->serveStalled(kPath, noise(40000), 30000);
    QProgressBar *bar = m_window->bar();
    bar->setRange(5, 7);
    BoxAnswerer answers;
    answers.answer(QStringLiteral("Interrompi Operazione"), QStringLiteral("Si"));
    QSignalSpy values(bar, &QProgressBar::valueChanged);
    StopPresser stop(*m_window, QString(), [bar] { return bar->value() == 75; });
    download();
    QVERIFY(stop.pressed);
    QCOMPARE(bar->minimum(), 0);
    QCOMPARE(bar->maximum(), 100);
    QCOMPARE(values.last().first().toInt(), 100);
}

void TestFileDownload::barStaysAtZeroWhileTheSizeIsUnknown()
{
    m_server->serveWithoutLength(kPath, noise(40000));
    QProgressBar *bar = m_window->bar();
    bar->setValue(50);
    QSignalSpy values(bar, &QProgressBar::valueChanged);
    download();
    for (int i = 0; i < values.size(); ++i)
        QVERIFY(values.at(i).first().toInt() == 0 || values.at(i).first().toInt() == 100);
    QCOMPARE(bar->value(), 100);
}

void TestFileDownload::stopEndsTheWaitAtOnce_data()
{
    QTest::addColumn<int>("arrived");
    QTest::newRow("before anything came") << 0;
    QTest::newRow("with 9999 bytes") << kLeast - 1;
    QTest::newRow("with 10000 bytes") << kLeast;
}

void TestFileDownload::stopEndsTheWaitAtOnce()
{
    QFETCH(int, arrived);
    m_server->serveStalled(kPath, noise(40000), arrived);
    BoxAnswerer answers;
    answers.answer(QStringLiteral("Interrompi Operazione"), QStringLiteral("Si"));
    StopPresser stop(*m_window, QString(), [this, arrived] {
        return !m_server->requests().isEmpty() && QFileInfo(saved()).size() == arrived;
    });
    QElapsedTimer clock;
    clock.start();
    // The server would keep it waiting for ever.
    QCOMPARE(download(), arrived >= kLeast ? saved() : QString());
    QVERIFY(stop.pressed);
    QVERIFY((*m_window)->abortRequested);
    QVERIFY(clock.elapsed() < kLongWaitMs);
}

void TestFileDownload::folderIsEmptiedWhenAskedFor()
{
    putFile(saved(QStringLiteral("sub/old.txt")), "old");
    putFile(saved(), "old");
    m_server->serve(kPath, noise(kLeast));
    QCOMPARE(download(true), saved());
    QCOMPARE(filesBelow(m_pc->downloads()), QStringList{kName});
    QVERIFY(!QDir(saved(QStringLiteral("sub"))).exists());
}

void TestFileDownload::folderIsLeftWhenNotAskedFor()
{
    putFile(saved(QStringLiteral("sub/old.txt")), "old");
    m_server->serve(kPath, noise(kLeast));
    QCOMPARE(download(false), saved());
    QCOMPARE(filesBelow(m_pc->downloads()), (QStringList{kName, QStringLiteral("sub/old.txt")}));
}

void TestFileDownload::folderThatCannotBeEmptiedIsUsedAsItIs()
{
    // A mounted volume cannot be removed, only its content can.
    QString why;
    if (!ExFatVolume::isPossible(&why))
        QSKIP(qPrintable(why));
    const ExFatVolume volume(4);
    QVERIFY2(volume.isMounted(), qPrintable(volume.error()));
    QVERIFY(QDir().mkpath(m_pc->downloads()));
    QCOMPARE(QProcess::execute(QStringLiteral("mount"),
                               {QStringLiteral("--bind"), QDir::cleanPath(volume.root()), m_pc->downloads()}),
             0);
    m_server->serve(kPath, noise(kLeast));
    const QString path = download(true);
    const QByteArray content = contentOf(path);
    QProcess::execute(QStringLiteral("umount"), {m_pc->downloads()});
    QCOMPARE(path, saved());
    QCOMPARE(content, noise(kLeast));
}

void TestFileDownload::missingFolderGivesNothing()
{
    m_server->serve(kPath, noise(kLeast));
    QCOMPARE(download(false), QString());
    QVERIFY(m_server->requests().isEmpty());
    // A file where the folder should be: it is kept, and nothing is downloaded.
    putFile(m_pc->downloads(), "file");
    QCOMPARE(download(true), QString());
    QCOMPARE(contentOf(m_pc->downloads()), QByteArray("file"));
}

void TestFileDownload::secondDownloadReplacesTheFirst()
{
    m_server->serve(kPath, noise(60000));
    QCOMPARE(download(true), saved());
    m_server->serve(kPath, noise(20000));
    QCOMPARE(download(false), saved());
    QCOMPARE(contentOf(saved()), noise(20000));
}

QTEST_MAIN(TestFileDownload)
#include "tst_filedownload.moc"
