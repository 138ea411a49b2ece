#include "pacedbar.h"

#include <QProgressBar>

namespace {
constexpr int kIntervalMs = 40;
constexpr int kFirstValues = 1000;
} // namespace

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
    giveValue();
    m_bar.setUpdatesEnabled(true);
}

void PacedBar::setValue(int value)
{
    // The bar passes such a value over as well; one that waits must not take the place of one that counts.
    const bool hasEnds = m_bar.minimum() != 0 || m_bar.maximum() != 0;
    if (hasEnds && (value < m_bar.minimum() || value > m_bar.maximum()))
        return;
    const int wait = untilDueMs();
    m_waiting = value;
    const bool isEnd = value == m_bar.minimum() || value == m_bar.maximum();
    if (isEnd || m_values++ < kFirstValues)
        giveValue();
    if (wait == 0)
        paint();
    else if (!m_later.isActive())
        m_later.start(wait);
}

int PacedBar::value() const
{
    return m_waiting.value_or(m_bar.value());
}

void PacedBar::settle()
{
    giveValue();
    m_values = 0;
}

void PacedBar::giveValue()
{
    if (!m_waiting)
        return;
    m_bar.setUpdatesEnabled(false);
    m_bar.setValue(*m_waiting);
    m_waiting.reset();
}

void PacedBar::paint()
{
    if (untilDueMs() > 0)
        return;
    m_later.stop();
    giveValue();
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
