#include "italianwindow.h"
#include "optimizer/ottimizza.h"
#include "pages/firstmenu.h"
#include "support/boxanswerer.h"
#include "support/formsheets.h"
#include "support/methods.h"
#include "support/same.h"

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { startInItalian(); }

    void formCarriesItsTextsAndStyles() {
        const MainWindow window;
        QCOMPARE(window.windowTitle(), "Corvin4 Manager"_s);
        QVERIFY(!window.windowIcon().isNull());
        QCOMPARE(textOf(window, "labelRelease"), "Release 3.0"_s);
        QCOMPARE(textOf(window, "labelRelease"), QStringLiteral("Release " CORVIN_VERSION));
        const auto *stop = button(window, "pushButtonStop");
        QCOMPARE(stop->text(), "STOP"_s);
        QCOMPARE(stop->styleSheet(), FormSheets::kPage);
        const auto *about = button(window, "pushButtonAboutQT");
        QCOMPARE(about->text(), "About"_s);
        QCOMPARE(about->styleSheet(), "/* background-color: rgb(51, 51, 51); */\n/* color: rgb(249,191,0); */\n"
                                      "background-color: rgb(0, 0, 0, 0);\ncolor: rgb(51, 51, 51);"_s);
        // A button that is not flat is painted black by this style.
        QVERIFY(about->isFlat());
        const auto *action = child<QLabel>(window, "labelAction");
        QCOMPARE(action->text(), QString());
        QCOMPARE(action->styleSheet(), "color: rgb(0,0,0);background-color: rgba(0, 0, 0,0%);"_s);
        QVERIFY(action->wordWrap());
        QCOMPARE(action->textFormat(), Qt::PlainText); // a status text is never taken for markup
        const auto *bar = child<QProgressBar>(window, "progressBar");
        QCOMPARE(bar->format(), "%p%"_s);
        QCOMPARE(bar->minimum(), 0);
        QCOMPARE(bar->maximum(), 100);
        QCOMPARE(bar->value(), 0);
        QCOMPARE(bar->styleSheet(), "QProgressBar {border: 2px solid grey;border-radius: 5px;text-align: center;}"
                                    "QProgressBar::chunk {background-color: #f9bf00;width: 20px;}"_s);
        const auto *language = button(window, "pButLang");
        QCOMPARE(language->text(), "IT"_s);
        QCOMPARE(language->styleSheet(), FormSheets::kContainer);
        for (const QPushButton *one : {stop, about, language})
            QCOMPARE(one->cursor().shape(), Qt::PointingHandCursor);
    }

    void signalsAndSlotsComeInTheirOrder() {
        QCOMPARE(methodsOf<MainWindow>(QMetaMethod::Signal), words("stopActionPressed()"));
        QCOMPARE(methodsOf<MainWindow>(QMetaMethod::Slot),
                 words("langDbInfo(LANGUAGE_STRING_CODE) start_check_connection() on_checkDone() on_gotoTransfer() "
                       "on_gotoOptimizer() on_gotoAvanzate() on_backFromOttimizzaToFirstMenu() "
                       "on_backFromAvanzateToFirstMenu() on_backFromTransferToFirstMenu() "
                       "on_backFromTransferToOttimizza() on_backFromOttimizzaToEndOttimizza(int) "
                       "on_backFromEndOttimizzaToFirstMenu() on_setProgressBarVisible(bool) "
                       "on_setProgressBarMinVal(int) on_setProgressBarMaxVal(int) on_setProgressBarFormat(QString) "
                       "on_updateProgressBarVal(int) on_increaseProgressBarVal() on_updateLabelAction(QString) "
                       "on_setPushButtonStopVisible(bool) on_pushButtonStop_clicked() "
                       "on_pushButtonAboutQT_clicked()"));
        QCOMPARE(methodsOf<MainWindow>(QMetaMethod::Slot, QMetaMethod::Private),
                 words("on_pButLang_clicked() check_connection() updateCorvinWithLastRelease() "
                       "makeSecurityCopyOfSongs() restoreSecurityCopyOfSongs() reinstallOpSysOnly() "
                       "reinstallOpSysAndCleanSongs() reinstallOpSysAndRestoreSongs()"));
    }

    void widgetsHaveTheSharedFonts() {
        const MainWindow window;
        const SharedFonts &fonts = sharedFonts();
        const auto fontOf = [&window](const char *name) { return child<QWidget>(window, name)->font().toString(); };
        QCOMPARE(fontOf("progressBar"), fonts.fontTitle22.toString());
        QCOMPARE(fontOf("pushButtonStop"), fonts.fontTitle18.toString());
        QCOMPARE(fontOf("pButLang"), fonts.fontText10Bold.toString());
        QCOMPARE(fontOf("labelRelease"), fonts.fontText10.toString());
    }

    void pictureFillsTheWindowInAllColourGroups() {
        const MainWindow window;
        const QImage picture(":/imgs/sfondo_prog.png"_s);
        QVERIFY(!picture.isNull());
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
            const QImage texture = window.palette().brush(group, QPalette::Window).textureImage();
            QCOMPARE(texture.convertToFormat(QImage::Format_ARGB32), picture.convertToFormat(QImage::Format_ARGB32));
        }
    }

    void pictureShowsThroughTheScrollArea() {
        MainWindow window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const QImage seen = window.grab().toImage();
        const QImage texture = window.palette().brush(QPalette::Window).textureImage();
        const auto *frame = child<QFrame>(window, "framePage");
        const QPoint middle = frame->mapTo(&window, frame->rect().center());
        QCOMPARE(seen.pixelColor(middle),
                 texture.pixelColor(middle.x() % texture.width(), middle.y() % texture.height()));
    }

    void darkDesktopLeavesTheTextsOnThePictureReadable() {
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

    void progressIsHiddenAtTheStart() {
        const MainWindow window;
        for (const char *name : {"progressBar", "labelAction", "pushButtonStop"})
            QVERIFY2(child<QWidget>(window, name)->isHidden(), name);
        QVERIFY(!window.abortRequested);
    }

    void pagesAreHiddenChildrenOfTheFrame() {
        const MainWindow window;
        const auto *frame = child<QFrame>(window, "framePage");
        QStringList names;
        const auto pages = frame->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
        for (const QWidget *page : pages) {
            names.append(QLatin1String(page->metaObject()->className()));
            QVERIFY2(page->isHidden(), qPrintable(names.last()));
        }
        QCOMPARE(names, words("Connect Check FirstMenu Transfer Avanzate Ottimizza EndOttimizza"));
        QVERIFY(frame->parentWidget() == child<QWidget>(window, "scrollAreaWidgetContents"));
    }

    void shownPageFillsTheFrame() {
        MainWindow window;
        window.show();
        window.on_checkDone();
        QCoreApplication::processEvents();
        const auto *frame = child<QFrame>(window, "framePage");
        QCOMPARE(pageOf<FirstMenu>(window)->geometry(), frame->rect());
        window.on_gotoOptimizer();
        QCoreApplication::processEvents();
        QCOMPARE(pageOf<Ottimizza>(window)->geometry(), frame->rect());
    }

    void openingHeightLeavesRoomForTheFrame() {
        same("lower", MainWindow::openingHeight(820, 1040), 820);
        same("as high", MainWindow::openingHeight(820, 820), 820);
        same("one pixel higher", MainWindow::openingHeight(821, 820), 770);
        same("much higher", MainWindow::openingHeight(2000, 728), 678);
    }

    void windowFitsAScreenLowerAndNarrowerThanItself() {
        // The screen of the platform without a display has 800 pixels each way, the window wants more.
        const QSize available = QApplication::primaryScreen()->availableGeometry().size();
        const MainWindow window;
        if (available.height() >= 820 || available.width() >= 1100)
            QSKIP("The screen is large enough for the whole window");
        QCOMPARE(window.size(), available - QSize(50, 50));
        QVERIFY(window.minimumWidth() <= window.width() && window.minimumHeight() <= window.height());
        QVERIFY(window.minimumSizeHint().width() <= window.minimumWidth());
    }

    void windowFlagsAreThoseOfAPlainWindow() {
        const MainWindow window;
        QWidget plain;
        plain.setWindowFlags(Qt::Window);
        QCOMPARE(window.windowFlags(), plain.windowFlags());
    }

    void aboutBoxIsQts() {
        const MainWindow window;
        BoxAnswerer answerer;
        answerer.answer("About Qt"_s, "OK"_s);
        button(window, "pushButtonAboutQT")->click();
        QCOMPARE(answerer.seen().size(), 1);
    }

    void languageChangeAppliesTheTextsAgain() {
        MainWindow window;
        window.setWindowTitle("x"_s);
        for (const char *name : {"pushButtonStop", "pushButtonAboutQT", "labelRelease", "labelAction"})
            QVERIFY2(child<QWidget>(window, name)->setProperty("text", "x"_s), name);
        QEvent change(QEvent::LanguageChange);
        QCoreApplication::sendEvent(&window, &change);
        QCOMPARE(window.windowTitle(), "Corvin4 Manager"_s);
        QCOMPARE(textOf(window, "labelRelease"), "Release 3.0"_s);
        QCOMPARE(textOf(window, "pushButtonStop"), "STOP"_s);
        QCOMPARE(textOf(window, "pushButtonAboutQT"), "About"_s);
        QCOMPARE(textOf(window, "labelAction"), QString());
    }

    void languageChangeDuringARunLeavesTheBarAlone() {
        MainWindow window;
        window.on_setProgressBarVisible(true);
        window.on_setProgressBarFormat("%v"_s);
        window.on_updateProgressBarVal(42);
        QEvent change(QEvent::LanguageChange);
        QCoreApplication::sendEvent(&window, &change);
        const auto *bar = child<QProgressBar>(window, "progressBar");
        QCOMPARE(bar->format(), "%v"_s);
        QCOMPARE(bar->value(), 42);
        QVERIFY(!bar->isHidden());
        QCOMPARE(textOf(window, "pButLang"), "IT"_s);
    }

    void longStatusTextDoesNotWidenTheWindow() {
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
        window.on_updateLabelAction("una cartella/"_s.repeated(100));
        QCoreApplication::processEvents();
        QCOMPARE(window.size(), before);
    }
};

PAGE_TEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
