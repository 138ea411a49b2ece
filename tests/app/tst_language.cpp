#include "app/language.h"

#include "app/appsettings.h"
#include "app/mainwindow.h"
#include "resources/resources.h"
#include "support/simulatedplayer.h"

#include <QPushButton>
#include <QTest>

namespace {

const QString kKey = QStringLiteral("Application/Language");

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
    void initTestCase();
    void cleanupTestCase();
    void firstLanguageIsTheSystems_data();
    void firstLanguageIsTheSystems();
    void nextLanguageFollowsTheCycle_data();
    void nextLanguageFollowsTheCycle();
    void buttonShowsTheLastTwoCharacters_data();
    void buttonShowsTheLastTwoCharacters();
    void storeIsTheProgramsOwn();
    void storedLanguageIsEmptyWhenThereIsNone();
    void firstStartStoresTheSystemsLanguage();
    void storedValueIsStartedWithAsItStands_data();
    void storedValueIsStartedWithAsItStands();
    void installedLanguageReplacesTheOneBefore();
    void everyWidgetIsToldOfAChange();
    void threeClicksGoRoundTheCycle();
    void clickOnAnyOtherLanguageLeadsToItalian_data();
    void clickOnAnyOtherLanguageLeadsToItalian();
};

void TestLanguage::initTestCase()
{
    loadResources();
    SimulatedPlayer::disconnect();
}

void TestLanguage::cleanupTestCase()
{
    appSettings().remove(kKey);
}

void TestLanguage::firstLanguageIsTheSystems_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("value");
    QTest::newRow("Italian") << QStringLiteral("it_IT") << QStringLiteral("lang_it");
    QTest::newRow("English") << QStringLiteral("en_US") << QStringLiteral("lang_en");
    QTest::newRow("Swiss German") << QStringLiteral("de_CH") << QStringLiteral("lang_de");
    QTest::newRow("French, no translation") << QStringLiteral("fr_FR") << QStringLiteral("lang_fr");
    QTest::newRow("no country") << QStringLiteral("es") << QStringLiteral("lang_es");
    QTest::newRow("three letters") << QStringLiteral("fil_PH") << QStringLiteral("lang_fi");
    QTest::newRow("no locale") << QStringLiteral("C") << QStringLiteral("lang_C");
    QTest::newRow("nothing") << QString() << QStringLiteral("lang_");
}

void TestLanguage::firstLanguageIsTheSystems()
{
    QFETCH(QString, locale);
    QTEST(initialLanguage(locale), "value");
}

void TestLanguage::nextLanguageFollowsTheCycle_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("next");
    QTest::newRow("it") << QStringLiteral("lang_it") << QStringLiteral("lang_en");
    QTest::newRow("en") << QStringLiteral("lang_en") << QStringLiteral("lang_de");
    QTest::newRow("de") << QStringLiteral("lang_de") << QStringLiteral("lang_it");
    QTest::newRow("fr") << QStringLiteral("lang_fr") << QStringLiteral("lang_it");
    QTest::newRow("not set") << QStringLiteral("no_set") << QStringLiteral("lang_it");
    QTest::newRow("empty") << QString() << QStringLiteral("lang_it");
    QTest::newRow("capitals are another value") << QStringLiteral("LANG_IT") << QStringLiteral("lang_it");
}

void TestLanguage::nextLanguageFollowsTheCycle()
{
    QFETCH(QString, value);
    QTEST(nextLanguage(value), "next");
}

void TestLanguage::buttonShowsTheLastTwoCharacters_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("it") << QStringLiteral("lang_it") << QStringLiteral("IT");
    QTest::newRow("fr") << QStringLiteral("lang_fr") << QStringLiteral("FR");
    QTest::newRow("not set") << QStringLiteral("no_set") << QStringLiteral("ET");
    QTest::newRow("one character") << QStringLiteral("x") << QStringLiteral("X");
    QTest::newRow("empty") << QString() << QString();
}

void TestLanguage::buttonShowsTheLastTwoCharacters()
{
    QFETCH(QString, value);
    QTEST(languageButtonText(value), "text");
}

void TestLanguage::storeIsTheProgramsOwn()
{
    const QSettings &settings = appSettings();
    QCOMPARE(settings.organizationName(), QStringLiteral("Q-Arte"));
    QCOMPARE(settings.applicationName(), QStringLiteral("Corvin4Manager"));
    QCOMPARE(settings.format(), QSettings::NativeFormat);
    QCOMPARE(settings.scope(), QSettings::UserScope);
    QVERIFY(!settings.fallbacksEnabled());
    QCOMPARE(&appSettings(), &settings);
}

void TestLanguage::storedLanguageIsEmptyWhenThereIsNone()
{
    appSettings().remove(kKey);
    QCOMPARE(storedLanguage(), QString());
}

void TestLanguage::firstStartStoresTheSystemsLanguage()
{
    const QString expected = initialLanguage(QLocale::system().name());
    appSettings().remove(kKey);
    QCOMPARE(startLanguage(), expected);
    QCOMPARE(storedLanguage(), expected);

    appSettings().setValue(kKey, QStringLiteral("no_set"));
    QCOMPARE(startLanguage(), expected);
    QCOMPARE(storedLanguage(), expected);
}

void TestLanguage::storedValueIsStartedWithAsItStands_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("known") << QStringLiteral("lang_de");
    QTest::newRow("without a translation") << QStringLiteral("lang_fr");
    QTest::newRow("nonsense") << QStringLiteral("../x");
    QTest::newRow("empty") << QString();
    QTest::newRow("nearly not set") << QStringLiteral("NO_SET");
}

void TestLanguage::storedValueIsStartedWithAsItStands()
{
    QFETCH(QString, value);
    appSettings().setValue(kKey, value);
    QCOMPARE(startLanguage(), value);
    QCOMPARE(storedLanguage(), value);
}

void TestLanguage::installedLanguageReplacesTheOneBefore()
{
    const QString italian = QStringLiteral("Interrompi Operazione");
    installLanguage(QStringLiteral("lang_it"));
    QCOMPARE(someText(), italian);
    installLanguage(QStringLiteral("lang_en"));
    const QString english = someText();
    QVERIFY(english != italian);
    installLanguage(QStringLiteral("lang_de"));
    QVERIFY(someText() != italian);
    QVERIFY(someText() != english);
    installLanguage(QStringLiteral("lang_fr"));
    QCOMPARE(someText(), italian);
    installLanguage(QString());
    QCOMPARE(someText(), italian);
}

void TestLanguage::everyWidgetIsToldOfAChange()
{
    appSettings().setValue(kKey, QStringLiteral("lang_it"));
    installLanguage(QStringLiteral("lang_it"));
    MainWindow window;
    auto *stop = window.findChild<QPushButton *>(QStringLiteral("pushButtonStop"));
    QVERIFY(stop);
    stop->setText(QStringLiteral("x"));
    installLanguage(QStringLiteral("lang_en"));
    QTRY_COMPARE(stop->text(), QStringLiteral("STOP"));
}

void TestLanguage::threeClicksGoRoundTheCycle()
{
    appSettings().setValue(kKey, QStringLiteral("lang_it"));
    installLanguage(QStringLiteral("lang_it"));
    MainWindow window;
    auto *button = window.findChild<QPushButton *>(QStringLiteral("pButLang"));
    QVERIFY(button);
    QCOMPARE(button->text(), QStringLiteral("IT"));
    const QString italian = someText();

    const QStringList values = {QStringLiteral("lang_en"), QStringLiteral("lang_de"), QStringLiteral("lang_it")};
    const QStringList texts = {QStringLiteral("EN"), QStringLiteral("DE"), QStringLiteral("IT")};
    for (int i = 0; i < values.size(); ++i) {
        button->click();
        QCOMPARE(button->text(), texts.at(i));
        QCOMPARE(storedLanguage(), values.at(i));
        QCOMPARE(someText() == italian, values.at(i) == QLatin1String("lang_it"));
        // The button's text is its own, not one that a change of the language gives it again.
        QCoreApplication::sendPostedEvents();
        QCOMPARE(button->text(), texts.at(i));
    }
}

void TestLanguage::clickOnAnyOtherLanguageLeadsToItalian_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("Spanish") << QStringLiteral("lang_es") << QStringLiteral("ES");
    QTest::newRow("not set") << QStringLiteral("no_set") << QStringLiteral("ET");
    QTest::newRow("empty") << QString() << QString();
}

void TestLanguage::clickOnAnyOtherLanguageLeadsToItalian()
{
    QFETCH(QString, value);
    appSettings().setValue(kKey, value);
    MainWindow window;
    auto *button = window.findChild<QPushButton *>(QStringLiteral("pButLang"));
    QVERIFY(button);
    QTEST(button->text(), "text");
    button->click();
    QCOMPARE(button->text(), QStringLiteral("IT"));
    QCOMPARE(storedLanguage(), QStringLiteral("lang_it"));
}

QTEST_MAIN(TestLanguage)
#include "tst_language.moc"
