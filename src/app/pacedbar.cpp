#include "pacedbar.h"

#include <QProgressBar>

namespace {
constexpr int kIntervalMs = 40;
}

PacedBar::PacedBar(QProgressBar &bar) : m_bar(bar)
{
    m_later.setSingleShot(true);
    QObject::connect(&m_later, &QTimer::timeout, &m_bar, [this] {
        // A timer may fire a moment too early: without a second one nothing would be painted any more.
        if (const int wait = untilDueMs())
            m_later.start(wait);
        else
            paint();
    });
}

PacedBar::~PacedBar()
{
    m_bar.setUpdatesEnabled(true);
}

void PacedBar::setValue(int value)
{
    const int wait = untilDueMs();
    m_bar.setUpdatesEnabled(false);
    m_bar.setValue(value);
    if (wait == 0)
        paint();
    else if (!m_later.isActive())
        m_later.start(wait);
}

void PacedBar::paint()
{
    if (untilDueMs() > 0)
        return;
    m_later.stop();
    m_bar.setUpdatesEnabled(true);
    // Now and not with the next update: between two files there may be no time for one, and a bar that is to be painted
    // later would be told again to wait.
    m_bar.repaint();
    m_painted.start();
}

int PacedBar::untilDueMs() const
{
    return m_painted.isValid() ? int(qMax<qint64>(0, kIntervalMs - m_painted.elapsed())) : 0;
}
