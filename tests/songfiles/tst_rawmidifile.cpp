#include "midibytes.h"
#include "support/logcapture.h"

#include <QTest>

using namespace MidiBytes;

namespace {

using TextReader = QString (RawMidiFile::*)() const;
using Presence = bool (RawMidiFile::*)() const;

} // namespace

Q_DECLARE_METATYPE(TextReader)
Q_DECLARE_METATYPE(Presence)

class TestRawMidiFile : public QObject
{
    Q_OBJECT

private slots:
    void loadRefusesWhatIsNoMidiFile_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("taken");
        const QByteArray smallest = header(0, 1) + chunk(QByteArray());
        QTest::newRow("22 bytes") << smallest << true;
        QTest::newRow("21 bytes starting with MThd") << smallest.left(21) << false;
        QTest::newRow("21 bytes with MTrk near") << QByteArray("MThdMTrk").leftJustified(21, '\0') << false;
        QTest::newRow("22 bytes with MTrk near") << QByteArray("MThdMTrk").leftJustified(22, '\0') << true;
        QTest::newRow("not starting with MThd") << QByteArray("x") + smallest << false;
        QTest::newRow("starting with MTrk") << chunk(QByteArray(20, '\0')) << false;
        QTest::newRow("without MTrk") << header(0, 1) + QByteArray(50, 'x') << false;
        QTest::newRow("empty") << QByteArray() << false;
        QTest::newRow("junk before MTrk") << header(1, 1) + QByteArray(9, 'x') + chunk(endOfTrack()) << true;
        QTest::newRow("MTrk at the very end") << header(0, 1) + QByteArray(9, 'x') + "MTrk" << true;
    }
    void loadRefusesWhatIsNoMidiFile()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, taken);
        RawMidiFile file;
        QCOMPARE(file.load(bytes), taken);
        QCOMPARE(file.bytes(), taken ? bytes : QByteArray());
    }

    void refusedFileLeavesTheOldOne()
    {
        const QByteArray bytes = song(meta(3, "kept"));
        RawMidiFile file = loaded(bytes);
        QVERIFY(!file.load("MThd"));
        QCOMPARE(file.bytes(), bytes);
        QCOMPARE(file.title(), QStringLiteral("kept"));
    }

    void formatCodeTellsZeroFromTheOthers_data()
    {
        QTest::addColumn<int>("word");
        QTest::addColumn<int>("code");
        QTest::newRow("0") << 0 << int(Midi0Format);
        QTest::newRow("1") << 1 << int(Midi1Format);
        QTest::newRow("2") << 2 << int(Midi1Format);
        QTest::newRow("high byte alone") << 0x0100 << int(Midi1Format);
    }
    void formatCodeTellsZeroFromTheOthers()
    {
        QFETCH(int, word);
        QFETCH(int, code);
        const RawMidiFile file = loaded(header(word, 0x0203) + chunk(endOfTrack()));
        QCOMPARE(file.formatCode(), code);
        QCOMPARE(file.trackCount(), quint16(0x0203));
    }

    void newObjectHoldsNothing()
    {
        RawMidiFile file;
        QVERIFY(file.bytes().isEmpty());
        QCOMPARE(file.formatCode(), int(UnknownFormat));
        file.setTitle(QStringLiteral("abc"));
        QCOMPARE(file.addMarker(QStringLiteral("abc"), 1), 0);
        QVERIFY(file.bytes().isEmpty());
        QVERIFY(!file.hasTitle());
        QCOMPARE(file.title(), QString());
    }

    void missingEventsReadAsNothing()
    {
        const RawMidiFile file = loaded(song(QByteArray()));
        for (const QString &text : {file.title(), file.genre(), file.artist(), file.author(), file.key()})
            QCOMPARE(text, QString());
        QCOMPARE(file.length(), 0);
        QCOMPARE(file.bpm(), 0);
        QVERIFY(!file.isQArte());
        QVERIFY(!file.hasTitle() && !file.hasGenre() && !file.hasArtist() && !file.hasAuthor());
        QVERIFY(!file.hasLength() && !file.hasBpm() && !file.hasKey() && !file.hasMarkers());
        QVERIFY(markersOf(file).isEmpty());
    }

    void textsAreReadFromTheirEvents_data()
    {
        QTest::addColumn<QByteArray>("event");
        QTest::addColumn<TextReader>("reader");
        QTest::addColumn<Presence>("presence");
        QTest::newRow("title") << meta(3, " T\xE8\tx ") << &RawMidiFile::title << &RawMidiFile::hasTitle;
        QTest::newRow("genre") << own(1, " T\xE8\tx ") << &RawMidiFile::genre << &RawMidiFile::hasGenre;
        QTest::newRow("artist") << own(2, " T\xE8\tx ") << &RawMidiFile::artist << &RawMidiFile::hasArtist;
        QTest::newRow("author") << own(3, " T\xE8\tx ") << &RawMidiFile::author << &RawMidiFile::hasAuthor;
    }
    void textsAreReadFromTheirEvents()
    {
        QFETCH(QByteArray, event);
        QFETCH(TextReader, reader);
        QFETCH(Presence, presence);
        const QString expected = QStringLiteral("T\u00E8\tx");
        const RawMidiFile file = loaded(song(event));
        QCOMPARE((file.*reader)(), expected);
        QVERIFY((file.*presence)());
        // Events that look alike, and other tags, come first.
        const QByteArray others = own(9, "9") + own(4, "4") + meta(1, "text") + own(6, "12 marker");
        const RawMidiFile late = loaded(header(1, 2) + chunk(others + notes()) + chunk(event + endOfTrack()));
        QCOMPARE((late.*reader)(), expected);
        QVERIFY((late.*presence)());
    }

    void textEndsAtItsFirstZeroByte()
    {
        QCOMPARE(loaded(song(meta(3, QByteArray(" ab\0cd", 6)))).title(), QStringLiteral("ab"));
        QCOMPARE(loaded(song(own(2, QByteArray(" ab\0cd", 6)))).artist(), QStringLiteral("ab"));
    }

    void firstEventOfAKindCounts()
    {
        const RawMidiFile file = loaded(song(meta(3, "first") + meta(3, "second") + own(2, "one") + own(2, "two")));
        QCOMPARE(file.title(), QStringLiteral("first"));
        QCOMPARE(file.artist(), QStringLiteral("one"));
    }

    void eventsBeforeTheFirstTrackAreNotSeen()
    {
        const RawMidiFile file = loaded(header(0, 1) + meta(3, "no") + chunk(endOfTrack()));
        QVERIFY(!file.hasTitle());
    }

    void readersNeedNoZeroDelta() { QCOMPARE(loaded(song(raw("60FF03026162"))).title(), QStringLiteral("ab")); }

    void negativeLengthIsAnEmptyTextAndStillCounts()
    {
        const QByteArray accents(200, '\xE8');
        const RawMidiFile file = loaded(song(meta(3, accents) + own(1, accents) + own(4, accents) + own(6, accents)));
        QCOMPARE(file.title(), QString());
        QCOMPARE(file.genre(), QString());
        QCOMPARE(file.length(), 0);
        QVERIFY(file.hasTitle() && file.hasGenre() && file.hasLength() && file.hasMarkers());
        QCOMPARE(markersOf(file), QList<SongMarker>({marker(0xE8E8, QString())}));
    }

    void lengthPastTheEndReadsWhatIsThere()
    {
        const QByteArray bytes = header(0, 1) + chunk(raw("00FF037F") + "abc");
        QCOMPARE(loaded(bytes).title(), QStringLiteral("abc"));
        QCOMPARE(loaded(header(0, 1) + chunk(raw("00FF4B7F02") + "abc")).artist(), QStringLiteral("abc"));
        QCOMPARE(loaded(header(0, 1) + chunk(raw("00FF4B7F0601"))).hasMarkers(), true);
        const RawMidiFile cut = loaded(header(0, 1) + chunk(raw("00FF03")));
        QVERIFY(cut.hasTitle());
        QCOMPARE(cut.title(), QString());
        QVERIFY(!loaded(header(0, 1) + chunk(raw("00FF4B05"))).hasArtist());
    }

    void numbersAreDecimalTexts_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("number");
        QTest::newRow("number") << QByteArray("215") << 215;
        QTest::newRow("blanks around") << QByteArray(" 215 ") << 215;
        QTest::newRow("zero byte behind") << QByteArray("21\0005", 4) << 21;
        QTest::newRow("letters") << QByteArray("abc") << 0;
        QTest::newRow("negative") << QByteArray("-5") << 0;
        QTest::newRow("letters behind") << QByteArray("12s") << 0;
        QTest::newRow("too large") << QByteArray("2147483648") << 0;
        QTest::newRow("largest") << QByteArray("2147483647") << 2147483647;
        QTest::newRow("empty") << QByteArray() << 0;
    }
    void numbersAreDecimalTexts()
    {
        QFETCH(QByteArray, text);
        QFETCH(int, number);
        const RawMidiFile file = loaded(song(own(4, text) + own(5, text)));
        QCOMPARE(file.length(), number);
        QCOMPARE(file.bpm(), number);
        QVERIFY(file.hasLength() && file.hasBpm());
    }

    void makersMarkIsLookedForInTheCopyright_data()
    {
        QTest::addColumn<QByteArray>("events");
        QTest::addColumn<bool>("isQArte");
        QTest::newRow("Q-ARTE") << meta(2, "(c) Q-ARTE 2001") << true;
        QTest::newRow("small letters") << meta(2, "by q-arte") << true;
        QTest::newRow("MidiSoft") << meta(2, "MidiSoft") << true;
        QTest::newRow("another maker") << meta(2, "Qarte") << false;
        QTest::newRow("in the title only") << meta(3, "Q-ARTE") << false;
        QTest::newRow("in the second copyright only") << meta(2, "x") + meta(2, "Q-ARTE") << false;
        QTest::newRow("none") << QByteArray() << false;
    }
    void makersMarkIsLookedForInTheCopyright()
    {
        QFETCH(QByteArray, events);
        QFETCH(bool, isQArte);
        QCOMPARE(loaded(song(events)).isQArte(), isQArte);
    }

    void keyIsReadFromItsSignature_data()
    {
        QTest::addColumn<QByteArray>("event");
        QTest::addColumn<QString>("name");
        QTest::newRow("no sharps") << raw("00FF59020000") << "C";
        QTest::newRow("six sharps") << raw("00FF59020600") << "F#";
        QTest::newRow("seven flats, minor") << raw("00FF5902F901") << "Ab-";
        QTest::newRow("another delta") << raw("20FF5902FE01") << "G-";
    }
    void keyIsReadFromItsSignature()
    {
        QFETCH(QByteArray, event);
        QFETCH(QString, name);
        LogCapture log;
        const RawMidiFile file = loaded(song(meta(3, "ab") + event));
        QString key = QStringLiteral("left over");
        QCOMPARE(file.extractKey(key), kDataStart + 6 + 1);
        QCOMPARE(key, name);
        QCOMPARE(file.key(), name);
        QVERIFY(file.hasKey());
        QVERIFY(log.lines().isEmpty());
    }

    void missingKeyGivesMinusOne()
    {
        QString key = QStringLiteral("left over");
        QCOMPARE(loaded(song(QByteArray())).extractKey(key), -1);
        QCOMPARE(key, QString());
    }

    void unknownKeyIsLogged_data()
    {
        QTest::addColumn<QByteArray>("event");
        QTest::addColumn<QString>("text");
        QTest::newRow("eight sharps") << raw("00FF59020800") << "[sf=08|mi=00]";
        QTest::newRow("digits of both cases") << raw("00FF5902ABCD") << "[sf=ab|mi=CD]";
        QTest::newRow("unknown mode") << raw("00FF5902000A") << "[sf=00|mi=0A]";
    }
    void unknownKeyIsLogged()
    {
        QFETCH(QByteArray, event);
        QFETCH(QString, text);
        const RawMidiFile file = loaded(song(event));
        LogCapture log;
        QString key = QStringLiteral("left over");
        QCOMPARE(file.extractKey(key), kDataStart + 1);
        QCOMPARE(key, QString());
        QVERIFY(file.hasKey());
        QCOMPARE(log.texts(),
                 QStringList(QStringLiteral("[RawMidiFile::extractKey] WARNING: unknown key metaevent \"") + text +
                             QStringLiteral("\" in MIDI file.")));
        QCOMPARE(log.lines().first().type, QtDebugMsg);
    }

    void keyNamesAreThoseOfTheTable()
    {
        QCOMPARE(RawMidiFile().keyNames(), KeyNameTable().names());
        QCOMPARE(RawMidiFile().keyNames().size(), 30);
    }

    void ownMarkersAreReadInFileOrder()
    {
        const QByteArray events = meta(6, "standard") + own(6, QByteArray("\x01\x02 Verse \0x", 11)) + notes() +
                                  own(1, "genre") + own(6, QByteArray("\0\x05", 2));
        const RawMidiFile file = loaded(song(events));
        QList<SongMarker> list;
        const int first = kDataStart + meta(6, "standard").size() + 1;
        QCOMPARE(file.markers(list, false), first);
        QCOMPARE(list, QList<SongMarker>({marker(0x0102, QStringLiteral("Verse")), marker(5, QString())}));
        QVERIFY(file.hasMarkers());
        QCOMPARE(file.markers(list, true), first);
        QCOMPARE(list, QList<SongMarker>({marker(0x0102, QStringLiteral("Verse"))}));
    }

    void standardMarkersComeWithBarZeroAndDoNotCount()
    {
        const RawMidiFile file =
            loaded(header(1, 2) + chunk(meta(6, " A ") + notes()) + chunk(raw("60FF060142") + endOfTrack()));
        QList<SongMarker> list{marker(1, QStringLiteral("left over"))};
        QCOMPARE(file.markers(list, false), -1);
        QCOMPARE(list, QList<SongMarker>({marker(0, QStringLiteral("A")), marker(0, QStringLiteral("B"))}));
        QCOMPARE(markersOf(file, true), QList<SongMarker>({marker(0, QStringLiteral("A"))}));
        QVERIFY(!file.hasMarkers());
    }
};

QTEST_GUILESS_MAIN(TestRawMidiFile)
#include "tst_rawmidifile.moc"
