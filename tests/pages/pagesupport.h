#pragma once

#include "app/shared/sharedfonts.h"
#include "resources/resources.h"

#include <QCoreApplication>
#include <QFont>
#include <QPushButton>
#include <QTest>
#include <QTranslator>
#include <QWidget>

/// What the tests of the small pages share.
namespace PageSupport {

/// The window the pages were made for, on the smallest screen that counts.
constexpr int kSmallScreenWidth = 1366;
constexpr int kPageWidth = 1000;
constexpr int kPageHeight = 600;

inline void setUp()
{
    loadResources();
    registerEmbeddedFonts();
}

/// Speaks a language of the program ("en") while it lives.
class Language
{
public:
    explicit Language(const QString &code)
    {
        if (!m_translator.load(QStringLiteral(":/language/lang_%1.qm").arg(code)))
            qFatal("no translation file for this language");
        QCoreApplication::installTranslator(&m_translator);
        QCoreApplication::processEvents();
    }
    ~Language()
    {
        QCoreApplication::removeTranslator(&m_translator);
        QCoreApplication::processEvents();
    }
    Language(const Language &) = delete;
    Language &operator=(const Language &) = delete;

private:
    QTranslator m_translator;
};

template <typename Widget> Widget *child(const QWidget &page, const char *name)
{
    auto *found = page.findChild<Widget *>(QLatin1String(name));
    if (!found)
        qFatal("the page has no such widget");
    return found;
}

inline void click(const QWidget &page, const char *name)
{
    QTest::mouseClick(child<QPushButton>(page, name), Qt::LeftButton);
}

/// Whether a widget bears the family, size and weight of @p font; the rest is the style's.
inline bool hasFont(const QWidget &widget, const QFont &font)
{
    return widget.font().family() == font.family() && widget.font().pointSize() == font.pointSize() &&
           widget.font().weight() == font.weight();
}

/// Whether every button that is shown has room for its whole text and lies wholly on the page.
inline bool allButtonsShowTheirWholeText(const QWidget &page)
{
    const auto buttons = page.findChildren<QPushButton *>();
    for (const QPushButton *button : buttons) {
        const QRect place(button->mapTo(&page, QPoint(0, 0)), button->size());
        if (button->width() < button->sizeHint().width() || !page.rect().contains(place)) {
            qWarning("%s has no room for its text", qPrintable(button->objectName()));
            return false;
        }
    }
    return true;
}

} // namespace PageSupport
