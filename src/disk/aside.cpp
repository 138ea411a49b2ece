#include "aside.h"

#include "diskcalls.h"
#include "volumeflush.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>

#include <memory>

namespace {
constexpr int kRoundMs = 50;
constexpr unsigned long kPauseMs = 5;
constexpr unsigned long kBetweenAttemptsMs = 50;
} // namespace

void doAside(const std::function<void()> &work)
{
    const std::unique_ptr<QThread> thread(QThread::create(work));
    thread->start();
    while (!thread->wait(kPauseMs))
        QCoreApplication::processEvents(QEventLoop::AllEvents, kRoundMs);
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

bool flushVolumeAside(const QString &path)
{
    bool flushed = false;
    doAside([&flushed, path] { flushed = flushVolume(path); });
    return flushed;
}

bool flushFolderAside(const QString &path)
{
    bool flushed = false;
    doAside([&flushed, path] { flushed = flushFolder(path); });
    return flushed;
}
