#include "waitms.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>

namespace {
constexpr int kLongestRoundMs = 100;
constexpr unsigned long kIdleSleepMs = 1;
} // namespace

void waitMs(int milliseconds)
{
    // A monotonic clock: a change of the system time during a wait must not stretch it.
    const QDeadlineTimer deadline(qMax(0, milliseconds), Qt::PreciseTimer);
    do {
        QCoreApplication::processEvents(QEventLoop::AllEvents, kLongestRoundMs);
        // processEvents returns at once when nothing is pending; without a pause the wait would burn a whole core.
        if (!deadline.hasExpired())
            QThread::msleep(kIdleSleepMs);
    } while (!deadline.hasExpired());
}
