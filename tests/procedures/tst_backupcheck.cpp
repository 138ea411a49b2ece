#include "procedures/songbackup.h"
#include "procedures/songlist.h"

#include "support/boxtexts.h"
#include "support/files.h"
#include "support/jobrecorder.h"
#include "support/limits.h"
#include "support/simulatedplayer.h"
#include "support/testing.h"

class TestBackupCheck : public QObject
{
    Q_OBJECT

private slots:
    void everySongAndPlaylistIsExpectedInItsSize_data() {
        columns<QStringList, QByteArray, bool, bool>("more", "saved", "abort", "complete");
        const QByteArray whole("MThd");
        row("whole backup", QStringList(), whole, false, true);
        row("missing song", QStringList{"My Songs/deep/b.mp3"_s}, whole, false, false);
        row("missing playlist", QStringList{"System/Playlist/two"_s}, whole, false, false);
        row("short song", QStringList(), QByteArray("MTh"), false, false);
        row("system parts", words("BRIDGES/b.dat effects/.e CorvinUpdate/sub/a autoexec.bat System/x.dat"), whole,
            false, true);
        row("what a PC keeps on every disk", QStringList{"System Volume Information/tracking"_s, "$RECYCLE.BIN/a/b"_s},
            whole, false, true);
        row("name without a dot", words("README"), whole, false, false);
        row("hidden song", QStringList{"My Songs/.b.mid"_s}, whole, false, false);
        row("song in a hidden folder", words(".old/b.mid"), whole, false, false);
        row("song in a folder named like the system's", QStringList{"My Songs/Effects/b.mp3"_s}, whole, false, false);
        row("start script further down", QStringList{"My Songs/autoexec.bat"_s}, whole, false, false);
        row("what a killed copy has left", QStringList{"My Songs/corvin4-copy0.tmp"_s, "corvin4-copy99.tmp"_s}, whole,
            false, true);
        row("name like that", QStringList{"My Songs/corvin4-copy.tmp"_s}, whole, false, false);
        row("song of a name like that", QStringList{"My Songs/corvin4-copy0.tmp.mid"_s}, whole, false, false);
        row("stop", QStringList(), whole, true, false);
    }
    void everySongAndPlaylistIsExpectedInItsSize() {
        QFETCH(QStringList, more);
        QFETCH(QByteArray, saved);
        QFETCH(bool, abort);
        SimulatedPlayer player;
        PcFolder backup;
        player.addSystemFiles();
        player.addFile("My Songs/a.mid"_s, "MThd");
        backup.addFile("My Songs/a.mid"_s, saved);
        player.addFile("System/Playlist/one.pls"_s, "list");
        backup.addFile("System/Playlist/one.pls"_s, "list");
        for (const QString &file : more)
            player.addFile(file);
        QTEST(isBackupComplete(backup.path(), Player(player.root()), [abort] { return !abort; }), "complete");
    }

    void playerWithWhatAKilledCopyHasLeftCanBeSaved() {
        SimulatedPlayer player;
        PcFolder pc;
        player.addFile("My Songs/corvin4-copy0.tmp"_s, "half");
        for (int i = 0; i < 20; ++i)
            player.addFile("My Songs/%1.mid"_s.arg(i));
        JobRecorder view;
        const Player found(player.root());
        QVERIFY(SongBackup(view).saveEverything(found, pc.addFolder("backup"_s)).isDone());
        QVERIFY(isBackupComplete(pc.path("backup"_s), found, [] { return true; }));
    }

    void folderThatCannotBeListedIsNoBackupAndTheOldOneStays() {
#ifdef Q_OS_UNIX
        SimulatedPlayer player;
        PcFolder pc;
        player.addFile("My Songs/a.mid"_s);
        const QString folder = player.addFolder("My Songs/faulty"_s);
        pc.addFile("backup/old.mid"_s);
        QVERIFY(QFile::setPermissions(folder, {}));
        // The way there, and the PC, are another one's too.
        for (const QString &path : {player.root(), player.path("My Songs"_s), pc.path(), pc.path("backup"_s)})
            QVERIFY(QFile::setPermissions(path, QFile::Permissions(0x7777)));
        JobRecorder view;
        view.answers = {{ Titles::kBackupNotEmpty, JobAnswer::Yes }};
        std::optional<NoRoot> nobody(std::in_place);
        const JobEnd end = SongBackup(view).save(Player(player.root()), pc.path("backup"_s));
        nobody.reset();
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QCOMPARE(int(end.kind), int(JobEnd::Failed));
        QCOMPARE(pc.files(), words("backup/old.mid"));
#else
        QSKIP("Every folder can be listed here");
#endif
    }

    void folderOfTheSystemThatCannotBeListedKeepsNoSongFromBeingSaved() {
#ifdef Q_OS_UNIX
        SimulatedPlayer player;
        PcFolder pc;
        player.addFile("a.mid"_s);
        const QString folder = player.addFolder("System/faulty"_s);
        QVERIFY(QFile::setPermissions(folder, {}));
        for (const QString &path : {player.root(), player.path("System"_s), pc.path(), pc.addFolder("backup"_s)})
            QVERIFY(QFile::setPermissions(path, QFile::Permissions(0x7777)));
        JobRecorder view;
        std::optional<NoRoot> nobody(std::in_place);
        const JobEnd end = SongBackup(view).save(Player(player.root()), pc.path("backup"_s));
        nobody.reset();
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QVERIFY(end.isDone());
        QCOMPARE(pc.files(), words("backup/a.mid"));
#else
        QSKIP("Every folder can be listed here");
#endif
    }

    void folderThatCannotBeListedIsNoCompleteBackup() {
#ifdef Q_OS_UNIX
        SimulatedPlayer player;
        const PcFolder backup;
        const QString folder = player.addFolder("My Songs/faulty"_s);
        QVERIFY(isBackupComplete(backup.path(), Player(player.root()), [] { return true; }));
        QVERIFY(QFile::setPermissions(folder, {}));
        // The way there is another one's too.
        QVERIFY(QFile::setPermissions(player.root(), QFile::Permissions(0x7777)));
        QVERIFY(QFile::setPermissions(player.path("My Songs"_s), QFile::Permissions(0x7777)));
        std::optional<NoRoot> nobody(std::in_place);
        const bool complete = isBackupComplete(backup.path(), Player(player.root()), [] { return true; });
        nobody.reset();
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QVERIFY(!complete);
#else
        QSKIP("Every folder can be listed here");
#endif
    }

    void nothingIsCompleteOfAPlayerThatIsGone() {
        SimulatedPlayer player;
        const PcFolder backup;
        const Player found(player.root());
        QVERIFY(isBackupComplete(backup.path(), found, [] { return true; }));
        SimulatedPlayer::disconnect();
        QVERIFY(!isBackupComplete(backup.path(), found, [] { return true; }));
    }
};

QTEST_GUILESS_MAIN(TestBackupCheck)
#include "tst_backupcheck.moc"
