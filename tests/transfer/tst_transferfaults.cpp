#include "opentransfer.h"
#include "support/boxanswerer.h"
#include "support/boxtexts.h"

namespace {

/// A file that opens and cannot be read. Root reads whatever the permissions say; the start of a process's memory
/// nobody can read.
const QString kUnreadable = "/proc/self/mem"_s;

const QString kNotIntoItself = "Transfer : Cartella non copiata in se stessa : \"%1\""_s;

} // namespace

/// What can go wrong with files and with where a drop leads: the program stays usable, the drop ends, and no source is
/// ever lost.
class TestTransferFaults : public QObject
{
    Q_OBJECT

private slots:
    void unreadableFileIsCountedAndSkipped() {
        SKIP_ON_WINDOWS("No file that opens and cannot be read here");
        BoxAnswerer boxes;
        boxes.answer(Titles::kNotAllCopied, Buttons::kOk);
        OpenForPlayer open;
        open.drop({kUnreadable, open.pc.addFile("a.mid"_s)});
        QVERIFY(open.recorder.labels().contains("Copia di 2 file su Corvin4 in corso ..."_s));
        QCOMPARE(open.recorder.count("increase"_s), 2);
        QCOMPARE(open.player.files(), words("a.mid"));
        QVERIFY(open.recorder.log().contains(QtDebugMsg, "!QFile::copy - src : \"/proc/self/mem\""_s));
    }

    void unreadableSourceKeepsTheFileItWouldOverwrite() {
        SKIP_ON_WINDOWS("No file that opens and cannot be read here");
        OpenForPlayer open(words("mem"));
        BoxAnswerer answerer;
        answerer.answer(Titles::kTransferExists, Buttons::kSi);
        answerer.answer(Titles::kNotAllCopied, Buttons::kOk);
        open.drop({kUnreadable});
        QCOMPARE(open.player.content("mem"_s), QByteArray("player"));
        QCOMPARE(open.player.files(), words("mem"));
    }

    void pipeDoesNotStopTheDrop() {
        SKIP_ON_WINDOWS("Pipes are no files here");
        OpenForPlayer open;
        QVERIFY(runProgram("mkfifo"_s, {open.pc.path("pipe"_s)}));
        BoxAnswerer boxes;
        boxes.answer(Titles::kNotAllCopied, Buttons::kOk);
        open.dropNew(words("a.mid"), words("pipe a.mid"));
        QCOMPARE(open.player.files(), words("a.mid"));
    }

    void droppedOntoItselfItStays_data() {
        columns<QString, QString>("own", "complaint");
        row("file", "a.mid"_s, "Transfer : File non copiato su se stesso : \"%1\""_s);
        row("folder", "album"_s, kNotIntoItself);
    }

    void droppedOntoItselfItStays() {
        QFETCH(QString, own);
        QFETCH(QString, complaint);
        OpenForPlayer open(words("a.mid album/a.mid"));
        open.drop({open.player.path(own)});
        QCOMPARE(contentBelow(open.player.root()).values(), (QByteArrayList{"player", "player"}));
        QCOMPARE(open.player.files(), words("a.mid album/a.mid"));
        QVERIFY(open.hasLogged(complaint.arg(open.player.path(own))));
        QVERIFY(open.hasTold(kEnd));
    }

    void folderDroppedIntoItsOwnSubFolderIsNotCopied() {
        OpenForPlayer open(words("album/a.mid album/sub/"));
        open.enter("album"_s);
        open.dropAt(open.overRow("sub"_s), {open.player.path("album"_s)});
        QCOMPARE(open.page.currentFolder, open.player.path("album/sub"_s));
        QCOMPARE(entriesBelow(open.player.root()), words("album album/a.mid album/sub"));
    }

    void rootDroppedOntoThePlayerIsNotCopied() {
        OpenForPlayer open(words("a.mid"));
        open.page.copyFolder(open.player.root(), open.player.path("copy"_s));
        open.drop({open.player.root()});
        QCOMPARE(open.player.files(), words("a.mid"));
    }

    void linksNeverLeadInACircle_data() {
        columns<QString, QString, QStringList, QStringList>("link", "target", "dropped", "arrived");
        const QStringList album = words("album");
        const QStringList alone = words("a.mid album album/deep album/deep/b.mid");
        row("to its own folder", "album/deep/link"_s, "album/deep"_s, album, alone);
        row("to the dropped folder", "album/deep/link"_s, "album"_s, album, alone);
        row("to a folder around the dropped one", "album/deep/link"_s, QString(), album, alone);
        row("to the player", "album/link"_s, "player"_s, album, alone);
        row("to itself", "album/link"_s, "album/link"_s, words("album album/link"), alone);
        row("dropped link to a folder is copied", "link"_s, "album/deep"_s, words("link"),
            words("a.mid link link/b.mid"));
    }

    void linksNeverLeadInACircle() {
        SKIP_ON_WINDOWS("links are files of another kind here");
        QFETCH(QString, link);
        QFETCH(QString, target);
        QFETCH(QStringList, dropped);
        QFETCH(QStringList, arrived);
        OpenForPlayer open(words("a.mid"));
        open.pc.addFolder("album/deep"_s);
        QVERIFY(QFile::link(target == "player"_s ? open.player.root() : open.pc.path(target), open.pc.path(link)));
        BoxAnswerer boxes;
        if (link == target)
            boxes.answer(Titles::kNotAllCopied, Buttons::kOk);
        open.dropNew(words("album/deep/b.mid beside.mid"), dropped);
        QCOMPARE(entriesBelow(open.player.root()), arrived);
        QCOMPARE(open.hasLogged(kNotIntoItself.arg(open.pc.path(link))), dropped == words("album"));
        QVERIFY(open.hasTold(kEnd));
    }

    void dropWithoutAPlayerWritesNowhere() {
        const QString name = "corvin4-test-%1.mid"_s.arg(QCoreApplication::applicationPid());
        const SimulatedPlayer player;
        BoxAnswerer boxes;
        boxes.answer(Titles::kNotAllCopied, Buttons::kOk);
        OpenTransfer open{QString()};
        open.dropNew({name});
        QVERIFY(!QFileInfo::exists(QLatin1Char('/') + name));
        QVERIFY(open.hasTold(kEnd));
    }

    void vanishedCurrentFolderIsSurvived() {
        OpenForPlayer open(words("album/a.mid"));
        open.enter("album"_s);
        if (!QDir(open.player.path("album"_s)).removeRecursively())
            QSKIP("A folder that a window shows cannot be removed here");
        BoxAnswerer boxes;
        boxes.answer(Titles::kNotAllCopied, Buttons::kOk);
        open.dropNew(words("b.mid"));
        QCOMPARE(open.notCopied(), 1);
        QVERIFY(open.hasTold(kEnd));
        boxes.answer(Titles::kNotAllCopied, Buttons::kOk);
        open.dropNew(words("folder/b.mid"), words("folder/b.mid folder"));
        QVERIFY(open.player.exists("album/folder/b.mid"_s));
    }
};

PAGE_TEST_MAIN(TestTransferFaults)
#include "tst_transferfaults.moc"
