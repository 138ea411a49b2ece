#include "pages/check.h"

#include "app/shared/styles.h"
#include "support/answers.h"
#include "support/boxtexts.h"
#include "support/intactplayer.h"
#include "support/languages.h"
#include "support/ownlines.h"
#include "support/pagetest.h"

namespace {

const QString kScript = "AUTOEXEC.BAT"_s;
const QString kDone = "CONTROLLO SOFTWARE COMPLETATO"_s;
const QString kProblem = "Problema rilevato durante il controllo del sistema operativo !!!"_s;

/// The page on the screen.
struct ShownCheck : Check
{
    ShownCheck()
    {
        resize(1000, 600);
        show();
    }
    QString title() const { return textOf(*this, "label_titolo"); }
    QString description() const { return textOf(*this, "label_descr"); }
    bool hasPicture() const { return !child<QLabel>(*this, "label_descr")->pixmap(Qt::ReturnByValue).isNull(); }
    /// Which of its three parts can be seen.
    QStringList parts() const
    {
        QStringList visible = words("label_titolo label_descr pushButton");
        QMutableStringListIterator names(visible);
        while (names.hasNext()) {
            if (!findChild<QWidget *>(names.next())->isVisible())
                names.remove();
        }
        return visible;
    }
};

const QStringList kTitleAlone = words("label_titolo");
const QStringList kTexts = words("label_titolo label_descr");
const QStringList kAll = words("label_titolo label_descr pushButton");

/// All that a check emits up to the look at the files, and then this.
QStringList sweepAnd(const QStringList &rest)
{
    QStringList lines = {"label CONTROLLO INTEGRITA' SOFTWARE ..."_s, "min 0"_s};
    lines += {"max 100"_s, "value 0"_s, "visible 1"_s, "stop 0"_s};
    for (int value = 0; value <= 100; ++value)
        lines.append("value %1"_s.arg(value));
    return lines + QStringList("visible 0"_s) + rest;
}

} // namespace

class TestCheck : public QObject
{
    Q_OBJECT

private slots:
    void pageIsHiddenAndDark()
    {
        QWidget window;
        Check page(&window);
        window.show();
        QVERIFY(page.isHidden());
        QCOMPARE(page.styleSheet(), QString(Styles::kPage));
        QCOMPARE(textOf(page, "pushButton"), "AVANTI"_s);
        QCOMPARE(button(page, "pushButton")->cursor().shape(), Qt::PointingHandCursor);
        page.resize(1000, 600);
        page.show();
        QCOMPARE(page.grab().toImage().pixelColor(2, 2), QColor(51, 51, 51));
    }

    void intactPlayerWaitsForAvanti()
    {
        const IntactPlayer player;
        const BoxAnswerer boxes;
        ShownCheck page;
        SignalRecorder recorder(page);
        page.runCheck(player.root());
        QCOMPARE(ownLines(recorder), sweepAnd({}));
        QCOMPARE(page.title(), kDone);
        QVERIFY(page.hasPicture());
        QCOMPARE(page.parts(), kAll);
    }

    void avantiIsWhatEndsTheCheckOfAnIntactPlayer()
    {
        const IntactPlayer player;
        ShownCheck page;
        SignalRecorder recorder(page);
        page.runCheck(player.root());
        click(page, "pushButton");
        QCOMPARE(ownLines(recorder), sweepAnd({"visible 0"_s, "checkDone"_s}));
        QVERIFY(page.isVisible());
    }

    void pageShowsOnlyItsTitleDuringTheSweep()
    {
        const IntactPlayer player;
        ShownCheck page;
        int looked = 0;
        connect(&page, &Check::updateProgressBarVal, this, [&] {
            ++looked;
            QCOMPARE(page.title(), "CHECK UP IN CORSO"_s);
            QCOMPARE(page.parts(), kTitleAlone);
        });
        page.runCheck(player.root());
        QCOMPARE(looked, 102);
    }

    void sweepIsAPauseOfAboutASecondWithTheEventLoopRunning()
    {
        const IntactPlayer player;
        Check page;
        QTimer timer;
        const QSignalSpy ticks(&timer, &QTimer::timeout);
        timer.start(20);
        QElapsedTimer elapsed;
        elapsed.start();
        page.runCheck(player.root());
        // 101 waits of 10 ms; no upper limit, a busy machine takes longer.
        QVERIFY(elapsed.elapsed() >= 1010);
        QVERIFY(ticks.size() >= 10);
    }

    void missingFilesLeadToTheQuestion_data()
    {
        columns<QStringList>("missing");
        row("the start-up script alone", QStringList(kScript));
        row("the main program alone", words("System/Corvin/Corvin.exe"));
        row("the interface process alone", words("System/GuiProc/GuiProc.exe"));
        row("all three", words("AUTOEXEC.BAT System/Corvin/Corvin.exe System/GuiProc/GuiProc.exe"));
    }
    void missingFilesLeadToTheQuestion()
    {
        QFETCH(QStringList, missing);
        const IntactPlayer player;
        for (const QString &file : qAsConst(missing))
            QVERIFY(QFile::remove(player.path(file)));
        const QStringList before = player.files();
        BoxAnswerer boxes;
        boxes.answer(Titles::kSystemMissing, Buttons::kNo);
        ShownCheck page;
        boxes.whenShown([&page](QMessageBox *) {
            QCOMPARE(page.title(), kDone);
            QCOMPARE(page.description(), kProblem);
            QCOMPARE(page.parts(), kTexts);
        });
        page.runCheck(player.root());
        QCOMPARE(boxes.seen().size(), 1);
        BoxAnswerer::Seen box = boxes.seen().first();
        QCOMPARE(box.text, Texts::kSystemMissing);
        box.buttons.sort();
        QCOMPARE(box.buttons, QStringList({Buttons::kNo, Buttons::kYes}));
        QCOMPARE(box.icon, QMessageBox::Question);
        QVERIFY(box.hadParent);
        QCOMPARE(player.files(), before);
    }

    void noEndsTheCheckWithoutReinstallation_data()
    {
        columns<Answer>("answer");
        row("the button", pressing(Buttons::kNo));
        row("Escape", striking(Qt::Key_Escape));
        row("the box's close button", closing());
    }
    void noEndsTheCheckWithoutReinstallation()
    {
        QFETCH(Answer, answer);
        const SimulatedPlayer player;
        BoxAnswerer boxes;
        answer(boxes, Titles::kSystemMissing);
        ShownCheck page;
        SignalRecorder recorder(page);
        page.runCheck(player.root());
        QCOMPARE(ownLines(recorder), sweepAnd({"visible 0"_s, "checkDone"_s}));
        QCOMPARE(page.parts(), kTexts);
        QCOMPARE(page.description(), kProblem);
    }

    void yesReinstallsBeforeTheCheckEnds()
    {
        const SimulatedPlayer player;
        BoxAnswerer boxes;
        boxes.answer(Titles::kSystemMissing, Buttons::kYes);
        ShownCheck page;
        SignalRecorder recorder(page);
        connect(&page, &Check::reinstallOpSysOnly, this, [&page] {
            QCOMPARE(page.title(), "RIPRISTINO DEI FILE DEL SISTEMA OPERATIVO"_s);
            QCOMPARE(page.description(), "ATTENZIONE :\n\nNON Spegnere/Riavviare Corvin4 e NON scollegare "
                                         "il cavo USB.\n\nL'operazione potrebbe richiedere qualche minuto."_s);
            QCOMPARE(page.parts(), kTexts);
        });
        page.runCheck(player.root());
        // The outcome of the reinstallation does not matter: the files are still missing.
        QCOMPARE(ownLines(recorder), sweepAnd({"reinstallOpSysOnly"_s, "visible 0"_s, "checkDone"_s}));
        QVERIFY(button(page, "pushButton")->isHidden());
    }

    void playerPulledDuringTheSweepLeadsToTheQuestion()
    {
        const IntactPlayer player;
        BoxAnswerer boxes;
        boxes.answer(Titles::kSystemMissing, Buttons::kNo);
        Check page;
        SignalRecorder recorder(page);
        connect(&page, &Check::updateProgressBarVal, this, [&player](int value) {
            if (value == 50) {
                QVERIFY(QFile::remove(player.path(kScript)));
                QVERIFY(QDir(player.path("System"_s)).removeRecursively());
            }
        });
        page.runCheck(player.root());
        QCOMPARE(ownLines(recorder).last(), "checkDone"_s);
    }

    void missingRootLeadsToTheQuestion()
    {
        BoxAnswerer boxes;
        boxes.answer(Titles::kSystemMissing, Buttons::kNo);
        Check().runCheck("/no/such/folder/"_s);
        QCOMPARE(boxes.pending(), 0);
    }

    void secondCheckStartsFromTheBeginning()
    {
        const IntactPlayer player;
        ShownCheck page;
        page.runCheck(player.root());
        bool looked = false;
        connect(&page, &Check::updateProgressBarVal, this, [&](int value) {
            if (value != 1)
                return;
            looked = true;
            QVERIFY(!page.hasPicture());
            QVERIFY(button(page, "pushButton")->isHidden());
        });
        page.runCheck(player.root());
        QVERIFY(looked);
        QVERIFY(page.hasPicture());
    }

    void textsOfTheMomentFollowTheLanguage()
    {
        const IntactPlayer player;
        ShownCheck page;
        {
            const Language english("en"_s);
            QCOMPARE(page.title(), "CHECK-UP IN PROGRESS"_s);
            page.runCheck(player.root());
            QCOMPARE(page.title(), "SOFTWARE CHECK COMPLETED"_s);
        }
        QCOMPARE(page.title(), kDone);
        QVERIFY(page.hasPicture());
        QCOMPARE(page.parts(), kAll);
        QVERIFY(QFile::remove(player.path(kScript)));

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
        page.runCheck(player.root());
        QVERIFY(looked);
    }

    void textsFitInEveryLanguage_data()
    {
        columns<QString>("code");
        for (const char *code : {"it", "en", "de"})
            row(code, QString::fromLatin1(code));
    }
    void textsFitInEveryLanguage()
    {
        QFETCH(QString, code);
        const IntactPlayer player;
        ShownCheck page;
        const Language language(code);
        page.runCheck(player.root());
        QCoreApplication::processEvents();
        QVERIFY(allButtonsShowTheirWholeText(page));
        const auto *title = child<QLabel>(page, "label_titolo");
        QVERIFY(title->height() >= title->heightForWidth(title->width()));
    }
};

PAGE_TEST_MAIN(TestCheck)
#include "tst_check.moc"
