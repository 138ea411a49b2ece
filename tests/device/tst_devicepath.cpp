#include "device/player.h"

#include "support/given.h"

class TestDevicePath : public QObject
{
    Q_OBJECT

    const QString kRoot = "E:/"_s;

private slots:
    void deviceTextBecomesPcPath_data() {
        columns<QString, QString>("device", "pc");
        row("song", R"(\sdmemory\My Songs\Artist\song.mid)"_s, "E:/My Songs/Artist/song.mid"_s);
        row("song in the root", R"(\sdmemory\song.mid)"_s, "E:/song.mid"_s);
        row("case of the device root does not matter", R"(\SDMemory\Song.MID)"_s, "E:/Song.MID"_s);
        row("every device root", R"(\sdmemory\a;\SDMEMORY\b)"_s, "E:/a;E:/b"_s);
        row("device roots one behind the other", R"(\sdmemory\\sdmemory\a)"_s, "E:/E:/a"_s);
        row("device root without its end", R"(\sdmemory)"_s, "/sdmemory"_s);
        row("other folder", R"(\sdmemory2\a)"_s, "/sdmemory2/a"_s);
        row("forward slashes are not the player's", "/sdmemory/a"_s, "/sdmemory/a"_s);
        row("numbers and line end stay", "\\sdmemory\\a.mid^12^0\r\n"_s, "E:/a.mid^12^0\r\n"_s);
        row("empty", QString(), QString());
    }
    void deviceTextBecomesPcPath() { QTEST(Player(kRoot).pcPath(given<QString>("device")), "pc"); }

    void pcPathBecomesDevicePath_data() {
        columns<QString, QString, QString>("pc", "root", "device");
        row("song", "E:/My Songs/song.mid"_s, "E:/"_s, R"(\sdmemory\My Songs\song.mid)"_s);
        row("root alone", "E:/"_s, "E:/"_s, R"(\sdmemory\)"_s);
        row("case of the root matters", "e:/song.mid"_s, "E:/"_s, R"(e:\song.mid)"_s);
        row("every root", "E:/a/E:/b"_s, "E:/"_s, R"(\sdmemory\a\\sdmemory\b)"_s);
        row("mounted volume", "/media/u/CORVIN4/a/b.mp3"_s, "/media/u/CORVIN4/"_s, R"(\sdmemory\a\b.mp3)"_s);
        row("not on the player", "/home/u/b.mp3"_s, "/media/u/CORVIN4/"_s, R"(\home\u\b.mp3)"_s);
        row("no root", "/a/b"_s, QString(), R"(\a\b)"_s);
        row("empty", QString(), "E:/"_s, QString());
    }
    void pcPathBecomesDevicePath() { QTEST(Player(given<QString>("root")).devicePath(given<QString>("pc")), "device"); }

    void bothWaysGiveTheSamePath() {
        for (const QString &pc : {"E:/My Songs/song.mid"_s, "E:/Città/Perché.mid"_s, "E:/L'\"altra\"/a^1.mid"_s})
            QCOMPARE(Player(kRoot).pcPath(Player(kRoot).devicePath(pc)), pc);
    }
};

QTEST_GUILESS_MAIN(TestDevicePath)
#include "tst_devicepath.moc"
