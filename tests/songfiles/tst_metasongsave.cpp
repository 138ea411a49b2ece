#include "songtest.h"
#include "support/limits.h"
#include "support/logcapture.h"

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
#endif

using namespace SongFactory;

const QString kUnknown = "[MetaSong::saveToFile] UNKNOWN format (or data corrupted) in memory, aborting"_s;
const QString kProtected =
    "[MetaSong::saveToFile] Impossible to write to file. Maybe it's write protected? Aborting!"_s;
const QString kNoSeek = "[MetaSong::saveToFile] Impossible to seek file."_s;

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

/// Writing a song back to the disk.
class TestMetaSongSave : public QObject
{
    Q_OBJECT

private slots:
    void songIsNotSavedAndNothingIsChanged() {
        SongOnDisk nothing("a.mid"_s, midi(fullInfo()));
        nothing.song = MetaSong();
        same("a song that was not loaded", linesAt(nothing, "a.mid"_s), QStringList(kUnknown));
        for (const int version : {3, 4, 5}) {
            SongOnDisk longer("a.mfx"_s, mfx(version, fullInfo()));
            SongInfo accented = fullInfo();
            accented.title = "Perché"_s;
            longer.song.setSongInfo(accented, true);
            same(qPrintable("MF%1 whose header has another size"_s.arg(version)), linesAt(longer, "a.mfx"_s),
                 QStringList(kUnknown));
        }
        SongOnDisk mid("a.mid"_s, midi(SongInfo()));
        mid.folder.addFolder("folder"_s);
        same("MIDI over a folder", linesAt(mid, "folder"_s), QStringList(kProtected));
        same("MIDI in no folder", linesAt(mid, "none/b.mid"_s), QStringList(kProtected));
        SongOnDisk mf5("a.mf5"_s, mfx(5, SongInfo()));
        mf5.folder.addFolder("folder"_s);
        same("MFx over a folder", linesAt(mf5, "folder"_s), QStringList(kProtected));
        same("MFx in no folder", linesAt(mf5, "none/b.mf5"_s), QStringList(kProtected));
        SongOnDisk mp3("a.mp3"_s, SongFactory::mp3(3, fullInfo()));
        same("missing MP3", linesAt(mp3, "b.mp3"_s),
             QStringList("[MetaSong::saveToFile] Impossible to read from file."_s));
        for (const QString &name : words("a.tmp a.TMP")) {
            SongOnDisk temporary("a.mp3"_s, SongFactory::mp3(3, fullInfo()));
            temporary.folder.addFile(name, temporary.content());
            same("MP3 that bears the temporary name", linesAt(temporary, name), QStringList(kProtected));
        }
        mp3.folder.addFile("a.mp3"_s, "short");
        same("MP3 shorter than its tag", linesAt(mp3, "a.mp3"_s), QStringList(kNoSeek));
    }

    void mfxStreamThatCouldNotBeExpandedAgainIsNotSaved() {
        const QByteArray stream = midi(fullInfo()).leftJustified(500000, 'x');
        SongOnDisk file("a.mf3"_s, mfxHeader(3, fullInfo(), 0, 0) + compressed(stream));
        QVERIFY(file.save());
        QCOMPARE(streamOf(file.content()), stream);
        QVERIFY(file.song.addMarker("one too many"_s, 1) > 0);
        QCOMPARE(linesAt(file, "a.mf3"_s), QStringList(kUnknown));
    }

    void midiIsWrittenOverTheFile() {
        const QByteArray bytes = midi(fullInfo(), 1);
        SongOnDisk file("a.mid"_s, bytes);
        file.folder.addFile("b.mid"_s, QByteArray(5000, 'x'));
        const LogCapture log;
        QVERIFY(file.song.saveToFile(file.folder.path("b.mid"_s)));
        QCOMPARE(log.texts(), QStringList("[MetaSong::saveToFile] MIDI"_s));
        QCOMPARE(file.folder.content("b.mid"_s), bytes);
        QVERIFY(file.song.saveToFile(file.folder.path("new.mid"_s)));
        QCOMPARE(file.folder.content("new.mid"_s), bytes);
        QCOMPARE(entriesBelow(file.folder.path()), words("a.mid b.mid new.mid"));
    }

    void mfxIsWrittenWithItsSizes_data() {
        columns<int>("version");
        for (const int version : {3, 4, 5})
            QTest::addRow("MF%d", version) << version;
    }
    void mfxIsWrittenWithItsSizes() {
        QFETCH(int, version);
        const int headerSize = version == 5 ? 1024 : 512;
        const QByteArray before = mfx(version, fullInfo());
        SongOnDisk file("a.mfx"_s, before);
        QVERIFY(file.save());
        QCOMPARE(file.content(), before);
        file.song.addMarker("Fine"_s, 9);
        LogCapture log;
        QVERIFY(file.save());
        QCOMPARE(log.texts().size(), 2);
        QCOMPARE(log.texts().at(0), "[MetaSong::saveToFile] MFx"_s);
        QVERIFY(log.texts().at(1).startsWith("Compress: "_s)); // the codec's own line
        const QByteArray saved = file.content();
        QCOMPARE(streamOf(saved).size(), streamOf(before).size() + 11);
        // Everything else of the header, known or not, is as it was.
        QCOMPARE(saved.left(headerSize), before.left(4) + littleEndian(unsigned(saved.size())) + before.mid(8, 4) +
                                             littleEndian(unsigned(streamOf(saved).size())) +
                                             before.mid(16, headerSize - 16));
    }

    void mf4SongGetsItsThreeBytesBack() {
        const QByteArray before = streamOf(mfx(4, fullInfo()));
        SongOnDisk file("a.mf4"_s, mfx(4, fullInfo()));
        file.song.addMarker("Fine"_s, 9);
        QVERIFY(file.save());
        const int data = before.indexOf("MTrk") + 8;
        const int trackSize = before.size() - data - 3;
        const QByteArray marker = "00FF4B07060009"_hex + "Fine";
        // The length in the track's head never counts the three bytes, only the marker.
        QCOMPARE(before.mid(data - 4, 4), bigEndian(unsigned(trackSize)));
        QCOMPARE(streamOf(file.content()).mid(data - 4),
                 bigEndian(unsigned(trackSize + marker.size())) + "FF00FF"_hex + marker + before.mid(data + 3));
    }

    void writeProtectedFileIsMadeWritable_data() {
        columns<QString, QByteArray>("name", "bytes");
        row("MIDI", "a.mid"_s, midi(SongInfo()));
        row("MFx", "a.mf3"_s, mfx(3, SongInfo()));
        row("MP3", "a.mp3"_s, mp3(3, SongInfo()));
    }
    void writeProtectedFileIsMadeWritable() {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        SongOnDisk file(name, bytes);
        QVERIFY(QFile::setPermissions(file.path, QFileDevice::ReadOwner | QFileDevice::ReadGroup));
        QVERIFY(file.save());
        QCOMPARE(file.content(), bytes);
        const QFileDevice::Permissions now = QFile::permissions(file.path);
        QVERIFY(now & QFileDevice::WriteOwner);
        QVERIFY(now & QFileDevice::ReadGroup);
#ifdef Q_OS_UNIX
        QVERIFY(!(now & (QFileDevice::ReadOther | QFileDevice::WriteGroup | QFileDevice::ExeOwner)));
#endif
    }

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

private:
    /// The log lines with which a song is not saved under a name in its folder, which stays as it was.
    static QStringList linesAt(SongOnDisk &file, const QString &name) {
        const QString folder = file.folder.path();
        const QStringList entries = entriesBelow(folder);
        const QMap<QString, QByteArray> content = contentBelow(folder);
        const LogCapture log;
        if (file.song.saveToFile(file.folder.path(name)))
            failTest(name + " should not be saved"_s);
        if (entriesBelow(folder) != entries || contentBelow(folder) != content)
            failTest("the folder has changed"_s);
        if (!log.lines().isEmpty() && log.lines().constFirst().type != QtDebugMsg)
            failTest("no debug message"_s);
        return log.texts();
    }
};

QTEST_GUILESS_MAIN(TestMetaSongSave)
#include "tst_metasongsave.moc"
