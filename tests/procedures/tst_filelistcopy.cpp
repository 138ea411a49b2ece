#include "device/player.h"
#include "procedures/filelistcopy.h"
#include "support/boxtexts.h"
#include "support/exfatvolume.h"
#include "support/files.h"
#include "support/jobrecorder.h"
#include "support/simulatedplayer.h"

namespace {

/// Does something when the bar has come to a value.
class AtCount : public JobRecorder
{
public:
    int count = 0;
    std::function<void()> action;
    void setBarValue(int value) override {
        if (count > 0 && value == count)
            action();
    }
};

} // namespace

/// The copy of a list of files, without a window.
class TestFileListCopy : public QObject
{
    Q_OBJECT

private slots:
    void copyEndsAtOnceWhenItsPlayerIsGone_data() {
        columns<QString>("when");
        row("between two files", "count"_s);
        row("before a folder is made", "folder"_s);
        row("while a question is open", "question"_s);
    }
    void copyEndsAtOnceWhenItsPlayerIsGone() {
        QFETCH(QString, when);
        SimulatedPlayer player;
        PcFolder pc;
        QStringList files;
        for (int i = 0; i < 6; ++i)
            files.append(pc.addFile((when == "folder"_s ? "from/%1/a.mid"_s : "from/%1.mid"_s).arg(i)));
        AtCount view;
        view.action = [] { SimulatedPlayer::disconnect(); };
        view.count = when == "question"_s ? 0 : 3;
        if (when == "question"_s)
            player.addFile("3.mid"_s, "on the player");
        view.answers = {{Titles::kCopyExists, JobAnswer::YesToAll}};
        view.then = [&view](const QString &line) {
            if (line.startsWith("ask"_s))
                view.action();
        };
        FileListCopy copy(view, files, player.root(), pc.path("from/"_s), Player(player.root()));
        QVERIFY(copy.run().failedAt(kPlayerGone));
        QVERIFY(view.of("tell"_s).isEmpty());
        QCOMPARE(view.of("ask"_s).size(), when == "question"_s ? 1 : 0);
        player.connect();
        const QStringList left = player.files();
        QCOMPARE(left.size(), when == "question"_s ? 4 : 3);
        QCOMPARE(player.folders().size(), when == "folder"_s ? 3 : 0);
        if (when == "question"_s)
            QCOMPARE(player.content("3.mid"_s), QByteArray("on the player"));
    }

    void fileThatCouldNeitherBeReplacedNorPutBackIsNamed() {
        QString why;
        if (!ExFatVolume::isPossible(&why))
            QSKIP(qPrintable(why));
        constexpr int kSongBytes = 3 * 1024 * 1024;
        const ExFatVolume volume(8, "FULL"_s);
        QVERIFY2(volume.isMounted(), qPrintable(volume.error()));
        const auto fillUp = [&volume](const QString &name) {
            putFile(volume.path(name), QByteArray(int(QStorageInfo(volume.root()).bytesAvailable()), 'f'));
        };
        const QString song = volume.path("song.mid"_s);
        putFile(song, QByteArray(kSongBytes, 'o'));
        fillUp("filler.mid"_s);
        PcFolder pc;
        const QString source = pc.addFile("from/song.mid"_s, QByteArray(kSongBytes, 'n'));
        // Somebody else takes the room as soon as it is free.
        QTimer other;
        connect(&other, &QTimer::timeout, this, [&] {
            if (QFileInfo(song).size() == kSongBytes)
                return;
            other.stop();
            fillUp("other.mid"_s);
        });
        other.start(0);
        JobRecorder view;
        view.answers = {{Titles::kCopyExists, JobAnswer::Yes}, {Titles::kCopyFailed, JobAnswer::No}};
        QVERIFY(!FileListCopy(view, {source}, volume.root(), pc.path("from/"_s), Player()).run().isDone());
        const QStringList told = view.of("tell"_s);
        QCOMPARE(told.size(), 1);
        QVERIFY2(told.first().startsWith(Titles::kCopyFailed + "|"_s + song + "|La versione precedente"_s),
                 qPrintable(told.first()));
        const QString kept = QDir::fromNativeSeparators(told.first().section(QLatin1Char('\n'), -1));
        QCOMPARE(contentOf(kept), QByteArray(kSongBytes, 'o'));
    }
};

QTEST_GUILESS_MAIN(TestFileListCopy)
#include "tst_filelistcopy.moc"
