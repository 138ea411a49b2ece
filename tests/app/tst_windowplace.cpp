#include "app/windowplace.h"
#include "disk/datafolder.h"
#include "italianwindow.h"
#include "support/files.h"

constexpr QSize kWanted(1100, 718);
constexpr QRect kScreen(0, 0, 1366, 728);
constexpr QRect kSecond(1366, 0, 1920, 1040);

/// Where the window opens.
class TestWindowPlace : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() {
        startInItalian();
        setDataFolder(m_data.path("data"_s));
    }

    void opensInTheMiddleOrWhereItWasLeft_data() {
        columns<QRect, QList<QRect>, QRect>("kept", "screens", "place");
        const QRect middle(133, 5, 1100, 718);
        row("first start", QRect(), QList<QRect>{kScreen}, middle);
        row("no screen", QRect(), QList<QRect>(), QRect(QPoint(), kWanted));
        row("left on the screen", QRect(200, 4, 900, 600), QList<QRect>{kScreen}, QRect(200, 4, 900, 600));
        row("fills the screen", kScreen, QList<QRect>{kScreen}, kScreen);
        row("left on the second screen", QRect(1500, 50, 1100, 820), QList<QRect>{kScreen, kSecond},
            QRect(1500, 50, 1100, 820));
        row("the second screen is gone", QRect(1500, 50, 1100, 820), QList<QRect>{kScreen}, middle);
        row("one pixel below the screen", QRect(0, 129, 1100, 600), QList<QRect>{kScreen}, middle);
        row("half on the one, half on the other", QRect(1000, 0, 1100, 700), QList<QRect>{kScreen, kSecond}, middle);
    }
    void opensInTheMiddleOrWhereItWasLeft() {
        QFETCH(QRect, kept);
        QFETCH(QList<QRect>, screens);
        QTEST(openingPlace(kept, kWanted, screens), "place");
    }

    void windowComesBackToWhereItWasClosed() {
        storePlace(QRect());
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        const QRect left = QRect(screen.topLeft() + QPoint(40, 30), QSize(700, 560));
        {
            MainWindow window;
            QVERIFY(qAbs(window.geometry().center().x() - screen.center().x()) <= 1);
            QVERIFY(qAbs(window.geometry().center().y() - screen.center().y()) <= 1);
            window.show();
            window.setGeometry(left);
            QCoreApplication::processEvents();
            QVERIFY(window.close());
        }
        QCOMPARE(storedPlace(), left);
        const MainWindow again;
        QCOMPARE(again.geometry(), left);
    }

    void windowThatFilledItsScreenDoesSoAgain() {
        storePlace(QRect());
        {
            MainWindow window;
            window.showMaximized();
            QCoreApplication::processEvents();
            QVERIFY(window.close());
        }
        QVERIFY(MainWindow().isMaximized());
        storeMaximized(false);
        QVERIFY(!MainWindow().isMaximized());
    }

    void damagedPlaceIsNone() {
        putFile(dataFolder() + "/window.ini"_s, "[Window]\nPlace=here\nMaximized=\\x\n");
        QVERIFY(!storedPlace().isValid());
        const MainWindow window;
        QVERIFY(QGuiApplication::primaryScreen()->availableGeometry().contains(window.geometry()));
    }

    void languageIsStillTheOnlySetting() { QCOMPARE(appSettings().allKeys(), words("Application/Language")); }

    void cleanupTestCase() { setDataFolder(QString()); }

private:
    PcFolder m_data;
};

PAGE_TEST_MAIN(TestWindowPlace)
#include "tst_windowplace.moc"
