#include "songtest.h"
#include "support/given.h"
#include "support/logcapture.h"

using namespace SongFactory;

Q_DECLARE_METATYPE(ImportResult)

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

    void fileThatCannotBeOpenedIsRefused() {
        const LogCapture log;
        const PcFolder folder;
        MetaSong song;
        QVERIFY(!song.importFile(folder.path("missing.mid"_s)));
        QVERIFY(!song.importFile(QString()));
        QVERIFY(!song.importFile(folder.path()));
        QCOMPARE(song.formatCode(), int(UnknownFormat));
    }

    void brokenSongIsSkippedWithItsMessage() {
        const QString noExpansion = "[MetaSong::importFile] LzHuff Expand filed, skipping file"_s;
        const QString noMidi = "[MetaSong::importFile] MidiStream corrupted, skipping file"_s;
        const QString ruler(69, QLatin1Char('='));
        const QString tooLong = "WARNING: skipping file, compressed stream corrupted/wrong size !!!"_s;
        const QByteArray noStream = compressed("certainly no MIDI stream at all");
        const auto head = [](int version) { return mfxHeader(version, fullInfo(), 0, 0); };
        same("nothing", linesAt("a.mid"_s, ""), QStringList());
        same("MIDI of three bytes", linesAt("b.mid"_s, "MTh"), QStringList());
        same("MP3 of three bytes", linesAt("c.mp3"_s, "ID3"), QStringList());
        same("MIDI that is cut", linesAt("a.mid"_s, midi(fullInfo()).left(21)), QStringList(noMidi));
        same("MF5 of 1000 bytes", linesAt("a.mf5"_s, mfx(5, fullInfo()).left(1000)), QStringList());
        same("MF5 of 1023 bytes", linesAt("a.mf5"_s, mfx(5, fullInfo()).left(1023)), QStringList());
        same("MF3 without a stream", linesAt("a.mf3"_s, head(3) + "\0\0\0\0"_b), QStringList(noExpansion));
        same("MF4 whose stream is no MIDI", linesAt("a.mf4"_s, head(4) + noStream), QStringList(noMidi));
        same("MF5 whose stream is a byte too long", linesAt("a.mf5"_s, head(5) + littleEndian(500001) + "stream"),
             QStringList({ruler, tooLong, "Text size:  500001"_s, ruler, "Expand: ERROR"_s, noExpansion}));
    }

    void failedImportLeavesTheFormatAsItWas() {
        SongOnDisk file("a.mp3"_s, mp3(3, fullInfo()));
        QVERIFY(!isTaken(file.song, "b.mid"_s, midi(fullInfo()).left(21)));
        QCOMPARE(file.song.formatCode(), int(Mp3Format));
        QVERIFY(!isTaken(file.song, "c.mf3"_s, mfx(3, SongInfo()).left(513)));
        QCOMPARE(file.song.formatCode(), int(Mp3Format));
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

    void whyASongWasNotTakenCanBeTold_data() {
        columns<QString, QByteArray, qint64, ImportResult>("name", "start", "size", "result");
        const auto row = [](const char *name, const char *file, const QByteArray &start, ImportResult result,
                            qint64 size = 0) { ::row(name, QString::fromUtf8(file), start, size, result); };
        constexpr qint64 kMegabyte = 1 << 20;
        const auto header = [](const QByteArray &sizeBytes) { return "ID3\x03\0\0"_b + sizeBytes; };
        const QByteArray large = header("20000001"_hex);
        row("a song", "a.mid", midi(fullInfo()), ImportResult::Imported);
        row("three bytes", "a.mid", "MTh", ImportResult::NotASong);
        row("nothing", "a.mp3", "", ImportResult::NotASong);
        row("half a MIDI file", "a.mid", midi(fullInfo()).left(21), ImportResult::NotASong);
        row("half an MFx header", "a.mf3", mfx(3, fullInfo()).left(300), ImportResult::NotASong);
        row("half an MFx stream", "a.mf3", mfx(3, fullInfo()).left(513), ImportResult::NotASong);
        row("a tag that claims more than there is", "a.mp3", header("00000200"_hex), ImportResult::NotASong);
        row("a large tag that claims more than there is", "a.mp3", large, ImportResult::NotASong, kMegabyte);
        row("a tag of more than 64 MiB", "a.mp3", large, ImportResult::TooLarge, 65 * kMegabyte);
        row("a MIDI file of more than 256 MiB", "a.mid", "MThd", ImportResult::TooLarge, 256 * kMegabyte + 1);
    }
    void whyASongWasNotTakenCanBeTold() {
        const PcFolder folder;
        const QString path = putFile(folder.path(given<QString>("name")), given<QByteArray>("start"));
        if (given<qint64>("size") > 0)
            QVERIFY(QFile::resize(path, given<qint64>("size")));
        MetaSong song;
        QCOMPARE(song.importFile(path), given<ImportResult>("result") == ImportResult::Imported);
        QVERIFY(song.importResult() == given<ImportResult>("result"));
    }

    void fileThatCannotBeReadIsNotJudged() {
        MetaSong song;
        PcFolder folder;
        QVERIFY(!song.importFile(folder.path("missing.mid"_s)));
        QVERIFY(song.importResult() == ImportResult::NotRead);
        // A folder can be opened as little as a file whose reader has no right to it.
        folder.addFolder("folder.mid"_s);
        QVERIFY(!song.importFile(folder.path("folder.mid"_s)));
        QVERIFY(song.importResult() == ImportResult::NotRead);
#ifdef Q_OS_LINUX
        // Its first page is not mapped: every read of it fails, as on a disk with a bad sector.
        if (QFileInfo("/proc/self/mem"_s).isReadable()) {
            QVERIFY(QFile::link("/proc/self/mem"_s, folder.path("bad.mid"_s)));
            QVERIFY(!song.importFile(folder.path("bad.mid"_s)));
            QVERIFY(song.importResult() == ImportResult::NotRead);
        }
#endif
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
