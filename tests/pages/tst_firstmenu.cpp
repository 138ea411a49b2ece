#include "pages/firstmenu.h"

#include "app/shared/styles.h"
#include "pagesupport.h"
#include "support/boxanswerer.h"
#include "support/simulatedplayer.h"

#include <QLabel>
#include <QSignalSpy>
#include <QtTest>

using namespace PageSupport;

class TestFirstMenu : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { setUp(); }
    void pageIsHiddenWhenConstructed();
    void textsAndLookAreThoseOfTheForm_data();
    void textsAndLookAreThoseOfTheForm();
    void titleIsCentredBlackText();
    void buttonsStandInTheMiddleAtTheirFullWidth_data() { addButtons(); }
    void buttonsStandInTheMiddleAtTheirFullWidth();
    void buttonEmitsItsSignalWhileThePlayerIsThere_data() { addButtons(); }
    void buttonEmitsItsSignalWhileThePlayerIsThere();
    void buttonWithoutThePlayerShowsTheMessageAndEmitsNothing_data() { addButtons(); }
    void buttonWithoutThePlayerShowsTheMessageAndEmitsNothing();
    void playerThatIsPluggedInAgainIsFound();
    void messageSpeaksTheLanguageOfTheProgram();
    void textsFollowTheLanguageAndFit_data();
    void textsFollowTheLanguageAndFit();

private:
    static void addButtons();
};

void TestFirstMenu::addButtons()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QByteArray>("signal");
    QTest::newRow("transfer") << QByteArray("pushBtnTransfer") << QByteArray(SIGNAL(gotoTransfer()));
    QTest::newRow("optimizer") << QByteArray("pushBtnOptimize") << QByteArray(SIGNAL(gotoOptimizer()));
    QTest::newRow("maintenance") << QByteArray("pushBtnUpRes") << QByteArray(SIGNAL(gotoAvanzate()));
}

void TestFirstMenu::pageIsHiddenWhenConstructed()
{
    QWidget window;
    FirstMenu page(&window);
    window.show();
    QVERIFY(page.isHidden());
}

void TestFirstMenu::textsAndLookAreThoseOfTheForm_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("text");
    QTest::newRow("transfer") << QByteArray("pushBtnTransfer")
                              << QStringLiteral("TRASFERISCI LE BASI DAL PC A CORVIN4");
    QTest::newRow("optimizer") << QByteArray("pushBtnOptimize")
                               << QStringLiteral("OTTIMIZZA L'ARCHVIO DELLE BASI DI CORVIN4");
    QTest::newRow("maintenance") << QByteArray("pushBtnUpRes")
                                 << QStringLiteral("AGGIORNA / RIPRISTINA IL SISTEMA OPERATIVO");
}

void TestFirstMenu::textsAndLookAreThoseOfTheForm()
{
    QFETCH(QByteArray, name);
    const FirstMenu page;
    const auto *button = child<QPushButton>(page, name.constData());
    QTEST(button->text(), "text");
    QCOMPARE(button->styleSheet(), QString(Styles::kPage));
    QCOMPARE(button->minimumHeight(), 50);
    QCOMPARE(button->maximumWidth(), 560);
    QCOMPARE(button->cursor().shape(), Qt::PointingHandCursor);
    QVERIFY(hasFont(*button, sharedFonts().fontTitle18));
}

void TestFirstMenu::titleIsCentredBlackText()
{
    const FirstMenu page;
    const auto *title = child<QLabel>(page, "labelDescr");
    QCOMPARE(title->text(), QStringLiteral("GESTIONE E MANUTENZIONE DEL TUO CORVIN4"));
    QVERIFY(title->alignment().testFlag(Qt::AlignHCenter));
    QCOMPARE(title->styleSheet(), QString(Styles::kTransparentLabel));
    QVERIFY(hasFont(*title, sharedFonts().fontTitle18));
}

void TestFirstMenu::buttonsStandInTheMiddleAtTheirFullWidth()
{
    QFETCH(QByteArray, button);
    FirstMenu page;
    page.resize(kPageWidth, kPageHeight);
    page.show();
    const auto *shown = child<QPushButton>(page, button.constData());
    QCOMPARE(shown->width(), 560);
    QCOMPARE(shown->mapTo(&page, QPoint(0, 0)).x(), (kPageWidth - 560) / 2);
}

void TestFirstMenu::buttonEmitsItsSignalWhileThePlayerIsThere()
{
    QFETCH(QByteArray, button);
    QFETCH(QByteArray, signal);
    const SimulatedPlayer player;
    const BoxAnswerer boxes;
    const FirstMenu page;
    QSignalSpy transfer(&page, &FirstMenu::gotoTransfer);
    QSignalSpy optimizer(&page, &FirstMenu::gotoOptimizer);
    QSignalSpy maintenance(&page, &FirstMenu::gotoAvanzate);
    QSignalSpy expected(&page, signal.constData());
    click(page, button.constData());
    QCOMPARE(expected.count(), 1);
    QCOMPARE(transfer.count() + optimizer.count() + maintenance.count(), 1);
}

void TestFirstMenu::buttonWithoutThePlayerShowsTheMessageAndEmitsNothing()
{
    QFETCH(QByteArray, button);
    SimulatedPlayer::disconnect();
    BoxAnswerer boxes;
    boxes.answer(QStringLiteral("Corvin4 non collegato"), QStringLiteral("OK"));
    FirstMenu page;
    page.show();
    QSignalSpy transfer(&page, &FirstMenu::gotoTransfer);
    QSignalSpy optimizer(&page, &FirstMenu::gotoOptimizer);
    QSignalSpy maintenance(&page, &FirstMenu::gotoAvanzate);
    click(page, button.constData());
    QCOMPARE(boxes.seen().size(), 1);
    QCOMPARE(boxes.seen().first().text, QStringLiteral("Ricollega Corvin4 alla porta USB"));
    QCOMPARE(boxes.seen().first().buttons, QStringList{QStringLiteral("OK")});
    QCOMPARE(boxes.seen().first().icon, QMessageBox::Information);
    QVERIFY(boxes.seen().first().hadParent);
    QCOMPARE(transfer.count() + optimizer.count() + maintenance.count(), 0);
    QVERIFY(page.isVisible());
}

void TestFirstMenu::playerThatIsPluggedInAgainIsFound()
{
    SimulatedPlayer player;
    BoxAnswerer boxes;
    const FirstMenu page;
    QSignalSpy transfer(&page, &FirstMenu::gotoTransfer);
    click(page, "pushBtnTransfer");
    QCOMPARE(transfer.count(), 1);
    SimulatedPlayer::disconnect();
    boxes.answer(QStringLiteral("Corvin4 non collegato"), QStringLiteral("OK"));
    click(page, "pushBtnTransfer");
    QCOMPARE(transfer.count(), 1);
    player.connect();
    click(page, "pushBtnTransfer");
    QCOMPARE(transfer.count(), 2);
}

void TestFirstMenu::messageSpeaksTheLanguageOfTheProgram()
{
    SimulatedPlayer::disconnect();
    BoxAnswerer boxes;
    const FirstMenu page;
    const Language german(QStringLiteral("de"));
    boxes.answer(QStringLiteral("Corvin4 nicht verbunden"), QStringLiteral("OK"));
    click(page, "pushBtnOptimize");
    QCOMPARE(boxes.seen().first().text, QStringLiteral("Verbinden Sie Corvin4 wieder mit dem USB-Anschluss"));
}

void TestFirstMenu::textsFollowTheLanguageAndFit_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("transfer");
    QTest::newRow("it") << QStringLiteral("it") << QStringLiteral("GESTIONE E MANUTENZIONE DEL TUO CORVIN4")
                        << QStringLiteral("TRASFERISCI LE BASI DAL PC A CORVIN4");
    QTest::newRow("en") << QStringLiteral("en") << QStringLiteral("MANAGEMENT AND MAINTENANCE OF YOUR CORVIN4")
                        << QStringLiteral("TRANSFER SONGS FROM THE PC TO CORVIN4");
    QTest::newRow("de") << QStringLiteral("de") << QStringLiteral("VERWALTUNG UND WARTUNG IHRES CORVIN4")
                        << QStringLiteral("SONGS VOM PC AUF CORVIN4 ÜBERTRAGEN");
}

void TestFirstMenu::textsFollowTheLanguageAndFit()
{
    QFETCH(QString, code);
    FirstMenu page;
    page.resize(kPageWidth, kPageHeight);
    page.show();
    const Language language(code);
    QVERIFY(page.isVisible());
    QTEST(child<QLabel>(page, "labelDescr")->text(), "title");
    QTEST(child<QPushButton>(page, "pushBtnTransfer")->text(), "transfer");
    QVERIFY(allButtonsShowTheirWholeText(page));
}

QTEST_MAIN(TestFirstMenu)
#include "tst_firstmenu.moc"
