#include "songtest.h"
#include "support/logcapture.h"

using namespace SongFactory;

/// Changing a song in memory, by hand and automatically.
class TestMetaSongSet : public QObject
{
    Q_OBJECT
private slots:
    void callIsLogged() {
        for (const int kind : {Midi, Mf3, Mf4, Mf5, Mp3}) {
            SongOnDisk file("song.mp3"_s, make(kind, SongInfo()));
            LogCapture log;
            file.song.setSongInfo(otherInfo(), true);
            file.song.setSongInfo(otherInfo(), false);
            same(kKindNames[kind], log.texts(),
                 QStringList({"[MetaSong] setSongInfo, manual:  true"_s, QString(),
                              "[MetaSong] setSongInfo, manual:  false"_s, QString()}));
            QCOMPARE(log.lines().constFirst().type, QtDebugMsg);
        }
    }

    void manualReplacesAndAutomaticFillsIn() {
        SongInfo replaced = otherInfo();
        replaced.markers = fullInfo().markers; // they are no matter of the call when it is manual
        SongInfo filled = otherInfo();
        filled.artist.clear();
        SongInfo noArtist = fullInfo();
        noArtist.artist.clear();
        SongInfo unmarked = otherInfo();
        unmarked.isQArte = false;
        for (const int kind : {Midi, Mf3, Mf4, Mf5, Mp3}) {
            const auto add = [kind](const char *name, const SongInfo &song, const SongInfo &change, bool manual,
                                    SongInfo expected) {
                if (kind == Mp3)
                    expected.markers.clear();
                same(qPrintable("%1, %2"_s.arg(QLatin1String(kKindNames[kind]), QLatin1String(name))),
                     fieldsOf(changed(make(kind, song), change, manual)), fieldsOf(expected));
            };
            add("manual replaces every field", fullInfo(), otherInfo(), true, replaced);
            add("automatic fills an empty song", SongInfo(), otherInfo(), false, filled);
            add("automatic keeps what the song has", fullInfo(), otherInfo(), false, fullInfo());
            add("automatic never changes the artist", noArtist, otherInfo(), false, noArtist);
            // The tempo of an MFx song stands in its header and is filled in whoever made the song.
            SongInfo textsAlone = filled;
            textsAlone.length = 0;
            textsAlone.userBpm = kind == Midi || kind == Mp3 ? 0 : 77;
            textsAlone.key.clear();
            add("automatic needs the maker's mark for numbers and key", SongInfo(), unmarked, false, textsAlone);
        }
    }

    void automaticDoesNotWriteNegativeNumbers() {
        SongInfo change = otherInfo();
        change.length = -1;
        change.userBpm = -1;
        for (const int kind : {Midi, Mf3, Mf4, Mf5, Mp3}) {
            SongOnDisk file("song.mp3"_s, make(kind, SongInfo()));
            file.song.setSongInfo(change, false);
            // A number that was not written leaves room for one that comes later.
            file.song.setSongInfo(otherInfo(), false);
            same(kKindNames[kind], file.info().length, 90);
            same(kKindNames[kind], file.info().userBpm, 77);
        }
    }

    void textIsReplacedOrStays() {
        const auto title = [](const QString &old, const QString &text) {
            return changed(make(Midi, titled(old)), titled(text), false).title;
        };
        same("title that extends the old one in other letters", title("MY SONG"_s, "My Song (live)"_s),
             "My Song (live)"_s);
        same("title that is the same in other letters", title("MY SONG"_s, "my song"_s), "my song"_s);
        same("title that holds the old one elsewhere", title("MY SONG"_s, "Live: My Song"_s), "MY SONG"_s);
        same("shorter title", title("MY SONG"_s, "My"_s), "MY SONG"_s);
        same("empty title", title("MY SONG"_s, QString()), "MY SONG"_s);
        same("title for a blank one", title("  "_s, "Other"_s), "Other"_s);
        same("title cut to 125 characters", title(QString(), QString(130, QLatin1Char('t'))),
             QString(125, QLatin1Char('t')));
        for (const int kind : {Midi, Mp3, Mf3})
            same("accents read back byte by byte", changed(make(kind, SongInfo()), titled("Perché"_s), true).title,
                 "PerchÃ©"_s);
        SongInfo song;
        song.author = "Old Author"_s;
        // No markers in the song: its author is removed, even when there are no markers to add, and filled in again.
        same("author of a song without markers", changed(make(Midi, song), otherInfo(), false).author, "Paolo"_s);
        SongInfo authorAlone;
        authorAlone.author = "New Author"_s;
        same("author without markers", changed(make(Midi, song), authorAlone, false).author, "New Author"_s);
        song.markers = {{1, "m"_s}};
        same("author of a song with markers", changed(make(Midi, song), authorAlone, false).author, "Old Author"_s);
        SongInfo change = otherInfo();
        change.key = "f#"_s;
        same("unknown key", changed(make(Midi, fullInfo()), change, true).key, QString());
        change.key = "G#"_s;
        same("key in extra spelling", changed(make(Midi, fullInfo()), change, true).key, "E"_s);
        // A dash in the header of an MFx song counts as missing.
        const auto texts = [](const QString &text) {
            SongInfo dashed;
            dashed.title = dashed.author = dashed.genre = dashed.artist = text;
            const SongInfo info = changed(make(Mf3, dashed), otherInfo(), false);
            return QStringList({info.title, info.author, info.genre, info.artist}).join(QLatin1Char('|'));
        };
        same("MFx texts, empty", texts(QString()), "Azzurro|Paolo|Pop|"_s);
        same("MFx texts, -", texts("-"_s), "Azzurro|Paolo|Pop|-"_s);
        same("MFx texts, --", texts("--"_s), "Azzurro|Paolo|Pop|--"_s);
        same("MFx texts, ---", texts("---"_s), "---|---|---|---"_s);
        same("MFx texts, - between blanks", texts(" - "_s), "Azzurro|Paolo|Pop|-"_s);
        same("MFx texts, a text", texts("x"_s), "x|x|x|x"_s);
    }

    void automaticMarkersKeepTheirOrderAndAreCut() {
        SongInfo change;
        change.markers = {{1, "a"_s}, {2, QString(130, QLatin1Char('b'))}, {3, "c"_s}, {4, QString()}};
        const SongInfo info = changed(make(Mf5, SongInfo()), change, false);
        change.markers[1].text.clear(); // cut to a length whose byte reads as negative
        QVERIFY(info.markers == change.markers);
    }

    void standardMarkersDoNotKeepMarkersOut() {
        const QByteArray bytes = midi(fullInfo(), 0, Markers::Standard);
        QVERIFY(changed(bytes, otherInfo(), false).markers == otherInfo().markers);
    }

    void mfxTempoOutsideItsRangeIsReplacedByOneToWrite() {
        const auto tempo = [](int before, int change) {
            SongInfo song;
            song.userBpm = before;
            SongInfo other = otherInfo();
            other.userBpm = change;
            return changed(make(Mf4, song), other, false).userBpm;
        };
        same("0", tempo(0, 77), 77);
        same("1", tempo(1, 77), 1);
        same("499", tempo(499, 77), 499);
        same("500", tempo(500, 77), 77);
        for (const int before : {0, 1, 499, 500})
            same(qPrintable("%1 by none"_s.arg(before)), tempo(before, -1), before);
    }

    void mfxFlagOfMarkersIsSetAndNeverCleared() {
        SongInfo song;
        song.MfxFlags = 0x40;
        for (const bool manual : {false, true}) {
            SongOnDisk file("song.mf3"_s, make(Mf3, song));
            file.song.setSongInfo(SongInfo(), manual);
            QCOMPARE(file.info().MfxFlags, quint8(0x40));
            file.song.setSongInfo(otherInfo(), manual);
            QCOMPARE(file.info().MfxFlags, quint8(0x41));
            file.song.setSongInfo(SongInfo(), manual);
            QCOMPARE(file.info().MfxFlags, quint8(0x41));
        }
    }

    void mfxTextsInsideTheStreamStayAsTheyAre() {
        // Only key and length go into the stream of an MFx song; its title there is that of the file's maker.
        RawMidiFile stream;
        QVERIFY(stream.load(streamOf(savedAfter(make(Mf3, fullInfo()), otherInfo(), true))));
        QCOMPARE(stream.title(), "Volare"_s);
        QCOMPARE(stream.author(), "Modugno"_s);
        QCOMPARE(stream.bpm(), 128);
        QCOMPARE(stream.key(), "F#-"_s);
        QCOMPARE(stream.length(), 90);
    }

    void medtIsAddedOnceInBothModes() {
        for (const bool manual : {false, true}) {
            SongOnDisk file("a.mp3"_s, make(Mp3, fullInfo()));
            file.song.setSongInfo(otherInfo(), manual);
            file.song.setSongInfo(otherInfo(), manual);
            QVERIFY(file.save());
            QCOMPARE(file.content().count("MEDT"), 1);
            QVERIFY(file.content().contains("MEDT\0\0\0\4\0\0\0\0\0\0"_b));
        }
    }

    void framesOfAnMp3AreWrittenInOrder() {
        const auto framesOf = [](bool manual) {
            const QByteArray saved = savedAfter(make(Mp3, SongInfo()), otherInfo(), manual);
            QMap<int, QString> frames;
            for (const QString &id : words("MEDT TCON TPE1 TLEN TKEY TBPM TCOM TIT2"))
                frames.insert(saved.indexOf(id.toLatin1()), id);
            frames.remove(-1);
            return QStringList(frames.values());
        };
        // Each frame goes to the front, so that the first written stands last.
        same("manual", framesOf(true), words("MEDT TCON TPE1 TLEN TKEY TBPM TCOM TIT2"));
        same("automatic", framesOf(false), words("MEDT TCON TLEN TKEY TBPM TCOM TIT2"));
    }

    void eventsOfAMidiSongAreWrittenInOrder() {
        constexpr int kTrackDataStart = 22;
        const QByteArray before = make(Midi, SongInfo());
        const auto savedTrack = [before](bool manual) {
            return savedAfter(before, otherInfo(), manual).mid(kTrackDataStart);
        };
        const QByteArray rest = before.mid(kTrackDataStart);
        const QByteArray genre = "00FF4B0401"_hex + "Pop";
        const QByteArray artist = "00FF4B0802"_hex + "Adriano";
        const QByteArray numbersAndTexts = "00FF4B0305"_hex + "77" + "00FF4B0603"_hex + "Paolo" + "00FF0307"_hex +
                                           "Azzurro" + "00FF4B0304"_hex + "90" + "00FF59020301"_hex;
        const QByteArray marker = "00FF4B07060007"_hex + "Coro";
        // Each event goes to the front, so that the first written stands last.
        same("manual", savedTrack(true), genre + artist + numbersAndTexts + rest);
        same("automatic", savedTrack(false), genre + numbersAndTexts + marker + rest);
    }

    void manualZeroRemovesNumbersOfAnMp3() {
        SongInfo change = otherInfo();
        change.length = 0;
        change.userBpm = -1;
        const SongInfo info = changed(make(Mp3, fullInfo()), change, true);
        QCOMPARE(info.length, 0);
        QCOMPARE(info.userBpm, 0);
    }

    void longAccentedTitleCanBeSetTwice() {
        // 250 bytes of text have a length byte that reads as negative.
        const SongInfo change = titled(QString(125, QChar(u'é')));
        SongOnDisk file("song.mid"_s, make(Midi, fullInfo()));
        file.song.setSongInfo(change, true);
        file.song.setSongInfo(change, true);
        QVERIFY(file.save());
        QVERIFY(file.song.importFile(file.path));
        QVERIFY(file.info().isQArte); // what stands behind the title is still found
        QVERIFY(file.content().endsWith("00FF2F00"_hex));
    }

private:
    enum Kind
    {
        Midi,
        Mf3,
        Mf4,
        Mf5,
        Mp3,
    };
    static constexpr const char *kKindNames[] = {"MIDI", "MF3", "MF4", "MF5", "MP3"};

    static QByteArray make(int kind, const SongInfo &info) {
        if (kind == Midi)
            return midi(info, 1);
        return kind == Mp3 ? mp3(3, info) : mfx(kind - Mf3 + 3, info);
    }
    static SongInfo titled(const QString &title) {
        SongInfo info;
        info.title = title;
        return info;
    }

    /// What @p bytes read as after @p change was set.
    static SongInfo changed(const QByteArray &bytes, const SongInfo &change, bool manual) {
        SongOnDisk file("song.mp3"_s, bytes);
        file.song.setSongInfo(change, manual);
        return file.info();
    }
    /// The file that @p bytes become when @p change is set and the song is saved.
    static QByteArray savedAfter(const QByteArray &bytes, const SongInfo &change, bool manual) {
        SongOnDisk file("song.mp3"_s, bytes);
        file.song.setSongInfo(change, manual);
        return file.save() ? file.content() : QByteArray();
    }
};

QTEST_GUILESS_MAIN(TestMetaSongSet)
#include "tst_metasongset.moc"
