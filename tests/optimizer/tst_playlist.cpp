#include "optimizer/playlist.h"

#include "support/files.h"
#include "support/given.h"
#include "support/limits.h"

#include <atomic>

class TestPlaylist : public QObject
{
    Q_OBJECT

    static inline const QString kRoot = "E:/"_s;
    static inline const QByteArray kOldSong = "\\sdmemory\\song.mid";
    static inline const QByteArray kNewSong = "\\sdmemory\\My Songs\\song_2.mid";
    static inline const QByteArray kBefore = kOldSong + "^1^2\n";
    static inline const QByteArray kAfter = kNewSong + "^1^2\n";

    /// A playlist in a folder of its own; none at first while no content is given.
    struct Playlist
    {
        Playlist() = default;
        explicit Playlist(const QByteArray &content) { putFile(path, content); }

        void rewrite(const QByteArray &newSong = kNewSong) const {
            rewritePlaylistFile(path, QString::fromUtf8(kOldSong), QString::fromUtf8(newSong));
        }
        /// What it holds; rewriting must leave nothing beside it.
        QByteArray content() const {
            return folder.files() == QStringList("list.pls"_s) ? contentOf(path) : "not the only file";
        }

        PcFolder folder;
        QString path = folder.path("list.pls"_s);
        QString backup = path + ".old"_s;
    };

private slots:
    void keyIsTheSongInFrontOfItsNumbers_data() {
        columns<QByteArray, QString>("line", "key");
        const auto row = [](const char *name, const QByteArray &line, const QString &key) { ::row(name, line, key); };
        row("Windows line end", "\\sdmemory\\My Songs\\song.mid^12^0\r\n", "E:/My Songs/song.mid"_s);
        row("Unix line end", "\\sdmemory\\My Songs\\song.mid^12^0\n", "E:/My Songs/song.mid"_s);
        row("last line without an end", "\\sdmemory\\My Songs\\song.mid^12^0", "E:/My Songs/song.mid"_s);
        row("device root in capitals", "\\SDMEMORY\\My Songs\\song.mid^12^0\r\n", "E:/My Songs/song.mid"_s);
        row("one digit each", "\\sdmemory\\a.mid^1^2\n", "E:/a.mid"_s);
        row("five digits each", "\\sdmemory\\a.mid^12345^67890\n", "E:/a.mid"_s);
        row("six digits first", "\\sdmemory\\a.mid^123456^1\n", "E:/a.mid^123456^1\n"_s);
        row("six digits second", "\\sdmemory\\a.mid^1^123456\n", "E:/a.mid^1^123456\n"_s);
        row("numbers that a letter follows", "\\sdmemory\\a.mid^1^2x\n", "E:/a.mid^1^2x\n"_s);
        row("no numbers, line end included", "\\sdmemory\\a.mid\r\n", "E:/a.mid\r\n"_s);
        row("one number alone", "\\sdmemory\\a.mid^1\n", "E:/a.mid^1\n"_s);
        row("number without digits", "\\sdmemory\\a.mid^^1\n", "E:/a.mid^^1\n"_s);
        row("three numbers", "\\sdmemory\\a.mid^1^2^3\n", "E:/a.mid"_s);
        row("caret in the name", "\\sdmemory\\a^b.mid^1^2\n", "E:/a^b.mid"_s);
        row("numbers in the name that a letter follows", "\\sdmemory\\a^1^2b.mid^3^4\n", "E:/a^1^2b.mid"_s);
        row("numbers only", "^1^2\n", QString());
        row("text that names no song", "hello\n", "hello\n"_s);
        row("accents", "\\sdmemory\\Perché.mid^1^2\n", "E:/Perché.mid"_s);
        row("byte-order mark", "\xEF\xBB\xBF\\sdmemory\\a.mid^1^2\n", "E:/a.mid"_s);
        row("bytes that are no UTF-8", "\\sdmemory\\Perch\xE9.mid^1^2\n", "E:/Perch\uFFFD.mid"_s);
        row("NUL behind the numbers", QByteArray("\\sdmemory\\a.mid^1^2\0^3^4\n", 25), "E:/a.mid"_s);
        row("NUL in front of the numbers", QByteArray("\\sdmemory\\a.mid\0^1^2\n", 21), "E:/a.mid"_s);
        row("NUL at the start", QByteArray("\0\\sdmemory\\a.mid^1^2\n", 21), QString());
        row("empty", QByteArray(), QString());
        row("empty line", "\n", "\n"_s);
    }
    void keyIsTheSongInFrontOfItsNumbers() { QTEST(playlistKey(given<QByteArray>("line"), Player(kRoot)), "key"); }

    void keyOfAHugeLineIsFoundQuickly() {
        // Letters, carets, numbers too long, numbers that end in a letter, bytes that are no text.
        for (const QByteArray unit : {"abcdefgh", "^", "^123456", "^1^2x", "\xFF\xFE\x80"}) {
            const QByteArray front = unit.repeated(4000000 / unit.size());
            QElapsedTimer time;
            time.start();
            const QString key = playlistKey(front + "/^1^2\n", Player(kRoot));
            QVERIFY2(time.elapsed() < 20000, unit.constData());
            QVERIFY2(key == QString::fromUtf8(front) + "/"_s, unit.constData());
        }
    }

    void keysComeLineByLineInFileOrder() {
        const Playlist list("\\sdmemory\\b.mid^1^2\r\n\\sdmemory\\a.mid^3^4\n\n\\sdmemory\\b.mid^5^6");
        const QStringList keys = {"E:/b.mid"_s, "E:/a.mid"_s, "\n"_s, "E:/b.mid"_s};
        QCOMPARE(playlistKeys(list.path, Player(kRoot)), keys);
        // What cannot be opened has none.
        const Playlist missing;
        for (const QString &path : {missing.path, missing.folder.path()})
            QVERIFY(playlistKeys(path, Player(kRoot)).isEmpty());
    }

    void rewritingReplacesTheSong_data() {
        columns<QByteArray, QByteArray>("before", "after");
        // Each "@" is the song, before under its old name and after under its new one.
        const auto row = [](const char *name, QByteArray before, QByteArray after) {
            ::row(name, before.replace("@", kOldSong), after.replace("@", kNewSong));
        };
        row("empty playlist", "", "");
        row("Windows line end", "@^1^2\r\n", "@^1^2\r\n");
        row("Unix line end", "@^1^2\n", "@^1^2\n");
        row("no line end", "@^1^2", "@^1^2");
        row("mixed line ends", "a\r\n@^1^2\nb\n\r\nc\r", "a\r\n@^1^2\nb\n\r\nc\r");
        row("other case", "\\SDMEMORY\\Song.MID^1^2\n", "@^1^2\n");
        row("every line", "@^1^2\nx\n@^3^4\n", "@^1^2\nx\n@^3^4\n");
        row("twice in a line", "@;@\n", "@;@\n");
        row("start of a longer name", "@i^1^2\n", "@i^1^2\n");
        row("same name in a folder", "\\sdmemory\\A\\song.mid^1^2\n", "\\sdmemory\\A\\song.mid^1^2\n");
        row("other songs", "\\sdmemory\\Perché 🎵.mid^1^2\r\n", "\\sdmemory\\Perché 🎵.mid^1^2\r\n");
        row("what stands behind a NUL is no text", "@^1^2" + QByteArray("\0junk\nb\n", 8), "@^1^2b\n");
        row("bytes that are no UTF-8", "Perch\xE9\n", "Perch\uFFFD\n");
        row("byte-order mark", "\xEF\xBB\xBF@^1^2\n", "@^1^2\n");
    }
    void rewritingReplacesTheSong() {
        const Playlist list(given<QByteArray>("before"));
        list.rewrite();
        QTEST(list.content(), "after");
    }

    void emptyOldPathReplacesNothingAndAnEarlierBackupIsLost() {
        const Playlist list(kBefore);
        rewritePlaylistFile(list.path, QString(), QString::fromUtf8(kNewSong));
        QCOMPARE(list.content(), kBefore);
        putFile(list.backup, "of an earlier run\n");
        list.rewrite();
        QCOMPARE(list.content(), kAfter);
    }

    void playlistThatIsMissingBecomesEmpty() {
        const Playlist missing;
        missing.rewrite();
        QVERIFY(QFileInfo::exists(missing.path));
        QCOMPARE(missing.content(), QByteArray());
    }

    void folderOfTheBackupsNameCostsNoPlaylist() {
        const Playlist list(kBefore);
        putFile(list.backup + "/mine"_s);
        list.rewrite();
        QCOMPARE(contentOf(list.path), kAfter);
        QCOMPARE(list.folder.files(), words("list.pls list.pls.old/mine"));
    }

    void playlistThatCannotBeReadStaysAsItIs() {
#ifdef Q_OS_UNIX
        const Playlist list(kBefore);
        QVERIFY(QFile::setPermissions(list.folder.path(), QFile::Permissions(0x7777)));
        QVERIFY(QFile::setPermissions(list.path, QFile::Permissions()));
        {
            const NoRoot noRoot;
            list.rewrite();
        }
        QVERIFY(QFile::setPermissions(list.path, QFile::ReadOwner));
        QCOMPARE(list.content(), kBefore);
#else
        QSKIP("Every file can be read here");
#endif
    }

    // Looked at from outside, the playlist is the former one until it is the new one, and never anything else.
    void playlistIsWholeAtEveryMoment() {
#ifdef Q_OS_UNIX
        const QByteArray other = QByteArray("\\sdmemory\\another.mid^1^2\n").repeated(20000);
        const Playlist list(other + kBefore);
        std::atomic<bool> done{false};
        QByteArrayList seen;
        const std::unique_ptr<QThread> watcher(QThread::create([&] {
            while (!done) {
                const QByteArray content = contentOf(list.path);
                if (seen.isEmpty() || seen.last() != content)
                    seen.append(content);
            }
        }));
        watcher->start();
        for (int i = 0; i < 20; ++i) {
            rewritePlaylistFile(list.path, QString::fromUtf8(kOldSong), QString::fromUtf8(kNewSong));
            rewritePlaylistFile(list.path, QString::fromUtf8(kNewSong), QString::fromUtf8(kOldSong));
        }
        done = true;
        watcher->wait();
        for (const QByteArray &content : qAsConst(seen))
            QVERIFY(content == other + kBefore || content == other + kAfter);
#else
        QSKIP("Here a file that is being read is not replaced");
#endif
    }

    void whatWasCutOffIsMadeGood_data() {
        columns<QStringList, QStringList>("before", "after");
        row("a missing playlist", words("a.pls.old=whole"), words("a.pls=whole"));
        row("a playlist that was cut", words("a.pls=wh a.pls.old=whole"), words("a.pls=whole"));
        row("a playlist that is whole", words("a.pls=longer a.pls.old=whole"), words("a.pls=longer a.pls.old=whole"));
        row("a folder is left alone", words("a.pls.old/mine=x b.pls=b b.pls.old/mine=x"),
            words("a.pls.old/mine=x b.pls=b b.pls.old/mine=x"));
        row("a folder in the place of the playlist", words("a.pls/x=x a.pls.old=whole"),
            words("a.pls.old=whole a.pls/x=x"));
        row("a new one that was not finished", words("a.pls=whole a.pls.new=wh"), words("a.pls=whole"));
        row("a new one whose place is empty", words("a.pls.new=whole"), words("a.pls=whole"));
        row("other files", words("a.txt.old=x b.pls=y"), words("a.txt.old=x b.pls=y"));
    }
    void whatWasCutOffIsMadeGood() {
        PcFolder folder;
        for (const QString &file : given<QStringList>("before"))
            folder.addFile(file.section(QLatin1Char('='), 0, 0), file.section(QLatin1Char('='), 1).toUtf8());
        restorePlaylists(folder.path());
        QStringList after;
        const QStringList files = folder.files();
        for (const QString &file : files)
            after.append(file + "="_s + QString::fromUtf8(folder.content(file)));
        QTEST(after, "after");
    }

    void fullDiskLeavesThePlaylistAsItWas() {
#ifdef Q_OS_UNIX
        const QByteArray before = kBefore.repeated(1000);
        const Playlist list(before);
        {
            const FullDisk disk(8192);
            list.rewrite();
        }
        QVERIFY(list.content() == before);
#else
        QSKIP("No limit for the size of files here");
#endif
    }

    void hugeLineIsRewrittenWhole() {
        // Characters of two to four bytes that straddle any buffer between reading and writing.
        const QByteArray front = QByteArray(3000001, 'a') + QByteArray("é🎵").repeated(100001);
        const Playlist list(front + kBefore);
        list.rewrite();
        QVERIFY(list.content() == front + kAfter);
    }

    void playlistIsUtf8WhateverTheLanguageOfThePc() {
        const Playlist list(kBefore + "Perché\n");
        QTextCodec *const codec = QTextCodec::codecForLocale();
        QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO-8859-1"));
        list.rewrite("\\sdmemory\\你.mid");
        QTextCodec::setCodecForLocale(codec);
        QCOMPARE(list.content(), QByteArray("\\sdmemory\\你.mid^1^2\nPerché\n"));
    }
};

QTEST_GUILESS_MAIN(TestPlaylist)
#include "tst_playlist.moc"
