#include "app/shared/sharedfonts.h"
#include "resources/resources.h"
#include "support/same.h"

constexpr qreal kPixels = 24;

/// The table of a font file that holds its checksum and its dates: no two files share it.
static QByteArray fingerprintOf(const QRawFont &font) {
    return font.fontTable("head");
}

/// Name of the embedded file that really draws @p font; empty when none does. Qt's own family name would not do: it
/// repeats what was asked for.
static QString fileOf(const QFont &font) {
    const QByteArray wanted = fingerprintOf(QRawFont::fromFont(font));
    const QStringList names = QDir(":/fonts/"_s).entryList(QDir::Files);
    for (const QString &name : names) {
        if (!wanted.isEmpty() && fingerprintOf(QRawFont(":/fonts/"_s + name, kPixels)) == wanted)
            return name;
    }
    return QString();
}

/// The families of the font database without the generic names that Qt lists even where nothing stands behind them.
static QStringList realFamilies() {
    QStringList families = QFontDatabase().families();
    for (const char *generic : {"Monospace", "Sans Serif", "Serif"})
        families.removeAll(QString::fromLatin1(generic));
    families.sort();
    return families;
}

/// The embedded fonts on a machine that has no fonts at all: what is found can only come out of the program.
class TestFonts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { loadResources(); }

    void machineHasNoFontsOfItsOwn() {
        const QStringList before = realFamilies();
        registerEmbeddedFonts();
        QCOMPARE(before, QStringList());
        QCOMPARE(realFamilies(), QStringList({"Bebas Neue"_s, "Liberation Sans"_s}));
    }

    void threeFilesAreEmbedded() {
        const QStringList names = QDir(":/fonts/"_s).entryList(QDir::Files, QDir::Name);
        QCOMPARE(names, words("BebasNeue.otf helr45w.ttf helr75w.ttf"));
    }

    void sharedFontIsDrawnByItsEmbeddedFile() {
        const SharedFonts &fonts = sharedFonts();
        const auto drawn = [](const QFont &font) { return QFontInfo(font).family() + ", "_s + fileOf(font); };
        for (const QFont &font : {fonts.fontText10, fonts.fontText11, fonts.fontText13})
            same(qPrintable(font.toString()), drawn(font), "Liberation Sans, helr45w.ttf"_s);
        for (const QFont &font : {fonts.fontText10Bold, fonts.fontText11Bold})
            same(qPrintable(font.toString()), drawn(font), "Liberation Sans, helr75w.ttf"_s);
        for (const QFont &font : {fonts.fontTitle14, fonts.fontTitle18, fonts.fontTitle22})
            same(qPrintable(font.toString()), drawn(font), "Bebas Neue, BebasNeue.otf"_s);
    }

    void titleFontHasTheCapitalsOfAllLanguages() {
        const QRawFont title(":/fonts/BebasNeue.otf"_s, kPixels);
        QVERIFY(title.isValid());
        for (const QChar letter : "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789ÀÈÉÌÒÙÄÖÜß'/!?.,:[]()"_s)
            QVERIFY2(title.supportsCharacter(letter), qPrintable(QString(letter)));
    }
};

int main(int argc, char **argv) {
    const QTemporaryDir folder;
    QFile config(folder.filePath("fonts.conf"_s));
    if (!config.open(QIODevice::WriteOnly) || config.write("<fontconfig/>\n") < 0)
        return 1;
    config.close();
    qputenv("FONTCONFIG_FILE", QFile::encodeName(config.fileName()));
    QApplication application(argc, argv);
    TestFonts test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_fonts.moc"
