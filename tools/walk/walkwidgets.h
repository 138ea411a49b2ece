#pragma once

#include <QApplication>
#include <QString>
#include <QWidget>

/// The text without the marks of its Alt letters.
QString plainText(QString text);

/// What the widget shows: a label's text, a button's text without its Alt letter, the title of anything else.
QString shownText(QWidget *widget);

/// The visible widget of this object name ("NAME"), or of this name within a widget of this class ("Class/NAME");
/// nullptr when there is none.
QWidget *findWidget(const QString &name);

/// Scrolls every page that the widget lies on until it is in sight: on a small or magnified screen pages scroll, and a
/// hand would scroll them.
void bringIntoSight(QWidget *widget);

/// Puts the program's windows above those of other programs, like the file manager's; an open box above all.
void raiseWindows();

/// The visible window of this class, with this title when one is given; nullptr when there is none.
template <typename T> T *visibleWindow(const QString &title = QString())
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget *widget : widgets) {
        T *found = qobject_cast<T *>(widget);
        if (found && found->isVisible() && (title.isNull() || found->windowTitle() == title))
            return found;
    }
    return nullptr;
}
