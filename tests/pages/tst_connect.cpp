#include "pages/connect.h"

#include "support/languages.h"
#include "support/pagetest.h"

class TestConnect : public QObject
{
    Q_OBJECT

private slots:
    void pageIsHiddenWhenConstructed() {
        QWidget window;
        Connect page(&window);
        window.show();
        QVERIFY(page.isHidden());
    }

    void textsAndStylesAreThoseOfTheForm() {
        const Connect page;
        const auto *description = child<QLabel>(page, "label_descr");
        QCOMPARE(description->text(), "Collega Corvin4 al PC tramite il cavo USB.\nAccendi Corvin4."_s);
        QCOMPARE(description->styleSheet(), "color: rgb(0,0,0);\nbackground-color: rgba(0, 0, 0,0%);"_s);
        QVERIFY(hasFont(*description, sharedFonts().fontTitle18));
        QVERIFY(description->wordWrap());
        const auto *title = child<QLabel>(page, "label_titolo");
        QCOMPARE(title->text(), "Corvin4 NON collegato."_s);
        QCOMPARE(title->styleSheet(), "background-color: rgba(0, 0, 0, 0%);\ncolor: rgb(0,0,0);"_s);
        QVERIFY(hasFont(*title, sharedFonts().fontTitle18));
        QCOMPARE(child<QLabel>(page, "label_image")->styleSheet(), "image: url(:/imgs/collega.png);"_s);
    }

    void pictureIsPainted() {
        Connect page;
        page.resize(1000, 600);
        page.show();
        auto *picture = child<QLabel>(page, "label_image");
        const QImage painted = picture->grab().toImage();
        picture->setStyleSheet(QString());
        QVERIFY(painted != picture->grab().toImage());
    }

    void textsFollowTheLanguage() {
        Connect page;
        page.show();
        {
            const Language english("en"_s);
            QCOMPARE(textOf(page, "label_titolo"), "Corvin4 NOT connected."_s);
            QVERIFY(textOf(page, "label_descr").startsWith("Connect Corvin4"_s));
            QVERIFY(page.isVisible());
        }
        QCOMPARE(textOf(page, "label_titolo"), "Corvin4 NON collegato."_s);
    }
};

PAGE_TEST_MAIN(TestConnect)
#include "tst_connect.moc"
