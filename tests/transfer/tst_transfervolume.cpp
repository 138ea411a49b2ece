#include "opentransfer.h"
#include "support/boxanswerer.h"
#include "support/boxtexts.h"
#include "support/mountedplayer.h"

namespace {

constexpr int kMegabyte = 1024 * 1024;

QString song(int number) {
    return "album/song %1.mid"_s.arg(number, 3, 10, QLatin1Char('0'));
}

/// The page, open for a player on a real volume.
class OnVolume : public MountedPlayer
{
public:
    explicit OnVolume(int megabytes, const QStringList &content = {}) : MountedPlayer(megabytes) {
        for (const QString &name : content)
            putFile(path(name), "player");
        open = std::make_unique<OpenTransfer>(root());
    }
    QByteArray content(const QString &name) const { return contentOf(path(name)); }
    /// Drops a folder of songs of @p size bytes, each of another byte.
    void dropSongs(int count, int size = 1000) {
        for (int i = 0; i < count; ++i)
            open->pc.addFile(song(i), QByteArray(size, char(i)));
        open->drop({open->pc.path("album"_s)});
    }
    /// Leaves about @p bytes free.
    void fillUpTo(qint64 bytes) const {
        const qint64 room = QStorageInfo(root()).bytesAvailable();
        QVERIFY(room > bytes);
        putFile(path("filling.bin"_s), QByteArray(int(room - bytes), 'f'));
    }
    /// Closes the page and plugs the volume in again, after it was pulled or unmounted.
    bool mountAgain() {
        open.reset();
        return volume->mount();
    }

    std::unique_ptr<OpenTransfer> open;
};

} // namespace

/// First line of a test on a volume of its own.
#define NEED_VOLUME(...)                                                                                               \
    QString why;                                                                                                       \
    if (!ExFatVolume::isPossible(&why))                                                                                \
        QSKIP(qPrintable("no exFAT volume can be mounted: "_s + why));                                                 \
    OnVolume player(__VA_ARGS__);                                                                                      \
    QVERIFY2(player.isMounted(), qPrintable(player.volume->error()))

/// Drops on a real volume, which can be full, be pulled and refuse names: the program stays usable, the drop ends, and
/// no source is ever lost.
class TestTransferVolume : public QObject
{
    Q_OBJECT

private slots:
    void songsReachARealVolume() {
        NEED_VOLUME(32);
        player.dropSongs(20);
        QVERIFY(player.open->page.isFinishPending());
        // The label said so: all is on the medium, and the volume can go at once.
        player.open.reset();
        QVERIFY(player.volume->unmount());
        QVERIFY(player.mountAgain());
        for (int i = 0; i < 20; ++i)
            QCOMPARE(player.content(song(i)), QByteArray(1000, char(i)));
    }

    void playerPulledInTheMiddle() {
        NEED_VOLUME(32);
        BoxAnswerer boxes;
        boxes.answer(Titles::kNotAllCopied, Buttons::kOk);
        int seen = 0;
        player.open->atEachStep([&] {
            if (++seen == 10)
                player.volume->pull();
        });
        player.dropSongs(30);
        QCOMPARE(seen, 30);
        QVERIFY(player.open->hasTold(kEnd));
        QVERIFY(!player.open->page.busy);
        // Where the volume was is a folder of the PC: nothing was written there, and no source is gone.
        QCOMPARE(entriesBelow(player.root()), QStringList());
        QCOMPARE(player.open->pc.files().size(), 30);
        QCOMPARE(boxes.seen().first().text, Texts::kNotAllCopied.arg(9).arg(30));
        player.open->page.on_pushBtnBack_clicked();
        QVERIFY(player.mountAgain());
        QCOMPARE(player.files().size(), 9);
    }

    void playerPulledBeforeTheDropTakesTheNextOnceItIsBack() {
        NEED_VOLUME(32);
        BoxAnswerer boxes;
        boxes.answer(Titles::kNotAllCopied, Buttons::kOk);
        QVERIFY(player.volume->pull());
        player.open->dropNew(words("album/a.mid b.mid"), words("album b.mid"));
        QCOMPARE(player.open->notCopied(), 2);
        QCOMPARE(entriesBelow(player.root()), QStringList());
        // Another volume takes the number that the player had.
        const ExFatVolume other(16, "OTHER"_s);
        QVERIFY(player.volume->mount());
        player.dropSongs(2);
        QCOMPARE(player.files(), (QStringList{"album/a.mid"_s, song(0), song(1)}));
    }

    void playerPulledDuringTheQuestion() {
        NEED_VOLUME(32, words("a.mid"));
        BoxAnswerer answerer;
        answerer.answer(Titles::kTransferExists, Buttons::kSi);
        answerer.whenShown([&](QMessageBox *) { player.volume->pull(); });
        answerer.answer(Titles::kNotAllCopied, Buttons::kOk);
        player.open->dropNew(words("a.mid"));
        QVERIFY(player.open->hasTold(kEnd));
        QCOMPARE(entriesBelow(player.root()), QStringList());
        QVERIFY(player.mountAgain());
        QCOMPARE(player.content("a.mid"_s), QByteArray("player"));
    }

    void playerPulledDuringADeletion() {
        NEED_VOLUME(32, words("a.mid"));
        player.open->select(words("a.mid"));
        BoxAnswerer answerer;
        answerer.answer(Titles::kDelete, Buttons::kYes);
        answerer.whenShown([&](QMessageBox *) {
            player.volume->pull();
            putFile(player.path("a.mid"_s), "pc"); // what now bears the name is the PC's
        });
        player.open->page.on_actionDeleteSelectedItems_triggered();
        QVERIFY(player.open->hasTold(kEnd));
        QCOMPARE(player.content("a.mid"_s), QByteArray("pc"));
        player.open.reset();
        QVERIFY(QFile::remove(player.path("a.mid"_s)));
    }

    void fullVolumeHasNoHalfFile() {
        NEED_VOLUME(16);
        BoxAnswerer boxes;
        boxes.answer(Titles::kNotAllCopied, Buttons::kOk);
        player.dropSongs(12, 2 * kMegabyte);
        QCOMPARE(player.open->recorder.count("increase"_s), 12);
        QVERIFY(player.open->hasTold(kEnd));
        const QStringList arrived = player.files();
        QVERIFY(!arrived.isEmpty() && arrived.size() < 12);
        for (const QString &name : arrived)
            QCOMPARE(player.content(name), player.open->pc.content(name));
        QCOMPARE(player.open->notCopied(), 12 - arrived.size());
        QCOMPARE(boxes.seen().first().text, Texts::kNotAllCopied.arg(arrived.size()).arg(12));
    }

    void fullVolumeKeepsTheOldFileOrHasTheWholeNewOne_data() {
        columns<int, int, bool>("oldSize", "newSize", "fits");
        row("old file is kept", kMegabyte, 8 * kMegabyte, false);
        row("new file fits only in place of the old one", 6 * kMegabyte, 6 * kMegabyte, true);
    }

    void fullVolumeKeepsTheOldFileOrHasTheWholeNewOne() {
        QFETCH(int, oldSize);
        QFETCH(int, newSize);
        QFETCH(bool, fits);
        NEED_VOLUME(16);
        const QByteArray old(oldSize, 'o');
        const QByteArray fresh(newSize, 'n');
        putFile(player.path("a.mid"_s), old);
        player.fillUpTo(qint64(2) * kMegabyte);
        BoxAnswerer answerer;
        answerer.answer(Titles::kTransferExists, Buttons::kSi);
        if (!fits)
            answerer.answer(Titles::kNotAllCopied, Buttons::kOk);
        player.open->drop({player.open->pc.addFile("a.mid"_s, fresh)});
        QVERIFY(player.open->hasTold(kEnd));
        QCOMPARE(player.content("a.mid"_s), fits ? fresh : old);
        QCOMPARE(player.files(), words("a.mid filling.bin"));
    }

    void oldFileThatCannotComeBackIsNamed() {
        NEED_VOLUME(16);
        const QByteArray old(6 * kMegabyte, 'o');
        putFile(player.path("a.mid"_s), old);
        player.fillUpTo(0);
        // Somebody else takes the room as soon as it is free.
        QTimer other;
        connect(&other, &QTimer::timeout, this, [&] {
            if (QFileInfo(player.path("a.mid"_s)).size() == old.size())
                return;
            other.stop();
            putFile(player.path("other.mid"_s), QByteArray(int(QStorageInfo(player.root()).bytesAvailable()), 'f'));
        });
        other.start(0);
        BoxAnswerer answerer;
        answerer.answer(Titles::kTransferExists, Buttons::kSi);
        answerer.answer(Titles::kNotAllCopied, Buttons::kOk);
        QString more;
        answerer.whenShown([&more](QMessageBox *box) { more = box->informativeText(); });
        player.open->drop({player.open->pc.addFile("a.mid"_s, QByteArray(6 * kMegabyte, 'n'))});
        QVERIFY2(more.startsWith("La versione precedente è conservata sul PC:\n"_s), qPrintable(more));
        QCOMPARE(contentOf(QDir::fromNativeSeparators(more.section(QLatin1Char('\n'), -1))), old);
    }

    void namesThatTheVolumeRefusesAreSkipped_data() {
        columns<QString>("name");
        row("colon", "side a: one.mid"_s);
        row("question mark", "why?.mid"_s);
        row("asterisk", "*star*.mid"_s);
        row("line end", "two\nlines.mid"_s);
    }

    void namesThatTheVolumeRefusesAreSkipped() {
        QFETCH(QString, name);
        NEED_VOLUME(16);
        BoxAnswerer boxes;
        boxes.answer(Titles::kNotAllCopied, Buttons::kOk);
        const QString refused = "album/"_s + name;
        player.open->dropNew({refused, "album/good.mid"_s, refused + " folder/song.mid"_s}, words("album"));
        QCOMPARE(player.files(), words("album/good.mid"));
        QCOMPARE(player.open->recorder.count("increase"_s), 3);
        QCOMPARE(player.open->notCopied(), 2);
        QVERIFY(player.open->hasTold(kEnd));
        QVERIFY(player.open->pc.files().contains(refused));
    }

    void otherCaseOfANameIsTheSameFileOnTheVolume() {
        NEED_VOLUME(16, words("Song.mid"));
        BoxAnswerer answerer;
        answerer.answerAlways(Titles::kTransferExists, Buttons::kSiTutti);
        player.open->drop({player.path("SONG.MID"_s)}); // its own file is not lost
        QCOMPARE(player.content("song.mid"_s), QByteArray("player"));
        QCOMPARE(player.files().size(), 1);
        answerer.answer(Titles::kTransferExists, Buttons::kSi);
        player.open->dropNew(words("song.mid"));
        QCOMPARE(player.content("song.mid"_s), QByteArray("pc"));
        QCOMPARE(player.files().size(), 1);
    }
};

PAGE_TEST_MAIN(TestTransferVolume)
#include "tst_transfervolume.moc"
