#include "savelines.h"
#include "songtest.h"
#include "support/limits.h"
#include "support/logcapture.h"

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
#endif

using namespace SongFactory;

/// A folder that is the current one while this lives: a relative path into it has no dots but a test's own. In it is a
/// folder "dir.d", so that the temporary file of the song "dir.d/songmp3" is "dir.tmp".
class CurrentFolder
{
public:
    CurrentFolder() { QDir::setCurrent(m_folder.path()); }
    ~CurrentFolder() {
        for (const QString &folder : {"."_s, "dir.d"_s})
            QFile::setPermissions(folder, QFileDevice::Permissions(0x7777)); // so that they can be deleted
        QDir::setCurrent(m_before);
    }
    CurrentFolder(const CurrentFolder &) = delete;
    CurrentFolder &operator=(const CurrentFolder &) = delete;

private:
    PcFolder m_folder;
    const QString m_before = QDir::currentPath();
    const QString m_dotted = m_folder.addFolder("dir.d"_s);
};

/// Writing an MP3 back to the disk: its new tag and its audio go into a temporary file, which takes its place.
class TestMetaSongSaveMp3 : public QObject
{
    Q_OBJECT

private slots:
    void savingAnUnchangedMp3ChangesNothing_data() {
        columns<QByteArray>("bytes");
        const QByteArray audio = silentMp3Frames(3);
        row("2.2", mp3(2, fullInfo()));
        row("2.3", mp3(3, fullInfo(), 1));
        row("2.4", mp3(4, fullInfo(), 3));
        row("padding", id3v2Tag(3, fullInfo(), 0, 2000) + audio);
        row("tag alone", id3v2Tag(3, fullInfo()));
        row("tag that ends with the file too early", id3v2Tag(3, fullInfo(), 0, 100).chopped(7));
        row("empty tag", id3v2TagAround(3, QByteArray()) + audio);
        row("no size", "ID3\x03\0\0\xFF\xFF\xFF\xFF"_b + audio);
    }
    void savingAnUnchangedMp3ChangesNothing() {
        QFETCH(QByteArray, bytes);
        SongOnDisk file("a.mp3"_s, bytes);
        const LogCapture log;
        QVERIFY(file.save());
        QCOMPARE(file.content(), bytes);
        QCOMPARE(entriesBelow(file.folder.path()), words("a.mp3"));
        QVERIFY(log.lines().isEmpty());
    }

    void mp3WithoutTagGetsOneBeforeItsFirstByte() {
        SongOnDisk file("a.mp3"_s, silentMp3Frames(3));
        QVERIFY(file.save());
        QCOMPARE(file.content(), "ID3\x03\0\0\0\0\0\0"_b + silentMp3Frames(3));
    }

    void mp3KeepsEveryByteOfItsAudio_data() {
        columns<int, QByteArray>("audioBytes", "tag");
        for (const int size : {0, 1, 99999, 100000, 100001, 200000, 1200000}) {
            QTest::addRow("%d, tag", size) << size << id3v2Tag(3, fullInfo());
            if (size > 10)
                QTest::addRow("%d, no tag", size) << size << QByteArray();
        }
    }
    void mp3KeepsEveryByteOfItsAudio() {
        QFETCH(int, audioBytes);
        QFETCH(QByteArray, tag);
        QByteArray audio = silentMp3Frames(audioBytes / 417 + 1).left(audioBytes);
        for (int i = 500; i < audio.size(); i += 251)
            audio[i] = char(i / 251);
        SongOnDisk file("a.mp3"_s, tag + audio);
        SongInfo change = fullInfo();
        change.title = "A much longer title than the one it had before"_s;
        file.song.setSongInfo(change, true);
        QVERIFY(file.save());
        const QByteArray saved = file.content();
        QVERIFY(saved.endsWith(audio));
        Id3Tag savedTag;
        QVERIFY(savedTag.load(saved));
        QCOMPARE(savedTag.audioOffset(), qint64(saved.size() - audio.size()));
        QCOMPARE(savedTag.title(), change.title);
        QCOMPARE(entriesBelow(file.folder.path()), words("a.mp3"));
    }

    void songSavedTwiceKeepsItsAudio() {
        const QByteArray audio = silentMp3Frames(20);
        SongInfo info = fullInfo();
        info.title = QString(100, QLatin1Char('t'));
        SongOnDisk file("a.mp3"_s, id3v2Tag(3, info) + audio);
        info.title = "short"_s;
        file.song.setSongInfo(info, true);
        QVERIFY(file.save());
        const QByteArray once = file.content();
        QVERIFY(file.save());
        QCOMPARE(file.content(), once);
        QVERIFY(once.endsWith(audio));
    }

    void temporaryFileThatCannotBeMadeStopsTheSaving_data() {
        columns<QString, QString>("name", "temporary");
        row("its ending is replaced", "a.b.mp3"_s, "a.b.tmp"_s);
        row("no dot in the whole path", "songmp3"_s, "songmp3.tmp"_s);
        row("the last dot stands in a folder's name", "dir.d/songmp3"_s, "dir.tmp"_s);
    }
    void temporaryFileThatCannotBeMadeStopsTheSaving() {
        QFETCH(QString, name);
        QFETCH(QString, temporary);
        const CurrentFolder folder;
        MetaSong song;
        QVERIFY(song.importFile(putFile(name, mp3(3, fullInfo()))));
        QVERIFY(QDir().mkdir(temporary));
        const LogCapture log;
        QVERIFY(!song.saveToFile(name));
        QCOMPARE(log.texts(), QStringList(kProtected));
        QCOMPARE(contentOf(name), mp3(3, fullInfo()));
        QVERIFY(QFileInfo(temporary).isDir());
    }

    void fullDiskStopsTheSavingAndLeavesTheSong_data() {
        columns<int, QString>("room", "message");
        const int tag = id3v2Tag(3, fullInfo()).size();
        const int whole = mp3(3, fullInfo(), 0, 600).size();
        for (const int room : {0, 5, tag - 1})
            QTest::addRow("%d bytes, in the tag", room)
                << room << "[MetaSong::saveToFile] Impossible to write to file."_s;
        for (const int room : {tag, tag + 1, tag + 100000, tag + 150000, whole - 1})
            QTest::addRow("%d bytes, in the audio", room)
                << room << "[MetaSong::saveToFile] Impossible to copy part of file."_s;
        row("just room enough", whole, QString());
    }
    void fullDiskStopsTheSavingAndLeavesTheSong() {
#ifdef Q_OS_UNIX
        QFETCH(int, room);
        QFETCH(QString, message);
        SongOnDisk file("a.mp3"_s, mp3(3, fullInfo(), 0, 600));
        const LogCapture log;
        {
            const FullDisk full(static_cast<rlim_t>(room));
            QCOMPARE(file.save(), message.isEmpty());
        }
        QCOMPARE(log.texts().join(QLatin1Char('\n')), message);
        QCOMPARE(entriesBelow(file.folder.path()), words("a.mp3"));
        QCOMPARE(file.content(), mp3(3, fullInfo(), 0, 600));
#else
        QSKIP("limits the size of files as Unix does");
#endif
    }

    void pipeCannotBeSought() {
#ifdef Q_OS_UNIX
        SongOnDisk file("a.mp3"_s, mp3(3, fullInfo()));
        const QString path = file.folder.path("pipe.mp3"_s);
        QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
        const int otherEnd = open(QFile::encodeName(path).constData(), O_RDWR | O_CLOEXEC);
        QVERIFY(otherEnd >= 0);
        const LogCapture log;
        const bool saved = file.song.saveToFile(path);
        close(otherEnd);
        QVERIFY(!saved);
        QCOMPARE(log.texts().last(), kNoSeek);
        QCOMPARE(entriesBelow(file.folder.path()), words("a.mp3 pipe.mp3"));
#else
        QSKIP("needs a named pipe");
#endif
    }

    void temporaryFileStaysWhenTheSongCannotBeReplaced_data() {
        columns<int, int, bool>("rightsOfTheParent", "rightsOfTheFolder", "deleted");
        // The temporary file is made where there is room for it; where the song is, nothing can be deleted.
        row("song that cannot be deleted", 0777, 0555, false);
        // The temporary file is there already, in a folder that gives no name away: it can be written, but not renamed.
        row("temporary file that cannot be renamed", 0555, 0777, true);
    }
    void temporaryFileStaysWhenTheSongCannotBeReplaced() {
#ifdef Q_OS_UNIX
        QFETCH(int, rightsOfTheParent);
        QFETCH(int, rightsOfTheFolder);
        QFETCH(bool, deleted);
        const CurrentFolder folder;
        MetaSong song;
        QVERIFY(song.importFile(putFile("dir.d/songmp3"_s, mp3(3, fullInfo()))));
        if (deleted)
            putFile("dir.tmp"_s, "left over");
        QVERIFY(chmod("dir.d/songmp3", 0644) == 0 && (!deleted || chmod("dir.tmp", 0666) == 0));
        QVERIFY(chmod("dir.d", mode_t(rightsOfTheFolder)) == 0 && chmod(".", mode_t(rightsOfTheParent)) == 0);
        const LogCapture log;
        {
            const NoRoot noRoot;
            QVERIFY(!song.saveToFile("dir.d/songmp3"_s));
        }
        QCOMPARE(QFile::exists("dir.d/songmp3"_s), !deleted);
        QCOMPARE(contentOf("dir.d/songmp3"_s), deleted ? QByteArray() : mp3(3, fullInfo()));
        QCOMPARE(contentOf("dir.tmp"_s), mp3(3, fullInfo()));
        QVERIFY(log.lines().isEmpty());
#else
        QSKIP("needs the rights of Unix");
#endif
    }
};

QTEST_GUILESS_MAIN(TestMetaSongSaveMp3)
#include "tst_metasongsavemp3.moc"
