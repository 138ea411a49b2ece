#include "app/mainwindow.h"
#include "procedures/updateserver.h"

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

const QString kDownloading = QStringLiteral("Scarico l' ultima release dal sito Q-Arte...");
const QString kCopying = QStringLiteral("Copia dei files dell' aggiornamento...");
const QString kStopTitle = QStringLiteral("Interrompi Operazione");
const QString kEndTitle = QStringLiteral("Fine operazioni");
const QString kYes = QStringLiteral("Si");
const QString kOk = QStringLiteral("OK");
constexpr int kLeast = 10000;

QString errorTitle(int code)
{
    return QStringLiteral("Download Error , Cod %1").arg(code);
}

} // namespace

class TestSystemUpdate : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void updateReachesThePlayer();
    void textsAppearInTheirOrder();
    void finalMessageIsLeftOutWhenNotWanted();
    void updateOnARealVolume();
    void absentPlayerIsToldOf();
    void failedDownloadIsCodeOne_data();
    void failedDownloadIsCodeOne();
    void missingToolIsCodeTwo();
    void archiveWithoutAnUpdateIsCodeThree_data();
    void archiveWithoutAnUpdateIsCodeThree();
    void oldUpdateThatCannotBeRemovedIsCodeThree();
    void refusedCopyErrorIsCodeThree();
    void fullPlayerIsCodeThree();
    void pulledPlayerIsCodeThreeAndNothingLandsOnThePc();
    void playerPulledDuringTheCopyIsCodeThree();
    void readOnlyPlayerIsCodeThree_data();
    void readOnlyPlayerIsCodeThree();
    void oldUpdateIsFoundWhateverItsCase();
    void onlyNamesWithADotAreCopied();
    void stopInTheDownloadIsSilent();
    void stopInTheUnpackingIsSilent();
    void stopInTheCopyIsCodeThreeAndLeavesNothing();
    void stopFromAnEarlierRunDoesNotCount();
    void widgetsComeBackAfterTheSlot();

private:
    void serveUpdate(const Entries &entries = {{QStringLiteral("CorvinUpdate/sub/a.exe"), "new a"},
                                               {QStringLiteral("CorvinUpdate/.hidden.cfg"), "new b"}})
    {
        m_server->serve(kUpdateArchivePath, zipOf(entries, QStringLiteral("CorvinUpdate/"), kLeast));
    }
    bool update(bool showFinalMessage = false) { return updateSystem(*m_window, showFinalMessage); }
    void expectError(BoxAnswerer &answers, int code) { answers.answer(errorTitle(code), kOk); }
    void checkErrorBox(const BoxAnswerer &answers) const;

    QScopedPointer<TemporaryPc> m_pc;
    QScopedPointer<ProgramFolder> m_programs;
    QScopedPointer<HttpServer> m_server;
    QScopedPointer<SimulatedPlayer> m_player;
    QScopedPointer<ProcedureWindow> m_window;
};

void TestSystemUpdate::init()
{
    m_pc.reset(new TemporaryPc);
    m_programs.reset(new ProgramFolder);
    addUnar(*m_programs);
    m_server.reset(new HttpServer);
    qputenv("CORVIN_UPDATE_SERVER", m_server->address().toLatin1());
    m_player.reset(new SimulatedPlayer);
    m_player->addFile(QStringLiteral("CorvinUpdate/old/old.exe"), "old");
    m_player->addFile(QStringLiteral("My Songs/a.mid"), "MThd");
    m_window.reset(new ProcedureWindow);
}

void TestSystemUpdate::cleanup()
{
    m_window.reset();
    m_player.reset();
    m_server.reset();
    m_programs.reset();
    m_pc.reset();
    qunsetenv("CORVIN_UPDATE_SERVER");
}

void TestSystemUpdate::checkErrorBox(const BoxAnswerer &answers) const
{
    const BoxAnswerer::Seen box = answers.seen().value(answers.seen().size() - 1);
    QCOMPARE(box.text, QStringLiteral("C'è stato un errore durante il download dell' aggiornamento di Corvin\n"
                                      "Riprovare più tardi"));
    QCOMPARE(box.icon, QMessageBox::Critical);
    QCOMPARE(box.buttons, QStringList{kOk});
}

void TestSystemUpdate::updateReachesThePlayer()
{
    serveUpdate();
    BoxAnswerer answers;
    answers.answer(kEndTitle, kOk);
    QStringList atTheEnd;
    answers.whenShown([&](QMessageBox *) {
        atTheEnd = m_player->files();
        QVERIFY(m_window->label()->isHidden());
        QVERIFY(m_window->label()->text().isEmpty());
        QVERIFY(m_window->bar()->isHidden());
    });
    QVERIFY(update(true));
    QCOMPARE(atTheEnd,
             (QStringList{QStringLiteral("CorvinUpdate/.hidden.cfg"), QStringLiteral("CorvinUpdate/filler.bin"),
                          QStringLiteral("CorvinUpdate/sub/a.exe"), QStringLiteral("My Songs/a.mid")}));
    QCOMPARE(m_player->content(QStringLiteral("CorvinUpdate/sub/a.exe")), QByteArray("new a"));
    QCOMPARE(m_player->content(QStringLiteral("CorvinUpdate/filler.bin")), noise(kLeast));
    QCOMPARE(answers.seen().first().text,
             QStringLiteral("Aggiornamento scaricato.\nSpegnere il Corvin e scollegare dal PC e riaccendere Corvin.\n"
                            "Se viene chiesto di riavviare, spegnere e accendere\n"
                            "finchè non appare la lista delle canzoni."));
    QCOMPARE(answers.seen().first().icon, QMessageBox::Information);
    QVERIFY(!QFile::exists(m_pc->downloads()));
}

void TestSystemUpdate::textsAppearInTheirOrder()
{
    serveUpdate();
    const LogCapture log;
    QVERIFY(update());
    const QString prefix = QStringLiteral("MainWindow::on_updateLabelAction : ");
    QCOMPARE(log.textsStartingWith(prefix),
             (QStringList{prefix + QStringLiteral("\"Cerco se Corvin4 è connesso via USB...\""),
                          prefix + QLatin1Char('"') + kDownloading + QLatin1Char('"'),
                          prefix + QLatin1Char('"') + kCopying + QLatin1Char('"')}));
}

void TestSystemUpdate::finalMessageIsLeftOutWhenNotWanted()
{
    serveUpdate();
    const BoxAnswerer answers;
    QVERIFY(update(false));
    QVERIFY(answers.seen().isEmpty());
    QVERIFY(!QFile::exists(m_pc->downloads()));
}

void TestSystemUpdate::updateOnARealVolume()
{
    QString why;
    if (!ExFatVolume::isPossible(&why))
        QSKIP(qPrintable(why));
    const MountedPlayer player(16);
    QVERIFY2(player.isMounted(), qPrintable(player.volume->error()));
    putFile(player.path(QStringLiteral("corvinupdate/old.exe")), "old");
    putFile(player.path(QStringLiteral("My Songs/a.mid")), "MThd");
    serveUpdate();
    BoxAnswerer answers;
    answers.answer(kEndTitle, kOk);
    QVERIFY(update(true));
    QCOMPARE(player.files(),
             (QStringList{QStringLiteral("CorvinUpdate/.hidden.cfg"), QStringLiteral("CorvinUpdate/filler.bin"),
                          QStringLiteral("CorvinUpdate/sub/a.exe"), QStringLiteral("My Songs/a.mid")}));
    // What was flushed is there even when the cable is pulled now.
    QVERIFY(player.volume->pull());
    QVERIFY(player.volume->mount());
    QCOMPARE(contentOf(player.path(QStringLiteral("CorvinUpdate/filler.bin"))), noise(kLeast));
}

void TestSystemUpdate::absentPlayerIsToldOf()
{
    SimulatedPlayer::disconnect();
    BoxAnswerer answers;
    answers.answer(QStringLiteral("Corvin4 non è stato trovato"), kOk);
    QVERIFY(!update(true));
    QCOMPARE(answers.seen().first().text,
             QStringLiteral("Spegnere Corvin4 e connetterlo alla porta USB del PC.\nQuindi accendere Corvin4 e\n"
                            "quando appare la schermata di connessione sul display di Corvin,\n"
                            "cliccare ancora su START"));
    QVERIFY(m_server->requests().isEmpty());
}

void TestSystemUpdate::failedDownloadIsCodeOne_data()
{
    QTest::addColumn<int>("size");
    QTest::newRow("not on the server") << -1;
    QTest::newRow("9999 bytes") << kLeast - 1;
}

void TestSystemUpdate::failedDownloadIsCodeOne()
{
    QFETCH(int, size);
    if (size >= 0)
        m_server->serve(kUpdateArchivePath, noise(size));
    BoxAnswerer answers;
    expectError(answers, 1);
    QVERIFY(!update(true));
    checkErrorBox(answers);
    QVERIFY(m_player->exists(QStringLiteral("CorvinUpdate/old/old.exe")));
    // Left as it is.
    QVERIFY(QFile::exists(m_pc->downloads()));
}

void TestSystemUpdate::missingToolIsCodeTwo()
{
    serveUpdate();
    m_programs->remove(QStringLiteral("unar"));
    m_programs->hideOthers();
    BoxAnswerer answers;
    expectError(answers, 2);
    QVERIFY(!update(true));
    checkErrorBox(answers);
    QVERIFY(m_player->exists(QStringLiteral("CorvinUpdate/old/old.exe")));
    QVERIFY(QFile::exists(m_pc->downloads() + QStringLiteral("/CorvinUpdate.c4")));
}

void TestSystemUpdate::archiveWithoutAnUpdateIsCodeThree_data()
{
    QTest::addColumn<bool>("isZip");
    QTest::newRow("long error page") << false;
    QTest::newRow("another archive") << true;
}

void TestSystemUpdate::archiveWithoutAnUpdateIsCodeThree()
{
    QFETCH(bool, isZip);
    if (isZip)
        m_server->serve(kUpdateArchivePath, zipOf({}, QStringLiteral("Other/"), kLeast));
    else
        m_server->serveError(kUpdateArchivePath, 404, noise(kLeast));
    BoxAnswerer answers;
    expectError(answers, 3);
    QVERIFY(!update(true));
    checkErrorBox(answers);
    QVERIFY(!QFile::exists(m_pc->downloads()));
}

void TestSystemUpdate::oldUpdateThatCannotBeRemovedIsCodeThree()
{
    QVERIFY(QDir(m_player->path(QStringLiteral("CorvinUpdate"))).removeRecursively());
    m_player->addFile(QStringLiteral("CorvinUpdate"), "a file");
    serveUpdate();
    BoxAnswerer answers;
    answers.answer(QStringLiteral("ERRORE"), kOk);
    expectError(answers, 3);
    QVERIFY(!update(true));
    QCOMPARE(answers.seen().first().text, QStringLiteral("ERRORE"));
    QCOMPARE(answers.seen().first().icon, QMessageBox::Information);
    checkErrorBox(answers);
    QVERIFY(!QFile::exists(m_pc->downloads()));
}

void TestSystemUpdate::refusedCopyErrorIsCodeThree()
{
    // A sub-folder whose name has a dot is listed like a file, and cannot be copied as one.
    serveUpdate({{QStringLiteral("CorvinUpdate/aaa.exe"), "a"}, {QStringLiteral("CorvinUpdate/v1.0/b.exe"), "b"}});
    BoxAnswerer answers;
    answers.answer(QStringLiteral("Errore sulla copia"), QStringLiteral("No"));
    expectError(answers, 3);
    QVERIFY(!update(true));
    QVERIFY(answers.seen().first().text.contains(m_player->path(QStringLiteral("CorvinUpdate/v1.0"))));
    checkErrorBox(answers);
    QCOMPARE(m_player->files(), QStringList{QStringLiteral("My Songs/a.mid")});
    QVERIFY(!m_player->exists(QStringLiteral("CorvinUpdate")));
    QVERIFY(!QFile::exists(m_pc->downloads()));
}

void TestSystemUpdate::fullPlayerIsCodeThree()
{
    QString why;
    if (!ExFatVolume::isPossible(&why))
        QSKIP(qPrintable(why));
    const MountedPlayer player(4);
    QVERIFY2(player.isMounted(), qPrintable(player.volume->error()));
    serveUpdate({{QStringLiteral("CorvinUpdate/a.exe"), "a"}, {QStringLiteral("CorvinUpdate/z.exe"), noise(6000000)}});
    BoxAnswerer answers;
    answers.answer(QStringLiteral("Errore sulla copia"), QStringLiteral("No"));
    expectError(answers, 3);
    QVERIFY(!update(true));
    QCOMPARE(player.files(), QStringList{});
    QVERIFY(!QFile::exists(player.path(QStringLiteral("CorvinUpdate"))));
}

void TestSystemUpdate::pulledPlayerIsCodeThreeAndNothingLandsOnThePc()
{
    serveUpdate();
    connect(m_server.data(), &HttpServer::answered, this, [] { SimulatedPlayer::disconnect(); });
    BoxAnswerer answers;
    expectError(answers, 3);
    QVERIFY(!update(true));
    checkErrorBox(answers);
    QVERIFY(!m_player->exists(QStringLiteral("CorvinUpdate/sub/a.exe")));
}

void TestSystemUpdate::playerPulledDuringTheCopyIsCodeThree()
{
    QString why;
    if (!ExFatVolume::isPossible(&why))
        QSKIP(qPrintable(why));
    const MountedPlayer player(16);
    QVERIFY2(player.isMounted(), qPrintable(player.volume->error()));
    serveUpdate({{QStringLiteral("CorvinUpdate/a.exe"), "a"},
                 {QStringLiteral("CorvinUpdate/b.exe"), "b"},
                 {QStringLiteral("CorvinUpdate/c.exe"), "c"}});
    // The mount point is left, an ordinary folder that takes the rest without an error.
    bool pulled = false;
    connect(m_window->bar(), &QProgressBar::valueChanged, this, [&](int value) {
        if (m_window->status() == kCopying && value == 1 && !pulled)
            pulled = player.volume->pull();
    });
    BoxAnswerer answers;
    expectError(answers, 3);
    QVERIFY(!update(true));
    QVERIFY(pulled);
    QCOMPARE(player.files(), QStringList{});
}

void TestSystemUpdate::readOnlyPlayerIsCodeThree_data()
{
    QTest::addColumn<bool>("oldUpdate");
    QTest::newRow("an old update cannot be removed") << true;
    QTest::newRow("a folder cannot be made") << false;
}

void TestSystemUpdate::readOnlyPlayerIsCodeThree()
{
    QFETCH(bool, oldUpdate);
    if (!oldUpdate)
        QVERIFY(QDir(m_player->path(QStringLiteral("CorvinUpdate"))).removeRecursively());
    const Mount mount(QDir::cleanPath(m_player->root()));
    if (!mount.isGood())
        QSKIP("Nothing can be mounted here");
    serveUpdate();
    BoxAnswerer answers;
    answers.answer(QStringLiteral("ERRORE"), kOk);
    expectError(answers, 3);
    QVERIFY(!update(true));
    checkErrorBox(answers);
    QCOMPARE(m_player->exists(QStringLiteral("CorvinUpdate/old/old.exe")), oldUpdate);
    QVERIFY(!QFile::exists(m_pc->downloads()));
}

void TestSystemUpdate::oldUpdateIsFoundWhateverItsCase()
{
    QVERIFY(QDir(m_player->path(QStringLiteral("CorvinUpdate"))).removeRecursively());
    m_player->addFile(QStringLiteral("CORVINUPDATE/old.exe"), "old");
    serveUpdate();
    QVERIFY(update());
    QCOMPARE(m_player->folders(), (QStringList{QStringLiteral("CorvinUpdate"), QStringLiteral("My Songs")}));
    QVERIFY(m_player->exists(QStringLiteral("CorvinUpdate/sub/a.exe")));
}

void TestSystemUpdate::onlyNamesWithADotAreCopied()
{
    serveUpdate({{QStringLiteral("CorvinUpdate/README"), "no"},
                 {QStringLiteral("CorvinUpdate/plain/deep/b.txt"), "yes"},
                 {QStringLiteral("CorvinUpdate/v1.0/c.txt"), "yes"}});
    BoxAnswerer answers;
    answers.answer(QStringLiteral("Errore sulla copia"), kYes);
    QVERIFY(update());
    QCOMPARE(m_player->files(QStringLiteral("CorvinUpdate")),
             (QStringList{QStringLiteral("CorvinUpdate/filler.bin"), QStringLiteral("CorvinUpdate/plain/deep/b.txt"),
                          QStringLiteral("CorvinUpdate/v1.0/c.txt")}));
}

void TestSystemUpdate::stopInTheDownloadIsSilent()
{
    // Enough has come to count as a release, and still nothing more happens.
    m_server->serveStalled(kUpdateArchivePath, noise(40000), 20000);
    BoxAnswerer answers;
    answers.answer(kStopTitle, kYes);
    const StopPresser stop(*m_window, kDownloading, [this] { return m_window->bar()->value() == 50; });
    QVERIFY(!update(true));
    QVERIFY(stop.pressed);
    QCOMPARE(answers.seen().size(), 1);
    QVERIFY(m_player->exists(QStringLiteral("CorvinUpdate/old/old.exe")));
}

void TestSystemUpdate::stopInTheUnpackingIsSilent()
{
    serveUpdate();
    m_programs->addStandIn(QStringLiteral("unar"), {Does::waitForever()});
    BoxAnswerer answers;
    answers.answer(kStopTitle, kYes);
    const StopPresser stop(*m_window, kDownloading, [this] { return m_window->bar()->maximum() == 0; });
    QVERIFY(!update(true));
    QVERIFY(stop.pressed);
    QCOMPARE(answers.seen().size(), 1);
    QVERIFY(m_player->exists(QStringLiteral("CorvinUpdate/old/old.exe")));
}

void TestSystemUpdate::stopInTheCopyIsCodeThreeAndLeavesNothing()
{
    Entries entries;
    for (int i = 0; i < 400; ++i)
        entries.insert(QStringLiteral("CorvinUpdate/%1.dat").arg(i), noise(2000));
    serveUpdate(entries);
    BoxAnswerer answers;
    answers.answer(kStopTitle, kYes);
    expectError(answers, 3);
    const StopPresser stop(*m_window, kCopying, [this] { return m_window->bar()->value() > 0; });
    QVERIFY(!update(true));
    QVERIFY(stop.pressed);
    checkErrorBox(answers);
    QVERIFY(!m_player->exists(QStringLiteral("CorvinUpdate")));
    QVERIFY(!QFile::exists(m_pc->downloads()));
    QVERIFY(m_player->exists(QStringLiteral("My Songs/a.mid")));
}

void TestSystemUpdate::stopFromAnEarlierRunDoesNotCount()
{
    serveUpdate();
    (*m_window)->abortRequested = true;
    QVERIFY(update());
}

void TestSystemUpdate::widgetsComeBackAfterTheSlot()
{
    serveUpdate();
    bool shown = false;
    QTimer look;
    connect(&look, &QTimer::timeout, this, [&] {
        shown =
            shown || (m_window->label()->isVisible() && m_window->bar()->isVisible() && m_window->stop()->isVisible());
    });
    look.start(5);
    BoxAnswerer answers;
    answers.answer(kEndTitle, kOk);
    m_window->run("updateCorvinWithLastRelease");
    QVERIFY(shown);
    QVERIFY(m_window->isAtRest());
    QVERIFY(m_player->exists(QStringLiteral("CorvinUpdate/sub/a.exe")));
}

QTEST_MAIN(TestSystemUpdate)
#include "tst_systemupdate.moc"
