#include "playertool/initial.h"
#include "playertool/makeplayer.h"
#include "playertool/outcome.h"
#include "playertool/playerpaths.h"
#include "playertool/report.h"
#include "playertool/snapshot.h"

#include "songfactory/songfactory.h"
#include "songfiles/metasong.h"

#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using PlayerPaths::Kind;

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

QByteArray contentOf(const QString &file)
{
    QFile in(file);
    return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
}

} // namespace

/// The maker of simulated disks: that everything an optimisation has to cope with is on them.
class TestPlayerTool : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void diskHasAsManySongsAsAsked();
    void diskHoldsEveryListedFile_data();
    void diskHoldsEveryListedFile();
    void diskHoldsSongsOfEverySuffix_data();
    void diskHoldsSongsOfEverySuffix();
    void oneFolderIsTooBigAndHasCompanionsAndSubFolders();
    void titlesOfTheBigFolderBeginInEveryWay();
    void looseSongsAreInTheRootSomeUnderTakenNames();
    void overlongNamesHaveCompanions();
    void namesHaveAccentsQuotesAndApostrophes();
    void playlistsNameRootFilesFolderFilesAndVanishedOnes();
    void fastDatabaseNamesSongsThatAreThereAndThatAreGone();
    void noiseOfTheFastDatabaseNeverLooksLikeAPath();
    void everyContentIsThereOnce();
    void manifestSaysWhatTheSongReaderReads();
    void brokenSongsCannotBeRead();
    void equalSeedsGiveEqualDisks();
    void largerArchivesHaveNestedAndFullFolders();
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

private:
    QStringList pathsIn(const QString &folder) const;

    QTemporaryDir m_dir;
    QString m_root;
    MakeResult m_made;
    Snapshot m_snapshot;
};

void TestPlayerTool::initTestCase()
{
    QLoggingCategory::setFilterRules(text("default.debug=false"));
    m_root = m_dir.path() + QLatin1Char('/');
    m_made = makePlayer(m_root, MakeOptions());
    QCOMPARE(m_made.error, QString());
    m_snapshot = Snapshot::take(m_root);
}

void TestPlayerTool::cleanupTestCase()
{
    QCOMPARE(Snapshot::take(m_root).files.size(), m_snapshot.files.size());
}

QStringList TestPlayerTool::pathsIn(const QString &folder) const
{
    QStringList found;
    for (auto it = m_snapshot.files.cbegin(); it != m_snapshot.files.cend(); ++it) {
        if (PlayerPaths::folderOf(it.key()) == folder)
            found.append(it.key());
    }
    return found;
}

void TestPlayerTool::diskHasAsManySongsAsAsked()
{
    QCOMPARE(m_made.manifest.songs.size(), 1700);
    QCOMPARE(m_made.files, m_snapshot.files.size());
    int songs = 0;
    for (auto it = m_snapshot.files.cbegin(); it != m_snapshot.files.cend(); ++it)
        songs += PlayerPaths::kindOf(it.key()) == Kind::Song && !PlayerPaths::isPlayersOwn(it.key()) ? 1 : 0;
    QCOMPARE(songs, 1700);
}

void TestPlayerTool::diskHoldsEveryListedFile_data()
{
    QTest::addColumn<QString>("file");
    for (const char *file : {".windows-label",
                             "AUTOEXEC.BAT",
                             "q-artedev",
                             "System/Corvin/Corvin.exe",
                             "System/GuiProc/GuiProc.exe",
                             "System/Corvin/manuale.txt",
                             "System/Corvin/skin/sfondo.png",
                             "System/Midi/Avvio.MP3",
                             "System/Playlist/Serata.pls",
                             "System/Corvin/data.fastDB",
                             "CorvinUpdate/CorvinUpdate.c4",
                             "CorvinUpdate/old/leggimi.txt",
                             "CorvinImportDB.sql",
                             "Images/cover.jpg",
                             "My Songs/Scaricati/cover.jpg",
                             "Images/2019/mare.JPG",
                             "Videos/saggio.avi",
                             "My Songs/Scaricati/saggio.avi",
                             "Videos/Clips/ballo.mp4",
                             "My Songs/notes.TXT",
                             "My Songs/Scaricati/lettera.doc",
                             "My Songs/Scaricati/senza suffisso",
                             "My Songs/.DS_Store",
                             "Bridges/elenco.txt",
                             "Effects/luci.png",
                             "nota.txt",
                             "locandina.png",
                             "apertura.mpg",
                             "leggimi"})
        QTest::newRow(file) << text(file);
}

void TestPlayerTool::diskHoldsEveryListedFile()
{
    QFETCH(QString, file);
    QVERIFY(m_snapshot.files.contains(file));
    if (file == text(".windows-label"))
        QVERIFY(contentOf(m_root + file).startsWith("CORVIN4"));
}

void TestPlayerTool::diskHoldsSongsOfEverySuffix_data()
{
    QTest::addColumn<QString>("suffix");
    for (const char *suffix : {"mid", "MID", "midi", "MIDI", "xmid", "kar", "mf3", "mf4", "mf5", "MF5", "mp3", "xmp3"})
        QTest::newRow(suffix) << text(suffix);
}

void TestPlayerTool::diskHoldsSongsOfEverySuffix()
{
    QFETCH(QString, suffix);
    int playable = 0;
    for (auto it = m_made.manifest.songs.cbegin(); it != m_made.manifest.songs.cend(); ++it)
        playable += !it->broken && PlayerPaths::suffixOf(it.key()) == suffix ? 1 : 0;
    QVERIFY(playable > 0);
}

void TestPlayerTool::oneFolderIsTooBigAndHasCompanionsAndSubFolders()
{
    const QString big = text("My Songs/Karaoke Italia");
    const Outcome outcome(m_snapshot, m_snapshot, m_made.manifest);
    QCOMPARE(outcome.bigFolders(), QSet<QString>{big});
    int songs = 0;
    QMap<QString, int> companions;
    for (const QString &path : pathsIn(big)) {
        songs += PlayerPaths::kindOf(path) == Kind::Song ? 1 : 0;
        if (PlayerPaths::kindOf(path) == Kind::Companion)
            ++companions[PlayerPaths::suffixOf(path)];
    }
    QVERIFY(songs > 1000);
    QCOMPARE(companions.keys(), QStringList({text("bak"), text("cdg"), text("dat")}));
    QVERIFY(m_snapshot.folders.contains(big + text("/A0")));
    QVERIFY(m_snapshot.folders.contains(big + text("/Natale è qui")));
    QVERIFY(m_snapshot.folders.contains(big + text(".old")));
    QVERIFY(pathsIn(big).contains(big + text("/Alba presa.mid")));
    QVERIFY(pathsIn(big + text("/A0")).contains(big + text("/A0/Alba presa.mid")));
}

void TestPlayerTool::titlesOfTheBigFolderBeginInEveryWay()
{
    QMap<QChar, int> filed;
    QSet<QChar> first;
    for (const QString &path : pathsIn(text("My Songs/Karaoke Italia"))) {
        if (PlayerPaths::kindOf(path) != Kind::Song || m_made.manifest.songs.value(path).broken)
            continue;
        const QString title = m_made.manifest.songs.value(path).filedUnder.first();
        first.insert(title.at(0));
        ++filed[initialOfTitle(title)];
    }
    for (char letter = 'A'; letter <= 'Z'; ++letter)
        QVERIFY2(filed.contains(QLatin1Char(letter)), &letter);
    for (const QChar c : text("#079ΩЖ日"))
        QVERIFY2(filed.contains(c), qPrintable(QString(c)));
    for (const QChar c : text("'(\"!@&-àÈ…“½"))
        QVERIFY2(first.contains(c), qPrintable(QString(c)));
    QVERIFY2(filed.value(QLatin1Char('S')) > 500, "one initial has to outgrow a sub-folder, companions included");
}

void TestPlayerTool::looseSongsAreInTheRootSomeUnderTakenNames()
{
    int loose = 0;
    int taken = 0;
    for (const QString &path : pathsIn(QString())) {
        if (PlayerPaths::kindOf(path) != Kind::Song)
            continue;
        ++loose;
        taken += m_snapshot.files.contains(text("My Songs/") + path) ? 1 : 0;
    }
    QVERIFY(loose >= 5);
    QVERIFY(taken >= 2);
}

void TestPlayerTool::overlongNamesHaveCompanions()
{
    int overlong = 0;
    for (auto it = m_made.manifest.songs.cbegin(); it != m_made.manifest.songs.cend(); ++it) {
        const QString stem = PlayerPaths::join(PlayerPaths::folderOf(it.key()), PlayerPaths::stemOf(it.key()));
        if (PlayerPaths::nameOf(it.key()).toUtf8().size() >= 120 && m_snapshot.files.contains(stem + text(".cdg")))
            ++overlong;
    }
    QVERIFY(overlong >= 3);
}

void TestPlayerTool::namesHaveAccentsQuotesAndApostrophes()
{
    const QString all = QStringList(m_made.manifest.songs.keys()).join(QLatin1Char('\n'));
    for (const QChar c : text("'è“Ç"))
        QVERIFY2(all.contains(c), qPrintable(QString(c)));
    for (const QChar c : text("\\:*?\"<>|"))
        QVERIFY2(!all.contains(c), "the player's disk takes no such name");
}

void TestPlayerTool::playlistsNameRootFilesFolderFilesAndVanishedOnes()
{
    int root = 0;
    int filed = 0;
    int vanished = 0;
    int other = 0;
    for (const QByteArray &playlist : qAsConst(m_snapshot.playlists)) {
        for (const QByteArray &line : playlist.split('\n')) {
            const QString path = PlayerPaths::fromDevice(QString::fromUtf8(line.left(line.indexOf('^'))));
            if (path.isEmpty())
                ++other;
            else if (!m_snapshot.files.contains(path))
                ++vanished;
            else
                ++(PlayerPaths::folderOf(path).isEmpty() ? root : filed);
        }
    }
    QVERIFY(root >= 5 && filed >= 5 && vanished >= 2 && other >= 2);
    QVERIFY(m_snapshot.playlists.value(text("System/Playlist/Serata.pls")).contains("^"));
    QVERIFY(m_snapshot.playlists.value(text("System/Playlist/Serata.pls")).endsWith("\r\n"));
    QVERIFY(m_snapshot.playlists.contains(text("System/Playlist/Vuota.pls")));
}

void TestPlayerTool::fastDatabaseNamesSongsThatAreThereAndThatAreGone()
{
    int there = 0;
    int gone = 0;
    for (const QByteArray &part : contentOf(m_root + text("System/Corvin/data.fastDB")).split('\0')) {
        const int at = part.indexOf("\\sdmemory\\");
        if (at < 0)
            continue;
        const QString path = PlayerPaths::fromDevice(QString::fromUtf8(part.mid(at)));
        ++(m_snapshot.files.contains(path) ? there : gone);
        QVERIFY(!m_made.manifest.songs.value(path).broken);
    }
    QVERIFY(there > 500);
    QVERIFY(gone > 20);
}

void TestPlayerTool::noiseOfTheFastDatabaseNeverLooksLikeAPath()
{
    const QByteArray bytes = contentOf(m_root + text("System/Corvin/data.fastDB"));
    for (const QByteArray &part : bytes.split('\0')) {
        const int at = part.indexOf('\\');
        QVERIFY(at < 0 || part.mid(at).startsWith("\\sdmemory\\"));
    }
    QVERIFY(!bytes.startsWith('\\'));
}

void TestPlayerTool::everyContentIsThereOnce()
{
    QSet<QByteArray> seen;
    for (auto it = m_snapshot.files.cbegin(); it != m_snapshot.files.cend(); ++it) {
        if (PlayerPaths::isPlayersOwn(it.key()))
            continue;
        QVERIFY2(!seen.contains(it->sha1), qPrintable(it.key()));
        seen.insert(it->sha1);
    }
}

void TestPlayerTool::manifestSaysWhatTheSongReaderReads()
{
    for (auto it = m_made.manifest.songs.cbegin(); it != m_made.manifest.songs.cend(); ++it) {
        if (it->broken)
            continue;
        MetaSong song;
        SongInfo info;
        QVERIFY2(song.importFile(m_root + it.key()), qPrintable(it.key()));
        song.getSongInfo(info);
        QCOMPARE(info.title, it->title);
        QCOMPARE(info.artist, it->artist);
        QCOMPARE(info.genre, it->genre);
        QCOMPARE(info.author, it->author);
        QCOMPARE(info.userBpm, it->bpm);
        QCOMPARE(info.key, it->key);
        QCOMPARE(info.format == text("MP3"), it->isMp3);
        QCOMPARE(!info.markers.isEmpty(), it->hasMarkers);
    }
}

void TestPlayerTool::brokenSongsCannotBeRead()
{
    int broken = 0;
    for (auto it = m_made.manifest.songs.cbegin(); it != m_made.manifest.songs.cend(); ++it) {
        if (!it->broken)
            continue;
        ++broken;
        QVERIFY2(!MetaSong().importFile(m_root + it.key()), qPrintable(it.key()));
    }
    QVERIFY(broken >= 12);
}

void TestPlayerTool::equalSeedsGiveEqualDisks()
{
    MakeOptions options;
    options.songs = kFewestSongs;
    options.seed = 7;
    QTemporaryDir one;
    QTemporaryDir two;
    QTemporaryDir other;
    QCOMPARE(makePlayer(one.path(), options).error, QString());
    QCOMPARE(makePlayer(two.path(), options).error, QString());
    options.seed = 8;
    QCOMPARE(makePlayer(other.path(), options).error, QString());
    const auto hashes = [](const QTemporaryDir &dir) {
        QMap<QString, QByteArray> found;
        const Snapshot snapshot = Snapshot::take(dir.path());
        for (auto it = snapshot.files.cbegin(); it != snapshot.files.cend(); ++it)
            found.insert(it.key(), it->sha1);
        return found;
    };
    QVERIFY(hashes(one) == hashes(two));
    QVERIFY(hashes(one) != hashes(other));
}

void TestPlayerTool::largerArchivesHaveNestedAndFullFolders()
{
    QTemporaryDir dir;
    MakeOptions options;
    options.songs = 5000;
    const MakeResult made = makePlayer(dir.path(), options);
    QCOMPARE(made.error, QString());
    QCOMPARE(made.manifest.songs.size(), 5000);
    const Snapshot snapshot = Snapshot::take(dir.path());
    const Outcome outcome(snapshot, snapshot, made.manifest);
    QVERIFY(outcome.bigFolders().contains(text("My Songs/Karaoke Italia")));
    QVERIFY(outcome.bigFolders().contains(text("My Songs/Karaoke Italia/Duetti")));
    QCOMPARE(Outcome::countedFiles(snapshot, true).value(text("My Songs/Mille")), 1000);
    QVERIFY(!outcome.bigFolders().contains(text("My Songs/Mille")));
}

void TestPlayerTool::foldersInUseAreRefused()
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

void TestPlayerTool::labelAndLostFoundDoNotMatter()
{
    QTemporaryDir dir;
    QVERIFY(QDir(dir.path()).mkdir(text("lost+found")));
    QFile label(dir.filePath(text(".windows-label")));
    QVERIFY(label.open(QIODevice::WriteOnly));
    label.close();
    QVERIFY(mayBecomeAPlayer(dir.path()));
}

void TestPlayerTool::numberOfSongsHasLimits()
{
    QTemporaryDir dir;
    for (const int songs : {kFewestSongs - 1, kMostSongs + 1, 0, -1}) {
        MakeOptions options;
        options.songs = songs;
        QVERIFY(!makePlayer(dir.path(), options).error.isEmpty());
    }
    QVERIFY(mayBecomeAPlayer(dir.path()));
}

void TestPlayerTool::snapshotSurvivesItsFile()
{
    QTemporaryDir dir;
    Snapshot loaded;
    QVERIFY(m_snapshot.save(dir.filePath(text("s"))));
    QVERIFY(Snapshot::load(dir.filePath(text("s")), loaded));
    QCOMPARE(loaded.files.keys(), m_snapshot.files.keys());
    QCOMPARE(loaded.folders, m_snapshot.folders);
    QCOMPARE(loaded.playlists, m_snapshot.playlists);
    for (auto it = loaded.files.cbegin(); it != loaded.files.cend(); ++it) {
        const Snapshot::File original = m_snapshot.files.value(it.key());
        QVERIFY(it->sha1 == original.sha1 && it->size == original.size && it->looksBroken == original.looksBroken);
    }
}

void TestPlayerTool::manifestSurvivesItsFile()
{
    QTemporaryDir dir;
    Manifest loaded;
    QVERIFY(m_made.manifest.save(dir.filePath(text("m"))));
    QVERIFY(Manifest::load(dir.filePath(text("m")), loaded));
    QCOMPARE(loaded.songs.keys(), m_made.manifest.songs.keys());
    for (auto it = loaded.songs.cbegin(); it != loaded.songs.cend(); ++it) {
        const ExpectedSong song = m_made.manifest.songs.value(it.key());
        QVERIFY(it->broken == song.broken && it->title == song.title && it->artist == song.artist &&
                it->genre == song.genre && it->author == song.author && it->bpm == song.bpm && it->key == song.key &&
                it->isMp3 == song.isMp3 && it->hasMarkers == song.hasMarkers && it->filedUnder == song.filedUnder);
    }
}

void TestPlayerTool::spoiledFilesAreNoSnapshotAndNoManifest()
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
    QVERIFY(!m_snapshot.save(dir.filePath(text("no/folder"))));
    QVERIFY(!m_made.manifest.save(dir.filePath(text("no/folder"))));
}

void TestPlayerTool::initialFollowsTheTitle_data()
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

void TestPlayerTool::initialFollowsTheTitle()
{
    QFETCH(QString, title);
    QFETCH(QString, initial);
    QCOMPARE(QString(initialOfTitle(title)), initial);
}

void TestPlayerTool::brokenBytesAreRecognised_data()
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

void TestPlayerTool::brokenBytesAreRecognised()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    QFETCH(bool, broken);
    QCOMPARE(looksLikeABrokenSong(name, bytes), broken);
}

void TestPlayerTool::reportTellsWhatChanged()
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

void TestPlayerTool::programMakesNotesReportsAndJudges()
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

QTEST_GUILESS_MAIN(TestPlayerTool)
#include "tst_playertool.moc"
