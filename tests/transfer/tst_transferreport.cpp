#include "opentransfer.h"
#include "support/boxanswerer.h"
#include "support/boxtexts.h"

namespace {

/// A drop of which not all arrives: what the box says that tells it.
struct IncompleteDrop : OpenForPlayer
{
    explicit IncompleteDrop(const QStringList &content = {}) : OpenForPlayer(content) {
        boxes.whenShown([this](QMessageBox *box) {
            if (box->windowTitle() == Titles::kNotAllCopied)
                names = box->detailedText().split(QLatin1Char('\n'));
        });
    }
    void expectBox() { boxes.answer(Titles::kNotAllCopied, Buttons::kOk); }
    QString text() const { return boxes.seen().last().text; }
    QString native(const QString &name) const { return QDir::toNativeSeparators(pc.path(name)); }

    BoxAnswerer boxes;
    QStringList names;
};

/// Pulls the player when all files of a drop are copied, before they are flushed.
class PullAfterTheCopy
{
public:
    PullAfterTheCopy() { s_before = qInstallMessageHandler(&PullAfterTheCopy::pull); }
    ~PullAfterTheCopy() { qInstallMessageHandler(s_before); }

private:
    static void pull(QtMsgType type, const QMessageLogContext &context, const QString &text) {
        if (text == "Transfer : Fine Copia"_s)
            SimulatedPlayer::disconnect();
        s_before(type, context, text);
    }
    static QtMessageHandler s_before;
};
QtMessageHandler PullAfterTheCopy::s_before = nullptr;

} // namespace

/// A drop that does not bring everything says so, and what a pulled player leaves behind is never touched.
class TestTransferReport : public QObject
{
    Q_OBJECT

private slots:
    void filesThatCouldNotBeCopiedAreToldByNumberAndName() {
        // A folder stands in the way of the one, a file in that of the other's folder.
        IncompleteDrop drop(words("b.mid/ Rock"));
        drop.expectBox();
        drop.boxes.answer(Titles::kTransferExists, Buttons::kSi);
        drop.expectBox();
        drop.dropNew(words("a.mid Rock/c.mid"), words("a.mid Rock"));
        QCOMPARE(drop.text(), Texts::kNotAllCopied.arg(1).arg(2));
        QCOMPARE(drop.names, (QStringList{drop.native("Rock"_s), drop.native("Rock/c.mid"_s)}));
        QCOMPARE(drop.boxes.seen().last().icon, QMessageBox::Information);
        drop.dropNew(words("b.mid"));
        QCOMPARE(drop.text(), Texts::kNotAllCopied.arg(0).arg(1));
        QCOMPARE(drop.names, QStringList(drop.native("b.mid"_s)));
        QVERIFY(drop.page.isFinishPending());
    }

    void overwritingThatFailsIsToldToo() {
        SKIP_ON_WINDOWS("No file that opens and cannot be read here");
        IncompleteDrop drop(words("mem"));
        drop.boxes.answer(Titles::kTransferExists, Buttons::kSi);
        drop.expectBox();
        drop.drop({"/proc/self/mem"_s});
        QCOMPARE(drop.text(), Texts::kNotAllCopied.arg(0).arg(1));
        QCOMPARE(drop.player.content("mem"_s), QByteArray("player"));
    }

    void folderThatHasGoneByItsTurnIsToldAndNotMade() {
        IncompleteDrop drop;
        drop.expectBox();
        for (const char *song : {"album/A/1.mid", "album/B/deep/2.mid", "album/B/3.mid"})
            drop.pc.addFile(QLatin1String(song));
        drop.atEachStep([&drop] { QDir().rename(drop.pc.path("album/B"_s), drop.pc.path("B"_s)); });
        drop.drop({drop.pc.path("album"_s)});
        QCOMPARE(drop.text(), Texts::kNotAllCopied.arg(1).arg(3));
        QCOMPARE(drop.names, QStringList(drop.native("album/B"_s)));
        QCOMPARE(drop.player.files(), words("album/A/1.mid"));
        QVERIFY(!drop.player.exists("album/B"_s));
    }

    void onlyTheFirstNamesAreGiven() {
        IncompleteDrop drop(words("album"));
        drop.expectBox();
        QStringList songs;
        for (int i = 0; i < 30; ++i)
            songs.append("album/%1.mid"_s.arg(i));
        drop.dropNew(songs, words("album"));
        QCOMPARE(drop.text(), Texts::kNotAllCopied.arg(0).arg(30));
        QCOMPARE(drop.names.size(), 20);
    }

    void folderThatCannotBeMadeIsToldThoughItHoldsNoFile() {
        IncompleteDrop drop(words("album"));
        drop.expectBox();
        drop.drop({drop.pc.addFolder("album"_s)});
        QCOMPARE(drop.text(), Texts::kNotAllCopied.arg(0).arg(0));
        QCOMPARE(drop.names, QStringList(drop.native("album"_s)));
    }

    void whatTheUserKeptAndWhatStopLeftOutIsNotMissing() {
        IncompleteDrop drop(words("a.mid"));
        drop.boxes.answer(Titles::kTransferExists, Buttons::kNo);
        drop.dropNew(words("a.mid b.mid"));
        drop.atEachStep([&drop] { drop.page.on_stopActionPressed(); });
        drop.dropNew(words("c.mid d.mid"));
        // Any other box would fail here.
        QCOMPARE(drop.player.files(), words("a.mid b.mid c.mid"));
    }

    void dropThatBringsNoFileDoesNotLeaveTheBarMoving() {
        OpenForPlayer open;
        open.drop({open.pc.addFolder("empty"_s)});
        QCOMPARE(open.recorder.of("max"_s), words("0 1"));
        QVERIFY(open.player.exists("empty"_s));
    }

    void deletionOfNothingDoesNotLeaveTheBarMoving() {
        OpenForPlayer open;
        BoxAnswerer boxes;
        boxes.answer(Titles::kDelete, Buttons::kYes);
        open.page.on_actionDeleteSelectedItems_triggered();
        QCOMPARE(open.recorder.of("max"_s), words("0 1"));
    }

    void nothingIsWrittenOnceThePlayerIsGone() {
        IncompleteDrop drop(words("1.mid"));
        int steps = 0;
        drop.atEachStep([&steps] {
            if (++steps == 2)
                SimulatedPlayer::disconnect();
        });
        // Nor does one that comes back in the middle get the rest.
        drop.atEachStep([&drop, &steps] {
            if (steps == 4)
                drop.player.connect();
        });
        drop.expectBox();
        drop.dropNew(words("0.mid 1.mid 2.mid album/3.mid 4.mid 5.mid"), words("0.mid 1.mid 2.mid album 4.mid 5.mid"));
        QCOMPARE(drop.player.files(), words("0.mid 1.mid"));
        QCOMPARE(drop.player.content("1.mid"_s), QByteArray("player"));
        QVERIFY(!drop.player.exists("album"_s));
        QCOMPARE(drop.text(), Texts::kNotAllCopied.arg(1).arg(6));
        QCOMPARE(drop.names.first(), drop.native("1.mid"_s));
        QVERIFY(drop.hasTold(kEnd));
    }

    void largeFileIsNotWrittenOnAfterThePlayerHasGone() {
        IncompleteDrop drop;
        QTimer pull;
        connect(&pull, &QTimer::timeout, &SimulatedPlayer::disconnect);
        // The first round of events lies before the file, the second within it.
        drop.atEachStep([&pull] { QTimer::singleShot(0, &pull, [&pull] { pull.start(0); }); });
        drop.expectBox();
        drop.drop({drop.pc.addFile("video.mp4"_s, QByteArray(24 * 1024 * 1024, 'v'))});
        QCOMPARE(drop.text(), Texts::kNotAllCopied.arg(0).arg(1));
        SKIP_ON_WINDOWS("what was begun lies on a drive that is gone");
        QCOMPARE(drop.player.files(), QStringList());
    }

    void whatWasCopiedLastIsDoubtedWhenThePlayerGoesBeforeItHasIt() {
        IncompleteDrop drop;
        const PullAfterTheCopy pull;
        drop.expectBox();
        drop.dropNew(words("a.mid b.mid"));
        QCOMPARE(drop.text(), Texts::kNotAllCopied.arg(1).arg(2));
        QCOMPARE(drop.names, QStringList(drop.native("b.mid"_s)));
    }

    void folderIsNotDeletedFurtherOnceThePlayerIsGone() {
        QStringList songs;
        for (int i = 0; i < 20; ++i)
            songs.append("Old/%1.mid"_s.arg(i));
        OpenForPlayer open(songs);
        BoxAnswerer boxes;
        boxes.answer(Titles::kDelete, Buttons::kYes);
        QTimer pull;
        connect(&pull, &QTimer::timeout, this, [&open] {
            if (open.player.files().size() < 20)
                SimulatedPlayer::disconnect();
        });
        open.select(words("Old"));
        pull.start(0);
        open.page.on_actionDeleteSelectedItems_triggered();
        const int left = open.player.files().size();
        QVERIFY2(left > 0 && left < 20, qPrintable(QString::number(left)));
        QVERIFY(open.hasTold(kEnd));
    }

    void entryThatCouldNotBeDeletedStaysInTheTable() {
        SKIP_ON_WINDOWS("Nothing resists that the page could not delete");
        OpenForPlayer open(words("a.mid Old/song.mid"));
        if (!runProgram("chattr"_s, {"+i"_s, open.player.path("Old"_s)}))
            QSKIP("No folder that resists can be made on this machine");
        BoxAnswerer boxes;
        boxes.answer(Titles::kDelete, Buttons::kYes);
        open.select(words("a.mid Old"));
        open.page.on_actionDeleteSelectedItems_triggered();
        QTRY_COMPARE(open.names(), words("Old"));
        QVERIFY(runProgram("chattr"_s, {"-i"_s, open.player.path("Old"_s)}));
    }
};

PAGE_TEST_MAIN(TestTransferReport)
#include "tst_transferreport.moc"
