#include "resources/resources.h"

#include "support/platform.h"

#include <QDir>
#include <QFile>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QRawFont>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTranslator>
#include <QXmlStreamReader>
#include <QtTest>

#include <algorithm>

namespace {

const QString kLanguageFolder = QStringLiteral(":/language/");
constexpr int kLupdateMs = 60000;

/// One entry of a .ts file.
struct Entry
{
    QString context;
    QString source;
    QString comment;
    QString translation;
    QString state;       ///< empty when finished; else "unfinished", "vanished" or "obsolete"
    bool plural = false; ///< has plural forms

    QString key() const { return context + QLatin1String(" | ") + source + QLatin1String(" | ") + comment; }
};

Entry readEntry(QXmlStreamReader &xml, const QString &context)
{
    Entry entry;
    entry.context = context;
    entry.plural = xml.attributes().value(QLatin1String("numerus")) == QLatin1String("yes");
    while (xml.readNextStartElement()) {
        const QString tag = xml.name().toString();
        const QString state = xml.attributes().value(QLatin1String("type")).toString();
        const QString text = xml.readElementText(QXmlStreamReader::IncludeChildElements);
        if (tag == QLatin1String("source")) {
            entry.source = text;
        } else if (tag == QLatin1String("comment")) {
            entry.comment = text;
        } else if (tag == QLatin1String("translation")) {
            entry.translation = text;
            entry.state = state;
        }
    }
    return entry;
}

QList<Entry> readEntries(const QString &path)
{
    QList<Entry> entries;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        QTest::qFail(qPrintable(path + QLatin1String(" cannot be read")), __FILE__, __LINE__);
        return entries;
    }
    QXmlStreamReader xml(&file);
    QString context;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("name"))
            context = xml.readElementText();
        else if (xml.name() == QLatin1String("message"))
            entries.append(readEntry(xml, context));
    }
    if (xml.hasError())
        QTest::qFail(qPrintable(path + QLatin1Char(' ') + xml.errorString()), __FILE__, __LINE__);
    return entries;
}

QStringList keysOf(const QList<Entry> &entries)
{
    QStringList keys;
    for (const Entry &entry : entries)
        keys.append(entry.key());
    keys.sort();
    return keys;
}

QStringList missingFrom(const QStringList &all, const QStringList &some)
{
    QStringList missing;
    for (const QString &key : all)
        if (!some.contains(key))
            missing.append(key);
    return missing;
}

/// What a text must share with its translation: numbered places, printf places and percent signs, sorted.
QStringList placesOf(const QString &text)
{
    static const QRegularExpression place(QStringLiteral("%(L?\\d{1,2}|[a-z]%?|%)"));
    QStringList places;
    QRegularExpressionMatchIterator matches = place.globalMatch(text);
    while (matches.hasNext())
        places.append(matches.next().captured());
    places.sort();
    return places;
}

/// The white space at the start (or the end) of a text: pieces that are put together depend on it.
QString edgeOf(const QString &text, bool start)
{
    static const QRegularExpression leading(QStringLiteral("^\\s*"));
    static const QRegularExpression trailing(QStringLiteral("\\s*$"));
    return (start ? leading : trailing).match(text).captured();
}

/// The texts that are the same word in more than one language.
const QStringList &sameEverywhere()
{
    static const QStringList texts{
        QStringLiteral("Corvin4 Manager"),
        QStringLiteral("Release 3.0"),
        QStringLiteral("STOP"),
        QStringLiteral("OK"),
        QStringLiteral("Ok"),
        QStringLiteral("???"),
    };
    return texts;
}

QString describe(const Entry &entry)
{
    return entry.key() + QLatin1String(" -> ") + entry.translation;
}

} // namespace

class TstTranslations : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyTextOfTheProgramHasItsEntry_data() { eachLanguage(); }
    void everyTextOfTheProgramHasItsEntry();
    void everyEntryIsFinished_data() { eachLanguage(); }
    void everyEntryIsFinished();
    void italianIsTheSourceItself();
    void placesAndLineBreaksAgree_data() { eachLanguage(); }
    void placesAndLineBreaksAgree();
    void translationsDifferFromTheItalian_data();
    void translationsDifferFromTheItalian();
    void sameItalianTextIsTranslatedTheSameEverywhere_data() { eachLanguage(); }
    void sameItalianTextIsTranslatedTheSameEverywhere();
    void capitalsStayCapitals_data() { eachLanguage(); }
    void capitalsStayCapitals();
    void everyCharacterIsInBothFonts_data() { eachLanguage(); }
    void everyCharacterIsInBothFonts();
    void adviceAfterAFailedOptimisationIsNoEntry();
    void compiledFileHoldsEveryEntry_data() { eachLanguage(); }
    void compiledFileHoldsEveryEntry();
    void standardTextsSpeakTheLanguage_data();
    void standardTextsSpeakTheLanguage();
    void standardButtonsSpeakTheLanguage_data();
    void standardButtonsSpeakTheLanguage();
    void oneTranslatorGoesRoundTheLanguages();
    void unknownLanguageLoadsNothing();

private:
    static void eachLanguage();
    const QList<Entry> &entries(const QString &code) const;

    QTemporaryDir m_folder;
    QList<Entry> m_program; ///< what a fresh run of lupdate finds
    QList<Entry> m_italian;
    QList<Entry> m_english;
    QList<Entry> m_german;
};

void TstTranslations::eachLanguage()
{
    QTest::addColumn<QString>("code");
    for (const char *code : {"it", "en", "de"})
        QTest::newRow(code) << QString::fromLatin1(code);
}

const QList<Entry> &TstTranslations::entries(const QString &code) const
{
    if (code == QLatin1String("it"))
        return m_italian;
    return code == QLatin1String("en") ? m_english : m_german;
}

void TstTranslations::initTestCase()
{
    SKIP_ON_WINDOWS("SKIPPED WHOLE: lupdate is a program of the machine that builds");
    loadResources();
    const QString fresh = m_folder.filePath(QStringLiteral("fresh.ts"));
    QProcess lupdate;
    lupdate.start(QStringLiteral(CORVIN_LUPDATE),
                  {QStringLiteral("-silent"), QStringLiteral("-locations"), QStringLiteral("none"),
                   QStringLiteral(CORVIN_SOURCE_FOLDER), QStringLiteral("-ts"), fresh});
    QVERIFY2(lupdate.waitForFinished(kLupdateMs), qPrintable(lupdate.errorString()));
    QCOMPARE(lupdate.exitCode(), 0);
    m_program = readEntries(fresh);
    QVERIFY(m_program.size() > 50);

    const QDir folder(QStringLiteral(CORVIN_LANGUAGE_FOLDER));
    m_italian = readEntries(folder.filePath(QStringLiteral("lang_it.ts")));
    m_english = readEntries(folder.filePath(QStringLiteral("lang_en.ts")));
    m_german = readEntries(folder.filePath(QStringLiteral("lang_de.ts")));
}

void TstTranslations::everyTextOfTheProgramHasItsEntry()
{
    QFETCH(QString, code);
    const QStringList wanted = keysOf(m_program);
    const QStringList present = keysOf(entries(code));
    // A failure here is cured by scripts/update-translations.
    const QStringList missing = missingFrom(wanted, present);
    const QStringList dropped = missingFrom(present, wanted);
    QVERIFY2(missing.isEmpty(), qPrintable(missing.join(QLatin1Char('\n'))));
    QVERIFY2(dropped.isEmpty(), qPrintable(dropped.join(QLatin1Char('\n'))));
    QCOMPARE(present.size(), wanted.size());
}

void TstTranslations::everyEntryIsFinished()
{
    QFETCH(QString, code);
    for (const Entry &entry : entries(code)) {
        QVERIFY2(entry.state.isEmpty(), qPrintable(entry.state + QLatin1String(": ") + describe(entry)));
        QVERIFY2(!entry.translation.isEmpty(), qPrintable(describe(entry)));
        QVERIFY2(!entry.plural, qPrintable(describe(entry)));
    }
}

void TstTranslations::italianIsTheSourceItself()
{
    for (const Entry &entry : m_italian)
        QCOMPARE(entry.translation, entry.source);
}

void TstTranslations::placesAndLineBreaksAgree()
{
    QFETCH(QString, code);
    for (const Entry &entry : entries(code)) {
        const QByteArray shown = describe(entry).toUtf8();
        QVERIFY2(placesOf(entry.source) == placesOf(entry.translation), shown.constData());
        QVERIFY2(entry.source.count(QLatin1Char('\n')) == entry.translation.count(QLatin1Char('\n')),
                 shown.constData());
        QVERIFY2(edgeOf(entry.source, true) == edgeOf(entry.translation, true), shown.constData());
        QVERIFY2(edgeOf(entry.source, false) == edgeOf(entry.translation, false), shown.constData());
    }
}

void TstTranslations::translationsDifferFromTheItalian_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QStringList>("same");
    QTest::newRow("en") << QStringLiteral("en") << QStringList(QStringLiteral("No"));
    QTest::newRow("de") << QStringLiteral("de") << QStringList();
}

void TstTranslations::translationsDifferFromTheItalian()
{
    QFETCH(QString, code);
    QFETCH(QStringList, same);
    // "About" and "Release 3.0" are English in the Italian interface already.
    if (code == QLatin1String("en"))
        same.append(QStringLiteral("About"));
    same.append(sameEverywhere());
    for (const Entry &entry : entries(code))
        if (!same.contains(entry.source))
            QVERIFY2(entry.translation != entry.source, qPrintable(describe(entry)));
}

void TstTranslations::sameItalianTextIsTranslatedTheSameEverywhere()
{
    QFETCH(QString, code);
    QHash<QString, QString> first;
    for (const Entry &entry : entries(code)) {
        const QString key = entry.source + entry.comment;
        if (first.contains(key))
            QVERIFY2(first.value(key) == entry.translation, qPrintable(describe(entry)));
        first.insert(key, entry.translation);
    }
}

void TstTranslations::capitalsStayCapitals()
{
    QFETCH(QString, code);
    const auto inCapitals = [](const QString &text) { return text == text.toUpper(); };
    for (const Entry &entry : entries(code))
        if (inCapitals(entry.source))
            QVERIFY2(inCapitals(entry.translation), qPrintable(describe(entry)));
}

void TstTranslations::everyCharacterIsInBothFonts()
{
    QFETCH(QString, code);
    constexpr qreal pixels = 20;
    for (const char *name : {":/fonts/helr45w.ttf", ":/fonts/helr75w.ttf", ":/fonts/BebasNeue.otf"}) {
        const QRawFont font(QString::fromLatin1(name), pixels);
        QVERIFY2(font.isValid(), name);
        for (const Entry &entry : entries(code))
            for (const QChar letter : entry.translation)
                if (letter != QLatin1Char('\n'))
                    QVERIFY2(font.supportsCharacter(letter),
                             qPrintable(QLatin1String(name) + QString(letter) + describe(entry)));
    }
}

void TstTranslations::adviceAfterAFailedOptimisationIsNoEntry()
{
    // Deliberate: this one advice stays Italian in every language.
    for (const Entry &entry : m_program)
        QVERIFY(entry.source != QLatin1String("Riesegui la procedura di ottimizzazione"));
}

void TstTranslations::compiledFileHoldsEveryEntry()
{
    QFETCH(QString, code);
    QTranslator translator;
    QVERIFY(translator.load(QLatin1String("lang_") + code, kLanguageFolder));
    for (const Entry &entry : entries(code)) {
        const QByteArray comment = entry.comment.toUtf8();
        const QString text = translator.translate(entry.context.toUtf8().constData(), entry.source.toUtf8().constData(),
                                                  comment.isEmpty() ? nullptr : comment.constData());
        QCOMPARE(text, entry.translation);
    }
}

void TstTranslations::standardTextsSpeakTheLanguage_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QByteArray>("context");
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *language, const char *context, const char *source,
                        const QString &expected) {
        QTest::newRow(name) << QString::fromLatin1(language) << QByteArray(context) << QByteArray(source) << expected;
    };
    row("own text, it", "lang_it", "FirstMenu", "GESTIONE E MANUTENZIONE DEL TUO CORVIN4",
        QStringLiteral("GESTIONE E MANUTENZIONE DEL TUO CORVIN4"));
    row("own text, en", "lang_en", "FirstMenu", "GESTIONE E MANUTENZIONE DEL TUO CORVIN4",
        QStringLiteral("MANAGEMENT AND MAINTENANCE OF YOUR CORVIN4"));
    row("own text, de", "lang_de", "FirstMenu", "GESTIONE E MANUTENZIONE DEL TUO CORVIN4",
        QStringLiteral("VERWALTUNG UND WARTUNG IHRES CORVIN4"));
    row("yes, it", "lang_it", "QPlatformTheme", "&Yes", QStringLiteral("&Sì"));
    row("yes, de", "lang_de", "QPlatformTheme", "&Yes", QStringLiteral("&Ja"));
    row("cancel, it", "lang_it", "QPlatformTheme", "Cancel", QStringLiteral("Annulla"));
    row("cancel, de", "lang_de", "QPlatformTheme", "Cancel", QStringLiteral("Abbrechen"));
    row("about, it", "lang_it", "QMessageBox", "About Qt", QStringLiteral("Informazioni su Qt"));
    row("about, de", "lang_de", "QMessageBox", "About Qt", QStringLiteral("Über Qt"));
    // English is what Qt is written in: no entry, the source is shown.
    row("yes, en", "lang_en", "QPlatformTheme", "&Yes", QString());
}

void TstTranslations::standardTextsSpeakTheLanguage()
{
    QFETCH(QString, language);
    QFETCH(QByteArray, context);
    QFETCH(QByteArray, source);
    QFETCH(QString, expected);
    QTranslator translator;
    QVERIFY(translator.load(language, kLanguageFolder));
    QCOMPARE(translator.translate(context.constData(), source.constData()), expected);
}

void TstTranslations::standardButtonsSpeakTheLanguage_data()
{
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("lang_it") << QStringList({QStringLiteral("&Sì"), QStringLiteral("&No"), QStringLiteral("Annulla")});
    QTest::newRow("lang_en") << QStringList({QStringLiteral("&Yes"), QStringLiteral("&No"), QStringLiteral("Cancel")});
    QTest::newRow("lang_de") << QStringList(
        {QStringLiteral("&Ja"), QStringLiteral("&Nein"), QStringLiteral("Abbrechen")});
}

void TstTranslations::standardButtonsSpeakTheLanguage()
{
    QFETCH(QStringList, expected);
    QTranslator translator;
    QVERIFY(translator.load(QLatin1String(QTest::currentDataTag()), kLanguageFolder));
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QMessageBox box;
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    const QStringList texts{box.button(QMessageBox::Yes)->text(), box.button(QMessageBox::No)->text(),
                            box.button(QMessageBox::Cancel)->text()};
    QVERIFY(QCoreApplication::removeTranslator(&translator));
    QCOMPARE(texts, expected);
}

void TstTranslations::oneTranslatorGoesRoundTheLanguages()
{
    QTranslator translator;
    const QList<QPair<QString, QString>> steps{{QStringLiteral("lang_it"), QStringLiteral("INDIETRO")},
                                               {QStringLiteral("lang_en"), QStringLiteral("BACK")},
                                               {QStringLiteral("lang_de"), QStringLiteral("ZURÜCK")},
                                               {QStringLiteral("lang_it"), QStringLiteral("INDIETRO")}};
    for (const auto &step : steps) {
        QVERIFY(translator.load(step.first, kLanguageFolder));
        QCOMPARE(translator.translate("Avanzate", "INDIETRO"), step.second);
    }
}

void TstTranslations::unknownLanguageLoadsNothing()
{
    for (const char *name : {"lang_fr", "lang_es", "no_set", "lang_"}) {
        QTranslator translator;
        QVERIFY2(!translator.load(QString::fromLatin1(name), kLanguageFolder), name);
    }
}

QTEST_MAIN(TstTranslations)

#include "tst_translations.moc"
