// A text that tells the user to unplug the player comes when everything is on its disk, and not at all when that failed.
#include "systemfixture.h"

#include "app/mainwindow.h"
#include "disk/volumeflush.h"
#include "procedures/updateserver.h"
#include "support/boxanswerer.h"
#include "support/httpserver.h"
#include "support/simulatedplayer.h"

#include <QDir>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QThread>

namespace {

const QString kOk = QStringLiteral("OK");
const QString kEndTitle = QStringLiteral("Fine operazioni");
const QString kErrorTitle = QStringLiteral("ERRORE");
const QString kBackupErrorTitle = QStringLiteral("Errore durante il BackUp");
const QString kCodeOne = QStringLiteral("Download Error , Cod 1");
const QString kCodeThree = QStringLiteral("Download Error , Cod 3");
constexpr int kLeast = 10000;
constexpr unsigned long kSlowFlushMs = 100;

/// What the stand-in for the flush saw, and what it answers.
struct FlushRecord
{
    QStringList folders;      ///< the flushed folders, in order
    QStringList lastContents; ///< the files in the folder at the last flush
    bool good = true;
    bool onGuiThread = false;
};
FlushRecord record;

} // namespace

/// Takes the place of the program's own flush in this test alone.
bool flushVolume(const QString &path)
{
    record.folders.append(path);
    record.lastContents = filesBelow(path);
    record.onGuiThread = record.onGuiThread || QThread::currentThread() == qApp->thread();
    QThread::msleep(kSlowFlushMs);
    return record.good;
}

class TestUnplugTexts : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void updateIsOnThePlayerBeforeItsText();
    void reinstallIsOnThePlayerBeforeItsText_data();
    void reinstallIsOnThePlayerBeforeItsText();
    void restoreIsOnThePlayerBeforeItsText();
    void updateThatWasNotFlushedIsAFailedCopy();
    void reinstallThatWasNotFlushedIsNotCalledInstalled();
    void restoreThatWasNotFlushedIsAFailure();
    void backupThatWasNotFlushedIsAFailure();
    void removedUpdateIsFlushedBeforeItsErrorBox();
    void stopIsHiddenWithTheBarAtTheFinalText();
    void windowLivesDuringTheFlush();

private:
    /// When the announced box is shown, the player was flushed with all that is on it.
    void expectFlushedWhenShown();

    QScopedPointer<TemporaryPc> m_pc;
    QScopedPointer<ProgramFolder> m_programs;
    QScopedPointer<HttpServer> m_server;
    QScopedPointer<SimulatedPlayer> m_player;
    QScopedPointer<ProcedureWindow> m_window;
    QScopedPointer<BoxAnswerer> m_boxes;
};

void TestUnplugTexts::init()
{
    record = {};
    m_pc.reset(new TemporaryPc);
    m_programs.reset(new ProgramFolder);
    addUnar(*m_programs);
    m_server.reset(new HttpServer);
    qputenv("CORVIN_UPDATE_SERVER", m_server->address().toLatin1());
    m_server->serve(kSystemArchivePath,
                    zipOf({{QStringLiteral("System/a.exe"), "new"}}, QStringLiteral("System/"), kLeast));
    m_server->serve(kUpdateArchivePath,
                    zipOf({{QStringLiteral("CorvinUpdate/u.exe"), "new"}}, QStringLiteral("CorvinUpdate/"), kLeast));
    m_player.reset(new SimulatedPlayer);
    m_player->addFile(QStringLiteral("My Songs/a.mid"), "MThd");
    m_window.reset(new ProcedureWindow);
    m_boxes.reset(new BoxAnswerer);
}

void TestUnplugTexts::cleanup()
{
    m_boxes.reset();
    m_window.reset();
    m_player.reset();
    m_server.reset();
    m_programs.reset();
    m_pc.reset();
    qunsetenv("CORVIN_UPDATE_SERVER");
}

void TestUnplugTexts::expectFlushedWhenShown()
{
    m_boxes->whenShown([this](const QMessageBox *box) {
        if (box->windowTitle() == kCodeOne)
            return;
        QVERIFY(!record.folders.isEmpty());
        QCOMPARE(record.folders.last(), m_player->root());
        QCOMPARE(record.lastContents, m_player->files());
    });
}

void TestUnplugTexts::updateIsOnThePlayerBeforeItsText()
{
    m_boxes->answer(kEndTitle, kOk);
    expectFlushedWhenShown();
    m_window->run("updateCorvinWithLastRelease");
    QCOMPARE(m_boxes->seen().size(), 1);
    QVERIFY(m_player->exists(QStringLiteral("CorvinUpdate/u.exe")));
}

void TestUnplugTexts::reinstallIsOnThePlayerBeforeItsText_data()
{
    QTest::addColumn<bool>("withUpdate");
    QTest::newRow("with the update") << true;
    QTest::newRow("without the update") << false;
}

void TestUnplugTexts::reinstallIsOnThePlayerBeforeItsText()
{
    QFETCH(bool, withUpdate);
    if (!withUpdate) {
        m_server->serveError(kUpdateArchivePath, 404, "short");
        m_boxes->answer(kCodeOne, kOk);
    }
    m_boxes->answer(kEndTitle, kOk);
    expectFlushedWhenShown();
    m_window->run("reinstallOpSysOnly");
    QCOMPARE(m_boxes->pending(), 0);
    QCOMPARE(m_player->exists(QStringLiteral("CorvinUpdate/u.exe")), withUpdate);
}

void TestUnplugTexts::restoreIsOnThePlayerBeforeItsText()
{
    putFile(m_pc->path(QStringLiteral("backup/b.mid")));
    const FolderDialogAnswerer dialogs(m_pc->path(QStringLiteral("backup")));
    m_boxes->answer(QStringLiteral("Fatto"), kOk);
    expectFlushedWhenShown();
    m_window->run("restoreSecurityCopyOfSongs");
    QCOMPARE(m_boxes->seen().size(), 1);
}

void TestUnplugTexts::updateThatWasNotFlushedIsAFailedCopy()
{
    record.good = false;
    m_boxes->answer(kCodeThree, kOk);
    m_window->run("updateCorvinWithLastRelease");
    QVERIFY(!m_player->exists(QStringLiteral("CorvinUpdate")));
    QVERIFY(m_window->isAtRest());
}

void TestUnplugTexts::reinstallThatWasNotFlushedIsNotCalledInstalled()
{
    record.good = false;
    m_boxes->answer(kErrorTitle, kOk);
    m_window->run("reinstallOpSysOnly");
    QCOMPARE(m_boxes->seen().first().text, QStringLiteral("Procedura terminata in modo inaspettato.\n"
                                                          "Provare a reinstallare il sistema operativo."));
    QVERIFY(!QFile::exists(m_pc->downloads()));
    QVERIFY(m_window->isAtRest());
}

void TestUnplugTexts::restoreThatWasNotFlushedIsAFailure()
{
    record.good = false;
    putFile(m_pc->path(QStringLiteral("backup/b.mid")));
    const FolderDialogAnswerer dialogs(m_pc->path(QStringLiteral("backup")));
    m_boxes->answer(kBackupErrorTitle, kOk);
    m_window->run("restoreSecurityCopyOfSongs");
    QCOMPARE(m_boxes->seen().size(), 1);
}

void TestUnplugTexts::backupThatWasNotFlushedIsAFailure()
{
    record.good = false;
    const QString folder = m_pc->path(QStringLiteral("backup"));
    QVERIFY(QDir().mkpath(folder));
    const FolderDialogAnswerer dialogs(folder);
    m_boxes->answer(kBackupErrorTitle, kOk);
    m_window->run("makeSecurityCopyOfSongs");
    QCOMPARE(record.folders, QStringList{folder});
    QCOMPARE(record.lastContents, QStringList{QStringLiteral("My Songs/a.mid")});
}

void TestUnplugTexts::removedUpdateIsFlushedBeforeItsErrorBox()
{
    m_server->serve(kUpdateArchivePath, zipOf({{QStringLiteral("CorvinUpdate/a.exe"), "new"},
                                               {QStringLiteral("CorvinUpdate/v1.0/b.exe"), "b"}},
                                              QStringLiteral("CorvinUpdate/"), kLeast));
    m_boxes->answer(QStringLiteral("Errore sulla copia"), QStringLiteral("No"));
    m_boxes->answer(kCodeThree, kOk);
    m_window->run("updateCorvinWithLastRelease");
    QCOMPARE(record.folders, QStringList{m_player->root()});
    QCOMPARE(record.lastContents, QStringList{QStringLiteral("My Songs/a.mid")});
}

void TestUnplugTexts::stopIsHiddenWithTheBarAtTheFinalText()
{
    int looks = 0;
    m_boxes->whenShown([&](QMessageBox *) {
        ++looks;
        QVERIFY(m_window->bar()->isHidden());
        QVERIFY(m_window->label()->isHidden());
        QVERIFY(m_window->stop()->isHidden());
    });
    for (const char *slot : {"updateCorvinWithLastRelease", "reinstallOpSysOnly"}) {
        m_boxes->answer(kEndTitle, kOk);
        m_window->run(slot);
    }
    QCOMPARE(looks, 2);
}

void TestUnplugTexts::windowLivesDuringTheFlush()
{
    m_boxes->answer(kEndTitle, kOk);
    int rounds = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&] { rounds += record.folders.isEmpty() ? 0 : 1; });
    m_boxes->whenShown([&](QMessageBox *) { timer.stop(); });
    timer.start(5);
    m_window->run("updateCorvinWithLastRelease");
    QVERIFY(!record.onGuiThread);
    QVERIFY(rounds > 1);
}

QTEST_MAIN(TestUnplugTexts)
#include "tst_unplugtexts.moc"
