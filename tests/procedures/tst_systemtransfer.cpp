#include "systemfixture.h"

#include "procedures/systemattributes.h"
#include "procedures/systemtransfer.h"
#include "support/jobrecorder.h"

namespace {

const QStringList kNewSystem = words("AUTOEXEC.BAT Bridges/b.dat Effects/e.dat System/Corvin/Corvin.exe");

/// An unpacked system for a player.
struct Replacement : Maintenance
{
    Replacement() {
        for (const QString &file : kNewSystem)
            unpack(file);
    }
    void unpack(const QString &file) const { putFile(pc.downloads(file), "new"); }
    bool run() { return transferSystem(window, player.root(), pc.downloads()); }
    bool isBatchThere() const { return QFile::exists(pc.downloads("MATTRB.BAT"_s)); }
    void addOld(const QStringList &files) {
        for (const QString &file : files)
            player.addFile(file, "old");
    }
};

} // namespace

class TestSystemTransfer : public QObject
{
    Q_OBJECT

private slots:
    void systemPartsAreReplacedAndAllElseStays() {
        const QStringList others = {"CorvinImportDB.sql"_s, "Images/c.jpg"_s,      "My Songs/System/b.mid"_s,
                                    "My Songs/a.mid"_s,     "SystemNotes/n.txt"_s, "d.mp3"_s};
        Replacement transfer;
        transfer.addOld(others + words("System/old.exe System/Playlist/mine.pls Bridges/old.dat Effects/old/e.dat "
                                       "AUTOEXEC.BAT"));
        // No question is asked: what is replaced was removed before.
        QVERIFY(transfer.run());
        QStringList expected = kNewSystem + others;
        expected.sort();
        QCOMPARE(transfer.player.files(), expected);
        QCOMPARE(transfer.player.content("AUTOEXEC.BAT"_s), QByteArray("new"));
        QCOMPARE(transfer.player.content("My Songs/System/b.mid"_s), QByteArray("old"));
    }

    void systemPartsAreFoundWhateverTheirCase() {
        Replacement transfer;
        transfer.addOld(words("SYSTEM/a.exe system/b.exe bRIDGES/old.dat EFFECTS/old.dat autoexec.bat"));
        QVERIFY(transfer.run());
        QCOMPARE(transfer.player.files(), kNewSystem);
        QCOMPARE(transfer.player.folders(), words("Bridges Effects System"));
    }

    void transferOnARealVolume() {
        Replacement transfer;
        MOUNT_PLAYER(player, 16);
        for (const auto *old : {"SYSTEM/a.exe", "bridges/old.dat", "autoexec.bat", "My Songs/a.mid"})
            putFile(player.path(QLatin1String(old)), "old");
        QVERIFY(transferSystem(transfer.window, player.root(), transfer.pc.downloads()));
        QCOMPARE(player.files(), (QStringList{"AUTOEXEC.BAT"_s, "Bridges/b.dat"_s, "Effects/e.dat"_s,
                                              "My Songs/a.mid"_s, "System/Corvin/Corvin.exe"_s}));
        QCOMPARE(contentOf(player.path("AUTOEXEC.BAT"_s)), QByteArray("new"));
    }

    void linksOnThePlayerAreRemovedNotFollowed() {
        SKIP_ON_WINDOWS("links are files of another kind here");
        Replacement transfer;
        const QString home = transfer.pc.path("home"_s);
        putFile(home + "/letter.txt"_s);
        transfer.player.addFile("bridges/old.dat"_s);
        QVERIFY(QFile::link(home, transfer.player.path("effects"_s)));
        QVERIFY(QFile::link(home, transfer.player.path("bridges/link"_s)));
        QVERIFY(transfer.run());
        QCOMPARE(filesBelow(home), words("letter.txt"));
        QVERIFY(!transfer.player.exists("effects"_s));
    }

    void partThatCannotBeRemovedEndsTheTransfer() {
        Replacement transfer;
        // A file where the folder should be.
        transfer.addOld(words("bridges system/a.exe effects/e.dat AUTOEXEC.BAT"));
        QVERIFY(!transfer.run());
        // Removed in their order, up to the one that failed.
        QCOMPARE(transfer.player.files(), words("AUTOEXEC.BAT bridges effects/e.dat"));
        QVERIFY(!transfer.isBatchThere());
    }

    void whatCannotBeWrittenEndsTheTransfer_data() {
        columns<QString, Answer, bool, bool>("unpacked", "box", "goesOn", "flag");
        row("file, before the batch", "Aaa.d/x.txt"_s, Answer(Titles::kCopyFailed, Buttons::kNo), false, false);
        row("folder, told by the flag alone", "Data/x.txt"_s, Answer(Titles::kError), true, false);
        row("batch file", "MATTRB.BAT/x.txt"_s, Answer(Titles::kCopyFailed), false, true);
    }
    void whatCannotBeWrittenEndsTheTransfer() {
        QFETCH(QString, unpacked);
        QFETCH(Answer, box);
        QFETCH(bool, goesOn);
        Replacement transfer;
        transfer.unpack(unpacked);
        transfer.player.addFile("Data"_s, "file in the way");
        announce(transfer.boxes, {box});
        QCOMPARE(transfer.run(), goesOn);
        QTEST(transfer.window->procedureOk, "flag");
        QCOMPARE(QFileInfo(transfer.pc.downloads("MATTRB.BAT"_s)).isFile(), goesOn);
        QCOMPARE(transfer.player.content("Data"_s), QByteArray("file in the way"));
    }

    void stopDuringTheCopyEndsTheTransfer() {
        Replacement transfer;
        // Last of all, were case ignored in the order, the first.
        transfer.unpack("aaa.txt"_s);
        transfer.window->abortRequested = true;
        QVERIFY(!transfer.run());
        // The first file of the sorted list, and no other.
        QCOMPARE(transfer.player.files(), words("AUTOEXEC.BAT"));
        QVERIFY(!transfer.isBatchThere());
    }

    void batchFileHidesSystemAndStartUpFile() {
        QCOMPARE(attributeBatch(Player("E:/"_s)),
                 QByteArray("ATTRIB +H +S E:\\System\nATTRIB +H +S E:\\AUTOEXEC.BAT\n"));
        QCOMPARE(attributeBatch(Player("/media/anna/CORVIN4/"_s)),
                 QByteArray("ATTRIB +H +S \\media\\anna\\CORVIN4\\System\n"
                            "ATTRIB +H +S \\media\\anna\\CORVIN4\\AUTOEXEC.BAT\n"));
    }

    void playerPulledWhileItsOldSystemIsListedHasLostNothing() {
        Replacement transfer;
        MOUNT_PLAYER(player, 16);
        for (const auto *old : {"System/a.exe", "System/b.exe"})
            putFile(player.path(QLatin1String(old)), "old");
        JobRecorder view;
        SystemTransfer job(view, Player(player.root()), transfer.pc.downloads());
        bool pulled = false;
        QTimer::singleShot(0, this, [&] { pulled = player.volume->pull(); });
        QVERIFY(!job.run().isDone());
        QVERIFY(pulled);
        QVERIFY(!job.hasBegun());
    }

    void batchFileIsWrittenIntoTheUnpackedFolder() {
        Replacement transfer;
        QVERIFY(transfer.run());
        QCOMPARE(contentOf(transfer.pc.downloads("MATTRB.BAT"_s)), attributeBatch(Player(transfer.player.root())));
        // Written after the copy: it is none of the player's files.
        QVERIFY(!transfer.player.exists("MATTRB.BAT"_s));
    }

    void volumeWithoutAttributesIsLeftAsItIs() {
        SKIP_ON_WINDOWS("every volume has attributes");
        Replacement transfer;
        transfer.addOld(words("System/a.exe AUTOEXEC.BAT"));
        QVERIFY(runAttributeBatch(transfer.pc.downloads("MATTRB.BAT"_s), Player(transfer.player.root())));
        QCOMPARE(transfer.player.content("AUTOEXEC.BAT"_s), QByteArray("old"));
        // Nothing there to hide is no failure either.
        QVERIFY(runAttributeBatch(QString(), Player(transfer.pc.path("nowhere/"_s))));
    }
};

PAGE_TEST_MAIN(TestSystemTransfer)
#include "tst_systemtransfer.moc"
