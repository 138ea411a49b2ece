#include "language.h"

#include "appsettings.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

namespace {

const QString kLanguageKey = QStringLiteral("Application/Language");
const QString kNotSet = QStringLiteral("no_set");
const QString kItalian = QStringLiteral("lang_it");
const QString kEnglish = QStringLiteral("lang_en");
const QString kGerman = QStringLiteral("lang_de");
constexpr int kCodeLength = 2;

QTranslator &translator()
{
    static QTranslator instance;
    return instance;
}

} // namespace

QString initialLanguage(const QString &systemLocaleName)
{
    return QLatin1String("lang_") + systemLocaleName.left(kCodeLength);
}

QString nextLanguage(const QString &value)
{
    if (value == kItalian)
        return kEnglish;
    if (value == kEnglish)
        return kGerman;
    return kItalian;
}

QString languageButtonText(const QString &value)
{
    return value.right(kCodeLength).toUpper();
}

QString storedLanguage()
{
    return appSettings().value(kLanguageKey).toString();
}

void storeLanguage(const QString &value)
{
    appSettings().setValue(kLanguageKey, value);
    // At once: a program that is killed later still starts in this language the next time.
    appSettings().sync();
}

QString startLanguage()
{
    QString value = appSettings().value(kLanguageKey, kNotSet).toString();
    if (value == kNotSet) {
        // Deliberate: the system's code is stored even when there is no translation for it.
        value = initialLanguage(QLocale::system().name());
        storeLanguage(value);
    }
    return value;
}

void installLanguage(const QString &value)
{
    QCoreApplication::removeTranslator(&translator());
    // Unchecked: a failed load leaves an empty translator, which shows the Italian texts of the sources.
    translator().load(value, QStringLiteral(":/language/"));
    QCoreApplication::installTranslator(&translator());
}
