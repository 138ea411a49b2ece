#include "disk/volumeflush.h"

#include "support/files.h"
#include "support/platform.h"
#include "support/simulatedplayer.h"
#include "support/testing.h"

#ifdef Q_OS_WIN
#include <qt_windows.h>
#include <thread>
#endif

class TestVolumeFlush : public QObject
{
    Q_OBJECT

private slots:
    void whatIsThereIsFlushed_data() {
        columns<QString, bool>("path", "flushed");
        row("folder", QString(), true);
        row("folder with a closing slash", "/"_s, true);
        row("file that is being written", "/song.mid"_s, true);
        row("name beyond ASCII", "/Città perché"_s, true);
        row("vanished volume is reported", "/gone"_s, false);
    }

    void whatIsThereIsFlushed() {
        QFETCH(QString, path);
        QFETCH(bool, flushed);
        PcFolder folder;
        folder.addFolder("Città perché"_s);
        QFile file(folder.path("song.mid"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(flushVolume(folder.path() + path), flushed);
    }

    void emptyPathIsReported() { QVERIFY(!flushVolume(QString())); }

    void flushThatAsksEndsWhenNotWanted() {
#ifdef Q_OS_WIN
        constexpr bool inOneCall = false;
#else
        constexpr bool inOneCall = true;
#endif
        PcFolder folder;
        folder.addFile("song.mid"_s, "song");
        QVERIFY(flushFolder(folder.path(), [] { return true; }));
        QCOMPARE(flushFolder(folder.path(), [] { return false; }), inOneCall);
    }

    void playerIsFlushed() {
        SimulatedPlayer player;
        player.addFile("My Songs/Perché.mid"_s, "song");
        QVERIFY(flushVolume(player.root()));
    }

    void pulledPlayerIsReported() {
        const SimulatedPlayer player;
        SimulatedPlayer::disconnect();
        if (QDir(player.root()).exists())
            QSKIP("The folder of a pulled player stays here");
        QVERIFY(!flushVolume(player.root()));
    }

    void fileHeldByAnotherProgramIsWaitedForAWhile_data() {
        columns<bool>("forGood");
        row("held for a moment", false);
        row("held for good is reported", true);
    }

    void fileHeldByAnotherProgramIsWaitedForAWhile() {
#ifdef Q_OS_WIN
        constexpr DWORD kMomentMs = 300;
        QFETCH(bool, forGood);
        const PcFolder folder;
        const QString path = QDir::toNativeSeparators(folder.path("song.mid"_s));
        const HANDLE held = ::CreateFileW(reinterpret_cast<const wchar_t *>(path.utf16()), GENERIC_READ | GENERIC_WRITE,
                                          0, nullptr, CREATE_NEW, 0, nullptr);
        QVERIFY(held != INVALID_HANDLE_VALUE);
        std::thread other([held, forGood] {
            ::Sleep(kMomentMs);
            if (!forGood)
                ::CloseHandle(held);
        });
        const bool flushed = flushVolume(folder.path());
        other.join();
        if (forGood)
            ::CloseHandle(held);
        QCOMPARE(flushed, !forGood);
#else
        QSKIP("No file is kept from others here");
#endif
    }
};

QTEST_MAIN(TestVolumeFlush)
#include "tst_volumeflush.moc"
