#include "disk/aside.h"

#include "support/limits.h"
#include "support/testing.h"

class TestAside : public QObject
{
    Q_OBJECT

private slots:
#if defined(Q_OS_LINUX) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    // The first of all: the stack of a thread that has ended would be taken again.
    void workIsDoneHereWhereThereIsNoThreadToBeHad() {
        QThread *worker = nullptr;
        {
            const NoThreads noThreads;
            doAside([&worker] { worker = QThread::currentThread(); });
        }
        QCOMPARE(worker, QThread::currentThread());
    }
#endif

    void workIsDoneInAnotherThreadWhenItReturns() {
        QThread *worker = nullptr;
        doAside([&worker] { worker = QThread::currentThread(); });
        QVERIFY(worker != nullptr);
        QVERIFY(worker != QThread::currentThread());
    }

    // The work ends only after an event has been processed: were none, it would never end.
    void eventsAreProcessedMeanwhile() {
        constexpr int kLongestMs = 30000;
        QSemaphore seen;
        QTimer::singleShot(0, this, [&seen] { seen.release(); });
        bool released = false;
        doAside([&] { released = seen.tryAcquire(1, kLongestMs); });
        QVERIFY(released);
    }
};

QTEST_MAIN(TestAside)
#include "tst_aside.moc"
