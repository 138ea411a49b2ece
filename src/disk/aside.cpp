#include "aside.h"

#include "volumeflush.h"

#include <QCoreApplication>
#include <QThread>

#include <memory>

namespace {
constexpr int kRoundMs = 50;
constexpr unsigned long kPauseMs = 5;
} // namespace

void doAside(const std::function<void()> &work)
{
    const std::unique_ptr<QThread> thread(QThread::create(work));
    thread->start();
    while (!thread->wait(kPauseMs))
        QCoreApplication::processEvents(QEventLoop::AllEvents, kRoundMs);
}

bool flushVolumeAside(const QString &path)
{
    bool flushed = false;
    doAside([&flushed, path] { flushed = flushVolume(path); });
    return flushed;
}
