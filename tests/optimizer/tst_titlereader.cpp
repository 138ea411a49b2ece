#include "titletest.h"

#include "songfactory/songfactory.h"
#include "support/given.h"
#include "support/platform.h"

class TestTitleReader : public TitleTest
{
    Q_OBJECT

    static constexpr int kMf3 = 3;
    static inline const QString kTitle = "Perché no"_s;
    static constexpr int kTagLimit = 1000000;

    static QByteArray id3(const QByteArray &frames) { return SongFactory::id3v2TagAround(3, frames); }
    static QByteArray titleFrame(const QString &title = kTitle, int encoding = 0) {
        return SongFactory::id3v2TextFrame(3, "TIT2", title, encoding);
    }
    static QByteArray frame(const char *id, const QByteArray &payload) {
        QByteArray size;
        for (int shift = 21; shift >= 0; shift -= 7)
            size.append(static_cast<char>((payload.size() >> shift) & 0x7F));
        return id + size + QByteArray(2, '\0') + payload;
    }
    static SongInfo titled(const QString &title) {
        SongInfo info;
        info.title = title;
        return info;
    }
    /// Bytes that this process has read from files so far, -1 where the system does not count them.
    static qint64 bytesReadSoFar() {
        QFile counters("/proc/self/io"_s);
        const QByteArray first = counters.open(QIODevice::ReadOnly) ? counters.readLine() : QByteArray();
        return first.startsWith("rchar: ") ? first.mid(7).trimmed().toLongLong() : -1;
    }

private slots:
    void everyFormatHasItsTitle_data() {
        columns<int, QByteArray>("formatIndex", "song");
        const SongInfo info = titled(kTitle);
        const QByteArray songs[] = {
            SongFactory::mp3(3, info), SongFactory::midi(info, 1),   SongFactory::midi(info, 0),
            SongFactory::mfx(3, info), SongFactory::mfx(4, info),    SongFactory::mfx(5, info),
            SongFactory::midi(info),   SongFactory::mp3(4, info, 3), SongFactory::midi(info, 1)};
        for (int index = 0; index < kSuffixes.size(); ++index)
            row(qPrintable(kSuffixes.at(index)), index, songs[index]);
    }
    void everyFormatHasItsTitle() { QCOMPARE(titleOf(given<int>("formatIndex"), given<QByteArray>("song")), kTitle); }

    void songWithoutATitleIsCalledByItsFile_data() {
        columns<int, QByteArray>("formatIndex", "song");
        row("MP3 without a tag", kMp3, SongFactory::mp3(0, SongInfo()));
        row("MP3 with an empty tag", kMp3, SongFactory::mp3(3, SongInfo()));
        row("MP3 with a title of blanks", kMp3, SongFactory::mp3(3, titled("  "_s)));
        row("MP3 with a tag of version 2", kMp3, SongFactory::mp3(2, titled(kTitle)));
        row("MIDI without a title", kMid, SongFactory::midi(SongInfo()));
        row("MIDI with a title of blanks", kMid, SongFactory::midi(titled("  "_s)));
        row("MFx without a title", kMf3, SongFactory::mfx(3, SongInfo()));
        row("MFx with a title of blanks", kMf3, SongFactory::mfx(3, titled("  "_s)));
        for (int index = 0; index < kSuffixes.size(); ++index) {
            row(qPrintable("empty "_s + kSuffixes.at(index)), index, QByteArray());
            row(qPrintable("text in "_s + kSuffixes.at(index)), index, QByteArray("TIT2 no song"));
        }
        for (const int unknown : {-1, 9, 1000000})
            row(qPrintable("unknown format %1"_s.arg(unknown)), unknown, SongFactory::midi(titled(kTitle)));
    }
    void songWithoutATitleIsCalledByItsFile() {
        QCOMPARE(titleOf(given<int>("formatIndex"), given<QByteArray>("song")), kBase);
    }

    void fileThatCannotBeOpenedIsCalledByItsName() {
        for (int index = 0; index < kSuffixes.size(); ++index) {
            QFile::remove(path(index));
            QCOMPARE(readSongTitle(index, QFileInfo(path(index))), kBase);
            QCOMPARE(readSongTitle(index, QFileInfo(folder.path())), QFileInfo(folder.path()).completeBaseName());
        }
    }

    void mfxTitleIsRead_data() {
        columns<QByteArray, int, QString>("field", "fileSize", "title");
        const QByteArray full(32, 'a');
        row("plain", QByteArray("Azzurro"), 600, "Azzurro"_s);
        row("whole field", full, 600, QString::fromLatin1(full));
        row("field without its end", full + "bc", 600, QString::fromLatin1(full));
        row("white space at both ends", QByteArray(" \tAzzurro \n"), 600, "Azzurro"_s);
        row("accents", QByteArray("Perch\xE9"), 600, "Perché"_s);
        row("ends at a zero byte", QByteArray("Ab\0cd", 5), 600, "Ab"_s);
        row("zero byte first", QByteArray("\0cd", 3), 600, kBase);
        row("dash is a title", QByteArray("-"), 600, "-"_s);
        for (const int size : {511, 512, 513, 1024})
            row(qPrintable("%1 bytes"_s.arg(size)), QByteArray("Azzurro"), size, size < 512 ? kBase : "Azzurro"_s);
    }
    void mfxTitleIsRead() {
        const QByteArray &field = given<QByteArray>("field");
        const QByteArray song = QByteArray("_MF3").leftJustified(1024, '\0').replace(122, field.size(), field);
        QTEST(titleOf(kMf3, song.left(given<int>("fileSize"))), "title");
    }

    void mp3TitleIsRead_data() {
        columns<QByteArray, QString>("song", "title");
        const QString wide = "你 Perché 🎵"_s;
        row("Latin-1", id3(titleFrame(kTitle, 0)), kTitle);
        row("UTF-16 with byte-order mark", id3(titleFrame(wide, 1)), wide);
        row("UTF-8", id3(titleFrame(wide, 3)), wide);
        row("UTF-16 without a mark is read in the other order", id3(titleFrame("A"_s, 2)), "\u4100"_s);
        row("unknown encoding", id3(titleFrame(kTitle, 9)), kBase);
        row("white space at both ends", id3(titleFrame(" a "_s) + "x"), "a"_s);
        row("behind other frames", id3(frame("TPE1", QByteArray("\0me", 3)) + titleFrame()), kTitle);
        row("behind padding", id3(QByteArray(5000, '\0') + titleFrame()), kTitle);
        row("behind a large picture", id3(frame("APIC", QByteArray(300000, 'p')) + titleFrame()), kTitle);
        row("identifier inside another frame",
            id3(frame("TPE1", QByteArray("\0TIT2\0\0\0\2\0\0\0Z", 13)) + titleFrame()), "Z"_s);
        row("first of two", id3(titleFrame() + titleFrame("second"_s)), kTitle);
        row("empty frame", id3(frame("TIT2", QByteArray())), kBase);
        row("encoding byte alone", id3(frame("TIT2", QByteArray(1, '\0'))), kBase);
        row("frame longer than the tag", id3(QByteArray("TIT2\x7F\x7F\x7F\x7F\0\0\0Az", 13)), "Az"_s);
        row("identifier at the tag's end", id3("TIT2"), kBase);
        row("half an identifier at the tag's end", id3("TIT") + titleFrame(), kBase);
        row("title behind the tag", id3(QByteArray(20, '\0')) + titleFrame(), kBase);
        row("no tag but a frame", QByteArray(10, '\xFF') + titleFrame(), kBase);
        row("nine bytes", QByteArray("ID3\3\0\0\0\0\0", 9), kBase);
        row("ten bytes", QByteArray("ID3\3\0\0\0\0\0\0", 10), kBase);
    }
    void mp3TitleIsRead() { QTEST(titleOf(kMp3, given<QByteArray>("song")), "title"); }

    // The tag is read a piece at a time: the frame may lie across any border between two pieces.
    void mp3TitleAnywhereInTheTagIsThatOfTheWholeTag() {
        for (const int border : {0, 4096, 4096 + 65536, 4096 + 2 * 65536}) {
            for (int offset = qMax(0, border - 30); offset <= border + 2; ++offset)
                QCOMPARE(titleOf(kMp3, id3(QByteArray(offset, '\0') + titleFrame() + QByteArray(100, '\0'))), kTitle);
        }
    }

    void mp3TagSizesGiveTheTitleOfTheWholeTag_data() {
        columns<QByteArray>("song");
        const QByteArray frame = titleFrame();
        const auto sized = [](const char *name, const QByteArray &frames, const QByteArray &size) {
            row(name, id3(frames).replace(6, size.size(), size));
        };
        sized("size byte 80 hex", frame + QByteArray(400, '\0'), QByteArray("\0\0\0\x80", 4));
        sized("size bytes 80 hex twice", frame + QByteArray(400, '\0'), QByteArray("\0\0\x80\x80", 4));
        sized("size byte 80 hex, too short", frame, QByteArray("\0\x80\0\0", 4));
        sized("size byte 81 hex", frame + QByteArray(400, '\0'), QByteArray("\0\0\0\x81", 4));
        sized("size byte FF", frame + QByteArray(400, '\0'), QByteArray("\xFF\0\0\x20", 4));
        sized("largest size", frame, "\x7F\x7F\x7F\x7F");
        sized("largest size with 80 hex", frame, "\x80\x80\x80\x80");
        for (int missing = 0; missing <= 24; ++missing)
            row(qPrintable("%1 bytes missing"_s.arg(missing)), id3(frame + QByteArray(20, '\0')).chopped(missing));
        for (const int size : {kTagLimit - 11, kTagLimit - 10, kTagLimit - 9, kTagLimit, kTagLimit + 1}) {
            const QByteArray padding(size - frame.size(), '\0');
            row(qPrintable("tag of %1 bytes, title last"_s.arg(size)), id3(padding + frame));
            for (const int missing : {0, 1, 9, 10, 11})
                row(qPrintable("tag of %1 bytes, title first, %2 missing"_s.arg(size).arg(missing)),
                    id3(frame + padding).chopped(missing));
        }
    }
    void mp3TagSizesGiveTheTitleOfTheWholeTag() {
        const QByteArray &song = given<QByteArray>("song");
        for (const QByteArray &content : {song, song + QByteArray(1000, '\xFF')})
            QCOMPARE(titleOf(kMp3, content), titleOfWholeTag(content));
    }

    void noMoreIsReadThanNeeded_data() {
        columns<int, QByteArray, QString, int>("formatIndex", "start", "title", "mostBytes");
        const SongInfo info = titled(kTitle);
        const QByteArray picture = frame("APIC", QByteArray(900000, 'p'));
        row("mf3", 3, SongFactory::mfx(3, info), kTitle, 512);
        row("mf5", 5, SongFactory::mfx(5, info), kTitle, 512);
        row("mid", kMid, SongFactory::midi(info), kTitle, 4096);
        row("mid without a title", kMid, SongFactory::midi(SongInfo()), kBase, 4096);
        row("mp3", kMp3, SongFactory::id3v2Tag(3, info), kTitle, 4106);
        row("mp3 without a tag", kMp3, SongFactory::mp3(0, info), kBase, 4096);
        row("mp3 with a picture behind the title", kMp3, id3(titleFrame() + picture), kTitle, 4106);
        row("mp3 with a picture and no title", kMp3, id3(picture), kBase, 4106);
        row("mp3 with a picture before the title", kMp3, id3(picture + titleFrame()), kTitle, 2 * 4096);
        row("mp3 whose title claims all", kMp3, id3("TIT2\x7F\x7F\x7F\x7F" + picture), QString(), kTagLimit);
    }
    void noMoreIsReadThanNeeded() {
        SKIP_ON_WINDOWS("what the process reads is counted by Linux");
        QFETCH(int, formatIndex);
        QFETCH(QString, title);
        const QFileInfo song(putFile(path(formatIndex), given<QByteArray>("start")));
        QVERIFY(QFile::resize(song.filePath(), 60000000));
        const qint64 before = bytesReadSoFar();
        if (before < 0)
            QSKIP("This system does not count the bytes a process reads.");
        const QString found = readSongTitle(formatIndex, song);
        const qint64 read = bytesReadSoFar() - before;
        QVERIFY2(title.isEmpty() || found == title, qPrintable(found));
        // Reading the counters counts too.
        QVERIFY2(read <= given<int>("mostBytes") + 1000, qPrintable(QString::number(read)));
    }

    void everyPrefixAndFlippedBitIsRead_data() {
        columns<int, QByteArray>("formatIndex", "song");
        const SongInfo info = titled("Azzurro"_s);
        row("mp3, Latin-1", kMp3, SongFactory::id3v2Tag(3, info, 0, 30));
        row("mp3, UTF-16", kMp3, SongFactory::id3v2Tag(3, info, 1, 30));
        row("mp3, UTF-8", kMp3, SongFactory::id3v2Tag(4, info, 3, 30));
        row("mid", kMid, SongFactory::midi(info, 0, SongFactory::Markers::WithBars, 1));
        row("kar", kKar, SongFactory::karaoke({"@LITAL"_s, "@TAzzurro"_s}, {}));
        row("mf3", kMf3, SongFactory::mfx(3, info, 1));
    }
    void everyPrefixAndFlippedBitIsRead() {
        constexpr int kInterestingBytes = 520; // the header block of an MFx song and a little of its stream
        QFETCH(int, formatIndex);
        QFETCH(QByteArray, song);
        QElapsedTimer time;
        time.start();
        for (int length = 0; length <= song.size(); ++length) {
            const QString title = titleOf(formatIndex, song.left(length));
            // A cut title, the name of the second track of a karaoke song, or none.
            QVERIFY2(title == kBase || "Azzurro"_s.startsWith(title) || "Words"_s.startsWith(title),
                     qPrintable("%1 of %2: %3"_s.arg(length).arg(song.size()).arg(title)));
        }
        QCOMPARE(titleOf(formatIndex, song), "Azzurro"_s);
        for (int bit = 0; bit < qMin(song.size(), kInterestingBytes) * 8; ++bit) {
            const int byte = bit / 8;
            QByteArray flipped = song;
            flipped[byte] = static_cast<char>(flipped.at(byte) ^ (1 << bit % 8));
            const QString title = titleOf(formatIndex, flipped);
            QVERIFY(!title.isEmpty() && title.size() <= kMidiLimit);
            QCOMPARE(title, title.trimmed());
            if (formatIndex == kMf3 && (byte < 122 || byte >= 154))
                QCOMPARE(title, "Azzurro"_s);
        }
        QVERIFY(time.elapsed() < 60000);
    }
};

QTEST_GUILESS_MAIN(TestTitleReader)
#include "tst_titlereader.moc"
