#include "resources/resources.h"
#include "support/platform.h"
#include "support/same.h"

namespace {

const QString kLanguageFolder = ":/language/"_s;

/// One entry of a .ts file.
struct Entry
{
    QString context;
    bool hasPluralForms;
    QString source = {};
    QString comment = {};
    QString translation = {};
    QString state = {}; ///< empty when finished; else "unfinished", "vanished" or "obsolete"

    QString key() const { return context + " | "_s + source + " | "_s + comment; }
};

QList<Entry> readEntries(const QString &path) {
    QList<Entry> entries;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        failTest(path + " cannot be read"_s);
    QXmlStreamReader xml(&file);
    QString context;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        const QString tag = xml.name().toString();
        const QXmlStreamAttributes attributes = xml.attributes();
        if (tag == "name"_s)
            context = xml.readElementText();
        else if (tag == "message"_s)
            entries.append({context, attributes.value("numerus"_s) == "yes"_s});
        else if (tag == "source"_s)
            entries.last().source = xml.readElementText();
        else if (tag == "comment"_s)
            entries.last().comment = xml.readElementText();
        else if (tag == "translation"_s) {
            entries.last().state = attributes.value("type"_s).toString();
            entries.last().translation = xml.readElementText(QXmlStreamReader::IncludeChildElements);
        }
    }
    if (xml.hasError())
        failTest(path + QLatin1Char(' ') + xml.errorString());
    return entries;
}

QStringList keysOf(const QList<Entry> &entries) {
    QStringList keys;
    for (const Entry &entry : entries)
        keys.append(entry.key());
    keys.sort();
    return keys;
}

/// All that matches in a text, sorted.
QStringList matchesIn(const QString &text, const QString &pattern) {
    QStringList found;
    QRegularExpressionMatchIterator matches = QRegularExpression(pattern).globalMatch(text);
    while (matches.hasNext())
        found.append(matches.next().captured());
    found.sort();
    return found;
}

bool agree(const Entry &entry, const char *pattern) {
    return matchesIn(entry.source, QLatin1String(pattern)) == matchesIn(entry.translation, QLatin1String(pattern));
}

bool allFontsHave(const QString &text) {
    for (const char *file : {":/fonts/helr45w.ttf", ":/fonts/helr75w.ttf", ":/fonts/BebasNeue.otf"}) {
        const QRawFont font(QLatin1String(file), 20);
        for (const QChar letter : text)
            if (!font.isValid() || (letter != QLatin1Char('\n') && !font.supportsCharacter(letter)))
                return false;
    }
    return true;
}

/// What holds for each entry in each language.
using Rule = std::function<bool(const Entry &)>;
const QVector<QPair<const char *, Rule>> kRules = {
    {"is finished", [](const Entry &entry) { return entry.state.isEmpty(); }},
    {"is translated", [](const Entry &entry) { return !entry.translation.isEmpty(); }},
    {"has no plural forms", [](const Entry &entry) { return !entry.hasPluralForms; }},
    // Numbered places, printf places and percent signs.
    {"keeps its places", [](const Entry &entry) { return agree(entry, "%(L?\\d{1,2}|[a-z]%?|%)"); }},
    // A language that is longer may take one line more, where the text has lines at all.
    {"keeps its line breaks",
     [](const Entry &entry) {
         const int breaks = entry.source.count(QLatin1Char('\n'));
         const int more = entry.translation.count(QLatin1Char('\n')) - breaks;
         return more == 0 || (more == 1 && breaks > 0);
     }},
    // Pieces that are put together depend on it.
    {"begins with the same white space", [](const Entry &entry) { return agree(entry, "^\\s*"); }},
    {"ends with the same white space", [](const Entry &entry) { return agree(entry, "\\s*$"); }},
    {"keeps its capitals",
     [](const Entry &entry) {
         return entry.source != entry.source.toUpper() || entry.translation == entry.translation.toUpper();
     }},
    {"is drawn by every font", [](const Entry &entry) { return allFontsHave(entry.translation); }},
};

} // namespace

Q_DECLARE_METATYPE(Rule)

class TestTranslations : public QObject
{
    Q_OBJECT

    QStringList program; ///< keys of what a fresh run of lupdate finds
    QMap<QString, QList<Entry>> entriesOf;

    static void addLanguages() {
        columns<QString>("code");
        for (const char *code : {"it", "en", "de"})
            row(code, QString::fromLatin1(code));
    }
    void verifyEntries(const QString &code, const Rule &rule) const {
        const QList<Entry> entries = entriesOf.value(code);
        QVERIFY(!entries.isEmpty());
        for (const Entry &entry : entries)
            QVERIFY2(rule(entry), qPrintable(entry.key() + " -> "_s + entry.translation));
    }

private slots:
    void initTestCase() {
        SKIP_ON_WINDOWS("SKIPPED WHOLE: lupdate is a program of the machine that builds");
        loadResources();
        const QTemporaryDir folder;
        const QString fresh = folder.filePath("fresh.ts"_s);
        QProcess lupdate;
        lupdate.start(QStringLiteral(CORVIN_LUPDATE),
                      {"-silent"_s, "-locations"_s, "none"_s, QStringLiteral(CORVIN_SOURCE_FOLDER), "-ts"_s, fresh});
        QVERIFY2(lupdate.waitForFinished(60000), qPrintable(lupdate.errorString()));
        QCOMPARE(lupdate.exitCode(), 0);
        program = keysOf(readEntries(fresh));
        QVERIFY(program.size() > 50);
        for (const QString &code : words("it en de"))
            entriesOf[code] = readEntries(QStringLiteral(CORVIN_LANGUAGE_FOLDER "/lang_%1.ts").arg(code));
    }

    void everyTextOfTheProgramHasItsEntryAndNoOtherHas() {
        // A failure here is cured by scripts/update-translations.
        for (const char *code : {"it", "en", "de"})
            same(code, keysOf(entriesOf.value(QLatin1String(code))), program);
    }

    void everyEntryFollowsTheRule_data() {
        columns<QString, Rule>("code", "rule");
        for (const auto &rule : kRules)
            for (const QString &code : words("it en de"))
                row(qPrintable(code + QLatin1Char(' ') + QLatin1String(rule.first)), code, rule.second);
    }
    void everyEntryFollowsTheRule() {
        QFETCH(QString, code);
        QFETCH(Rule, rule);
        verifyEntries(code, rule);
    }

    void italianIsTheSourceItself() {
        verifyEntries("it"_s, [](const Entry &entry) { return entry.translation == entry.source; });
    }

    void translationsDifferFromTheItalian() {
        const QStringList inAll = {"Corvin4 Manager"_s, "Release 3.0"_s, "STOP"_s, "OK"_s, "Ok"_s, "???"_s};
        const auto differsOrIs = [](const QStringList &texts) {
            return [texts](const Entry &one) { return one.translation != one.source || texts.contains(one.source); };
        };
        verifyEntries("de"_s, differsOrIs(inAll));
        // "About" and "Release 3.0" are English in the Italian interface already.
        verifyEntries("en"_s, differsOrIs(inAll + words("No About")));
    }

    void sameItalianTextIsTranslatedTheSameEverywhere_data() { addLanguages(); }
    void sameItalianTextIsTranslatedTheSameEverywhere() {
        QFETCH(QString, code);
        QHash<QString, QString> first;
        verifyEntries(code, [&first](const Entry &entry) {
            QString &known = first[entry.source + entry.comment];
            if (known.isEmpty())
                known = entry.translation;
            return known == entry.translation;
        });
    }

    void adviceAfterAFailedOptimisationIsNoEntry() {
        // Deliberate: this one advice stays Italian in every language.
        QVERIFY(program.filter(" | Riesegui la procedura di ottimizzazione | "_s).isEmpty());
    }

    void compiledFileHoldsEveryEntry_data() { addLanguages(); }
    void compiledFileHoldsEveryEntry() {
        QFETCH(QString, code);
        QTranslator translator;
        QVERIFY(translator.load("lang_"_s + code, kLanguageFolder));
        verifyEntries(code, [&translator](const Entry &entry) {
            const QByteArray comment = entry.comment.toUtf8();
            return translator.translate(qUtf8Printable(entry.context), qUtf8Printable(entry.source),
                                        comment.isEmpty() ? nullptr : comment.constData()) == entry.translation;
        });
    }

    void standardTextsSpeakTheLanguage() {
        const auto text = [](const char *language, const char *context, const char *source, const QString &expected) {
            QTranslator translator;
            QVERIFY(translator.load(QLatin1String(language), kLanguageFolder));
            same(language, translator.translate(context, source), expected);
        };
        const char *const title = "GESTIONE E MANUTENZIONE DEL TUO CORVIN4";
        text("lang_it", "FirstMenu", title, "GESTIONE E MANUTENZIONE DEL TUO CORVIN4"_s);
        text("lang_en", "FirstMenu", title, "MANAGE AND MAINTAIN YOUR CORVIN4"_s);
        text("lang_de", "FirstMenu", title, "VERWALTUNG UND WARTUNG IHRES CORVIN4"_s);
        text("lang_it", "QPlatformTheme", "&Yes", "&Si"_s); // as the program's own buttons have it
        text("lang_de", "QPlatformTheme", "&Yes", "&Ja"_s);
        text("lang_it", "QPlatformTheme", "Cancel", "Annulla"_s);
        text("lang_de", "QPlatformTheme", "Cancel", "Abbrechen"_s);
        text("lang_it", "QMessageBox", "About Qt", "Informazioni su Qt"_s);
        text("lang_de", "QMessageBox", "About Qt", "Über Qt"_s);
        // English is what Qt is written in: no entry, the source is shown.
        text("lang_en", "QPlatformTheme", "&Yes", QString());
    }

    void standardButtonsSpeakTheLanguage() {
        const auto check = [](const char *language, const QStringList &expected) {
            QTranslator translator;
            QVERIFY(translator.load(QLatin1String(language), kLanguageFolder));
            QVERIFY(QCoreApplication::installTranslator(&translator));
            QMessageBox box;
            QStringList texts;
            for (const auto button : {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel})
                texts.append(box.addButton(button)->text());
            QVERIFY(QCoreApplication::removeTranslator(&translator));
            same(language, texts, expected);
        };
        check("lang_it", words("&Si &No Annulla"));
        check("lang_en", words("&Yes &No Cancel"));
        check("lang_de", words("&Ja &Nein Abbrechen"));
    }

    void oneTranslatorGoesRoundTheLanguages() {
        QTranslator translator;
        const QStringList texts = words("INDIETRO BACK ZURÜCK INDIETRO");
        for (int i = 0; i < texts.size(); ++i) {
            QVERIFY(translator.load(words("lang_it lang_en lang_de lang_it").at(i), kLanguageFolder));
            QCOMPARE(translator.translate("Avanzate", "INDIETRO"), texts.at(i));
        }
    }

    void unknownLanguageLoadsNothing() {
        for (const QString &name : words("lang_fr lang_es no_set lang_"))
            QVERIFY2(!QTranslator().load(name, kLanguageFolder), qPrintable(name));
    }
};

QTEST_MAIN(TestTranslations)
#include "tst_translations.moc"
