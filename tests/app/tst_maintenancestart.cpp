#include "app/mainwindow.h"

#include "app/shared/sharedfonts.h"
#include "pages/avanzate.h"
#include "pages/check.h"
#include "procedures/systemfixture.h"
#include "resources/resources.h"
#include "support/boxanswerer.h"
#include "support/httpserver.h"
#include "support/simulatedplayer.h"
#include "windowparts.h"

#include <QProgressBar>
#include <QTemporaryDir>
#include <QTest>

using namespace WindowParts;

// Each signal of a page must start the procedure that bears its name and no other: told apart by what the procedure
// asks first of the user or of the server.

namespace {

const QString kNotFound = QStringLiteral("Corvin4 non è stato trovato");
const QString kDownloadError = QStringLiteral("Download Error , Cod 1");
const QString kErase = QStringLiteral("Azzeramento HD Corvin4");
const QString kBackupCaption = QStringLiteral("Scegli una cartella per il salvataggio dei files");
const QString kRestoreCaption = QStringLiteral("Scegli cartella da cui prendere i files salvati");
const QString kUpdate = QStringLiteral("/download/Corvin4/CorvinUpdate.c4");
const QString kSystem = QStringLiteral("/download/Corvin4/CorvinAll.zip");
const QString kOk = QStringLiteral("OK");

void emitOn(const ProcedureWindow &shell, const QByteArray &pageName, const QByteArray &signal)
{
    QObject *sender = page<Avanzate>(*shell.window);
    if (pageName == "Check")
        sender = page<Check>(*shell.window);
    QVERIFY(QMetaObject::invokeMethod(sender, signal.constData()));
}

} // namespace

class TestMaintenanceStart : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void withoutAPlayerEveryProcedureSaysSo_data();
    void withoutAPlayerEveryProcedureSaysSo();
    void releaseAndSystemComeFromTheirOwnPlaces_data();
    void releaseAndSystemComeFromTheirOwnPlaces();
    void backupAndRestoreAskForTheirFolder_data();
    void backupAndRestoreAskForTheirFolder();
    void reinstallWithSongsSavesThemBeforeItLoadsTheSystem();
    void reinstallWithCleanSongsAsksBeforeAnythingElse();
};

void TestMaintenanceStart::initTestCase()
{
    loadResources();
    registerEmbeddedFonts();
}

void TestMaintenanceStart::init()
{
    SimulatedPlayer::disconnect();
}

void TestMaintenanceStart::cleanup()
{
    qunsetenv("CORVIN_UPDATE_SERVER");
}

void TestMaintenanceStart::withoutAPlayerEveryProcedureSaysSo_data()
{
    QTest::addColumn<QByteArray>("page");
    QTest::addColumn<QByteArray>("signal");
    QTest::newRow("update") << QByteArray("Avanzate") << QByteArray("updateCorvinWithLastRelease");
    QTest::newRow("backup") << QByteArray("Avanzate") << QByteArray("makeSecurityCopyOfSongs");
    QTest::newRow("restore") << QByteArray("Avanzate") << QByteArray("restoreSecurityCopyOfSongs");
    QTest::newRow("reinstall") << QByteArray("Avanzate") << QByteArray("reinstallOpSysOnly");
    QTest::newRow("reinstall, clean songs") << QByteArray("Avanzate") << QByteArray("reinstallOpSysAndCleanSongs");
    QTest::newRow("reinstall, keep songs") << QByteArray("Avanzate") << QByteArray("reinstallOpSysAndRestoreSongs");
    QTest::newRow("reinstall after the check") << QByteArray("Check") << QByteArray("reinstallOpSysOnly");
}

void TestMaintenanceStart::withoutAPlayerEveryProcedureSaysSo()
{
    QFETCH(QByteArray, page);
    QFETCH(QByteArray, signal);
    const ProcedureWindow shell;
    BoxAnswerer boxes;
    if (signal == "reinstallOpSysAndCleanSongs")
        boxes.answer(kErase, QStringLiteral("Si"));
    boxes.answer(kNotFound, kOk);
    emitOn(shell, page, signal);
    QVERIFY(shell.bar()->isHidden());
}

void TestMaintenanceStart::releaseAndSystemComeFromTheirOwnPlaces_data()
{
    QTest::addColumn<QByteArray>("page");
    QTest::addColumn<QByteArray>("signal");
    QTest::addColumn<QString>("path");
    QTest::newRow("update") << QByteArray("Avanzate") << QByteArray("updateCorvinWithLastRelease") << kUpdate;
    QTest::newRow("reinstall") << QByteArray("Avanzate") << QByteArray("reinstallOpSysOnly") << kSystem;
    QTest::newRow("reinstall after the check") << QByteArray("Check") << QByteArray("reinstallOpSysOnly") << kSystem;
}

void TestMaintenanceStart::releaseAndSystemComeFromTheirOwnPlaces()
{
    QFETCH(QByteArray, page);
    QFETCH(QByteArray, signal);
    QFETCH(QString, path);
    const SimulatedPlayer player;
    const HttpServer server;
    qputenv("CORVIN_UPDATE_SERVER", server.address().toLatin1());
    const ProcedureWindow shell;
    BoxAnswerer boxes;
    boxes.answer(kDownloadError, kOk);
    emitOn(shell, page, signal);
    QCOMPARE(server.requests(), QStringList{path});
}

void TestMaintenanceStart::backupAndRestoreAskForTheirFolder_data()
{
    QTest::addColumn<QByteArray>("signal");
    QTest::addColumn<QString>("caption");
    QTest::newRow("backup") << QByteArray("makeSecurityCopyOfSongs") << kBackupCaption;
    QTest::newRow("restore") << QByteArray("restoreSecurityCopyOfSongs") << kRestoreCaption;
}

void TestMaintenanceStart::backupAndRestoreAskForTheirFolder()
{
    QFETCH(QByteArray, signal);
    QFETCH(QString, caption);
    const SimulatedPlayer player;
    const ProcedureWindow shell;
    const BoxAnswerer boxes;
    const FolderDialogAnswerer dialogs{QString()};
    emitOn(shell, "Avanzate", signal);
    QCOMPARE(dialogs.captions(), QStringList{caption});
}

void TestMaintenanceStart::reinstallWithSongsSavesThemBeforeItLoadsTheSystem()
{
    SimulatedPlayer player;
    player.addFile(QStringLiteral("My Songs/a.mid"), "song");
    const QTemporaryDir backup;
    const HttpServer server;
    qputenv("CORVIN_UPDATE_SERVER", server.address().toLatin1());
    const ProcedureWindow shell;
    BoxAnswerer boxes;
    boxes.answer(kDownloadError, kOk);
    const FolderDialogAnswerer dialogs(backup.path());
    emitOn(shell, "Avanzate", "reinstallOpSysAndRestoreSongs");
    QCOMPARE(dialogs.captions(), QStringList{kBackupCaption});
    QCOMPARE(contentOf(backup.filePath(QStringLiteral("My Songs/a.mid"))), QByteArray("song"));
    QCOMPARE(server.requests(), QStringList{kSystem});
}

void TestMaintenanceStart::reinstallWithCleanSongsAsksBeforeAnythingElse()
{
    const SimulatedPlayer player;
    const HttpServer server;
    qputenv("CORVIN_UPDATE_SERVER", server.address().toLatin1());
    const ProcedureWindow shell;
    BoxAnswerer boxes;
    boxes.answer(kErase, QStringLiteral("No"));
    emitOn(shell, "Avanzate", "reinstallOpSysAndCleanSongs");
    QCOMPARE(boxes.seen().size(), 1);
    QCOMPARE(server.requests(), QStringList());
}

QTEST_MAIN(TestMaintenanceStart)
#include "tst_maintenancestart.moc"
