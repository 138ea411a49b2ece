#include "reinstallfixture.h"

/// A reinstallation whose transfer to the player does not come to its end.
class TestReinstallTransfer : public QObject
{
    Q_OBJECT

private slots:
    void playerWithoutItsSystemIsToldAndItsPlaylistsAreNamed_data() {
        columns<QString>("how");
        row("user gives the copy up", "no"_s);
        row("stop", "stop"_s);
        row("closing", "close"_s);
    }
    void playerWithoutItsSystemIsToldAndItsPlaylistsAreNamed() {
        QFETCH(QString, how);
        SystemReinstall r;
        r.serveSystem({{"Zzz.d/x.txt"_s, "x"}});
        r.player.addFile("System/Playlist/sabato.pls"_s, "one");
        const bool givesUp = how == "no"_s;
        std::optional<StopPresser> stop;
        const auto copies = [&] { return r.window.bar()->format() == "%v"_s && r.window.bar()->value() > 1; };
        if (how == "stop"_s)
            stop.emplace(r.window, Status::kTransferring, copies);
        connect(r.window.bar(), &QProgressBar::valueChanged, this, [&] {
            if (how == "close"_s && r.window.status() == Status::kTransferring && copies())
                r.window->closeRequested = true;
        });
        if (givesUp)
            r.run({{Titles::kCopyFailed, Buttons::kNo}, Titles::kError});
        else if (stop)
            r.run({Titles::kStop, Titles::kError});
        else
            r.run({Titles::kError});
        expectLook(r.lastBox(), QMessageBox::Information, givesUp ? Titles::kError : Texts::kReinstallAgain);
        QCOMPARE(r.lastBox().informativeText.contains("Provare a reinstallare il sistema operativo."_s), givesUp);
        QVERIFY(r.lastBox().informativeText.contains(QDir::toNativeSeparators(r.keptFolder())));
        QCOMPARE(filesBelow(r.keptFolder()), words("System/Playlist/sabato.pls"));
    }

    void systemWithoutOneOfItsFilesIsNotCalledInstalled() {
        SystemReinstall r;
        // The file vanishes from the PC, the user goes on without it, and the last one is copied.
        connect(r.window.bar(), &QProgressBar::valueChanged, this, [&](int value) {
            if (r.window.status() == Status::kTransferring && value == 1)
                QFile::remove(r.pc.downloads("Effects/e.dat"_s));
        });
        r.run({Titles::kCopyFailed, Titles::kError});
        expectLook(r.lastBox(), QMessageBox::Critical, Texts::kReinstallAgain);
        QVERIFY(!r.window->procedureOk);
        QCOMPARE(r.server.requests(), kSystemAlone);
    }

    // As a scanner does that finds something in it.
    void systemThatHasLostAFileOnThePcReplacesNone() {
        SystemReinstall r;
        for (const char *list : {"a.pls", "b.pls"})
            r.player.addFile("System/Playlist/"_s + QLatin1String(list), "mine");
        QTimer take;
        connect(&take, &QTimer::timeout, this, [&] {
            if (!filesBelow(r.data.path("removed"_s)).isEmpty() && QFile::remove(r.pc.downloads(kNewFile)))
                take.stop();
        });
        take.start(0);
        r.run({Titles::kError});
        QVERIFY(!take.isActive());
        expectLook(r.lastBox(), QMessageBox::Information, Titles::kError);
        QVERIFY(r.player.exists("System/old.exe"_s));
        QCOMPARE(r.player.content("System/Playlist/a.pls"_s), QByteArray("mine"));
    }

    void systemThatIsIncompleteWhenItIsListedIsNotCalledInstalled() {
        SystemReinstall r;
        QTimer take;
        connect(&take, &QTimer::timeout, this, [&] {
            if (r.window.status() == Status::kTransferring && QFile::remove(r.pc.downloads(kNewFile)))
                take.stop();
        });
        take.start(0);
        r.run({Titles::kError});
        QVERIFY(!take.isActive());
        expectLook(r.lastBox(), QMessageBox::Critical, Texts::kReinstallAgain);
    }

    // The system is on the disk for good by then.
    void stopOfTheUpdateIsNotToldThoughThePlayerIsGone() {
        SystemReinstall r;
        r.server.serveStalled(kUpdateArchivePath, noise(40000), 100);
        const StopPresser stop(r.window, Status::kDownloading, [&] {
            if (!r.server.requests().contains(kUpdateArchivePath))
                return false;
            SimulatedPlayer::disconnect();
            return true;
        });
        r.run({Titles::kStop});
        QVERIFY(r.isInstalled());
    }

    // The PC was switched off after the system had gone.
    void playlistsThatAKilledReinstallationHasKeptAreNamed() {
        SystemReinstall r;
        QVERIFY(QFile::remove(r.player.path("AUTOEXEC.BAT"_s)));
        const QString today = QDateTime::currentDateTime().toString("yyyy-MM-dd "_s);
        const QString kept = r.data.path("removed/"_s + today + "00.00.01"_s);
        putFile(kept + "/System/Playlist/mine.pls"_s, "mine");
        putFile(r.data.path("removed/"_s + today + "00.00.00/System/Playlist/older.pls"_s), "older");
        putFile(r.data.path("removed/"_s + today + "00.00.02/A/notes.txt"_s), "notes");
        r.run({Titles::kFinished});
        QVERIFY2(r.lastBox().informativeText.endsWith(QDir::toNativeSeparators(kept)),
                 qPrintable(r.lastBox().informativeText));
    }

    void playerPulledDuringTheTransferIsNotCalledInstalled() {
        SystemReinstall r;
        MOUNT_PLAYER(player, 16);
        putFile(player.path("My Songs/a.mid"_s), "MThd");
        // The mount point is left, an ordinary folder that takes the rest without an error.
        r.pullAt(player, Status::kTransferring, 2);
        r.run({Titles::kError});
        QVERIFY(r.pulled);
        expectLook(r.lastBox(), QMessageBox::Critical, Texts::kReinstallAgain);
        QCOMPARE(r.server.requests(), kSystemAlone);
        QCOMPARE(entriesBelow(player.root()), QStringList());
        QVERIFY(player.volume->mount());
        QCOMPARE(contentOf(player.path("My Songs/a.mid"_s)), QByteArray("MThd"));
    }

    void failedTransferEndsTheProcedure() {
        SystemReinstall r;
        r.player.addFile("bridges"_s, "a file");
        r.run({Titles::kError});
        QCOMPARE(r.lastBox().text, Titles::kError);
        QCOMPARE(r.server.requests(), kSystemAlone);
        QVERIFY(r.player.exists("My Songs/a.mid"_s));
    }

    void folderThatCannotBeMadeEndsInItsOwnWords() {
        SystemReinstall r;
        r.serveSystem({{"Data/x.txt"_s, "x"}});
        r.player.addFile("Data"_s, "file in the way");
        r.run({Titles::kError, Titles::kError});
        QCOMPARE(r.firstBox().text, Titles::kError);
        expectLook(r.lastBox(), QMessageBox::Critical, Texts::kReinstallAgain);
        // No update then.
        QCOMPARE(r.server.requests(), kSystemAlone);
        QVERIFY(!r.isDownloadThere());
    }
};

PAGE_TEST_MAIN(TestReinstallTransfer)
#include "tst_reinstalltransfer.moc"
