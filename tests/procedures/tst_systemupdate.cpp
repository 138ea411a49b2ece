#include "systemfixture.h"

namespace {

const QStringList kUpdated = {"CorvinUpdate/.hidden.cfg"_s, "CorvinUpdate/filler.bin"_s, "CorvinUpdate/sub/a.exe"_s,
                              "My Songs/a.mid"_s};

/// The update of a player with an old one on it.
struct Update : Maintenance
{
    Update() {
        player.addFile(kOld, "old");
        player.addFile("My Songs/a.mid"_s, "MThd");
    }
    void removeOld() const { QVERIFY(QDir(player.path("CorvinUpdate"_s)).removeRecursively()); }
    bool isOldThere() const { return player.exists(kOld); }
    bool isDownloadThere() const { return QFile::exists(pc.downloads()); }

    bool pcLost = false;
    const QString kOld = "CorvinUpdate/old/old.exe"_s;
};

} // namespace

class TestSystemUpdate : public QObject
{
    Q_OBJECT

private slots:
    void updateReachesThePlayerWhateverStopSaidBefore() {
        Update update;
        update.boxes.whenShown([&](QMessageBox *) {
            QCOMPARE(update.player.files(), kUpdated);
            QVERIFY(update.window.status().isEmpty());
        });
        update.window->abortRequested = true;
        const LogCapture log;
        update.run(Slots::kUpdate, {Titles::kFinished});
        QCOMPARE(statusTexts(log), (QStringList{Status::kLooking, Status::kDownloading, Status::kCopyingUpdate}));
        QCOMPARE(update.player.content("CorvinUpdate/sub/a.exe"_s), QByteArray("new a"));
        QCOMPARE(update.player.content("CorvinUpdate/filler.bin"_s), noise(kLeastRelease));
        QVERIFY(!update.isDownloadThere());
    }

    void updateOnARealVolume() {
        Update update;
        MOUNT_PLAYER(player, 16);
        putFile(player.path("corvinupdate/old.exe"_s), "old");
        putFile(player.path("My Songs/a.mid"_s), "MThd");
        update.run(Slots::kUpdate, {Titles::kFinished});
        QCOMPARE(player.files(), kUpdated);
        // What was flushed is there even when the cable is pulled now.
        QVERIFY(player.volume->pull());
        QVERIFY(player.volume->mount());
        QCOMPARE(contentOf(player.path("CorvinUpdate/filler.bin"_s)), noise(kLeastRelease));
    }

    void failureBeforeTheCopyHasItsCode_data() {
        columns<QString, QByteArray, QString>("fault", "content", "title");
        row("not on the server", "404"_s, QByteArray("short"), Titles::kDownloadError1);
        row("9999 bytes", QString(), noise(kLeastRelease - 1), Titles::kDownloadError1);
        row("long error page", "404"_s, noise(kLeastRelease), Titles::kDownloadError1);
        row("no tool", "tool"_s, noise(kLeastRelease), Titles::kDownloadError2);
        row("no archive", QString(), noise(kLeastRelease), Titles::kDownloadError2);
        row("another archive", QString(), zipOf({}, "Other/"_s, kLeastRelease), Titles::kDownloadError2);
        row("only folders", QString(), zipOf({{"CorvinUpdate/"_s, ""}}, {}, kLeastRelease), Titles::kDownloadError2);
    }
    void failureBeforeTheCopyHasItsCode() {
        QFETCH(QString, fault);
        QFETCH(QByteArray, content);
        QFETCH(QString, title);
        Update update;
        update.server.serveError(kUpdateArchivePath, fault == "404"_s ? 404 : 200, content);
        if (fault == "tool"_s)
            update.hideTool();
        update.run(Slots::kUpdate, {title});
        QCOMPARE(update.player.files(), (QStringList{update.kOld, "My Songs/a.mid"_s}));
        // Left as it is: there was nothing to copy yet.
        QVERIFY(update.isDownloadThere());
    }

    void oldUpdateStaysWhenTheNewOneDidNotComeWhole_data() {
        columns<QString, int, QString>("fault", "number", "title");
        row("cut at 10 percent", "cut"_s, 10, Titles::kDownloadError1);
        row("cut at half", "cut"_s, 50, Titles::kDownloadError1);
        row("cut at 99 percent", "cut"_s, 99, Titles::kDownloadError1);
        row("longer by its length", "length"_s, 101, Titles::kDownloadError1);
        row("shorter by its length", "length"_s, 99, Titles::kDownloadError2);
        row("length unknown, cut at 99 percent", "unknown"_s, 99, Titles::kDownloadError2);
        row("tool that ends with 1", "tool"_s, 1, Titles::kDownloadError2);
        row("PC full while unpacking", "full"_s, 0, Titles::kDownloadError2);
        row("a program of the archive's own", "rival"_s, 0, Titles::kDownloadError2);
    }
    void oldUpdateStaysWhenTheNewOneDidNotComeWhole() {
        QFETCH(QString, fault);
        QFETCH(int, number);
        QFETCH(QString, title);
        Entries entries = {{"CorvinUpdate/z.dat"_s, noise(600000)}};
        if (fault == "rival"_s)
            entries.insert("Attrib.EXE"_s, "MZ");
        const QByteArray archive = zipOf(entries, "CorvinUpdate/"_s, kLeastRelease);
        Update update;
        update.serveSpoilt(kUpdateArchivePath, archive, fault, number);
        NEEDS(fault != "full"_s || update.fillUpAfter(900), "Nothing can be mounted here");
        update.run(Slots::kUpdate, {title});
        QCOMPARE(update.player.files(), (QStringList{update.kOld, "My Songs/a.mid"_s}));
    }

    void updateWithoutOneOfItsFilesIsNotDelivered() {
        Update update;
        update.serveUpdate({{"CorvinUpdate/a.exe"_s, "a"}, {"CorvinUpdate/z.exe"_s, "z"}});
        // A file vanishes from the PC, the user goes on without it, and the last one is copied: the copy has gone well.
        update.boxes.whenShown([&](const QMessageBox *box) {
            if (box->windowTitle() == Titles::kCopyFailed)
                QVERIFY(update.pcLost);
        });
        connect(update.window.bar(), &QProgressBar::valueChanged, this, [&](int value) {
            if (update.window.status() == Status::kCopyingUpdate && value == 1)
                update.pcLost = QFile::remove(update.pc.downloads("CorvinUpdate/filler.bin"_s));
        });
        update.run(Slots::kUpdate, {Titles::kCopyFailed, Titles::kDownloadError3});
        QCOMPARE(update.player.files(), QStringList{"My Songs/a.mid"_s});
    }

    void staleHalfOfAKilledRunIsCleared() {
        Update update;
        update.player.addFile(".CorvinUpdate.tmp/half.exe"_s, "half");
        update.run(Slots::kUpdate, {Titles::kFinished});
        QCOMPARE(update.player.files(), kUpdated);
        QVERIFY(!update.player.exists(".CorvinUpdate.tmp"_s));
    }

    void updateGetsItsNameWhenAllOfItIsThere() {
        Update update;
        Entries entries;
        for (int i = 0; i < 50; ++i)
            entries.insert("CorvinUpdate/%1.dat"_s.arg(i), noise(2000));
        update.serveUpdate(entries);
        int looks = 0;
        connect(update.window.bar(), &QProgressBar::valueChanged, this, [&] {
            if (update.window.status() != Status::kCopyingUpdate || update.window.bar()->format() != "%v"_s)
                return;
            ++looks;
            QVERIFY(!update.player.exists("CorvinUpdate"_s));
        });
        update.run(Slots::kUpdate, {Titles::kFinished});
        QVERIFY(looks > 50);
        QCOMPARE(update.player.files("CorvinUpdate"_s).size(), 51);
    }

    void filesAreCopiedInTheOrderOfTheirBytes() {
        Update update;
        update.serveUpdate({{"CorvinUpdate/b.exe"_s, "b"}, {"CorvinUpdate/Z.exe"_s, "z"}});
        QStringList first;
        connect(update.window.bar(), &QProgressBar::valueChanged, this, [&](int value) {
            if (update.window.status() == Status::kCopyingUpdate && value == 1)
                first = update.player.files(".CorvinUpdate.tmp"_s);
        });
        update.run(Slots::kUpdate, {Titles::kFinished});
        QCOMPARE(first, QStringList{".CorvinUpdate.tmp/Z.exe"_s});
    }

    void folderOfThePcUnderThePathOfAPulledPlayerStays() {
        Update update;
        // What is found under the player's path once it is gone is the PC's own.
        connect(&update.server, &HttpServer::answered, this, [] { SimulatedPlayer::disconnect(); });
        update.run(Slots::kUpdate, {Titles::kDownloadError3});
        update.player.connect();
        QCOMPARE(update.player.files(), (QStringList{update.kOld, "My Songs/a.mid"_s}));
    }

    void playerThatCannotTakeItIsCodeThree_data() {
        columns<bool, bool>("readOnly", "oldUpdate");
        row("a file in the place of the old update", false, false);
        row("an old update cannot be removed", true, true);
        row("a folder cannot be made", true, false);
    }
    void playerThatCannotTakeItIsCodeThree() {
        QFETCH(bool, readOnly);
        QFETCH(bool, oldUpdate);
        Update update;
        if (!oldUpdate)
            update.removeOld();
        if (!readOnly)
            update.player.addFile("CorvinUpdate"_s, "a file");
        std::optional<FolderMount> mount;
        if (readOnly)
            NEEDS(mount.emplace(QDir::cleanPath(update.player.root())).isGood(), "Nothing can be mounted here");
        update.run(Slots::kUpdate, {Titles::kError, Titles::kDownloadError3});
        expectLook(update.firstBox(), QMessageBox::Information, Titles::kError);
        QCOMPARE(update.isOldThere(), oldUpdate);
        QVERIFY(!update.isDownloadThere());
    }

    void refusedCopyErrorIsCodeThree() {
        Update update;
        // A sub-folder whose name has a dot is listed like a file, and cannot be copied as one.
        update.serveUpdate({{"CorvinUpdate/aaa.exe"_s, "a"}, {"CorvinUpdate/v1.0/b.exe"_s, "b"}});
        update.run(Slots::kUpdate, {{Titles::kCopyFailed, Buttons::kNo}, Titles::kDownloadError3});
        QVERIFY(update.firstBox().text.contains(update.player.path(".CorvinUpdate.tmp/v1.0"_s)));
        QCOMPARE(update.player.files(), QStringList{"My Songs/a.mid"_s});
        QVERIFY(!update.player.exists("CorvinUpdate"_s));
        QVERIFY(!update.isDownloadThere());
    }

    void fullPlayerIsCodeThree() {
        Update update;
        MOUNT_PLAYER(player, 4);
        update.serveUpdate({{"CorvinUpdate/a.exe"_s, "a"}, {"CorvinUpdate/z.exe"_s, noise(6000000)}});
        update.run(Slots::kUpdate, {{Titles::kCopyFailed, Buttons::kNo}, Titles::kDownloadError3});
        QCOMPARE(player.files(), QStringList());
        QCOMPARE(entriesBelow(player.root()), QStringList());
    }

    void pulledPlayerIsCodeThreeAndNothingLandsOnThePc() {
        Update update;
        connect(&update.server, &HttpServer::answered, this, [] { SimulatedPlayer::disconnect(); });
        update.run(Slots::kUpdate, {Titles::kDownloadError3});
        QVERIFY(!update.player.exists("CorvinUpdate/sub/a.exe"_s));
    }

    void playerPulledDuringTheCopyIsCodeThree() {
        Update update;
        MOUNT_PLAYER(player, 16);
        update.serveUpdate(
            {{"CorvinUpdate/a.exe"_s, "a"}, {"CorvinUpdate/b.exe"_s, "b"}, {"CorvinUpdate/c.exe"_s, "c"}});
        // The mount point is left, an ordinary folder that takes the rest without an error.
        update.pullAt(player, Status::kCopyingUpdate, 1);
        update.run(Slots::kUpdate, {Titles::kDownloadError3});
        QVERIFY(update.pulled);
        QCOMPARE(entriesBelow(player.root()), QStringList());
    }

    void oldUpdateIsFoundWhateverItsCase() {
        Update update;
        update.removeOld();
        update.player.addFile("CORVINUPDATE/old.exe"_s, "old");
        update.run(Slots::kUpdate, {Titles::kFinished});
        QCOMPARE(update.player.folders(), (QStringList{"CorvinUpdate"_s, "My Songs"_s}));
        QVERIFY(update.player.exists("CorvinUpdate/sub/a.exe"_s));
    }

    void onlyNamesWithADotAreCopied() {
        Update update;
        update.serveUpdate({{"CorvinUpdate/README"_s, "no"},
                            {"CorvinUpdate/plain/deep/b.txt"_s, "yes"},
                            {"CorvinUpdate/v1.0/c.txt"_s, "yes"}});
        update.run(Slots::kUpdate, {Titles::kCopyFailed, Titles::kFinished});
        QCOMPARE(update.player.files("CorvinUpdate"_s),
                 words("CorvinUpdate/filler.bin CorvinUpdate/plain/deep/b.txt CorvinUpdate/v1.0/c.txt"));
    }

    void stopBeforeTheCopyIsSilent_data() {
        columns<bool>("unpacking");
        row("in the download", false);
        row("in the unpacking", true);
    }
    void stopBeforeTheCopyIsSilent() {
        QFETCH(bool, unpacking);
        Update update;
        // Enough has come to count as a release, and still nothing more happens.
        if (unpacking)
            update.useSlowTool();
        else
            update.server.serveStalled(kUpdateArchivePath, noise(40000), 20000);
        const StopPresser stop(update.window, Status::kDownloading, [&, bar = update.window.bar()] {
            return unpacking ? bar->maximum() == 0 : bar->value() == 50;
        });
        update.run(Slots::kUpdate, {Titles::kStop});
        QVERIFY(update.isOldThere());
    }

    void stopInTheCopyIsCodeThreeAndLeavesNothing() {
        Entries entries;
        for (int i = 0; i < 400; ++i)
            entries.insert("CorvinUpdate/%1.dat"_s.arg(i), noise(2000));
        Update update;
        update.serveUpdate(entries);
        const StopPresser stop(update.window, Status::kCopyingUpdate, [&] { return update.window.bar()->value() > 0; });
        update.run(Slots::kUpdate, {Titles::kStop, Titles::kDownloadError3});
        QVERIFY(!update.player.exists("CorvinUpdate"_s));
        QVERIFY(!update.isDownloadThere());
        QVERIFY(update.player.exists("My Songs/a.mid"_s));
    }
};

PAGE_TEST_MAIN(TestSystemUpdate)
#include "tst_systemupdate.moc"
