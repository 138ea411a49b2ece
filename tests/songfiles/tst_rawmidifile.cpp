#include "midibytes.h"
#include "support/logcapture.h"

using namespace MidiBytes;

class TestRawMidiFile : public QObject
{
    Q_OBJECT

private slots:
    void loadRefusesWhatIsNoMidiFileAndKeepsTheOldOne_data() {
        columns<QByteArray, bool>("bytes", "taken");
        row("22 bytes", oneTrack(""), true);
        row("21 bytes starting with MThd", oneTrack("").left(21), false);
        row("21 bytes with MTrk near", "MThdMTrk"_b.leftJustified(21, '\0'), false);
        row("22 bytes with MTrk near", "MThdMTrk"_b.leftJustified(22, '\0'), true);
        row("not starting with MThd", "x" + oneTrack(""), false);
        row("starting with MTrk", chunk(QByteArray(20, '\0')), false);
        row("without MTrk", header(0, 1) + QByteArray(50, 'x'), false);
        row("empty", ""_b, false);
        row("junk before MTrk", header(1, 1) + QByteArray(9, 'x') + chunk(kEndOfTrack), true);
        row("MTrk at the very end", header(0, 1) + QByteArray(9, 'x') + "MTrk", true);
    }
    void loadRefusesWhatIsNoMidiFileAndKeepsTheOldOne() {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, taken);
        const QByteArray old = song(meta(3, "kept"));
        RawMidiFile file = loaded(old);
        QCOMPARE(file.load(bytes), taken);
        QCOMPARE(file.bytes(), taken ? bytes : old);
        QCOMPARE(file.title(), taken ? QString() : "kept"_s);
        RawMidiFile fresh;
        QCOMPARE(fresh.load(bytes), taken);
        QCOMPARE(fresh.bytes(), taken ? bytes : QByteArray());
    }

    void formatCodeTellsZeroFromTheOthers_data() {
        outcomes<int>();
        row("0", loaded(header(0, 1) + chunk("")).formatCode(), int(Midi0Format));
        row("1", loaded(header(1, 1) + chunk("")).formatCode(), int(Midi1Format));
        row("2", loaded(header(2, 1) + chunk("")).formatCode(), int(Midi1Format));
        row("high byte alone", loaded(header(0x0100, 1) + chunk("")).formatCode(), int(Midi1Format));
    }
    void formatCodeTellsZeroFromTheOthers() { compareRow<int>(); }

    void trackCountHasTwoBytes() { QCOMPARE(loaded(header(1, 0x0203) + chunk("")).trackCount(), quint16(0x0203)); }

    void newObjectHoldsNothing() {
        RawMidiFile file;
        QVERIFY(file.bytes().isEmpty());
        QCOMPARE(file.formatCode(), int(UnknownFormat));
        file.setTitle("abc"_s);
        QCOMPARE(file.addMarker("abc"_s, 1), 0);
        QVERIFY(file.bytes().isEmpty());
        QVERIFY(!file.hasTitle());
        QCOMPARE(file.title(), QString());
    }

    void missingEventsReadAsNothing() {
        const RawMidiFile file = loaded(song(""));
        for (const QString &text : {file.title(), file.genre(), file.artist(), file.author(), file.key()})
            QCOMPARE(text, QString());
        QCOMPARE(file.length(), 0);
        QCOMPARE(file.bpm(), 0);
        QVERIFY(!file.isQArte());
        QVERIFY(!file.hasTitle() && !file.hasGenre() && !file.hasArtist() && !file.hasAuthor());
        QVERIFY(!file.hasLength() && !file.hasBpm() && !file.hasKey() && !file.hasMarkers());
        QVERIFY(markersOf(file).isEmpty());
    }

    void textsAreReadFromTheirEvents_data() {
        outcomes<QStringList>();
        // Events that look alike, and other tags, come first.
        const QByteArray others = own(9, "9") + own(4, "4") + meta(1, "text") + own(6, "12 marker") + kNote;
        const auto secondTrack = [others](const QByteArray &event) { return oneTrack(others) + chunk(event); };
        row("title", textsOf(song(meta(3, " T\xE8\tx "))), QStringList("title Tè\tx"_s));
        row("genre", textsOf(song(own(1, " T\xE8\tx "))), QStringList("genre Tè\tx"_s));
        row("artist", textsOf(song(own(2, " T\xE8\tx "))), QStringList("artist Tè\tx"_s));
        row("author", textsOf(song(own(3, " T\xE8\tx "))), QStringList("author Tè\tx"_s));
        row("title of a later track", textsOf(secondTrack(meta(3, "ab"))), QStringList("title ab"_s));
        row("genre of a later track", textsOf(secondTrack(own(1, "ab"))), QStringList("genre ab"_s));
        row("artist of a later track", textsOf(secondTrack(own(2, "ab"))), QStringList("artist ab"_s));
        row("author of a later track", textsOf(secondTrack(own(3, "ab"))), QStringList("author ab"_s));
        row("up to the first zero byte", textsOf(song(meta(3, " ab\0cd"_b))), QStringList("title ab"_s));
        row("up to the first zero byte of an own event", textsOf(song(own(2, " ab\0cd"_b))),
            QStringList("artist ab"_s));
        row("first of two", textsOf(song(meta(3, "first") + meta(3, "second"))), QStringList("title first"_s));
        row("first of two own events", textsOf(song(own(2, "one") + own(2, "two"))), QStringList("artist one"_s));
        row("any delta", textsOf(song("60FF03026162"_hex)), QStringList("title ab"_s));
        row("longer than the file", textsOf(oneTrack("00FF037F"_hex + "abc")), QStringList("title abc"_s));
        row("own event longer than the file", textsOf(oneTrack("00FF4B7F02"_hex + "abc")), QStringList("artist abc"_s));
        row("cut before its length", textsOf(oneTrack("00FF03"_hex)), QStringList("title "_s));
        row("own event cut before its tag", textsOf(oneTrack("00FF4B05"_hex)), QStringList());
        row("before the first track", textsOf(header(0, 1) + meta(3, "no") + chunk("")), QStringList());
    }
    void textsAreReadFromTheirEvents() { compareRow<QStringList>(); }

    void markerCutBeforeItsBarIsThere() { QVERIFY(loaded(oneTrack("00FF4B7F0601"_hex)).hasMarkers()); }

    void negativeLengthIsAnEmptyTextAndStillCounts() {
        const QByteArray accents(200, '\xE8');
        const RawMidiFile file = loaded(song(meta(3, accents) + own(1, accents) + own(4, accents) + own(6, accents)));
        QCOMPARE(file.title(), QString());
        QCOMPARE(file.genre(), QString());
        QCOMPARE(file.length(), 0);
        QVERIFY(file.hasTitle() && file.hasGenre() && file.hasLength() && file.hasMarkers());
        QCOMPARE(markersOf(file), QList<SongMarker>({{0xE8E8, QString()}}));
    }

    void numbersAreDecimalTexts_data() {
        columns<QByteArray, int>("text", "number");
        row("number", "215"_b, 215);
        row("blanks around", " 215 "_b, 215);
        row("zero byte behind", "21\0005"_b, 21);
        row("letters", "abc"_b, 0);
        row("negative", "-5"_b, 0);
        row("letters behind", "12s"_b, 0);
        row("too large", "2147483648"_b, 0);
        row("largest", "2147483647"_b, 2147483647);
        row("empty", ""_b, 0);
    }
    void numbersAreDecimalTexts() {
        QFETCH(QByteArray, text);
        const RawMidiFile file = loaded(song(own(4, text) + own(5, text)));
        QTEST(file.length(), "number");
        QTEST(file.bpm(), "number");
        QVERIFY(file.hasLength() && file.hasBpm());
    }

    void makersMarkIsLookedForInTheCopyright_data() {
        outcomes<bool>();
        row("Q-ARTE", loaded(song(meta(2, "(c) Q-ARTE 2001"))).isQArte(), true);
        row("small letters", loaded(song(meta(2, "by q-arte"))).isQArte(), true);
        row("MidiSoft", loaded(song(meta(2, "MidiSoft"))).isQArte(), true);
        row("another maker", loaded(song(meta(2, "Qarte"))).isQArte(), false);
        row("in the title only", loaded(song(meta(3, "Q-ARTE"))).isQArte(), false);
        row("in the second copyright only", loaded(song(meta(2, "x") + meta(2, "Q-ARTE"))).isQArte(), false);
        row("none", loaded(song("")).isQArte(), false);
    }
    void makersMarkIsLookedForInTheCopyright() { compareRow<bool>(); }

    void keyIsReadFromItsSignatureAndLoggedWhenUnknown_data() {
        columns<QByteArray, QString, QString>("event", "name", "unknown");
        row("no sharps", "00FF59020000"_hex, "C"_s, QString());
        row("six sharps", "00FF59020600"_hex, "F#"_s, QString());
        row("seven flats, minor", "00FF5902F901"_hex, "Ab-"_s, QString());
        row("another delta", "20FF5902FE01"_hex, "G-"_s, QString());
        row("eight sharps", "00FF59020800"_hex, QString(), "[sf=08|mi=00]"_s);
        row("digits of both cases", "00FF5902ABCD"_hex, QString(), "[sf=ab|mi=CD]"_s);
        row("unknown mode", "00FF5902000A"_hex, QString(), "[sf=00|mi=0A]"_s);
    }
    void keyIsReadFromItsSignatureAndLoggedWhenUnknown() {
        QFETCH(QByteArray, event);
        QFETCH(QString, name);
        QFETCH(QString, unknown);
        const RawMidiFile file = loaded(song(meta(3, "ab") + event));
        LogCapture log;
        QString key = "left over"_s;
        QCOMPARE(file.extractKey(key), kDataStart + 6 + 1);
        QCOMPARE(key, name);
        QVERIFY(file.hasKey());
        QCOMPARE(file.key(), name);
        const QString line = "[RawMidiFile::extractKey] WARNING: unknown key metaevent \"%1\" in MIDI file."_s;
        QCOMPARE(log.texts(),
                 QStringList(unknown.isEmpty() ? QStringList() : QStringList{line.arg(unknown), line.arg(unknown)}));
        QCOMPARE(log.contains(QtDebugMsg, line.arg(unknown)), !unknown.isEmpty());
    }

    void missingKeyGivesMinusOne() {
        QString key = "left over"_s;
        QCOMPARE(loaded(song("")).extractKey(key), -1);
        QCOMPARE(key, QString());
    }

    void keyNamesAreThoseOfTheTable() {
        QCOMPARE(RawMidiFile().keyNames(), KeyNameTable().names());
        QCOMPARE(RawMidiFile().keyNames().size(), 30);
    }

    void ownMarkersAreReadInFileOrder() {
        const QByteArray standard = meta(6, "standard");
        const RawMidiFile file =
            loaded(song(standard + own(6, "\x01\x02 Verse \0x"_b) + kNote + own(1, "genre") + own(6, "\0\x05"_b)));
        QList<SongMarker> list;
        QCOMPARE(file.markers(list, false), kDataStart + standard.size() + 1);
        QCOMPARE(list, QList<SongMarker>({{0x0102, "Verse"_s}, {5, QString()}}));
        QVERIFY(file.hasMarkers());
        QCOMPARE(file.markers(list, true), kDataStart + standard.size() + 1);
        QCOMPARE(list, QList<SongMarker>({{0x0102, "Verse"_s}}));
    }

    void standardMarkersComeWithBarZeroAndDoNotCount() {
        const RawMidiFile file =
            loaded(header(1, 2) + chunk(meta(6, " A ") + kNote) + chunk("60FF060142"_hex + kEndOfTrack));
        QList<SongMarker> list{{1, "left over"_s}};
        QCOMPARE(file.markers(list, false), -1);
        QCOMPARE(list, QList<SongMarker>({{0, "A"_s}, {0, "B"_s}}));
        QCOMPARE(markersOf(file, true), QList<SongMarker>({{0, "A"_s}}));
        QVERIFY(!file.hasMarkers());
    }

private:
    /// The texts that a file has, each behind its name.
    static QStringList textsOf(const QByteArray &bytes) {
        const RawMidiFile file = loaded(bytes);
        QStringList texts;
        for (const auto &text : {std::make_tuple("title "_s, file.hasTitle(), file.title()),
                                 std::make_tuple("genre "_s, file.hasGenre(), file.genre()),
                                 std::make_tuple("artist "_s, file.hasArtist(), file.artist()),
                                 std::make_tuple("author "_s, file.hasAuthor(), file.author())}) {
            if (std::get<bool>(text))
                texts.append(std::get<0>(text) + std::get<2>(text));
        }
        return texts;
    }
};

QTEST_GUILESS_MAIN(TestRawMidiFile)
#include "tst_rawmidifile.moc"
