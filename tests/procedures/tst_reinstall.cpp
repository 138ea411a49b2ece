#include "app/mainwindow.h"
#include "procedures/updateserver.h"

#include "pages/avanzate.h"
#include "playerdisk.h"
#include "support/boxanswerer.h"
#include "support/httpserver.h"
#include "support/logcapture.h"
#include "support/simulatedplayer.h"
#include "systemfixture.h"

#include <QDir>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>

namespace {

const QString kLooking = QStringLiteral("Cerco se Corvin4 è connesso via USB...");
const QString kDownloading = QStringLiteral("Scarico l' ultima release dal sito Q-Arte...");
const QString kUnpacking = QStringLiteral("Creazione della copia del sistema operativo...");
const QString kTransferring = QStringLiteral("Trasferimento del sistema operativo...");
const QString kCopyingUpdate = QStringLiteral("Copia dei files dell' aggiornamento...");
const QString kStopTitle = QStringLiteral("Interrompi Operazione");
const QString kEndTitle = QStringLiteral("Fine operazioni");
const QString kErrorTitle = QStringLiteral("ERRORE");
const QString kCodeOne = QStringLiteral("Download Error , Cod 1");
const QString kYes = QStringLiteral("Si");
const QString kOk = QStringLiteral("OK");
constexpr int kLeast = 10000;
constexpr int kManyFiles = 300;

} // namespace

class TestReinstall : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void systemIsReplacedAndUpdatedAndTheSongsStay();
    void textsAppearInTheirOrder();
    void archiveWithAFolderAroundEverythingIsUnderstood();
    void absentPlayerIsToldOf();
    void failedDownloadLeavesThePlayerAlone();
    void missingToolLeavesThePlayerAlone();
    void longErrorPageLeavesThePlayerAlone();
    void playerPulledDuringTheDownloadIsToldOf();
    void playerPulledDuringTheTransferIsNotCalledInstalled();
    void readOnlyPlayerEndsTheProcedure();
    void failedTransferEndsTheProcedure();
    void folderThatCannotBeMadeEndsInItsOwnWords();
    void failedUpdateStillEndsWithAnInstalledSystem();
    void stopEndsSilentlyAtEachStep_data();
    void stopEndsSilentlyAtEachStep();
    void stopDuringTheUpdateEndsWithoutTheClosingBox_data();
    void stopDuringTheUpdateEndsWithoutTheClosingBox();
    void wayBackIsClosedForTheWholeTime_data();
    void wayBackIsClosedForTheWholeTime();

private:
    static Entries systemEntries();
    void serve();
    void expectUntouchedPlayer() const;

    QScopedPointer<TemporaryPc> m_pc;
    QScopedPointer<ProgramFolder> m_programs;
    QScopedPointer<HttpServer> m_server;
    QScopedPointer<SimulatedPlayer> m_player;
    QScopedPointer<ProcedureWindow> m_window;
};

Entries TestReinstall::systemEntries()
{
    return {{QStringLiteral("AUTOEXEC.BAT"), "new"},
            {QStringLiteral("System/Corvin/Corvin.exe"), "new"},
            {QStringLiteral("System/GuiProc/GuiProc.exe"), "new"},
            {QStringLiteral("Bridges/b.dat"), "new"},
            {QStringLiteral("Effects/e.dat"), "new"}};
}

void TestReinstall::init()
{
    m_pc.reset(new TemporaryPc);
    m_programs.reset(new ProgramFolder);
    addUnar(*m_programs);
    m_server.reset(new HttpServer);
    qputenv("CORVIN_UPDATE_SERVER", m_server->address().toLatin1());
    m_player.reset(new SimulatedPlayer);
    m_player->addFile(QStringLiteral("AUTOEXEC.BAT"), "old");
    m_player->addFile(QStringLiteral("System/old.exe"), "old");
    m_player->addFile(QStringLiteral("My Songs/a.mid"), "MThd");
    m_window.reset(new ProcedureWindow);
}

void TestReinstall::cleanup()
{
    m_window.reset();
    m_player.reset();
    m_server.reset();
    m_programs.reset();
    m_pc.reset();
    qunsetenv("CORVIN_UPDATE_SERVER");
}

void TestReinstall::serve()
{
    m_server->serve(kSystemArchivePath, zipOf(systemEntries(), QStringLiteral("System/"), kLeast));
    m_server->serve(kUpdateArchivePath,
                    zipOf({{QStringLiteral("CorvinUpdate/u.exe"), "update"}}, QStringLiteral("CorvinUpdate/"), kLeast));
}

void TestReinstall::expectUntouchedPlayer() const
{
    QCOMPARE(m_player->files(), (QStringList{QStringLiteral("AUTOEXEC.BAT"), QStringLiteral("My Songs/a.mid"),
                                             QStringLiteral("System/old.exe")}));
    QVERIFY(m_window->isAtRest());
}

void TestReinstall::systemIsReplacedAndUpdatedAndTheSongsStay()
{
    serve();
    BoxAnswerer answers;
    answers.answer(kEndTitle, kOk);
    m_window->run("reinstallOpSysOnly");
    QCOMPARE(m_player->files(),
             (QStringList{QStringLiteral("AUTOEXEC.BAT"), QStringLiteral("Bridges/b.dat"),
                          QStringLiteral("CorvinUpdate/filler.bin"), QStringLiteral("CorvinUpdate/u.exe"),
                          QStringLiteral("Effects/e.dat"), QStringLiteral("My Songs/a.mid"),
                          QStringLiteral("System/Corvin/Corvin.exe"), QStringLiteral("System/GuiProc/GuiProc.exe"),
                          QStringLiteral("System/filler.bin")}));
    QCOMPARE(m_player->content(QStringLiteral("AUTOEXEC.BAT")), QByteArray("new"));
    QCOMPARE(m_player->content(QStringLiteral("System/filler.bin")), noise(kLeast));
    QCOMPARE(answers.seen().first().text,
             QStringLiteral("Installazione terminata.\nSpegnere il Corvin e scollegare dal PC e riaccendere Corvin.\n"
                            "Se viene chiesto di riavviare, spegnere e accendere\n"
                            "finchè non appare la lista delle canzoni."));
    QCOMPARE(answers.seen().first().icon, QMessageBox::Information);
    QVERIFY(answers.seen().first().informativeText.isEmpty());
    QVERIFY(!QFile::exists(m_pc->downloads()));
    QVERIFY(m_window->isAtRest());
}

void TestReinstall::textsAppearInTheirOrder()
{
    serve();
    BoxAnswerer answers;
    answers.answer(kEndTitle, kOk);
    const LogCapture log;
    m_window->run("reinstallOpSysOnly");
    const QString prefix = QStringLiteral("MainWindow::on_updateLabelAction : ");
    QStringList expected;
    for (const QString &text :
         {kLooking, kDownloading, kUnpacking, kTransferring, kLooking, kDownloading, kCopyingUpdate})
        expected.append(prefix + QLatin1Char('"') + text + QLatin1Char('"'));
    QCOMPARE(log.textsStartingWith(prefix), expected);
    QCOMPARE(m_server->requests(), (QStringList{kSystemArchivePath, kUpdateArchivePath}));
}

void TestReinstall::archiveWithAFolderAroundEverythingIsUnderstood()
{
    serve();
    const Entries plain = systemEntries();
    Entries wrapped;
    for (auto entry = plain.begin(); entry != plain.end(); ++entry)
        wrapped.insert(QStringLiteral("CorvinAll/") + entry.key(), entry.value());
    m_server->serve(kSystemArchivePath, zipOf(wrapped, QStringLiteral("CorvinAll/System/"), kLeast));
    BoxAnswerer answers;
    answers.answer(kEndTitle, kOk);
    m_window->run("reinstallOpSysOnly");
    QCOMPARE(m_player->content(QStringLiteral("System/Corvin/Corvin.exe")), QByteArray("new"));
    QVERIFY(!m_player->exists(QStringLiteral("CorvinAll")));
}

void TestReinstall::absentPlayerIsToldOf()
{
    serve();
    SimulatedPlayer::disconnect();
    BoxAnswerer answers;
    answers.answer(QStringLiteral("Corvin4 non è stato trovato"), kOk);
    m_window->run("reinstallOpSysOnly");
    QVERIFY(m_server->requests().isEmpty());
    expectUntouchedPlayer();
}

void TestReinstall::failedDownloadLeavesThePlayerAlone()
{
    BoxAnswerer answers;
    answers.answer(kCodeOne, kOk);
    m_window->run("reinstallOpSysOnly");
    QCOMPARE(answers.seen().first().text,
             QStringLiteral("C'è stato un errore durante il download dell' aggiornamento di Corvin\n"
                            "Riprovare più tardi"));
    expectUntouchedPlayer();
}

void TestReinstall::missingToolLeavesThePlayerAlone()
{
    serve();
    m_programs->remove(QStringLiteral("unar"));
    m_programs->hideOthers();
    BoxAnswerer answers;
    answers.answer(kErrorTitle, kOk);
    m_window->run("reinstallOpSysOnly");
    QCOMPARE(answers.seen().first().text, kErrorTitle);
    QCOMPARE(answers.seen().first().icon, QMessageBox::Information);
    expectUntouchedPlayer();
}

void TestReinstall::longErrorPageLeavesThePlayerAlone()
{
    m_server->serveError(kSystemArchivePath, 404, noise(kLeast));
    BoxAnswerer answers;
    answers.answer(kErrorTitle, kOk);
    m_window->run("reinstallOpSysOnly");
    expectUntouchedPlayer();
}

void TestReinstall::playerPulledDuringTheDownloadIsToldOf()
{
    serve();
    connect(m_server.data(), &HttpServer::answered, this, [] { SimulatedPlayer::disconnect(); });
    BoxAnswerer answers;
    answers.answer(QStringLiteral("Corvin4 non è stato trovato"), kOk);
    m_window->run("reinstallOpSysOnly");
    expectUntouchedPlayer();
}

void TestReinstall::playerPulledDuringTheTransferIsNotCalledInstalled()
{
    QString why;
    if (!ExFatVolume::isPossible(&why))
        QSKIP(qPrintable(why));
    const MountedPlayer player(16);
    QVERIFY2(player.isMounted(), qPrintable(player.volume->error()));
    putFile(player.path(QStringLiteral("My Songs/a.mid")), "MThd");
    serve();
    // The mount point is left, an ordinary folder that takes the rest without an error.
    bool pulled = false;
    connect(m_window->bar(), &QProgressBar::valueChanged, this, [&](int value) {
        if (m_window->status() == kTransferring && value == 2 && !pulled)
            pulled = player.volume->pull();
    });
    BoxAnswerer answers;
    answers.answer(kErrorTitle, kOk);
    m_window->run("reinstallOpSysOnly");
    QVERIFY(pulled);
    QCOMPARE(answers.seen().first().text, QStringLiteral("Procedura terminata in modo inaspettato.\n"
                                                         "Provare a reinstallare il sistema operativo."));
    QCOMPARE(answers.seen().first().icon, QMessageBox::Critical);
    QCOMPARE(m_server->requests(), QStringList{kSystemArchivePath});
    // Nothing is mounted over what landed on the PC.
    QVERIFY(QDir(player.root()).removeRecursively() && QDir().mkpath(player.root()));
    QVERIFY(player.volume->mount());
    QCOMPARE(contentOf(player.path(QStringLiteral("My Songs/a.mid"))), QByteArray("MThd"));
}

void TestReinstall::readOnlyPlayerEndsTheProcedure()
{
    serve();
    const Mount mount(QDir::cleanPath(m_player->root()));
    if (!mount.isGood())
        QSKIP("Nothing can be mounted here");
    BoxAnswerer answers;
    answers.answer(kErrorTitle, kOk);
    m_window->run("reinstallOpSysOnly");
    QCOMPARE(answers.seen().first().text, kErrorTitle);
    expectUntouchedPlayer();
}

void TestReinstall::failedTransferEndsTheProcedure()
{
    serve();
    m_player->addFile(QStringLiteral("bridges"), "a file");
    BoxAnswerer answers;
    answers.answer(kErrorTitle, kOk);
    m_window->run("reinstallOpSysOnly");
    QCOMPARE(answers.seen().first().text, kErrorTitle);
    QCOMPARE(m_server->requests(), QStringList{kSystemArchivePath});
    QVERIFY(m_player->exists(QStringLiteral("My Songs/a.mid")));
    QVERIFY(m_window->isAtRest());
}

void TestReinstall::folderThatCannotBeMadeEndsInItsOwnWords()
{
    Entries entries = systemEntries();
    entries.insert(QStringLiteral("Data/x.txt"), "x");
    m_server->serve(kSystemArchivePath, zipOf(entries, QStringLiteral("System/"), kLeast));
    m_player->addFile(QStringLiteral("Data"), "file in the way");
    BoxAnswerer answers;
    answers.answer(kErrorTitle, kOk);
    answers.answer(kErrorTitle, kOk);
    m_window->run("reinstallOpSysOnly");
    QCOMPARE(answers.seen().at(0).text, kErrorTitle);
    QCOMPARE(answers.seen().at(1).text, QStringLiteral("Procedura terminata in modo inaspettato.\n"
                                                       "Provare a reinstallare il sistema operativo."));
    QCOMPARE(answers.seen().at(1).icon, QMessageBox::Critical);
    // No update then.
    QCOMPARE(m_server->requests(), QStringList{kSystemArchivePath});
    QVERIFY(!QFile::exists(m_pc->downloads()));
    QVERIFY(m_window->isAtRest());
}

void TestReinstall::failedUpdateStillEndsWithAnInstalledSystem()
{
    m_server->serve(kSystemArchivePath, zipOf(systemEntries(), QStringLiteral("System/"), kLeast));
    BoxAnswerer answers;
    answers.answer(kCodeOne, kOk);
    answers.answer(kEndTitle, kOk);
    m_window->run("reinstallOpSysOnly");
    QCOMPARE(m_player->content(QStringLiteral("System/Corvin/Corvin.exe")), QByteArray("new"));
    QVERIFY(!QFile::exists(m_pc->downloads()));
}

void TestReinstall::stopEndsSilentlyAtEachStep_data()
{
    QTest::addColumn<QString>("step");
    QTest::addColumn<bool>("systemTouched");
    QTest::newRow("download") << kDownloading << false;
    QTest::newRow("unpacking") << kUnpacking << false;
    QTest::newRow("transfer") << kTransferring << true;
}

void TestReinstall::stopEndsSilentlyAtEachStep()
{
    QFETCH(QString, step);
    QFETCH(bool, systemTouched);
    QString why;
    if (!PlayerDisk::isPossible(&why))
        QSKIP(qPrintable(why));
    const PlayerDisk player;
    QVERIFY2(player.isThere(), qPrintable(player.error()));
    putFile(player.path(QStringLiteral("System/old.exe")), "old");
    putFile(player.path(QStringLiteral("My Songs/a.mid")), "MThd");
    Entries entries = systemEntries();
    for (int i = 0; i < kManyFiles; ++i)
        entries.insert(QStringLiteral("System/%1.dat").arg(i), "x");
    m_server->serve(kSystemArchivePath, zipOf(entries, QStringLiteral("System/"), kLeast));
    if (step == kUnpacking)
        m_programs->addStandIn(QStringLiteral("unar"), {Does::waitForever()});

    BoxAnswerer answers;
    answers.answer(kStopTitle, kYes);
    const StopPresser stop(*m_window, step, [&] { return step != kTransferring || m_window->bar()->value() > 5; });
    m_window->run("reinstallOpSysOnly");
    QVERIFY(stop.pressed);
    QCOMPARE(answers.seen().size(), 1);
    QVERIFY(m_window->isAtRest());
    QCOMPARE(QFile::exists(player.path(QStringLiteral("System/old.exe"))), !systemTouched);
    QCOMPARE(contentOf(player.path(QStringLiteral("My Songs/a.mid"))), QByteArray("MThd"));
    QCOMPARE(m_server->requests(), QStringList{kSystemArchivePath});
}

void TestReinstall::stopDuringTheUpdateEndsWithoutTheClosingBox_data()
{
    QTest::addColumn<QString>("step");
    QTest::newRow("download") << kDownloading;
    QTest::newRow("unpacking") << kUnpacking;
    QTest::newRow("copy") << kCopyingUpdate;
}

void TestReinstall::stopDuringTheUpdateEndsWithoutTheClosingBox()
{
    QFETCH(QString, step);
    serve();
    BoxAnswerer answers;
    answers.answer(kStopTitle, kYes);
    QString status = step;
    if (step == kDownloading) {
        m_server->serveStalled(kUpdateArchivePath, noise(40000), 100);
    } else if (step == kUnpacking) {
        // The status line has no text of its own for it here.
        status = kDownloading;
        connect(m_server.data(), &HttpServer::answered, this, [this](const QString &path) {
            if (path == kUpdateArchivePath)
                m_programs->addStandIn(QStringLiteral("unar"), {Does::waitForever()});
        });
    } else {
        answers.answer(QStringLiteral("Download Error , Cod 3"), kOk);
    }
    const StopPresser stop(*m_window, status, [&] {
        return m_server->requests().contains(kUpdateArchivePath) &&
               (step != kUnpacking || m_window->bar()->maximum() == 0) &&
               (step != kCopyingUpdate || m_window->bar()->format() == QStringLiteral("%v"));
    });
    m_window->run("reinstallOpSysOnly");
    QVERIFY(stop.pressed);
    QCOMPARE(answers.pending(), 0);
    QCOMPARE(m_player->content(QStringLiteral("System/Corvin/Corvin.exe")), QByteArray("new"));
    QVERIFY(!m_player->exists(QStringLiteral("CorvinUpdate")));
    QVERIFY(!QFile::exists(m_pc->downloads()));
    QVERIFY(m_window->isAtRest());
}

void TestReinstall::wayBackIsClosedForTheWholeTime_data()
{
    QTest::addColumn<QString>("ending");
    QTest::newRow("well") << QStringLiteral("well");
    QTest::newRow("failed") << QStringLiteral("failed");
    QTest::newRow("stopped") << QStringLiteral("stopped");
}

void TestReinstall::wayBackIsClosedForTheWholeTime()
{
    QFETCH(QString, ending);
    serve();
    BoxAnswerer answers;
    if (ending == QStringLiteral("failed")) {
        m_server->serve(kSystemArchivePath, "short");
        answers.answer(kCodeOne, kOk);
    } else if (ending == QStringLiteral("stopped")) {
        answers.answer(kStopTitle, kYes);
    } else {
        answers.answer(kEndTitle, kOk);
    }
    const StopPresser stop(*m_window, kUnpacking, [&ending] { return ending == QStringLiteral("stopped"); });
    auto *page = m_window->window->findChild<Avanzate *>();
    auto *back = page->findChild<QPushButton *>(QStringLiteral("pushBtnBack"));
    auto *install = page->findChild<QPushButton *>(QStringLiteral("pushBtnInstall"));
    page->show();
    int looks = 0;
    int open = 0;
    answers.whenShown([&](QMessageBox *) {
        ++looks;
        open += back->isEnabled() ? 1 : 0;
    });
    QTest::mouseClick(install, Qt::LeftButton);
    QCOMPARE(looks, 1);
    QCOMPARE(open, 0);
    QVERIFY(back->isEnabled());
}

QTEST_MAIN(TestReinstall)
#include "tst_reinstall.moc"
