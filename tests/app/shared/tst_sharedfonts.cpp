#include "app/shared/sharedfonts.h"

#include "resources/resources.h"

#include <QCheckBox>
#include <QDir>
#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetrics>
#include <QLabel>
#include <QTest>

class TestSharedFonts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void fontIsAsAgreed_data();
    void fontIsAsAgreed();
    void theSameFontsAreGivenEveryTime();
    void bothFontFilesAreEmbedded();
    void titlesAreSetInTheEmbeddedFont();
    void textIsSetInTheEmbeddedFont();
    void boldTextIsBold();
    void accentsOfCapitalsAreNotCutOff_data();
    void accentsOfCapitalsAreNotCutOff();
};

void TestSharedFonts::initTestCase()
{
    loadResources();
    registerEmbeddedFonts();
}

void TestSharedFonts::fontIsAsAgreed_data()
{
    const SharedFonts &fonts = sharedFonts();
    const QString text = QStringLiteral("Helvetica");
    const QString title = QStringLiteral("Bebas Neue");
    QTest::addColumn<QFont>("font");
    QTest::addColumn<QString>("family");
    QTest::addColumn<int>("points");
    QTest::addColumn<int>("weight");
    QTest::newRow("fontText10") << fonts.fontText10 << text << 10 << 50;
    QTest::newRow("fontText10Bold") << fonts.fontText10Bold << text << 10 << 75;
    QTest::newRow("fontText11") << fonts.fontText11 << text << 11 << 50;
    QTest::newRow("fontText11Bold") << fonts.fontText11Bold << text << 11 << 75;
    QTest::newRow("fontText13") << fonts.fontText13 << text << 13 << 50;
    QTest::newRow("fontTitle14") << fonts.fontTitle14 << title << 14 << 50;
    QTest::newRow("fontTitle18") << fonts.fontTitle18 << title << 18 << 50;
    QTest::newRow("fontTitle22") << fonts.fontTitle22 << title << 22 << 50;
}

void TestSharedFonts::fontIsAsAgreed()
{
    QFETCH(QFont, font);
    QTEST(font.family(), "family");
    QTEST(font.pointSize(), "points");
    QTEST(font.weight(), "weight");
    QVERIFY(!font.italic());
}

void TestSharedFonts::theSameFontsAreGivenEveryTime()
{
    QCOMPARE(&sharedFonts(), &sharedFonts());
}

void TestSharedFonts::bothFontFilesAreEmbedded()
{
    QVERIFY(QFile::exists(QStringLiteral(":/fonts/helr45w.ttf")));
    QVERIFY(QFile::exists(QStringLiteral(":/fonts/BebasNeue.otf")));
}

void TestSharedFonts::titlesAreSetInTheEmbeddedFont()
{
    QCOMPARE(QFontInfo(sharedFonts().fontTitle18).family(), QStringLiteral("Bebas Neue"));
    // Where the system has the family's thinner faces too, the embedded one is still the one that is taken.
    QCOMPARE(QFontInfo(sharedFonts().fontTitle18).styleName(), QStringLiteral("Regular"));
    // Its small letters have the form and the width of capitals.
    const QFontMetrics metrics(sharedFonts().fontTitle22);
    QCOMPARE(metrics.horizontalAdvance(QStringLiteral("corvin")), metrics.horizontalAdvance(QStringLiteral("CORVIN")));
}

void TestSharedFonts::textIsSetInTheEmbeddedFont()
{
    QCOMPARE(QFontInfo(sharedFonts().fontText11).family(), QStringLiteral("Liberation Sans"));
}

void TestSharedFonts::boldTextIsBold()
{
    QVERIFY(QFontInfo(sharedFonts().fontText10Bold).bold());
    QVERIFY(!QFontInfo(sharedFonts().fontText10).bold());
}

void TestSharedFonts::accentsOfCapitalsAreNotCutOff_data()
{
    QTest::addColumn<bool>("isLabel");
    QTest::addColumn<QFont>("font");
    QTest::newRow("label 18") << true << sharedFonts().fontTitle18;
    QTest::newRow("label 22") << true << sharedFonts().fontTitle22;
    QTest::newRow("check box 18") << false << sharedFonts().fontTitle18;
    QTest::newRow("check box 22") << false << sharedFonts().fontTitle22;
}

void TestSharedFonts::accentsOfCapitalsAreNotCutOff()
{
    QFETCH(bool, isLabel);
    QFETCH(QFont, font);
    const QString text = QStringLiteral("ÄÖÜÈ");
    QScopedPointer<QWidget> widget;
    if (isLabel)
        widget.reset(new QLabel(text));
    else
        widget.reset(new QCheckBox(text));
    setTitleFont(widget.data(), font);
    QPalette blackOnWhite(Qt::white);
    blackOnWhite.setColor(QPalette::WindowText, Qt::black);
    widget->setPalette(blackOnWhite);
    widget->resize(widget->sizeHint());
    const QImage image = widget->grab().toImage();

    int inked = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            inked += qGray(image.pixel(x, y)) < 128 ? 1 : 0;
    }
    QVERIFY(inked > 0);
    for (int x = 0; x < image.width(); ++x)
        QVERIFY2(qGray(image.pixel(x, 0)) > 200, "the accents reach the widget's edge");
}

QTEST_MAIN(TestSharedFonts)
#include "tst_sharedfonts.moc"
