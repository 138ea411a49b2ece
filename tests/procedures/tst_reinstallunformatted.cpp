#include "formatfixture.h"

/// A reinstallation that ends before it touches the disk leaves everything on it.
class TestReinstallUnformatted : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() {
        QString why;
        NEEDS(PlayerDisk::isPossible(&why), qPrintable("SKIPPED WHOLE: "_s + why));
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
};

PAGE_TEST_MAIN(TestReinstallUnformatted)
#include "tst_reinstallunformatted.moc"
