#include "showncheck.h"

#include "support/answers.h"
#include "support/boxtexts.h"
#include "support/pagetest.h"
#include "support/same.h"

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

const QString kProblem = "Problema rilevato durante il controllo del sistema operativo !!!"_s;

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

/// The check of a player that lacks system files: it looks for all of them, asks, and reinstalls when told to.
class TestMissingSystemFiles : public QObject
{
    Q_OBJECT

private slots:
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
};

PAGE_TEST_MAIN(TestMissingSystemFiles)
#include "tst_missingsystemfiles.moc"
