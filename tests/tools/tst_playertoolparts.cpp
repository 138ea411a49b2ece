#include "playertool/initial.h"
#include "playertool/makeplayer.h"
#include "playertool/playerpaths.h"
#include "playertool/report.h"
#include "playertool/snapshot.h"

#include "songfactory/songfactory.h"

#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

/// Returns the root of a disk below the folder.
QString makeSmallDisk(const QTemporaryDir &dir, Manifest *manifest = nullptr)
{
    QString root = dir.filePath(text("disk"));
    QDir().mkpath(root);
    MakeOptions options;
    options.songs = kFewestSongs;
    const MakeResult made = makePlayer(root, options);
    if (!made.error.isEmpty())
        QTest::qFail(qPrintable(made.error), __FILE__, __LINE__);
    if (manifest)
        *manifest = made.manifest;
    return root;
}

} // namespace

/// What the tool consists of, each part alone, and its command line.
class TestPlayerToolParts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLoggingCategory::setFilterRules(text("default.debug=false")); }

    void foldersInUseAreRefused();
    void labelAndLostFoundDoNotMatter();
    void numberOfSongsHasLimits();
    void snapshotSurvivesItsFile();
    void manifestSurvivesItsFile();
    void spoiledFilesAreNoSnapshotAndNoManifest();
    void initialFollowsTheTitle_data();
    void initialFollowsTheTitle();
    void brokenBytesAreRecognised_data();
    void brokenBytesAreRecognised();
    void reportTellsWhatChanged();
    void programMakesNotesReportsAndJudges();
};

void TestPlayerToolParts::foldersInUseAreRefused()
{
    QTemporaryDir dir;
    QFile file(dir.filePath(text("letter.txt")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    QVERIFY(!makePlayer(dir.path(), MakeOptions()).error.isEmpty());
    QCOMPARE(Snapshot::take(dir.path()).files.keys(), QStringList{text("letter.txt")});
    QVERIFY(!makePlayer(dir.filePath(text("nowhere")), MakeOptions()).error.isEmpty());
    QVERIFY(!makePlayer(QString(), MakeOptions()).error.isEmpty());
}

void TestPlayerToolParts::labelAndLostFoundDoNotMatter()
{
    QTemporaryDir dir;
    QVERIFY(QDir(dir.path()).mkdir(text("lost+found")));
    QFile label(dir.filePath(text(".windows-label")));
    QVERIFY(label.open(QIODevice::WriteOnly));
    label.close();
    QVERIFY(mayBecomeAPlayer(dir.path()));
}

void TestPlayerToolParts::numberOfSongsHasLimits()
{
    QTemporaryDir dir;
    for (const int songs : {kFewestSongs - 1, kMostSongs + 1, 0, -1}) {
        MakeOptions options;
        options.songs = songs;
        QVERIFY(!makePlayer(dir.path(), options).error.isEmpty());
    }
    QVERIFY(mayBecomeAPlayer(dir.path()));
}

void TestPlayerToolParts::snapshotSurvivesItsFile()
{
    QTemporaryDir dir;
    Snapshot loaded;
    const Snapshot taken = Snapshot::take(makeSmallDisk(dir));
    QVERIFY(taken.save(dir.filePath(text("s"))));
    QVERIFY(Snapshot::load(dir.filePath(text("s")), loaded));
    QCOMPARE(loaded.files.keys(), taken.files.keys());
    QCOMPARE(loaded.folders, taken.folders);
    QCOMPARE(loaded.playlists, taken.playlists);
    for (auto it = loaded.files.cbegin(); it != loaded.files.cend(); ++it) {
        const Snapshot::File original = taken.files.value(it.key());
        QVERIFY(it->sha1 == original.sha1 && it->size == original.size && it->looksBroken == original.looksBroken);
    }
}

void TestPlayerToolParts::manifestSurvivesItsFile()
{
    QTemporaryDir dir;
    Manifest loaded;
    Manifest made;
    makeSmallDisk(dir, &made);
    QVERIFY(made.save(dir.filePath(text("m"))));
    QVERIFY(Manifest::load(dir.filePath(text("m")), loaded));
    QCOMPARE(loaded.songs.keys(), made.songs.keys());
    for (auto it = loaded.songs.cbegin(); it != loaded.songs.cend(); ++it) {
        const ExpectedSong song = made.songs.value(it.key());
        QVERIFY(it->broken == song.broken && it->title == song.title && it->artist == song.artist &&
                it->genre == song.genre && it->author == song.author && it->bpm == song.bpm && it->key == song.key &&
                it->isMp3 == song.isMp3 && it->hasMarkers == song.hasMarkers && it->filedUnder == song.filedUnder);
    }
}

void TestPlayerToolParts::spoiledFilesAreNoSnapshotAndNoManifest()
{
    QTemporaryDir dir;
    QFile file(dir.filePath(text("spoiled")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("{\"path\":\"a.mid\",\"size\":1}\n{not json\n");
    file.close();
    Snapshot snapshot;
    Manifest manifest;
    QVERIFY(!Snapshot::load(file.fileName(), snapshot));
    QVERIFY(!Manifest::load(file.fileName(), manifest));
    QVERIFY(!Snapshot::load(dir.filePath(text("nowhere")), snapshot));
    QVERIFY(!Manifest::load(dir.filePath(text("nowhere")), manifest));
    QVERIFY(!snapshot.save(dir.filePath(text("no/folder"))));
    QVERIFY(!manifest.save(dir.filePath(text("no/folder"))));
}

void TestPlayerToolParts::initialFollowsTheTitle_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("initial");
    const char *const rows[][2] = {
        {"Alba", "A"},  {"alba", "A"},    {"99 palloni", "9"}, {"È sera", "E"}, {"ça va", "C"}, {"'Round", "R"},
        {"(I", "I"},    {"\"7\"", "7"},   {"'è", "E"},         {"((I", "#"},    {"'", "#"},     {"…poi", "#"},
        {"!Viva", "#"}, {"#1", "#"},      {"“Alte”", "#"},     {"Ωmega", "Ω"},  {"ж", "Ж"},     {"½", "1"},
        {"🎵", "#"},     {" Spazio", "#"}, {"", "#"},           {"-", "#"},      {"ﬁore", "f"},  {"[a]", "#"}};
    for (const auto &row : rows)
        QTest::newRow(row[0]) << text(row[0]) << text(row[1]);
}

void TestPlayerToolParts::initialFollowsTheTitle()
{
    QFETCH(QString, title);
    QFETCH(QString, initial);
    QCOMPARE(QString(initialOfTitle(title)), initial);
}

void TestPlayerToolParts::brokenBytesAreRecognised_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("broken");
    SongInfo info;
    info.title = text("Prova");
    const QByteArray midi = SongFactory::midi(info);
    const QByteArray mp3 = SongFactory::mp3(3, info, 0, 1);
    QTest::newRow("empty") << text("a.mid") << QByteArray() << true;
    QTest::newRow("midi") << text("a.mid") << midi << false;
    QTest::newRow("midi of 21 bytes") << text("a.mid") << midi.left(21) << true;
    QTest::newRow("midi without a track") << text("a.mid") << QByteArray("MThd").leftJustified(40, 'x') << true;
    QTest::newRow("text") << text("a.mid") << QByteArray("a letter") << true;
    QTest::newRow("mf5") << text("a.mf5") << SongFactory::mfx(5, info) << false;
    QTest::newRow("mf5 cut in its header") << text("a.mf5") << SongFactory::mfx(5, info).left(1023) << true;
    QTest::newRow("mf3 without a stream") << text("a.mf3") << SongFactory::mfx(3, info).left(512) << true;
    QTest::newRow("tagged mp3") << text("a.Mp3") << mp3 << false;
    QTest::newRow("mp3 bytes under another name") << text("a.mid") << mp3 << true;
    QTest::newRow("tag longer than the file")
        << text("a.mp3") << SongFactory::id3v2Tag(3, info, 0, 900).left(500) << true;
    QTest::newRow("untagged mp3") << text("a.xmp3") << SongFactory::mp3(0, info, 0, 1) << false;
    QTest::newRow("mp3 of zeros") << text("a.mp3") << QByteArray(20, '\0') << false;
    QTest::newRow("frame of another layer") << text("a.mp3") << QByteArray("\xFF\xF2").leftJustified(20, 'x') << true;
}

void TestPlayerToolParts::brokenBytesAreRecognised()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    QFETCH(bool, broken);
    QCOMPARE(looksLikeABrokenSong(name, bytes), broken);
}

void TestPlayerToolParts::reportTellsWhatChanged()
{
    QTemporaryDir dir;
    const QString root = dir.path() + QLatin1Char('/');
    const auto write = [&](const char *path, const QByteArray &bytes) {
        QDir(root).mkpath(PlayerPaths::folderOf(text(path)));
        QFile file(root + text(path));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    };
    write("note.txt", "note");
    write("loose.mid", "loose");
    write("My Songs/long.midi", "long");
    write("System/Playlist/p.pls", "\\sdmemory\\loose.mid^1^2\r\nother\r\n");
    for (int i = 0; i <= 1000; ++i)
        write(qPrintable(text("Big/%1.mid").arg(i)), QByteArray::number(i));
    const Snapshot before = Snapshot::take(root);
    QVERIFY(QFile::remove(root + text("note.txt")));
    QVERIFY(QFile::rename(root + text("loose.mid"), root + text("My Songs/loose.mid")));
    QVERIFY(QFile::rename(root + text("My Songs/long.midi"), root + text("My Songs/long.mid")));
    QVERIFY(QDir(root).mkpath(text("Big/A0")));
    for (int i = 0; i <= 1000; ++i)
        QVERIFY(QFile::rename(root + text("Big/%1.mid").arg(i), root + text("Big/A0/%1.mid").arg(i)));
    write("System/Playlist/p.pls", "\\sdmemory\\My Songs\\loose.mid^1^2\r\nother\r\n");
    write("CorvinImportDB.sql", "INSERT INTO songs one\nINSERT INTO songs two\nDELETE FROM songs WHERE x\n");
    const QString report = changesText(before, root);
    for (const char *part :
         {"Removed: 1\n    note.txt\n", "Moved: 1\n    loose.mid -> My Songs/loose.mid\n",
          "Renamed: 1\n    My Songs/long.midi -> My Songs/long.mid\n",
          "Folders split: 1\n    Big, into sub-folders with songs (with companions): A0 1001 (1001)\n",
          "Playlists rewritten: 1\n    System/Playlist/p.pls : 1 of 3 lines\n",
          "CorvinImportDB.sql: 2 INSERT, 1 DELETE; it begins\n    INSERT INTO songs one\n"})
        QVERIFY2(report.contains(text(part)), qPrintable(report));
}

void TestPlayerToolParts::programMakesNotesReportsAndJudges()
{
    QTemporaryDir dir;
    const QString program = text(CORVIN_PLAYER_TOOL);
    const QString disk = dir.filePath(text("disk"));
    const QString notes = dir.filePath(text("notes"));
    const QString manifest = dir.filePath(text("manifest"));
    QVERIFY(QDir(dir.path()).mkdir(text("disk")));
    const auto run = [&](const QStringList &arguments) { return QProcess::execute(program, arguments); };
    QCOMPARE(run({text("make"), disk, text("--songs"), text("1500"), text("--seed"), text("3"), text("--manifest"),
                  manifest}),
             0);
    QCOMPARE(run({text("make"), disk}), 2);
    QCOMPARE(run({text("snapshot"), disk, notes}), 0);
    QCOMPARE(run({text("report"), notes, disk}), 0);
    QCOMPARE(run({text("judge"), notes, disk, text("--manifest"), manifest}), 1);
    QCOMPARE(run({text("judge"), manifest + text("x"), disk}), 2);
    QCOMPARE(run({text("make"), disk, text("--songs"), text("many")}), 2);
    QCOMPARE(run({text("dance")}), 2);
    qputenv("CORVIN_VOLUMES", QFile::encodeName(disk));
    QCOMPARE(run({text("locate")}), 0);
    qputenv("CORVIN_VOLUMES", "/nonexistent");
    QCOMPARE(run({text("locate")}), 1);
}

QTEST_GUILESS_MAIN(TestPlayerToolParts)
#include "tst_playertoolparts.moc"
