#include "italianwindow.h"
#include "optimizer/endottimizza.h"
#include "optimizer/ottimizza.h"
#include "pages/avanzate.h"
#include "pages/check.h"
#include "pages/connect.h"
#include "pages/firstmenu.h"
#include "support/boxanswerer.h"
#include "support/boxtexts.h"
#include "support/intactplayer.h"
#include "support/languages.h"
#include "transfer/opentransfer.h"
#include "transfer/transfer.h"

/// What the window opens with on a screen of 1366 by 768 pixels that is scaled by a half and by two.
constexpr QSize kAtOneAndAHalf(860, 462);
constexpr QSize kAtTwo(633, 334);

/// The window on its way through the pages, at one size.
class WindowOfSize
{
public:
    explicit WindowOfSize(const QSize &size) : m_size(size) {
        SimulatedPlayer::disconnect();
        window.setMinimumSize(1, 1);
        window.show();
        settle();
    }
    /// Waits until the page with the result of the check is there.
    void plugIn() {
        player.connect();
        if (!QTest::qWaitFor([this] { return button(page<Check>(), "pushButton")->isVisible(); }, 20000))
            failTest("the player is not found"_s);
        settle();
    }
    template <typename Page> Page &page() { return *pageOf<Page>(window); }
    QScrollArea &area() { return *child<QScrollArea>(window, "scrollArea"); }
    /// Also gives the page the room that is left to it beside the progress.
    void work(bool shown) {
        window.on_setProgressBarVisible(shown);
        window.on_updateLabelAction(shown ? "Copia di 20 file su Corvin4 in corso ..."_s : QString());
        settle();
    }
    void settle() {
        window.resize(m_size);
        // One round for each layout inside another.
        for (int round = 0; round < 6; ++round)
            QCoreApplication::processEvents();
    }
    void verifyItFits(const QWidget &shown) {
        settle();
        QVERIFY(shown.isVisible());
        const QByteArray name = shown.metaObject()->className();
        QVERIFY2(area().verticalScrollBar()->maximum() == 0, name.constData());
        verifyNothingIsCut(shown);
    }
    void verifyNothingIsCut(const QWidget &shown) {
        settle();
        QCOMPARE(area().horizontalScrollBar()->maximum(), 0);
        for (const QWidget *one : shown.findChildren<QWidget *>()) {
            if (qobject_cast<const QAbstractItemView *>(one) && one->isVisible())
                QVERIFY2(one->parentWidget()->rect().contains(one->geometry()), qPrintable(one->objectName()));
            const auto *label = qobject_cast<const QLabel *>(one);
            const bool isText = label || qobject_cast<const QPushButton *>(one) || qobject_cast<const QCheckBox *>(one);
            if (!isText || !one->isVisible())
                continue;
            const QRect place(one->mapTo(&shown, QPoint()), one->size());
            const int needed = label && label->wordWrap() && !label->text().isEmpty()
                                   ? label->heightForWidth(label->width())
                                   : one->minimumSizeHint().boundedTo(one->minimumSize()).height();
            QVERIFY2(one->height() >= needed && shown.rect().contains(place), qPrintable(one->objectName()));
        }
    }

    const FakeFileManager fileManager;
    IntactPlayer player;
    MainWindow window;

private:
    QSize m_size;
};

class TestSmallScreen : public QObject
{
    Q_OBJECT

    static void addLanguages() {
        columns<QString>("code");
        for (const char *code : {"it", "en", "de"})
            row(code, QString::fromLatin1(code));
    }

private slots:
    void initTestCase() { startInItalian(); }

    void everyPageFitsAtOneAndAHalfAlsoBesideTheProgress_data() { addLanguages(); }
    void everyPageFitsAtOneAndAHalfAlsoBesideTheProgress() {
        QFETCH(QString, code);
        const Language language(code);
        WindowOfSize small(kAtOneAndAHalf);
        QTRY_VERIFY(small.page<Connect>().isVisible());
        small.verifyItFits(small.page<Connect>());
        small.plugIn();
        small.verifyItFits(small.page<Check>());
        small.window.on_checkDone();
        small.verifyItFits(small.page<FirstMenu>());
        small.window.on_gotoAvanzate();
        for (const bool working : {true, false}) {
            small.work(working);
            small.verifyItFits(small.page<Avanzate>());
        }
        small.window.on_backFromAvanzateToFirstMenu();
        small.window.on_gotoOptimizer();
        for (const bool working : {true, false}) {
            small.work(working);
            small.verifyItFits(small.page<Ottimizza>());
        }
        small.page<EndOttimizza>().setKeptFolder("/home/anna/.local/share/Corvin4Manager/removed/2026-11-22"_s);
        small.window.on_backFromOttimizzaToEndOttimizza(0);
        small.verifyItFits(small.page<EndOttimizza>());
        small.window.on_backFromEndOttimizzaToFirstMenu();
        small.window.on_gotoTransfer();
        small.verifyItFits(small.page<Transfer>());
        click(small.page<Transfer>(), "pButPc");
        for (const bool working : {true, false}) {
            small.work(working);
            small.verifyItFits(small.page<Transfer>());
        }
    }

    void whatCanFitsAtTwoAndTheRestIsReachedByTheKeyboardAndTheWheel_data() { addLanguages(); }
    void whatCanFitsAtTwoAndTheRestIsReachedByTheKeyboardAndTheWheel() {
        QFETCH(QString, code);
        const Language language(code);
        WindowOfSize small(kAtTwo);
        QTRY_VERIFY(small.page<Connect>().isVisible());
        small.verifyItFits(small.page<Connect>());
        small.plugIn();
        small.verifyItFits(small.page<Check>());
        small.window.on_checkDone();
        small.verifyItFits(small.page<FirstMenu>());
        small.window.on_gotoAvanzate();
        verifyAllIsReached(small, small.page<Avanzate>());
        small.window.on_backFromAvanzateToFirstMenu();
        small.window.on_gotoOptimizer();
        verifyAllIsReached(small, small.page<Ottimizza>());
        small.window.on_backFromOttimizzaToEndOttimizza(1);
        small.verifyItFits(small.page<EndOttimizza>());
        small.window.on_backFromEndOttimizzaToFirstMenu();
        small.window.on_gotoTransfer();
        verifyAllIsReached(small, small.page<Transfer>());
        click(small.page<Transfer>(), "pButPc");
        small.verifyItFits(small.page<Transfer>());
        small.work(true);
        small.verifyNothingIsCut(small.page<Transfer>());
    }

    void whatHasTheFocusStaysInSightWhenTheProgressComesUp() {
        const Language language("it"_s);
        WindowOfSize small(kAtTwo);
        QTRY_VERIFY(small.page<Connect>().isVisible());
        small.plugIn();
        small.window.on_checkDone();
        small.window.on_gotoTransfer();
        auto &end = *child<QPushButton>(small.page<Transfer>(), "pushBtnBack");
        end.setFocus();
        const auto isInSight = [&small, &end] {
            const QWidget *view = small.area().viewport();
            return view->rect().contains(
                QRect(end.mapTo(&small.window, QPoint()) - view->mapTo(&small.window, QPoint()), end.size()));
        };
        small.settle();
        small.area().ensureWidgetVisible(&end);
        QTRY_VERIFY(isInSight());
        small.work(true);
        QTRY_VERIFY(isInSight());
        // What the user has left is not fetched back.
        small.area().verticalScrollBar()->setValue(0);
        QVERIFY(!isInSight());
        small.work(false);
        small.work(true);
        QCOMPARE(small.area().verticalScrollBar()->value(), 0);
    }

    void endOfACopyIsInSightAlsoBehindAnotherWindow() {
        WindowOfSize small(kAtTwo);
        small.plugIn();
        small.window.on_checkDone();
        small.window.on_gotoTransfer();
        click(small.page<Transfer>(), "pButPc");
        small.work(true);
        // The file manager, where the songs come from.
        QWidget other;
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        auto &end = *child<QPushButton>(small.page<Transfer>(), "pushBtnForward");
        end.setEnabled(false);
        small.area().verticalScrollBar()->setValue(0);
        const auto isInSight = [&end] { return end.visibleRegion().boundingRect() == end.rect(); };
        QVERIFY(!isInSight());
        end.setEnabled(true);
        QTRY_VERIFY(isInSight());

        // The box that keeps the window open names this button.
        small.area().verticalScrollBar()->setValue(0);
        QVERIFY(!isInSight());
        BoxAnswerer boxes;
        boxes.answer(Titles::kNotClosed, Buttons::kOk);
        QVERIFY(!small.window.close());
        QTRY_VERIFY(isInSight());
    }

    void pageIsEnteredAtItsTop() {
        WindowOfSize small(kAtTwo);
        small.plugIn();
        small.window.on_checkDone();
        small.window.on_gotoOptimizer();
        small.settle();
        QScrollBar *bar = small.area().verticalScrollBar();
        bar->setValue(bar->maximum());
        QVERIFY(bar->value() > 0);
        small.window.on_backFromOttimizzaToFirstMenu();
        small.window.on_gotoOptimizer();
        small.settle();
        QCOMPARE(bar->value(), 0);
    }

    void pictureOfTheCheckGivesWayAndComesBack() {
        WindowOfSize small(kAtTwo);
        small.plugIn();
        const auto side = [&small] {
            const auto *picture = child<QLabel>(small.page<Check>(), "label_descr");
            return picture->pixmap(Qt::ReturnByValue).width();
        };
        const int least = side();
        small.window.resize(1100, 718);
        QTRY_COMPARE(side(), 160);
        small.settle();
        QTRY_COMPARE(side(), least);
        QVERIFY(least >= 72 && least < 160);
    }

private:
    static void verifyAllIsReached(WindowOfSize &small, const QWidget &page) {
        small.verifyNothingIsCut(page);
        QScrollBar *bar = small.area().verticalScrollBar();
        QVERIFY2(bar->maximum() > 0, "it fits: to be tested as such");
        QSet<QWidget *> reached;
        for (int step = 0; step < 40; ++step) {
            QWidget *focused = QApplication::focusWidget();
            if (focused && page.isAncestorOf(focused)) {
                reached.insert(focused);
                const QWidget *view = small.area().viewport();
                const QRect place(focused->mapTo(&small.window, QPoint()), focused->size());
                const QRect seen(view->mapTo(&small.window, QPoint()), view->size());
                // What has the focus first need not be seen: the page is read from its top.
                QVERIFY2(step == 0 || seen.contains(place), qPrintable(focused->objectName()));
            }
            QTest::keyClick(small.window.windowHandle(), Qt::Key_Tab);
        }
        for (QPushButton *one : page.findChildren<QPushButton *>())
            QVERIFY2(!one->isEnabled() || !one->isVisible() || reached.contains(one), qPrintable(one->objectName()));
        bar->setValue(0);
        const QPoint where = small.area().viewport()->rect().center();
        QWheelEvent wheel(where, small.area().viewport()->mapToGlobal(where), {}, QPoint(0, -1200), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(small.area().viewport(), &wheel);
        QCOMPARE(bar->value(), bar->maximum());
    }
};

PAGE_TEST_MAIN(TestSmallScreen)
#include "tst_smallscreen.moc"
