#include "app/mainwindow.h"

#include "app/appsettings.h"
#include "app/shared/sharedfonts.h"
#include "optimizer/endottimizza.h"
#include "optimizer/ottimizza.h"
#include "pages/check.h"
#include "pages/connect.h"
#include "pages/firstmenu.h"
#include "resources/resources.h"
#include "support/boxanswerer.h"
#include "support/httpserver.h"
#include "support/simulatedplayer.h"
#include "transfer/transfer.h"
#include "windowparts.h"

#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

using namespace WindowParts;

namespace {

QTimer *connectionTimer(const MainWindow &window)
{
    const QList<QTimer *> timers = window.findChildren<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
    return timers.size() == 1 ? timers.first() : nullptr;
}

} // namespace

class TestConnectionWatch : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void withoutAPlayerTheConnectionPageAppearsAndStays();
    void pluggingInLeadsToTheCheck();
    void playerThatIsThereAtTheStartIsCheckedAtOnce();
    void watchNeverStartsAgain();
    void missingSystemFileLeadsToTheMenuAfterTheOffer();
    void transferIsPreparedWithTheRootOfTheMoment();
    void finishButtonStartsTheOptimisation();
};

void TestConnectionWatch::initTestCase()
{
    loadResources();
    registerEmbeddedFonts();
}

void TestConnectionWatch::init()
{
    SimulatedPlayer::disconnect();
    appSettings().setValue(QStringLiteral("Application/Language"), QStringLiteral("lang_it"));
}

void TestConnectionWatch::withoutAPlayerTheConnectionPageAppearsAndStays()
{
    MainWindow window;
    window.show();
    QVERIFY(connectionTimer(window));
    QCOMPARE(connectionTimer(window)->interval(), 500);
    QVERIFY(!connectionTimer(window)->isSingleShot());
    QSignalSpy ticks(connectionTimer(window), &QTimer::timeout);
    QVERIFY(page<Connect>(window)->isHidden());
    QTRY_VERIFY(page<Connect>(window)->isVisible());
    QCOMPARE(ticks.size(), 1);
    QTRY_COMPARE(ticks.size(), 3);
    QVERIFY(page<Connect>(window)->isVisible());
    QVERIFY(page<Check>(window)->isHidden());
}

void TestConnectionWatch::pluggingInLeadsToTheCheck()
{
    SimulatedPlayer player;
    player.addSystemFiles();
    SimulatedPlayer::disconnect();
    MainWindow window;
    window.show();
    QTRY_VERIFY(page<Connect>(window)->isVisible());

    QSignalSpy ticks(connectionTimer(window), &QTimer::timeout);
    player.connect();
    QTRY_VERIFY(page<Check>(window)->isVisible());
    QCOMPARE(ticks.size(), 1);
    QVERIFY(page<Connect>(window)->isHidden());

    auto *forward = page<Check>(window)->findChild<QPushButton *>(QStringLiteral("pushButton"));
    QVERIFY(forward);
    QTRY_VERIFY(forward->isVisible());
    forward->click();
    QVERIFY(page<Check>(window)->isHidden());
    QVERIFY(page<FirstMenu>(window)->isVisible());
}

void TestConnectionWatch::playerThatIsThereAtTheStartIsCheckedAtOnce()
{
    SimulatedPlayer player;
    player.addSystemFiles();
    MainWindow window;
    window.show();
    auto *forward = page<Check>(window)->findChild<QPushButton *>(QStringLiteral("pushButton"));
    QTRY_VERIFY(forward->isVisible());
    QVERIFY(page<Connect>(window)->isHidden());
}

void TestConnectionWatch::watchNeverStartsAgain()
{
    SimulatedPlayer player;
    player.addSystemFiles();
    MainWindow window;
    window.show();
    QTRY_VERIFY(!connectionTimer(window)->isActive());
    SimulatedPlayer::disconnect();
    auto *forward = page<Check>(window)->findChild<QPushButton *>(QStringLiteral("pushButton"));
    BoxAnswerer answerer;
    // Whether the check saw the files before the cable was pulled is of no matter here.
    answerer.answerAlways(QStringLiteral("File di sistema mancanti"), QStringLiteral("No"));
    QTRY_VERIFY(forward->isVisible() || page<FirstMenu>(window)->isVisible());
    window.on_checkDone();
    QVERIFY(!connectionTimer(window)->isActive());
    QVERIFY(page<Connect>(window)->isHidden());
    QVERIFY(page<FirstMenu>(window)->isVisible());
}

void TestConnectionWatch::missingSystemFileLeadsToTheMenuAfterTheOffer()
{
    SimulatedPlayer player;
    HttpServer server;
    qputenv("CORVIN_UPDATE_SERVER", server.address().toLatin1());
    BoxAnswerer answerer;
    answerer.answer(QStringLiteral("File di sistema mancanti"), QStringLiteral("Yes"));
    // The server has no system: the reinstallation fails, and the way leads on all the same.
    answerer.answer(QStringLiteral("Download Error , Cod 1"), QStringLiteral("OK"));
    MainWindow window;
    window.show();
    QTRY_VERIFY(page<FirstMenu>(window)->isVisible());
    qunsetenv("CORVIN_UPDATE_SERVER");
    QCOMPARE(server.requests(), QStringList{QStringLiteral("/download/Corvin4/CorvinAll.zip")});
    QVERIFY(page<Check>(window)->isHidden());
    QVERIFY(child<QProgressBar>(window, "progressBar")->isHidden());
}

void TestConnectionWatch::transferIsPreparedWithTheRootOfTheMoment()
{
    MainWindow window;
    window.on_gotoTransfer();
    QCOMPARE(page<Transfer>(window)->deviceRoot, QString());
    const SimulatedPlayer player;
    window.on_gotoTransfer();
    QCOMPARE(page<Transfer>(window)->deviceRoot, player.root());
}

void TestConnectionWatch::finishButtonStartsTheOptimisation()
{
    SimulatedPlayer player;
    player.addFile(QStringLiteral("My Songs/notes.txt"));
    MainWindow window;
    window.show();
    window.on_checkDone();
    window.on_gotoTransfer();
    auto *finish = page<Transfer>(window)->findChild<QPushButton *>(QStringLiteral("pushBtnForward"));
    QVERIFY(finish);
    finish->setEnabled(true);
    finish->click();
    QVERIFY(!finish->isEnabled());
    QVERIFY(page<Transfer>(window)->isHidden());
    QVERIFY(page<Ottimizza>(window)->isHidden());
    QVERIFY(!page<EndOttimizza>(window)->isHidden());
    QVERIFY(!player.exists(QStringLiteral("My Songs/notes.txt")));
    QVERIFY(player.exists(QStringLiteral("CorvinImportDB.sql")));
    QVERIFY(child<QProgressBar>(window, "progressBar")->isHidden());
}

QTEST_MAIN(TestConnectionWatch)
#include "tst_connectionwatch.moc"
