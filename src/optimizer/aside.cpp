#include "aside.h"

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
