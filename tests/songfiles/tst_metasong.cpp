#include "songtest.h"
#include "support/logcapture.h"

using namespace SongFactory;

class TestMetaSong : public QObject
{
    Q_OBJECT

private slots:
    void formatNamesFollowTheirCodes() {
        const QStringList names = words("UNKNOWN UNKNOWN MIDI MIDI MF3 MF4 MF5 MP3 UNKNOWN");
        for (int code = -1; code <= 7; ++code)
            same(qPrintable(QString::number(code)), MetaSong::formatName(code), names.at(code + 1));
        same("255", MetaSong::formatName(255), "UNKNOWN"_s);
    }

    void songIsRecognisedByItsFirstBytesAndRead() {
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
        same("MIDI format 0", read("a.mid"_s, midi(other, 0)), told(1, other));
        same("MIDI format 1", read("a.mid"_s, midi(other, 1)), told(2, other));
        same("MIDI format 2", read("a.mid"_s, midi(other, 2)), told(2, other));
        same("MIDI under any name", read("a.txt"_s, midi(other, 0)), told(1, other));
        same("MIDI called MP3", read("a.mp3"_s, midi(other, 0)), told(1, other));
        same("MIDI with standard markers", read("a.mid"_s, midi(other, 0, Markers::Standard)), told(1, standard));
        same("MIDI of nobody", read("a.mid"_s, midi(SongInfo())), told(1, SongInfo()));
        same("karaoke, the name of its word track", read("a.kar"_s, karaoke({"@TVolare"_s}, {"la"_s})), told(2, words));
        for (const int version : {3, 4, 5}) {
            const QString mf = "MF%1"_s.arg(version);
            const QByteArray withOtherTexts = mfxHeader(version, fullInfo(), 0, 0) + streamOfAnother(version);
            same(qPrintable(mf), read("a.mfx"_s, mfx(version, fullInfo())), told(version, fullInfo()));
            same(qPrintable(mf + " with other texts in its stream"_s), read("a.mfx"_s, withOtherTexts),
                 told(version, fullInfo()));
            same(qPrintable(mf + " is always the maker's"_s), read("a.mfx"_s, mfx(version, SongInfo())),
                 told(version, makers));
        }
        same("MF5 called MF3", read("a.mf3"_s, mfx(5, fullInfo())), told(5, fullInfo()));
        same("MP3 without tag", read("a.mp3"_s, mp3(0, other)), told(6, SongInfo()));
        same("MP3 2.2 has no frame of a four-letter name", read("a.mp3"_s, mp3(2, other)), told(6, SongInfo()));
        same("MP3 2.3 Latin-1", read("a.mp3"_s, mp3(3, accented, 0)), told(6, tagged));
        same("MP3 2.3 UTF-16", read("a.mp3"_s, mp3(3, accented, 1)), told(6, tagged));
        same("MP3 2.4 UTF-8", read("a.mp3"_s, mp3(4, accented, 3)), told(6, tagged));
        same("text", read("a.mid"_s, "just some text of a letter"), told(0, SongInfo()));
    }

    void mp3IsRecognisedByItsNameAndItsFirstBytes() {
        same("ID3 in song.Mp3", isMp3("song.Mp3"_s, "ID3\x03"), true);
        same("ID3 in song.wav", isMp3("song.wav"_s, "ID3\x03"), false);
        same("no dot before MP3", isMp3("songmP3"_s, "ID3\x03"), true);
        same("MP3 inside the name", isMp3("song.mp3.bak"_s, "ID3\x03"), false);
        same("00 00", isMp3("s.mp3"_s, "0000FFFB"_hex), true);
        same("00 01", isMp3("s.mp3"_s, "0001FFFB"_hex), false);
        same("FF FB", isMp3("s.mp3"_s, "FFFB90C4"_hex), true);
        same("FF F3", isMp3("s.mp3"_s, "FFF390C4"_hex), true);
        same("FF F2", isMp3("s.mp3"_s, "FFF290C4"_hex), false);
        same("FF FF", isMp3("s.mp3"_s, "FFFF90C4"_hex), true);
        same("FF 05", isMp3("s.mp3"_s, "FF0590C4"_hex), true);
        same("FF 00", isMp3("s.mp3"_s, "FF0090C4"_hex), true);
        same("FF 7F", isMp3("s.mp3"_s, "FF7F90C4"_hex), true);
        same("FF 80", isMp3("s.mp3"_s, "FF8090C4"_hex), false);
        same("FE FB", isMp3("s.mp3"_s, "FEFB90C4"_hex), false);
        same("RIFF", isMp3("s.mp3"_s, "RIFF"), false);
    }

    // A cover of more than a million bytes is no fault of the song.
    void mp3WithALargeCoverIsReadAndSavedWhole() {
        const auto withTag = [](int size) {
            const QByteArray title = id3v2TextFrame(3, "TIT2", "Long tag"_s);
            return id3v2TagAround(3, QByteArray(size - title.size(), '\0') + title) + silentMp3Frames(50);
        };
        for (const int size : {999990, 999991, 1000000, 1000001, 3000000}) {
            SongOnDisk file("a.mp3"_s, withTag(size));
            same(qPrintable("tag of %1"_s.arg(size)), file.info().title, "Long tag"_s);
            // Saved unchanged, nothing of tag and audio is lost, wherever the reader stopped.
            QVERIFY(file.save());
            QVERIFY2(file.content() == withTag(size), qPrintable("tag of %1, saved"_s.arg(size)));
        }
    }

    void tagOfSixtyFourMebibytesIsRead() {
        const PcFolder folder;
        const QByteArray start = "ID3\x03\0\0"_b + "20000000"_hex + id3v2TextFrame(3, "TIT2", "Long tag"_s);
        const QString path = putFile(folder.path("a.mp3"_s), start);
        QVERIFY(QFile::resize(path, (64 << 20) + 10));
        MetaSong song;
        QVERIFY(song.importFile(path));
        SongInfo info;
        song.getSongInfo(info);
        QCOMPARE(info.title, "Long tag"_s);
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
    /// Whether 40 bytes are taken. Fewer than ten are no MP3, whatever they begin with.
    static bool isMp3(const QString &name, const QByteArray &start) {
        MetaSong song;
        if (isTaken(song, name, start.leftJustified(9, '\0')))
            failTest("nine bytes are taken"_s);
        return isTaken(song, name, start.leftJustified(40, '\0'));
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
