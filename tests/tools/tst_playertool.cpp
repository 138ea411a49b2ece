#include "playertool/initial.h"
#include "playertool/makeplayer.h"
#include "playertool/outcome.h"
#include "playertool/playerpaths.h"
#include "playertool/snapshot.h"
#include "songfiles/metasong.h"
#include "support/files.h"
#include "support/testing.h"

using PlayerPaths::Kind;

/// The maker of simulated disks: that everything an optimisation has to cope with is on them.
class TestPlayerTool : public QObject
{
    Q_OBJECT

    PcFolder m_dir;
    MakeResult m_made;
    Snapshot m_snapshot;
    QMap<QString, ExpectedSong> m_readable; ///< the songs that are not broken
    QStringList m_broken;

    /// Those of the paths that @p are says.
    template <typename Are> static QStringList those(const QStringList &paths, Are are) {
        QStringList found;
        std::copy_if(paths.cbegin(), paths.cend(), std::back_inserter(found), are);
        return found;
    }
    static bool isSong(const QString &path) { return PlayerPaths::kindOf(path) == Kind::Song; }
    static bool isCompanion(const QString &path) { return PlayerPaths::kindOf(path) == Kind::Companion; }

    bool isThere(const QString &path) const { return m_snapshot.files.contains(path); }
    QStringList pathsIn(const QString &folder) const {
        return those(m_snapshot.files.keys(),
                     [&](const QString &path) { return PlayerPaths::folderOf(path) == folder; });
    }

    /// What follows the first backslash, with it, in each part of the list of songs.
    QByteArrayList fastDatabase() const {
        QByteArrayList found;
        for (const QByteArray &part : m_dir.content("System/Corvin/data.fastDB"_s).split('\0')) {
            if (part.contains('\\'))
                found.append(part.mid(part.indexOf('\\')));
        }
        return found;
    }

private slots:
    void initTestCase() {
        QLoggingCategory::setFilterRules("default.debug=false"_s);
        m_made = makePlayer(m_dir.path(), MakeOptions());
        QCOMPARE(m_made.error, QString());
        m_snapshot = Snapshot::take(m_dir.path());
        for (auto it = m_made.manifest.songs.cbegin(); it != m_made.manifest.songs.cend(); ++it) {
            if (it->broken)
                m_broken.append(it.key());
            else
                m_readable.insert(it.key(), *it);
        }
    }

    void cleanupTestCase() { QCOMPARE(Snapshot::take(m_dir.path()).files.size(), m_snapshot.files.size()); }

    void diskHasAsManySongsAsAsked() {
        QCOMPARE(m_made.manifest.songs.size(), 1700);
        QCOMPARE(m_made.files, m_snapshot.files.size());
        const QStringList songs = those(m_snapshot.files.keys(), isSong);
        QCOMPARE(those(songs, [](const QString &path) { return !PlayerPaths::isPlayersOwn(path); }).size(), 1700);
    }

    void diskHoldsEveryListedFile() {
        const QString files =
            ".windows-label|AUTOEXEC.BAT|q-artedev|System/Corvin/Corvin.exe|System/GuiProc/GuiProc.exe|"
            "System/Corvin/manuale.txt|System/Corvin/skin/sfondo.png|System/Midi/Avvio.MP3|System/Playlist/Serata.pls|"
            "System/Corvin/data.fastDB|CorvinUpdate/CorvinUpdate.c4|CorvinUpdate/old/leggimi.txt|CorvinImportDB.sql|"
            "Images/cover.jpg|My Songs/Scaricati/cover.jpg|Images/2019/mare.JPG|Videos/saggio.avi|"
            "My Songs/Scaricati/saggio.avi|Videos/Clips/ballo.mp4|My Songs/notes.TXT|My Songs/Scaricati/lettera.doc|"
            "My Songs/Scaricati/senza suffisso|My Songs/.DS_Store|Bridges/elenco.txt|Effects/luci.png|nota.txt|"
            "locandina.png|apertura.mpg|leggimi"_s;
        for (const QString &file : files.split(QLatin1Char('|')))
            QVERIFY2(isThere(file), qPrintable(file));
        QVERIFY(m_dir.content(".windows-label"_s).startsWith("CORVIN4"));
    }

    void diskHoldsSongsOfEverySuffix() {
        for (const QString &suffix : words("mid MID midi MIDI xmid kar mf3 mf4 mf5 MF5 mp3 xmp3")) {
            const auto bearsIt = [&](const QString &path) { return PlayerPaths::suffixOf(path) == suffix; };
            QVERIFY2(!those(m_readable.keys(), bearsIt).isEmpty(), qPrintable(suffix));
        }
    }

    void oneFolderIsTooBigAndHasCompanionsAndSubFolders() {
        const QString big = "My Songs/Karaoke Italia"_s;
        QCOMPARE(Outcome(m_snapshot, m_snapshot, m_made.manifest).bigFolders(), QSet<QString>{big});
        QVERIFY(those(pathsIn(big), isSong).size() > 1000);
        QSet<QString> companions;
        for (const QString &path : those(pathsIn(big), isCompanion))
            companions.insert(PlayerPaths::suffixOf(path));
        QCOMPARE(companions, (QSet<QString>{"bak"_s, "cdg"_s, "dat"_s}));
        for (const QString &folder : {big + "/A0"_s, big + "/Natale è qui"_s, big + ".old"_s})
            QVERIFY2(m_snapshot.folders.contains(folder), qPrintable(folder));
        QVERIFY(isThere(big + "/Alba presa.mid"_s));
        QVERIFY(isThere(big + "/A0/Alba presa.mid"_s));
    }

    void titlesOfTheBigFolderBeginInEveryWay() {
        QMap<QChar, int> filed;
        QSet<QChar> first;
        for (const QString &path : those(pathsIn("My Songs/Karaoke Italia"_s), isSong)) {
            if (!m_readable.contains(path))
                continue;
            const QString title = m_readable.value(path).filedUnder.first();
            first.insert(title.at(0));
            ++filed[initialOfTitle(title)];
        }
        for (const QChar c : "ABCDEFGHIJKLMNOPQRSTUVWXYZ#079ΩЖ日"_s)
            QVERIFY2(filed.contains(c), qPrintable(QString(c)));
        for (const QChar c : "'(\"!@&-àÈ…“½"_s)
            QVERIFY2(first.contains(c), qPrintable(QString(c)));
        QVERIFY2(filed.value(QLatin1Char('S')) > 500, "one initial has to outgrow a sub-folder, companions included");
    }

    void looseSongsAreInTheRootSomeUnderTakenNames() {
        const QStringList loose = those(pathsIn(QString()), isSong);
        QVERIFY(loose.size() >= 5);
        QVERIFY(those(loose, [this](const QString &path) { return isThere("My Songs/"_s + path); }).size() >= 2);
    }

    void overlongNamesHaveCompanions() {
        const auto isOverlongWithCompanion = [this](const QString &path) {
            const QString stem = PlayerPaths::join(PlayerPaths::folderOf(path), PlayerPaths::stemOf(path));
            return PlayerPaths::nameOf(path).toUtf8().size() >= 120 && isThere(stem + ".cdg"_s);
        };
        QVERIFY(those(m_made.manifest.songs.keys(), isOverlongWithCompanion).size() >= 3);
    }

    void namesHaveAccentsQuotesAndApostrophes() {
        const QString all = QStringList(m_made.manifest.songs.keys()).join(QLatin1Char('\n'));
        for (const QChar c : "'è“Ç"_s)
            QVERIFY2(all.contains(c), qPrintable(QString(c)));
        for (const QChar c : "\\:*?\"<>|"_s)
            QVERIFY2(!all.contains(c), "the player's disk takes no such name");
    }

    void noTwoNamesDifferInCaseAlone() {
        QSet<QString> seen;
        for (const QString &path : m_snapshot.files.keys()) {
            QVERIFY2(!seen.contains(path.toCaseFolded()), qPrintable(path));
            seen.insert(path.toCaseFolded());
        }
    }

    void playlistsNameRootFilesFolderFilesAndVanishedOnes() {
        int root = 0;
        int filed = 0;
        int vanished = 0;
        int other = 0;
        for (const QByteArray &line : m_snapshot.playlists.values().join('\n').split('\n')) {
            const QString path = PlayerPaths::fromDevice(QString::fromUtf8(line.left(line.indexOf('^'))));
            if (path.isEmpty())
                ++other;
            else if (!isThere(path))
                ++vanished;
            else
                ++(PlayerPaths::folderOf(path).isEmpty() ? root : filed);
        }
        QVERIFY(root >= 5 && filed >= 5 && vanished >= 2 && other >= 2);
        const QByteArray evening = m_snapshot.playlists.value("System/Playlist/Serata.pls"_s);
        QVERIFY(evening.contains("^") && evening.endsWith("\r\n"));
        QVERIFY(m_snapshot.playlists.contains("System/Playlist/Vuota.pls"_s));
    }

    void fastDatabaseNamesSongsThatAreThereAndThatAreGoneAndItsNoiseIsNoPath() {
        QVERIFY(!m_dir.content("System/Corvin/data.fastDB"_s).startsWith('\\'));
        int there = 0;
        int gone = 0;
        for (const QByteArray &devicePath : fastDatabase()) {
            QVERIFY2(devicePath.startsWith("\\sdmemory\\"), devicePath.constData());
            const QString path = PlayerPaths::fromDevice(QString::fromUtf8(devicePath));
            ++(isThere(path) ? there : gone);
            QVERIFY(!m_broken.contains(path));
        }
        QVERIFY(there > 500);
        QVERIFY(gone > 20);
    }

    void everyContentIsThereOnce() {
        QSet<QByteArray> seen;
        for (auto it = m_snapshot.files.cbegin(); it != m_snapshot.files.cend(); ++it) {
            if (PlayerPaths::isPlayersOwn(it.key()))
                continue;
            QVERIFY2(!seen.contains(it->sha1), qPrintable(it.key()));
            seen.insert(it->sha1);
        }
    }

    void manifestSaysWhatTheSongReaderReads() {
        for (auto it = m_readable.cbegin(); it != m_readable.cend(); ++it) {
            MetaSong song;
            SongInfo info;
            QVERIFY2(song.importFile(m_dir.path(it.key())), qPrintable(it.key()));
            song.getSongInfo(info);
            QCOMPARE(QStringList({info.title, info.artist, info.genre, info.author, info.key}),
                     QStringList({it->title, it->artist, it->genre, it->author, it->key}));
            QCOMPARE(info.userBpm, it->bpm);
            QCOMPARE(info.format == "MP3"_s, it->isMp3);
            QCOMPARE(!info.markers.isEmpty(), it->hasMarkers);
        }
    }

    void brokenSongsCannotBeRead() {
        QVERIFY(m_broken.size() >= 12);
        for (const QString &path : qAsConst(m_broken))
            QVERIFY2(!MetaSong().importFile(m_dir.path(path)), qPrintable(path));
    }

    void equalSeedsGiveEqualDisks() {
        const auto disk = [](quint32 seed) {
            const PcFolder dir;
            const QString error = makePlayer(dir.path(), {kFewestSongs, seed}).error;
            if (!error.isEmpty())
                failTest(error);
            return qMakePair(contentBelow(dir.path()), dir.content(".windows-label"_s));
        };
        const auto one = disk(7);
        QVERIFY(one == disk(7));
        QVERIFY(one.first != disk(8).first);
    }

    void largerArchivesHaveNestedAndFullFolders() {
        const PcFolder dir;
        const MakeResult made = makePlayer(dir.path(), {5000, 1});
        QCOMPARE(made.error, QString());
        QCOMPARE(made.manifest.songs.size(), 5000);
        const Snapshot snapshot = Snapshot::take(dir.path());
        const QSet<QString> big = Outcome(snapshot, snapshot, made.manifest).bigFolders();
        QVERIFY(big.contains("My Songs/Karaoke Italia"_s));
        QVERIFY(big.contains("My Songs/Karaoke Italia/Duetti"_s));
        QCOMPARE(Outcome::countedFiles(snapshot, true).value("My Songs/Mille"_s), 1000);
        QVERIFY(!big.contains("My Songs/Mille"_s));
    }
};

QTEST_GUILESS_MAIN(TestPlayerTool)
#include "tst_playertool.moc"
