#include "app/language.h"

#include "italianwindow.h"
#include "support/boxtexts.h"
#include "support/same.h"

const QString kKey = "Application/Language"_s;

/// A text of the program whose translations all differ from it.
static QString someText() {
    return QCoreApplication::translate("MainWindow", "Interrompi Operazione");
}

class TestLanguage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { startInItalian(); }
    void cleanupTestCase() { appSettings().remove(kKey); }

    void valueLeadsToAnother() {
        same("first language: Italian", initialLanguage("it_IT"_s), "lang_it"_s);
        same("first language: English", initialLanguage("en_US"_s), "lang_en"_s);
        same("first language: Swiss German", initialLanguage("de_CH"_s), "lang_de"_s);
        same("first language: French, no translation", initialLanguage("fr_FR"_s), "lang_fr"_s);
        same("first language: no country", initialLanguage("es"_s), "lang_es"_s);
        same("first language: three letters", initialLanguage("fil_PH"_s), "lang_fi"_s);
        same("first language: no locale", initialLanguage("C"_s), "lang_C"_s);
        same("first language: nothing", initialLanguage(QString()), "lang_"_s);
        same("next language: it", nextLanguage("lang_it"_s), "lang_en"_s);
        same("next language: en", nextLanguage("lang_en"_s), "lang_de"_s);
        same("next language: de", nextLanguage("lang_de"_s), "lang_it"_s);
        same("next language: fr", nextLanguage("lang_fr"_s), "lang_it"_s);
        same("next language: not set", nextLanguage("no_set"_s), "lang_it"_s);
        same("next language: empty", nextLanguage(QString()), "lang_it"_s);
        same("next language: capitals are another value", nextLanguage("LANG_IT"_s), "lang_it"_s);
        same("last two characters: it", languageButtonText("lang_it"_s), "IT"_s);
        same("last two characters: fr", languageButtonText("lang_fr"_s), "FR"_s);
        same("last two characters: not set", languageButtonText("no_set"_s), "ET"_s);
        same("last two characters: one character", languageButtonText("x"_s), "X"_s);
        same("last two characters: empty", languageButtonText(QString()), QString());
    }

    void storeIsTheProgramsOwn() {
        const QSettings &settings = appSettings();
        QCOMPARE(settings.organizationName(), "Q-Arte"_s);
        QCOMPARE(settings.applicationName(), "Corvin4Manager"_s);
        QCOMPARE(settings.format(), QSettings::NativeFormat);
        QCOMPARE(settings.scope(), QSettings::UserScope);
        QVERIFY(!settings.fallbacksEnabled());
        QCOMPARE(&appSettings(), &settings);
    }

    void firstStartStoresTheSystemsLanguage() {
        const QString expected = initialLanguage(QLocale::system().name());
        appSettings().remove(kKey);
        QCOMPARE(storedLanguage(), QString());
        QCOMPARE(startLanguage(), expected);
        QCOMPARE(storedLanguage(), expected);
        appSettings().setValue(kKey, "no_set"_s);
        QCOMPARE(startLanguage(), expected);
        QCOMPARE(storedLanguage(), expected);
    }

    void storedValueIsStartedWithAsItStands() {
        // Known, without a translation, nonsense, empty, nearly "not set".
        for (const QString &value : {"lang_de"_s, "lang_fr"_s, "../x"_s, QString(), "NO_SET"_s}) {
            appSettings().setValue(kKey, value);
            QCOMPARE(startLanguage(), value);
            QCOMPARE(storedLanguage(), value);
        }
    }

    void installedLanguageReplacesTheOneBefore() {
        installLanguage("lang_it"_s);
        QCOMPARE(someText(), Titles::kStop);
        installLanguage("lang_en"_s);
        const QString english = someText();
        QVERIFY(english != Titles::kStop);
        installLanguage("lang_de"_s);
        QVERIFY(someText() != Titles::kStop);
        QVERIFY(someText() != english);
        installLanguage("lang_fr"_s);
        QCOMPARE(someText(), Titles::kStop);
        installLanguage(QString());
        QCOMPARE(someText(), Titles::kStop);
    }

    void everyWidgetIsToldOfAChange() {
        startInItalian();
        installLanguage("lang_it"_s);
        const MainWindow window;
        auto *stop = button(window, "pushButtonStop");
        stop->setText("x"_s);
        installLanguage("lang_en"_s);
        QTRY_COMPARE(stop->text(), "STOP"_s);
    }

    void threeClicksGoRoundTheCycle() {
        startInItalian();
        installLanguage("lang_it"_s);
        const MainWindow window;
        auto *language = button(window, "pButLang");
        QCOMPARE(language->text(), "IT"_s);
        for (const char *code : {"en", "de", "it"}) {
            language->click();
            QCOMPARE(language->text(), QString::fromLatin1(code).toUpper());
            QCOMPARE(storedLanguage(), "lang_"_s + QLatin1String(code));
            QCOMPARE(someText() == Titles::kStop, qstrcmp(code, "it") == 0);
            // The button's text is its own, not one that a change of the language gives it again.
            QCoreApplication::sendPostedEvents();
            QCOMPARE(language->text(), QString::fromLatin1(code).toUpper());
        }
    }

    void clickOnAnyOtherLanguageLeadsToItalian() {
        for (const QString &value : {"lang_es"_s, "no_set"_s, QString()}) {
            appSettings().setValue(kKey, value);
            const MainWindow window;
            auto *language = button(window, "pButLang");
            same(qPrintable(value), language->text(), value.right(2).toUpper());
            language->click();
            same(qPrintable(value), language->text(), "IT"_s);
            same(qPrintable(value), storedLanguage(), "lang_it"_s);
        }
    }
};

PAGE_TEST_MAIN(TestLanguage)
#include "tst_language.moc"
