#include "procedures/songlist.h"

#include "support/files.h"
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
