#include "songfactory/songfactory.h"
#include "songfiles/lzhuff.h"
#include "songfiles/metasong.h"
#include "songtest.h"
#include "support/logcapture.h"

#include <QtTest>

#ifdef Q_OS_UNIX
#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

/// Writing a song back to the disk.
class TestMetaSongSave : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void songThatWasNotLoadedIsNotSaved();
    void mfxHeaderOfAnotherSizeIsNotSaved_data();
    void mfxHeaderOfAnotherSizeIsNotSaved();
    void mfxStreamThatCouldNotBeExpandedAgainIsNotSaved();
    void midiIsWrittenOverTheFile();
    void mfxIsWrittenWithItsSizes_data();
    void mfxIsWrittenWithItsSizes();
    void mf4SongGetsItsThreeBytesBack();
    void placeThatCannotBeWrittenIsRefused_data();
    void placeThatCannotBeWrittenIsRefused();
    void writeProtectedFileIsMadeWritable_data();
    void writeProtectedFileIsMadeWritable();
    void savingAnUnchangedMp3ChangesNothing_data();
    void savingAnUnchangedMp3ChangesNothing();
    void mp3WithoutTagGetsOneBeforeItsFirstByte();
    void mp3KeepsEveryByteOfItsAudio_data();
    void mp3KeepsEveryByteOfItsAudio();
    void missingMp3CannotBeRead();
    void temporaryFileThatCannotBeMadeStopsTheSaving_data();
    void temporaryFileThatCannotBeMadeStopsTheSaving();
    void songThatBearsTheTemporaryNameIsNotEmptied_data();
    void songThatBearsTheTemporaryNameIsNotEmptied();
    void fullDiskWhileTheTagIsWritten();
    void fullDiskWhileTheAudioIsCopied();
    void songShorterThanItsTagCannotBeSought();
    void pipeCannotBeSought();
    void songThatCannotBeDeletedLeavesTheTemporaryFile();
    void temporaryFileThatCannotBeRenamedStaysAndIsAFailure();

private:
    QString path(const QString &name) const { return m_dir->filePath(name); }
    bool load(MetaSong &song, const QString &name, const QByteArray &bytes) const
    {
        return SongTest::write(path(name), bytes) && song.importFile(path(name));
    }
    QStringList files() const
    {
        return QDir(m_dir->path()).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    }

    QScopedPointer<QTemporaryDir> m_dir;
};

namespace {

const QString kUnknown =
    QStringLiteral("[MetaSong::saveToFile] UNKNOWN format (or data corrupted) in memory, aborting");
const QString kProtected =
    QStringLiteral("[MetaSong::saveToFile] Impossible to write to file. Maybe it's write protected? Aborting!");

QByteArray expanded(const QByteArray &file, int headerSize)
{
    QByteArray stream;
    LzHuff codec;
    codec.expand(file.mid(headerSize), stream);
    return stream;
}

quint32 number(const QByteArray &bytes, int offset)
{
    quint32 value = 0;
    for (int i = 3; i >= 0; --i)
        value = (value << 8) | quint8(bytes.at(offset + i));
    return value;
}

#ifdef Q_OS_UNIX
/// No file can grow beyond a size while this lives: a disk that fills up.
class FullDisk
{
public:
    explicit FullDisk(rlim_t size) : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit now = {size, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &now);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    rlimit m_before = {};
    void (*m_handler)(int);
};

/// Root may delete everything; while this lives, root is nobody.
class NoRoot
{
public:
    NoRoot()
    {
        if (m_wasRoot && seteuid(kNobody) != 0)
            qFatal("cannot lay down root's rights");
    }
    ~NoRoot()
    {
        if (m_wasRoot && seteuid(0) != 0)
            qFatal("cannot take up root's rights again");
    }
    NoRoot(const NoRoot &) = delete;
    NoRoot &operator=(const NoRoot &) = delete;

private:
    static constexpr uid_t kNobody = 65534;
    const bool m_wasRoot = geteuid() == 0;
};
#endif

} // namespace

void TestMetaSongSave::init()
{
    m_dir.reset(new QTemporaryDir);
    QVERIFY(m_dir->isValid());
}

void TestMetaSongSave::songThatWasNotLoadedIsNotSaved()
{
    QVERIFY(SongTest::write(path(QStringLiteral("a.mid")), "precious"));
    const LogCapture log;
    QVERIFY(!MetaSong().saveToFile(path(QStringLiteral("a.mid"))));
    QCOMPARE(log.texts(), QStringList(kUnknown));
    QCOMPARE(log.lines().constFirst().type, QtDebugMsg);
    QCOMPARE(SongTest::read(path(QStringLiteral("a.mid"))), QByteArray("precious"));
}

void TestMetaSongSave::mfxHeaderOfAnotherSizeIsNotSaved_data()
{
    QTest::addColumn<int>("version");
    QTest::newRow("MF3") << 3;
    QTest::newRow("MF4") << 4;
    QTest::newRow("MF5") << 5;
}

void TestMetaSongSave::mfxHeaderOfAnotherSizeIsNotSaved()
{
    QFETCH(int, version);
    const QByteArray bytes = SongFactory::mfx(version, SongTest::fullInfo());
    MetaSong song;
    QVERIFY(load(song, QStringLiteral("a.mfx"), bytes));
    SongInfo info = SongTest::fullInfo();
    info.title = QStringLiteral("Perché");
    song.setSongInfo(info, true);
    const LogCapture log;
    QVERIFY(!song.saveToFile(path(QStringLiteral("a.mfx"))));
    QCOMPARE(log.texts(), QStringList(kUnknown));
    QCOMPARE(SongTest::read(path(QStringLiteral("a.mfx"))), bytes);
}

void TestMetaSongSave::mfxStreamThatCouldNotBeExpandedAgainIsNotSaved()
{
    QByteArray stream = SongFactory::midi(SongTest::fullInfo());
    stream.append(QByteArray(500000 - stream.size(), 'x'));
    QByteArray compressed;
    LzHuff codec;
    codec.compress(stream, compressed);
    const QByteArray bytes = SongFactory::mfxHeader(3, SongTest::fullInfo(), 0, 0) + compressed;
    MetaSong song;
    QVERIFY(load(song, QStringLiteral("a.mf3"), bytes));
    QVERIFY(song.saveToFile(path(QStringLiteral("a.mf3"))));
    QCOMPARE(expanded(SongTest::read(path(QStringLiteral("a.mf3"))), 512), stream);
    const QByteArray saved = SongTest::read(path(QStringLiteral("a.mf3")));
    QVERIFY(song.addMarker(QStringLiteral("one too many"), 1) > 0);
    const LogCapture log;
    QVERIFY(!song.saveToFile(path(QStringLiteral("a.mf3"))));
    QCOMPARE(log.texts(), QStringList(kUnknown));
    QCOMPARE(SongTest::read(path(QStringLiteral("a.mf3"))), saved);
}

void TestMetaSongSave::midiIsWrittenOverTheFile()
{
    const QByteArray bytes = SongFactory::midi(SongTest::fullInfo(), 1);
    MetaSong song;
    QVERIFY(load(song, QStringLiteral("a.mid"), bytes));
    QVERIFY(SongTest::write(path(QStringLiteral("b.mid")), QByteArray(5000, 'x')));
    const LogCapture log;
    QVERIFY(song.saveToFile(path(QStringLiteral("b.mid"))));
    QCOMPARE(log.texts(), QStringList(QStringLiteral("[MetaSong::saveToFile] MIDI")));
    QCOMPARE(SongTest::read(path(QStringLiteral("b.mid"))), bytes);
    QVERIFY(song.saveToFile(path(QStringLiteral("new.mid"))));
    QCOMPARE(SongTest::read(path(QStringLiteral("new.mid"))), bytes);
    QCOMPARE(files().size(), 3);
}

void TestMetaSongSave::mfxIsWrittenWithItsSizes_data()
{
    QTest::addColumn<int>("version");
    QTest::addColumn<int>("headerSize");
    QTest::newRow("MF3") << 3 << 512;
    QTest::newRow("MF4") << 4 << 512;
    QTest::newRow("MF5") << 5 << 1024;
}

void TestMetaSongSave::mfxIsWrittenWithItsSizes()
{
    QFETCH(int, version);
    QFETCH(int, headerSize);
    const SongInfo info = SongTest::fullInfo();
    const QByteArray before = SongFactory::mfx(version, info);
    MetaSong song;
    QVERIFY(load(song, QStringLiteral("a.mfx"), before));
    QVERIFY(song.saveToFile(path(QStringLiteral("a.mfx"))));
    QCOMPARE(SongTest::read(path(QStringLiteral("a.mfx"))), before);

    song.addMarker(QStringLiteral("Fine"), 9);
    LogCapture log;
    QVERIFY(song.saveToFile(path(QStringLiteral("a.mfx"))));
    const QByteArray saved = SongTest::read(path(QStringLiteral("a.mfx")));
    const QByteArray stream = expanded(saved, headerSize);
    QCOMPARE(log.texts(), QStringList({QStringLiteral("[MetaSong::saveToFile] MFx"),
                                       log.texts().value(1)})); // the codec's own line follows
    QVERIFY(log.texts().at(1).startsWith(QStringLiteral("Compress: ")));
    QCOMPARE(stream.size(), expanded(before, headerSize).size() + 11);
    QCOMPARE(number(saved, 4), quint32(saved.size()));
    QCOMPARE(number(saved, 12), quint32(stream.size()));
    // Everything else of the header, known or not, is as it was.
    QCOMPARE(saved.left(4), before.left(4));
    QCOMPARE(saved.mid(8, 4), before.mid(8, 4));
    QCOMPARE(saved.mid(16, headerSize - 16), before.mid(16, headerSize - 16));
}

void TestMetaSongSave::mf4SongGetsItsThreeBytesBack()
{
    const QByteArray before = SongFactory::mfx(4, SongTest::fullInfo());
    MetaSong song;
    QVERIFY(load(song, QStringLiteral("a.mf4"), before));
    song.addMarker(QStringLiteral("Fine"), 9);
    QVERIFY(song.saveToFile(path(QStringLiteral("a.mf4"))));
    const QByteArray old = expanded(before, 512);
    const QByteArray now = expanded(SongTest::read(path(QStringLiteral("a.mf4"))), 512);
    const int data = now.indexOf("MTrk") + 8;
    const QByteArray marker = QByteArray::fromHex("00FF4B07060009") + "Fine";
    QCOMPARE(now.mid(data, 3 + marker.size()), QByteArray::fromHex("FF00FF") + marker);
    QCOMPARE(now.mid(data + 3 + marker.size()), old.mid(data + 3));
    // The length in the track's head never counts the three bytes, only the marker.
    QCOMPARE(int(quint8(now.at(data - 1))) + 256 * quint8(now.at(data - 2)),
             int(quint8(old.at(data - 1))) + 256 * quint8(old.at(data - 2)) + marker.size());
    QCOMPARE(int(quint8(old.at(data - 1))) + 256 * quint8(old.at(data - 2)), old.size() - data - 3);
}

void TestMetaSongSave::placeThatCannotBeWrittenIsRefused_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("target");
    QTest::newRow("MIDI over a folder") << SongFactory::midi(SongInfo()) << QStringLiteral("folder");
    QTest::newRow("MIDI in no folder") << SongFactory::midi(SongInfo()) << QStringLiteral("none/b.mid");
    QTest::newRow("MFx over a folder") << SongFactory::mfx(5, SongInfo()) << QStringLiteral("folder");
    QTest::newRow("MFx in no folder") << SongFactory::mfx(5, SongInfo()) << QStringLiteral("none/b.mf5");
}

void TestMetaSongSave::placeThatCannotBeWrittenIsRefused()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, target);
    QVERIFY(QDir(m_dir->path()).mkdir(QStringLiteral("folder")));
    MetaSong song;
    QVERIFY(load(song, QStringLiteral("a.mid"), bytes));
    const LogCapture log;
    QVERIFY(!song.saveToFile(path(target)));
    QCOMPARE(log.texts(), QStringList(kProtected));
    QCOMPARE(files(), QStringList({QStringLiteral("a.mid"), QStringLiteral("folder")}));
}

void TestMetaSongSave::writeProtectedFileIsMadeWritable_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("MIDI") << QStringLiteral("a.mid") << SongFactory::midi(SongInfo());
    QTest::newRow("MFx") << QStringLiteral("a.mf3") << SongFactory::mfx(3, SongInfo());
    QTest::newRow("MP3") << QStringLiteral("a.mp3") << SongFactory::mp3(3, SongInfo());
}

void TestMetaSongSave::writeProtectedFileIsMadeWritable()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    MetaSong song;
    QVERIFY(load(song, name, bytes));
    const QFileDevice::Permissions readOnly = QFileDevice::ReadOwner | QFileDevice::ReadGroup;
    QVERIFY(QFile::setPermissions(path(name), readOnly));
    QVERIFY(song.saveToFile(path(name)));
    QCOMPARE(SongTest::read(path(name)), bytes);
    const QFileDevice::Permissions now = QFile::permissions(path(name));
    QVERIFY(now & QFileDevice::WriteOwner);
    QVERIFY(now & QFileDevice::ReadGroup);
#ifdef Q_OS_UNIX
    QVERIFY(!(now & (QFileDevice::ReadOther | QFileDevice::WriteGroup | QFileDevice::ExeOwner)));
#endif
}

void TestMetaSongSave::savingAnUnchangedMp3ChangesNothing_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const SongInfo info = SongTest::fullInfo();
    const QByteArray audio = SongFactory::silentMp3Frames(3);
    QTest::newRow("2.2") << SongFactory::mp3(2, info);
    QTest::newRow("2.3") << SongFactory::mp3(3, info, 1);
    QTest::newRow("2.4") << SongFactory::mp3(4, info, 3);
    QTest::newRow("padding") << SongFactory::id3v2Tag(3, info, 0, 2000) + audio;
    QTest::newRow("tag alone") << SongFactory::id3v2Tag(3, info);
    QTest::newRow("tag that ends with the file too early") << SongFactory::id3v2Tag(3, info, 0, 100).chopped(7);
    QTest::newRow("empty tag") << SongFactory::id3v2TagAround(3, QByteArray()) + audio;
    QTest::newRow("no size") << QByteArray("ID3\x03\0\0\xFF\xFF\xFF\xFF", 10) + audio;
}

void TestMetaSongSave::savingAnUnchangedMp3ChangesNothing()
{
    QFETCH(QByteArray, bytes);
    MetaSong song;
    QVERIFY(load(song, QStringLiteral("a.mp3"), bytes));
    const LogCapture log;
    QVERIFY(song.saveToFile(path(QStringLiteral("a.mp3"))));
    QCOMPARE(SongTest::read(path(QStringLiteral("a.mp3"))), bytes);
    QCOMPARE(files(), QStringList(QStringLiteral("a.mp3")));
    QVERIFY(log.lines().isEmpty());
}

void TestMetaSongSave::mp3WithoutTagGetsOneBeforeItsFirstByte()
{
    const QByteArray audio = SongFactory::silentMp3Frames(3);
    MetaSong song;
    QVERIFY(load(song, QStringLiteral("a.mp3"), audio));
    QVERIFY(song.saveToFile(path(QStringLiteral("a.mp3"))));
    QCOMPARE(SongTest::read(path(QStringLiteral("a.mp3"))), QByteArray("ID3\x03\0\0\0\0\0\0", 10) + audio);
}

void TestMetaSongSave::mp3KeepsEveryByteOfItsAudio_data()
{
    QTest::addColumn<int>("audioBytes");
    QTest::addColumn<int>("tagVersion");
    for (const int size : {0, 1, 99999, 100000, 100001, 200000, 1200000}) {
        QTest::newRow(qPrintable(QStringLiteral("%1, tag").arg(size))) << size << 3;
        if (size > 10)
            QTest::newRow(qPrintable(QStringLiteral("%1, no tag").arg(size))) << size << 0;
    }
}

void TestMetaSongSave::mp3KeepsEveryByteOfItsAudio()
{
    QFETCH(int, audioBytes);
    QFETCH(int, tagVersion);
    QByteArray audio = SongFactory::silentMp3Frames(audioBytes / 417 + 1).left(audioBytes);
    for (int i = 500; i < audio.size(); i += 251)
        audio[i] = char(i / 251);
    const SongInfo info = SongTest::fullInfo();
    const QByteArray tag = tagVersion == 0 ? QByteArray() : SongFactory::id3v2Tag(tagVersion, info);
    MetaSong song;
    QVERIFY(load(song, QStringLiteral("a.mp3"), tag + audio));
    SongInfo change = info;
    change.title = QStringLiteral("A much longer title than the one it had before");
    song.setSongInfo(change, true);
    QVERIFY(song.saveToFile(path(QStringLiteral("a.mp3"))));
    const QByteArray saved = SongTest::read(path(QStringLiteral("a.mp3")));
    QVERIFY(saved.endsWith(audio));
    Id3Tag savedTag;
    QVERIFY(savedTag.load(saved));
    QCOMPARE(savedTag.audioOffset(), qint64(saved.size() - audio.size()));
    QCOMPARE(savedTag.title(), change.title);
    QCOMPARE(files(), QStringList(QStringLiteral("a.mp3")));
}

void TestMetaSongSave::missingMp3CannotBeRead()
{
    MetaSong song;
    QVERIFY(load(song, QStringLiteral("a.mp3"), SongFactory::mp3(3, SongInfo())));
    const LogCapture log;
    QVERIFY(!song.saveToFile(path(QStringLiteral("b.mp3"))));
    QCOMPARE(log.texts(), QStringList(QStringLiteral("[MetaSong::saveToFile] Impossible to read from file.")));
    QCOMPARE(files(), QStringList(QStringLiteral("a.mp3")));
}

void TestMetaSongSave::temporaryFileThatCannotBeMadeStopsTheSaving_data()
{
    QTest::addColumn<QString>("song");
    QTest::addColumn<QString>("temporary");
    QTest::newRow("its ending is replaced") << QStringLiteral("a.b.mp3") << QStringLiteral("a.b.tmp");
    QTest::newRow("no dot in the whole path") << QStringLiteral("songmp3") << QStringLiteral("songmp3.tmp");
    QTest::newRow("the last dot stands in a folder's name")
        << QStringLiteral("dir.d/songmp3") << QStringLiteral("dir.tmp");
}

void TestMetaSongSave::temporaryFileThatCannotBeMadeStopsTheSaving()
{
    QFETCH(QString, song);
    QFETCH(QString, temporary);
    // Relative paths: the folder above may have a dot in its name.
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_dir->path()));
    const QByteArray bytes = SongFactory::mp3(3, SongTest::fullInfo());
    MetaSong loaded;
    QVERIFY(QDir().mkdir(QStringLiteral("dir.d")));
    const bool ready = SongTest::write(song, bytes) && loaded.importFile(song) && QDir().mkdir(temporary);
    const LogCapture log;
    const bool saved = loaded.saveToFile(song);
    const QByteArray after = SongTest::read(song);
    QVERIFY(QDir::setCurrent(before));
    QVERIFY(ready);
    QVERIFY(!saved);
    QCOMPARE(log.texts(), QStringList(kProtected));
    QCOMPARE(after, bytes);
    QVERIFY(QFileInfo(path(temporary)).isDir());
}

void TestMetaSongSave::songThatBearsTheTemporaryNameIsNotEmptied_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("same letters") << QStringLiteral("a.tmp");
    QTest::newRow("other letters") << QStringLiteral("a.TMP");
}

void TestMetaSongSave::songThatBearsTheTemporaryNameIsNotEmptied()
{
    QFETCH(QString, name);
    const QByteArray bytes = SongFactory::mp3(3, SongTest::fullInfo());
    MetaSong song;
    QVERIFY(load(song, QStringLiteral("a.mp3"), bytes));
    QVERIFY(SongTest::write(path(name), bytes));
    const LogCapture log;
    QVERIFY(!song.saveToFile(path(name)));
    QCOMPARE(log.texts(), QStringList(kProtected));
    QCOMPARE(SongTest::read(path(name)), bytes);
}

void TestMetaSongSave::fullDiskWhileTheTagIsWritten()
{
#ifdef Q_OS_UNIX
    const QByteArray bytes = SongFactory::mp3(3, SongTest::fullInfo());
    MetaSong song;
    QVERIFY(load(song, QStringLiteral("a.mp3"), bytes));
    const int tagSize = SongFactory::id3v2Tag(3, SongTest::fullInfo()).size();
    const LogCapture log;
    for (const int room : {0, 5, tagSize - 1}) {
        const FullDisk full(static_cast<rlim_t>(room));
        QVERIFY(!song.saveToFile(path(QStringLiteral("a.mp3"))));
    }
    const QString message = QStringLiteral("[MetaSong::saveToFile] Impossible to write to file.");
    QCOMPARE(log.texts(), QStringList({message, message, message}));
    QCOMPARE(files(), QStringList(QStringLiteral("a.mp3")));
    QCOMPARE(SongTest::read(path(QStringLiteral("a.mp3"))), bytes);
#else
    QSKIP("limits the size of files as Unix does");
#endif
}

void TestMetaSongSave::fullDiskWhileTheAudioIsCopied()
{
#ifdef Q_OS_UNIX
    const QByteArray bytes = SongFactory::mp3(3, SongTest::fullInfo(), 0, 600);
    MetaSong song;
    QVERIFY(load(song, QStringLiteral("a.mp3"), bytes));
    const int tagSize = SongFactory::id3v2Tag(3, SongTest::fullInfo()).size();
    const LogCapture log;
    const QList<int> rooms = {tagSize, tagSize + 1, tagSize + 100000, tagSize + 150000, bytes.size() - 1};
    QStringList expected;
    for (const int room : rooms) {
        const FullDisk full(static_cast<rlim_t>(room));
        QVERIFY(!song.saveToFile(path(QStringLiteral("a.mp3"))));
        expected.append(QStringLiteral("[MetaSong::saveToFile] Impossible to copy part of file."));
    }
    QCOMPARE(log.texts(), expected);
    QCOMPARE(files(), QStringList(QStringLiteral("a.mp3")));
    QCOMPARE(SongTest::read(path(QStringLiteral("a.mp3"))), bytes);
    const FullDisk justRoomEnough(static_cast<rlim_t>(bytes.size()));
    QVERIFY(song.saveToFile(path(QStringLiteral("a.mp3"))));
#else
    QSKIP("limits the size of files as Unix does");
#endif
}

void TestMetaSongSave::songShorterThanItsTagCannotBeSought()
{
    MetaSong song;
    QVERIFY(load(song, QStringLiteral("a.mp3"), SongFactory::mp3(3, SongTest::fullInfo())));
    QVERIFY(SongTest::write(path(QStringLiteral("a.mp3")), "short"));
    const LogCapture log;
    QVERIFY(!song.saveToFile(path(QStringLiteral("a.mp3"))));
    QCOMPARE(log.texts(), QStringList(QStringLiteral("[MetaSong::saveToFile] Impossible to seek file.")));
    QCOMPARE(files(), QStringList(QStringLiteral("a.mp3")));
    QCOMPARE(SongTest::read(path(QStringLiteral("a.mp3"))), QByteArray("short"));
}

void TestMetaSongSave::pipeCannotBeSought()
{
#ifdef Q_OS_UNIX
    MetaSong song;
    QVERIFY(load(song, QStringLiteral("a.mp3"), SongFactory::mp3(3, SongTest::fullInfo())));
    const QByteArray pipe = QFile::encodeName(path(QStringLiteral("pipe.mp3")));
    QCOMPARE(mkfifo(pipe.constData(), 0600), 0);
    const int otherEnd = open(pipe.constData(), O_RDWR | O_CLOEXEC);
    QVERIFY(otherEnd >= 0);
    const LogCapture log;
    const bool saved = song.saveToFile(path(QStringLiteral("pipe.mp3")));
    close(otherEnd);
    QVERIFY(!saved);
    QCOMPARE(log.texts().last(), QStringLiteral("[MetaSong::saveToFile] Impossible to seek file."));
    QCOMPARE(files(), QStringList({QStringLiteral("a.mp3"), QStringLiteral("pipe.mp3")}));
#else
    QSKIP("needs a named pipe");
#endif
}

void TestMetaSongSave::songThatCannotBeDeletedLeavesTheTemporaryFile()
{
#ifdef Q_OS_UNIX
    // The last dot is that of the folder, so that the temporary file is made outside of it, where there is room for it;
    // in the folder nothing can be deleted.
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_dir->path()));
    QCOMPARE(chmod(".", 0777), 0);
    QVERIFY(QDir().mkdir(QStringLiteral("dir.d")));
    const QString name = QStringLiteral("dir.d/songmp3");
    const QByteArray bytes = SongFactory::mp3(3, SongTest::fullInfo());
    MetaSong song;
    QVERIFY(SongTest::write(name, bytes));
    QVERIFY(song.importFile(name));
    QCOMPARE(chmod("dir.d/songmp3", 0644), 0);
    QCOMPARE(chmod("dir.d", 0555), 0);
    bool saved = true;
    const LogCapture log;
    {
        const NoRoot noRoot;
        saved = song.saveToFile(name);
    }
    const QByteArray after = SongTest::read(name);
    const QByteArray temporary = SongTest::read(QStringLiteral("dir.tmp"));
    const QStringList lines = log.texts();
    chmod("dir.d", 0777);
    QVERIFY(QDir::setCurrent(before));
    QVERIFY(!saved);
    QCOMPARE(after, bytes);
    QCOMPARE(temporary, bytes);
    QVERIFY(lines.isEmpty());
#else
    QSKIP("needs the rights of Unix");
#endif
}

void TestMetaSongSave::temporaryFileThatCannotBeRenamedStaysAndIsAFailure()
{
#ifdef Q_OS_UNIX
    // The temporary file is there already, in a folder that gives no name away: it can be written, but not renamed.
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_dir->path()));
    QVERIFY(QDir().mkdir(QStringLiteral("dir.d")));
    const QString name = QStringLiteral("dir.d/songmp3");
    const QByteArray bytes = SongFactory::mp3(3, SongTest::fullInfo());
    MetaSong song;
    QVERIFY(SongTest::write(name, bytes));
    QVERIFY(SongTest::write(QStringLiteral("dir.tmp"), "left over"));
    QVERIFY(song.importFile(name));
    QCOMPARE(chmod("dir.d/songmp3", 0644), 0);
    QCOMPARE(chmod("dir.tmp", 0666), 0);
    QCOMPARE(chmod("dir.d", 0777), 0);
    QCOMPARE(chmod(".", 0555), 0);
    bool saved = true;
    {
        const NoRoot noRoot;
        saved = song.saveToFile(name);
    }
    chmod(".", 0777);
    const QByteArray temporary = SongTest::read(QStringLiteral("dir.tmp"));
    const bool songIsGone = !QFile::exists(name);
    QVERIFY(QDir::setCurrent(before));
    QVERIFY(!saved);
    QVERIFY(songIsGone);
    QCOMPARE(temporary, bytes);
#else
    QSKIP("needs the rights of Unix");
#endif
}

QTEST_GUILESS_MAIN(TestMetaSongSave)
#include "tst_metasongsave.moc"
