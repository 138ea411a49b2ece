#include "gapmeter.h"

#include "support/testing.h"

class TestGapMeter : public QObject
{
    Q_OBJECT

    static void serve() { QTest::qWait(20); }

private slots:
    void blockedTimeIsAGapOfTheStepThatWasShown() {
        constexpr int kBlockMs = 250;
        serve(); // the first events of a program take longer
        GapMeter meter;
        meter.start("first"_s);
        serve();
        meter.onStatusText("second\n/some/path"_s);
        serve();
        QThread::msleep(kBlockMs); // what a window does that does not answer
        serve();
        meter.onStatusText("third"_s);
        serve();
        meter.stop();
        QCOMPARE(meter.steps().size(), 3);
        QVERIFY(meter.steps().at(1).longestGapMs >= kBlockMs);
        QVERIFY(meter.steps().at(0).longestGapMs < meter.steps().at(1).longestGapMs);
        QVERIFY(meter.steps().at(2).longestGapMs < meter.steps().at(1).longestGapMs);
        QCOMPARE(meter.steps().at(1).worstPlace, "second\n/some/path"_s);
        QCOMPARE(meter.longestGapMs(), meter.steps().at(1).longestGapMs);
    }

    void servedTimeIsNoGap() {
        GapMeter meter;
        meter.start("only"_s);
        for (int i = 0; i < 10; ++i)
            serve();
        meter.stop();
        QVERIFY(meter.totalMs() >= 200);
        QVERIFY(meter.longestGapMs() < meter.totalMs() / 2);
    }

    void countersAndPathsDoNotMakeAnotherStep() {
        GapMeter meter;
        meter.start("start"_s);
        for (const char *text : {"Scansione... [250]", "Scansione... [500]", "(1/2) Cartelle  : Titoli\n[12] /a/b",
                                 "(2/2) Cartelle  : Titoli\n[7] /c"})
            meter.onStatusText(QLatin1String(text));
        meter.stop();
        QCOMPARE(meter.steps().size(), 3);
        QCOMPARE(meter.steps().at(1).name, "Scansione..."_s);
        QCOMPARE(meter.steps().at(2).name, "Cartelle : Titoli"_s);
    }

    void stepsAddUpToTheWhole() {
        constexpr int kManySteps = 2000;
        GapMeter meter;
        meter.start("one"_s);
        for (int i = 0; i < kManySteps; ++i)
            meter.onStatusText("step [%1]"_s.arg(i));
        serve();
        meter.stop();
        qint64 sum = 0;
        for (const GapMeter::Step &step : meter.steps())
            sum += step.totalMs();
        QVERIFY2(qAbs(sum - meter.totalMs()) <= meter.steps().size() + 1, qPrintable(QString::number(sum)));
    }

    void textsOutsideTheMeasurementDoNotCount() {
        GapMeter meter;
        meter.onStatusText("before"_s);
        meter.start("one"_s);
        meter.stop();
        meter.onStatusText("after"_s);
        QCOMPARE(meter.steps().size(), 1);
    }
};

QTEST_GUILESS_MAIN(TestGapMeter)
#include "tst_gapmeter.moc"
