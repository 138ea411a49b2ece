#include "app/language.h"

#include "italianwindow.h"
#include "support/boxtexts.h"

namespace {

const QString kKey = "Application/Language"_s;

/// A text of the program whose translations all differ from it.
QString someText()
{
    return QCoreApplication::translate("MainWindow", "Interrompi Operazione");
}

} // namespace

class TestLanguage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { startInItalian(); }
    void cleanupTestCase() { appSettings().remove(kKey); }

    void firstLanguageIsTheSystems_data()
    {
        columns<QString, QString>("locale", "value");
        row("Italian", "it_IT"_s, "lang_it"_s);
        row("English", "en_US"_s, "lang_en"_s);
        row("Swiss German", "de_CH"_s, "lang_de"_s);
        row("French, no translation", "fr_FR"_s, "lang_fr"_s);
        row("no country", "es"_s, "lang_es"_s);
        row("three letters", "fil_PH"_s, "lang_fi"_s);
        row("no locale", "C"_s, "lang_C"_s);
        row("nothing", QString(), "lang_"_s);
    }
    void firstLanguageIsTheSystems()
    {
        QFETCH(QString, locale);
        QTEST(initialLanguage(locale), "value");
    }

    void nextLanguageFollowsTheCycle_data()
    {
        columns<QString, QString>("value", "next");
        row("it", "lang_it"_s, "lang_en"_s);
        row("en", "lang_en"_s, "lang_de"_s);
        row("de", "lang_de"_s, "lang_it"_s);
        row("fr", "lang_fr"_s, "lang_it"_s);
        row("not set", "no_set"_s, "lang_it"_s);
        row("empty", QString(), "lang_it"_s);
        row("capitals are another value", "LANG_IT"_s, "lang_it"_s);
    }
    void nextLanguageFollowsTheCycle()
    {
        QFETCH(QString, value);
        QTEST(nextLanguage(value), "next");
    }

    void buttonShowsTheLastTwoCharacters_data()
    {
        columns<QString, QString>("value", "text");
        row("it", "lang_it"_s, "IT"_s);
        row("fr", "lang_fr"_s, "FR"_s);
        row("not set", "no_set"_s, "ET"_s);
        row("one character", "x"_s, "X"_s);
        row("empty", QString(), QString());
    }
    void buttonShowsTheLastTwoCharacters()
    {
        QFETCH(QString, value);
        QTEST(languageButtonText(value), "text");
    }

    void storeIsTheProgramsOwn()
    {
        const QSettings &settings = appSettings();
        QCOMPARE(settings.organizationName(), "Q-Arte"_s);
        QCOMPARE(settings.applicationName(), "Corvin4Manager"_s);
        QCOMPARE(settings.format(), QSettings::NativeFormat);
        QCOMPARE(settings.scope(), QSettings::UserScope);
        QVERIFY(!settings.fallbacksEnabled());
        QCOMPARE(&appSettings(), &settings);
    }

    void storedLanguageIsEmptyWhenThereIsNone()
    {
        appSettings().remove(kKey);
        QCOMPARE(storedLanguage(), QString());
    }

    void firstStartStoresTheSystemsLanguage()
    {
        const QString expected = initialLanguage(QLocale::system().name());
        appSettings().remove(kKey);
        QCOMPARE(startLanguage(), expected);
        QCOMPARE(storedLanguage(), expected);

        appSettings().setValue(kKey, "no_set"_s);
        QCOMPARE(startLanguage(), expected);
        QCOMPARE(storedLanguage(), expected);
    }

    void storedValueIsStartedWithAsItStands_data()
    {
        columns<QString>("value");
        row("known", "lang_de"_s);
        row("without a translation", "lang_fr"_s);
        row("nonsense", "../x"_s);
        row("empty", QString());
        row("nearly not set", "NO_SET"_s);
    }
    void storedValueIsStartedWithAsItStands()
    {
        QFETCH(QString, value);
        appSettings().setValue(kKey, value);
        QCOMPARE(startLanguage(), value);
        QCOMPARE(storedLanguage(), value);
    }

    void installedLanguageReplacesTheOneBefore()
    {
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

    void everyWidgetIsToldOfAChange()
    {
        startInItalian();
        installLanguage("lang_it"_s);
        const MainWindow window;
        auto *stop = button(window, "pushButtonStop");
        stop->setText("x"_s);
        installLanguage("lang_en"_s);
        QTRY_COMPARE(stop->text(), "STOP"_s);
    }

    void threeClicksGoRoundTheCycle()
    {
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

    void clickOnAnyOtherLanguageLeadsToItalian_data()
    {
        columns<QString, QString>("value", "text");
        row("Spanish", "lang_es"_s, "ES"_s);
        row("not set", "no_set"_s, "ET"_s);
        row("empty", QString(), QString());
    }
    void clickOnAnyOtherLanguageLeadsToItalian()
    {
        QFETCH(QString, value);
        appSettings().setValue(kKey, value);
        const MainWindow window;
        auto *language = button(window, "pButLang");
        QTEST(language->text(), "text");
        language->click();
        QCOMPARE(language->text(), "IT"_s);
        QCOMPARE(storedLanguage(), "lang_it"_s);
    }
};

PAGE_TEST_MAIN(TestLanguage)
#include "tst_language.moc"
