#include "app/shared/shade.h"

#include "app/shared/questionbox.h"
#include "support/answers.h"
#include "support/boxtexts.h"
#include "support/pagetest.h"

#include <QDialog>
#include <QPushButton>

const QColor kGround(51, 51, 51);

/// A window of the program as it stands on the screen.
struct Window
{
    Window() {
        page.setPalette(QPalette(kGround));
        page.setAutoFillBackground(true);
        page.resize(300, 200);
        page.show();
    }
    QColor colour(const QPoint &where = {20, 20}) { return page.grab().toImage().pixelColor(where); }
    QWidget page;
};

class TestShade : public QObject
{
    Q_OBJECT

private slots:
    void windowIsDarkWhileABoxStandsAndAsBeforeAfterwards() {
        Window window;
        QCOMPARE(window.colour(), kGround);
        QList<QColor> seen;
        for (const bool asks : {true, false}) {
            BoxAnswerer boxes;
            boxes.whenShown([&](QMessageBox *) { seen.append(window.colour()); });
            boxes.answer("?"_s, Buttons::kOk);
            if (asks)
                askQuestion(nullptr, {"?"_s, "?"_s, {{QMessageBox::Ok}}, QMessageBox::Ok});
            else
                tellUser(&window.page, QMessageBox::Information, "?"_s, "?"_s);
            QCOMPARE(window.colour(), kGround);
        }
        QCOMPARE(seen.size(), 2);
        for (const QColor &colour : qAsConst(seen))
            QVERIFY2(colour.lightness() < kGround.lightness() / 2 + 1, qPrintable(colour.name()));
    }

    void windowGrowsUnderIt() {
        Window window;
        const Shade shade;
        window.page.resize(600, 500);
        QTRY_VERIFY(window.colour({590, 490}).lightness() < kGround.lightness());
    }

    void twoAtOnceAreNoDarkerThanOne() {
        Window window;
        const Shade shade;
        const QColor once = window.colour();
        const Shade second;
        QCOMPARE(window.colour(), once);
    }

    void holdsNoClickBack() {
        Window window;
        QPushButton button(&window.page);
        button.setGeometry(10, 10, 80, 40);
        button.show();
        bool clicked = false;
        connect(&button, &QPushButton::clicked, [&clicked] { clicked = true; });
        const Shade shade;
        QTest::mouseClick(window.page.windowHandle(), Qt::LeftButton, Qt::NoModifier, {30, 30});
        QVERIFY(clicked);
    }

    void dialogsAndHiddenWindowsAreLeftAlone() {
        Window window;
        window.page.hide();
        QDialog dialog;
        dialog.show();
        const Shade shade;
        QVERIFY(window.page.children().isEmpty());
        QVERIFY(dialog.children().isEmpty());
    }

    void windowMayGoBeforeIt() {
        auto window = std::make_unique<Window>();
        {
            const Shade shade;
            window.reset();
        }
        QCOMPARE(QApplication::topLevelWidgets(), QWidgetList());
    }
};

PAGE_TEST_MAIN(TestShade)
#include "tst_shade.moc"
