#include "opentransfer.h"
#include "support/boxanswerer.h"
#include "support/boxtexts.h"
#include "support/mountedplayer.h"

namespace {

/// A player with songs, of which some are deleted.
struct Deletion : OpenForPlayer
{
    Deletion() : OpenForPlayer(words("a.mid b.mid c.mid Old/deep/song.mid Kept/song.mid")) {}
    /// Selects these and deletes them as the user wants.
    void remove(const QStringList &names) {
        select(names);
        answerer.answer(Titles::kDelete, Buttons::kYes);
        page.on_actionDeleteSelectedItems_triggered();
    }

    BoxAnswerer answerer;
};

} // namespace

class TestTransferDelete : public QObject
{
    Q_OBJECT

private slots:
    void questionIsAsAgreed() {
        Deletion deletion;
        deletion.remove(words("a.mid"));
        QCOMPARE(deletion.answerer.seen().size(), 1);
        const BoxAnswerer::Seen box = deletion.answerer.seen().first();
        QCOMPARE(box.text, Texts::kDelete);
        QCOMPARE(box.icon, QMessageBox::Question);
        QStringList buttons = box.buttons;
        buttons.sort();
        QCOMPARE(buttons, (QStringList{Buttons::kNo, Buttons::kYes}));
    }

    void everyOtherAnswerKeepsTheFiles_data() {
        columns<int>("key");
        row("No", 0);
        row("Enter", int(Qt::Key_Return));
        row("Escape", int(Qt::Key_Escape));
        row("closed", -1);
    }

    void everyOtherAnswerKeepsTheFiles() {
        QFETCH(int, key);
        Deletion deletion;
        deletion.select(words("a.mid"));
        const QStringList before = deletion.player.files();
        if (key == 0)
            deletion.answerer.answer(Titles::kDelete, Buttons::kNo);
        else if (key < 0)
            deletion.answerer.answerByClosing(Titles::kDelete);
        else
            deletion.answerer.answerByKey(Titles::kDelete, Qt::Key(key));
        deletion.page.on_actionDeleteSelectedItems_triggered();
        QCOMPARE(deletion.told(), QStringList());
        QCOMPARE(deletion.player.files(), before);
        QVERIFY(!deletion.page.busy);
    }

    void deletionTellsItsStepsInOrder() {
        Deletion deletion;
        deletion.remove(words("a.mid Old"));
        QCOMPARE(deletion.told(),
                 (QStringList{"min 0"_s, "max 0"_s, "value 0"_s, "visible 1"_s, "label Cancellazione in corso ..."_s,
                              "log Transfer : Start Cancellazione"_s, "max 2"_s, "increase"_s, "increase"_s,
                              "log Transfer : Fine Cancellazione"_s, kEnd, "stop 0"_s}));
        QVERIFY(deletion.recorder.log().contains(QtInfoMsg, "Transfer : Start Cancellazione"_s));
    }

    void filesAndFoldersGoAndTheRestStays() {
        Deletion deletion;
        deletion.player.addFile("Old/.hidden"_s);
        QVERIFY(QFile::setPermissions(deletion.player.path("Old/deep/song.mid"_s), QFile::ReadOwner));
        deletion.remove(words("a.mid c.mid Old"));
        QCOMPARE(entriesBelow(deletion.player.root()), words("Kept Kept/song.mid b.mid"));
    }

    void linkGoesButNotWhatItPointsTo() {
        Deletion deletion;
        const QString song = deletion.pc.addFile("songs/mine.mid"_s);
        const QString link = deletion.player.path("link"_s);
        QVERIFY(QFile::link(deletion.pc.path("songs"_s), link));
        deletion.remove(words("link"));
        QVERIFY(!QFileInfo(link).isSymLink());
        QVERIFY(QFileInfo::exists(song));
    }

    void vanishedEntryStillCounts() {
        Deletion deletion;
        deletion.answerer.whenShown([&](QMessageBox *) { QFile::remove(deletion.player.path("a.mid"_s)); });
        deletion.remove(words("a.mid b.mid"));
        QCOMPARE(deletion.recorder.count("increase"_s), 2);
        QVERIFY(!deletion.player.exists("b.mid"_s));
    }

    void folderThatStaysIsTriedThreeTimes() {
        Deletion deletion;
#ifdef Q_OS_WIN
        // A folder stays while a song in it is open.
        QFile song(deletion.player.path("Old/deep/song.mid"_s));
        const bool stays = song.open(QIODevice::ReadOnly);
#else
        // A folder that holds a mounted volume stays, whoever asks.
        const FolderMount mount(deletion.player.path("Old/deep"_s), 100);
        const bool stays = mount.isGood();
#endif
        if (!stays)
            QSKIP("No folder that resists can be made on this machine");
        QElapsedTimer time;
        time.start();
        deletion.remove(words("Old"));
        const qint64 took = time.elapsed();
        // Three attempts have two pauses of 250 ms between them.
        QVERIFY2(took >= 500 && took < 2000, qPrintable(QString::number(took)));
        QCOMPARE(deletion.recorder.count("increase"_s), 1);
        QVERIFY(deletion.hasTold(kEnd));
        QVERIFY(deletion.player.exists("Old"_s));
    }

    void stopKeepsTheRest() {
        Deletion deletion;
        deletion.page.aborted = true; // of an earlier stop: it is cleared
        deletion.atEachStep([&] { deletion.page.on_stopActionPressed(); });
        deletion.remove(words("a.mid b.mid c.mid"));
        QCOMPARE(deletion.recorder.count("increase"_s), 1);
        QCOMPARE(deletion.player.files().size(), 4); // one of five is gone
        QCOMPARE(deletion.recorder.lines().last(), "stop 0"_s);
        QVERIFY(!deletion.page.busy);
    }

    void finishStaysAsItWas() {
        for (bool enabled : {false, true}) {
            Deletion deletion;
            button(deletion.page, "pushBtnForward")->setEnabled(enabled);
            deletion.remove(words("a.mid"));
            QVERIFY(deletion.hasTold(kEnd));
            QCOMPARE(deletion.page.isFinishPending(), enabled);
        }
    }

    void pageRefusesEverythingMeanwhileAndTheTableFollowsAfterwards() {
        Deletion deletion;
        QList<int> blocked;
        deletion.atEachStep([&] {
            QVERIFY(deletion.page.busy);
            blocked.append(deletion.blocked());
            deletion.page.on_pushBtnBack_clicked();
            QVERIFY(!Drag(deletion.page, fileUrls({"/tmp/x"_s})).enter(deletion.overDropArea()));
        });
        deletion.remove(words("a.mid b.mid"));
        QCOMPARE(blocked, (QList<int>{4, 4}));
        QCOMPARE(deletion.blocked(), 0);
        QVERIFY(!deletion.hasTold("backFromTransferToFirstMenu"_s));
        QTRY_COMPARE(deletion.names(), words("Kept Old c.mid"));
    }

    void delKeyAndButtonDelete() {
        Deletion deletion;
        deletion.answerer.answer(Titles::kDelete, Buttons::kYes);
        deletion.answerer.answer(Titles::kDelete, Buttons::kYes);
        deletion.select(words("a.mid"));
        deletion.page.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&deletion.page));
        deletion.table()->setFocus();
        QTest::keyClick(deletion.table(), Qt::Key_Delete);
        QVERIFY(!deletion.player.exists("a.mid"_s));
        deletion.select(words("b.mid"));
        click(deletion.page, "toolButtonDelete");
        QVERIFY(!deletion.player.exists("b.mid"_s));
    }

    void nothingSelectedDeletesNothing() {
        Deletion deletion;
        const QStringList before = deletion.player.files();
        click(deletion.page, "toolButtonDelete"); // disabled: no question
        QVERIFY(deletion.answerer.seen().isEmpty());
        deletion.remove({});
        QCOMPARE(deletion.recorder.count("increase"_s), 0);
        QCOMPARE(deletion.player.files(), before);
    }

    void wholePlayerIsNeverDeleted() {
        Deletion deletion;
        // Without a folder to show, a view shows the top of its model: the player itself.
        deletion.table()->setRootIndex(QModelIndex());
        const QStringList before = deletion.player.files();
        const QString top = deletion.table()->model()->index(0, 0).data().toString();
        QVERIFY(top.contains("CORVIN4"_s));
        deletion.remove({top});
        QCOMPARE(deletion.player.files(), before);
    }
};

PAGE_TEST_MAIN(TestTransferDelete)
#include "tst_transferdelete.moc"
