#include "playertool/initial.h"
#include "playertool/makeplayer.h"
#include "playertool/report.h"
#include "playertool/snapshot.h"

#include "songfactory/songfactory.h"
#include "support/files.h"
#include "support/same.h"

/// What the tool consists of, each part alone, and its command line.
class TestPlayerToolParts : public QObject
{
    Q_OBJECT

    /// A small disk in an empty folder.
    static Manifest makeDisk(const QString &root) {
        const MakeResult made = makePlayer(root, {kFewestSongs, 1});
        if (!made.error.isEmpty())
            failTest(made.error);
        return made.manifest;
    }

private slots:
    void initTestCase() { QLoggingCategory::setFilterRules("default.debug=false"_s); }

    void foldersInUseAreRefused() {
        PcFolder dir;
        dir.addFile("letter.txt"_s);
        for (const QString &root : {dir.path(), dir.path("nowhere"_s), QString()})
            QVERIFY2(!makePlayer(root, MakeOptions()).error.isEmpty(), qPrintable(root));
        QCOMPARE(Snapshot::take(dir.path()).files.keys(), QStringList{"letter.txt"_s});
    }

    void labelAndLostFoundDoNotMatter() {
        PcFolder dir;
        dir.addFolder("lost+found"_s);
        dir.addFile(".windows-label"_s);
        QVERIFY(mayBecomeAPlayer(dir.path()));
    }

    void numberOfSongsHasLimits() {
        const PcFolder dir;
        for (const int songs : {kFewestSongs - 1, kMostSongs + 1, 0, -1})
            QVERIFY(!makePlayer(dir.path(), {songs, 1}).error.isEmpty());
        QVERIFY(mayBecomeAPlayer(dir.path()));
    }

    void snapshotSurvivesItsFile() {
        const PcFolder dir;
        makeDisk(dir.path());
        const Snapshot taken = Snapshot::take(dir.path());
        Snapshot loaded;
        QVERIFY(taken.save(dir.path("s"_s)));
        QVERIFY(Snapshot::load(dir.path("s"_s), loaded));
        QCOMPARE(loaded.files.keys(), taken.files.keys());
        QCOMPARE(loaded.folders, taken.folders);
        QCOMPARE(loaded.playlists, taken.playlists);
        for (auto it = loaded.files.cbegin(); it != loaded.files.cend(); ++it) {
            const Snapshot::File original = taken.files.value(it.key());
            QVERIFY(it->sha1 == original.sha1 && it->size == original.size && it->looksBroken == original.looksBroken);
        }
    }

    void manifestSurvivesItsFile() {
        const PcFolder dir;
        const Manifest made = makeDisk(dir.path());
        Manifest loaded;
        QVERIFY(made.save(dir.path("m"_s)));
        QVERIFY(Manifest::load(dir.path("m"_s), loaded));
        QCOMPARE(loaded.songs.keys(), made.songs.keys());
        for (auto it = loaded.songs.cbegin(); it != loaded.songs.cend(); ++it) {
            const ExpectedSong song = made.songs.value(it.key());
            QVERIFY(it->broken == song.broken && it->title == song.title && it->artist == song.artist &&
                    it->genre == song.genre && it->author == song.author && it->bpm == song.bpm &&
                    it->key == song.key && it->isMp3 == song.isMp3 && it->hasMarkers == song.hasMarkers &&
                    it->filedUnder == song.filedUnder);
        }
    }

    void spoiledFilesAreNoSnapshotAndNoManifest() {
        PcFolder dir;
        const QString spoiled = dir.addFile("spoiled"_s, "{\"path\":\"a.mid\",\"size\":1}\n{not json\n");
        Snapshot snapshot;
        Manifest manifest;
        for (const QString &file : {spoiled, dir.path("nowhere"_s)})
            QVERIFY2(!Snapshot::load(file, snapshot) && !Manifest::load(file, manifest), qPrintable(file));
        QVERIFY(!snapshot.save(dir.path("no/folder"_s)));
        QVERIFY(!manifest.save(dir.path("no/folder"_s)));
    }

    void initialFollowsTheTitle() {
        const char *const rows[][2] = {
            {"Alba", "A"},  {"alba", "A"},    {"99 palloni", "9"}, {"È sera", "E"}, {"ça va", "C"}, {"'Round", "R"},
            {"(I", "I"},    {"\"7\"", "7"},   {"'è", "E"},         {"((I", "#"},    {"'", "#"},     {"…poi", "#"},
            {"!Viva", "#"}, {"#1", "#"},      {"“Alte”", "#"},     {"Ωmega", "Ω"},  {"ж", "Ж"},     {"½", "1"},
            {"🎵", "#"},     {" Spazio", "#"}, {"", "#"},           {"-", "#"},      {"ﬁore", "f"},  {"[a]", "#"}};
        for (const auto &[title, initial] : rows)
            same(title, QString(initialOfTitle(QString::fromUtf8(title))), QString::fromUtf8(initial));
    }

    void brokenBytesAreRecognised() {
        const auto check = [](const char *what, const QString &name, const QByteArray &bytes, bool broken) {
            same(what, looksLikeABrokenSong(name, bytes), broken);
        };
        SongInfo info;
        info.title = "Prova"_s;
        const QByteArray midi = SongFactory::midi(info);
        const QByteArray mp3 = SongFactory::mp3(3, info, 0, 1);
        check("empty", "a.mid"_s, QByteArray(), true);
        check("midi", "a.mid"_s, midi, false);
        check("midi of 21 bytes", "a.mid"_s, midi.left(21), true);
        check("midi without a track", "a.mid"_s, QByteArray("MThd").leftJustified(40, 'x'), true);
        check("text", "a.mid"_s, QByteArray("a letter"), true);
        check("mf5", "a.mf5"_s, SongFactory::mfx(5, info), false);
        check("mf5 cut in its header", "a.mf5"_s, SongFactory::mfx(5, info).left(1023), true);
        check("mf3 without a stream", "a.mf3"_s, SongFactory::mfx(3, info).left(512), true);
        check("tagged mp3", "a.Mp3"_s, mp3, false);
        check("mp3 bytes under another name", "a.mid"_s, mp3, true);
        check("tag longer than the file", "a.mp3"_s, SongFactory::id3v2Tag(3, info, 0, 900).left(500), true);
        check("untagged mp3", "a.xmp3"_s, SongFactory::mp3(0, info, 0, 1), false);
        check("mp3 of zeros", "a.mp3"_s, QByteArray(20, '\0'), false);
        check("frame of another layer", "a.mp3"_s, QByteArray("\xFF\xF2").leftJustified(20, 'x'), true);
    }

    void reportTellsWhatChanged() {
        PcFolder disk;
        const auto rename = [&](const QString &from, const QString &to) {
            return QFile::rename(disk.path(from), disk.path(to));
        };
        disk.addFile("note.txt"_s, "note");
        disk.addFile("loose.mid"_s, "loose");
        disk.addFile("My Songs/long.midi"_s, "long");
        disk.addFile("System/Playlist/p.pls"_s, "\\sdmemory\\loose.mid^1^2\r\nother\r\n");
        for (int i = 0; i <= 1000; ++i)
            disk.addFile("Big/%1.mid"_s.arg(i), QByteArray::number(i));
        const Snapshot before = Snapshot::take(disk.path());
        QVERIFY(QFile::remove(disk.path("note.txt"_s)));
        QVERIFY(rename("loose.mid"_s, "My Songs/loose.mid"_s));
        QVERIFY(rename("My Songs/long.midi"_s, "My Songs/long.mid"_s));
        disk.addFolder("Big/A0"_s);
        for (int i = 0; i <= 1000; ++i)
            QVERIFY(rename("Big/%1.mid"_s.arg(i), "Big/A0/%1.mid"_s.arg(i)));
        disk.addFile("System/Playlist/p.pls"_s, "\\sdmemory\\My Songs\\loose.mid^1^2\r\nother\r\n");
        disk.addFile("CorvinImportDB.sql"_s,
                     "INSERT INTO songs one\nINSERT INTO songs two\nDELETE FROM songs WHERE x\n");
        const QString report = changesText(before, disk.path());
        for (const char *part :
             {"Removed: 1\n    note.txt\n", "Moved: 1\n    loose.mid -> My Songs/loose.mid\n",
              "Renamed: 1\n    My Songs/long.midi -> My Songs/long.mid\n",
              "Folders split: 1\n    Big, into sub-folders with songs (with companions): A0 1001 (1001)\n",
              "Playlists rewritten: 1\n    System/Playlist/p.pls : 1 of 3 lines\n",
              "CorvinImportDB.sql: 2 INSERT, 1 DELETE; it begins\n    INSERT INTO songs one\n"})
            QVERIFY2(report.contains(QLatin1String(part)), qPrintable(report));
    }

    void programMakesNotesReportsAndJudges() {
        PcFolder dir;
        const QString disk = dir.addFolder("disk"_s);
        const QString notes = dir.path("notes"_s);
        const QString manifest = dir.path("manifest"_s);
        const auto run = [](const QStringList &arguments) {
            return QProcess::execute(QStringLiteral(CORVIN_PLAYER_TOOL), arguments);
        };
        const QStringList options = words("--songs 1500 --seed 3 --manifest");
        QCOMPARE(run(QStringList{"make"_s, disk} + options + QStringList{manifest}), 0);
        QCOMPARE(run({"make"_s, disk}), 2);
        QCOMPARE(run({"snapshot"_s, disk, notes}), 0);
        QCOMPARE(run({"report"_s, notes, disk}), 0);
        QCOMPARE(run({"judge"_s, notes, disk, "--manifest"_s, manifest}), 1);
        QCOMPARE(run({"judge"_s, manifest + "x"_s, disk}), 2);
        QCOMPARE(run({"make"_s, disk, "--songs"_s, "many"_s}), 2);
        QCOMPARE(run({"dance"_s}), 2);
        qputenv("CORVIN_VOLUMES", QFile::encodeName(disk));
        QCOMPARE(run({"locate"_s}), 0);
        qputenv("CORVIN_VOLUMES", "/nonexistent");
        QCOMPARE(run({"locate"_s}), 1);
    }
};

QTEST_GUILESS_MAIN(TestPlayerToolParts)
#include "tst_playertoolparts.moc"
