#include "italianwindow.h"
#include "optimizer/ottimizza.h"
#include "support/answers.h"
#include "support/boxtexts.h"
#include "support/logcapture.h"
#include "transfer/transfer.h"

class TestStopAndClose : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { startInItalian(); }

    void stopTakesEffectOnceItIsConfirmed_data() {
        columns<Answer, bool>("answer", "stops");
        row("Si", pressing(Buttons::kSi), true);
        row("Enter", striking(Qt::Key_Return), true);
        row("No", pressing(Buttons::kNo), false);
        row("Escape", striking(Qt::Key_Escape), false);
        row("the box's close button", closing(), false);
    }
    void stopTakesEffectOnceItIsConfirmed() {
        QFETCH(Answer, answer);
        QFETCH(bool, stops);
        const MainWindow window;
        const QSignalSpy stopped(&window, &MainWindow::stopActionPressed);
        BoxAnswerer boxes;
        answer(boxes, Titles::kStop);
        const LogCapture log;
        button(window, "pushButtonStop")->click();
        QCOMPARE(window.abortRequested, stops);
        QCOMPARE(stopped.size(), stops ? 1 : 0);
        QCOMPARE(pageOf<Ottimizza>(window)->abortRequested, stops);
        QCOMPARE(pageOf<Transfer>(window)->aborted, stops);
        const QString line = "MainWindow::on_pushButtonStop_clicked : !!! ABORT PRESSED !!!"_s;
        QCOMPARE(log.contains(QtInfoMsg, line), stops);
        QCOMPARE(log.textsStartingWith("MainWindow::on_pushButtonStop_clicked"_s).size(), stops ? 1 : 0);
    }

    // Whoever hears of the stop finds it noted and logged.
    void stopIsNotedAndLoggedBeforeItIsTold() {
        MainWindow window;
        BoxAnswerer boxes;
        boxes.answer(Titles::kStop, Buttons::kSi);
        const LogCapture log;
        int told = 0;
        connect(&window, &MainWindow::stopActionPressed, this, [&] {
            ++told;
            QVERIFY(window.abortRequested);
            QVERIFY(log.contains(QtInfoMsg, "MainWindow::on_pushButtonStop_clicked : !!! ABORT PRESSED !!!"_s));
        });
        window.on_pushButtonStop_clicked();
        QCOMPARE(told, 1);
    }

    void stopBoxIsAsAgreed() {
        MainWindow window;
        BoxAnswerer boxes;
        boxes.answer(Titles::kStop, Buttons::kNo);
        window.on_pushButtonStop_clicked();
        BoxAnswerer::Seen seen = boxes.seen().first();
        QCOMPARE(seen.text, Texts::kStop);
        seen.buttons.sort();
        QCOMPARE(seen.buttons, QStringList({Buttons::kNo, Buttons::kSi}));
        QCOMPARE(seen.defaultButton, Buttons::kSi);
        QVERIFY(seen.hadParent);
    }

    void closingIsRefusedWhileFinishIsPending() {
        MainWindow window;
        window.show();
        button(window, "pushBtnForward")->setEnabled(true);
        BoxAnswerer boxes;
        boxes.answer(Titles::kNotClosed, Buttons::kOk);
        QVERIFY(!window.close());
        QVERIFY(window.isVisible());
        const BoxAnswerer::Seen seen = boxes.seen().first();
        QCOMPARE(seen.text, Texts::kNotClosed);
        QCOMPARE(seen.buttons, QStringList(Buttons::kOk));
        QCOMPARE(seen.icon, QMessageBox::Information);
    }

    // The user has gone back to the menu: Enter there must not press what cannot be seen.
    void finishOfAPageThatIsNotShownGetsNoFocus() {
        MainWindow window;
        window.show();
        window.on_checkDone();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QWidget *menuButton = child<QWidget>(window, "pushBtnTransfer");
        menuButton->setFocus();
        button(window, "pushBtnForward")->setEnabled(true);
        BoxAnswerer boxes;
        boxes.answer(Titles::kNotClosed, Buttons::kOk);
        QVERIFY(!window.close());
        QCOMPARE(window.focusWidget(), menuButton);
    }

    void closingTakesPlaceOnceFinishIsDone() {
        MainWindow window;
        window.show();
        QPushButton *finish = button(window, "pushBtnForward");
        QVERIFY(!finish->isEnabled());
        finish->setEnabled(true);
        finish->setEnabled(false);
        // Any box would fail here.
        const BoxAnswerer boxes;
        QVERIFY(window.close());
        QVERIFY(!window.isVisible());
    }
};

PAGE_TEST_MAIN(TestStopAndClose)
#include "tst_stopandclose.moc"
