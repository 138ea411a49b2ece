#include "playerdisk.h"
#include "systemfixture.h"

namespace {

constexpr int kManyFiles = 60; ///< songs, and as many files of the system
const QByteArray kClean = Slots::kReinstallClean;
const QByteArray kRestoring = Slots::kReinstallRestoring;

/// The two procedures with format, of a player with an old system and songs on a disk of its own, with a format command
/// for that disk.
struct FormatReinstall : Maintenance
{
    FormatReinstall() : record(pc.path("format.txt"_s))
    {
        serve();
        for (const QString &file : words("AUTOEXEC.BAT System/old.exe System/Playlist/mine.pls"))
            putFile(disk.path(file), "old");
        for (int i = 0; i < kManyFiles; ++i)
            putFile(disk.path("My Songs/%1.mid"_s.arg(i)), QByteArray::number(i));
        disk.addFormatCommand(programs, record);
    }
    /// Serves the system with many files, and what else is given.
    void serve(Entries more = {})
    {
        for (int i = 0; i < kManyFiles; ++i)
            more.insert("System/many/%1.dat"_s.arg(i), "x");
        serveSystem(more);
    }
    /// Runs one of the two: with these boxes after its first question, which is agreed to, and with the backup folder that
    /// it asks for.
    void runAgreed(const QByteArray &procedure, const QList<Answer> &answers)
    {
        if (procedure == kClean)
            run(kClean.constData(), QList<Answer>{Titles::kErase} + answers);
        else
            run(kRestoring.constData(), answers, backup);
    }
    void expectOldDisk() const
    {
        QVERIFY(!QFile::exists(record));
        QCOMPARE(disk.content("AUTOEXEC.BAT"_s), QByteArray("old"));
        QCOMPARE(disk.content("System/old.exe"_s), QByteArray("old"));
        QCOMPARE(disk.files().size(), kManyFiles + 3);
    }
    /// The disk was formatted and has the new system, and nothing is left behind on the PC.
    void expectNewSystem() const
    {
        QCOMPARE(disk.content("AUTOEXEC.BAT"_s), QByteArray("new"));
        QCOMPARE(disk.content("System/Corvin/Corvin.exe"_s), QByteArray("new"));
        QVERIFY(!isOnDisk("System/old.exe"_s));
        QCOMPARE(filesBelow(disk.path("System/many"_s)).size(), kManyFiles);
        QVERIFY(!QFile::exists(pc.downloads()));
    }
    void expectBackupIsNamed() const
    {
        QVERIFY2(lastBox().informativeText.contains(QDir::toNativeSeparators(backup)),
                 qPrintable(lastBox().informativeText));
    }
    int savedFiles() const { return filesBelow(backup).size(); }
    bool isOnDisk(const QString &relative) const { return QFile::exists(disk.path(relative)); }

    PlayerDisk disk;
    const QString record; ///< what the format command was given
};

void addBothProcedures()
{
    columns<QByteArray>("procedure");
    row("clean", kClean);
    row("restore", kRestoring);
}

} // namespace

class TestReinstallFormat : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QString why;
        NEEDS(PlayerDisk::isPossible(&why), qPrintable("SKIPPED WHOLE: "_s + why));
    }

    void cleanReinstallErasesTheSongs()
    {
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

    void restoringReinstallBringsTheSongsBack()
    {
        FormatReinstall r;
        const LogCapture log;
        r.runAgreed(kRestoring, {Titles::kEraseDrive, Titles::kFinished});
        QVERIFY(r.lastBox().informativeText.isEmpty());
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

    void userWhoSaysNoKeepsTheDisk_data()
    {
        columns<QByteArray, QString>("procedure", "refused");
        row("clean, first question", kClean, Titles::kErase);
        row("clean, drive question", kClean, Titles::kEraseDrive);
        row("restore, no folder", kRestoring, QString());
        row("restore, drive question", kRestoring, Titles::kEraseDrive);
    }
    void userWhoSaysNoKeepsTheDisk()
    {
        QFETCH(QByteArray, procedure);
        QFETCH(QString, refused);
        FormatReinstall r;
        // No box comes after the refused one.
        if (refused == Titles::kErase)
            r.run(kClean.constData(), {{Titles::kErase, Buttons::kNo}});
        else if (refused.isEmpty())
            r.run(kRestoring.constData(), {}, QString());
        else
            r.runAgreed(procedure, {{Titles::kEraseDrive, Buttons::kNo}});
        r.expectOldDisk();
    }

    void failureBeforeTheFormatKeepsTheDisk_data()
    {
        columns<QByteArray, QString, QString>("procedure", "failing", "title");
        for (const QByteArray &procedure : {kClean, kRestoring}) {
            row((procedure + ", not on the server").constData(), procedure, "download"_s, Titles::kDownloadError1);
            row((procedure + ", no tool").constData(), procedure, "tool"_s, Titles::kError);
            row((procedure + ", long error page").constData(), procedure, "page"_s, Titles::kError);
            row((procedure + ", player pulled").constData(), procedure, "pulled"_s, Titles::kDeviceNotFound);
        }
    }
    void failureBeforeTheFormatKeepsTheDisk()
    {
        QFETCH(QByteArray, procedure);
        QFETCH(QString, failing);
        QFETCH(QString, title);
        FormatReinstall r;
        if (failing == "download"_s)
            r.server.serveError(kSystemArchivePath, 404, "short");
        else if (failing == "page"_s)
            r.server.serveError(kSystemArchivePath, 404, noise(kLeastRelease));
        else if (failing == "pulled"_s)
            connect(&r.server, &HttpServer::answered, this, [] { SimulatedPlayer::disconnect(); });
        else
            r.hideTool();
        r.runAgreed(procedure, {title});
        r.expectOldDisk();
        QCOMPARE(r.savedFiles(), procedure == kRestoring ? kManyFiles + 1 : 0);
    }

    void unreadySystemKeepsTheDisk_data()
    {
        columns<QByteArray>("archive");
        row("only names that are not copied", zipOf({{"README"_s, noise(kLeastRelease)}}));
        row("only folders", zipOf({{"System/"_s, ""}, {"big"_s, noise(kLeastRelease)}}));
    }
    void unreadySystemKeepsTheDisk()
    {
        QFETCH(QByteArray, archive);
        FormatReinstall r;
        r.server.serve(kSystemArchivePath, archive);
        r.runAgreed(kClean, {Titles::kError});
        r.expectOldDisk();
    }

    void missingFormatCommandKeepsTheDisk_data() { addBothProcedures(); }
    void missingFormatCommandKeepsTheDisk()
    {
        QFETCH(QByteArray, procedure);
        FormatReinstall r;
        r.programs.addBroken("cmd.exe"_s);
        r.runAgreed(procedure, {Titles::kEraseDrive, Titles::kFormatError});
        r.expectOldDisk();
    }

    void backupInTheDownloadFolderIsRefused_data()
    {
        columns<QString>("below");
        row("the folder itself", "Corvin"_s);
        row("below it", "Corvin/backup"_s);
        row("around it", "."_s);
    }
    void backupInTheDownloadFolderIsRefused()
    {
        QFETCH(QString, below);
        FormatReinstall r;
        const QString chosen = QDir::cleanPath(r.pc.path(below));
        const QString kept = putFile(chosen + "/kept.txt"_s);
        r.run(kRestoring.constData(), {Titles::kError}, chosen);
        QVERIFY(QFile::exists(kept));
        r.expectOldDisk();
    }

    void incompleteBackupKeepsTheDisk()
    {
        // The copy as a whole counts as good, because its last file was copied; one song in the middle is missing all
        // the same.
        FormatReinstall r;
        bool taken = false;
        QTimer spoil;
        connect(&spoil, &QTimer::timeout, this,
                [&] { taken = taken || QFile::remove(r.backup + "/My Songs/7.mid"_s); });
        spoil.start(1);
        r.runAgreed(kRestoring, {Titles::kBackupError});
        QVERIFY(taken);
        QVERIFY(r.server.requests().isEmpty());
        r.expectOldDisk();
    }

    void failureAfterTheFormatTellsWhereTheSongsAre_data()
    {
        columns<QString, QString, QString, QString>("failing", "firstBox", "title", "text");
        row("transfer", "transfer"_s, Titles::kCopyFailed, Titles::kError, Titles::kError);
        row("folder with a name that exFAT does not know", "name"_s, Titles::kError, Titles::kError,
            Texts::kReinstallAgain);
        row("folder with a file in its way", "file"_s, Titles::kError, Titles::kError, Texts::kReinstallAgain);
        row("restore", "restore"_s, Titles::kCopyFailed, Titles::kRestoreError, Texts::kRestoreError);
    }
    void failureAfterTheFormatTellsWhereTheSongsAre()
    {
        QFETCH(QString, failing);
        QFETCH(QString, firstBox);
        QFETCH(QString, title);
        QFETCH(QString, text);
        const QString how = firstBox == Titles::kCopyFailed ? Buttons::kNo : Buttons::kOk;
        if (failing == "transfer"_s)
            SKIP_ON_WINDOWS("the drive is as large as the disk of the machine");
        if (failing == "name"_s)
            SKIP_ON_WINDOWS("no folder of the PC can have that name either");
        FormatReinstall r;
        QTimer spoil;
        if (failing == "transfer"_s) {
            r.serve({{"Zzz/big.bin"_s, noise(20 * 1024 * 1024)}});
        } else if (failing == "name"_s) {
            r.serve({{"bad:name/x.txt"_s, "x"}});
            addUnar(r.programs, "/usr/bin/unar"_s);
        } else if (failing == "file"_s) {
            r.serve({{"Data/x.txt"_s, "x"}});
            r.disk.addFormatCommand(r.programs, r.record, "Data"_s);
        } else {
            // The last song vanishes from the backup while the system is transferred.
            connect(&spoil, &QTimer::timeout, this, [&, song = r.backup + "/My Songs/7.mid"_s] {
                if (r.window.status() != Status::kTransferring)
                    return;
                QFile::remove(song);
                QDir().mkpath(song);
            });
            spoil.start(1);
        }
        r.runAgreed(kRestoring, {Titles::kEraseDrive, {firstBox, how}, title});
        QCOMPARE(r.lastBox().text, text);
        r.expectBackupIsNamed();
        QVERIFY(QFile::exists(r.record));
        QVERIFY(r.savedFiles() >= kManyFiles);
        // After a transfer that was completed the download is gone, whatever came then.
        QCOMPARE(QFile::exists(r.pc.downloads()), failing == "transfer"_s);
    }

    void failedUpdateTellsWhereTheSongsAre()
    {
        FormatReinstall r;
        r.server.serveError(kUpdateArchivePath, 404, "short");
        r.runAgreed(kRestoring, {Titles::kEraseDrive, Titles::kDownloadError1, Titles::kFinished});
        r.expectBackupIsNamed();
        r.expectNewSystem();
    }

    void stopBeforeTheFormatKeepsTheDisk_data()
    {
        columns<QByteArray, QString>("procedure", "step");
        row("clean, download", kClean, Status::kDownloading);
        row("clean, unpacking", kClean, Status::kUnpacking);
        row("restore, reading", kRestoring, Status::kReading);
        row("restore, backup", kRestoring, Status::kBackingUp);
        row("restore, download", kRestoring, Status::kDownloading);
        row("restore, unpacking", kRestoring, Status::kUnpacking);
    }
    void stopBeforeTheFormatKeepsTheDisk()
    {
        QFETCH(QByteArray, procedure);
        QFETCH(QString, step);
        FormatReinstall r;
        if (step == Status::kUnpacking)
            r.useSlowTool();
        const StopPresser stop(r.window, step);
        r.runAgreed(procedure, {Titles::kStop});
        r.expectOldDisk();
    }

    void stopAfterTheFormatTellsWhereTheSongsAre_data()
    {
        columns<QByteArray, QString>("procedure", "step");
        row("clean, format", kClean, Status::kFormatting);
        row("clean, transfer", kClean, Status::kTransferring);
        row("restore, format", kRestoring, Status::kFormatting);
        row("restore, transfer", kRestoring, Status::kTransferring);
        row("restore, restore", kRestoring, Status::kRestoring);
    }
    void stopAfterTheFormatTellsWhereTheSongsAre()
    {
        QFETCH(QByteArray, procedure);
        QFETCH(QString, step);
        FormatReinstall r;
        const StopPresser stop(r.window, step);
        // There are none after the clean one, which says nothing.
        QList<Answer> answers = {Titles::kEraseDrive, Titles::kStop};
        if (procedure == kRestoring)
            answers.append(Titles::kRestoreError);
        r.runAgreed(procedure, answers);
        QCOMPARE(r.server.requests(), QStringList{kSystemArchivePath});
        if (procedure == kClean)
            return;
        r.expectBackupIsNamed();
        QCOMPARE(r.savedFiles(), kManyFiles + 1);
    }

    void stopDuringTheUpdateNamesNoBackup_data() { addBothProcedures(); }
    void stopDuringTheUpdateNamesNoBackup()
    {
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
