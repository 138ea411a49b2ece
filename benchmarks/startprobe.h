#pragma once

#include <QApplication>
#include <QTimer>
#include <QWidget>
#include <QWindow>

/// Ends the event loop of @p application as soon as a window of it is on the screen and has been painted.
inline void quitWhenShown(QCoreApplication *application)
{
    auto *timer = new QTimer(application);
    QObject::connect(timer, &QTimer::timeout, application, [] {
        for (const QWidget *window : QApplication::topLevelWidgets()) {
            if (window->isVisible() && window->windowHandle() && window->windowHandle()->isExposed())
                QCoreApplication::quit();
        }
    });
    timer->start(0);
}
