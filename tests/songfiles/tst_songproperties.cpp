#include "randomsongs.h"
#include "songwalk.h"
#include "support/logcapture.h"
#include "support/platform.h"

/// What is true of every song: whether it is one can be told from its bytes, reading leaves it alone, and edits, in any
/// order, leave everything alone that does not describe it.
class TestSongProperties : public QObject
{
    Q_OBJECT

private slots:
    void everyDamagedSongHasTheOutcomeThatItsBytesTell_data() {
        columns<QString, QByteArray>("name", "bytes");
        SongInfo info = fullInfo();
        info.markers = {{1, "a"_s}};
        row("MIDI format 0", "a.mid"_s, SongFactory::midi(info, 0, SongFactory::Markers::WithBars, 1));
        row("MIDI format 1", "a.mid"_s, SongFactory::midi(info, 1, SongFactory::Markers::Standard, 1));
        for (const int version : {3, 4, 5})
            row(qPrintable("MF%1"_s.arg(version)), "a.mf%1"_s.arg(version), SongFactory::mfx(version, info, 1));
        row("MP3 without tag", "a.mp3"_s, SongFactory::mp3(0, info, 0, 1));
        row("MP3 2.3", "a.mp3"_s, SongFactory::mp3(3, info, 1, 1));
        row("MP3 2.4", "a.MP3"_s, SongFactory::mp3(4, info, 3, 1));
        row("no song", "a.dat"_s, SongFactory::mp3(4, info, 3, 1));
    }
    void everyDamagedSongHasTheOutcomeThatItsBytesTell() {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        const PcFolder folder;
        const LogCapture log; // keeps thousands of lines out of the report
        int taken = 0;
        int refused = 0;
        const auto check = [&](const QByteArray &damaged) {
            if (QTest::currentTestFailed())
                return;
            const QString path = folder.path(name);
            QFile::remove(path);
            putFile(path, damaged);
            const bool isSong = isSongBy(name, damaged);
            ++(isSong ? taken : refused);
            readTwice(path, isSong);
            QVERIFY(contentOf(path) == damaged);
        };
        for (int size = 0; size <= bytes.size(); size += kBrokenFilesStep)
            check(bytes.left(size));
        // One bit of each byte in the usual run, another for the next byte; all values of each byte in the long one.
        for (int i = 0; i < bytes.size(); i += kBrokenFilesStep) {
            for (int step = 0; step < rounds(1, 255); ++step) {
                QByteArray damaged = bytes;
                damaged[i] = char(damaged.at(i) ^ (isSoak() ? step + 1 : 1 << i % 8));
                check(damaged);
            }
        }
        QVERIFY(refused > 0);
        QCOMPARE(taken > 0, name != "a.dat"_s);
    }

    void editsLeaveTheRestOfAMidiSongAlone() {
        const LogCapture log;
        forEachSeed(150, 20000, [this](QRandomGenerator &random) {
            const QByteArray before = RandomSongs(random).midi();
            const MidiWalk walk(before);
            QVERIFY(walk.isGood());
            edit(random, "song.mid"_s, before, [&walk](const QByteArray &now) {
                const MidiWalk after(now);
                QVERIFY(after.isGood());
                QVERIFY(after.untouchable() == walk.untouchable());
            });
        });
    }

    void editsLeaveTheRestOfAnMfxSongAlone() {
        const LogCapture log;
        forEachSeed(60, 8000, [this](QRandomGenerator &random) {
            const int version = 3 + random.bounded(3);
            const QByteArray before = RandomSongs(random).mfx(version);
            const auto walked = [version](const QByteArray &file) {
                QByteArray stream = streamOf(file);
                if (version == 4) {
                    const int extra = stream.indexOf("MTrk") + 8;
                    if (stream.mid(extra, 3) != "FF00FF"_hex)
                        failTest("The version's own bytes are missing"_s);
                    stream.remove(extra, 3);
                }
                return MidiWalk(stream);
            };
            const MidiWalk walk = walked(before);
            QVERIFY(walk.isGood());
            edit(random, "song.mf%1"_s.arg(version), before, [&](const QByteArray &now) {
                QVERIFY(untouchableHeader(now) == untouchableHeader(before));
                const MidiWalk after = walked(now);
                QVERIFY(after.isGood());
                QVERIFY(after.untouchable() == walk.untouchable());
            });
        });
    }

    void editsLeaveTheAudioAndTheOtherFramesOfAnMp3SongAlone() {
        const LogCapture log;
        forEachSeed(100, 8000, [this](QRandomGenerator &random) {
            const int version = QList<int>({0, 3, 4}).at(random.bounded(3));
            const QByteArray before = RandomSongs(random).mp3(version);
            const Mp3Walk walk(before);
            QVERIFY(walk.isGood());
            edit(random, "song.mp3"_s, before, [&walk](const QByteArray &now) {
                const Mp3Walk after(now);
                QVERIFY(after.isGood());
                QVERIFY(after.audio() == walk.audio());
                QVERIFY(walk.head().isEmpty() || after.head() == walk.head());
                QVERIFY(after.frames() == walk.frames());
                QCOMPARE(after.padding(), walk.padding());
            });
        });
    }

private:
    static constexpr int kMostMillisecondsASong = 3000;
    PcFolder m_folder;

    /// Whether a file of this name and content is a song, by the rules of each kind.
    static bool isSongBy(const QString &name, const QByteArray &bytes) {
        if (bytes.size() < 4)
            return false;
        if (bytes.startsWith("_MF") && bytes.at(3) >= '3' && bytes.at(3) <= '5') {
            const int header = bytes.at(3) == '5' ? 1024 : 512;
            QByteArray stream;
            if (bytes.size() < header || !LzHuff().expand(bytes.mid(header), stream))
                return false;
            if (bytes.at(3) == '4' && stream.contains("MTrk"))
                stream.remove(stream.indexOf("MTrk") + 8, 3);
            return isMidi(stream);
        }
        if (bytes.startsWith("MThd"))
            return isMidi(bytes);
        const bool hasTag = bytes.startsWith("ID3");
        const auto second = static_cast<signed char>(bytes.at(1));
        const bool looksLikeMp3 = hasTag || bytes.startsWith("\0\0"_b) ||
                                  (bytes.startsWith('\xFF') && second >= static_cast<signed char>(0xF3));
        if (!name.endsWith(".mp3"_s, Qt::CaseInsensitive) || !looksLikeMp3 || bytes.size() < 10)
            return false;
        return !hasTag || tagSize(bytes) <= quint32(bytes.size());
    }
    static bool isMidi(const QByteArray &bytes) {
        return bytes.size() >= 22 && bytes.startsWith("MThd") && bytes.indexOf("MTrk", 1) > 0;
    }
    static quint32 tagSize(const QByteArray &bytes) {
        quint32 size = 0;
        for (int i = 6; i < 10; ++i) {
            if (quint8(bytes.at(i)) > 0x80)
                return 0;
            size = size * 128 + quint8(bytes.at(i));
        }
        return size;
    }

    /// Imports a file afresh, and into an object that has just refused another: both tell the same, in time.
    static void readTwice(const QString &path, bool isSong) {
        QElapsedTimer timer;
        timer.start();
        MetaSong song;
        SongInfo info = otherInfo();
        QCOMPARE(song.importFile(path), isSong);
        QCOMPARE(song.importResult(), isSong ? ImportResult::Imported : ImportResult::NotASong);
        song.getSongInfo(info);
        QVERIFY(timer.elapsed() < kMostMillisecondsASong);
        QCOMPARE(info.format == "UNKNOWN"_s, !isSong);
        QVERIFY(info.length >= 0 && info.userBpm >= 0 && info.filename.isEmpty());
        MetaSong used;
        used.importFile(path + "/nothing"_s);
        used.importFile(path);
        SongInfo again = fullInfo();
        used.getSongInfo(again);
        QCOMPARE(linesOf(again), linesOf(info));
    }

    /// Reads, changes and saves a song in a random order; @p check looks at the file each time that it was written.
    template <typename Check>
    void edit(QRandomGenerator &random, const QString &name, const QByteArray &bytes, Check check) {
        const QString path = m_folder.path(name);
        QFile::remove(path);
        putFile(path, bytes);
        auto song = std::make_unique<MetaSong>();
        QVERIFY(song->importFile(path));
        for (int i = 1 + random.bounded(12); i > 0 && !QTest::currentTestFailed(); --i) {
            const int what = random.bounded(6);
            if (what < 2)
                song->setSongInfo(RandomSongs(random).info(), what == 0);
            else if (what == 2)
                song->addMarker(RandomSongs(random).text(), quint16(random.bounded(0x10000)));
            else if (what == 3)
                QVERIFY(song->importFile(path));
            else
                save(song, path, check);
        }
        save(song, path, check);
        QCOMPARE(QDir(m_folder.path()).entryList(QDir::Files), QStringList(name));
        QFile::remove(path);
    }
    /// What could not be saved is as it was. Every song is used once: after it was saved another object takes it up.
    template <typename Check> static void save(std::unique_ptr<MetaSong> &song, const QString &path, Check check) {
        const QByteArray before = contentOf(path);
        const int format = song->formatCode();
        if (song->saveToFile(path))
            check(contentOf(path));
        else
            QVERIFY(contentOf(path) == before);
        song = std::make_unique<MetaSong>();
        QVERIFY(song->importFile(path));
        QCOMPARE(song->formatCode(), format);
    }
};

QTEST_GUILESS_MAIN(TestSongProperties)
#include "tst_songproperties.moc"
