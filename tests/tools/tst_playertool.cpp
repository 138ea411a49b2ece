#include "playertool/initial.h"
#include "playertool/makeplayer.h"
#include "playertool/outcome.h"
#include "playertool/playerpaths.h"
#include "playertool/snapshot.h"

#include "songfiles/metasong.h"

#include <QDir>
#include <QFile>
#include <QLoggingCategory>
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
    void noTwoNamesDifferInCaseAlone();
    void playlistsNameRootFilesFolderFilesAndVanishedOnes();
    void fastDatabaseNamesSongsThatAreThereAndThatAreGone();
    void noiseOfTheFastDatabaseNeverLooksLikeAPath();
    void everyContentIsThereOnce();
    void manifestSaysWhatTheSongReaderReads();
    void brokenSongsCannotBeRead();
    void equalSeedsGiveEqualDisks();
    void largerArchivesHaveNestedAndFullFolders();

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

void TestPlayerTool::noTwoNamesDifferInCaseAlone()
{
    QSet<QString> seen;
    for (auto it = m_snapshot.files.cbegin(); it != m_snapshot.files.cend(); ++it) {
        QVERIFY2(!seen.contains(it.key().toCaseFolded()), qPrintable(it.key()));
        seen.insert(it.key().toCaseFolded());
    }
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

QTEST_GUILESS_MAIN(TestPlayerTool)
#include "tst_playertool.moc"
