#include "backupfixture.h"

class TestSongBackup : public QObject
{
    Q_OBJECT

private slots:
    void cancelledFolderChoiceEndsSilently_data() {
        columns<QByteArray>("slot");
        row("backup", QByteArray(Slots::kBackUp));
        row("restore", QByteArray(Slots::kRestore));
    }
    void cancelledFolderChoiceEndsSilently() {
        QFETCH(QByteArray, slot);
        Backup b;
        b.fillPlayer();
        const QStringList before = b.player.files();
        b.run(slot.constData(), {}, QString());
        QCOMPARE(b.player.files(), before);
    }

    void backupTakesTheSongsWithADotAndThePlaylists() {
        Backup b;
        b.fillPlayer();
        const QStringList before = b.player.files();
        const LogCapture log;
        b.backUp({Titles::kDone});
        QCOMPARE(entriesBelow(b.backup),
                 (QStringList{"Images"_s, "Images/d.jpg"_s, "My Songs"_s, "My Songs/a.mid"_s, "My Songs/deep"_s,
                              "My Songs/deep/b.mp3"_s, "MyBridges"_s, "MyBridges/c.mid"_s, "System"_s,
                              "System/playlist"_s, "System/playlist/.hidden.pls"_s, "System/playlist/nodot"_s,
                              "System/playlist/one.pls"_s, "root.mid"_s}));
        QCOMPARE(contentOf(b.backup + "/My Songs/deep/b.mp3"_s), QByteArray("on the player"));
        QCOMPARE(b.player.files(), before);
        QCOMPARE(statusTexts(log),
                 (QStringList{Status::kLooking, Status::kLooking, Status::kReading, Status::kBackingUp}));
    }

    void folderWithADotIsAskedAboutAndItsSongsAreSaved() {
        Backup b;
        b.addToPlayer(words("Vol.1/a.mid"));
        // The folder stands in the list before what is in it.
        b.backUp({Titles::kCopyFailed, Titles::kDone});
        QCOMPARE(b.firstBox().text,
                 "Il File\n%1Vol.1\non è stato copiato. Vuoi continuare a copiare?"_s.arg(b.backup + QLatin1Char('/')));
        QCOMPARE(entriesBelow(b.backup), words("Vol.1 Vol.1/a.mid"));
    }

    void playlistsAreFoundWhateverTheirCase() {
        Backup b;
        b.addToPlayer(words("SYSTEM/Playlist/one.pls SYSTEM/GuiProc/GuiProc.exe"));
        b.backUp({Titles::kDone});
        // Where a name is found however it is spelled, nobody asks how the disk spells it.
        const bool ignoresCase = b.player.exists("System/playlist"_s);
        QCOMPARE(entriesBelow(b.backup), ignoresCase ? words("System System/playlist System/playlist/one.pls")
                                                     : words("SYSTEM SYSTEM/Playlist SYSTEM/Playlist/one.pls"));
    }

    void moreThanAThousandFilesAreAskedAbout_data() {
        columns<int, QString>("files", "answer");
        row("exactly a thousand", 1000, QString());
        row("one more, yes", 1001, Buttons::kYes);
        row("one more, no", 1001, Buttons::kNo);
    }
    void moreThanAThousandFilesAreAskedAbout() {
        QFETCH(int, files);
        QFETCH(QString, answer);
        Backup b;
        // Songs and playlists count together.
        b.addToPlayer(numbered(files - 1) + words("System/playlist/nodot"));
        QProgressBar *bar = b.window.bar();
        // Busy while the player was read.
        b.boxes.whenShown([&](const QMessageBox *box) {
            if (box->windowTitle() == Titles::kManyFiles)
                QCOMPARE(bar->format() + QString::number(bar->maximum()), "%v0"_s);
        });
        // One file is enough to see that the copy began, and how many it has before it.
        int toCopy = 0;
        connect(bar, &QProgressBar::valueChanged, this, [&](int value) {
            if (b.window.status() != Status::kBackingUp || value != 1)
                return;
            toCopy = bar->maximum();
            b.window->abortRequested = true;
        });
        QList<Answer> answers = {Titles::kBackupError};
        if (!answer.isEmpty())
            answers.prepend({Titles::kManyFiles, answer});
        b.backUp(answers);
        QCOMPARE(toCopy, answer == Buttons::kNo ? 0 : files);
        QCOMPARE(entriesBelow(b.backup).isEmpty(), answer == Buttons::kNo);
        if (!answer.isEmpty())
            expectLook(b.firstBox(), QMessageBox::Question, "Saranno copiati 1001 files\n\nVuoi continuare ?"_s,
                       {Buttons::kNo, Buttons::kYes});
    }

    void copyCanBeStopped_data() {
        columns<bool, QByteArray, QString, bool, int>("onVolume", "slot", "status", "counting", "copied");
        const QByteArray backup = Slots::kBackUp;
        const QByteArray restore = Slots::kRestore;
        for (const bool real : {false, true}) {
            const auto *where = real ? "real volume" : "folder";
            const auto addRow = [&](const char *name) -> QTestData & { return QTest::addRow("%s, %s", where, name); };
            addRow("backup, while the player is read") << real << backup << Status::kReading << true << 0;
            addRow("backup, while the files are copied") << real << backup << Status::kBackingUp << true << 1;
            // The copy shows its count; the folder choice has no STOP to press.
            addRow("restore, while the backup is listed") << real << restore << Status::kRestoring << false << 0;
            addRow("restore, while the files are copied") << real << restore << Status::kRestoring << true << 1;
        }
    }
    void copyCanBeStopped() {
        QFETCH(bool, onVolume);
        QFETCH(QByteArray, slot);
        QFETCH(QString, status);
        QFETCH(bool, counting);
        QFETCH(int, copied);
        Backup b;
        std::optional<MountedPlayer> volume;
        QString why;
        NEEDS(!onVolume || ExFatVolume::isPossible(&why), qPrintable(why));
        if (onVolume)
            QVERIFY(volume.emplace(16).isMounted());
        const QString player = onVolume ? volume->root() : b.player.root();
        const bool saves = slot == Slots::kBackUp;
        for (const QString &song : numbered(10))
            putFile((saves ? player : b.backup + QLatin1Char('/')) + song);
        const StopPresser stop(b.window, status, [&] {
            return !QApplication::activeModalWidget() && (b.window.bar()->format() == "%v"_s) == counting;
        });
        b.runThrough(slot, {Titles::kStop, Titles::kBackupError});
        QCOMPARE(filesBelow(saves ? b.backup : player).size(), copied);
    }

    void failedBackupTellsSo() {
        Backup b;
        // A folder with a dot and nothing in it: the last of the list cannot be copied as a file.
        b.player.addFolder("Vol.1"_s);
        b.backUp({Titles::kCopyFailed, Titles::kBackupError});
    }

    void restoreCopiesEverythingWithADotBack() {
        Backup b;
        b.addToFolder({"a.mid"_s, "My Songs/deep/b.mid"_s, "System/playlist/one.pls"_s, "bridges/d.mid"_s,
                       "Songs/nodot"_s, "Songs/.hidden.mid"_s});
        b.addToPlayer(words("other.mid"));
        const LogCapture log;
        b.restore({Titles::kDone});
        QCOMPARE(b.player.files(), (QStringList{"My Songs/deep/b.mid"_s, "System/playlist/one.pls"_s, "a.mid"_s,
                                                "bridges/d.mid"_s, "other.mid"_s}));
        QCOMPARE(b.player.content("My Songs/deep/b.mid"_s), QByteArray("saved"));
        QCOMPARE(statusTexts(log), (QStringList{Status::kLooking, Status::kRestoring}));
    }

    void restoreAsksBeforeReplacing() {
        Backup b;
        b.addToFolder(words("a.mid b.mid"));
        b.addToPlayer(words("a.mid b.mid"));
        b.restore({{Titles::kCopyExists, Buttons::kNo}, Titles::kCopyExists, Titles::kDone});
        QVERIFY2(!b.firstBox().text.contains("//"_s), qPrintable(b.firstBox().text));
        const QList<QByteArray> contents = {b.player.content("a.mid"_s), b.player.content("b.mid"_s)};
        QCOMPARE(contents.count("saved"), 1);
        QCOMPARE(contents.count("on the player"), 1);
    }

    void restoreOntoItselfLosesNothing() {
        Backup b;
        b.addToPlayer(words("Songs/a.mid"));
        b.run(Slots::kRestore, {Titles::kDone}, QDir::cleanPath(b.player.root()));
        QCOMPARE(b.player.content("Songs/a.mid"_s), QByteArray("on the player"));
    }

    void failedRestoreHasTheBackupsTexts() {
        Backup b;
        b.addToFolder(words("Songs/a.mid"));
        b.player.addFile("Songs"_s, "a file where a folder should be");
        b.restore({Titles::kError, Titles::kBackupError});
        QVERIFY(!b.window->procedureOk);
    }

    void backupThenRestoreBringsTheSongsBack() {
        Backup b;
        b.fillPlayer();
        b.backUp({Titles::kDone});
        QStringList expected = entriesBelow(b.backup);
        // Another one, new and empty; the first is unplugged before it comes.
        SimulatedPlayer::disconnect();
        const SimulatedPlayer other;
        b.restore({Titles::kDone});
        // Hidden names and those without a dot are saved among the playlists, and not brought back.
        expected.removeOne("System/playlist/.hidden.pls"_s);
        expected.removeOne("System/playlist/nodot"_s);
        QCOMPARE(entriesBelow(other.root()), expected);
    }
};

PAGE_TEST_MAIN(TestSongBackup)
#include "tst_songbackup.moc"
