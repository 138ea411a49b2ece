#include "app/mainwindow.h"

#include "app/appsettings.h"
#include "app/shared/sharedfonts.h"
#include "optimizer/ottimizza.h"
#include "pages/firstmenu.h"
#include "resources/resources.h"
#include "support/boxanswerer.h"
#include "support/simulatedplayer.h"
#include "windowparts.h"

#include <QApplication>
#include <QFrame>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QTest>

using namespace WindowParts;

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void formCarriesItsTextsAndStyles();
    void releaseAgreesWithTheVersionOfTheProject();
    void widgetsHaveTheSharedFonts();
    void pictureFillsTheWindowInAllColourGroups();
    void pictureShowsThroughTheScrollArea();
    void darkDesktopLeavesTheTextsOnThePictureReadable();
    void progressIsHiddenAtTheStart();
    void pagesAreHiddenChildrenOfTheFrame();
    void shownPageFillsTheFrame();
    void openingHeightLeavesRoomForTheFrame_data();
    void openingHeightLeavesRoomForTheFrame();
    void windowTallerThanTheScreenOpensShorter();
    void windowFlagsAreThoseOfAPlainWindow();
    void aboutBoxIsQts();
    void languageChangeAppliesTheTextsAgain();
    void languageChangeDuringARunLeavesTheBarAlone();
    void longStatusTextDoesNotWidenTheWindow();
    void statusTextIsNeverTakenForMarkup();
};

void TestMainWindow::initTestCase()
{
    loadResources();
    registerEmbeddedFonts();
}

void TestMainWindow::init()
{
    SimulatedPlayer::disconnect();
    appSettings().setValue(QStringLiteral("Application/Language"), QStringLiteral("lang_it"));
}

void TestMainWindow::formCarriesItsTextsAndStyles()
{
    const MainWindow window;
    QCOMPARE(window.windowTitle(), QStringLiteral("Corvin4 Manager"));
    QVERIFY(!window.windowIcon().isNull());
    QCOMPARE(child<QLabel>(window, "labelRelease")->text(), QStringLiteral("Release 3.0"));

    const auto *stop = child<QPushButton>(window, "pushButtonStop");
    QCOMPARE(stop->text(), QStringLiteral("STOP"));
    QCOMPARE(stop->styleSheet(), QStringLiteral("background-color: rgb(51, 51, 51);\ncolor: rgb(249,191,0);"));

    const auto *about = child<QPushButton>(window, "pushButtonAboutQT");
    QCOMPARE(about->text(), QStringLiteral("About"));
    QCOMPARE(about->styleSheet(),
             QStringLiteral("/* background-color: rgb(51, 51, 51); */\n/* color: rgb(249,191,0); */\n"
                            "background-color: rgb(0, 0, 0, 0);\ncolor: rgb(51, 51, 51);"));
    // A button that is not flat is painted black by this style.
    QVERIFY(about->isFlat());

    const auto *action = child<QLabel>(window, "labelAction");
    QCOMPARE(action->text(), QString());
    QCOMPARE(action->styleSheet(), QStringLiteral("color: rgb(0,0,0);background-color: rgba(0, 0, 0,0%);"));
    QVERIFY(action->wordWrap());

    const auto *bar = child<QProgressBar>(window, "progressBar");
    QCOMPARE(bar->format(), QStringLiteral("%p%"));
    QCOMPARE(bar->minimum(), 0);
    QCOMPARE(bar->maximum(), 100);
    QCOMPARE(bar->value(), 0);
    QCOMPARE(bar->styleSheet(),
             QStringLiteral("QProgressBar {border: 2px solid grey;border-radius: 5px;text-align: center;}"
                            "QProgressBar::chunk {background-color: #f9bf00;width: 20px;}"));

    const auto *language = child<QPushButton>(window, "pButLang");
    QCOMPARE(language->text(), QStringLiteral("IT"));
    QCOMPARE(language->styleSheet(),
             QStringLiteral("* {\n\tbackground-color: rgb(51, 51, 51);\n\tcolor: rgb(249,191,0);\n}\n\n"
                            "*:disabled {\n\tcolor: rgb(200,200,200);\n}\n"));
}

void TestMainWindow::releaseAgreesWithTheVersionOfTheProject()
{
    const MainWindow window;
    QCOMPARE(child<QLabel>(window, "labelRelease")->text(), QStringLiteral("Release " CORVIN_VERSION));
}

void TestMainWindow::widgetsHaveTheSharedFonts()
{
    const MainWindow window;
    QCOMPARE(child<QProgressBar>(window, "progressBar")->font().toString(), sharedFonts().fontTitle22.toString());
    QCOMPARE(child<QPushButton>(window, "pushButtonStop")->font().toString(), sharedFonts().fontTitle18.toString());
    QCOMPARE(child<QPushButton>(window, "pButLang")->font().toString(), sharedFonts().fontText10Bold.toString());
    QCOMPARE(child<QLabel>(window, "labelRelease")->font().toString(), sharedFonts().fontText10.toString());
}

void TestMainWindow::pictureFillsTheWindowInAllColourGroups()
{
    const MainWindow window;
    const QImage picture(QStringLiteral(":/imgs/sfondo_prog.png"));
    QVERIFY(!picture.isNull());
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        const QImage texture = window.palette().brush(group, QPalette::Window).textureImage();
        QCOMPARE(texture.convertToFormat(QImage::Format_ARGB32), picture.convertToFormat(QImage::Format_ARGB32));
    }
}

void TestMainWindow::pictureShowsThroughTheScrollArea()
{
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const QImage seen = window.grab().toImage();
    const QImage texture = window.palette().brush(QPalette::Window).textureImage();
    const auto *frame = child<QFrame>(window, "framePage");
    const QPoint middle = frame->mapTo(&window, frame->rect().center());
    QCOMPARE(seen.pixelColor(middle), texture.pixelColor(middle.x() % texture.width(), middle.y() % texture.height()));
}

void TestMainWindow::darkDesktopLeavesTheTextsOnThePictureReadable()
{
    const QPalette before = QApplication::palette();
    QPalette dark(QColor(40, 40, 40));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text})
        dark.setColor(role, Qt::white);
    dark.setColor(QPalette::Base, Qt::black);
    QApplication::setPalette(dark);
    {
        const MainWindow window;
        const QPalette label = child<QLabel>(window, "labelRelease")->palette();
        QCOMPARE(label.color(QPalette::Active, QPalette::WindowText), QColor(Qt::black));
        QCOMPARE(label.color(QPalette::Inactive, QPalette::WindowText), QColor(Qt::black));
        QVERIFY(label.color(QPalette::Disabled, QPalette::WindowText).lightness() < 100);
        const QPalette bar = child<QProgressBar>(window, "progressBar")->palette();
        QCOMPARE(bar.color(QPalette::Active, QPalette::Text), QColor(Qt::black));
        QCOMPARE(bar.color(QPalette::Active, QPalette::Base), QColor(Qt::white));
    }
    QApplication::setPalette(before);
}

void TestMainWindow::progressIsHiddenAtTheStart()
{
    const MainWindow window;
    QVERIFY(child<QProgressBar>(window, "progressBar")->isHidden());
    QVERIFY(child<QLabel>(window, "labelAction")->isHidden());
    QVERIFY(child<QPushButton>(window, "pushButtonStop")->isHidden());
    QVERIFY(!window.abortRequested);
}

void TestMainWindow::pagesAreHiddenChildrenOfTheFrame()
{
    const MainWindow window;
    const auto *frame = child<QFrame>(window, "framePage");
    QStringList names;
    const QObjectList children = frame->children();
    for (const QObject *object : children) {
        const auto *widget = qobject_cast<const QWidget *>(object);
        if (!widget)
            continue;
        names.append(QLatin1String(widget->metaObject()->className()));
        QVERIFY2(widget->isHidden(), qPrintable(names.last()));
    }
    const QStringList expected = {QStringLiteral("Connect"),     QStringLiteral("Check"),
                                  QStringLiteral("FirstMenu"),   QStringLiteral("Transfer"),
                                  QStringLiteral("Avanzate"),    QStringLiteral("Ottimizza"),
                                  QStringLiteral("EndOttimizza")};
    QCOMPARE(names, expected);
    QVERIFY(frame->parentWidget() == child<QWidget>(window, "scrollAreaWidgetContents"));
}

void TestMainWindow::shownPageFillsTheFrame()
{
    MainWindow window;
    window.show();
    window.on_checkDone();
    QCoreApplication::processEvents();
    const auto *frame = child<QFrame>(window, "framePage");
    QCOMPARE(page<FirstMenu>(window)->geometry(), frame->rect());
    window.on_gotoOptimizer();
    QCoreApplication::processEvents();
    QCOMPARE(page<Ottimizza>(window)->geometry(), frame->rect());
}

void TestMainWindow::openingHeightLeavesRoomForTheFrame_data()
{
    QTest::addColumn<int>("wanted");
    QTest::addColumn<int>("available");
    QTest::addColumn<int>("height");
    QTest::newRow("lower") << 820 << 1040 << 820;
    QTest::newRow("as high") << 820 << 820 << 820;
    QTest::newRow("one pixel higher") << 821 << 820 << 770;
    QTest::newRow("much higher") << 2000 << 728 << 678;
}

void TestMainWindow::openingHeightLeavesRoomForTheFrame()
{
    QFETCH(int, wanted);
    QFETCH(int, available);
    QTEST(MainWindow::openingHeight(wanted, available), "height");
}

void TestMainWindow::windowTallerThanTheScreenOpensShorter()
{
    // The screen of the platform without a display is 800 pixels high, the window wants more.
    const int available = QApplication::primaryScreen()->availableGeometry().height();
    const MainWindow window;
    if (available >= 820)
        QSKIP("The screen is high enough for the whole window");
    QCOMPARE(window.height(), available - 50);
    QCOMPARE(window.width(), 1100);
}

void TestMainWindow::windowFlagsAreThoseOfAPlainWindow()
{
    const MainWindow window;
    QWidget plain;
    plain.setWindowFlags(Qt::Window);
    QCOMPARE(window.windowFlags(), plain.windowFlags());
}

void TestMainWindow::aboutBoxIsQts()
{
    MainWindow window;
    BoxAnswerer answerer;
    answerer.answer(QStringLiteral("About Qt"), QStringLiteral("OK"));
    child<QPushButton>(window, "pushButtonAboutQT")->click();
    QCOMPARE(answerer.seen().size(), 1);
}

void TestMainWindow::languageChangeAppliesTheTextsAgain()
{
    MainWindow window;
    window.setWindowTitle(QStringLiteral("x"));
    const QStringList names = {QStringLiteral("pushButtonStop"), QStringLiteral("pushButtonAboutQT")};
    for (const QString &name : names)
        window.findChild<QPushButton *>(name)->setText(QStringLiteral("x"));
    child<QLabel>(window, "labelRelease")->setText(QStringLiteral("x"));
    child<QLabel>(window, "labelAction")->setText(QStringLiteral("x"));

    QEvent change(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&window, &change);
    QCOMPARE(window.windowTitle(), QStringLiteral("Corvin4 Manager"));
    QCOMPARE(child<QLabel>(window, "labelRelease")->text(), QStringLiteral("Release 3.0"));
    QCOMPARE(child<QPushButton>(window, "pushButtonStop")->text(), QStringLiteral("STOP"));
    QCOMPARE(child<QPushButton>(window, "pushButtonAboutQT")->text(), QStringLiteral("About"));
    QCOMPARE(child<QLabel>(window, "labelAction")->text(), QString());
}

void TestMainWindow::languageChangeDuringARunLeavesTheBarAlone()
{
    MainWindow window;
    window.on_setProgressBarVisible(true);
    window.on_setProgressBarFormat(QStringLiteral("%v"));
    window.on_updateProgressBarVal(42);
    QEvent change(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&window, &change);
    const auto *bar = child<QProgressBar>(window, "progressBar");
    QCOMPARE(bar->format(), QStringLiteral("%v"));
    QCOMPARE(bar->value(), 42);
    QVERIFY(!bar->isHidden());
    QCOMPARE(child<QPushButton>(window, "pButLang")->text(), QStringLiteral("IT"));
}

void TestMainWindow::longStatusTextDoesNotWidenTheWindow()
{
    MainWindow window;
    window.show();
    window.on_setProgressBarVisible(true);
    QCoreApplication::processEvents();
    const QSize before = window.size();
    const int least = window.minimumSizeHint().width();
    window.on_updateLabelAction(QString(1000, QLatin1Char('W')));
    QCoreApplication::processEvents();
    QCOMPARE(window.size(), before);
    QCOMPARE(window.minimumSizeHint().width(), least);
    window.on_updateLabelAction(QStringLiteral("una cartella/").repeated(100));
    QCoreApplication::processEvents();
    QCOMPARE(window.size(), before);
}

void TestMainWindow::statusTextIsNeverTakenForMarkup()
{
    MainWindow window;
    QCOMPARE(child<QLabel>(window, "labelAction")->textFormat(), Qt::PlainText);
}

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
