#pragma once

#include "app/mainwindow.h"

#include <QString>
#include <QtGlobal>

/// Reaches what a main window holds; a part that is not there ends the test program.
namespace WindowParts {

/// The widget of this object name.
template <typename T> T *child(const MainWindow &window, const char *name)
{
    auto *found = window.findChild<T *>(QLatin1String(name));
    if (!found)
        qFatal("The window has no %s", name);
    return found;
}

/// The page of this class.
template <typename T> T *page(const MainWindow &window)
{
    auto *found = window.findChild<T *>();
    if (!found)
        qFatal("The window lacks a page");
    return found;
}

} // namespace WindowParts
