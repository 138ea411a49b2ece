#pragma once

#include <QElapsedTimer>

/// Keeps the window alive in a loop over many entries: processes events after every one of the first entries, and
/// later whenever some milliseconds have gone by since it last did. A look at the events takes as long as the work on a
/// small song, and nobody can tell one after each of them from one every few milliseconds.
class Breath
{
public:
    /// Called after every entry of the loop. Slots may run.
    void take();

private:
    int m_taken = 0;
    QElapsedTimer m_sinceEvents;
};
