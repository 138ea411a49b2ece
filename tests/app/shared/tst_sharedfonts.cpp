#include "support/pagetest.h"
#include "support/pictures.h"
#include "support/same.h"

class TestSharedFonts : public QObject
{
    Q_OBJECT

private slots:
    void fontIsAsAgreed() {
        const SharedFonts &fonts = sharedFonts();
        const QString text = "Helvetica"_s;
        const QString title = "Bebas Neue"_s;
        const auto check = [](const char *name, const QFont &font, const QString &family, int points, int weight) {
            same(name, font.family(), family);
            same(name, font.pointSize(), points);
            same(name, font.weight(), weight);
            QVERIFY2(!font.italic(), name);
            // The embedded files draw them, beside the fonts of the system.
            const QFontInfo drawn(font);
            same(name, drawn.family(), family == "Helvetica"_s ? "Liberation Sans"_s : "Bebas Neue"_s);
            same(name, drawn.bold(), font.weight() == QFont::Bold);
        };
        check("fontText10", fonts.fontText10, text, 10, 50);
        check("fontText10Bold", fonts.fontText10Bold, text, 10, 75);
        check("fontText11", fonts.fontText11, text, 11, 50);
        check("fontText11Bold", fonts.fontText11Bold, text, 11, 75);
        check("fontText13", fonts.fontText13, text, 13, 50);
        check("fontTitle14", fonts.fontTitle14, title, 14, 50);
        check("fontTitle18", fonts.fontTitle18, title, 18, 50);
        check("fontTitle22", fonts.fontTitle22, title, 22, 50);
    }

    void theSameFontsAreGivenEveryTime() { QCOMPARE(&sharedFonts(), &sharedFonts()); }

    void titlesAreSetInTheEmbeddedFont() {
        // Where the system has the family's thinner faces too, the embedded one is still the one that is taken.
        QCOMPARE(QFontInfo(sharedFonts().fontTitle18).styleName(), "Regular"_s);
        // Its small letters have the form and the width of capitals.
        const QFontMetrics metrics(sharedFonts().fontTitle22);
        QCOMPARE(metrics.horizontalAdvance("corvin"_s), metrics.horizontalAdvance("CORVIN"_s));
    }

    void accentsOfCapitalsAreNotCutOff() {
        for (const QFont &font : {sharedFonts().fontTitle18, sharedFonts().fontTitle22}) {
            QLabel label("ÄÖÜÈ"_s);
            verifyAccents(label, font);
            QCheckBox box("ÄÖÜÈ"_s);
            verifyAccents(box, font);
        }
    }

private:
    static void verifyAccents(QWidget &widget, const QFont &font) {
        setTitleFont(&widget, font);
        QPalette blackOnWhite(Qt::white);
        blackOnWhite.setColor(QPalette::WindowText, Qt::black);
        widget.setPalette(blackOnWhite);
        widget.resize(widget.sizeHint());
        const QImage image = widget.grab().toImage();
        QVERIFY(countPixels(image, [](const QColor &colour) { return qGray(colour.rgb()) < 128; }) > 0);
        const QImage edge = image.copy(0, 0, image.width(), 1);
        QVERIFY2(countPixels(edge, [](const QColor &colour) { return qGray(colour.rgb()) <= 200; }) == 0,
                 qPrintable("the accents reach the edge: "_s + font.toString()));
    }
};

PAGE_TEST_MAIN(TestSharedFonts)
#include "tst_sharedfonts.moc"
