#include "app/shared/sharedfonts.h"
#include "resources/resources.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFontDatabase>
#include <QFontInfo>
#include <QRawFont>
#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr qreal kPixels = 24;

/// The table of a font file that holds its checksum and its dates: no two files share it.
QByteArray fingerprintOf(const QRawFont &font)
{
    return font.fontTable("head");
}

/// Name of the embedded file that really draws @p font; empty when none does. Qt's own family name would not do: it
/// repeats what was asked for.
QString fileOf(const QFont &font)
{
    const QByteArray wanted = fingerprintOf(QRawFont::fromFont(font));
    const QDir folder(QStringLiteral(":/fonts/"));
    for (const QString &name : folder.entryList(QDir::Files))
        if (!wanted.isEmpty() && fingerprintOf(QRawFont(folder.filePath(name), kPixels)) == wanted)
            return name;
    return QString();
}

/// The families of the font database without the generic names that Qt lists even where nothing stands behind them.
QStringList realFamilies()
{
    QStringList families = QFontDatabase().families();
    for (const char *generic : {"Monospace", "Sans Serif", "Serif"})
        families.removeAll(QString::fromLatin1(generic));
    families.sort();
    return families;
}

} // namespace

/// The embedded fonts on a machine that has no fonts at all: what is found can only come out of the program.
class TstFonts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void machineHasNoFontsOfItsOwn();
    void threeFilesAreEmbedded();
    void familiesResolveToTheEmbeddedFiles_data();
    void familiesResolveToTheEmbeddedFiles();
    void sharedFontsAreDrawnByTheEmbeddedFiles();
    void titleFontHasTheCapitalsOfAllLanguages();
};

void TstFonts::initTestCase()
{
    loadResources();
}

void TstFonts::machineHasNoFontsOfItsOwn()
{
    const QStringList before = realFamilies();
    registerEmbeddedFonts();
    QCOMPARE(before, QStringList());
    QCOMPARE(realFamilies(), QStringList({QStringLiteral("Bebas Neue"), QStringLiteral("Liberation Sans")}));
}

void TstFonts::threeFilesAreEmbedded()
{
    const QStringList names = QDir(QStringLiteral(":/fonts/")).entryList(QDir::Files, QDir::Name);
    QCOMPARE(names, QStringList({QStringLiteral("BebasNeue.otf"), QStringLiteral("helr45w.ttf"),
                                 QStringLiteral("helr75w.ttf")}));
}

void TstFonts::familiesResolveToTheEmbeddedFiles_data()
{
    QTest::addColumn<QString>("family");
    QTest::addColumn<int>("weight");
    QTest::addColumn<QString>("resolved");
    QTest::addColumn<QString>("file");
    QTest::newRow("text") << QStringLiteral("Helvetica") << int(QFont::Normal) << QStringLiteral("Liberation Sans")
                          << QStringLiteral("helr45w.ttf");
    QTest::newRow("bold text") << QStringLiteral("Helvetica") << int(QFont::Bold) << QStringLiteral("Liberation Sans")
                               << QStringLiteral("helr75w.ttf");
    QTest::newRow("title") << QStringLiteral("Bebas Neue") << int(QFont::Normal) << QStringLiteral("Bebas Neue")
                           << QStringLiteral("BebasNeue.otf");
}

void TstFonts::familiesResolveToTheEmbeddedFiles()
{
    QFETCH(QString, family);
    QFETCH(int, weight);
    QFETCH(QString, resolved);
    QFETCH(QString, file);
    const QFont font(family, 18, weight);
    QCOMPARE(QFontInfo(font).family(), resolved);
    QCOMPARE(fileOf(font), file);
}

void TstFonts::sharedFontsAreDrawnByTheEmbeddedFiles()
{
    const SharedFonts &fonts = sharedFonts();
    const QString text = QStringLiteral("helr45w.ttf");
    const QString bold = QStringLiteral("helr75w.ttf");
    const QString title = QStringLiteral("BebasNeue.otf");
    QCOMPARE(fileOf(fonts.fontText10), text);
    QCOMPARE(fileOf(fonts.fontText10Bold), bold);
    QCOMPARE(fileOf(fonts.fontText11), text);
    QCOMPARE(fileOf(fonts.fontText11Bold), bold);
    QCOMPARE(fileOf(fonts.fontText13), text);
    QCOMPARE(fileOf(fonts.fontTitle14), title);
    QCOMPARE(fileOf(fonts.fontTitle18), title);
    QCOMPARE(fileOf(fonts.fontTitle22), title);
}

void TstFonts::titleFontHasTheCapitalsOfAllLanguages()
{
    const QRawFont title(QStringLiteral(":/fonts/BebasNeue.otf"), kPixels);
    QVERIFY(title.isValid());
    const QString needed = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789ÀÈÉÌÒÙÄÖÜß'/!?.,:[]()");
    for (const QChar letter : needed)
        QVERIFY2(title.supportsCharacter(letter), qPrintable(QString(letter)));
}

int main(int argc, char **argv)
{
    const QTemporaryDir folder;
    QFile config(folder.filePath(QStringLiteral("fonts.conf")));
    if (!config.open(QIODevice::WriteOnly) || config.write("<fontconfig/>\n") < 0)
        return 1;
    config.close();
    qputenv("FONTCONFIG_FILE", QFile::encodeName(config.fileName()));
    QApplication application(argc, argv);
    TstFonts test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_fonts.moc"
