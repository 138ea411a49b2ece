#include "songtest.h"
#include "support/logcapture.h"

using namespace SongFactory;

class TestMetaSong : public QObject
{
    Q_OBJECT

private slots:
    void formatNamesFollowTheirCodes_data() {
        outcomes<QString>();
        const QStringList names = words("UNKNOWN UNKNOWN MIDI MIDI MF3 MF4 MF5 MP3 UNKNOWN");
        for (int code = -1; code <= 7; ++code)
            QTest::addRow("%d", code) << MetaSong::formatName(code) << names.at(code + 1);
        row("255", MetaSong::formatName(255), "UNKNOWN"_s);
    }
    void formatNamesFollowTheirCodes() { compareRow<QString>(); }

    void songIsRecognisedByItsFirstBytesAndRead_data() {
        outcomes<QStringList>();
        const SongInfo other = otherInfo();
        SongInfo standard = other;
        standard.markers = {{0, "Coro"_s}};
        SongInfo accented = other;
        accented.title = "Perché"_s;
        SongInfo tagged = accented;
        tagged.markers.clear();
        SongInfo words;
        words.title = "Words"_s;
        SongInfo makers;
        makers.isQArte = true;
        row("MIDI format 0", read("a.mid"_s, midi(other, 0)), told(1, other));
        row("MIDI format 1", read("a.mid"_s, midi(other, 1)), told(2, other));
        row("MIDI format 2", read("a.mid"_s, midi(other, 2)), told(2, other));
        row("MIDI under any name", read("a.txt"_s, midi(other, 0)), told(1, other));
        row("MIDI called MP3", read("a.mp3"_s, midi(other, 0)), told(1, other));
        row("MIDI with standard markers", read("a.mid"_s, midi(other, 0, Markers::Standard)), told(1, standard));
        row("MIDI of nobody", read("a.mid"_s, midi(SongInfo())), told(1, SongInfo()));
        row("karaoke, the name of its word track", read("a.kar"_s, karaoke({"@TVolare"_s}, {"la"_s})), told(2, words));
        for (const int version : {3, 4, 5}) {
            QTest::addRow("MF%d", version) << read("a.mfx"_s, mfx(version, fullInfo())) << told(version, fullInfo());
            QTest::addRow("MF%d with other texts in its stream", version)
                << read("a.mfx"_s, mfxHeader(version, fullInfo(), 0, 0) + streamOfAnother(version))
                << told(version, fullInfo());
            QTest::addRow("MF%d is always the maker's", version)
                << read("a.mfx"_s, mfx(version, SongInfo())) << told(version, makers);
        }
        row("MF5 called MF3", read("a.mf3"_s, mfx(5, fullInfo())), told(5, fullInfo()));
        row("MP3 without tag", read("a.mp3"_s, mp3(0, other)), told(6, SongInfo()));
        row("MP3 2.2 has no frame of a four-letter name", read("a.mp3"_s, mp3(2, other)), told(6, SongInfo()));
        row("MP3 2.3 Latin-1", read("a.mp3"_s, mp3(3, accented, 0)), told(6, tagged));
        row("MP3 2.3 UTF-16", read("a.mp3"_s, mp3(3, accented, 1)), told(6, tagged));
        row("MP3 2.4 UTF-8", read("a.mp3"_s, mp3(4, accented, 3)), told(6, tagged));
        row("text", read("a.mid"_s, "just some text of a letter"), told(0, SongInfo()));
    }
    void songIsRecognisedByItsFirstBytesAndRead() { compareRow<QStringList>(); }

    void mp3IsRecognisedByItsNameAndItsFirstBytes_data() {
        outcomes<bool>();
        row("ID3 in song.Mp3", isMp3("song.Mp3"_s, "ID3\x03"), true);
        row("ID3 in song.wav", isMp3("song.wav"_s, "ID3\x03"), false);
        row("no dot before MP3", isMp3("songmP3"_s, "ID3\x03"), true);
        row("MP3 inside the name", isMp3("song.mp3.bak"_s, "ID3\x03"), false);
        row("00 00", isMp3("s.mp3"_s, "0000FFFB"_hex), true);
        row("00 01", isMp3("s.mp3"_s, "0001FFFB"_hex), false);
        row("FF FB", isMp3("s.mp3"_s, "FFFB90C4"_hex), true);
        row("FF F3", isMp3("s.mp3"_s, "FFF390C4"_hex), true);
        row("FF F2", isMp3("s.mp3"_s, "FFF290C4"_hex), false);
        row("FF FF", isMp3("s.mp3"_s, "FFFF90C4"_hex), true);
        row("FF 05", isMp3("s.mp3"_s, "FF0590C4"_hex), true);
        row("FF 00", isMp3("s.mp3"_s, "FF0090C4"_hex), true);
        row("FF 7F", isMp3("s.mp3"_s, "FF7F90C4"_hex), true);
        row("FF 80", isMp3("s.mp3"_s, "FF8090C4"_hex), false);
        row("FE FB", isMp3("s.mp3"_s, "FEFB90C4"_hex), false);
        row("RIFF", isMp3("s.mp3"_s, "RIFF"), false);
    }
    void mp3IsRecognisedByItsNameAndItsFirstBytes() { compareRow<bool>(); }

    void fileThatCannotBeOpenedIsRefused() {
        const LogCapture log;
        const PcFolder folder;
        MetaSong song;
        QVERIFY(!song.importFile(folder.path("missing.mid"_s)));
        QVERIFY(!song.importFile(QString()));
        QVERIFY(!song.importFile(folder.path()));
        QCOMPARE(song.formatCode(), int(UnknownFormat));
    }

    void brokenSongIsSkippedWithItsMessage_data() {
        outcomes<QStringList>();
        const QString noExpansion = "[MetaSong::importFile] LzHuff Expand filed, skipping file"_s;
        const QString noMidi = "[MetaSong::importFile] MidiStream corrupted, skipping file"_s;
        const QString ruler(69, QLatin1Char('='));
        const QString tooLong = "WARNING: skipping file, compressed stream corrupted/wrong size !!!"_s;
        const QByteArray noStream = compressed("certainly no MIDI stream at all");
        const auto head = [](int version) { return mfxHeader(version, fullInfo(), 0, 0); };
        row("nothing", linesAt("a.mid"_s, ""), QStringList());
        row("MIDI of three bytes", linesAt("b.mid"_s, "MTh"), QStringList());
        row("MP3 of three bytes", linesAt("c.mp3"_s, "ID3"), QStringList());
        row("MIDI that is cut", linesAt("a.mid"_s, midi(fullInfo()).left(21)), QStringList(noMidi));
        row("MF5 of 1000 bytes", linesAt("a.mf5"_s, mfx(5, fullInfo()).left(1000)), QStringList());
        row("MF5 of 1023 bytes", linesAt("a.mf5"_s, mfx(5, fullInfo()).left(1023)), QStringList());
        row("MF3 without a stream", linesAt("a.mf3"_s, head(3) + "\0\0\0\0"_b), QStringList(noExpansion));
        row("MF4 whose stream is no MIDI", linesAt("a.mf4"_s, head(4) + noStream), QStringList(noMidi));
        row("MF5 whose stream is a byte too long", linesAt("a.mf5"_s, head(5) + littleEndian(500001) + "stream"),
            QStringList({ruler, tooLong, "Text size:  500001"_s, ruler, "Expand: ERROR"_s, noExpansion}));
    }
    void brokenSongIsSkippedWithItsMessage() { compareRow<QStringList>(); }

    void failedImportLeavesTheFormatAsItWas() {
        SongOnDisk file("a.mp3"_s, mp3(3, fullInfo()));
        QVERIFY(!isTaken(file.song, "b.mid"_s, midi(fullInfo()).left(21)));
        QCOMPARE(file.song.formatCode(), int(Mp3Format));
        QVERIFY(!isTaken(file.song, "c.mf3"_s, mfx(3, SongInfo()).left(513)));
        QCOMPARE(file.song.formatCode(), int(Mp3Format));
    }

    void mp3IsReadUpToAMillionBytes_data() {
        columns<int, bool>("tagSize", "accepted");
        row("999,990", 999990, true);
        row("999,991, its last byte is not read", 999991, true);
        row("1,000,000", 1000000, true);
        row("1,000,001", 1000001, false);
    }
    void mp3IsReadUpToAMillionBytes() {
        QFETCH(int, tagSize);
        QFETCH(bool, accepted);
        const QByteArray frames = id3v2TextFrame(3, "TIT2", "Long tag"_s).leftJustified(tagSize, '\0');
        const QByteArray bytes = id3v2TagAround(3, frames) + silentMp3Frames(50);
        MetaSong song;
        QCOMPARE(isTaken(song, "a.mp3"_s, bytes), accepted);
        if (!accepted)
            return;
        SongOnDisk file("a.mp3"_s, bytes);
        QCOMPARE(file.info().title, "Long tag"_s);
        // Saved unchanged, nothing of tag and audio is lost, wherever the reader stopped.
        QVERIFY(file.save());
        QCOMPARE(file.content(), bytes);
    }

    void threeExtraBytesOfAnMf4SongAreDropped() {
        // Were they kept, the first event would stand behind FF 00 FF: adding a title and reading it would still work,
        // but the stream that is saved would have them twice.
        SongOnDisk file("a.mf4"_s, mfx(4, fullInfo()));
        QVERIFY(file.save());
        const QByteArray stream = streamOf(file.content());
        QCOMPARE(stream.mid(stream.indexOf("MTrk") + 8, 7), "FF00FF00FF0306"_hex);
        QCOMPARE(stream.size(), midi(fullInfo()).size() + 3);
    }

    void dumpWritesEveryField() {
        SongInfo info = fullInfo();
        info.filename = "E:/a.mf4"_s;
        info.format = "MF4"_s;
        info.markers.clear();
        info.MfxFlags = 1;
        const LogCapture log;
        MetaSong().dumpInfo(info);
        const QString expected = R"(Dump Info song ----------------------------------------------
Format     : "MF4"
Filename   : "E:/a.mf4"
Is Q-Arte  : true
Title      : "Volare"
Artist     : "Domenico"
Genre      : "Canzone"
Author     : "Modugno"
Length     : 215
userBpm    : 128
Key        : "Bb"
Markers:
NO Markers
MfxLongName: "VOLARE.MID"
MfxFlags   : 0x01
Dump END ----------------------------------------------------)"_s;
        QCOMPARE(log.texts(), expected.split(QLatin1Char('\n')));
        for (const LogCapture::Line &line : log.lines())
            QCOMPARE(line.type, QtDebugMsg);
    }

    void dumpListsMarkers() {
        SongInfo info;
        info.markers = {{1, "Intro"_s}, {300, QString()}};
        info.MfxFlags = 0xA5;
        const LogCapture log;
        MetaSong().dumpInfo(info);
        QCOMPARE(log.texts().at(3), "Is Q-Arte  : false"_s);
        QCOMPARE(log.texts().mid(11, 5),
                 QStringList({"Markers:"_s, "  bar: 1   text: \"Intro\""_s, "  bar: 300   text: \"\""_s,
                              "MfxLongName: \"\""_s, "MfxFlags   : 0xa5"_s}));
    }

    void addMarkerTellsHowLongItIs() {
        SongOnDisk file("a.mid"_s, midi(fullInfo()));
        const LogCapture log;
        // 00 FF 4B n 06, two bytes of bar number, four of text
        QCOMPARE(file.song.addMarker("Fine"_s, 512), 11);
        QCOMPARE(log.texts(), QStringList({"[MetaSong] addMarker"_s, "Marker added, len=  11"_s,
                                           "-----------------------------------"_s, QString()}));
        QCOMPARE(file.info().markers.size(), 3);
        QVERIFY((file.info().markers.constFirst() == SongMarker{512, "Fine"_s}));
    }

    void addMarkerWithoutAStreamInsertsNothing() {
        const LogCapture log;
        QCOMPARE(MetaSong().addMarker("Fine"_s, 1), 0);
        QVERIFY(log.contains(QtDebugMsg, "Marker added, len=  0"_s));
        SongOnDisk file("a.mp3"_s, mp3(3, SongInfo()));
        QCOMPARE(file.song.addMarker("Fine"_s, 1), 0);
    }

private:
    /// Whether a song takes a file in.
    static bool isTaken(MetaSong &song, const QString &name, const QByteArray &bytes) {
        PcFolder folder;
        return song.importFile(folder.addFile(name, bytes));
    }
    /// Whether 40 bytes are taken. Fewer than ten are no MP3, whatever they begin with.
    static bool isMp3(const QString &name, const QByteArray &start) {
        MetaSong song;
        if (isTaken(song, name, start.leftJustified(9, '\0')))
            failTest("nine bytes are taken"_s);
        return isTaken(song, name, start.leftJustified(40, '\0'));
    }
    /// The log lines with which a song is refused.
    static QStringList linesAt(const QString &name, const QByteArray &bytes) {
        const LogCapture log;
        MetaSong song;
        if (isTaken(song, name, bytes) || song.formatCode() != UnknownFormat)
            failTest("this song should be refused"_s);
        for (const LogCapture::Line &line : log.lines()) {
            if (line.type != QtDebugMsg)
                failTest("no debug message: "_s + line.text);
        }
        return log.texts();
    }
    /// What is read of a song, into a record that held something else before.
    static QStringList read(const QString &name, const QByteArray &bytes) {
        MetaSong song;
        const bool taken = isTaken(song, name, bytes);
        SongInfo info = fullInfo();
        info.filename = "x"_s;
        song.getSongInfo(info);
        return linesOf(info) + QStringList("%1 %2"_s.arg(taken).arg(song.formatCode()));
    }
    static QStringList told(int code, SongInfo info) {
        info.format = words("UNKNOWN MIDI MIDI MF3 MF4 MF5 MP3").at(code);
        return linesOf(info) + QStringList("%1 %2"_s.arg(code != 0).arg(code));
    }
    /// The stream of an MFx song from which only key, length and markers are taken.
    static QByteArray streamOfAnother(int version) {
        SongInfo other = fullInfo();
        other.title = other.artist = other.genre = other.author = "other"_s;
        other.userBpm = 77;
        return mfx(version, other).mid(MfxHeader::sizeOfVersion(version));
    }
};

QTEST_GUILESS_MAIN(TestMetaSong)
#include "tst_metasong.moc"
