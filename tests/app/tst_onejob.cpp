#include "app/appsettings.h"

#include "disk/worklock.h"
#include "optimizer/ottimizza.h"
#include "procedures/systemfixture.h"
#include "transfer/opentransfer.h"

const QString kTitle = "Corvin4 Manager"_s;
const QString kText = "Un'altra finestra del programma sta lavorando.\nAttendere che abbia finito."_s;

/// Two windows may be open, but only one job works at a time.
class TestOneJob : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { appSettings().setValue("Application/Language"_s, "lang_it"_s); }

    void procedureIsRefusedWhileAnotherWindowWorks_data() {
        columns<QByteArray>("slot");
        for (const char *slot : {Slots::kUpdate, Slots::kBackUp, Slots::kRestore, Slots::kReinstall,
                                 Slots::kReinstallClean, Slots::kReinstallRestoring})
            row(slot, QByteArray(slot));
    }
    void procedureIsRefusedWhileAnotherWindowWorks() {
        QFETCH(QByteArray, slot);
        Maintenance work;
        work.player.addFile("My Songs/a.mid"_s, "song");
        {
            const WorkLock other;
            QVERIFY(other.isTaken());
            work.run(slot.constData(), {{kTitle}});
        }
        expectLook(work.lastBox(), QMessageBox::Information, kText);
        QCOMPARE(work.server.requests(), QStringList());
        QCOMPARE(work.player.files(), QStringList("My Songs/a.mid"_s));
        // The right was not kept by the refused one.
        QVERIFY(WorkLock().isTaken());
    }

    void procedureHoldsTheRightFromItsStartToItsEnd() {
        Maintenance work;
        work.player.addFile("My Songs/a.mid"_s, "song");
        QList<bool> free;
        connect(work.window.bar(), &QProgressBar::valueChanged, this, [&free] { free.append(WorkLock().isTaken()); });
        work.backUp({{Titles::kDone}});
        QVERIFY(!free.isEmpty());
        QVERIFY(!free.contains(true));
        QVERIFY(WorkLock().isTaken());
    }

    void dropAndDeletionAreRefusedWhileAnotherWindowWorks() {
        OpenForPlayer open(words("a.mid"));
        BoxAnswerer boxes;
        const auto other = std::make_unique<WorkLock>();
        boxes.answer(kTitle, Buttons::kOk);
        open.dropNew(words("b.mid"));
        QCOMPARE(boxes.seen().last().text, kText);
        open.select(words("a.mid"));
        boxes.answer(Titles::kDelete, Buttons::kYes);
        boxes.answer(kTitle, Buttons::kOk);
        open.page.on_actionDeleteSelectedItems_triggered();
        QCOMPARE(open.player.files(), words("a.mid"));
        QCOMPARE(open.told(), QStringList());
        QVERIFY(!open.page.busy);
        QCOMPARE(open.blocked(), 0);
        QVERIFY(!open.page.isFinishPending());
    }

    void dropAndDeletionHoldTheRight() {
        OpenForPlayer open(words("a.mid"));
        QList<bool> free;
        open.atEachStep([&free] { free.append(WorkLock().isTaken()); });
        open.dropNew(words("b.mid"));
        BoxAnswerer boxes;
        boxes.answer(Titles::kDelete, Buttons::kYes);
        open.select(words("a.mid"));
        open.page.on_actionDeleteSelectedItems_triggered();
        QCOMPARE(free, (QList<bool>{false, false}));
        QVERIFY(WorkLock().isTaken());
    }

    // The songs are not in the player's database yet: the window must not let itself be closed for the refusal.
    void finishIsRefusedWhileAnotherWindowWorksAndStaysPending() {
        const SimulatedPlayer player;
        const ProcedureWindow shell;
        const auto *page = pageOf<Transfer>(*shell.window);
        BoxAnswerer boxes;
        const WorkLock other;
        button(*shell.window, "pushBtnForward")->setEnabled(true);
        boxes.answer(kTitle, Buttons::kOk);
        shell->on_gotoTransfer();
        click(*page, "pushBtnForward");
        QCOMPARE(boxes.seen().last().text, kText);
        QVERIFY(page->isVisible());
        QVERIFY(page->isFinishPending());
        QVERIFY(!pageOf<Ottimizza>(*shell.window)->isVisible());
    }

    void optimisationIsRefusedWhileAnotherWindowWorksAndThePageCanBeLeft() {
        SimulatedPlayer player;
        player.addFile("My Songs/readme.txt"_s, "not a song");
        const ProcedureWindow shell;
        const auto *page = pageOf<Ottimizza>(*shell.window);
        BoxAnswerer boxes;
        const WorkLock other;
        boxes.answer(kTitle, Buttons::kOk);
        shell->on_gotoOptimizer();
        click(*page, "Btn_Opt_Ok");
        QCOMPARE(boxes.seen().last().text, kText);
        QCOMPARE(player.files(), QStringList("My Songs/readme.txt"_s));
        QVERIFY(page->isVisible());
        QVERIFY(!page->isRunning());
        click(*page, "pushBtnBack");
        QVERIFY(!page->isVisible());
    }
};

PAGE_TEST_MAIN(TestOneJob)
#include "tst_onejob.moc"
