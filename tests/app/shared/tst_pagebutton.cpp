#include "app/shared/pagebutton.h"
#include "app/shared/styles.h"
#include "support/pagetest.h"
#include "support/pictures.h"

#include <QHelpEvent>
#include <QToolTip>

const QColor kAmber(249, 191, 0);
const QColor kGrey(200, 200, 200);

/// A window with a button as the pages have it, and with another thing that can have the focus.
struct ShownButton
{
    ShownButton() {
        auto *layout = new QVBoxLayout(&window);
        layout->addWidget(&button);
        layout->addWidget(&other);
        button.setStyleSheet(Styles::kPage);
        button.setText("FINE"_s);
        setTitleFont(&button, sharedFonts().fontTitle18);
        window.show();
        other.setFocus();
        if (!QTest::qWaitForWindowActive(&window))
            failTest("the window does not come up"_s);
    }
    QImage picture() { return button.grab().toImage(); }

    QWidget window;
    PageButton button;
    QLineEdit other;
};

class TestPageButton : public QObject
{
    Q_OBJECT

private slots:
    void groundAndTextAreThoseOfTheSheet() {
        ShownButton shown;
        QCOMPARE(shown.picture().pixelColor(6, shown.button.height() / 2), QColor(51, 51, 51));
        QVERIFY(countPixels(shown.button, kAmber) > 0);
    }

    void everyStateLooksItsOwn() {
        ShownButton shown;
        QList<QImage> pictures = {shown.picture()};
        shown.button.setFocus();
        pictures.append(shown.picture());
        shown.button.setDown(true);
        pictures.append(shown.picture());
        shown.button.setDown(false);
        shown.button.setAttribute(Qt::WA_UnderMouse);
        pictures.append(shown.picture());
        shown.button.setEnabled(false);
        pictures.append(shown.picture());
        for (int i = 0; i < pictures.size(); ++i)
            for (int k = 0; k < i; ++k)
                QVERIFY2(pictures.at(i) != pictures.at(k), qPrintable("%1 looks like %2"_s.arg(i).arg(k)));
    }

    void disabledButtonHasNoColour() {
        ShownButton shown;
        shown.button.setEnabled(false);
        QCOMPARE(countPixels(shown.button, kAmber), 0);
        QVERIFY(countPixels(shown.button, kGrey) > 0);
    }

    void lineStandsBelowTheTextWhereThereIsRoom() {
        ShownButton shown;
        const int least = shown.button.minimumSizeHint().height();
        shown.button.setDescription("che cosa fa"_s);
        QCOMPARE(shown.button.minimumSizeHint().height(), least);
        QVERIFY(shown.button.sizeHint().height() > least);
        QCOMPARE(shown.button.accessibleDescription(), "che cosa fa"_s);
        shown.button.setFixedHeight(shown.button.sizeHint().height());
        const QImage with = shown.picture();
        shown.button.setDescription("altro"_s);
        QVERIFY(shown.picture() != with);
        // Without the room the line is left out, not cut.
        shown.button.setFixedHeight(least);
        const QImage small = shown.picture();
        shown.button.setDescription("che cosa fa"_s);
        QCOMPARE(shown.picture(), small);
    }

    void lineMayBeCutWhereTheTextFits() {
        ShownButton shown;
        const int least = shown.button.minimumSizeHint().width();
        shown.button.setDescription("che cosa fa, in una riga molto lunga"_s);
        QCOMPARE(shown.button.minimumSizeHint().width(), least);
        QVERIFY(shown.button.sizeHint().width() > least);
    }

    void lineThatIsNotSeenWholeIsInTheToolTip() {
        ShownButton shown;
        const auto tip = [&shown] {
            QToolTip::hideText();
            QHelpEvent help(QEvent::ToolTip, QPoint(), shown.button.mapToGlobal(QPoint()));
            QApplication::sendEvent(&shown.button, &help);
            return QToolTip::isVisible() ? QToolTip::text() : QString();
        };
        const QSize least = shown.button.minimumSizeHint();
        shown.button.setDescription("che cosa fa, in una riga molto lunga"_s);
        shown.button.setFixedSize(shown.button.sizeHint());
        QCOMPARE(tip(), QString());
        shown.button.setToolTip("Alt+F"_s);
        QCOMPARE(tip(), "Alt+F"_s);
        shown.button.setFixedWidth(least.width());
        QCOMPARE(tip(), "che cosa fa, in una riga molto lunga\nAlt+F"_s);
        shown.button.setFixedSize(shown.button.sizeHint().width(), least.height());
        QCOMPARE(tip(), "che cosa fa, in una riga molto lunga\nAlt+F"_s);
        shown.button.setToolTip(QString());
        QCOMPARE(tip(), "che cosa fa, in una riga molto lunga"_s);
    }

    void pictureOfALowButtonIsNotCut() {
        ShownButton shown;
        QPixmap red(40, 40);
        red.fill(Qt::red);
        shown.button.setIcon(red);
        shown.button.setIconSize(QSize(40, 40));
        shown.button.setFixedHeight(36);
        const QImage picture = shown.picture();
        const QPoint inside(16 + 20, 18);
        QCOMPARE(picture.pixelColor(inside), QColor(Qt::red));
        for (int x = 0; x < picture.width(); ++x)
            QVERIFY(picture.pixelColor(x, 1) != QColor(Qt::red) && picture.pixelColor(x, 34) != QColor(Qt::red));
    }

    void keyThatIsHeldDownPressesItOnce() {
        ShownButton shown;
        const QSignalSpy clicked(&shown.button, &QPushButton::clicked);
        shown.button.setFocus();
        for (const bool again : {false, true, true}) {
            QKeyEvent down(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r"_s, again);
            QApplication::sendEvent(&shown.button, &down);
        }
        QCOMPARE(clicked.count(), 1);
    }

    void enterAndSpacePressIt_data() {
        columns<int>("key");
        row("Enter", int(Qt::Key_Return));
        row("Enter of the number pad", int(Qt::Key_Enter));
        row("space", int(Qt::Key_Space));
    }
    void enterAndSpacePressIt() {
        QFETCH(int, key);
        ShownButton shown;
        const QSignalSpy clicked(&shown.button, &QPushButton::clicked);
        shown.button.setFocus();
        QTest::keyClick(&shown.button, Qt::Key(key));
        QCOMPARE(clicked.count(), 1);
    }

    void escapePressesItFromAnywhereWhenItIsTheWayBack() {
        ShownButton shown;
        const QSignalSpy clicked(&shown.button, &QPushButton::clicked);
        QTest::keyClick(&shown.other, Qt::Key_Escape);
        QCOMPARE(clicked.count(), 0);
        shown.button.setPressedByEscape(true);
        QTest::keyClick(&shown.other, Qt::Key_Escape);
        QCOMPARE(clicked.count(), 1);
        shown.button.setEnabled(false);
        QTest::keyClick(&shown.other, Qt::Key_Escape);
        shown.button.setEnabled(true);
        shown.button.hide();
        QTest::keyClick(&shown.other, Qt::Key_Escape);
        shown.button.show();
        shown.button.setPressedByEscape(false);
        QTest::keyClick(&shown.other, Qt::Key_Escape);
        QCOMPARE(clicked.count(), 1);
    }
};

PAGE_TEST_MAIN(TestPageButton)
#include "tst_pagebutton.moc"
