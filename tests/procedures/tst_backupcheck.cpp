#include "procedures/backupcheck.h"

#include "support/files.h"
#include "support/simulatedplayer.h"
#include "support/testing.h"

namespace {

/// A player with a song and a playlist, and its whole backup.
struct Saved
{
    Saved()
    {
        for (const QString &file : {"My Songs/a.mid"_s, "System/Playlist/one.pls"_s}) {
            player.addFile(file, "MThd");
            backup.addFile(file, "MThd");
        }
    }
    bool isComplete(bool abort = false) const { return isBackupComplete(backup.path(), player.root(), abort); }

    SimulatedPlayer player;
    PcFolder backup;
};

} // namespace

class TestBackupCheck : public QObject
{
    Q_OBJECT

private slots:
    void wholeBackupIsComplete() { QVERIFY(Saved().isComplete()); }

    void missingFileIsNoticed_data()
    {
        columns<QString>("file");
        row("song", "My Songs/deep/b.mp3"_s);
        row("playlist", "System/Playlist/two"_s);
    }
    void missingFileIsNoticed()
    {
        QFETCH(QString, file);
        Saved saved;
        saved.player.addFile(file);
        QVERIFY(!saved.isComplete());
    }

    void shortSongIsNoticed()
    {
        Saved saved;
        saved.backup.addFile("My Songs/a.mid"_s, "MTh");
        QVERIFY(!saved.isComplete());
    }

    void systemPartsAndNamesWithoutADotAreNotExpected()
    {
        Saved saved;
        saved.player.addSystemFiles();
        for (const QString &file : words("BRIDGES/b.dat effects/e.dat README"))
            saved.player.addFile(file);
        QVERIFY(saved.isComplete());
    }

    void stopEndsTheCheck() { QVERIFY(!Saved().isComplete(true)); }
};

QTEST_GUILESS_MAIN(TestBackupCheck)
#include "tst_backupcheck.moc"
