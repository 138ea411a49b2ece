#include "playerdisk.h"
#include "systemfixture.h"

namespace {

constexpr int kManyFiles = 60; ///< songs, and as many files of the system
const QByteArray kAlone = Slots::kReinstall;
const QByteArray kClean = Slots::kReinstallClean;
const QByteArray kRestoring = Slots::kReinstallRestoring;

/// The procedures that reinstall, of a player with an old system and songs on a disk of its own, with a format command
/// for that disk.
struct FormatReinstall : Maintenance
{
    FormatReinstall() : record(pc.path("format.txt"_s)) {
        serve();
        for (const QString &file : words("AUTOEXEC.BAT System/old.exe System/Playlist/mine.pls"))
            putFile(disk.path(file), "old");
        for (int i = 0; i < kManyFiles; ++i)
            putFile(disk.path("My Songs/%1.mid"_s.arg(i)), QByteArray::number(i));
        disk.addFormatCommand(programs, record);
    }
    /// Serves the system with many files, and what else is given.
    void serve(Entries more = {}) {
        for (int i = 0; i < kManyFiles; ++i)
            more.insert("System/many/%1.dat"_s.arg(i), "x");
        serveSystem(more);
    }
    /// Runs a procedure with these boxes after its first question, which is agreed to, and with the backup folder that
    /// it asks for.
    void runAgreed(const QByteArray &procedure, const QList<Answer> &answers) {
        const QList<Answer> first = procedure == kClean ? QList<Answer>{Titles::kErase} : QList<Answer>();
        run(procedure.constData(), first + answers, procedure == kRestoring ? std::optional(backup) : std::nullopt);
    }
    void expectOldDisk() const {
        QVERIFY(!QFile::exists(record));
        QCOMPARE(disk.content("AUTOEXEC.BAT"_s), QByteArray("old"));
        QCOMPARE(disk.content("System/old.exe"_s), QByteArray("old"));
        QCOMPARE(disk.files().size(), kManyFiles + 3);
    }
    /// The disk was formatted and has the new system, and nothing is left behind on the PC.
    void expectNewSystem() const {
        QCOMPARE(disk.content("AUTOEXEC.BAT"_s), QByteArray("new"));
        QCOMPARE(disk.content("System/Corvin/Corvin.exe"_s), QByteArray("new"));
        QVERIFY(!isOnDisk("System/old.exe"_s));
        QCOMPARE(filesBelow(disk.path("System/many"_s)).size(), kManyFiles);
        QVERIFY(!QFile::exists(pc.downloads()));
    }
    void expectBackupIsNamed() const {
        QVERIFY2(lastBox().informativeText.contains(QDir::toNativeSeparators(backup)),
                 qPrintable(lastBox().informativeText));
    }
    int savedFiles() const { return filesBelow(backup).size(); }
    bool isOnDisk(const QString &relative) const { return QFile::exists(disk.path(relative)); }

    PlayerDisk disk;
    /// Programs that a test has hidden are back before the disk is taken away by them.
    const Environment path{"PATH", qgetenv("PATH")};
    const QString record; ///< what the format command was given
};

void addBothProcedures() {
    columns<QByteArray>("procedure");
    row("clean", kClean);
    row("restore", kRestoring);
}

} // namespace

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

    void userWhoSaysNoKeepsTheDisk_data() {
        columns<QByteArray, QString>("procedure", "refused");
        row("clean, first question", kClean, Titles::kErase);
        row("clean, drive question", kClean, Titles::kEraseDrive);
        row("restore, no folder", kRestoring, QString());
        row("restore, drive question", kRestoring, Titles::kEraseDrive);
    }
    void userWhoSaysNoKeepsTheDisk() {
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

    void failureBeforeTheFormatKeepsTheDisk_data() {
        columns<QByteArray, QString, QByteArray, QString>("procedure", "failing", "archive", "title");
        const QByteArray named = zipOf({{"README"_s, noise(kLeastRelease)}});
        const QByteArray folders = zipOf({{"System/"_s, ""}, {"big"_s, noise(kLeastRelease)}});
        for (const QByteArray &procedure : {kClean, kRestoring}) {
            const auto add = [procedure](const char *failing, const QByteArray &archive, const QString &title) {
                QTest::addRow("%s, %s", procedure.constData(), failing)
                    << procedure << QString(QLatin1String(failing)) << archive << title;
            };
            add("not on the server", "short", Titles::kDownloadError1);
            add("long error page", noise(kLeastRelease), Titles::kDownloadError1);
            add("only names that are not copied", named, Titles::kError);
            add("only folders", folders, Titles::kError);
            add("no tool", QByteArray(), Titles::kError);
            add("player pulled", QByteArray(), Titles::kDeviceNotFound);
        }
    }
    void failureBeforeTheFormatKeepsTheDisk() {
        QFETCH(QByteArray, procedure);
        QFETCH(QString, failing);
        QFETCH(QByteArray, archive);
        QFETCH(QString, title);
        FormatReinstall r;
        if (!archive.isEmpty())
            r.server.serveError(kSystemArchivePath, failing.startsWith("only"_s) ? 200 : 404, archive);
        else if (failing == "player pulled"_s)
            connect(&r.server, &HttpServer::answered, this, [] { SimulatedPlayer::disconnect(); });
        else
            r.hideTool();
        r.runAgreed(procedure, {title});
        r.expectOldDisk();
        QCOMPARE(r.savedFiles(), procedure == kRestoring ? kManyFiles + 1 : 0);
    }

    void anotherPlayerThanTheSavedOneIsNotErased() {
        SKIP_ON_WINDOWS("Wine gives every folder that plays a drive the same number");
        FormatReinstall r;
        std::optional<SimulatedPlayer> other;
        connect(&r.server, &HttpServer::answered, this, [&] {
            other.emplace();
            other->addFile("My Songs/another.mid"_s);
        });
        r.runAgreed(kRestoring, {Titles::kDeviceNotFound});
        r.expectOldDisk();
        QCOMPARE(other->files(), QStringList{"My Songs/another.mid"_s});
    }

    void formatThatErasedNothingTellsWhereTheBackupIs() {
        FormatReinstall r;
        addFormatCommand(r.programs, {Does::print("Accesso negato"_s)});
        r.runAgreed(kRestoring, {Titles::kEraseDrive, Titles::kFormatError});
        r.expectBackupIsNamed();
        r.expectOldDisk();
    }

    void missingFormatCommandKeepsTheDisk_data() { addBothProcedures(); }
    void missingFormatCommandKeepsTheDisk() {
        QFETCH(QByteArray, procedure);
        FormatReinstall r;
        r.programs.addBroken("cmd.exe"_s);
        r.runAgreed(procedure, {Titles::kEraseDrive, Titles::kFormatError});
        r.expectOldDisk();
    }

    void backupInTheDownloadFolderIsRefused_data() {
        columns<QString>("below");
        row("the folder itself", "Corvin"_s);
        row("below it", "Corvin/backup"_s);
        row("around it", "."_s);
    }
    void backupInTheDownloadFolderIsRefused() {
        QFETCH(QString, below);
        FormatReinstall r;
        const QString chosen = QDir::cleanPath(r.pc.path(below));
        const QString kept = putFile(chosen + "/kept.txt"_s);
        r.run(kRestoring.constData(), {Titles::kError}, chosen);
        QVERIFY(QFile::exists(kept));
        r.expectOldDisk();
    }

    void incompleteBackupKeepsTheDisk() {
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

    void failedUpdateTellsWhereTheSongsAre() {
        FormatReinstall r;
        r.server.serveError(kUpdateArchivePath, 404, "short");
        r.runAgreed(kRestoring, {Titles::kEraseDrive, Titles::kDownloadError1, Titles::kFinished});
        r.expectBackupIsNamed();
        r.expectNewSystem();
    }

    void stopBeforeTheFormatKeepsTheDisk_data() {
        columns<QByteArray, QString>("procedure", "step");
        row("system alone, download", kAlone, Status::kDownloading);
        row("system alone, unpacking", kAlone, Status::kUnpacking);
        row("clean, download", kClean, Status::kDownloading);
        row("clean, unpacking", kClean, Status::kUnpacking);
        row("restore, reading", kRestoring, Status::kReading);
        row("restore, backup", kRestoring, Status::kBackingUp);
        row("restore, download", kRestoring, Status::kDownloading);
        row("restore, unpacking", kRestoring, Status::kUnpacking);
    }
    void stopBeforeTheFormatKeepsTheDisk() {
        QFETCH(QByteArray, procedure);
        QFETCH(QString, step);
        FormatReinstall r;
        if (step == Status::kUnpacking)
            r.useSlowTool();
        const StopPresser stop(r.window, step);
        r.runAgreed(procedure, {Titles::kStop});
        r.expectOldDisk();
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
