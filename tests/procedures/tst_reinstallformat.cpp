#include "formatfixture.h"
#include "support/given.h"

/// A reinstallation that has touched the disk, however it ends.
class TestReinstallFormat : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() {
        QString why;
        NEEDS(PlayerDisk::isPossible(&why), qPrintable("SKIPPED WHOLE: "_s + why));
    }

    void cleanReinstallErasesTheSongs() {
        FormatReinstall r;
        const LogCapture log;
        r.runAgreed(kClean, {Titles::kEraseDrive, Titles::kFinished});
        QCOMPARE(r.firstBox().defaultButton, Buttons::kNo);
        QVERIFY(r.lastBox().informativeText.isEmpty());
        r.expectNewSystem();
        QVERIFY(!r.isOnDisk("My Songs"_s));
        QVERIFY(!r.isOnDisk("System/Playlist"_s));
        QVERIFY(r.isOnDisk("CorvinUpdate/sub/a.exe"_s));
        QCOMPARE(QString::fromUtf8(contentOf(r.record)).split(QLatin1Char('\n'), Qt::SkipEmptyParts),
                 formatArguments(r.disk.root().chopped(1)));
        QCOMPARE(statusTexts(log),
                 (QStringList{Status::kLooking, Status::kDownloading, Status::kUnpacking, Status::kFormatting,
                              Status::kTransferring, Status::kLooking, Status::kDownloading, Status::kCopyingUpdate}));
        QCOMPARE(log.textsStartingWith("FormatCorvinDisk"_s),
                 (QStringList{"FormatCorvinDisk : Inizio"_s, "FormatCorvinDisk : Fine"_s}));
    }

    void restoringReinstallBringsTheSongsBack() {
        FormatReinstall r;
        const LogCapture log;
        r.runAgreed(kRestoring, {Titles::kEraseDrive, Titles::kFinished});
        // The playlists are back, and still nothing is said to be gone without a word of where it is.
        QVERIFY(r.lastBox().informativeText.contains(QDir::toNativeSeparators(r.keptFolder())));
        QCOMPARE(filesBelow(r.keptFolder()), words("System/Playlist/mine.pls"));
        r.expectNewSystem();
        for (int i = 0; i < kManyFiles; ++i)
            QCOMPARE(r.disk.content("My Songs/%1.mid"_s.arg(i)), QByteArray::number(i));
        QCOMPARE(r.disk.content("System/Playlist/mine.pls"_s), QByteArray("old"));
        QVERIFY(r.isOnDisk("CorvinUpdate/sub/a.exe"_s));
        // Nobody asked for the backup to be deleted.
        QCOMPARE(r.savedFiles(), kManyFiles + 1);
        QCOMPARE(statusTexts(log),
                 (QStringList{Status::kLooking, Status::kLooking, Status::kReading, Status::kBackingUp,
                              Status::kDownloading, Status::kUnpacking, Status::kFormatting, Status::kTransferring,
                              Status::kRestoring, Status::kLooking, Status::kDownloading, Status::kCopyingUpdate}));
    }

    void failureAfterTheFormatTellsWhereTheSongsAre_data() {
        columns<QString, Answer, QString, QString>("more", "firstBox", "title", "text");
        const Answer giveUp(Titles::kCopyFailed, Buttons::kNo);
        const Answer told(Titles::kError);
        row("transfer", "Zzz/big.bin"_s, giveUp, Titles::kError, Titles::kError);
        row("folder with a name that exFAT does not know", "bad:name/x.txt"_s, told, Titles::kError,
            Texts::kReinstallAgain);
        row("folder with a file in its way", "Data/x.txt"_s, told, Titles::kError, Texts::kReinstallAgain);
        row("restore", QString(), giveUp, Titles::kRestoreError, Texts::kRestoreError);
    }
    void failureAfterTheFormatTellsWhereTheSongsAre() {
        QFETCH(QString, more);
        QFETCH(Answer, firstBox);
        QFETCH(QString, title);
        const bool isBig = more.endsWith("big.bin"_s);
        if (isBig)
            SKIP_ON_WINDOWS("the drive is as large as the disk of the machine");
        if (more.startsWith("bad"_s))
            SKIP_ON_WINDOWS("no folder of the PC can have that name either");
        FormatReinstall r;
        if (!more.isEmpty())
            r.serve({{more, isBig ? noise(20 * 1024 * 1024) : "x"}});
        if (more.startsWith("bad"_s))
            addUnar(r.programs, "/usr/bin/unar"_s);
        if (more.startsWith("Data"_s))
            r.disk.addFormatCommand(r.programs, r.record, "Data"_s);
        // The last song vanishes from the backup while the system is transferred.
        QTimer spoil;
        connect(&spoil, &QTimer::timeout, this, [&, song = r.backup + "/My Songs/7.mid"_s] {
            if (more.isEmpty() && r.window.status() == Status::kTransferring && QFile::remove(song))
                QDir().mkpath(song);
        });
        spoil.start(1);
        r.runAgreed(kRestoring, {Titles::kEraseDrive, firstBox, title});
        QTEST(r.lastBox().text, "text");
        r.expectBackupIsNamed();
        QVERIFY(QFile::exists(r.record));
        QVERIFY(r.savedFiles() >= kManyFiles);
        // After a transfer that was completed the download is gone, whatever came then.
        QCOMPARE(QFile::exists(r.pc.downloads()), isBig);
    }

    // The question about the drive may stand for hours.
    void whatWasReadyIsLookedAtAgainBeforeTheDiskIsErased_data() {
        columns<QByteArray, QString, QString>("procedure", "gone", "title");
        row("a song of the backup", kRestoring, "backup"_s, Titles::kBackupError);
        row("a file of the new system", kRestoring, "Corvin.exe"_s, Titles::kError);
        row("a file of the new system, songs erased", kClean, "Corvin.exe"_s, Titles::kError);
    }
    void whatWasReadyIsLookedAtAgainBeforeTheDiskIsErased() {
        QFETCH(QString, gone);
        FormatReinstall r;
        r.boxes.whenShown([&](const QMessageBox *box) {
            if (box->windowTitle() == Titles::kEraseDrive)
                QVERIFY(QFile::remove(gone == "backup"_s ? r.backup + "/My Songs/7.mid"_s
                                                         : r.pc.downloads("System/Corvin/Corvin.exe"_s)));
        });
        r.runAgreed(given<QByteArray>("procedure"), {Titles::kEraseDrive, given<QString>("title")});
        r.expectOldDisk();
        QVERIFY(!r.lastBox().informativeText.contains(QDir::toNativeSeparators(r.backup)));
    }

    void playerThatIsGoneBehindTheQuestionIsAFormatThatFailed_data() { addBothProcedures(); }
    void playerThatIsGoneBehindTheQuestionIsAFormatThatFailed() {
        QFETCH(QByteArray, procedure);
        FormatReinstall r;
        r.boxes.whenShown([](const QMessageBox *box) {
            if (box->windowTitle() == Titles::kEraseDrive)
                SimulatedPlayer::disconnect();
        });
        const LogCapture log;
        r.runAgreed(procedure, {Titles::kEraseDrive, Titles::kFormatError});
        QCOMPARE(log.textsStartingWith("FormatCorvinDisk"_s),
                 (QStringList{"FormatCorvinDisk : Inizio"_s, "FormatCorvinDisk : Fine"_s}));
        r.expectOldDisk();
    }

    // As when the disk with the backup is pulled: what is not there is not listed, and nothing fails by itself.
    void backupThatIsGoneAfterTheFormatIsNotCalledRestored_data() {
        columns<QString>("gone");
        row("all of it", QString());
        row("a folder of it", "/My Songs"_s);
    }
    void backupThatIsGoneAfterTheFormatIsNotCalledRestored() {
        QFETCH(QString, gone);
        FormatReinstall r;
        QTimer pull;
        connect(&pull, &QTimer::timeout, this, [&] {
            if (r.window.status() == Status::kTransferring && QDir().rename(r.backup + gone, r.pc.path("elsewhere"_s)))
                pull.stop();
        });
        pull.start(1);
        r.runAgreed(kRestoring, {Titles::kEraseDrive, Titles::kRestoreError});
        QVERIFY(!pull.isActive());
        QCOMPARE(r.lastBox().text, Texts::kRestoreError);
        r.expectBackupIsNamed();
    }

    void failedUpdateTellsWhereTheSongsAre() {
        FormatReinstall r;
        r.server.serveError(kUpdateArchivePath, 404, "short");
        r.runAgreed(kRestoring, {Titles::kEraseDrive, Titles::kDownloadError1, Titles::kFinished});
        r.expectBackupIsNamed();
        r.expectNewSystem();
    }

    void stopAfterTheDiskWasTouchedTellsWhereTheSongsAre_data() {
        columns<QByteArray, QString>("procedure", "step");
        row("system alone, transfer", kAlone, Status::kTransferring);
        row("clean, format", kClean, Status::kFormatting);
        row("clean, transfer", kClean, Status::kTransferring);
        row("restore, format", kRestoring, Status::kFormatting);
        row("restore, transfer", kRestoring, Status::kTransferring);
        row("restore, restore", kRestoring, Status::kRestoring);
    }
    void stopAfterTheDiskWasTouchedTellsWhereTheSongsAre() {
        QFETCH(QByteArray, procedure);
        QFETCH(QString, step);
        FormatReinstall r;
        const bool formats = procedure != kAlone;
        const StopPresser stop(r.window, step, [&] { return formats || r.window.bar()->value() > 5; });
        QList<Answer> answers = {Titles::kStop};
        if (formats)
            answers.prepend(Titles::kEraseDrive);
        answers.append(procedure == kRestoring ? Titles::kRestoreError : Titles::kError);
        r.runAgreed(procedure, answers);
        QCOMPARE(r.server.requests(), QStringList{kSystemArchivePath});
        QVERIFY(!r.isOnDisk("System/old.exe"_s));
        if (!formats)
            QCOMPARE(filesBelow(r.disk.path("My Songs"_s)).size(), kManyFiles);
        if (procedure == kRestoring)
            r.expectBackupIsNamed();
        else
            expectLook(r.lastBox(), QMessageBox::Information, Texts::kReinstallAgain);
        // After a restore that was stopped the system is there.
        QCOMPARE(r.lastBox().informativeText.contains("Provare a reinstallare"_s),
                 procedure == kRestoring && step != Status::kRestoring);
        QCOMPARE(r.savedFiles(), procedure == kRestoring ? kManyFiles + 1 : 0);
    }

    void stopDuringTheUpdateNamesNoBackup_data() { addBothProcedures(); }
    void stopDuringTheUpdateNamesNoBackup() {
        QFETCH(QByteArray, procedure);
        FormatReinstall r;
        r.server.serveStalled(kUpdateArchivePath, noise(40000), 100);
        const StopPresser stop(r.window, Status::kDownloading,
                               [&] { return r.server.requests().contains(kUpdateArchivePath); });
        r.runAgreed(procedure, {Titles::kEraseDrive, Titles::kStop});
        r.expectNewSystem();
        QCOMPARE(filesBelow(r.disk.path("My Songs"_s)).size(), procedure == kRestoring ? kManyFiles : 0);
    }
};

PAGE_TEST_MAIN(TestReinstallFormat)
#include "tst_reinstallformat.moc"
