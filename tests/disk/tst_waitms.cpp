#include "disk/waitms.h"

#include <QElapsedTimer>
#include <QTest>
#include <QTimer>

class TestWaitMs : public QObject
{
    Q_OBJECT

private slots:
    void lastsAtLeastItsTime_data();
    void lastsAtLeastItsTime();
    void keepsTheEventLoopAlive();
    void worksOffPendingEventsEvenForNoTime_data();
    void worksOffPendingEventsEvenForNoTime();
    void endsThoughEventsNeverCease();
};

void TestWaitMs::lastsAtLeastItsTime_data()
{
    QTest::addColumn<int>("milliseconds");
    QTest::newRow("none") << 0;
    QTest::newRow("one") << 1;
    QTest::newRow("below a round") << 99;
    QTest::newRow("a round") << 100;
    QTest::newRow("more than two rounds") << 250;
}

void TestWaitMs::lastsAtLeastItsTime()
{
    QFETCH(int, milliseconds);
    QElapsedTimer clock;
    clock.start();
    waitMs(milliseconds);
    QVERIFY(clock.elapsed() >= milliseconds);
}

void TestWaitMs::keepsTheEventLoopAlive()
{
    int ticks = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&ticks] { ++ticks; });
    timer.start(10);
    waitMs(200);
    // Twenty on an idle machine; a wait without events would see none.
    QVERIFY2(ticks >= 3, qPrintable(QString::number(ticks)));
}

void TestWaitMs::worksOffPendingEventsEvenForNoTime_data()
{
    QTest::addColumn<int>("milliseconds");
    QTest::newRow("zero") << 0;
    QTest::newRow("negative") << -5;
    QTest::newRow("most negative") << std::numeric_limits<int>::min();
}

void TestWaitMs::worksOffPendingEventsEvenForNoTime()
{
    QFETCH(int, milliseconds);
    bool called = false;
    QMetaObject::invokeMethod(
        this, [&called] { called = true; }, Qt::QueuedConnection);
    waitMs(milliseconds);
    QVERIFY(called);
}

void TestWaitMs::endsThoughEventsNeverCease()
{
    // A timer of zero is always due: the wait must not stay inside one round.
    QTimer busy;
    busy.start(0);
    QElapsedTimer clock;
    clock.start();
    waitMs(150);
    QVERIFY(clock.elapsed() < 5000);
}

QTEST_MAIN(TestWaitMs)
#include "tst_waitms.moc"
