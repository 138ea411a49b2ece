#include "midibytes.h"
#include "support/logcapture.h"

using namespace MidiBytes;
using File = RawMidiFile;

class TestRawMidiFileEdit : public QObject
{
    Q_OBJECT

private slots:
    void writersPutOneEventAtTheStartForAllOfTheFirstTrack() {
        const QByteArray rest = meta(1, "text") + own(7, "other tag") + meta(2, "copyright");
        const auto tracks = [rest](const QByteArray &start, const QByteArray &middle, const QByteArray &second) {
            return header(1, 2) + chunk(start + rest + middle + kNote + middle) + chunk(second);
        };
        const QByteArray title = meta(3, "old one");
        const QByteArray genre = own(1, "old one");
        const QByteArray artist = own(2, "old one");
        const QByteArray author = own(3, "old one");
        const QByteArray length = own(4, "123");
        const QByteArray bpm = own(5, "123");
        const QByteArray key = "00FF59020100"_hex;
        same("title", edited(tracks("", title, title), &File::setTitle, "abc"_s), tracks(meta(3, "abc"), "", title));
        same("genre", edited(tracks("", genre, genre), &File::setGenre, "abc"_s), tracks(own(1, "abc"), "", genre));
        same("artist", edited(tracks("", artist, artist), &File::setArtist, "abc"_s),
             tracks(own(2, "abc"), "", artist));
        same("author", edited(tracks("", author, author), &File::setAuthor, "abc"_s),
             tracks(own(3, "abc"), "", author));
        same("length", edited(tracks("", length, length), &File::setLength, 215), tracks(own(4, "215"), "", length));
        same("negative length", edited(song(length), &File::setLength, -5), song(own(4, "-5")));
        same("tempo", edited(tracks("", bpm, bpm), &File::setBpm, 0), tracks(own(5, "0"), "", bpm));
        same("key", edited(tracks("", key, key), &File::setKey, "F#"_s), tracks("00FF59020600"_hex, "", key));
        same("key with a blank inside", edited(song(key), &File::setKey, "F #"_s), song("00FF59020600"_hex));
        same("key with blanks everywhere", edited(song(key), &File::setKey, " B b - "_s), song("00FF5902FB01"_hex));
        same("key with flats", edited(song(key), &File::setKey, "Ab-"_s), song("00FF5902F901"_hex));
        same("key in extra spelling", edited(song(key), &File::setKey, "G#"_s), song("00FF59020400"_hex));
        same("empty key", edited(tracks("", key, key), &File::setKey, ""_s), tracks("", "", key));
        const QByteArray later = "10FF03026162"_hex;
        same("an event with another delta stays", edited(song(later + title), &File::setTitle, "abc"_s),
             song(meta(3, "abc") + later));
        same("of one longer than the file all goes",
             edited(oneTrack(kNote + "00FF037F"_hex + "abc"), &File::setTitle, "T"_s), oneTrack(meta(3, "T") + kNote));
    }

    void whatIsWrittenIsReadFromTheSameFile() {
        RawMidiFile file = loaded(song(own(4, "1") + own(5, "2") + own(4, "3") + own(5, "4")));
        file.setTitle("Perché"_s);
        file.setGenre("abc"_s);
        file.setArtist("È"_s);
        file.setAuthor("def"_s);
        file.setLength(-5);
        file.setBpm(120);
        // Texts are written as UTF-8 and read as Latin-1, negative numbers are none.
        QCOMPARE(QStringList({file.title(), file.genre(), file.artist(), file.author()}),
                 QStringList({"PerchÃ©"_s, "abc"_s, "Ã\u0088"_s, "def"_s}));
        QCOMPARE(file.length(), 0);
        QCOMPARE(file.bpm(), 120);
    }

    void trackLengthIsCountedOnFromWhatIsStatedAndRound() {
        const auto stated = [](quint32 length) {
            return edited(withLength(song(""), length), &File::setTitle, "abc"_s).mid(kLengthOffset, 4);
        };
        same("wrong", stated(0x00FFFFFE), "01000005"_hex);
        same("greatest", stated(0x7FFFFFFF), "80000006"_hex);
        same("negative", stated(0xFFFFFFFF), "00000006"_hex);
    }

    void onlyEventsWithinTheStatedTrackAreRemoved() {
        const auto check = [](const char *name, quint32 length, int removed) {
            RawMidiFile file = loaded(withLength(song(meta(3, "a") + meta(3, "b") + meta(3, "c")), length));
            same(name, file.removeStandardEvents(3, false), removed);
            same(name, file.bytes().mid(kLengthOffset, 4), bigEndian(length - 5U * unsigned(removed)));
        };
        // The events begin 0, 5 and 10 bytes behind the start of the track's data.
        check("0", 0U, 0);
        check("1", 1U, 1);
        check("5, which is 0 after the first removal", 5U, 1);
        check("6", 6U, 2);
        check("11", 11U, 3);
        check("huge", 0x7FFFFFFFU, 3);
        check("negative", 0x80000000U, 0);
    }

    void removalOfTheFirstOnlyLeavesTheOthers() {
        RawMidiFile file = loaded(song(meta(3, "a") + meta(3, "b") + own(1, "a") + own(2, "b") + own(2, "c")));
        QCOMPARE(file.removeStandardEvents(3, true), 1);
        QCOMPARE(file.removeOwnEvents(2, true), 1);
        QCOMPARE(file.bytes(), song(meta(3, "b") + own(1, "a") + own(2, "c")));
        QCOMPARE(file.removeOwnEvents(8, true), 0);
    }

    void removalOfNothingEndsTheSearch() {
        const auto left = [](const QByteArray &event) {
            return edited(song(event + kNote), &File::removeStandardEvents, quint8(3), false);
        };
        same("-128", left("00FF0380"_hex), song("00FF0380"_hex + kNote));
        same("-5", left("00FF03FB"_hex), song("00FF03FB"_hex + kNote));
        same("-4", left("00FF03FC"_hex), song("00FF03FC"_hex + kNote));
        same("-3 still takes one byte", left("00FF03FD"_hex), song("FF03FD"_hex + kNote));
        same("-1 still takes three bytes", left("00FF03FF"_hex), song("FF"_hex + kNote));
    }

    void longAccentedTitleCanBeSetTwice() {
        const QString title(125, QChar(u'è'));
        const QByteArray event = "00FF03FA"_hex + title.toUtf8();
        QCOMPARE(event.size(), 254);
        RawMidiFile file = loaded(song(own(2, "artist")));
        QElapsedTimer timer;
        timer.start();
        file.setTitle(title);
        file.setTitle(title);
        QVERIFY(timer.elapsed() < 2000);
        // The old title cannot be removed: its length reads as -6.
        QCOMPARE(file.bytes(), song(event + event + own(2, "artist")));
        QVERIFY(file.hasTitle());
        QCOMPARE(file.title(), QString());
        QCOMPARE(file.artist(), "artist"_s);
    }

    void textsAreCutTo125Characters_data() {
        columns<QString, QByteArray, int>("text", "stored", "lengthByte");
        const QString x(123, QLatin1Char('x'));
        const QByteArray xs(123, 'x');
        const QString clef = "\U0001D11E"_s; // two UTF-16 units
        row("124", x + "y"_s, xs + "y", 124);
        row("125", x + "yy"_s, xs + "yy", 125);
        row("126", x + "yyy"_s, xs + "yy", 125);
        row("130", x + "yyyyyyy"_s, xs + "yy", 125);
        row("125 accented", QString(125, QChar(u'è')), "\xC3\xA8"_b.repeated(125), 0xFA);
        row("125 of three bytes", QString(125, QChar(u'€')), "\xE2\x82\xAC"_b.repeated(125), 0x77);
        row("pair across the cut", x + "y"_s + clef, xs + "y", 124);
        row("pair before the cut", x + clef + "y"_s, xs + clef.toUtf8(), 127);
    }
    void textsAreCutTo125Characters() {
        QFETCH(QString, text);
        QFETCH(QByteArray, stored);
        QFETCH(int, lengthByte);
        const auto size = [lengthByte](int more) { return bigEndian(unsigned(lengthByte + more), 1); };
        const QList<SongMarker> markers{{1, text}};
        QCOMPARE(edited(song(""), &File::setTitle, text), song("00FF03"_hex + size(0) + stored));
        QCOMPARE(edited(song(""), &File::setGenre, text), song("00FF4B"_hex + size(1) + "01"_hex + stored));
        QCOMPARE(edited(song(""), &File::setMarkers, markers), song("00FF4B"_hex + size(3) + "060001"_hex + stored));
    }

    void unknownKeyNameLeavesTheSongWithoutAKey() {
        for (const QString &name : {"f#"_s, "H -"_s, " "_s}) {
            RawMidiFile file = loaded(song("00FF59020100"_hex));
            LogCapture log;
            file.setKey(name);
            QCOMPARE(file.bytes(), song(""));
            QVERIFY2(!file.hasKey(), qPrintable(name));
            const QString line = "[RawMidiFile::setKey] WARNING: unknown key: \"%1\" . Metaevent not added !!!"_s;
            const QString withoutBlanks = QString(name).remove(QLatin1Char(' '));
            same(qPrintable(name), log.texts(), QStringList(line.arg(withoutBlanks)));
            QCOMPARE(log.lines().first().type, QtDebugMsg);
        }
    }

    void addedMarkerStandsBeforeTheOthers() {
        RawMidiFile file = loaded(song(""));
        QCOMPARE(file.addMarker("one"_s, 0x0203), 10);
        QCOMPARE(file.addMarker("è"_s, 7), 9);
        QCOMPARE(file.bytes(), song("00FF4B05060007C3A8"_hex + "00FF4B06060203"_hex + "one"));
        QCOMPARE(markersOf(file).first().bar, quint16(7));
    }

    void addedMarkerIsNotCut() {
        RawMidiFile file = loaded(song(""));
        QCOMPARE(file.addMarker(QString(300, QLatin1Char('x')), 1), 307);
        QCOMPARE(file.bytes(), song("00FF4B2F060001"_hex + QByteArray(300, 'x'))); // 303 mod 256 = 0x2F
    }

    void markerFindsNoPlaceInAFileCutInTheTracksHead() {
        const QByteArray bytes = header(0, 1) + QByteArray(9, 'x') + "MTrk\0\0\0"_b;
        RawMidiFile file = loaded(bytes);
        QCOMPARE(file.addMarker("one"_s, 1), 0);
        file.setTitle("abc"_s);
        QCOMPARE(file.bytes(), bytes);
        QVERIFY(file.load(bytes + '\0'));
        QCOMPARE(file.addMarker("one"_s, 1), 10);
        QCOMPARE(file.bytes().mid(27, 4), bigEndian(10));
    }

    void setMarkersRemovesTheAuthorAndKeepsTheOldMarkers() {
        const QByteArray old = own(6, "\0\x09old"_b);
        RawMidiFile file = loaded(song(own(3, "author") + old + own(3, "another") + own(2, "artist")));
        file.setMarkers({{1, "a"_s}, {2, "b"_s}});
        QCOMPARE(file.bytes(), song(own(6, "\0\1a"_b) + own(6, "\0\2b"_b) + old + own(2, "artist")));
        QVERIFY(!file.hasAuthor());
        file.setMarkers({});
        QCOMPARE(markersOf(file).size(), 3);
    }

    void damagedSongsAreReadAndEditedInTime() {
        const QByteArray events = meta(2, "Q-Arte") + meta(3, "title") + "00FF5902FE01"_hex + own(1, "genre") +
                                  own(2, "artist") + own(3, "author") + own(4, "12") + own(5, "120") +
                                  own(6, "\0\1m"_b) + meta(6, "marker");
        QElapsedTimer timer;
        timer.start();
        LogCapture log;
        int taken = 0;
        forEachDamagedCopy(header(1, 2) + chunk(events + kEndOfTrack) + chunk(kNote + kEndOfTrack),
                           [&taken](const QByteArray &damaged) {
                               RawMidiFile file;
                               if (!file.load(damaged))
                                   return;
                               ++taken;
                               useEverything(file);
                               useEverything(file);
                               QVERIFY(file.bytes().startsWith("MThd"));
                           });
        QVERIFY(taken > 100);
        QVERIFY2(timer.elapsed() < 10000, qPrintable(QString::number(timer.elapsed())));
    }

private:
    /// The file after a call of one of its functions, which has nothing to log.
    template <typename Function, typename... Arguments>
    static QByteArray edited(const QByteArray &bytes, Function function, const Arguments &...arguments) {
        const LogCapture log;
        RawMidiFile file = loaded(bytes);
        (file.*function)(arguments...);
        return log.lines().isEmpty() ? file.bytes() : "it logs"_b;
    }

    /// The file with another stated length of its first track.
    static QByteArray withLength(QByteArray bytes, quint32 length) {
        return bytes.replace(kLengthOffset, 4, bigEndian(length));
    }

    /// Calls every reader and every writer.
    static void useEverything(RawMidiFile &file) {
        QString name;
        file.extractKey(name);
        const QList<SongMarker> list = markersOf(file);
        for (const QString &text : {file.title(), file.genre(), file.artist(), file.author(), file.key()})
            name += text;
        const int sum = file.length() / 2 + file.bpm() / 2 + int(file.isQArte()) + int(file.hasTitle());
        file.setTitle(name);
        file.setGenre(QString(125, QChar(u'è')));
        file.setGenre(QString(125, QChar(u'è')));
        file.setArtist(QString());
        file.setMarkers(list);
        file.setAuthor(QString(125, QChar(u'€')));
        file.setAuthor("a"_s);
        file.setLength(sum);
        file.setBpm(120);
        file.setKey("C"_s);
        file.addMarker("m"_s, 1);
        for (int type = 0; type < 256; type += 3)
            file.removeStandardEvents(static_cast<quint8>(type), false);
        file.removeOwnEvents(6, true);
    }

    static constexpr int kLengthOffset = 18; ///< of the first track's length
};

QTEST_GUILESS_MAIN(TestRawMidiFileEdit)
#include "tst_rawmidifileedit.moc"
