#pragma once

#include "app/mainwindow.h"
#include "support/testing.h"

/// Asks a window to close, as its close button does, at the first round of events in which a condition holds; fails the
/// test when that never comes.
class Closer : public QObject
{
public:
    Closer(MainWindow &window, const std::function<bool()> &when) {
        connect(&m_timer, &QTimer::timeout, this, [this, &window, when] {
            if (asked || !when())
                return;
            asked = true;
            m_timer.stop();
            closedAtOnce = window.close();
        });
        m_timer.start(0);
    }
    ~Closer() override {
        if (!asked)
            failTest("The moment to close the window never came"_s);
    }

    bool asked = false;
    bool closedAtOnce = false;

private:
    QTimer m_timer;
};
