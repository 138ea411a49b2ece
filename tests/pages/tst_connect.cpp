#include "pages/connect.h"

#include "pagesupport.h"

#include <QLabel>
#include <QtTest>

using namespace PageSupport;

class TestConnect : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { setUp(); }
    void pageIsHiddenWhenConstructed();
    void textsAndStylesAreThoseOfTheForm();
    void pictureIsPainted();
    void textsFollowTheLanguage();
};

void TestConnect::pageIsHiddenWhenConstructed()
{
    QWidget window;
    Connect page(&window);
    window.show();
    QVERIFY(page.isHidden());
}

void TestConnect::textsAndStylesAreThoseOfTheForm()
{
    const Connect page;
    const auto *description = child<QLabel>(page, "label_descr");
    QCOMPARE(description->text(), QStringLiteral("Collega Corvin4 al PC tramite il cavo USB.\nAccendi Corvin4."));
    QCOMPARE(description->styleSheet(), QStringLiteral("color: rgb(0,0,0);\nbackground-color: rgba(0, 0, 0,0%);"));
    QVERIFY(hasFont(*description, sharedFonts().fontTitle18));
    QVERIFY(description->wordWrap());
    const auto *title = child<QLabel>(page, "label_titolo");
    QCOMPARE(title->text(), QStringLiteral("Corvin4 NON collegato."));
    QCOMPARE(title->styleSheet(), QStringLiteral("background-color: rgba(0, 0, 0, 0%);\ncolor: rgb(0,0,0);"));
    QVERIFY(hasFont(*title, sharedFonts().fontTitle18));
    QCOMPARE(child<QLabel>(page, "label_image")->styleSheet(), QStringLiteral("image: url(:/imgs/collega.png);"));
}

void TestConnect::pictureIsPainted()
{
    Connect page;
    page.resize(kPageWidth, kPageHeight);
    page.show();
    auto *picture = child<QLabel>(page, "label_image");
    const QImage painted = picture->grab().toImage();
    picture->setStyleSheet(QString());
    QVERIFY(painted != picture->grab().toImage());
}

void TestConnect::textsFollowTheLanguage()
{
    Connect page;
    page.show();
    {
        const Language english(QStringLiteral("en"));
        QCOMPARE(child<QLabel>(page, "label_titolo")->text(), QStringLiteral("Corvin4 NOT connected."));
        QVERIFY(child<QLabel>(page, "label_descr")->text().startsWith(QStringLiteral("Connect Corvin4")));
        QVERIFY(page.isVisible());
    }
    QCOMPARE(child<QLabel>(page, "label_titolo")->text(), QStringLiteral("Corvin4 NON collegato."));
}

QTEST_MAIN(TestConnect)
#include "tst_connect.moc"
