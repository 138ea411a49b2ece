#include "italianwindow.h"
#include "optimizer/endottimizza.h"
#include "optimizer/ottimizza.h"
#include "pages/check.h"
#include "pages/connect.h"
#include "pages/firstmenu.h"
#include "support/announcedserver.h"
#include "support/boxanswerer.h"
#include "support/boxtexts.h"
#include "support/intactplayer.h"
#include "transfer/transfer.h"

/// The main window on the screen, with what its watch for the player shows and hides.
struct ShownWindow : MainWindow
{
    ShownWindow() { show(); }

    const QList<QTimer *> timers = findChildren<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
    QTimer *const watch = timers.size() == 1 ? timers.first() : nullptr;
    Connect *const connection = pageOf<Connect>(*this);
    Check *const check = pageOf<Check>(*this);
    FirstMenu *const menu = pageOf<FirstMenu>(*this);
    Transfer *const transfer = pageOf<Transfer>(*this);
    QPushButton *const forward = button(*check, "pushButton");
};

class TestConnectionWatch : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { startInItalian(); }

    void withoutAPlayerTheConnectionPageAppearsAndStays() {
        const ShownWindow window;
        QVERIFY(window.watch);
        QCOMPARE(window.watch->interval(), 500);
        QVERIFY(!window.watch->isSingleShot());
        const QSignalSpy ticks(window.watch, &QTimer::timeout);
        QVERIFY(window.connection->isHidden());
        QTRY_VERIFY(window.connection->isVisible());
        QCOMPARE(ticks.size(), 1);
        QTRY_COMPARE(ticks.size(), 3);
        QVERIFY(window.connection->isVisible());
        QVERIFY(window.check->isHidden());
    }

    void pluggingInLeadsToTheCheck() {
        IntactPlayer player;
        SimulatedPlayer::disconnect();
        const ShownWindow window;
        QTRY_VERIFY(window.connection->isVisible());
        const QSignalSpy ticks(window.watch, &QTimer::timeout);
        player.connect();
        QTRY_VERIFY(window.check->isVisible());
        QCOMPARE(ticks.size(), 1);
        QVERIFY(window.connection->isHidden());
        QTRY_VERIFY(window.forward->isVisible());
        window.forward->click();
        QVERIFY(window.check->isHidden());
        QVERIFY(window.menu->isVisible());
    }

    void playerThatIsThereAtTheStartIsCheckedAtOnce() {
        const IntactPlayer player;
        const ShownWindow window;
        QTRY_VERIFY(window.forward->isVisible());
        QVERIFY(window.connection->isHidden());
    }

    void watchNeverStartsAgain() {
        const IntactPlayer player;
        ShownWindow window;
        QTRY_VERIFY(!window.watch->isActive());
        SimulatedPlayer::disconnect();
        BoxAnswerer answerer;
        // Whether the check saw the files before the cable was pulled is of no matter here.
        answerer.answerAlways(Titles::kSystemMissing, Buttons::kNo);
        QTRY_VERIFY(window.forward->isVisible() || window.menu->isVisible());
        window.on_checkDone();
        QVERIFY(!window.watch->isActive());
        QVERIFY(window.connection->isHidden());
        QVERIFY(window.menu->isVisible());
    }

    void missingSystemFileLeadsToTheMenuAfterTheOffer() {
        const SimulatedPlayer player;
        const AnnouncedServer server;
        BoxAnswerer answerer;
        answerer.answer(Titles::kSystemMissing, Buttons::kYes);
        // The server has no system: the reinstallation fails, and the way leads on all the same.
        answerer.answer(Titles::kDownloadError1, Buttons::kOk);
        const ShownWindow window;
        QTRY_VERIFY(window.menu->isVisible());
        QCOMPARE(server.requests(), QStringList("/download/Corvin4/CorvinAll.zip"_s));
        QVERIFY(window.check->isHidden());
        QVERIFY(child<QProgressBar>(window, "progressBar")->isHidden());
    }

    void transferIsPreparedWithTheRootOfTheMoment() {
        MainWindow window;
        window.on_gotoTransfer();
        QCOMPARE(pageOf<Transfer>(window)->deviceRoot, QString());
        const SimulatedPlayer player;
        window.on_gotoTransfer();
        QCOMPARE(pageOf<Transfer>(window)->deviceRoot, player.root());
    }

    void finishButtonStartsTheOptimisation() {
        SimulatedPlayer player;
        player.addFile("My Songs/notes.txt"_s);
        ShownWindow window;
        // As after a check. It would find this player during a slow optimisation, and ask for its system.
        window.watch->stop();
        window.on_checkDone();
        window.on_gotoTransfer();
        QPushButton *finish = button(*window.transfer, "pushBtnForward");
        finish->setEnabled(true);
        finish->click();
        QVERIFY(!finish->isEnabled());
        QVERIFY(window.transfer->isHidden());
        QVERIFY(pageOf<Ottimizza>(window)->isHidden());
        QVERIFY(!pageOf<EndOttimizza>(window)->isHidden());
        QVERIFY(!player.exists("My Songs/notes.txt"_s));
        QVERIFY(player.exists("CorvinImportDB.sql"_s));
        QVERIFY(child<QProgressBar>(window, "progressBar")->isHidden());
    }
};

PAGE_TEST_MAIN(TestConnectionWatch)
#include "tst_connectionwatch.moc"
