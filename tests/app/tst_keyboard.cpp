#include "italianwindow.h"
#include "optimizer/ottimizza.h"
#include "pages/avanzate.h"
#include "pages/check.h"
#include "pages/firstmenu.h"
#include "support/intactplayer.h"
#include "support/languages.h"
#include "transfer/opentransfer.h"
#include "transfer/transfer.h"

/// The window at work with the keyboard alone.
class TestKeyboard : public QObject
{
    Q_OBJECT

    /// Which widget has the focus: its page, and its name.
    static QString focused() {
        const QWidget *widget = QApplication::focusWidget();
        if (!widget)
            return {};
        const QWidget *page = widget->parentWidget();
        while (page->parentWidget() && page->parentWidget()->objectName() != "framePage"_s)
            page = page->parentWidget();
        return QLatin1String(page->metaObject()->className()) + QLatin1Char('/') + widget->objectName();
    }
    static void press(MainWindow &window, Qt::Key key, Qt::KeyboardModifiers held = Qt::NoModifier) {
        QTest::keyClick(window.windowHandle(), key, held);
        QCoreApplication::processEvents();
    }

private slots:
    void initTestCase() { startInItalian(); }

    void everyPageGivesTheFocusToWhatComesNext() {
        const FakeFileManager fileManager;
        const IntactPlayer player;
        MainWindow window;
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QTRY_COMPARE_WITH_TIMEOUT(focused(), "Check/pushButton"_s, 20000);
        press(window, Qt::Key_Return);
        QCOMPARE(focused(), "FirstMenu/pushBtnTransfer"_s);
        press(window, Qt::Key_Down);
        QCOMPARE(focused(), "FirstMenu/pushBtnOptimize"_s);
        press(window, Qt::Key_Return);
        QCOMPARE(focused(), "Ottimizza/Btn_Opt_Ok"_s);
        press(window, Qt::Key_Escape);
        QCOMPARE(focused(), "FirstMenu/pushBtnTransfer"_s);
        window.on_gotoAvanzate();
        QCOMPARE(focused(), "Avanzate/pushBtnUpdate"_s);
        press(window, Qt::Key_Escape);
        QCOMPARE(focused(), "FirstMenu/pushBtnTransfer"_s);
        press(window, Qt::Key_Return);
        QCOMPARE(focused(), "Transfer/pButPc"_s);
        press(window, Qt::Key_Return);
        QCOMPARE(focused(), "Transfer/treeView"_s);
        press(window, Qt::Key_Escape);
        window.on_backFromOttimizzaToEndOttimizza(0);
        QCOMPARE(focused(), "EndOttimizza/pushButton"_s);
        press(window, Qt::Key_Escape);
        QCOMPARE(focused(), "FirstMenu/pushBtnTransfer"_s);
    }

    void focusIsWhereItWasAfterAJob() {
        const IntactPlayer player;
        MainWindow window;
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QTRY_COMPARE_WITH_TIMEOUT(focused(), "Check/pushButton"_s, 20000);
        window.on_checkDone();
        window.on_gotoAvanzate();
        auto *page = pageOf<Avanzate>(window);
        page->disconnect(&window);
        connect(page, &Avanzate::restoreSecurityCopyOfSongs, page, [page] {
            page->setEnabled(false);
            QVERIFY(focused() != "Avanzate/pushBtnRestore"_s);
            page->setEnabled(true);
        });
        button(*page, "pushBtnRestore")->setFocus();
        press(window, Qt::Key_Return);
        QCOMPARE(focused(), "Avanzate/pushBtnRestore"_s);
    }

    void lettersAreOnceOnEachPageAndLeaveStopItsOwn_data() {
        columns<QString>("code");
        for (const char *code : {"it", "en", "de"})
            row(code, QString::fromLatin1(code));
    }
    void lettersAreOnceOnEachPageAndLeaveStopItsOwn() {
        QFETCH(QString, code);
        const MainWindow window;
        const Language language(code);
        const QKeySequence stop = button(window, "pushButtonStop")->shortcut();
        QVERIFY(!stop.isEmpty());
        const auto *frame = child<QFrame>(window, "framePage");
        for (const QWidget *page : frame->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
            QSet<QKeySequence> keys = {stop};
            int buttons = 1;
            for (const QAbstractButton *one : page->findChildren<QAbstractButton *>()) {
                if (!qobject_cast<const QPushButton *>(one) && !qobject_cast<const QCheckBox *>(one))
                    continue;
                ++buttons;
                keys.insert(one->shortcut());
                QVERIFY2(!one->shortcut().isEmpty(), qPrintable(one->objectName()));
                const QString key = one->shortcut().toString();
                QCOMPARE(one->toolTip(), key);
                QVERIFY2(one->text().contains(key.right(1), Qt::CaseInsensitive), qPrintable(one->text() + key));
            }
            QVERIFY2(keys.size() == buttons, page->metaObject()->className());
        }
    }

    void letterPressesItsButtonFromAnywhere() {
        const IntactPlayer player;
        MainWindow window;
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QTRY_COMPARE_WITH_TIMEOUT(focused(), "Check/pushButton"_s, 20000);
        press(window, Qt::Key_A, Qt::AltModifier); // AVANTI
        QTRY_VERIFY(pageOf<FirstMenu>(window)->isVisible());
        press(window, Qt::Key_O, Qt::AltModifier); // OTTIMIZZA L'ARCHVIO
        QTRY_VERIFY(pageOf<Ottimizza>(window)->isVisible());
        const auto *complete = child<QCheckBox>(window, "Check_Optimize");
        press(window, Qt::Key(complete->shortcut()[0] & ~int(Qt::KeyboardModifierMask)), Qt::AltModifier);
        QTRY_VERIFY(!complete->isChecked());
    }
};

PAGE_TEST_MAIN(TestKeyboard)
#include "tst_keyboard.moc"
