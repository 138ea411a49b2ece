#include "hostilerun.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

/// Disks made by somebody who wants the run to hang, to lose a file, or to write what the player misreads.
class TestHostileDisks : public QObject
{
    Q_OBJECT

private slots:
    void playlistsOfOneLongLineOfNulBytesAndOfNoText_data() {
        columns<QByteArray, bool>("list", "follows");
        const QByteArray named = "\\sdmemory\\loose.mid^1^2\n";
        row("a line of megabytes", QByteArray(5 << 20, 'x') + '\n' + named, true);
        row("megabytes of numbers", named + "^12345"_b.repeated(500000), true);
        row("megabytes of carets", named + QByteArray(3 << 20, '^'), true);
        row("megabytes of paths", named + "\\sdmemory\\"_b.repeated(300000), true);
        row("a NUL byte before", "a\0b\n"_b + named, true);
        row("nothing but NUL bytes", QByteArray(1 << 20, '\0'), false);
        row("invalid UTF-8", "\xFF\xFE\xC0\x80\xED\xA0\x80\n"_b + named, true);
        row("cut UTF-8", named + "\xF0\x9F", true);
        row("half a million empty lines", QByteArray(500000, '\n') + named, true);
        row("one song again and again", named.repeated(20000), true);
        row("nothing", ""_b, false);
    }
    void playlistsOfOneLongLineOfNulBytesAndOfNoText() {
        QFETCH(QByteArray, list);
        HostileRun run;
        run.addSong("loose.mid"_s);
        run.addSong("other.mid"_s);
        run.player.addFile("System/Playlist/a.pls"_s, list);
        run.runWhole();
        const QByteArray after = run.player.content("System/Playlist/a.pls"_s);
        QVERIFY(run.player.exists("My Songs/loose.mid"_s));
        QTEST(after.contains("\\sdmemory\\My Songs\\loose.mid^1^2\n"), "follows");
        QVERIFY(!after.contains("\\sdmemory\\loose.mid"));
        QCOMPARE(run.player.files("System/Playlist"_s), words("System/Playlist/a.pls"));
    }

    void databaseExportsOfNoise_data() {
        columns<QByteArray, int>("start", "deletions");
        row("noise", ""_b, 0);
        row("paths without an end", "\\sdmemory\\no end"_b.repeated(3), 0);
        row("one path of megabytes", "\\sdmemory\\"_b + QByteArray(5 << 20, 'p') + '\0', 1);
        row("paths that are none", "\\sdmemory\\\0"_b.repeated(3000), 3000);
        row("a path with lines and SQL", "\\sdmemory\\a\r\nb'; DROP TABLE songs; --\n\0"_b, 1);
        row("a path that leads out", "\\sdmemory\\..\\..\\..\\etc\\passwd\0"_b, 1);
        row("a path of no text", "\\sdmemory\\\xFF\xC0\xED\xA0\x80.mid\0"_b, 1);
    }
    void databaseExportsOfNoise() {
        HostileRun run;
        run.addSong("A/a.mid"_s);
        QRandomGenerator random(1);
        const QByteArray start = *static_cast<const QByteArray *>(QTest::qData("start", QMetaType::QByteArray));
        QByteArray noise((start.isEmpty() ? 50 : 1) << 20, Qt::Uninitialized);
        random.generate(reinterpret_cast<quint32 *>(noise.begin()), reinterpret_cast<quint32 *>(noise.end()));
        noise.replace('\0', '\1');
        run.player.addFile("System/Corvin/data.fastDB"_s, start + noise);
        run.runWhole();
        PlayerDatabase database;
        run.importInto(database);
        QCOMPARE(database.paths(), QStringList("\\sdmemory\\A\\a.mid"_s));
        QTEST(run.importFile().count("DELETE FROM songs WHERE"), "deletions");
    }

    void textsOfSongsStayValues() {
        HostileRun run;
        const QStringList texts = {"'; DROP TABLE songs; --"_s,
                                   "''"_s,
                                   "'"_s,
                                   "\\'"_s,
                                   "a\r\nb\nc\rd"_s,
                                   "\"x\";"_s,
                                   "\u2028\u2029\u0085"_s,
                                   QString(QChar(0xD800)) + "x"_s,
                                   "%1 %s ?1 :a @b $c"_s,
                                   "'"_s.repeated(300),
                                   "x"_s.repeated(99) + "'"_s,
                                   "INSERT INTO\tsongs\x1A\x1B"_s,
                                   "\u202E\uFEFF/* -- */"_s,
                                   "a'||(SELECT 1)||'"_s,
                                   QString(20, QLatin1Char('\n'))};
        int number = 0;
        for (const QString &text : texts) {
            SongInfo info;
            info.title = info.artist = info.genre = info.author = info.key = text;
            const QString base = "A/%1"_s.arg(++number);
            run.player.addFile(base + ".mp3"_s, SongFactory::mp3(3, info, 1, 1));
            run.player.addFile(base + "u.mp3"_s, SongFactory::mp3(4, info, 3, 2));
            run.player.addFile(base + ".mid"_s, SongFactory::midi(info, 0, SongFactory::Markers::WithBars, 1));
            run.player.addFile(base + ".mf3"_s, SongFactory::mfx(3, info, 1));
        }
        for (const QString &name : {"it's.mid"_s, "a;b.mid"_s, "line\nbreak.mid"_s, "cr\rlf\n.mid"_s, "\"'--.mid"_s})
            run.addSong("A/"_s + name);
        run.runWhole();
        PlayerDatabase database;
        run.importInto(database);
        QCOMPARE(database.rowCount("songs"_s), 4 * texts.size() + 5);
        const QList<QStringList> rows = database.songs();
        for (const QStringList &row : rows)
            QVERIFY(!row.at(2).contains(QLatin1Char('\n')) && row.at(2).size() <= 100);
    }

    void foldersNestedDeeperThanAnyPath() {
        HostileRun run;
        const QByteArray song = contentOf(run.addSong("top.mid"_s));
        const int reached = nest(run.player.root(), 10000, song);
        QVERIFY2(reached > 4096, qPrintable(QString::number(reached)));
        run.runWhole();
        QVERIFY(run.player.exists("My Songs/top.mid"_s));
        // What no path leads to is still there, and what one leads to is in the import file.
        QCOMPARE(songsInNest(run.player.root(), song), reached / kNestedSongEvery);
        QVERIFY(run.importFile().count("INSERT INTO") > 5);
        QVERIFY(runProgram("rm"_s, {"-rf"_s, run.player.path("d"_s)}));
    }

    void folderOfManyThousandFiles() {
        HostileRun run;
        const int files = rounds(5000, 100000);
        for (int i = 0; i < files; ++i)
            run.addSong("Big/%1.mid"_s.arg(i), "%1 title"_s.arg(QChar('A' + i % 7)));
        run.runWhole();
        QCOMPARE(QDir(run.player.path("Big"_s)).entryList(QDir::Files), QStringList());
        QCOMPARE(run.importFile().count("INSERT INTO"), files);
        for (const QString &folder : run.player.folders("Big"_s))
            QVERIFY(QDir(run.player.path("Big/"_s + folder)).entryList(QDir::Files).size() <= 900);
    }

    void circlesOfLinks() {
        HostileRun run;
        run.addNumbered("Big/b"_s, 1001, "mid"_s, contentOf(run.addSong("A/a.mid"_s)));
        PcFolder elsewhere;
        elsewhere.addFile("notes.txt"_s);
        const QString root = run.player.root();
        const QList<QPair<QString, QString>> links = {{"."_s, "A/self"_s},
                                                      {".."_s, "A/up"_s},
                                                      {root, "A/root"_s},
                                                      {"loop"_s, "A/loop"_s},
                                                      {"two"_s, "A/one"_s},
                                                      {"one"_s, "A/two"_s},
                                                      {"a.mid"_s, "A/link.mid"_s},
                                                      {"nothing"_s, "A/gone.mid"_s},
                                                      {"../A"_s, "Big/A"_s},
                                                      {"b00000.mid"_s, "Big/link.mid"_s},
                                                      {elsewhere.path(), "out"_s},
                                                      {"/etc/passwd"_s, "passwd.txt"_s},
                                                      {"/dev/zero"_s, "A/zero.mid"_s},
                                                      {"/dev/zero"_s, "zero.mid"_s}};
        for (const auto &link : links)
            QVERIFY(QFile::link(link.first, run.player.path(link.second)));
        run.runWhole();
        for (const auto &link : links) {
            if (!link.second.startsWith("Big/"_s))
                QVERIFY2(QFileInfo(run.player.path(link.second)).isSymLink(), qPrintable(link.second));
        }
        QCOMPARE(elsewhere.files(), words("notes.txt"));
        QCOMPARE(run.importFile().count("INSERT INTO"), 1002);
    }

    void namesOf255Bytes() {
        HostileRun run;
        const auto name = [](const QString &start, const QString &suffix, const QString &filling = "n"_s) {
            QString base = start;
            while ((base + filling + suffix).toUtf8().size() <= 255)
                base += filling;
            return base + suffix;
        };
        const QString song = name("s"_s, ".mid"_s);
        run.addSong(song);
        run.addSong("A/"_s + song);
        run.addSong("My Songs/"_s + name("t"_s, ".mid"_s));
        run.addSong(name("t"_s, ".mid"_s));
        run.addSong("A/"_s + name("\u00E8"_s, ".mid"_s, "\u00E8"_s));
        run.addSong("A/"_s + name("\u65E5"_s, ".midi"_s, "\u65E5"_s));
        for (const QString &folder : {QString(), "A/"_s, "A/B/"_s, "Images/"_s}) {
            for (const QString &suffix : words(".jpg .avi .txt .cdg .dat"))
                run.player.addFile(folder + name("f"_s, suffix), folder.toUtf8() + suffix.toUtf8());
        }
        run.player.addFile("System/Playlist/"_s + name("p"_s, ".pls"_s), "\\sdmemory\\" + song.toUtf8() + "^1^2\n");
        run.addNumbered("Big/b"_s, 1001, "mid"_s, contentOf(run.player.path("A/"_s + song)));
        run.addSong("Big/"_s + song, "title"_s);
        run.runWhole();
        // Its playlist has no room for the name under which a new one is written: so the song stays where it is, though
        // under a name that the player can open.
        QCOMPARE(QDir(run.player.root()).entryList({"s*(0).mid"_s}, QDir::Files).size(), 1);
        run.told.clear();
        run.runWhole();
    }

    void pipesAndSocketsAmongTheSongs() {
        HostileRun run;
        run.addNumbered("Big/b"_s, 1001, "mid"_s, contentOf(run.addSong("A/a.mid"_s)));
        QStringList pipes = {"loose.mid"_s,
                             "A/pipe.mp3"_s,
                             "A/a.cdg"_s,
                             "A/note.txt"_s,
                             "A/x.jpg"_s,
                             "A/v.avi"_s,
                             "Images/p.png"_s,
                             "Big/pipe.mid"_s,
                             "Big/pipe.txt"_s,
                             "Big/b00001.dat"_s,
                             "System/Playlist/a.pls"_s,
                             "System/Playlist/b.pls.old"_s,
                             "System/Corvin/data.fastDB"_s,
                             "System/Playlist/c.pls.new"_s,
                             "q-artedev"_s,
                             "A/.hidden.mid"_s};
        for (const QString &pipe : pipes) {
            run.player.addFolder(QFileInfo(pipe).path());
            const QByteArray path = QFile::encodeName(run.player.path(pipe));
            QCOMPARE(mkfifo(path.constData(), 0666), 0);
            QCOMPARE(mknod((path + ".socket.mid").constData(), S_IFSOCK | 0666, 0), 0);
        }
        run.runWhole();
        QCOMPARE(run.importFile().count("INSERT INTO"), 1002);
        for (const QString &pipe : pipes) {
            if (!pipe.startsWith("Big/"_s))
                QVERIFY2(isPipe(run.player.path(pipe)), qPrintable(pipe));
        }
    }

private:
    static constexpr int kNestedSongEvery = 100;

    static bool isPipe(const QString &path) {
        struct stat found = {};
        return lstat(QFile::encodeName(path).constData(), &found) == 0 && S_ISFIFO(found.st_mode);
    }
    /// Makes folders "d" in each other, with a song "d.mid" in every hundredth, and returns how many there are.
    static int nest(const QString &root, int wanted, const QByteArray &song) {
        int folder = open(QFile::encodeName(root).constData(), O_RDONLY | O_DIRECTORY);
        int depth = 0;
        while (depth < wanted && folder >= 0 && mkdirat(folder, "d", 0777) == 0) {
            const int next = openat(folder, "d", O_RDONLY | O_DIRECTORY);
            close(folder);
            folder = next;
            if (++depth % kNestedSongEvery != 0)
                continue;
            const int file = openat(folder, "d.mid", O_WRONLY | O_CREAT, 0666);
            const QByteArray content = song + QByteArray::number(depth);
            if (write(file, content.constData(), size_t(content.size())) != content.size())
                failTest("no song in the nest"_s);
            close(file);
        }
        close(folder);
        return depth;
    }
    /// How many of the songs of nest() are whole and where they were.
    static int songsInNest(const QString &root, const QByteArray &song) {
        int folder = open(QFile::encodeName(root).constData(), O_RDONLY | O_DIRECTORY);
        int songs = 0;
        for (int depth = 1; folder >= 0; ++depth) {
            const int next = openat(folder, "d", O_RDONLY | O_DIRECTORY);
            close(folder);
            folder = next;
            QByteArray content(song.size() + 10, '\0');
            const int file = openat(folder, "d.mid", O_RDONLY);
            content.truncate(int(qMax(ssize_t(0), read(file, content.data(), size_t(content.size())))));
            close(file);
            songs += content == song + QByteArray::number(depth) ? 1 : 0;
        }
        return songs;
    }
};

QTEST_MAIN(TestHostileDisks)
#include "tst_hostiledisks.moc"
