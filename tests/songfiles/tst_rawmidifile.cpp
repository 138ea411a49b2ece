#include "midibytes.h"
#include "support/logcapture.h"

using namespace MidiBytes;

class TestRawMidiFile : public QObject
{
    Q_OBJECT

private slots:
    void loadRefusesWhatIsNoMidiFileAndKeepsTheOldOne() {
        const auto check = [](const char *name, const QByteArray &bytes, bool taken) {
            const QByteArray old = song(meta(3, "kept"));
            RawMidiFile file = loaded(old);
            same(name, file.load(bytes), taken);
            same(name, file.bytes(), taken ? bytes : old);
            same(name, file.title(), taken ? QString() : "kept"_s);
            RawMidiFile fresh;
            same(name, fresh.load(bytes), taken);
            same(name, fresh.bytes(), taken ? bytes : QByteArray());
        };
        check("22 bytes", oneTrack(""), true);
        check("21 bytes starting with MThd", oneTrack("").left(21), false);
        check("21 bytes with MTrk near", "MThdMTrk"_b.leftJustified(21, '\0'), false);
        check("22 bytes with MTrk near", "MThdMTrk"_b.leftJustified(22, '\0'), true);
        check("not starting with MThd", "x" + oneTrack(""), false);
        check("starting with MTrk", chunk(QByteArray(20, '\0')), false);
        check("without MTrk", header(0, 1) + QByteArray(50, 'x'), false);
        check("empty", ""_b, false);
        check("junk before MTrk", header(1, 1) + QByteArray(9, 'x') + chunk(kEndOfTrack), true);
        check("MTrk at the very end", header(0, 1) + QByteArray(9, 'x') + "MTrk", true);
    }

    void formatCodeTellsZeroFromTheOthers() {
        same("0", loaded(header(0, 1) + chunk("")).formatCode(), int(Midi0Format));
        same("1", loaded(header(1, 1) + chunk("")).formatCode(), int(Midi1Format));
        same("2", loaded(header(2, 1) + chunk("")).formatCode(), int(Midi1Format));
        same("high byte alone", loaded(header(0x0100, 1) + chunk("")).formatCode(), int(Midi1Format));
    }

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
        QString key = "left over"_s;
        QCOMPARE(file.extractKey(key), -1);
        QCOMPARE(key, QString());
    }

    void textsAreReadFromTheirEvents() {
        // Events that look alike, and other tags, come first.
        const QByteArray others = own(9, "9") + own(4, "4") + meta(1, "text") + own(6, "12 marker") + kNote;
        const auto secondTrack = [others](const QByteArray &event) { return oneTrack(others) + chunk(event); };
        same("title", textsOf(song(meta(3, " T\xE8\tx "))), QStringList("title Tè\tx"_s));
        same("genre", textsOf(song(own(1, " T\xE8\tx "))), QStringList("genre Tè\tx"_s));
        same("artist", textsOf(song(own(2, " T\xE8\tx "))), QStringList("artist Tè\tx"_s));
        same("author", textsOf(song(own(3, " T\xE8\tx "))), QStringList("author Tè\tx"_s));
        same("title of a later track", textsOf(secondTrack(meta(3, "ab"))), QStringList("title ab"_s));
        same("genre of a later track", textsOf(secondTrack(own(1, "ab"))), QStringList("genre ab"_s));
        same("artist of a later track", textsOf(secondTrack(own(2, "ab"))), QStringList("artist ab"_s));
        same("author of a later track", textsOf(secondTrack(own(3, "ab"))), QStringList("author ab"_s));
        same("up to the first zero byte", textsOf(song(meta(3, " ab\0cd"_b))), QStringList("title ab"_s));
        same("up to the first zero byte of an own event", textsOf(song(own(2, " ab\0cd"_b))),
             QStringList("artist ab"_s));
        same("first of two", textsOf(song(meta(3, "first") + meta(3, "second"))), QStringList("title first"_s));
        same("first of two own events", textsOf(song(own(2, "one") + own(2, "two"))), QStringList("artist one"_s));
        same("any delta", textsOf(song("60FF03026162"_hex)), QStringList("title ab"_s));
        same("longer than the file", textsOf(oneTrack("00FF037F"_hex + "abc")), QStringList("title abc"_s));
        same("own event longer than the file", textsOf(oneTrack("00FF4B7F02"_hex + "abc")),
             QStringList("artist abc"_s));
        same("cut before its length", textsOf(oneTrack("00FF03"_hex)), QStringList("title "_s));
        same("own event cut before its tag", textsOf(oneTrack("00FF4B05"_hex)), QStringList());
        same("before the first track", textsOf(header(0, 1) + meta(3, "no") + chunk("")), QStringList());
    }

    void negativeLengthIsAnEmptyTextAndStillCounts() {
        const QByteArray accents(200, '\xE8');
        const RawMidiFile file = loaded(song(meta(3, accents) + own(1, accents) + own(4, accents) + own(6, accents)));
        QCOMPARE(file.title(), QString());
        QCOMPARE(file.genre(), QString());
        QCOMPARE(file.length(), 0);
        QVERIFY(file.hasTitle() && file.hasGenre() && file.hasLength() && file.hasMarkers());
        QCOMPARE(markersOf(file), QList<SongMarker>({{0xE8E8, QString()}}));
    }

    void numbersAreDecimalTexts() {
        const auto check = [](const char *name, const QByteArray &text, int number) {
            const RawMidiFile file = loaded(song(own(4, text) + own(5, text)));
            same(name, file.length(), number);
            same(name, file.bpm(), number);
            QVERIFY2(file.hasLength() && file.hasBpm(), name);
        };
        check("number", "215"_b, 215);
        check("blanks around", " 215 "_b, 215);
        check("zero byte behind", "21\0005"_b, 21);
        check("letters", "abc"_b, 0);
        check("negative", "-5"_b, 0);
        check("letters behind", "12s"_b, 0);
        check("too large", "2147483648"_b, 0);
        check("largest", "2147483647"_b, 2147483647);
        check("empty", ""_b, 0);
    }

    void makersMarkIsLookedForInTheCopyright() {
        same("Q-ARTE", loaded(song(meta(2, "(c) Q-ARTE 2001"))).isQArte(), true);
        same("small letters", loaded(song(meta(2, "by q-arte"))).isQArte(), true);
        same("MidiSoft", loaded(song(meta(2, "MidiSoft"))).isQArte(), true);
        same("another maker", loaded(song(meta(2, "Qarte"))).isQArte(), false);
        same("in the title only", loaded(song(meta(3, "Q-ARTE"))).isQArte(), false);
        same("in the second copyright only", loaded(song(meta(2, "x") + meta(2, "Q-ARTE"))).isQArte(), false);
        same("none", loaded(song("")).isQArte(), false);
    }

    void keyIsReadFromItsSignatureAndLoggedWhenUnknown() {
        const auto check = [](const char *what, const QByteArray &event, const QString &name, const QString &unknown) {
            const RawMidiFile file = loaded(song(meta(3, "ab") + event));
            LogCapture log;
            QString key = "left over"_s;
            same(what, file.extractKey(key), kDataStart + 6 + 1);
            same(what, QStringList({key, file.key()}), QStringList({name, name}));
            QVERIFY2(file.hasKey(), what);
            const QString warning = "[RawMidiFile::extractKey] WARNING: unknown key metaevent \"%1\" in MIDI file."_s;
            const QString line = warning.arg(unknown);
            same(what, log.texts(), unknown.isEmpty() ? QStringList() : QStringList({line, line}));
            same(what, log.contains(QtDebugMsg, line), !unknown.isEmpty());
        };
        check("no sharps", "00FF59020000"_hex, "C"_s, QString());
        check("six sharps", "00FF59020600"_hex, "F#"_s, QString());
        check("seven flats, minor", "00FF5902F901"_hex, "Ab-"_s, QString());
        check("another delta", "20FF5902FE01"_hex, "G-"_s, QString());
        check("eight sharps", "00FF59020800"_hex, QString(), "[sf=08|mi=00]"_s);
        check("digits of both cases", "00FF5902ABCD"_hex, QString(), "[sf=ab|mi=CD]"_s);
        check("unknown mode", "00FF5902000A"_hex, QString(), "[sf=00|mi=0A]"_s);
    }

    void trackCountHasTwoBytes() { QCOMPARE(loaded(header(1, 0x0203) + chunk("")).trackCount(), quint16(0x0203)); }

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
        QVERIFY(loaded(oneTrack("00FF4B7F0601"_hex)).hasMarkers()); // cut before its bar
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
