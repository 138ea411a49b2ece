#include "aside.h"

#include "diskcalls.h"
#include "volumeflush.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>

#include <atomic>
#include <memory>

namespace {
constexpr int kRoundMs = 50;
constexpr unsigned long kPauseMs = 5;
constexpr unsigned long kBetweenAttemptsMs = 50;

/// Does @p work aside, and calls @p eachRound between two rounds of events.
void doAside(const std::function<void()> &work, const std::function<void()> &eachRound)
{
    // What the work has left is handed over in C++'s own terms too: tools that look for races do not see into Qt.
    std::atomic<bool> done{false};
    const std::unique_ptr<QThread> thread(QThread::create([&work, &done] {
        work();
        done.store(true, std::memory_order_release);
    }));
    thread->start();
    // The system has no thread left to give: the window then stands still for the call.
    if (!thread->isRunning() && !thread->isFinished())
        return work();
    while (!thread->wait(kPauseMs) || !done.load(std::memory_order_acquire)) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, kRoundMs);
        eachRound();
    }
}

using Flush = bool (*)(const QString &path, const BetweenFlushes &goOn);

bool flushAside(Flush flush, const QString &path, const std::function<bool()> &goOn)
{
    bool flushed = false;
    std::atomic<bool> ended{false};
    doAside([&flushed, &ended, flush, &path] { flushed = flush(path, [&ended] { return !ended; }); },
            [&ended, &goOn] { ended = goOn && !goOn(); });
    return flushed;
}

} // namespace

void doAside(const std::function<void()> &work)
{
    doAside(work, [] {});
}

bool doAsidePatiently(const std::function<bool()> &attempt)
{
    bool done = false;
    doAside([&done, &attempt] {
        const QDeadlineTimer deadline(patienceMs());
        for (done = attempt(); !done && !deadline.hasExpired(); done = attempt())
            QThread::msleep(kBetweenAttemptsMs);
    });
    return done;
}

bool flushVolumeAside(const QString &path, const std::function<bool()> &goOn)
{
    return flushAside(flushVolume, path, goOn);
}

bool flushFolderAside(const QString &path, const std::function<bool()> &goOn)
{
    return flushAside(flushFolder, path, goOn);
}
