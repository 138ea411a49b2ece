#include "gapmeter.h"

#include <QRegularExpression>

namespace {

constexpr int kServiceMs = 5;

/// The text of a step without counters and paths.
QString stepName(const QString &text)
{
    static const QRegularExpression kCounters(QStringLiteral("\\(\\d+/\\d+\\)|\\[\\s*\\d+\\]|\\n.*$"),
                                              QRegularExpression::DotMatchesEverythingOption);
    return QString(text).remove(kCounters).simplified();
}

} // namespace

GapMeter::GapMeter(QObject *parent) : QObject(parent)
{
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.setInterval(kServiceMs);
    connect(&m_timer, &QTimer::timeout, this, &GapMeter::served);
}

void GapMeter::start(const QString &firstStep)
{
    m_steps.clear();
    m_text = firstStep;
    m_textAtServed = firstStep;
    m_current = indexOfStep(firstStep);
    m_stepAtServed = m_current;
    m_total.start();
    m_sinceServed.start();
    m_stepBeganNs = 0;
    m_timer.start();
}

void GapMeter::stop()
{
    served();
    closeStep();
    m_timer.stop();
    m_totalMs = m_total.elapsed();
}

qint64 GapMeter::longestGapMs() const
{
    qint64 longest = 0;
    for (const Step &step : m_steps)
        longest = qMax(longest, step.longestGapMs);
    return longest;
}

void GapMeter::onStatusText(const QString &text)
{
    if (!m_timer.isActive())
        return;
    closeStep();
    m_text = text;
    m_current = indexOfStep(stepName(text));
}

void GapMeter::served()
{
    const qint64 gap = m_sinceServed.restart();
    Step &step = m_steps[m_stepAtServed];
    if (gap > step.longestGapMs) {
        step.longestGapMs = gap;
        step.worstPlace = m_textAtServed;
    }
    m_stepAtServed = m_current;
    m_textAtServed = m_text;
}

void GapMeter::closeStep()
{
    // Steps of less than a millisecond add up: whole milliseconds would lose them.
    const qint64 now = m_total.nsecsElapsed();
    m_steps[m_current].totalNs += now - m_stepBeganNs;
    m_stepBeganNs = now;
}

int GapMeter::indexOfStep(const QString &name)
{
    for (int i = 0; i < m_steps.size(); ++i) {
        if (m_steps.at(i).name == name)
            return i;
    }
    Step step;
    step.name = name;
    m_steps.append(step);
    return m_steps.size() - 1;
}
