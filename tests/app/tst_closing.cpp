#include "app/appsettings.h"
#include "closer.h"
#include "optimizer/ottimizza.h"
#include "pages/check.h"
#include "procedures/systemfixture.h"
#include "support/intactplayer.h"
#include "transfer/opentransfer.h"

namespace {

constexpr int kManySongs = 300;

QString song(int number) {
    return "My Songs/%1.mid"_s.arg(number, 4, 10, QLatin1Char('0'));
}

/// The window at work for a player with many songs.
struct AtWork
{
    AtWork() {
        SimulatedPlayer &player = work.player;
        player.addSystemFiles();
        for (int i = 0; i < kManySongs; ++i)
            player.addFile(song(i), "song");
    }
    bool barIsAt(int value) const {
        return work.window.bar()->format() == "%v"_s && work.window.bar()->value() >= value;
    }
    Transfer *transfer() const { return pageOf<Transfer>(*work.window.window); }
    Ottimizza *optimizer() const { return pageOf<Ottimizza>(*work.window.window); }
    /// Drops as many files as @p names of the PC onto the root of the player.
    void drop(const QStringList &names) {
        QStringList paths;
        for (const QString &name : names)
            paths.append(pc.addFile(name));
        work.window->on_gotoTransfer();
        Drag(*transfer(), fileUrls(paths)).bring(QPoint(5, 5));
    }
    void remove(const QString &folder) {
        work.window->on_gotoTransfer();
        const FakeFileManager fileManager;
        click(*transfer(), "pButPc");
        auto *table = child<QTableView>(*transfer(), "tableView");
        table->selectAll();
        QTRY_VERIFY(table->model()->rowCount(table->rootIndex()) > 0);
        for (int row = 0; row < table->model()->rowCount(table->rootIndex()); ++row) {
            if (table->model()->index(row, 0, table->rootIndex()).data().toString() == folder)
                table->selectRow(row);
        }
        work.boxes.answer(Titles::kDelete, Buttons::kYes);
        transfer()->on_actionDeleteSelectedItems_triggered();
    }
    /// The window was still there when it was asked, and goes by itself now.
    void verifyThatItCloses(const Closer &closer) const {
        QVERIFY(!closer.closedAtOnce);
        QTRY_VERIFY(!work.window->isVisible());
        QVERIFY(!work.window->closeRequested);
    }

    Maintenance work;
    PcFolder pc;
};

QStringList manyNames() {
    QStringList names;
    for (int i = 0; i < kManySongs; ++i)
        names.append("%1.mid"_s.arg(i));
    return names;
}

} // namespace

/// The window is asked to close while something works: the work ends first, at its next test and without a question.
class TestClosing : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { appSettings().setValue("Application/Language"_s, "lang_it"_s); }

    void backupEndsAndThenTheWindowCloses() {
        AtWork at;
        Closer closer(*at.work.window.window,
                      [&at] { return at.work.window.status() == Status::kBackingUp && at.barIsAt(5); });
        at.work.backUp({{Titles::kBackupError}});
        const int copied = filesBelow(at.work.backup).size();
        QVERIFY2(copied >= 5 && copied < kManySongs, qPrintable(QString::number(copied)));
        QCOMPARE(at.work.player.files("My Songs"_s).size(), kManySongs);
        at.verifyThatItCloses(closer);
    }

    void restoreEndsAndThenTheWindowCloses() {
        AtWork at;
        for (int i = 0; i < kManySongs; ++i)
            putFile("%1/Other/%2.mid"_s.arg(at.work.backup).arg(i), "saved");
        Closer closer(*at.work.window.window,
                      [&at] { return at.work.window.status() == Status::kRestoring && at.barIsAt(5); });
        at.work.restore({{Titles::kBackupError}});
        const QStringList restored = at.work.player.files("Other"_s);
        QVERIFY2(restored.size() >= 5 && restored.size() < kManySongs, qPrintable(QString::number(restored.size())));
        for (const QString &file : restored)
            QCOMPARE(at.work.player.content(file), QByteArray("saved"));
        QCOMPARE(filesBelow(at.work.backup).size(), kManySongs);
        at.verifyThatItCloses(closer);
    }

    void sessionThatEndsIsHeldUpUntilTheBackupHasEnded() {
        AtWork at;
        bool asked = false;
        connect(at.work.window.bar(), &QProgressBar::valueChanged, this, [&](int value) {
            if (value == 5 && at.barIsAt(5) && !asked) {
                asked = true;
                QApplication::closeAllWindows();
                QVERIFY(at.work.window->isVisible());
            }
        });
        at.work.backUp({{Titles::kBackupError}});
        QVERIFY(asked);
        QTRY_VERIFY(!at.work.window->isVisible());
    }

    void stalledDownloadEndsAndThenTheWindowCloses() {
        AtWork at;
        at.work.server.serveStalled(kUpdateArchivePath, noise(20000), 12000);
        Closer closer(*at.work.window.window, [&at] { return at.work.window.status() == Status::kDownloading; });
        at.work.run(Slots::kUpdate);
        QVERIFY(!at.work.player.exists("CorvinUpdate"_s));
        at.verifyThatItCloses(closer);
    }

    void unpackingEndsAndThenTheWindowCloses() {
        AtWork at;
        at.work.useSlowTool();
        Closer closer(*at.work.window.window, [&at] { return at.work.window.status() == Status::kUnpacking; });
        at.work.run(Slots::kReinstall);
        QVERIFY(at.work.player.exists("System/Corvin/Corvin.exe"_s));
        at.verifyThatItCloses(closer);
    }

    void questionOfAJobStaysAndTheJobDoesNotBegin() {
        AtWork at;
        at.work.boxes.whenShown([&at](QMessageBox *box) {
            QVERIFY(!at.work.window->close());
            QVERIFY(box->isVisible());
        });
        at.work.run(Slots::kReinstallClean, {{Titles::kErase}});
        QCOMPARE(at.work.server.requests(), QStringList());
        QTRY_VERIFY(!at.work.window->isVisible());
    }

    void copyEndsAndTheSongsMustStillBeOptimised() {
        AtWork at;
        Closer closer(*at.work.window.window, [&at] { return at.transfer()->busy && at.barIsAt(5); });
        at.work.boxes.answer(Titles::kNotClosed, Buttons::kOk);
        at.drop(manyNames());
        QVERIFY(!closer.closedAtOnce);
        QVERIFY(!at.work.player.exists("299.mid"_s));
        QTRY_COMPARE(at.work.boxes.pending(), 0);
        QCOMPARE(at.work.boxes.seen().last().text, Texts::kNotClosed);
        QVERIFY(at.work.window->isVisible());
        QVERIFY(!at.work.window->closeRequested);
        QVERIFY(at.transfer()->isFinishPending());
        // What was asked then is over: the optimisation runs to its end.
        QSignalSpy ended(at.optimizer(), &Ottimizza::backFromOttimizzaToEndOttimizza);
        click(*at.transfer(), "pushBtnForward");
        QCOMPARE(ended.size(), 1);
        QVERIFY(at.work.window->close());
    }

    void overwriteQuestionIsLeftToTheUser() {
        AtWork at;
        at.work.player.addFile("a.mid"_s, "player");
        at.work.boxes.whenShown([&at](QMessageBox *box) {
            if (box->windowTitle() == Titles::kTransferExists)
                QVERIFY(!at.work.window->close());
        });
        at.work.boxes.answer(Titles::kTransferExists, Buttons::kSi);
        at.work.boxes.answer(Titles::kNotClosed, Buttons::kOk);
        at.drop(words("a.mid b.mid"));
        QCOMPARE(at.work.player.content("a.mid"_s), QByteArray("pc"));
        QVERIFY(!at.work.player.exists("b.mid"_s));
        QTRY_COMPARE(at.work.boxes.pending(), 0);
    }

    void deletionEndsAndThenTheWindowCloses() {
        AtWork at;
        Closer closer(*at.work.window.window, [&at] { return at.transfer()->busy; });
        at.remove("My Songs"_s);
        at.verifyThatItCloses(closer);
    }

    void optimisationEndsAndThenTheWindowCloses() {
        AtWork at;
        Closer closer(*at.work.window.window, [&at] { return at.optimizer()->isRunning(); });
        at.work.window->on_gotoOptimizer();
        QSignalSpy ended(at.optimizer(), &Ottimizza::backFromOttimizzaToEndOttimizza);
        at.optimizer()->startAllOptimization();
        QCOMPARE(ended.size(), 0);
        QCOMPARE(at.work.player.files("My Songs"_s).size(), kManySongs);
        at.verifyThatItCloses(closer);
    }

    void checkEndsWithoutItsQuestion() {
        const SimulatedPlayer player; // without a system: else the question comes
        MainWindow window;
        const BoxAnswerer boxes;
        window.show();
        Closer closer(window, [&window] { return pageOf<Check>(window)->isVisible(); });
        QTRY_VERIFY(closer.asked);
        QVERIFY(!closer.closedAtOnce);
        QTRY_VERIFY(!window.isVisible());
        QVERIFY(pageOf<Check>(window)->isVisibleTo(&window)); // and never left for the first menu
    }

    void betweenJobsItClosesAtOnce() {
        AtWork at;
        at.work.backUp({{Titles::kDone}});
        QVERIFY(at.work.window->close());
        QVERIFY(!at.work.window->isVisible());
    }

    void statusStaysReadableWhenTheLanguageChangesDuringAJob() {
        AtWork at;
        QStringList statuses;
        connect(at.work.window.bar(), &QProgressBar::valueChanged, this, [&](int value) {
            if (value == 5 && at.barIsAt(5)) {
                QEvent change(QEvent::LanguageChange);
                QCoreApplication::sendEvent(at.work.window.window.get(), &change);
                statuses.append(at.work.window.status());
            }
        });
        at.work.backUp({{Titles::kDone}});
        QCOMPARE(statuses, QStringList(Status::kBackingUp));
    }
};

PAGE_TEST_MAIN(TestClosing)
#include "tst_closing.moc"
