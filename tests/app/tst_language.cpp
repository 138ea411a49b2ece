#include "app/language.h"

#include "italianwindow.h"
#include "support/boxtexts.h"

namespace {

const QString kKey = "Application/Language"_s;

/// A text of the program whose translations all differ from it.
QString someText() {
    return QCoreApplication::translate("MainWindow", "Interrompi Operazione");
}

using Function = std::function<QString(const QString &)>;

} // namespace

Q_DECLARE_METATYPE(Function)

class TestLanguage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { startInItalian(); }
    void cleanupTestCase() { appSettings().remove(kKey); }

    void valueLeadsToAnother_data() {
        columns<Function, QString, QString>("function", "given", "result");
        row("first language: Italian", Function(initialLanguage), "it_IT"_s, "lang_it"_s);
        row("first language: English", Function(initialLanguage), "en_US"_s, "lang_en"_s);
        row("first language: Swiss German", Function(initialLanguage), "de_CH"_s, "lang_de"_s);
        row("first language: French, no translation", Function(initialLanguage), "fr_FR"_s, "lang_fr"_s);
        row("first language: no country", Function(initialLanguage), "es"_s, "lang_es"_s);
        row("first language: three letters", Function(initialLanguage), "fil_PH"_s, "lang_fi"_s);
        row("first language: no locale", Function(initialLanguage), "C"_s, "lang_C"_s);
        row("first language: nothing", Function(initialLanguage), QString(), "lang_"_s);
        row("next language: it", Function(nextLanguage), "lang_it"_s, "lang_en"_s);
        row("next language: en", Function(nextLanguage), "lang_en"_s, "lang_de"_s);
        row("next language: de", Function(nextLanguage), "lang_de"_s, "lang_it"_s);
        row("next language: fr", Function(nextLanguage), "lang_fr"_s, "lang_it"_s);
        row("next language: not set", Function(nextLanguage), "no_set"_s, "lang_it"_s);
        row("next language: empty", Function(nextLanguage), QString(), "lang_it"_s);
        row("next language: capitals are another value", Function(nextLanguage), "LANG_IT"_s, "lang_it"_s);
        row("last two characters: it", Function(languageButtonText), "lang_it"_s, "IT"_s);
        row("last two characters: fr", Function(languageButtonText), "lang_fr"_s, "FR"_s);
        row("last two characters: not set", Function(languageButtonText), "no_set"_s, "ET"_s);
        row("last two characters: one character", Function(languageButtonText), "x"_s, "X"_s);
        row("last two characters: empty", Function(languageButtonText), QString(), QString());
    }
    void valueLeadsToAnother() {
        QFETCH(Function, function);
        QFETCH(QString, given);
        QTEST(function(given), "result");
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

    void storedLanguageIsEmptyWhenThereIsNone() {
        appSettings().remove(kKey);
        QCOMPARE(storedLanguage(), QString());
    }

    void firstStartStoresTheSystemsLanguage() {
        const QString expected = initialLanguage(QLocale::system().name());
        appSettings().remove(kKey);
        QCOMPARE(startLanguage(), expected);
        QCOMPARE(storedLanguage(), expected);

        appSettings().setValue(kKey, "no_set"_s);
        QCOMPARE(startLanguage(), expected);
        QCOMPARE(storedLanguage(), expected);
    }

    void storedValueIsStartedWithAsItStands_data() {
        columns<QString>("value");
        row("known", "lang_de"_s);
        row("without a translation", "lang_fr"_s);
        row("nonsense", "../x"_s);
        row("empty", QString());
        row("nearly not set", "NO_SET"_s);
    }
    void storedValueIsStartedWithAsItStands() {
        QFETCH(QString, value);
        appSettings().setValue(kKey, value);
        QCOMPARE(startLanguage(), value);
        QCOMPARE(storedLanguage(), value);
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

    void clickOnAnyOtherLanguageLeadsToItalian_data() {
        columns<QString, QString>("value", "text");
        row("Spanish", "lang_es"_s, "ES"_s);
        row("not set", "no_set"_s, "ET"_s);
        row("empty", QString(), QString());
    }
    void clickOnAnyOtherLanguageLeadsToItalian() {
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
