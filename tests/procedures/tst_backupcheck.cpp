#include "procedures/songlist.h"

#include "support/files.h"
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
        row("system parts and names without a dot", words("BRIDGES/b.dat effects/e.dat README"), whole, false, true);
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
};

QTEST_GUILESS_MAIN(TestBackupCheck)
#include "tst_backupcheck.moc"
