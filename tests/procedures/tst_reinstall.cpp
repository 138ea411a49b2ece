#include "reinstallfixture.h"

#include "device/player.h"
#include "pages/avanzate.h"

class TestReinstall : public QObject
{
    Q_OBJECT

private slots:
    void systemIsReplacedAndUpdatedAndTheSongsStay() {
        SystemReinstall r;
        const LogCapture log;
        r.run({Titles::kFinished});
        QCOMPARE(r.player.files(),
                 (QStringList{"AUTOEXEC.BAT"_s, "Bridges/b.dat"_s, "CorvinUpdate/.hidden.cfg"_s,
                              "CorvinUpdate/filler.bin"_s, "CorvinUpdate/sub/a.exe"_s, "Effects/e.dat"_s,
                              "My Songs/a.mid"_s, kNewFile, "System/GuiProc/GuiProc.exe"_s, "System/filler.bin"_s}));
        QCOMPARE(r.player.content("AUTOEXEC.BAT"_s), QByteArray("new"));
        QCOMPARE(r.player.content("System/filler.bin"_s), noise(kLeastRelease));
        // The update has no closing box of its own.
        QCOMPARE(r.boxes.seen().size(), 1);
        QVERIFY(r.lastBox().informativeText.isEmpty());
        QVERIFY(!r.isDownloadThere());
        QCOMPARE(statusTexts(log),
                 (QStringList{Status::kLooking, Status::kDownloading, Status::kUnpacking, Status::kTransferring,
                              Status::kLooking, Status::kDownloading, Status::kCopyingUpdate}));
        QCOMPARE(r.server.requests(), (QStringList{kSystemArchivePath, kUpdateArchivePath}));
    }

    void archiveWithAFolderAroundEverythingIsUnderstood() {
        const Entries wrapped = {{"CorvinAll/AUTOEXEC.BAT"_s, "new"},
                                 {"CorvinAll/"_s + kNewFile, "new"},
                                 {"CorvinAll/System/GuiProc/GuiProc.exe"_s, "new"}};
        SystemReinstall r;
        r.server.serve(kSystemArchivePath, zipOf(wrapped, "CorvinAll/System/"_s, kLeastRelease));
        r.run({Titles::kFinished});
        QVERIFY(r.isInstalled());
        QVERIFY(!r.player.exists("CorvinAll"_s));
    }

    void failureLeavesThePlayerAlone_data() {
        columns<QString, QString>("fault", "title");
        row("absent player", "absent"_s, Titles::kDeviceNotFound);
        row("failed download", "download"_s, Titles::kDownloadError1);
        row("missing tool", "tool"_s, Titles::kError);
        row("long error page", "page"_s, Titles::kDownloadError1);
        row("player pulled during the download", "pulled"_s, Titles::kDeviceNotFound);
        row("read-only player", "read-only"_s, Titles::kError);
    }
    void failureLeavesThePlayerAlone() {
        QFETCH(QString, fault);
        QFETCH(QString, title);
        SystemReinstall r;
        std::optional<FolderMount> mount;
        if (fault == "absent"_s)
            SimulatedPlayer::disconnect();
        else if (fault == "download"_s)
            r.server.serveError(kSystemArchivePath, 404, "short");
        else if (fault == "tool"_s)
            r.hideTool();
        else if (fault == "page"_s)
            r.server.serveError(kSystemArchivePath, 404, noise(kLeastRelease));
        else if (fault == "pulled"_s)
            connect(&r.server, &HttpServer::answered, this, [] { SimulatedPlayer::disconnect(); });
        else
            NEEDS(mount.emplace(QDir::cleanPath(r.player.root())).isGood(), "Nothing can be mounted here");
        r.run({title});
        if (title == Titles::kError)
            expectLook(r.lastBox(), QMessageBox::Information, Titles::kError);
        QCOMPARE(r.player.files(), kOldFiles);
        QCOMPARE(r.server.requests(), fault == "absent"_s ? QStringList() : kSystemAlone);
    }

    void halfASystemLeavesThePlayerAlone_data() {
        columns<QString, int, QString>("fault", "number", "title");
        row("cut at 10 percent", "cut"_s, 10, Titles::kDownloadError1);
        row("cut at half", "cut"_s, 50, Titles::kDownloadError1);
        row("cut at 99 percent", "cut"_s, 99, Titles::kDownloadError1);
        row("longer by its length", "length"_s, 101, Titles::kDownloadError1);
        row("shorter by its length", "length"_s, 99, Titles::kError);
        row("length unknown, cut at half", "unknown"_s, 50, Titles::kError);
        row("PC full while unpacking", "full"_s, 0, Titles::kError);
        row("tool that ends with 1", "tool"_s, 1, Titles::kError);
        row("without the main program", "System/Corvin/Corvin.exe"_s, 0, Titles::kError);
        row("without the interface process", "System/GuiProc/GuiProc.exe"_s, 0, Titles::kError);
        row("without the start-up file", "AUTOEXEC.BAT"_s, 0, Titles::kError);
        row("a program of the archive's own", "rival"_s, 0, Titles::kError);
    }
    void halfASystemLeavesThePlayerAlone() {
        QFETCH(QString, fault);
        QFETCH(int, number);
        QFETCH(QString, title);
        Entries entries = {
            {"AUTOEXEC.BAT"_s, "new"}, {kNewFile, noise(600000)}, {"System/GuiProc/GuiProc.exe"_s, "new"}};
        entries.remove(fault);
        if (fault == "rival"_s)
            entries.insert("attrib.Com"_s, "MZ");
        const QByteArray archive = zipOf(entries, "System/"_s, kLeastRelease);
        SystemReinstall r;
        r.serveSpoilt(kSystemArchivePath, archive, fault, number);
        NEEDS(fault != "full"_s || r.fillUpAfter(900), "Nothing can be mounted here");
        r.run({title});
        QCOMPARE(r.player.files(), kOldFiles);
        QVERIFY(r.lastBox().informativeText.isEmpty());
        QVERIFY(!r.server.requests().contains(kUpdateArchivePath));
    }

    void systemInAnyCaseIsWhole() {
        SystemReinstall r;
        r.server.serve(kSystemArchivePath, zipOf({{"autoexec.bat"_s, "new"},
                                                  {"SYSTEM/corvin/CORVIN.EXE"_s, "new"},
                                                  {"SYSTEM/GUIPROC/guiproc.exe"_s, "new"}},
                                                 "SYSTEM/"_s, kLeastRelease));
        r.run({Titles::kFinished});
        QVERIFY(r.player.exists("SYSTEM/corvin/CORVIN.EXE"_s));
    }

    void playlistsOfTheOldSystemAreOnThePcAndComeBackByARestore() {
        SystemReinstall r;
        r.player.addFile("SYSTEM/playlist/sabato.pls"_s, "one");
        r.player.addFile("SYSTEM/playlist/sub/.hidden"_s, "two");
        r.run({Titles::kFinished});
        const QString kept = r.keptFolder();
        QVERIFY(r.lastBox().informativeText.endsWith(QDir::toNativeSeparators(kept)));
        // Where the disk ignores case, the folder has the name that it had before.
        const QString names = filesBelow(kept).join(QLatin1Char(' ')).toLower();
        QCOMPARE(names, "system/playlist/sabato.pls system/playlist/sub/.hidden"_s);
        QVERIFY(!r.player.exists("SYSTEM/playlist"_s));
        r.Maintenance::run(Slots::kRestore, {Titles::kDone}, kept);
        QCOMPARE(contentOf(Player(r.player.root()).path("System/playlist/sabato.pls"_s)), QByteArray("one"));
    }

    void systemStaysWhenItsPlaylistsCannotBeKept() {
        SystemReinstall r;
        r.player.addFile("System/Playlist/sabato.pls"_s, "one");
        putFile(r.data.path("removed"_s), "a file in the way");
        r.run({Titles::kError});
        expectLook(r.lastBox(), QMessageBox::Information, Titles::kError);
        QVERIFY(r.lastBox().informativeText.contains("playlist"_s));
        QVERIFY(r.player.exists("System/old.exe"_s));
        QVERIFY(r.player.exists("System/Playlist/sabato.pls"_s));
    }

    void failedUpdateStillEndsWithAnInstalledSystem() {
        SystemReinstall r;
        r.server.serveError(kUpdateArchivePath, 404, "short");
        QList<bool> working;
        r.boxes.whenShown([&](QMessageBox *) { working.append(!r.window.stop()->isHidden()); });
        r.run({Titles::kDownloadError1, Titles::kFinished});
        // Beside neither box there is anything left to stop.
        QCOMPARE(working, QList<bool>({false, false}));
        QVERIFY(r.isInstalled());
        QVERIFY(!r.isDownloadThere());
    }

    void stopDuringTheUpdateEndsWithoutTheClosingBox_data() {
        columns<QString, QString>("step", "status");
        row("download", Status::kDownloading, Status::kDownloading);
        // The status line has no text of its own for it here.
        row("unpacking", Status::kUnpacking, Status::kDownloading);
        row("copy", Status::kCopyingUpdate, Status::kCopyingUpdate);
    }
    void stopDuringTheUpdateEndsWithoutTheClosingBox() {
        QFETCH(QString, step);
        QFETCH(QString, status);
        SystemReinstall r;
        QList<Answer> answers = {Titles::kStop};
        if (step == Status::kDownloading)
            r.server.serveStalled(kUpdateArchivePath, noise(40000), 100);
        if (step == Status::kCopyingUpdate)
            answers.append(Titles::kDownloadError3);
        connect(&r.server, &HttpServer::answered, this, [&](const QString &path) {
            if (step == Status::kUnpacking && path == kUpdateArchivePath)
                r.useSlowTool();
        });
        const StopPresser stop(r.window, status, [&, bar = r.window.bar()] {
            return r.server.requests().contains(kUpdateArchivePath) &&
                   (step != Status::kUnpacking || bar->maximum() == 0) &&
                   (step != Status::kCopyingUpdate || bar->format() == "%v"_s);
        });
        r.run(answers);
        QVERIFY(r.isInstalled());
        QVERIFY(!r.player.exists("CorvinUpdate"_s));
        QVERIFY(!r.isDownloadThere());
    }

    void wayBackIsClosedForTheWholeTime_data() {
        columns<QString>("lastBox");
        row("well", Titles::kFinished);
        row("failed", Titles::kDownloadError1);
        row("stopped", Titles::kStop);
    }
    void wayBackIsClosedForTheWholeTime() {
        QFETCH(QString, lastBox);
        SystemReinstall r;
        const bool stops = lastBox == Titles::kStop;
        if (lastBox == Titles::kDownloadError1)
            r.server.serve(kSystemArchivePath, "short");
        std::optional<StopPresser> stop;
        if (stops)
            stop.emplace(r.window, Status::kUnpacking);
        auto *page = pageOf<Avanzate>(*r.window.window);
        const auto *back = button(*page, "pushBtnBack");
        page->show();
        int looks = 0;
        const auto look = [back, &looks] {
            ++looks;
            QVERIFY(!back->isEnabled());
        };
        r.boxes.whenShown([look](QMessageBox *) { look(); });
        connect(r.window.bar(), &QProgressBar::valueChanged, this, look);
        connect(&r.server, &HttpServer::answered, this, look);
        r.boxes.answer(lastBox, stops ? Buttons::kSi : Buttons::kOk);
        click(*page, "pushBtnInstall");
        QCOMPARE(r.boxes.seen().size(), 1);
        QVERIFY(looks > 2);
        QVERIFY(back->isEnabled());
    }
};

PAGE_TEST_MAIN(TestReinstall)
#include "tst_reinstall.moc"
