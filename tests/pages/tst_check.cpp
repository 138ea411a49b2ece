#include "showncheck.h"

#include "support/boxanswerer.h"
#include "support/formsheets.h"
#include "support/languages.h"
#include "support/methods.h"
#include "support/pagetest.h"

class TestCheck : public QObject
{
    Q_OBJECT

private slots:
    void pageIsHiddenAndDark() {
        QWidget window;
        Check page(&window);
        window.show();
        QVERIFY(page.isHidden());
        QCOMPARE(page.styleSheet(), FormSheets::kPage);
        QCOMPARE(textOf(page, "pushButton"), "AVANTI"_s);
        QCOMPARE(button(page, "pushButton")->cursor().shape(), Qt::PointingHandCursor);
        page.resize(1000, 600);
        page.show();
        QCOMPARE(page.grab().toImage().pixelColor(2, 2), QColor(51, 51, 51));
    }

    void signalsComeInTheirOrder() {
        QCOMPARE(methodsOf<Check>(QMetaMethod::Signal),
                 words("setProgressBarVisible(bool) setProgressBarMinVal(int) setProgressBarMaxVal(int) "
                       "updateProgressBarVal(int) updateLabelAction(QString) setPushButtonStopVisible(bool) "
                       "reinstallOpSysOnly() checkDone()"));
    }

    void intactPlayerWaitsForAvanti() {
        const BoxAnswerer boxes;
        ShownCheck page;
        page.run();
        QCOMPARE(page.lines(), sweepAnd({}));
        QCOMPARE(page.title(), kDone);
        const QPixmap shown = child<QLabel>(page, "label_descr")->pixmap(Qt::ReturnByValue);
        QVERIFY(!shown.isNull());
        const auto picture = [&shown](const char *name) {
            return QIcon(":/imgs/"_s + QLatin1String(name)).pixmap(shown.size()).toImage();
        };
        QCOMPARE(shown.toImage(), picture("ok.png"));
        QVERIFY(shown.toImage() != picture("ko.png"));
        QCOMPARE(page.parts(), kTextsAndButton);
    }

    void avantiIsWhatEndsTheCheckOfAnIntactPlayer() {
        ShownCheck page;
        page.run();
        click(page, "pushButton");
        QCOMPARE(page.lines(), sweepAnd({"visible 0"_s, "checkDone"_s}));
        QVERIFY(page.isVisible());
    }

    void pageShowsOnlyItsTitleDuringTheSweep() {
        ShownCheck page;
        int looked = 0;
        connect(&page, &Check::updateProgressBarVal, this, [&] {
            ++looked;
            QCOMPARE(page.title(), "CHECK UP IN CORSO"_s);
            QCOMPARE(page.parts(), words("label_titolo"));
        });
        page.run();
        QCOMPARE(looked, 102);
    }

    void sweepIsAPauseOfAboutASecondWithTheEventLoopRunning() {
        ShownCheck page;
        QTimer timer;
        const QSignalSpy ticks(&timer, &QTimer::timeout);
        timer.start(20);
        QElapsedTimer elapsed;
        elapsed.start();
        page.run();
        // 101 waits of 10 ms; no upper limit, a busy machine takes longer.
        QVERIFY(elapsed.elapsed() >= 1010);
        QVERIFY(ticks.size() >= 10);
    }

    void avantiStandsInTheMiddleAtItsOwnWidth() {
        ShownCheck page;
        page.run();
        const QPushButton *avanti = button(page, "pushButton");
        QTRY_COMPARE(avanti->width(), 220);
        QVERIFY(std::abs(avanti->geometry().center().x() - page.rect().center().x()) <= 1);
    }

    void secondCheckStartsFromTheBeginning() {
        ShownCheck page;
        page.run();
        bool looked = false;
        connect(&page, &Check::updateProgressBarVal, this, [&](int value) {
            if (value != 1)
                return;
            looked = true;
            QVERIFY(!page.hasPicture());
            QVERIFY(button(page, "pushButton")->isHidden());
        });
        page.run();
        QVERIFY(looked);
        QVERIFY(page.hasPicture());
    }

    void textsOfTheMomentFollowTheLanguage() {
        ShownCheck page;
        {
            const Language english("en"_s);
            QCOMPARE(page.title(), "CHECK IN PROGRESS"_s);
            page.run();
            QCOMPARE(page.title(), "SOFTWARE CHECK COMPLETED"_s);
        }
        QCOMPARE(page.title(), kDone);
        QVERIFY(page.hasPicture());
        QCOMPARE(page.parts(), kTextsAndButton);
        page.remove(words("AUTOEXEC.BAT"));
        BoxAnswerer boxes;
        boxes.answer("Fehlende Systemdateien"_s, "Ja"_s);
        bool looked = false;
        connect(&page, &Check::reinstallOpSysOnly, this, [&] {
            QCOMPARE(page.title(), "BETRIEBSSYSTEMDATEIEN WERDEN WIEDERHERGESTELLT"_s);
            const Language english("en"_s);
            QCOMPARE(page.title(), "RESTORING THE OPERATING SYSTEM FILES"_s);
            QVERIFY(page.description().startsWith("WARNING:"_s));
            looked = true;
        });
        const Language german("de"_s);
        page.run();
        QVERIFY(looked);
    }

    void textsFitInEveryLanguage() {
        for (const QString &code : words("it en de")) {
            ShownCheck page;
            const Language language(code);
            page.run();
            QCoreApplication::processEvents();
            QVERIFY2(allButtonsShowTheirWholeText(page), qPrintable(code));
            const auto *title = child<QLabel>(page, "label_titolo");
            QVERIFY2(title->height() >= title->heightForWidth(title->width()), qPrintable(code));
        }
    }
};

PAGE_TEST_MAIN(TestCheck)
#include "tst_check.moc"
