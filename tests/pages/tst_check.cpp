#include "pages/check.h"

#include "app/shared/styles.h"
#include "support/answers.h"
#include "support/boxtexts.h"
#include "support/intactplayer.h"
#include "support/languages.h"
#include "support/ownlines.h"
#include "support/pagetest.h"
#include "support/same.h"

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

const QString kDone = "CONTROLLO SOFTWARE COMPLETATO"_s;
const QString kProblem = "Problema rilevato durante il controllo del sistema operativo !!!"_s;

/// The page on the screen, beside a player with all its system files.
struct ShownCheck : Check
{
    ShownCheck() {
        resize(1000, 600);
        show();
    }
    void run() { runCheck(player.root()); }
    void remove(const QStringList &files) const {
        for (const QString &file : files)
            QVERIFY(QFile::remove(player.path(file)));
    }
    QStringList lines() { return ownLines(recorder); }
    QString title() const { return textOf(*this, "label_titolo"); }
    QString description() const { return textOf(*this, "label_descr"); }
    bool hasPicture() const { return !child<QLabel>(*this, "label_descr")->pixmap(Qt::ReturnByValue).isNull(); }
    /// Which of its parts can be seen.
    QStringList parts() const {
        QStringList visible;
        for (const char *name : {"label_titolo", "label_descr", "pushButton"})
            if (child<QWidget>(*this, name)->isVisible())
                visible.append(QLatin1String(name));
        return visible;
    }

    const IntactPlayer player;
    SignalRecorder recorder{*this};
};

const QStringList kTexts = words("label_titolo label_descr");
const QStringList kTextsAndButton = words("label_titolo label_descr pushButton");
const QStringList kSystemFiles = words("AUTOEXEC.BAT System/Corvin/Corvin.exe System/GuiProc/GuiProc.exe");

/// All that a check emits up to the look at the files, and then this.
static QStringList sweepAnd(const QStringList &rest) {
    QStringList lines =
        "label CONTROLLO INTEGRITA' SOFTWARE ...|min 0|max 100|value 0|visible 1|stop 0"_s.split(QLatin1Char('|'));
    for (int value = 0; value <= 100; ++value)
        lines.append("value %1"_s.arg(value));
    return lines + QStringList("visible 0"_s) + rest;
}

#ifdef Q_OS_UNIX
/// A link to nothing, whose time of last use tells whether somebody followed it.
class UnusedLink
{
public:
    explicit UnusedLink(const QString &path) : m_path(QFile::encodeName(path)) {
        const timespec longAgo[] = {{1000, 0}, {2000, 0}};
        if (symlink("nowhere", m_path.constData()) != 0 ||
            utimensat(AT_FDCWD, m_path.constData(), longAgo, AT_SYMLINK_NOFOLLOW) != 0)
            failTest("No link "_s + path);
    }
    bool isUnused() const {
        struct stat entry = {};
        return lstat(m_path.constData(), &entry) == 0 && entry.st_atim.tv_sec == 1000;
    }

private:
    QByteArray m_path;
};
#endif

class TestCheck : public QObject
{
    Q_OBJECT

private slots:
    void pageIsHiddenAndDark() {
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

    void intactPlayerWaitsForAvanti() {
        const BoxAnswerer boxes;
        ShownCheck page;
        page.run();
        QCOMPARE(page.lines(), sweepAnd({}));
        QCOMPARE(page.title(), kDone);
        QVERIFY(page.hasPicture());
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

    void allThreeFilesAreLookedForThoughTheFirstIsMissing() {
#ifdef Q_OS_UNIX
        ShownCheck page;
        page.remove(kSystemFiles);
        std::vector<UnusedLink> links;
        for (const QString &file : kSystemFiles)
            links.emplace_back(page.player.path(file));
        const UnusedLink probe(page.player.path("probe"_s));
        QVERIFY(!QFileInfo::exists(page.player.path("probe"_s)));
        if (probe.isUnused())
            QSKIP("This file system does not tell when a link was followed");
        BoxAnswerer boxes;
        boxes.answer(Titles::kSystemMissing, Buttons::kNo);
        page.run();
        for (const UnusedLink &link : links)
            QVERIFY(!link.isUnused());
#else
        QSKIP("Whether a file was looked for cannot be seen here");
#endif
    }

    void checkThatIsToCloseEndsItsPauseAndAsksNothing() {
        ShownCheck page;
        page.remove(kSystemFiles);
        const BoxAnswerer boxes;
        connect(&page, &Check::updateProgressBarVal, &page, [&page](int value) {
            if (value == 5)
                page.on_closeRequested();
        });
        page.run();
        QCOMPARE(page.recorder.of("value"_s).last(), "5"_s);
        QCOMPARE(page.recorder.count("checkDone"_s), 0);
        QCOMPARE(page.recorder.lines().last(), "visible 0"_s);
    }

    void missingFilesLeadToTheQuestionAndNoEndsTheCheck_data() {
        columns<QStringList, Answer>("missing", "answer");
        row("the start-up script alone", QStringList(kSystemFiles.at(0)), pressing(Buttons::kNo));
        row("the main program alone", QStringList(kSystemFiles.at(1)), pressing(Buttons::kNo));
        row("the interface process alone", QStringList(kSystemFiles.at(2)), pressing(Buttons::kNo));
        row("all three", kSystemFiles, pressing(Buttons::kNo));
        row("all three, answered with Escape", kSystemFiles, striking(Qt::Key_Escape));
        row("all three, answered with the box's close button", kSystemFiles, closing());
    }
    void missingFilesLeadToTheQuestionAndNoEndsTheCheck() {
        QFETCH(QStringList, missing);
        QFETCH(Answer, answer);
        ShownCheck page;
        page.remove(missing);
        const QStringList before = page.player.files();
        BoxAnswerer boxes;
        answer(boxes, Titles::kSystemMissing);
        const auto lookAtThePage = [&page] {
            QCOMPARE(page.title(), kDone);
            QCOMPARE(page.description(), kProblem);
            QCOMPARE(page.parts(), kTexts);
        };
        boxes.whenShown([&](QMessageBox *) { lookAtThePage(); });
        page.run();
        lookAtThePage();
        QCOMPARE(boxes.seen().size(), 1);
        BoxAnswerer::Seen box = boxes.seen().first();
        QCOMPARE(box.text, Texts::kSystemMissing);
        box.buttons.sort();
        QCOMPARE(box.buttons, QStringList({Buttons::kNo, Buttons::kYes}));
        QCOMPARE(box.icon, QMessageBox::Question);
        QVERIFY(box.hadParent);
        QCOMPARE(page.lines(), sweepAnd({"visible 0"_s, "checkDone"_s}));
        QCOMPARE(page.player.files(), before);
    }

    void yesReinstallsBeforeTheCheckEnds() {
        BoxAnswerer boxes;
        boxes.answer(Titles::kSystemMissing, Buttons::kYes);
        ShownCheck page;
        page.remove(kSystemFiles);
        connect(&page, &Check::reinstallOpSysOnly, this, [&page] {
            QCOMPARE(page.title(), "RIPRISTINO DEI FILE DEL SISTEMA OPERATIVO"_s);
            QCOMPARE(page.description(), "ATTENZIONE :\n\nNON Spegnere/Riavviare Corvin4 e NON scollegare "
                                         "il cavo USB.\n\nL'operazione potrebbe richiedere qualche minuto."_s);
            QCOMPARE(page.parts(), kTexts);
        });
        page.run();
        // The outcome of the reinstallation does not matter: the files are still missing.
        QCOMPARE(page.lines(), sweepAnd({"reinstallOpSysOnly"_s, "visible 0"_s, "checkDone"_s}));
        QVERIFY(button(page, "pushButton")->isHidden());
    }

    void playerPulledDuringTheSweepLeadsToTheQuestion() {
        BoxAnswerer boxes;
        boxes.answer(Titles::kSystemMissing, Buttons::kNo);
        ShownCheck page;
        connect(&page, &Check::updateProgressBarVal, this, [&page](int value) {
            if (value == 50)
                page.remove(kSystemFiles);
        });
        page.run();
        QCOMPARE(page.lines().last(), "checkDone"_s);
    }

    void emptyOrMissingRootLeadsToTheQuestion() {
        const SimulatedPlayer player;
        for (const QString &root : {player.root(), "/no/such/folder/"_s}) {
            BoxAnswerer boxes;
            boxes.answer(Titles::kSystemMissing, Buttons::kNo);
            Check().runCheck(root);
            same(qPrintable(root), boxes.pending(), 0);
        }
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
