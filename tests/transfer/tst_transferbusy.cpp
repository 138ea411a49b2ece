#include "opentransfer.h"
#include "transfertest.h"

namespace {

/// STOP is confirmed while the file of this number is being counted as copied.
void stopAt(OpenTransfer &open, int file) {
    open.atEachStep([&open, file, seen = 0]() mutable {
        if (++seen == file)
            open.page.on_stopActionPressed();
    });
}

} // namespace

/// The transfer page while it copies: STOP, what it refuses meanwhile, and that its window answers.
class TestTransferBusy : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsDoneWithoutAFolderOrOnceAborted() {
        OpenForPlayer open;
        const QString file = open.pc.addFile("album/a.mid"_s);
        open.page.copyFolder(open.pc.path("nothing"_s), open.player.path("My Songs"_s));
        open.page.on_stopActionPressed();
        QVERIFY(open.page.aborted);
        QCOMPARE(open.page.countFiles(file), 0);
        open.page.copyOneFile(file, open.player.path("a.mid"_s));
        open.page.copyFolder(open.pc.path("album"_s), open.player.path("My Songs"_s));
        QCOMPARE(open.told(), QStringList());
        QCOMPARE(open.player.files(), QStringList());
    }

    void stopWhileCountingHidesTheBar() {
        OpenForPlayer open;
        for (int i = 0; i < 20; ++i)
            open.pc.addFile("album/%1.mid"_s.arg(i));
        connect(&open.page, &Transfer::updateLabelAction, this, [&](const QString &text) {
            if (text == kCounting)
                QTimer::singleShot(0, &open.page, &Transfer::on_stopActionPressed);
        });
        open.drop({open.pc.path("album"_s)});
        QCOMPARE(open.told(), (QStringList{"min 0"_s, "max 0"_s, "value 0"_s, "visible 1"_s, "label "_s + kCounting,
                                           "log Transfer : Start trasferimento in  \"%1\""_s.arg(open.player.root()),
                                           "visible 0"_s}));
        QVERIFY(!open.player.exists("album"_s));
        QCOMPARE(open.player.files(), QStringList());
        QVERIFY(!open.page.busy);
        QCOMPARE(open.blocked(), 0);
        QVERIFY(!open.page.isFinishPending());
    }

    void stopWhileCopyingKeepsTheBarAndTheRest() {
        OpenForPlayer open;
        stopAt(open, 2);
        open.dropNew(words("0.mid 1.mid 2.mid 3.mid 4.mid"));
        // The file during which STOP came is finished.
        QCOMPARE(open.player.files(), words("0.mid 1.mid"));
        QCOMPARE(open.recorder.count("increase"_s), 2);
        QVERIFY(!open.hasTold("visible 0"_s));
        QCOMPARE(open.recorder.lines().last(), "stop 0"_s);
        QVERIFY(open.hasLogged("Transfer : Fine Copia"_s));
        QVERIFY(open.page.isFinishPending());
        // The next drop starts afresh.
        open.drop({open.pc.path("4.mid"_s)});
        QVERIFY(open.player.exists("4.mid"_s));
    }

    void stopInsideAFolderMakesNoFurtherFolders() {
        OpenForPlayer open;
        stopAt(open, 1);
        open.dropNew(words("album/a/1.mid album/a/2.mid album/b/3.mid album/4.mid 5.mid"), words("album 5.mid"));
        QCOMPARE(open.player.files(), words("album/a/1.mid"));
        QVERIFY(!open.player.exists("album/b"_s));
    }

    void pageRefusesEverythingDuringACopy() {
        OpenForPlayer open;
        const QString other = open.pc.addFile("other.mid"_s);
        int blocked = 0;
        open.atEachStep([&] {
            blocked = open.blocked();
            click(open.page, "pushBtnBack");
            open.page.on_treeView_clicked(open.top());
            open.page.on_actionDeleteSelectedItems_triggered();
            open.page.on_pButPc_clicked();
            Drag drag(open.page, fileUrls({other}));
            QVERIFY(!drag.enter(open.overDropArea()));
            drag.move(open.overDropArea());
            drag.drop(open.overDropArea());
        });
        open.dropAt(open.overRow("My Songs"_s), {open.pc.addFile("a.mid"_s)});
        QCOMPARE(blocked, 4);
        QCOMPARE(open.blocked(), 0);
        QVERIFY(open.table()->model());
        QCOMPARE(open.player.files(), QStringList{"My Songs/a.mid"_s});
        QCOMPARE(open.page.currentFolder, open.player.path("My Songs"_s));
        QVERIFY(!open.hasTold("backFromTransferToFirstMenu"_s));
        click(open.page, "pushBtnBack");
        QCOMPARE(open.recorder.count("backFromTransferToFirstMenu"_s), 1);
    }

    void finishIsDisabledDuringTheCopyOnly() {
        OpenForPlayer open;
        button(open.page, "pushBtnForward")->setEnabled(true);
        QList<bool> pending;
        connect(&open.page, &Transfer::updateLabelAction, this,
                [&](const QString &) { pending.append(open.page.isFinishPending()); });
        open.dropNew(words("a.mid"));
        QCOMPARE(open.recorder.labels().size(), 3);
        QCOMPARE(pending, (QList<bool>{true, false, true})); // counting, copying, at the end
    }

    void windowAnswersDuringOneLargeFile() {
        OpenForPlayer open;
        const QByteArray content(24 * 1024 * 1024, 'v');
        int ticks = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&ticks] { ++ticks; });
        open.atEachStep([&timer] { timer.start(0); });
        connect(&open.page, &Transfer::updateLabelAction, &timer, [&timer](const QString &text) {
            if ("label "_s + text == kEnd)
                timer.stop();
        });
        open.drop({open.pc.addFile("video.mp4"_s, content)});
        QCOMPARE(open.player.content("video.mp4"_s), content);
        QVERIFY2(ticks >= 20, qPrintable(QString::number(ticks))); // once a block
    }
};

PAGE_TEST_MAIN(TestTransferBusy)
#include "tst_transferbusy.moc"
