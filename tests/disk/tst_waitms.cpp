#include "disk/waitms.h"

#include "support/testing.h"

class TestWaitMs : public QObject
{
    Q_OBJECT

private slots:
    void lastsAtLeastItsTimeAndWorksOffPendingEvents_data() {
        columns<int>("milliseconds");
        row("none", 0);
        row("negative", -5);
        row("most negative", std::numeric_limits<int>::min());
        row("one", 1);
        row("below a round", 99);
        row("a round", 100);
        row("more than two rounds", 250);
    }

    void lastsAtLeastItsTimeAndWorksOffPendingEvents() {
        QFETCH(int, milliseconds);
        bool called = false;
        QTimer::singleShot(0, this, [&called] { called = true; });
        QElapsedTimer clock;
        clock.start();
        waitMs(milliseconds);
        QVERIFY(clock.elapsed() >= milliseconds);
        QVERIFY(called);
    }

    void keepsTheEventLoopAlive() {
        int ticks = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&ticks] { ++ticks; });
        timer.start(10);
        waitMs(200);
        // Twenty on an idle machine; a wait without events would see none.
        QVERIFY2(ticks >= 3, qPrintable(QString::number(ticks)));
    }

    void endsThoughEventsNeverCease() {
        // A timer of zero is always due: the wait must not stay inside one round.
        QTimer busy;
        busy.start(0);
        QElapsedTimer clock;
        clock.start();
        waitMs(150);
        QVERIFY(clock.elapsed() < 5000);
    }
};

QTEST_MAIN(TestWaitMs)
#include "tst_waitms.moc"
