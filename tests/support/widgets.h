#pragma once

#include "testing.h"

// Looks at and works the widgets of a page or window as its user does.

/// The widget of this object name; one that is not there ends the test program.
template <typename T> T *child(const QObject &page, const char *name) {
    auto *found = page.findChild<T *>(QLatin1String(name));
    if (!found)
        qFatal("There is no %s", name);
    return found;
}

/// The page of this class; one that is not there ends the test program.
template <typename T> T *pageOf(const QObject &window) {
    auto *found = window.findChild<T *>();
    if (!found)
        qFatal("The window lacks a page");
    return found;
}

inline QPushButton *button(const QObject &page, const char *name) {
    return child<QPushButton>(page, name);
}

/// Clicks a button with the mouse.
inline void click(const QObject &page, const char *name) {
    QTest::mouseClick(child<QAbstractButton>(page, name), Qt::LeftButton);
}

/// The text on a label, a button or a check box.
inline QString textOf(const QObject &page, const char *name) {
    return child<QWidget>(page, name)->property("text").toString();
}

/// Whether a widget bears the family, size and weight of @p font; the rest is the style's.
inline bool hasFont(const QWidget &widget, const QFont &font) {
    return widget.font().family() == font.family() && widget.font().pointSize() == font.pointSize() &&
           widget.font().weight() == font.weight();
}

/// Whether every button that is shown has room for its whole text and lies wholly on the page.
inline bool allButtonsShowTheirWholeText(const QWidget &page) {
    const auto buttons = page.findChildren<QPushButton *>();
    for (const QPushButton *one : buttons) {
        const QRect place(one->mapTo(&page, QPoint(0, 0)), one->size());
        if (one->width() < one->sizeHint().width() || !page.rect().contains(place)) {
            qWarning("%s has no room for its text", qPrintable(one->objectName()));
            return false;
        }
    }
    return true;
}
