#include "songfactory/songfactory.h"
#include "songfiles/lzhuff.h"
#include "songfiles/metasong.h"
#include "songtest.h"
#include "support/logcapture.h"

#include <QtTest>

class TestMetaSong : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void newSongIsUnknownAndEmpty();
    void formatNamesFollowTheirCodes_data();
    void formatNamesFollowTheirCodes();
    void songIsRecognisedByItsFirstBytes_data();
    void songIsRecognisedByItsFirstBytes();
    void mp3IsRecognisedByItsNameAndItsFirstBytes_data();
    void mp3IsRecognisedByItsNameAndItsFirstBytes();
    void fileThatCannotBeOpenedIsRefused();
    void fileOfFewerThanFourBytesIsRefusedWithoutAMessage();
    void mf5FileOf1000BytesIsRefused();
    void mfxWithoutAStreamIsSkippedWithAMessage();
    void mfxWhoseStreamIsTooLongIsSkippedAfterTheCodecsOwnLines();
    void mfxWhoseStreamIsNoMidiIsSkippedWithAMessage();
    void midiThatIsCutIsRefused();
    void failedImportLeavesTheFormatAsItWas();
    void mp3IsReadUpToAMillionBytes_data();
    void mp3IsReadUpToAMillionBytes();
    void threeExtraBytesOfAnMf4SongAreDropped();
    void infoIsClearedFirst();
    void infoOfAMidiSong_data();
    void infoOfAMidiSong();
    void infoOfAnMfxSong_data();
    void infoOfAnMfxSong();
    void mfxSongIsAlwaysTheMakers();
    void infoOfAnMp3Song_data();
    void infoOfAnMp3Song();
    void tagOfVersion2HasNoFrameOfAFourLetterName();
    void karaokeSongReadsTheNameOfItsWordTrack();
    void dumpWritesEveryField();
    void dumpListsMarkers();
    void addMarkerTellsHowLongItIs();
    void addMarkerWithoutAStreamInsertsNothing();

private:
    QString file(const QString &name, const QByteArray &bytes)
    {
        const QString path = m_dir->filePath(name);
        return SongTest::write(path, bytes) ? path : QString();
    }
    SongInfo imported(const QString &name, const QByteArray &bytes)
    {
        MetaSong song;
        SongInfo info;
        if (song.importFile(file(name, bytes)))
            song.getSongInfo(info);
        return info;
    }

    QScopedPointer<QTemporaryDir> m_dir;
};

void TestMetaSong::init()
{
    m_dir.reset(new QTemporaryDir);
    QVERIFY(m_dir->isValid());
}

void TestMetaSong::newSongIsUnknownAndEmpty()
{
    const MetaSong song;
    QCOMPARE(song.formatCode(), int(UnknownFormat));
    SongInfo info = SongTest::fullInfo();
    song.getSongInfo(info);
    QCOMPARE(info.format, QStringLiteral("UNKNOWN"));
    QVERIFY(info.title.isEmpty() && info.markers.isEmpty() && !info.isQArte);
}

void TestMetaSong::formatNamesFollowTheirCodes_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("name");
    const QStringList names = {QStringLiteral("UNKNOWN"), QStringLiteral("MIDI"),   QStringLiteral("MIDI"),
                               QStringLiteral("MF3"),     QStringLiteral("MF4"),    QStringLiteral("MF5"),
                               QStringLiteral("MP3"),     QStringLiteral("UNKNOWN")};
    for (int code = 0; code < names.size(); ++code)
        QTest::newRow(qPrintable(QString::number(code))) << code << names.at(code);
    QTest::newRow("-1") << -1 << QStringLiteral("UNKNOWN");
    QTest::newRow("255") << 255 << QStringLiteral("UNKNOWN");
}

void TestMetaSong::formatNamesFollowTheirCodes()
{
    QFETCH(int, code);
    QTEST(MetaSong::formatName(code), "name");
}

void TestMetaSong::songIsRecognisedByItsFirstBytes_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("code");
    const SongInfo info = SongTest::fullInfo();
    QTest::newRow("MIDI format 0") << QStringLiteral("a.mid") << SongFactory::midi(info, 0) << 1;
    QTest::newRow("MIDI format 1") << QStringLiteral("a.mid") << SongFactory::midi(info, 1) << 2;
    QTest::newRow("MIDI format 2") << QStringLiteral("a.mid") << SongFactory::midi(info, 2) << 2;
    QTest::newRow("MIDI under any name") << QStringLiteral("a.txt") << SongFactory::midi(info, 0) << 1;
    QTest::newRow("MIDI called MP3") << QStringLiteral("a.mp3") << SongFactory::midi(info, 0) << 1;
    QTest::newRow("karaoke") << QStringLiteral("a.kar") << SongFactory::karaoke({}, {QStringLiteral("la")}) << 2;
    QTest::newRow("MF3") << QStringLiteral("a.mf3") << SongFactory::mfx(3, info) << 3;
    QTest::newRow("MF4") << QStringLiteral("a.mf4") << SongFactory::mfx(4, info) << 4;
    QTest::newRow("MF5") << QStringLiteral("a.mf5") << SongFactory::mfx(5, info) << 5;
    QTest::newRow("MF5 called MF3") << QStringLiteral("a.mf3") << SongFactory::mfx(5, info) << 5;
    QTest::newRow("MP3 without tag") << QStringLiteral("a.mp3") << SongFactory::mp3(0, info) << 6;
    QTest::newRow("MP3 with tag") << QStringLiteral("a.mp3") << SongFactory::mp3(3, info) << 6;
    QTest::newRow("text") << QStringLiteral("a.mid") << QByteArray("just some text of a letter") << 0;
}

void TestMetaSong::songIsRecognisedByItsFirstBytes()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    QFETCH(int, code);
    MetaSong song;
    QCOMPARE(song.importFile(file(name, bytes)), code != 0);
    QCOMPARE(song.formatCode(), code);
}

void TestMetaSong::mp3IsRecognisedByItsNameAndItsFirstBytes_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("start");
    QTest::addColumn<bool>("accepted");
    const QByteArray tag("ID3\x03\0\0\0\0\0\0", 10);
    QTest::newRow("ID3 in song.Mp3") << QStringLiteral("song.Mp3") << tag << true;
    QTest::newRow("ID3 in song.wav") << QStringLiteral("song.wav") << tag << false;
    QTest::newRow("no dot before MP3") << QStringLiteral("songmP3") << tag << true;
    QTest::newRow("MP3 inside the name") << QStringLiteral("song.mp3.bak") << tag << false;
    QTest::newRow("00 00") << QStringLiteral("s.mp3") << QByteArray::fromHex("0000FFFB") << true;
    QTest::newRow("00 01") << QStringLiteral("s.mp3") << QByteArray::fromHex("0001FFFB") << false;
    QTest::newRow("FF FB") << QStringLiteral("s.mp3") << QByteArray::fromHex("FFFB90C4") << true;
    QTest::newRow("FF F3") << QStringLiteral("s.mp3") << QByteArray::fromHex("FFF390C4") << true;
    QTest::newRow("FF F2") << QStringLiteral("s.mp3") << QByteArray::fromHex("FFF290C4") << false;
    QTest::newRow("FF FF") << QStringLiteral("s.mp3") << QByteArray::fromHex("FFFF90C4") << true;
    QTest::newRow("FF 05") << QStringLiteral("s.mp3") << QByteArray::fromHex("FF0590C4") << true;
    QTest::newRow("FF 00") << QStringLiteral("s.mp3") << QByteArray::fromHex("FF0090C4") << true;
    QTest::newRow("FF 7F") << QStringLiteral("s.mp3") << QByteArray::fromHex("FF7F90C4") << true;
    QTest::newRow("FF 80") << QStringLiteral("s.mp3") << QByteArray::fromHex("FF8090C4") << false;
    QTest::newRow("FE FB") << QStringLiteral("s.mp3") << QByteArray::fromHex("FEFB90C4") << false;
    QTest::newRow("RIFF") << QStringLiteral("s.mp3") << QByteArray("RIFF") << false;
}

void TestMetaSong::mp3IsRecognisedByItsNameAndItsFirstBytes()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, start);
    QFETCH(bool, accepted);
    MetaSong song;
    QCOMPARE(song.importFile(file(name, start.leftJustified(40, '\0'))), accepted);
    // Fewer than ten bytes are no MP3, whatever they begin with.
    MetaSong shorter;
    QVERIFY(!shorter.importFile(file(name, start.leftJustified(40, '\0').left(9))));
}

void TestMetaSong::fileThatCannotBeOpenedIsRefused()
{
    const LogCapture log;
    MetaSong song;
    QVERIFY(!song.importFile(m_dir->filePath(QStringLiteral("missing.mid"))));
    QVERIFY(!song.importFile(QString()));
    QVERIFY(!song.importFile(m_dir->path()));
    QCOMPARE(song.formatCode(), int(UnknownFormat));
}

void TestMetaSong::fileOfFewerThanFourBytesIsRefusedWithoutAMessage()
{
    const LogCapture log;
    MetaSong song;
    QVERIFY(!song.importFile(file(QStringLiteral("a.mid"), QByteArray())));
    QVERIFY(!song.importFile(file(QStringLiteral("b.mid"), "MTh")));
    QVERIFY(!song.importFile(file(QStringLiteral("c.mp3"), "ID3")));
    QVERIFY(log.lines().isEmpty());
}

void TestMetaSong::mf5FileOf1000BytesIsRefused()
{
    const QByteArray whole = SongFactory::mfx(5, SongTest::fullInfo());
    MetaSong song;
    QVERIFY(!song.importFile(file(QStringLiteral("a.mf5"), whole.left(1000))));
    QVERIFY(!song.importFile(file(QStringLiteral("b.mf5"), whole.left(1023))));
    QVERIFY(song.importFile(file(QStringLiteral("c.mf5"), whole)));
}

void TestMetaSong::mfxWithoutAStreamIsSkippedWithAMessage()
{
    const LogCapture log;
    MetaSong song;
    QVERIFY(!song.importFile(
        file(QStringLiteral("a.mf3"), SongFactory::mfxHeader(3, SongTest::fullInfo(), 512, 0) + QByteArray(4, '\0'))));
    QCOMPARE(log.texts(), QStringList(QStringLiteral("[MetaSong::importFile] LzHuff Expand filed, skipping file")));
    QCOMPARE(log.lines().constFirst().type, QtDebugMsg);
    QCOMPARE(song.formatCode(), int(UnknownFormat));
}

void TestMetaSong::mfxWhoseStreamIsTooLongIsSkippedAfterTheCodecsOwnLines()
{
    const QByteArray oneByteTooLong = QByteArray::fromHex("21A10700"); // 500,001
    const LogCapture log;
    MetaSong song;
    QVERIFY(!song.importFile(file(QStringLiteral("a.mf5"),
                                  SongFactory::mfxHeader(5, SongTest::fullInfo(), 0, 0) + oneByteTooLong + "stream")));
    QCOMPARE(log.texts().size(), 6);
    QCOMPARE(log.texts().at(2), QStringLiteral("Text size:  500001"));
    QCOMPARE(log.texts().mid(4),
             QStringList({QStringLiteral("Expand: ERROR"),
                          QStringLiteral("[MetaSong::importFile] LzHuff Expand filed, skipping file")}));
}

void TestMetaSong::mfxWhoseStreamIsNoMidiIsSkippedWithAMessage()
{
    QByteArray compressed;
    LzHuff codec;
    codec.compress(QByteArray("certainly no MIDI stream at all"), compressed);
    const LogCapture log;
    MetaSong song;
    QVERIFY(!song.importFile(
        file(QStringLiteral("a.mf4"), SongFactory::mfxHeader(4, SongTest::fullInfo(), 0, 0) + compressed)));
    QCOMPARE(log.texts(), QStringList(QStringLiteral("[MetaSong::importFile] MidiStream corrupted, skipping file")));
}

void TestMetaSong::midiThatIsCutIsRefused()
{
    const LogCapture log;
    MetaSong song;
    QVERIFY(!song.importFile(file(QStringLiteral("a.mid"), SongFactory::midi(SongTest::fullInfo()).left(21))));
    QCOMPARE(log.texts(), QStringList(QStringLiteral("[MetaSong::importFile] MidiStream corrupted, skipping file")));
}

void TestMetaSong::failedImportLeavesTheFormatAsItWas()
{
    MetaSong song;
    QVERIFY(song.importFile(file(QStringLiteral("a.mp3"), SongFactory::mp3(3, SongTest::fullInfo()))));
    QVERIFY(!song.importFile(file(QStringLiteral("b.mid"), SongFactory::midi(SongTest::fullInfo()).left(21))));
    QCOMPARE(song.formatCode(), int(Mp3Format));
    QVERIFY(!song.importFile(file(QStringLiteral("c.mf3"), SongFactory::mfx(3, SongInfo()).left(513))));
    QCOMPARE(song.formatCode(), int(Mp3Format));
}

void TestMetaSong::mp3IsReadUpToAMillionBytes_data()
{
    QTest::addColumn<int>("tagSize");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("999,990") << 999990 << true;
    QTest::newRow("999,991, its last byte is not read") << 999991 << true;
    QTest::newRow("1,000,000") << 1000000 << true;
    QTest::newRow("1,000,001") << 1000001 << false;
}

void TestMetaSong::mp3IsReadUpToAMillionBytes()
{
    QFETCH(int, tagSize);
    QFETCH(bool, accepted);
    const QByteArray title = SongFactory::id3v2TextFrame(3, "TIT2", QStringLiteral("Long tag"));
    const QByteArray frames = title + QByteArray(tagSize - title.size(), '\0');
    const QByteArray bytes = SongFactory::id3v2TagAround(3, frames) + SongFactory::silentMp3Frames(50);
    MetaSong song;
    const QString path = file(QStringLiteral("a.mp3"), bytes);
    QCOMPARE(song.importFile(path), accepted);
    if (!accepted)
        return;
    SongInfo info;
    song.getSongInfo(info);
    QCOMPARE(info.title, QStringLiteral("Long tag"));
    // Saved unchanged, nothing of tag and audio is lost, wherever the reader stopped.
    QVERIFY(song.saveToFile(path));
    QCOMPARE(SongTest::read(path), bytes);
}

void TestMetaSong::threeExtraBytesOfAnMf4SongAreDropped()
{
    // Were they kept, the first event would stand behind FF 00 FF: adding a title and reading it would still work, but
    // the stream that is saved would have them twice.
    const QString path = file(QStringLiteral("a.mf4"), SongFactory::mfx(4, SongTest::fullInfo()));
    MetaSong song;
    QVERIFY(song.importFile(path));
    QVERIFY(song.saveToFile(path));
    QByteArray stream;
    LzHuff codec;
    QVERIFY(codec.expand(SongTest::read(path).mid(512), stream));
    const int data = stream.indexOf("MTrk") + 8;
    QCOMPARE(stream.mid(data, 7), QByteArray::fromHex("FF00FF") + QByteArray::fromHex("00FF0306"));
    QCOMPARE(stream.size(), SongFactory::midi(SongTest::fullInfo()).size() + 3);
}

void TestMetaSong::infoIsClearedFirst()
{
    MetaSong song;
    QVERIFY(song.importFile(file(QStringLiteral("a.mp3"), SongFactory::mp3(3, SongInfo()))));
    SongInfo info = SongTest::fullInfo();
    info.filename = QStringLiteral("x");
    song.getSongInfo(info);
    QCOMPARE(info.format, QStringLiteral("MP3"));
    QVERIFY(info.title.isEmpty() && info.artist.isEmpty() && info.genre.isEmpty() && info.author.isEmpty());
    QVERIFY(info.key.isEmpty() && info.filename.isEmpty() && info.markers.isEmpty() && info.MfxLongName.isEmpty());
    QVERIFY(info.length == 0 && info.userBpm == 0 && !info.isQArte && info.MfxFlags == 0);
}

void TestMetaSong::infoOfAMidiSong_data()
{
    QTest::addColumn<int>("headerFormat");
    QTest::addColumn<bool>("standardMarkers");
    QTest::newRow("format 0") << 0 << false;
    QTest::newRow("format 1") << 1 << false;
    QTest::newRow("standard markers") << 0 << true;
}

void TestMetaSong::infoOfAMidiSong()
{
    QFETCH(int, headerFormat);
    QFETCH(bool, standardMarkers);
    SongInfo expected = SongTest::fullInfo();
    const auto style = standardMarkers ? SongFactory::Markers::Standard : SongFactory::Markers::WithBars;
    const SongInfo info = imported(QStringLiteral("a.mid"), SongFactory::midi(expected, headerFormat, style));
    if (standardMarkers)
        expected.markers = {{0, QStringLiteral("Intro")}, {0, QStringLiteral("Ritornello")}};
    QCOMPARE(info.format, QStringLiteral("MIDI"));
    SongTest::compareFields(info, expected);
    QVERIFY(info.isQArte);
    QVERIFY(info.markers == expected.markers);
    QVERIFY(info.MfxLongName.isEmpty() && info.MfxFlags == 0 && info.filename.isEmpty());
}

void TestMetaSong::infoOfAnMfxSong_data()
{
    QTest::addColumn<int>("version");
    QTest::newRow("MF3") << 3;
    QTest::newRow("MF4") << 4;
    QTest::newRow("MF5") << 5;
}

void TestMetaSong::infoOfAnMfxSong()
{
    QFETCH(int, version);
    const SongInfo expected = SongTest::fullInfo();
    SongInfo other = expected; // in the stream, where only key, length and markers are taken from
    other.title = other.artist = other.genre = other.author = QStringLiteral("other");
    other.userBpm = 77;
    QByteArray stream = SongFactory::midi(other);
    if (version == 4)
        stream.insert(stream.indexOf("MTrk") + 8, QByteArray::fromHex("FF00FF"));
    QByteArray compressed;
    LzHuff codec;
    codec.compress(stream, compressed);
    const SongInfo info =
        imported(QStringLiteral("a.mfx"), SongFactory::mfxHeader(version, expected, 0, 0) + compressed);
    QCOMPARE(info.format, QStringLiteral("MF") + QString::number(version));
    SongTest::compareFields(info, expected);
    QVERIFY(info.markers == expected.markers);
    QCOMPARE(info.MfxLongName, expected.MfxLongName);
    QCOMPARE(info.MfxFlags, quint8(0x20));
}

void TestMetaSong::mfxSongIsAlwaysTheMakers()
{
    for (int version = 3; version <= 5; ++version)
        QVERIFY(imported(QStringLiteral("a.mfx"), SongFactory::mfx(version, SongInfo())).isQArte);
    QVERIFY(!imported(QStringLiteral("a.mid"), SongFactory::midi(SongInfo())).isQArte);
}

void TestMetaSong::infoOfAnMp3Song_data()
{
    QTest::addColumn<int>("version");
    QTest::addColumn<int>("encoding");
    QTest::newRow("2.3 Latin-1") << 3 << 0;
    QTest::newRow("2.3 UTF-16") << 3 << 1;
    QTest::newRow("2.4 UTF-8") << 4 << 3;
}

void TestMetaSong::infoOfAnMp3Song()
{
    QFETCH(int, version);
    QFETCH(int, encoding);
    SongInfo expected = SongTest::fullInfo();
    expected.title = QStringLiteral("Perché");
    const SongInfo info = imported(QStringLiteral("a.mp3"), SongFactory::mp3(version, expected, encoding));
    QCOMPARE(info.format, QStringLiteral("MP3"));
    SongTest::compareFields(info, expected);
    QVERIFY(info.isQArte && info.markers.isEmpty());
}

void TestMetaSong::tagOfVersion2HasNoFrameOfAFourLetterName()
{
    const SongInfo info = imported(QStringLiteral("a.mp3"), SongFactory::mp3(2, SongTest::fullInfo()));
    QCOMPARE(info.format, QStringLiteral("MP3"));
    QVERIFY(info.title.isEmpty() && info.artist.isEmpty() && info.length == 0);
}

void TestMetaSong::karaokeSongReadsTheNameOfItsWordTrack()
{
    const SongInfo info =
        imported(QStringLiteral("a.kar"),
                 SongFactory::karaoke({QStringLiteral("@TVolare")}, {QStringLiteral("Vo"), QStringLiteral("la")}));
    QCOMPARE(info.format, QStringLiteral("MIDI"));
    QCOMPARE(info.title, QStringLiteral("Words"));
}

void TestMetaSong::dumpWritesEveryField()
{
    SongInfo info = SongTest::fullInfo();
    info.filename = QStringLiteral("E:/a.mf4");
    info.format = QStringLiteral("MF4");
    info.markers.clear();
    info.MfxFlags = 1;
    const LogCapture log;
    MetaSong().dumpInfo(info);
    const QStringList expected = {
        QStringLiteral("Dump Info song ----------------------------------------------"),
        QStringLiteral("Format     : \"MF4\""),
        QStringLiteral("Filename   : \"E:/a.mf4\""),
        QStringLiteral("Is Q-Arte  : true"),
        QStringLiteral("Title      : \"Volare\""),
        QStringLiteral("Artist     : \"Domenico\""),
        QStringLiteral("Genre      : \"Canzone\""),
        QStringLiteral("Author     : \"Modugno\""),
        QStringLiteral("Length     : 215"),
        QStringLiteral("userBpm    : 128"),
        QStringLiteral("Key        : \"Bb\""),
        QStringLiteral("Markers:"),
        QStringLiteral("NO Markers"),
        QStringLiteral("MfxLongName: \"VOLARE.MID\""),
        QStringLiteral("MfxFlags   : 0x01"),
        QStringLiteral("Dump END ----------------------------------------------------"),
    };
    QCOMPARE(log.texts(), expected);
    for (const LogCapture::Line &line : log.lines())
        QCOMPARE(line.type, QtDebugMsg);
}

void TestMetaSong::dumpListsMarkers()
{
    SongInfo info;
    info.markers = {{1, QStringLiteral("Intro")}, {300, QString()}};
    info.MfxFlags = 0xA5;
    const LogCapture log;
    MetaSong().dumpInfo(info);
    QCOMPARE(log.texts().at(3), QStringLiteral("Is Q-Arte  : false"));
    QCOMPARE(log.texts().mid(11, 5),
             QStringList({QStringLiteral("Markers:"), QStringLiteral("  bar: 1   text: \"Intro\""),
                          QStringLiteral("  bar: 300   text: \"\""), QStringLiteral("MfxLongName: \"\""),
                          QStringLiteral("MfxFlags   : 0xa5")}));
}

void TestMetaSong::addMarkerTellsHowLongItIs()
{
    MetaSong song;
    SongInfo info = SongTest::fullInfo();
    QVERIFY(song.importFile(file(QStringLiteral("a.mid"), SongFactory::midi(info))));
    const LogCapture log;
    // 00 FF 4B n 06, two bytes of bar number, four of text
    QCOMPARE(song.addMarker(QStringLiteral("Fine"), 512), 11);
    QCOMPARE(log.texts(), QStringList({QStringLiteral("[MetaSong] addMarker"), QStringLiteral("Marker added, len=  11"),
                                       QStringLiteral("-----------------------------------"), QString()}));
    song.getSongInfo(info);
    QCOMPARE(info.markers.size(), 3);
    QVERIFY((info.markers.constFirst() == SongMarker{512, QStringLiteral("Fine")}));
}

void TestMetaSong::addMarkerWithoutAStreamInsertsNothing()
{
    MetaSong song;
    const LogCapture log;
    QCOMPARE(song.addMarker(QStringLiteral("Fine"), 1), 0);
    QVERIFY(log.contains(QtDebugMsg, QStringLiteral("Marker added, len=  0")));
    QVERIFY(song.importFile(file(QStringLiteral("a.mp3"), SongFactory::mp3(3, SongInfo()))));
    QCOMPARE(song.addMarker(QStringLiteral("Fine"), 1), 0);
}

QTEST_GUILESS_MAIN(TestMetaSong)
#include "tst_metasong.moc"
