#pragma once

#include <QElapsedTimer>
#include <QTimer>

class QProgressBar;

/// Paints a progress bar at most every 40 ms, however often its value changes. A bar paints itself at once at each new
/// value: for every file of a copy of small ones that takes longer than the copying.
class PacedBar
{
public:
    /// @p bar is somebody else's and outlives this.
    explicit PacedBar(QProgressBar &bar);
    /// From here on the bar paints itself again.
    ~PacedBar();
    PacedBar(const PacedBar &) = delete;
    PacedBar &operator=(const PacedBar &) = delete;

    /// Gives the bar a value, kept within its ends. It is seen at once, or as soon as events are processed after the
    /// 40 ms have passed.
    void setValue(int value);
    /// Paints the bar when the 40 ms have passed, also where no events are processed; else does nothing.
    void paint();

private:
    int untilDueMs() const;

    QProgressBar &m_bar;
    QElapsedTimer m_painted;
    QTimer m_later;
};
