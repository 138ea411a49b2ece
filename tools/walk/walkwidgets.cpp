#include "walkwidgets.h"

#include <QAbstractButton>
#include <QLabel>
#include <QScrollArea>

QString plainText(QString text)
{
    return text.remove(QLatin1Char('&'));
}

QString shownText(QWidget *widget)
{
    if (const auto *label = qobject_cast<QLabel *>(widget))
        return label->text();
    if (const auto *button = qobject_cast<QAbstractButton *>(widget))
        return plainText(button->text());
    return widget->windowTitle();
}

QWidget *findWidget(const QString &name)
{
    const QString wantedClass = name.contains(QLatin1Char('/')) ? name.section(QLatin1Char('/'), 0, 0) : QString();
    const QString wantedName = name.section(QLatin1Char('/'), -1);
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget *widget : widgets) {
        if (!widget->isVisible() || widget->objectName() != wantedName)
            continue;
        if (wantedClass.isEmpty())
            return widget;
        for (const QWidget *owner = widget; owner; owner = owner->parentWidget()) {
            if (owner->inherits(wantedClass.toLatin1().constData()))
                return widget;
        }
    }
    return nullptr;
}

void bringIntoSight(QWidget *widget)
{
    for (QWidget *owner = widget->parentWidget(); owner; owner = owner->parentWidget()) {
        if (auto *area = qobject_cast<QScrollArea *>(owner))
            area->ensureWidgetVisible(widget);
    }
}

void raiseWindows()
{
    QWidget *question = QApplication::activeModalWidget();
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (window->isVisible() && window != question)
            window->raise();
    }
    if (question)
        question->raise();
}
