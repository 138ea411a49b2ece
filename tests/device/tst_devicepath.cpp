#include "device/devicecase.h"
#include "device/player.h"

#include "support/files.h"
#include "support/given.h"
#include "support/platform.h"

class TestDevicePath : public QObject
{
    Q_OBJECT

    const QString kRoot = "E:/"_s;
    PcFolder m_folder;

    QString root() const { return m_folder.path() + "/"_s; }

private slots:
    void cleanup() { QVERIFY(QDir(root()).removeRecursively() && QDir().mkpath(root())); }

    void partsAreSpelledAsOnTheDisk_data() {
        columns<QString, QString, QString>("existing", "asked", "resolved");
        row("as written", "System/playlist"_s, "System/playlist"_s, "System/playlist"_s);
        row("last part differs", "System/Playlist"_s, "System/playlist"_s, "System/Playlist"_s);
        row("all parts differ", "SYSTEM/PLAYLIST"_s, "system/playlist"_s, "SYSTEM/PLAYLIST"_s);
        row("hidden", ".Cache"_s, ".cache"_s, ".Cache"_s);
        row("accents", "CITTÀ"_s, "città"_s, "CITTÀ"_s);
        row("nothing there", "Other"_s, "system/playlist"_s, "system/playlist"_s);
        row("half there", "SYSTEM"_s, "System/playlist"_s, "SYSTEM/playlist"_s);
        row("longer name is another", "Systems"_s, "system"_s, "system"_s);
        row("doubled slashes", "System/Playlist"_s, "/system//playlist/"_s, "System/Playlist"_s);
        row("nothing asked", "System"_s, ""_s, ""_s);
    }
    void partsAreSpelledAsOnTheDisk() {
        QFETCH(QString, existing);
        QVERIFY(QDir().mkpath(root() + existing));
        if (QFileInfo::exists(root() + existing.toLower()) && QFileInfo::exists(root() + existing.toUpper()))
            QSKIP("This file system ignores case");
        QCOMPARE(resolveDevicePath(root(), given<QString>("asked")), root() + given<QString>("resolved"));
    }

    void exactSpellingWinsAndElseTheFirstInSortedOrder() {
        // Made in an order that is not the sorted one.
        if (!QDir(root()).mkdir("system"_s) || !QDir(root()).mkdir("SYSTEM"_s))
            QSKIP("This file system ignores case");
        QCOMPARE(resolveDevicePath(root(), "system"_s), root() + "system"_s);
        QCOMPARE(resolveDevicePath(root(), "SYSTEM"_s), root() + "SYSTEM"_s);
        QCOMPARE(resolveDevicePath(root(), "SySteM"_s), root() + "SYSTEM"_s);
    }

    void linkToNowhereIsThere() {
        SKIP_ON_WINDOWS("links are files of another kind here");
        if (!QFile::link(root() + "none"_s, root() + "system"_s))
            QSKIP("No links here");
        QVERIFY(QDir().mkdir(root() + "SYSTEM"_s));
        QCOMPARE(resolveDevicePath(root(), "system"_s), root() + "system"_s);
    }

    void rootIsLeftAsItIs() {
        SKIP_ON_WINDOWS("the file system ignores case here");
        QVERIFY(QDir().mkdir(root() + "SYSTEM"_s));
        // Without its closing slash too.
        QCOMPARE(resolveDevicePath(m_folder.path(), "system"_s), root() + "SYSTEM"_s);
        QCOMPARE(resolveDevicePath("/none/there/"_s, "system"_s), "/none/there/system"_s);
    }

    void systemFilesAreFoundWhateverTheirCase() {
        for (const char *file : {"autoexec.bat", "SYSTEM/CORVIN/CORVIN.EXE"})
            m_folder.addFile(QLatin1String(file));
        QVERIFY(!Player(root()).hasSystemFiles());
        m_folder.addFile("SYSTEM/guiproc/guiproc.exe"_s);
        QVERIFY(Player(root()).hasSystemFiles());
    }

    void emptyRootGivesTheRelativePath() { QCOMPARE(resolveDevicePath(QString(), "system"_s), "system"_s); }

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
        row("the root not in front", "a E:/b"_s, "E:/"_s, R"(a \sdmemory\b)"_s);
    }
    void pcPathBecomesDevicePath() { QTEST(Player(given<QString>("root")).devicePath(given<QString>("pc")), "device"); }

    void bothWaysGiveTheSamePath() {
        for (const QString &pc : {"E:/My Songs/song.mid"_s, "E:/Città/Perché.mid"_s, "E:/L'\"altra\"/a^1.mid"_s})
            QCOMPARE(Player(kRoot).pcPath(Player(kRoot).devicePath(pc)), pc);
    }
};

QTEST_GUILESS_MAIN(TestDevicePath)
#include "tst_devicepath.moc"
