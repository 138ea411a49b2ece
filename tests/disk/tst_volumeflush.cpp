#include "disk/volumeflush.h"

#include "support/simulatedplayer.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#ifdef Q_OS_WIN
#include <qt_windows.h>
#include <thread>
#endif

class TestVolumeFlush : public QObject
{
    Q_OBJECT

private slots:
    void folderOfAVolumeIsFlushed();
    void fileOfAVolumeIsFlushed();
    void nameBeyondAsciiIsFlushed();
    void vanishedVolumeIsReported();
    void emptyPathIsReported();
    void playerIsFlushed();
    void pulledPlayerIsReported();
    void fileHeldForAMomentIsWaitedFor();
    void fileHeldForGoodIsReported();
};

void TestVolumeFlush::folderOfAVolumeIsFlushed()
{
    const QTemporaryDir folder;
    QVERIFY(flushVolume(folder.path()));
    QVERIFY(flushVolume(folder.path() + QLatin1Char('/')));
}

void TestVolumeFlush::fileOfAVolumeIsFlushed()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("song.mid")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(flushVolume(file.fileName()));
}

void TestVolumeFlush::nameBeyondAsciiIsFlushed()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("Città perché"));
    QVERIFY(QDir().mkdir(path));
    QVERIFY(flushVolume(path));
}

void TestVolumeFlush::vanishedVolumeIsReported()
{
    QTemporaryDir folder;
    const QString path = folder.path();
    QVERIFY(folder.remove());
    QVERIFY(!flushVolume(path));
}

void TestVolumeFlush::emptyPathIsReported()
{
    QVERIFY(!flushVolume(QString()));
}

void TestVolumeFlush::playerIsFlushed()
{
    SimulatedPlayer player;
    player.addFile(QStringLiteral("My Songs/Perché.mid"), "song");
    QVERIFY(flushVolume(player.root()));
}

void TestVolumeFlush::pulledPlayerIsReported()
{
    const SimulatedPlayer player;
    SimulatedPlayer::disconnect();
    if (QDir(player.root()).exists())
        QSKIP("The folder of a pulled player stays here");
    QVERIFY(!flushVolume(player.root()));
}

#ifdef Q_OS_WIN
namespace {

/// A song just written that another program keeps to itself; closed by CloseHandle().
HANDLE holdNewSong(const QTemporaryDir &folder)
{
    const QString path = QDir::toNativeSeparators(folder.filePath(QStringLiteral("song.mid")));
    return ::CreateFileW(reinterpret_cast<const wchar_t *>(path.utf16()), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                         CREATE_NEW, 0, nullptr);
}

} // namespace

void TestVolumeFlush::fileHeldForAMomentIsWaitedFor()
{
    constexpr DWORD kMomentMs = 300;
    const QTemporaryDir folder;
    const HANDLE held = holdNewSong(folder);
    QVERIFY(held != INVALID_HANDLE_VALUE);
    std::thread other([held] {
        ::Sleep(kMomentMs);
        ::CloseHandle(held);
    });
    const bool flushed = flushVolume(folder.path());
    other.join();
    QVERIFY(flushed);
}

void TestVolumeFlush::fileHeldForGoodIsReported()
{
    const QTemporaryDir folder;
    const HANDLE held = holdNewSong(folder);
    QVERIFY(held != INVALID_HANDLE_VALUE);
    const bool flushed = flushVolume(folder.path());
    ::CloseHandle(held);
    QVERIFY(!flushed);
}
#else
void TestVolumeFlush::fileHeldForAMomentIsWaitedFor()
{
    QSKIP("No file is kept from others here");
}

void TestVolumeFlush::fileHeldForGoodIsReported()
{
    QSKIP("No file is kept from others here");
}
#endif

QTEST_MAIN(TestVolumeFlush)
#include "tst_volumeflush.moc"
