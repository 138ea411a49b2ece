#include "support/pagetest.h"
#include "support/pictures.h"

class TestSharedFonts : public QObject
{
    Q_OBJECT

private slots:
    void fontIsAsAgreed_data() {
        const SharedFonts &fonts = sharedFonts();
        const QString text = "Helvetica"_s;
        const QString title = "Bebas Neue"_s;
        columns<QFont, QString, int, int>("font", "family", "points", "weight");
        row("fontText10", fonts.fontText10, text, 10, 50);
        row("fontText10Bold", fonts.fontText10Bold, text, 10, 75);
        row("fontText11", fonts.fontText11, text, 11, 50);
        row("fontText11Bold", fonts.fontText11Bold, text, 11, 75);
        row("fontText13", fonts.fontText13, text, 13, 50);
        row("fontTitle14", fonts.fontTitle14, title, 14, 50);
        row("fontTitle18", fonts.fontTitle18, title, 18, 50);
        row("fontTitle22", fonts.fontTitle22, title, 22, 50);
    }
    void fontIsAsAgreed() {
        QFETCH(QFont, font);
        QTEST(font.family(), "family");
        QTEST(font.pointSize(), "points");
        QTEST(font.weight(), "weight");
        QVERIFY(!font.italic());
        // The embedded files draw them, beside the fonts of the system.
        const QFontInfo drawn(font);
        QCOMPARE(drawn.family(), font.family() == "Helvetica"_s ? "Liberation Sans"_s : "Bebas Neue"_s);
        QCOMPARE(drawn.bold(), font.weight() == QFont::Bold);
    }

    void theSameFontsAreGivenEveryTime() { QCOMPARE(&sharedFonts(), &sharedFonts()); }

    void titlesAreSetInTheEmbeddedFont() {
        // Where the system has the family's thinner faces too, the embedded one is still the one that is taken.
        QCOMPARE(QFontInfo(sharedFonts().fontTitle18).styleName(), "Regular"_s);
        // Its small letters have the form and the width of capitals.
        const QFontMetrics metrics(sharedFonts().fontTitle22);
        QCOMPARE(metrics.horizontalAdvance("corvin"_s), metrics.horizontalAdvance("CORVIN"_s));
    }

    void accentsOfCapitalsAreNotCutOff_data() {
        columns<bool, QFont>("isLabel", "font");
        row("label 18", true, sharedFonts().fontTitle18);
        row("label 22", true, sharedFonts().fontTitle22);
        row("check box 18", false, sharedFonts().fontTitle18);
        row("check box 22", false, sharedFonts().fontTitle22);
    }
    void accentsOfCapitalsAreNotCutOff() {
        QFETCH(bool, isLabel);
        QFETCH(QFont, font);
        std::unique_ptr<QWidget> widget;
        if (isLabel)
            widget = std::make_unique<QLabel>("ÄÖÜÈ"_s);
        else
            widget = std::make_unique<QCheckBox>("ÄÖÜÈ"_s);
        setTitleFont(widget.get(), font);
        QPalette blackOnWhite(Qt::white);
        blackOnWhite.setColor(QPalette::WindowText, Qt::black);
        widget->setPalette(blackOnWhite);
        widget->resize(widget->sizeHint());
        const QImage image = widget->grab().toImage();
        QVERIFY(countPixels(image, [](const QColor &colour) { return qGray(colour.rgb()) < 128; }) > 0);
        const QImage edge = image.copy(0, 0, image.width(), 1);
        QVERIFY2(countPixels(edge, [](const QColor &colour) { return qGray(colour.rgb()) <= 200; }) == 0,
                 "the accents reach the widget's edge");
    }
};

PAGE_TEST_MAIN(TestSharedFonts)
#include "tst_sharedfonts.moc"
