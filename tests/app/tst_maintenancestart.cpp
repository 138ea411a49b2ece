#include "italianwindow.h"
#include "pages/avanzate.h"
#include "pages/check.h"
#include "procedures/systemfixture.h"
#include "support/announcedserver.h"
#include "support/boxanswerer.h"
#include "support/boxtexts.h"

// Each signal of a page must start the procedure that bears its name and no other: told apart by what the procedure
// asks first of the user or of the server.

namespace {

const QString kBackupCaption = "Scegli una cartella per il salvataggio dei files"_s;
const QString kRestoreCaption = "Scegli cartella da cui prendere i files salvati"_s;
const QString kUpdate = "/download/Corvin4/CorvinUpdate.c4"_s;
const QString kSystem = "/download/Corvin4/CorvinAll.zip"_s;
const QByteArray kAfterTheCheck("reinstallOpSysOnly of the check");

void start(const ProcedureWindow &shell, const QByteArray &procedure)
{
    QObject *page = pageOf<Avanzate>(*shell.window);
    if (procedure == kAfterTheCheck)
        page = pageOf<Check>(*shell.window);
    QVERIFY(QMetaObject::invokeMethod(page, procedure.split(' ').first().constData()));
}

} // namespace

class TestMaintenanceStart : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { startInItalian(); }

    void withoutAPlayerEveryProcedureSaysSo_data()
    {
        columns<QByteArray>("procedure");
        for (const char *procedure :
             {"updateCorvinWithLastRelease", "makeSecurityCopyOfSongs", "restoreSecurityCopyOfSongs",
              "reinstallOpSysOnly", "reinstallOpSysAndCleanSongs", "reinstallOpSysAndRestoreSongs"})
            row(procedure, QByteArray(procedure));
        row("reinstall after the check", kAfterTheCheck);
    }
    void withoutAPlayerEveryProcedureSaysSo()
    {
        QFETCH(QByteArray, procedure);
        const ProcedureWindow shell;
        BoxAnswerer boxes;
        if (procedure == "reinstallOpSysAndCleanSongs")
            boxes.answer(Titles::kErase, Buttons::kSi);
        boxes.answer(Titles::kDeviceNotFound, Buttons::kOk);
        start(shell, procedure);
        QVERIFY(shell.bar()->isHidden());
    }

    void releaseAndSystemComeFromTheirOwnPlaces_data()
    {
        columns<QByteArray, QString>("procedure", "path");
        row("update", QByteArray("updateCorvinWithLastRelease"), kUpdate);
        row("reinstall", QByteArray("reinstallOpSysOnly"), kSystem);
        row("reinstall after the check", kAfterTheCheck, kSystem);
    }
    void releaseAndSystemComeFromTheirOwnPlaces()
    {
        QFETCH(QByteArray, procedure);
        QFETCH(QString, path);
        const SimulatedPlayer player;
        const AnnouncedServer server;
        const ProcedureWindow shell;
        BoxAnswerer boxes;
        boxes.answer(Titles::kDownloadError1, Buttons::kOk);
        start(shell, procedure);
        QCOMPARE(server.requests(), QStringList(path));
    }

    void backupAndRestoreAskForTheirFolder_data()
    {
        columns<QByteArray, QString>("procedure", "caption");
        row("backup", QByteArray("makeSecurityCopyOfSongs"), kBackupCaption);
        row("restore", QByteArray("restoreSecurityCopyOfSongs"), kRestoreCaption);
    }
    void backupAndRestoreAskForTheirFolder()
    {
        QFETCH(QByteArray, procedure);
        QFETCH(QString, caption);
        const SimulatedPlayer player;
        const ProcedureWindow shell;
        const BoxAnswerer boxes;
        const FolderDialogAnswerer dialogs{QString()};
        start(shell, procedure);
        QCOMPARE(dialogs.captions(), QStringList(caption));
    }

    void reinstallWithSongsSavesThemBeforeItLoadsTheSystem()
    {
        SimulatedPlayer player;
        player.addFile("My Songs/a.mid"_s, "song");
        const PcFolder backup;
        const AnnouncedServer server;
        const ProcedureWindow shell;
        BoxAnswerer boxes;
        boxes.answer(Titles::kDownloadError1, Buttons::kOk);
        const FolderDialogAnswerer dialogs(backup.path());
        start(shell, "reinstallOpSysAndRestoreSongs");
        QCOMPARE(dialogs.captions(), QStringList(kBackupCaption));
        QCOMPARE(backup.content("My Songs/a.mid"_s), QByteArray("song"));
        QCOMPARE(server.requests(), QStringList(kSystem));
    }

    void reinstallWithCleanSongsAsksBeforeAnythingElse()
    {
        const SimulatedPlayer player;
        const AnnouncedServer server;
        const ProcedureWindow shell;
        BoxAnswerer boxes;
        boxes.answer(Titles::kErase, Buttons::kNo);
        start(shell, "reinstallOpSysAndCleanSongs");
        QCOMPARE(boxes.seen().size(), 1);
        QCOMPARE(server.requests(), QStringList());
    }
};

PAGE_TEST_MAIN(TestMaintenanceStart)
#include "tst_maintenancestart.moc"
