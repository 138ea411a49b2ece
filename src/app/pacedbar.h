#pragma once

#include <QElapsedTimer>
#include <QTimer>

#include <optional>

class QProgressBar;

/// Paints a progress bar at most every 40 ms, however often its value changes. A bar paints itself at once at each new
/// value: for every file of a copy of small ones that takes longer than the copying. Even to ask whether it would look
/// different costs a fifth of an optimisation: after the first thousand values the bar gets those alone that are
/// painted, and its ends.
class PacedBar
{
public:
    /// @p bar is somebody else's and outlives this.
    explicit PacedBar(QProgressBar &bar);
    /// From here on the bar paints itself again.
    ~PacedBar();
    PacedBar(const PacedBar &) = delete;
    PacedBar &operator=(const PacedBar &) = delete;

    /// Gives the bar a value; one beyond its ends is passed over. It is seen at once, or as soon as events are
    /// processed after the 40 ms have passed.
    void setValue(int value);
    /// The value that was given last, whether the bar has it already or not.
    int value() const;
    /// Gives the bar the value that it has not got yet, and the next thousand values at once: before it gets other ends
    /// or another look.
    void settle();
    /// Paints the bar when the 40 ms have passed, also where no events are processed; else does nothing.
    void paint();

private:
    void giveValue();
    int untilDueMs() const;

    QProgressBar &m_bar;
    std::optional<int> m_waiting; ///< a value that the bar has not got yet
    int m_values = 0;             ///< given since the bar was settled
    QElapsedTimer m_painted;
    QTimer m_later;
};
