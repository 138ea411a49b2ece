#include "gapmeter.h"

#include <QCoreApplication>
#include <QTest>
#include <QThread>

namespace {

constexpr int kBlockMs = 250;

void serve()
{
    QTest::qWait(20);
}

/// What a window does that does not answer.
void block()
{
    QThread::msleep(kBlockMs);
}

} // namespace

class TestGapMeter : public QObject
{
    Q_OBJECT

private slots:
    void blockedTimeIsAGapOfTheStepThatWasShown();
    void servedTimeIsNoGap();
    void countersAndPathsDoNotMakeAnotherStep();
    void stepsAddUpToTheWhole();
    void textsOutsideTheMeasurementDoNotCount();
};

void TestGapMeter::blockedTimeIsAGapOfTheStepThatWasShown()
{
    serve(); // the first events of a program take longer
    GapMeter meter;
    meter.start(QStringLiteral("first"));
    serve();
    meter.onStatusText(QStringLiteral("second\n/some/path"));
    serve();
    block();
    serve();
    meter.onStatusText(QStringLiteral("third"));
    serve();
    meter.stop();
    QCOMPARE(meter.steps().size(), 3);
    QVERIFY(meter.steps().at(1).longestGapMs >= kBlockMs);
    QVERIFY(meter.steps().at(0).longestGapMs < meter.steps().at(1).longestGapMs);
    QVERIFY(meter.steps().at(2).longestGapMs < meter.steps().at(1).longestGapMs);
    QCOMPARE(meter.steps().at(1).worstPlace, QStringLiteral("second\n/some/path"));
    QCOMPARE(meter.longestGapMs(), meter.steps().at(1).longestGapMs);
}

void TestGapMeter::servedTimeIsNoGap()
{
    GapMeter meter;
    meter.start(QStringLiteral("only"));
    for (int i = 0; i < 10; ++i)
        serve();
    meter.stop();
    QVERIFY(meter.totalMs() >= 200);
    QVERIFY(meter.longestGapMs() < meter.totalMs() / 2);
}

void TestGapMeter::countersAndPathsDoNotMakeAnotherStep()
{
    GapMeter meter;
    meter.start(QStringLiteral("start"));
    meter.onStatusText(QStringLiteral("Scansione... [250]"));
    meter.onStatusText(QStringLiteral("Scansione... [500]"));
    meter.onStatusText(QStringLiteral("(1/2) Cartelle  : Titoli\n[12] /a/b"));
    meter.onStatusText(QStringLiteral("(2/2) Cartelle  : Titoli\n[7] /c"));
    meter.stop();
    QCOMPARE(meter.steps().size(), 3);
    QCOMPARE(meter.steps().at(1).name, QStringLiteral("Scansione..."));
    QCOMPARE(meter.steps().at(2).name, QStringLiteral("Cartelle : Titoli"));
}

void TestGapMeter::stepsAddUpToTheWhole()
{
    constexpr int kManySteps = 2000;
    GapMeter meter;
    meter.start(QStringLiteral("one"));
    for (int i = 0; i < kManySteps; ++i)
        meter.onStatusText(QStringLiteral("step [%1]").arg(i));
    serve();
    meter.stop();
    qint64 sum = 0;
    for (const GapMeter::Step &step : meter.steps())
        sum += step.totalMs();
    QVERIFY2(qAbs(sum - meter.totalMs()) <= meter.steps().size() + 1, qPrintable(QString::number(sum)));
}

void TestGapMeter::textsOutsideTheMeasurementDoNotCount()
{
    GapMeter meter;
    meter.onStatusText(QStringLiteral("before"));
    meter.start(QStringLiteral("one"));
    meter.stop();
    meter.onStatusText(QStringLiteral("after"));
    QCOMPARE(meter.steps().size(), 1);
}

QTEST_GUILESS_MAIN(TestGapMeter)
#include "tst_gapmeter.moc"
