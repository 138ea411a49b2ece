#include "breath.h"

#include <QCoreApplication>

namespace {
constexpr int kFirstEntries = 1000;
constexpr qint64 kMostMs = 4;
} // namespace

void Breath::take()
{
    if (m_taken < kFirstEntries)
        ++m_taken;
    else if (m_sinceEvents.elapsed() < kMostMs)
        return;
    QCoreApplication::processEvents();
    m_sinceEvents.start();
}
