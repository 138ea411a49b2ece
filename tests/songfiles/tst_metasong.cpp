#include "songtest.h"
#include "support/logcapture.h"

using namespace SongFactory;

class TestMetaSong : public QObject
{
    Q_OBJECT

private slots:
    void newSongIsUnknownAndEmpty()
    {
        const MetaSong song;
        QCOMPARE(song.formatCode(), int(UnknownFormat));
        SongInfo info = fullInfo();
        song.getSongInfo(info);
        QCOMPARE(info.format, "UNKNOWN"_s);
        QVERIFY(info.title.isEmpty() && info.markers.isEmpty() && !info.isQArte);
    }

    void formatNamesFollowTheirCodes()
    {
        QStringList names;
        for (int code = -1; code <= 7; ++code)
            names.append(MetaSong::formatName(code));
        QCOMPARE(names, words("UNKNOWN UNKNOWN MIDI MIDI MF3 MF4 MF5 MP3 UNKNOWN"));
        QCOMPARE(MetaSong::formatName(255), "UNKNOWN"_s);
    }

    void songIsRecognisedByItsFirstBytes_data()
    {
        columns<QString, QByteArray, int>("name", "bytes", "code");
        const SongInfo info = fullInfo();
        row("MIDI format 0", "a.mid"_s, midi(info, 0), 1);
        row("MIDI format 1", "a.mid"_s, midi(info, 1), 2);
        row("MIDI format 2", "a.mid"_s, midi(info, 2), 2);
        row("MIDI under any name", "a.txt"_s, midi(info, 0), 1);
        row("MIDI called MP3", "a.mp3"_s, midi(info, 0), 1);
        row("karaoke", "a.kar"_s, karaoke({}, {"la"_s}), 2);
        row("MF3", "a.mf3"_s, mfx(3, info), 3);
        row("MF4", "a.mf4"_s, mfx(4, info), 4);
        row("MF5", "a.mf5"_s, mfx(5, info), 5);
        row("MF5 called MF3", "a.mf3"_s, mfx(5, info), 5);
        row("MP3 without tag", "a.mp3"_s, mp3(0, info), 6);
        row("MP3 with tag", "a.mp3"_s, mp3(3, info), 6);
        row("text", "a.mid"_s, "just some text of a letter"_b, 0);
    }
    void songIsRecognisedByItsFirstBytes()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        QFETCH(int, code);
        MetaSong song;
        QCOMPARE(isTaken(song, name, bytes), code != 0);
        QCOMPARE(song.formatCode(), code);
    }

    void mp3IsRecognisedByItsNameAndItsFirstBytes_data()
    {
        columns<QString, QByteArray, bool>("name", "start", "accepted");
        row("ID3 in song.Mp3", "song.Mp3"_s, "ID3\x03"_b, true);
        row("ID3 in song.wav", "song.wav"_s, "ID3\x03"_b, false);
        row("no dot before MP3", "songmP3"_s, "ID3\x03"_b, true);
        row("MP3 inside the name", "song.mp3.bak"_s, "ID3\x03"_b, false);
        row("00 00", "s.mp3"_s, "0000FFFB"_hex, true);
        row("00 01", "s.mp3"_s, "0001FFFB"_hex, false);
        row("FF FB", "s.mp3"_s, "FFFB90C4"_hex, true);
        row("FF F3", "s.mp3"_s, "FFF390C4"_hex, true);
        row("FF F2", "s.mp3"_s, "FFF290C4"_hex, false);
        row("FF FF", "s.mp3"_s, "FFFF90C4"_hex, true);
        row("FF 05", "s.mp3"_s, "FF0590C4"_hex, true);
        row("FF 00", "s.mp3"_s, "FF0090C4"_hex, true);
        row("FF 7F", "s.mp3"_s, "FF7F90C4"_hex, true);
        row("FF 80", "s.mp3"_s, "FF8090C4"_hex, false);
        row("FE FB", "s.mp3"_s, "FEFB90C4"_hex, false);
        row("RIFF", "s.mp3"_s, "RIFF"_b, false);
    }
    void mp3IsRecognisedByItsNameAndItsFirstBytes()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, start);
        MetaSong song;
        QTEST(isTaken(song, name, start.leftJustified(40, '\0')), "accepted");
        // Fewer than ten bytes are no MP3, whatever they begin with.
        MetaSong shorter;
        QVERIFY(!isTaken(shorter, name, start.leftJustified(9, '\0')));
    }

    void fileThatCannotBeOpenedIsRefused()
    {
        const LogCapture log;
        const PcFolder folder;
        MetaSong song;
        QVERIFY(!song.importFile(folder.path("missing.mid"_s)));
        QVERIFY(!song.importFile(QString()));
        QVERIFY(!song.importFile(folder.path()));
        QCOMPARE(song.formatCode(), int(UnknownFormat));
    }

    void brokenSongIsSkippedWithItsMessage_data()
    {
        columns<QString, QByteArray, QStringList>("name", "bytes", "log");
        const QString noExpansion = "[MetaSong::importFile] LzHuff Expand filed, skipping file"_s;
        const QString noMidi = "[MetaSong::importFile] MidiStream corrupted, skipping file"_s;
        const QString ruler(69, QLatin1Char('='));
        const QString tooLong = "WARNING: skipping file, compressed stream corrupted/wrong size !!!"_s;
        const QByteArray mf5 = mfx(5, fullInfo());
        row("nothing", "a.mid"_s, ""_b, QStringList());
        row("MIDI of three bytes", "b.mid"_s, "MTh"_b, QStringList());
        row("MP3 of three bytes", "c.mp3"_s, "ID3"_b, QStringList());
        row("MIDI that is cut", "a.mid"_s, midi(fullInfo()).left(21), QStringList(noMidi));
        row("MF3 without a stream", "a.mf3"_s, mfxHeader(3, fullInfo(), 512, 0) + "\0\0\0\0"_b,
            QStringList(noExpansion));
        row("MF4 whose stream is no MIDI", "a.mf4"_s,
            mfxHeader(4, fullInfo(), 0, 0) + compressed("certainly no MIDI stream at all"), QStringList(noMidi));
        row("MF5 whose stream is a byte too long", "a.mf5"_s,
            mfxHeader(5, fullInfo(), 0, 0) + littleEndian(500001) + "stream",
            QStringList({ruler, tooLong, "Text size:  500001"_s, ruler, "Expand: ERROR"_s, noExpansion}));
    }
    void brokenSongIsSkippedWithItsMessage()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        const LogCapture captured;
        MetaSong song;
        QVERIFY(!isTaken(song, name, bytes));
        QTEST(captured.texts(), "log");
        for (const LogCapture::Line &line : captured.lines())
            QCOMPARE(line.type, QtDebugMsg);
        QCOMPARE(song.formatCode(), int(UnknownFormat));
    }

    void mf5FileOf1000BytesIsRefused()
    {
        const QByteArray whole = mfx(5, fullInfo());
        MetaSong song;
        QVERIFY(!isTaken(song, "a.mf5"_s, whole.left(1000)));
        QVERIFY(!isTaken(song, "b.mf5"_s, whole.left(1023)));
        QVERIFY(isTaken(song, "c.mf5"_s, whole));
    }

    void failedImportLeavesTheFormatAsItWas()
    {
        SongOnDisk file("a.mp3"_s, mp3(3, fullInfo()));
        QVERIFY(!isTaken(file.song, "b.mid"_s, midi(fullInfo()).left(21)));
        QCOMPARE(file.song.formatCode(), int(Mp3Format));
        QVERIFY(!isTaken(file.song, "c.mf3"_s, mfx(3, SongInfo()).left(513)));
        QCOMPARE(file.song.formatCode(), int(Mp3Format));
    }

    void mp3IsReadUpToAMillionBytes_data()
    {
        columns<int, bool>("tagSize", "accepted");
        row("999,990", 999990, true);
        row("999,991, its last byte is not read", 999991, true);
        row("1,000,000", 1000000, true);
        row("1,000,001", 1000001, false);
    }
    void mp3IsReadUpToAMillionBytes()
    {
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

    void threeExtraBytesOfAnMf4SongAreDropped()
    {
        // Were they kept, the first event would stand behind FF 00 FF: adding a title and reading it would still work,
        // but the stream that is saved would have them twice.
        SongOnDisk file("a.mf4"_s, mfx(4, fullInfo()));
        QVERIFY(file.save());
        const QByteArray stream = streamOf(file.content());
        QCOMPARE(stream.mid(stream.indexOf("MTrk") + 8, 7), "FF00FF00FF0306"_hex);
        QCOMPARE(stream.size(), midi(fullInfo()).size() + 3);
    }

    void infoIsClearedFirst()
    {
        const SongOnDisk file("a.mp3"_s, mp3(3, SongInfo()));
        SongInfo info = fullInfo();
        info.filename = "x"_s;
        file.song.getSongInfo(info);
        QCOMPARE(info.format, "MP3"_s);
        QCOMPARE(fieldsOf(info), fieldsOf(SongInfo()));
        QVERIFY(info.filename.isEmpty() && info.markers.isEmpty() && info.MfxLongName.isEmpty());
        QVERIFY(!info.isQArte && info.MfxFlags == 0);
    }

    void infoOfAMidiSong_data()
    {
        columns<int, bool>("headerFormat", "standardMarkers");
        row("format 0", 0, false);
        row("format 1", 1, false);
        row("standard markers", 0, true);
    }
    void infoOfAMidiSong()
    {
        QFETCH(int, headerFormat);
        QFETCH(bool, standardMarkers);
        SongInfo expected = fullInfo();
        const auto style = standardMarkers ? Markers::Standard : Markers::WithBars;
        const SongInfo info = SongOnDisk("a.mid"_s, midi(expected, headerFormat, style)).info();
        if (standardMarkers)
            expected.markers = {{0, "Intro"_s}, {0, "Ritornello"_s}};
        QCOMPARE(info.format, "MIDI"_s);
        QCOMPARE(fieldsOf(info), fieldsOf(expected));
        QVERIFY(info.isQArte);
        QVERIFY(info.markers == expected.markers);
        QVERIFY(info.MfxLongName.isEmpty() && info.MfxFlags == 0 && info.filename.isEmpty());
    }

    void infoOfAnMfxSong_data()
    {
        columns<int, QByteArray>("version", "extraBytes");
        row("MF3", 3, ""_b);
        row("MF4", 4, "FF00FF"_hex);
        row("MF5", 5, ""_b);
    }
    void infoOfAnMfxSong()
    {
        QFETCH(int, version);
        QFETCH(QByteArray, extraBytes);
        const SongInfo expected = fullInfo();
        SongInfo other = expected; // in the stream, where only key, length and markers are taken from
        other.title = other.artist = other.genre = other.author = "other"_s;
        other.userBpm = 77;
        QByteArray stream = midi(other);
        stream.insert(stream.indexOf("MTrk") + 8, extraBytes);
        const SongInfo info = SongOnDisk("a.mfx"_s, mfxHeader(version, expected, 0, 0) + compressed(stream)).info();
        QCOMPARE(info.format, "MF%1"_s.arg(version));
        QCOMPARE(fieldsOf(info), fieldsOf(expected));
        QVERIFY(info.markers == expected.markers);
        QCOMPARE(info.MfxLongName, expected.MfxLongName);
        QCOMPARE(info.MfxFlags, quint8(0x20));
    }

    void mfxSongIsAlwaysTheMakers()
    {
        for (int version = 3; version <= 5; ++version)
            QVERIFY(SongOnDisk("a.mfx"_s, mfx(version, SongInfo())).info().isQArte);
        QVERIFY(!SongOnDisk("a.mid"_s, midi(SongInfo())).info().isQArte);
    }

    void infoOfAnMp3Song_data()
    {
        columns<int, int>("version", "encoding");
        row("2.3 Latin-1", 3, 0);
        row("2.3 UTF-16", 3, 1);
        row("2.4 UTF-8", 4, 3);
    }
    void infoOfAnMp3Song()
    {
        QFETCH(int, version);
        QFETCH(int, encoding);
        SongInfo expected = fullInfo();
        expected.title = "Perché"_s;
        const SongInfo info = SongOnDisk("a.mp3"_s, mp3(version, expected, encoding)).info();
        QCOMPARE(info.format, "MP3"_s);
        QCOMPARE(fieldsOf(info), fieldsOf(expected));
        QVERIFY(info.isQArte && info.markers.isEmpty());
    }

    void tagOfVersion2HasNoFrameOfAFourLetterName()
    {
        const SongInfo info = SongOnDisk("a.mp3"_s, mp3(2, fullInfo())).info();
        QCOMPARE(info.format, "MP3"_s);
        QVERIFY(info.title.isEmpty() && info.artist.isEmpty() && info.length == 0);
    }

    void karaokeSongReadsTheNameOfItsWordTrack()
    {
        const SongInfo info = SongOnDisk("a.kar"_s, karaoke({"@TVolare"_s}, words("Vo la"))).info();
        QCOMPARE(info.format, "MIDI"_s);
        QCOMPARE(info.title, "Words"_s);
    }

    void dumpWritesEveryField()
    {
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

    void dumpListsMarkers()
    {
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

    void addMarkerTellsHowLongItIs()
    {
        SongOnDisk file("a.mid"_s, midi(fullInfo()));
        const LogCapture log;
        // 00 FF 4B n 06, two bytes of bar number, four of text
        QCOMPARE(file.song.addMarker("Fine"_s, 512), 11);
        QCOMPARE(log.texts(), QStringList({"[MetaSong] addMarker"_s, "Marker added, len=  11"_s,
                                           "-----------------------------------"_s, QString()}));
        QCOMPARE(file.info().markers.size(), 3);
        QVERIFY((file.info().markers.constFirst() == SongMarker{512, "Fine"_s}));
    }

    void addMarkerWithoutAStreamInsertsNothing()
    {
        const LogCapture log;
        QCOMPARE(MetaSong().addMarker("Fine"_s, 1), 0);
        QVERIFY(log.contains(QtDebugMsg, "Marker added, len=  0"_s));
        SongOnDisk file("a.mp3"_s, mp3(3, SongInfo()));
        QCOMPARE(file.song.addMarker("Fine"_s, 1), 0);
    }

private:
    /// Whether a song takes a file in.
    static bool isTaken(MetaSong &song, const QString &name, const QByteArray &bytes)
    {
        PcFolder folder;
        return song.importFile(folder.addFile(name, bytes));
    }
};

QTEST_GUILESS_MAIN(TestMetaSong)
#include "tst_metasong.moc"
