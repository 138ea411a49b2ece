#include "titletest.h"

#include "songfactory/songfactory.h"
#include "support/given.h"

class TestMidiTitle : public TitleTest
{
    Q_OBJECT

    // The types of the events in which a title stands.
    static constexpr char kName = 3;
    static constexpr char kText = 1;

    static QByteArray meta(char type, const QByteArray &content) {
        QByteArray event("\0\xFF", 2);
        event.append(type);
        if (content.size() > 127)
            event.append(static_cast<char>(0x80 | (content.size() >> 7)));
        event.append(static_cast<char>(content.size() & 0x7F));
        return event + content;
    }
    /// A MIDI file of one track with these events.
    static QByteArray midi(const QByteArray &events) {
        return QByteArray("MThd\0\0\0\6\0\0\0\1\0\x60MTrk\0\0\1\0", 22) + events;
    }
    static void eventsRow(const char *name, const QByteArray &events, const QString &title = "Azzurro"_s) {
        row(name, events, title);
    }
    static void addTrackNames() {
        eventsRow("track name", meta(kName, "Azzurro"));
        eventsRow("track name of one byte", meta(kName, "A"), "A"_s);
        for (const int size : {127, 128, 300})
            eventsRow(qPrintable("track name of %1 bytes"_s.arg(size)), meta(kName, QByteArray(size, 'a')),
                      "a"_s.repeated(size));
        eventsRow("white space at both ends", meta(kName, " Azzurro\r\n"));
        eventsRow("accents", meta(kName, "Perch\xE9"), "Perché"_s);
        eventsRow("ends at a zero byte", meta(kName, QByteArray("Ab\0cd", 5)), "Ab"_s);
        eventsRow("first of two track names", meta(kName, "Azzurro") + meta(kName, "Piano"));
        eventsRow("track name in a later place", meta(0x51, "abc") + meta(kText, "by me") + meta(kName, "Azzurro"));
        eventsRow("empty first track name: the others are instruments", meta(kName, "") + meta(kName, "Piano"), kBase);
        eventsRow("blank first track name", meta(kName, "  ") + meta(kName, "Piano"), kBase);
    }
    static void addKaraokeTitles() {
        eventsRow("karaoke title", meta(kText, "@TAzzurro"));
        eventsRow("karaoke title with blanks", meta(kText, "@T Azzurro "));
        eventsRow("first of two karaoke titles", meta(kText, "@TAzzurro") + meta(kText, "@TCelentano"));
        eventsRow("empty karaoke title is none", meta(kText, "@T") + meta(kText, "@TAzzurro"));
        eventsRow("empty karaoke title, track name", meta(kText, "@T") + meta(kName, "Azzurro"));
        eventsRow("karaoke title wins behind a track name", meta(kName, "Soft karaoke") + meta(kText, "@TAzzurro"));
        eventsRow("karaoke title wins before a track name", meta(kText, "@TAzzurro") + meta(kName, "Words"));
        eventsRow("karaoke title behind an empty track name", meta(kName, "") + meta(kText, "@TAzzurro"));
        for (const int size : {127, 128, 129, 256})
            eventsRow(qPrintable("karaoke title of %1 bytes"_s.arg(size)), meta(kText, "@T" + QByteArray(size, 'a')),
                      "a"_s.repeated(qMin(size, 128)));
        eventsRow("other text is no title", meta(kText, "Azzurro"), kBase);
        eventsRow("small t is no title", meta(kText, "@tAzzurro"), kBase);
        eventsRow("mark alone", meta(kText, "@"), kBase);
        eventsRow("mark inside a text", meta(kText, "x@TAzzurro"), kBase);
        eventsRow("empty text", meta(kText, "") + "@T", kBase);
        eventsRow("other karaoke texts",
                  meta(kText, "@KMIDI KARAOKE FILE") + meta(kText, "@LENGL") + meta(kText, "@TAzzurro"));
        eventsRow("copyright and markers are no titles", meta(2, "me") + meta(6, "Intro"), kBase);
    }
    static void addDamagedEvents() {
        eventsRow("length past the end", QByteArray("\0\xFF\x03\x7F", 4) + "Azzurro");
        eventsRow("longest length", QByteArray("\0\xFF\x03\xFF\xFF\xFF\x7F", 7) + "Azzurro");
        eventsRow("length that never ends", QByteArray("\0\xFF\x03\xFF\xFF\xFF\xFF", 7) + "Azzurro");
        eventsRow("no length", QByteArray("\0\xFF\x03", 3), kBase);
        eventsRow("half a length", QByteArray("\0\xFF\x03\x81", 4), kBase);
        eventsRow("no type", QByteArray("\0\xFF", 2), kBase);
        eventsRow("FF behind FF", QByteArray("\0\xFF\xFF\x03\x02", 5) + "Az", "Az"_s);
        eventsRow("nothing but FF", QByteArray(5000, '\xFF'), kBase);
        eventsRow("no events", QByteArray(), kBase);
    }

private slots:
    void midiTitleIsRead_data() {
        columns<QByteArray, QString>("events", "title");
        addTrackNames();
        addKaraokeTitles();
        addDamagedEvents();
    }
    void midiTitleIsRead() { QTEST(titleOf(kMid, midi(given<QByteArray>("events"))), "title"); }

    void midiTitleAroundTheReadLimit_data() {
        columns<QByteArray, int, QString>("event", "bytesInside", "title");
        const auto cut = [](const char *what, const QByteArray &event, int front) {
            for (int inside = 0; inside <= event.size(); ++inside)
                row(qPrintable("%1 bytes of a %2"_s.arg(inside).arg(QLatin1String(what))), event, inside,
                    inside > front ? "Azzurro"_s.left(inside - front) : kBase);
        };
        cut("track name", meta(kName, "Azzurro"), 4);
        cut("karaoke title", meta(kText, "@TAzzurro"), 6);
    }
    void midiTitleAroundTheReadLimit() {
        const int eventAt = kMidiLimit - given<int>("bytesInside");
        QTEST(titleOf(kMid, midi(QByteArray()).leftJustified(eventAt, '\0') + given<QByteArray>("event")), "title");
    }

    void karaokeSongOfTheFactoryHasItsTitle() {
        const QStringList texts = {"@KMIDI KARAOKE FILE"_s, "@LITAL"_s, "@TAzzurro"_s, "@TCelentano"_s};
        QCOMPARE(titleOf(kKar, SongFactory::karaoke(texts, {"\\Cer"_s, "co"_s, "@T never"_s})), "Azzurro"_s);
    }
};

QTEST_GUILESS_MAIN(TestMidiTitle)
#include "tst_midititle.moc"
