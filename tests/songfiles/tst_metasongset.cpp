#include "songfactory/songfactory.h"
#include "songfiles/lzhuff.h"
#include "songfiles/metasong.h"
#include "songtest.h"
#include "support/logcapture.h"

#include <QtTest>

/// Changing a song in memory, by hand and automatically.
class TestMetaSongSet : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void callIsLogged_data();
    void callIsLogged();
    void manualReplacesEveryField_data();
    void manualReplacesEveryField();
    void automaticFillsAnEmptySong_data();
    void automaticFillsAnEmptySong();
    void automaticKeepsWhatTheSongHas_data();
    void automaticKeepsWhatTheSongHas();
    void automaticNeverChangesTheArtist_data();
    void automaticNeverChangesTheArtist();
    void automaticNeedsTheMakersMarkForNumbersAndKey_data();
    void automaticNeedsTheMakersMarkForNumbersAndKey();
    void automaticDoesNotWriteNegativeNumbers_data();
    void automaticDoesNotWriteNegativeNumbers();
    void midiTitleThatExtendsTheOldOneReplacesIt_data();
    void midiTitleThatExtendsTheOldOneReplacesIt();
    void midiTitleIsCutTo125Characters();
    void automaticMarkersKeepTheirOrderAndAreCut();
    void automaticMarkersRemoveTheAuthorWhichMidiSongsGetBack();
    void standardMarkersDoNotKeepMarkersOut();
    void dashInAnMfxHeaderCountsAsMissing_data();
    void dashInAnMfxHeaderCountsAsMissing();
    void mfxTempoOutsideItsRangeIsReplaced_data();
    void mfxTempoOutsideItsRangeIsReplaced();
    void mfxFlagOfMarkersIsSetAndNeverCleared();
    void mfxTextsInsideTheStreamStayAsTheyAre();
    void medtIsAddedOnceInBothModes();
    void framesOfAnMp3AreWrittenInOrder_data();
    void framesOfAnMp3AreWrittenInOrder();
    void eventsOfAMidiSongAreWrittenInOrder_data();
    void eventsOfAMidiSongAreWrittenInOrder();
    void manualZeroRemovesNumbersOfAnMp3();
    void titleAccentsReadBackByteByByte();
    void longAccentedTitleCanBeSetTwice();
    void unknownKeyLeavesTheSongWithoutOne();

private:
    bool load(MetaSong &song, const QByteArray &bytes)
    {
        const QString path = m_dir->filePath(QStringLiteral("song.mp3"));
        return SongTest::write(path, bytes) && song.importFile(path);
    }
    /// What @p bytes read as after @p change was set.
    SongInfo changed(const QByteArray &bytes, const SongInfo &change, bool manual)
    {
        MetaSong song;
        SongInfo info;
        if (!load(song, bytes))
            qFatal("the factory's song is refused");
        song.setSongInfo(change, manual);
        song.getSongInfo(info);
        return info;
    }
    /// The file that @p bytes become when @p change is set and the song is saved; empty when it is not saved.
    QByteArray savedAfter(const QByteArray &bytes, const SongInfo &change, bool manual)
    {
        MetaSong song;
        if (!load(song, bytes))
            return QByteArray();
        song.setSongInfo(change, manual);
        const QString path = m_dir->filePath(QStringLiteral("song.mp3"));
        return song.saveToFile(path) ? SongTest::read(path) : QByteArray();
    }

    QScopedPointer<QTemporaryDir> m_dir;
};

namespace {

enum Kind
{
    Midi,
    Mf3,
    Mf4,
    Mf5,
    Mp3,
};

QByteArray make(int kind, const SongInfo &info)
{
    switch (kind) {
    case Midi:
        return SongFactory::midi(info, 1);
    case Mp3:
        return SongFactory::mp3(3, info);
    default:
        return SongFactory::mfx(kind - Mf3 + 3, info);
    }
}

void addKinds()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("MIDI") << int(Midi);
    QTest::newRow("MF3") << int(Mf3);
    QTest::newRow("MF4") << int(Mf4);
    QTest::newRow("MF5") << int(Mf5);
    QTest::newRow("MP3") << int(Mp3);
}

SongInfo otherInfo()
{
    SongInfo info;
    info.title = QStringLiteral("Azzurro");
    info.artist = QStringLiteral("Adriano");
    info.genre = QStringLiteral("Pop");
    info.author = QStringLiteral("Paolo");
    info.length = 90;
    info.userBpm = 77;
    info.key = QStringLiteral("F#-");
    info.isQArte = true;
    info.markers = {{7, QStringLiteral("Coro")}};
    return info;
}

} // namespace

void TestMetaSongSet::init()
{
    m_dir.reset(new QTemporaryDir);
    QVERIFY(m_dir->isValid());
}

void TestMetaSongSet::callIsLogged_data()
{
    addKinds();
}

void TestMetaSongSet::callIsLogged()
{
    QFETCH(int, kind);
    MetaSong song;
    QVERIFY(load(song, make(kind, SongInfo())));
    LogCapture log;
    song.setSongInfo(otherInfo(), true);
    QCOMPARE(log.texts(), QStringList({QStringLiteral("[MetaSong] setSongInfo, manual:  true"), QString()}));
    log.clear();
    song.setSongInfo(otherInfo(), false);
    QCOMPARE(log.texts(), QStringList({QStringLiteral("[MetaSong] setSongInfo, manual:  false"), QString()}));
    QCOMPARE(log.lines().constFirst().type, QtDebugMsg);
}

void TestMetaSongSet::manualReplacesEveryField_data()
{
    addKinds();
}

void TestMetaSongSet::manualReplacesEveryField()
{
    QFETCH(int, kind);
    const SongInfo info = changed(make(kind, SongTest::fullInfo()), otherInfo(), true);
    SongTest::compareFields(info, otherInfo());
    // Markers are no matter of this call when it is manual.
    if (kind != Mp3)
        QVERIFY(info.markers == SongTest::fullInfo().markers);
}

void TestMetaSongSet::automaticFillsAnEmptySong_data()
{
    addKinds();
}

void TestMetaSongSet::automaticFillsAnEmptySong()
{
    QFETCH(int, kind);
    SongInfo expected = otherInfo();
    expected.artist.clear();
    const SongInfo info = changed(make(kind, SongInfo()), otherInfo(), false);
    SongTest::compareFields(info, expected);
    if (kind != Mp3)
        QVERIFY(info.markers == otherInfo().markers);
}

void TestMetaSongSet::automaticKeepsWhatTheSongHas_data()
{
    addKinds();
}

void TestMetaSongSet::automaticKeepsWhatTheSongHas()
{
    QFETCH(int, kind);
    const SongInfo info = changed(make(kind, SongTest::fullInfo()), otherInfo(), false);
    SongTest::compareFields(info, SongTest::fullInfo());
    if (kind != Mp3)
        QVERIFY(info.markers == SongTest::fullInfo().markers);
}

void TestMetaSongSet::automaticNeverChangesTheArtist_data()
{
    addKinds();
}

void TestMetaSongSet::automaticNeverChangesTheArtist()
{
    QFETCH(int, kind);
    QCOMPARE(changed(make(kind, SongInfo()), otherInfo(), false).artist, QString());
    QCOMPARE(changed(make(kind, SongTest::fullInfo()), otherInfo(), false).artist, QStringLiteral("Domenico"));
}

void TestMetaSongSet::automaticNeedsTheMakersMarkForNumbersAndKey_data()
{
    addKinds();
}

void TestMetaSongSet::automaticNeedsTheMakersMarkForNumbersAndKey()
{
    QFETCH(int, kind);
    SongInfo change = otherInfo();
    change.isQArte = false;
    const SongInfo info = changed(make(kind, SongInfo()), change, false);
    QCOMPARE(info.length, 0);
    QCOMPARE(info.key, QString());
    // The tempo of an MFx song stands in its header and is filled in whoever made the song.
    QCOMPARE(info.userBpm, kind == Midi || kind == Mp3 ? 0 : 77);
    QCOMPARE(info.title, change.title);
}

void TestMetaSongSet::automaticDoesNotWriteNegativeNumbers_data()
{
    addKinds();
}

void TestMetaSongSet::automaticDoesNotWriteNegativeNumbers()
{
    QFETCH(int, kind);
    SongInfo change = otherInfo();
    change.length = -1;
    change.userBpm = -1;
    MetaSong song;
    QVERIFY(load(song, make(kind, SongInfo())));
    song.setSongInfo(change, false);
    // A number that was not written leaves room for one that comes later.
    song.setSongInfo(otherInfo(), false);
    SongInfo info;
    song.getSongInfo(info);
    QCOMPARE(info.length, 90);
    QCOMPARE(info.userBpm, 77);
}

void TestMetaSongSet::midiTitleThatExtendsTheOldOneReplacesIt_data()
{
    QTest::addColumn<QString>("old");
    QTest::addColumn<QString>("title");
    QTest::addColumn<bool>("replaced");
    const QString old = QStringLiteral("MY SONG");
    QTest::newRow("extends it in other letters") << old << QStringLiteral("My Song (live)") << true;
    QTest::newRow("the same in other letters") << old << QStringLiteral("my song") << true;
    QTest::newRow("holds it elsewhere") << old << QStringLiteral("Live: My Song") << false;
    QTest::newRow("shorter") << old << QStringLiteral("My") << false;
    QTest::newRow("empty") << old << QString() << false;
    QTest::newRow("the old one is blank") << QStringLiteral("  ") << QStringLiteral("Other") << true;
}

void TestMetaSongSet::midiTitleThatExtendsTheOldOneReplacesIt()
{
    QFETCH(QString, old);
    QFETCH(QString, title);
    QFETCH(bool, replaced);
    SongInfo song;
    song.title = old;
    SongInfo change;
    change.title = title;
    QCOMPARE(changed(make(Midi, song), change, false).title, replaced ? title : old);
}

void TestMetaSongSet::midiTitleIsCutTo125Characters()
{
    SongInfo change;
    change.title = QString(130, QLatin1Char('t'));
    QCOMPARE(changed(make(Midi, SongInfo()), change, false).title.size(), 125);
}

void TestMetaSongSet::automaticMarkersKeepTheirOrderAndAreCut()
{
    SongInfo change;
    change.markers = {
        {1, QStringLiteral("a")}, {2, QString(130, QLatin1Char('b'))}, {3, QStringLiteral("c")}, {4, QString()}};
    const SongInfo info = changed(make(Mf5, SongInfo()), change, false);
    QCOMPARE(info.markers.size(), 4);
    QVERIFY(info.markers.at(0) == change.markers.at(0));
    QCOMPARE(info.markers.at(1).bar, quint16(2));
    QVERIFY(info.markers.at(2) == change.markers.at(2));
    QVERIFY(info.markers.at(3) == change.markers.at(3));
}

void TestMetaSongSet::automaticMarkersRemoveTheAuthorWhichMidiSongsGetBack()
{
    SongInfo song;
    song.author = QStringLiteral("Old Author");
    SongInfo change;
    change.author = QStringLiteral("New Author");
    // No markers in the song: its author is removed, even when there are no markers to add, and filled in again.
    QCOMPARE(changed(make(Midi, song), change, false).author, QStringLiteral("New Author"));
    // With markers in the song its author stays.
    song.markers = {{1, QStringLiteral("m")}};
    QCOMPARE(changed(make(Midi, song), change, false).author, QStringLiteral("Old Author"));
}

void TestMetaSongSet::standardMarkersDoNotKeepMarkersOut()
{
    const QByteArray bytes = SongFactory::midi(SongTest::fullInfo(), 0, SongFactory::Markers::Standard);
    QVERIFY(changed(bytes, otherInfo(), false).markers == otherInfo().markers);
}

void TestMetaSongSet::dashInAnMfxHeaderCountsAsMissing_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("replaced");
    QTest::newRow("empty") << QString() << true;
    QTest::newRow("-") << QStringLiteral("-") << true;
    QTest::newRow("--") << QStringLiteral("--") << true;
    QTest::newRow("---") << QStringLiteral("---") << false;
    QTest::newRow("- between blanks") << QStringLiteral(" - ") << true;
    QTest::newRow("a text") << QStringLiteral("x") << false;
}

void TestMetaSongSet::dashInAnMfxHeaderCountsAsMissing()
{
    QFETCH(QString, text);
    QFETCH(bool, replaced);
    SongInfo song;
    song.title = song.author = song.genre = song.artist = text;
    const SongInfo info = changed(make(Mf3, song), otherInfo(), false);
    QCOMPARE(info.title, replaced ? otherInfo().title : text);
    QCOMPARE(info.author, replaced ? otherInfo().author : text);
    QCOMPARE(info.genre, replaced ? otherInfo().genre : text);
    QCOMPARE(info.artist, text.trimmed());
}

void TestMetaSongSet::mfxTempoOutsideItsRangeIsReplaced_data()
{
    QTest::addColumn<int>("tempo");
    QTest::addColumn<bool>("replaced");
    QTest::newRow("0") << 0 << true;
    QTest::newRow("1") << 1 << false;
    QTest::newRow("499") << 499 << false;
    QTest::newRow("500") << 500 << true;
}

void TestMetaSongSet::mfxTempoOutsideItsRangeIsReplaced()
{
    QFETCH(int, tempo);
    QFETCH(bool, replaced);
    SongInfo song;
    song.userBpm = tempo;
    QCOMPARE(changed(make(Mf4, song), otherInfo(), false).userBpm, replaced ? 77 : tempo);
    SongInfo none = otherInfo();
    none.userBpm = -1;
    QCOMPARE(changed(make(Mf4, song), none, false).userBpm, tempo);
}

void TestMetaSongSet::mfxFlagOfMarkersIsSetAndNeverCleared()
{
    SongInfo song;
    song.MfxFlags = 0x40;
    for (const bool manual : {false, true}) {
        MetaSong loaded;
        QVERIFY(load(loaded, make(Mf3, song)));
        SongInfo info;
        loaded.setSongInfo(SongInfo(), manual);
        loaded.getSongInfo(info);
        QCOMPARE(info.MfxFlags, quint8(0x40));
        loaded.setSongInfo(otherInfo(), manual);
        loaded.getSongInfo(info);
        QCOMPARE(info.MfxFlags, quint8(0x41));
        loaded.setSongInfo(SongInfo(), manual);
        loaded.getSongInfo(info);
        QCOMPARE(info.MfxFlags, quint8(0x41));
    }
}

void TestMetaSongSet::mfxTextsInsideTheStreamStayAsTheyAre()
{
    // Only key and length go into the stream of an MFx song; its title there is that of the file's maker.
    MetaSong song;
    const QString path = m_dir->filePath(QStringLiteral("a.mf3"));
    QVERIFY(SongTest::write(path, make(Mf3, SongTest::fullInfo())));
    QVERIFY(song.importFile(path));
    song.setSongInfo(otherInfo(), true);
    QVERIFY(song.saveToFile(path));
    QByteArray stream;
    LzHuff codec;
    QVERIFY(codec.expand(SongTest::read(path).mid(512), stream));
    RawMidiFile midi;
    QVERIFY(midi.load(stream));
    QCOMPARE(midi.title(), QStringLiteral("Volare"));
    QCOMPARE(midi.author(), QStringLiteral("Modugno"));
    QCOMPARE(midi.bpm(), 128);
    QCOMPARE(midi.key(), QStringLiteral("F#-"));
    QCOMPARE(midi.length(), 90);
}

void TestMetaSongSet::medtIsAddedOnceInBothModes()
{
    for (const bool manual : {false, true}) {
        const QString path = m_dir->filePath(QStringLiteral("a.mp3"));
        QVERIFY(SongTest::write(path, make(Mp3, SongTest::fullInfo())));
        MetaSong song;
        QVERIFY(song.importFile(path));
        song.setSongInfo(otherInfo(), manual);
        song.setSongInfo(otherInfo(), manual);
        QVERIFY(song.saveToFile(path));
        const QByteArray saved = SongTest::read(path);
        QCOMPARE(saved.count("MEDT"), 1);
        QCOMPARE(saved.mid(saved.indexOf("MEDT"), 14), QByteArray("MEDT\0\0\0\x04\0\0\0\0\0\0", 14));
    }
}

void TestMetaSongSet::framesOfAnMp3AreWrittenInOrder_data()
{
    QTest::addColumn<bool>("manual");
    QTest::addColumn<QByteArrayList>("frames");
    // Each frame goes to the front, so that the first written stands last.
    QTest::newRow("manual") << true << QByteArrayList({"MEDT", "TCON", "TPE1", "TLEN", "TKEY", "TBPM", "TCOM", "TIT2"});
    QTest::newRow("automatic") << false << QByteArrayList({"MEDT", "TCON", "TLEN", "TKEY", "TBPM", "TCOM", "TIT2"});
}

void TestMetaSongSet::framesOfAnMp3AreWrittenInOrder()
{
    QFETCH(bool, manual);
    QFETCH(QByteArrayList, frames);
    const QByteArray saved = savedAfter(make(Mp3, SongInfo()), otherInfo(), manual);
    int before = 0;
    for (const QByteArray &id : qAsConst(frames)) {
        const int at = saved.indexOf(id);
        QVERIFY2(at > before, id.constData());
        before = at;
    }
    QCOMPARE(saved.contains("TPE1"), manual);
}

void TestMetaSongSet::eventsOfAMidiSongAreWrittenInOrder_data()
{
    QTest::addColumn<bool>("manual");
    QTest::addColumn<QByteArray>("start");
    const QByteArray genre = QByteArray::fromHex("00FF4B0401") + "Pop";
    const QByteArray artist = QByteArray::fromHex("00FF4B0802") + "Adriano";
    const QByteArray bpm = QByteArray::fromHex("00FF4B0305") + "77";
    const QByteArray author = QByteArray::fromHex("00FF4B0603") + "Paolo";
    const QByteArray title = QByteArray::fromHex("00FF0307") + "Azzurro";
    const QByteArray length = QByteArray::fromHex("00FF4B0304") + "90";
    const QByteArray key = QByteArray::fromHex("00FF59020301");
    const QByteArray marker = QByteArray::fromHex("00FF4B07060007") + "Coro";
    // Each event goes to the front, so that the first written stands last.
    QTest::newRow("manual") << true << genre + artist + bpm + author + title + length + key;
    QTest::newRow("automatic") << false << genre + bpm + author + title + length + key + marker;
}

void TestMetaSongSet::eventsOfAMidiSongAreWrittenInOrder()
{
    QFETCH(bool, manual);
    QFETCH(QByteArray, start);
    const QByteArray before = make(Midi, SongInfo());
    const QByteArray saved = savedAfter(before, otherInfo(), manual);
    constexpr int kTrackDataStart = 22;
    QCOMPARE(saved.mid(kTrackDataStart, start.size()), start);
    QCOMPARE(saved.mid(kTrackDataStart + start.size()), before.mid(kTrackDataStart));
}

void TestMetaSongSet::manualZeroRemovesNumbersOfAnMp3()
{
    SongInfo change = otherInfo();
    change.length = 0;
    change.userBpm = -1;
    const SongInfo info = changed(make(Mp3, SongTest::fullInfo()), change, true);
    QCOMPARE(info.length, 0);
    QCOMPARE(info.userBpm, 0);
}

void TestMetaSongSet::titleAccentsReadBackByteByByte()
{
    SongInfo change;
    change.title = QStringLiteral("Perché");
    QCOMPARE(changed(make(Midi, SongInfo()), change, true).title, QStringLiteral("PerchÃ©"));
    QCOMPARE(changed(make(Mp3, SongInfo()), change, true).title, QStringLiteral("PerchÃ©"));
    QCOMPARE(changed(make(Mf3, SongInfo()), change, true).title, QStringLiteral("PerchÃ©"));
}

void TestMetaSongSet::longAccentedTitleCanBeSetTwice()
{
    // 250 bytes of text have a length byte that reads as negative.
    SongInfo change;
    change.title = QString(125, QChar(u'é'));
    MetaSong song;
    QVERIFY(load(song, make(Midi, SongTest::fullInfo())));
    song.setSongInfo(change, true);
    song.setSongInfo(change, true);
    const QString path = m_dir->filePath(QStringLiteral("saved.mid"));
    QVERIFY(song.saveToFile(path));
    MetaSong again;
    QVERIFY(again.importFile(path));
    SongInfo info;
    again.getSongInfo(info);
    QVERIFY(info.isQArte); // what stands behind the title is still found
    QCOMPARE(SongTest::read(path).right(4), QByteArray::fromHex("00FF2F00"));
}

void TestMetaSongSet::unknownKeyLeavesTheSongWithoutOne()
{
    SongInfo change = otherInfo();
    change.key = QStringLiteral("f#");
    QCOMPARE(changed(make(Midi, SongTest::fullInfo()), change, true).key, QString());
    change.key = QStringLiteral("G#");
    QCOMPARE(changed(make(Midi, SongTest::fullInfo()), change, true).key, QStringLiteral("E"));
}

QTEST_GUILESS_MAIN(TestMetaSongSet)
#include "tst_metasongset.moc"
