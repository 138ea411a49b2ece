#include "songtest.h"

using namespace SongFactory;

class TestId3Tag : public QObject
{
    Q_OBJECT

private slots:
    void tagIsTakenAsFarAsItsSizeSays() {
        const auto check = [](const char *name, const QByteArray &data, const QByteArray &kept) {
            Id3Tag tag;
            same(name, tag.load(data), !kept.isEmpty()); // nothing is kept of what is refused
            same(name, tag.bytes(), kept);
            same(name, tag.audioOffset(), qint64(kept.size()));
        };
        const auto sized = [](const QByteArray &size, int bytes) { return header(size).leftJustified(bytes, '\0'); };
        const QByteArray padded = id3v2Tag(3, fullInfo(), 1, 100);
        check("nothing", ""_b, ""_b);
        check("nine bytes of a tag", kEmptyTag.left(9), ""_b);
        check("nine bytes of audio", QByteArray(9, '\xFF'), ""_b);
        check("ten bytes", kEmptyTag, kEmptyTag);
        check("a tag without the audio behind it", padded + silentMp3Frames(3), padded);
        // The tag says 100: what is there is compared without its header.
        check("99", sized("00000064"_hex, 99), ""_b);
        check("100", sized("00000064"_hex, 100), sized("00000064"_hex, 100));
        check("109", sized("00000064"_hex, 109), sized("00000064"_hex, 109));
        check("110", sized("00000064"_hex, 110), sized("00000064"_hex, 110));
        check("111", sized("00000064"_hex, 111), sized("00000064"_hex, 110));
        // A size byte of 80 passes, one of 81 makes the size zero.
        check("7F last", sized("0000007F"_hex, 20000), sized("0000007F"_hex, 137));
        check("80 last", sized("00000080"_hex, 20000), sized("00000080"_hex, 138));
        check("81 last", sized("00000081"_hex, 20000), sized("00000081"_hex, 10));
        check("80 third", sized("00008001"_hex, 20000), sized("00008001"_hex, 16384 + 1 + 10));
        check("81 third", sized("00008101"_hex, 20000), sized("00008101"_hex, 10));
        check("81 second", sized("00810001"_hex, 20000), sized("00810001"_hex, 10));
        check("FF first", sized("FF000001"_hex, 20000), sized("FF000001"_hex, 10));
        check("two groups", sized("00000201"_hex, 20000), sized("00000201"_hex, 2 * 128 + 1 + 10));
        check("80 first is far too long", sized("80000000"_hex, 20000), ""_b);
        check("greatest that passes", sized("80808080"_hex, 20000), ""_b);
    }

    void fileWithoutTagGetsANewOneOfTenBytes() {
        const Id3Tag tag = loaded(silentMp3Frames(2));
        QCOMPARE(tag.bytes(), kEmptyTag);
        QCOMPARE(tag.audioOffset(), qint64(0));
        QCOMPARE(tag.formatCode(), int(Mp3Format));
    }

    void noMoreThanTheTagIsNeeded() {
        same("nothing", Id3Tag::bytesNeeded(""), 10);
        same("no tag", Id3Tag::bytesNeeded(silentMp3Frames(1).left(10)), 10);
        same("tag of 300", Id3Tag::bytesNeeded(header("0000022C"_hex)), 310);
        same("size byte 81", Id3Tag::bytesNeeded(header("00000281"_hex)), 10);
        same("1,000,001", Id3Tag::bytesNeeded(header("003D0441"_hex)), 1000011);
        same("64 MiB", Id3Tag::bytesNeeded(header("20000000"_hex)), 67108874);
        same("a byte more is refused anyway", Id3Tag::bytesNeeded(header("20000001"_hex)), 10);
    }

    void textIsDecodedByItsEncodingByte() {
        same("Latin-1", decoded("\0Perch\xE9"_b), "Perché"_s);
        same("Latin-1 ends at a zero byte", decoded("\0ab\0cd"_b), "ab"_s);
        same("Latin-1 is trimmed", decoded("\0  ab \t"_b), "ab"_s);
        same("UTF-16, little-endian mark", decoded("\x01\xFF\xFEP\0\xE9\0"_b), "Pé"_s);
        same("UTF-16, big-endian mark", decoded("\x01\xFE\xFF\0P\0\xE9"_b), "Pé"_s);
        same("UTF-16 without mark", decoded("\x01P\0\xE9\0"_b), "Pé"_s);
        same("UTF-16 with an odd byte at its end", decoded("\x01\xFF\xFEP\0\xE9\0x"_b), "Pé"_s);
        same("UTF-16, a zero inside", decoded("\x01\xFF\xFEP\0\0\0x\0"_b), "P"_s);
        same("trimmed first, cut at a zero then", decoded("\x01\xFF\xFEP\0 \0\0\0x\0"_b), "P "_s);
        same("UTF-16, mark alone", decoded("\x01\xFF\xFE"_b), QString());
        same("UTF-16, one byte", decoded("\x01\xFF"_b), QString());
        same("2 without mark is byte-swapped", decoded("\x02\0P\0Q"_b), "\u5000\u5100"_s);
        same("2 with a big-endian mark", decoded("\x02\xFE\xFF\0P"_b), "P"_s);
        same("UTF-8", decoded("\x03Perch\xC3\xA9"_b), "Perché"_s);
        same("UTF-8, a zero inside", decoded("\3ab\0cd"_b), "ab"_s);
        same("encoding 4", decoded("\4abc"_b), QString());
        same("encoding FF", decoded("\377abc"_b), QString());
        same("encoding byte alone", decoded("\0"_b), QString());
    }

    void sizeOfAFrameHasSevenBitsAByteAndEndsWithTheTag() {
        const QByteArray letters(200, 'a');
        // 201 bytes with the encoding byte: 1 * 128 + 73
        same("two size bytes", withFrames(title("00000149"_hex, '\0' + letters) + QByteArray(50, 'b')).title(),
             QString(200, QLatin1Char('a')));
        same("the upper bit of each does not count", withFrames(title("80808083"_hex, "\0abcdef"_b)).title(), "ab"_s);
        same("more than there is", withFrames(title("7F7F7F7F"_hex, "\0abc"_b)).title(), "abc"_s);
        same("more than there is, UTF-16", withFrames(title("0000007F"_hex, "\x01\xFF\xFEP\0x"_b)).title(), "P"_s);
    }

    void everyFieldIsRead() {
        SongInfo info = fullInfo();
        info.markers.clear();
        const QStringList full = fieldsOf(info) + words("marked");
        const QStringList none = fieldsOf(SongInfo()) + words("unmarked");
        same("2.3, Latin-1", fieldsIn(loaded(mp3(3, fullInfo(), 0))), full);
        same("2.3, UTF-16", fieldsIn(loaded(mp3(3, fullInfo(), 1))), full);
        same("2.4, UTF-16", fieldsIn(loaded(mp3(4, fullInfo(), 1))), full);
        same("2.4, UTF-8", fieldsIn(loaded(mp3(4, fullInfo(), 3))), full);
        same("missing frames", fieldsIn(loaded(mp3(3, SongInfo()))), none);
        same("new tag", fieldsIn(Id3Tag()), none);
    }

    void missingFrameReadsAsEmpty() {
        QString text = "old"_s;
        QCOMPARE(loaded(mp3(3, SongInfo())).frameText("TIT2", text), -1);
        QVERIFY(text.isEmpty());
        QVERIFY(!loaded(mp3(3, SongInfo())).hasFrame("TIT2"));
        QVERIFY(!loaded(mp3(3, fullInfo())).hasMedt());
    }

    void numbersThatAreNoneReadAsZero() {
        same("a number", lengthAndTempo("215000"_s), "215 215000"_s);
        same("truncated", lengthAndTempo("1999"_s), "1 1999"_s);
        same("below a second", lengthAndTempo("999"_s), "0 999"_s);
        same("negative", lengthAndTempo("-5000"_s), "0 0"_s);
        same("no number", lengthAndTempo("abc"_s), "0 0"_s);
        same("a number and more", lengthAndTempo("120 bpm"_s), "0 0"_s);
        same("too great", lengthAndTempo("99999999999999999999"_s), "0 0"_s);
        same("too great once divided", lengthAndTempo("9999999999999999"_s), "0 0"_s);
    }

    void frameWithoutRoomForItsHeaderReadsAsEmptyButIsThere() {
        for (const char *rest : {"", "\x05", "\x05\x05\x05\x05", "\x05\x05\x05\x05zz"}) {
            const Id3Tag tag = withFrames(QByteArray("TIT2") + rest);
            QString text;
            QCOMPARE(tag.frameText("TIT2", text), 10);
            QVERIFY(text.isEmpty());
            QVERIFY(tag.hasTitle());
        }
    }

    void identifierInsideAnotherTextIsFound() {
        const Id3Tag tag = withFrames(frame("TPE1", "The TCOM Band"_s) + frame("TCOM", "Writer"_s));
        QString text;
        QCOMPARE(tag.frameText("TCOM", text), 10 + 11 + 4);
        QVERIFY(text != "Writer"_s);
    }

    void fieldsAreWrittenToTheirFrames() {
        const QByteArray stored = "\0\0\0\4\0\0\0new"_b;
        same("title", edited(frame("TIT2", "old"_s), &Id3Tag::setTitle, "new"_s), tag("TIT2" + stored));
        same("artist", edited(frame("TPE1", "old"_s), &Id3Tag::setArtist, "new"_s), tag("TPE1" + stored));
        same("genre", edited(frame("TCON", "old"_s), &Id3Tag::setGenre, "new"_s), tag("TCON" + stored));
        same("author", edited(frame("TCOM", "old"_s), &Id3Tag::setAuthor, "new"_s), tag("TCOM" + stored));
        same("key", edited(frame("TKEY", "old"_s), &Id3Tag::setKey, "new"_s), tag("TKEY" + stored));
        same("empty title is removed", edited(kTitle + kArtist, &Id3Tag::setTitle, QString()), tag(kArtist));
        same("empty key is removed", edited(frame("TKEY", "C"_s) + kArtist, &Id3Tag::setKey, ""_s), tag(kArtist));
        same("title is stored as UTF-8 under encoding byte zero",
             edited(id3v2TextFrame(3, "TIT2", "old"_s, 1), &Id3Tag::setTitle, "Perché"_s),
             tag("TIT2\0\0\0\x08\0\0\0Perch\xC3\xA9"_b));
        same("length in milliseconds", edited(frame("TLEN", "180000"_s), &Id3Tag::setLength, 215),
             tag("TLEN\0\0\0\7\0\0\000215000"_b));
        same("greatest length", edited(kArtist, &Id3Tag::setLength, 2147483647),
             tag("TLEN\0\0\0\x0E\0\0\0002147483647000"_b + kArtist));
        same("length of zero is removed", edited(frame("TLEN", "1"_s) + kArtist, &Id3Tag::setLength, 0), tag(kArtist));
        same("negative length is removed", edited(frame("TLEN", "1"_s), &Id3Tag::setLength, -1), kEmptyTag);
        same("tempo", edited(frame("TBPM", "1"_s), &Id3Tag::setBpm, 140), tag("TBPM\0\0\0\4\0\0\000140"_b));
        same("tempo of zero is removed", edited(frame("TBPM", "1"_s) + kArtist, &Id3Tag::setBpm, 0), tag(kArtist));
        same("negative tempo is removed", edited(frame("TBPM", "1"_s), &Id3Tag::setBpm, -1), kEmptyTag);
        same("MEDT of four zero bytes", edited(kTitle, &Id3Tag::setMedt), tag("MEDT\0\0\0\4\0\0\0\0\0\0"_b + kTitle));
    }

    void whatIsWrittenIsReadFromTheSameTag() {
        Id3Tag tag = loaded(mp3(3, fullInfo()));
        tag.setTitle("Perché"_s);
        QCOMPARE(tag.title(), "PerchÃ©"_s);
        tag.setLength(2147483647);
        QCOMPARE(tag.length(), 2147483647);
        tag.setBpm(140);
        QCOMPARE(tag.bpm(), 140);
        tag.setMedt();
        QVERIFY(tag.hasMedt());
        tag.setTitle(QString());
        tag.setKey(QString());
        QVERIFY(!tag.hasTitle() && !tag.hasKey());
        QVERIFY(tag.hasAuthor() && tag.hasGenre() && tag.hasLength() && tag.hasBpm());
        tag.setLength(0);
        QVERIFY(!tag.hasFrame("TLEN"));
        QCOMPARE(tag.length(), 0);
    }

    void framesAreRemovedAndAddedWithTheirBytesCounted() {
        const QByteArray second = frame("TIT2", "second one"_s);
        const QByteArray added = "TIT2\0\0\0\4\0\0\0abc"_b;
        const int end = 10 + kArtist.size();
        same("removes the first alone", removed(tag(kArtist + kTitle + second)), "14 " + tag(kArtist + second));
        same("removes the only one", removed(tag(second + kArtist)), "21 " + tag(kArtist));
        same("removes none", removed(tag(kArtist)), "0 " + tag(kArtist));
        same("removes what is there of one that claims more", removed(tag(kArtist + title("7F7F7F7F"_hex, "\0abc"_b))),
             "14 " + tag(kArtist));
        same("removes one without room for its header", removed(tag(kArtist + "TIT2\x01")), "5 " + tag(kArtist));
        // A size byte of 81 keeps the ten header bytes alone: the tag's end is behind them.
        same("removes none behind the end", removed(header("00000081"_hex) + kTitle), "0 " + header("00000081"_hex));
        // Ten bytes fewer than stated: the size keeps its distance to what is there.
        same("removes within a tag of wrong size", removed(header("00000040"_hex) + kTitle + QByteArray(40, '\0')),
             "14 " + header("00000032"_hex) + QByteArray(40, '\0'));
        same("adds in front", withTitle("abc", 10), "14 " + tag(added + kArtist));
        same("adds at the end", withTitle("abc", end), "14 " + tag(kArtist + added));
        same("adds nothing beyond the end", withTitle("abc", end + 1), "0 " + tag(kArtist));
        same("adds nothing before the start", withTitle("abc", -1), "0 " + tag(kArtist));
        same("adds nothing without payload", withTitle("", 10), "0 " + tag(kArtist));
    }

    void newTagTakesNothing() {
        Id3Tag tag;
        QCOMPARE(tag.audioOffset(), qint64(0));
        QCOMPARE(tag.addFrame("TIT2", "abc", 10), 0);
        tag.setTitle("abc"_s);
        QVERIFY(tag.bytes().isEmpty());
    }

    void longFrameIsWrittenPlainlyAndReadSevenBitsAByte() {
        Id3Tag tag = withFrames("");
        tag.setTitle(QString(126, QLatin1Char('a')));
        QCOMPARE(tag.bytes().mid(14, 4), "0000007F"_hex);
        QCOMPARE(tag.title().size(), 126);
        tag.setTitle(QString(130, QLatin1Char('a')));
        // 131 bytes are 83 in hexadecimal, of which 7 bits are read back: 3 bytes, the first the encoding.
        QCOMPARE(tag.bytes(), header("0000010D"_hex) + title("00000083"_hex, '\0' + QByteArray(130, 'a')));
        QCOMPARE(tag.title(), "aa"_s);
    }

    void tagSizeIsKeptUpToDate() {
        Id3Tag tag = loaded(mp3(4, SongInfo()));
        for (int i = 0; i < 200; ++i)
            tag.addFrame("TXXX", QByteArray(90, 'x'), 10);
        QCOMPARE(tag.bytes(), id3v2TagAround(4, tag.bytes().mid(10)));
        QCOMPARE(tag.bytes().size(), 10 + 200 * 101);
        while (tag.removeFrame("TXXX") > 0) {
        }
        QCOMPARE(tag.bytes(), id3v2TagAround(4, QByteArray()));
    }

    void makersMarkIsFoundInAnyCase() {
        QVERIFY(withFrames(frame("TCOP", "(c) q-Arte srl"_s)).isQArte());
        QVERIFY(!withFrames(frame("TCOP", "(c) QArte"_s)).isQArte());
        QVERIFY(!withFrames(frame("TIT2", "Q-ARTE"_s)).isQArte());
    }

private:
    static QByteArray header(const QByteArray &sizeBytes) { return "ID3\x03\0\0"_b + sizeBytes; }
    static QByteArray tag(const QByteArray &frames) { return id3v2TagAround(3, frames); }
    static QByteArray frame(const QByteArray &id, const QString &text) { return id3v2TextFrame(3, id, text); }
    /// The frame of a title that states a size of its own.
    static QByteArray title(const QByteArray &size, const QByteArray &payload) {
        return "TIT2" + size + "\0\0"_b + payload;
    }

    static Id3Tag loaded(const QByteArray &bytes) {
        Id3Tag tag;
        if (!tag.load(bytes))
            qFatal("the tag is refused");
        return tag;
    }
    static Id3Tag withFrames(const QByteArray &frames) { return loaded(tag(frames)); }

    /// The text of the second frame of a tag.
    static QString decoded(const QByteArray &bytes) {
        QString text = "old"_s;
        const Id3Tag tag = withFrames(frame("TXXX", "x"_s) + title(bigEndian(quint32(bytes.size())), bytes) + "behind");
        return tag.frameText("TIT2", text) == 22 ? text : "not found"_s;
    }
    static QStringList fieldsIn(const Id3Tag &tag) {
        const SongInfo info{tag.title(), tag.artist(),  tag.genre(), tag.author(), tag.length(), tag.bpm(), tag.key(),
                            {},          tag.isQArte(), {},          {},           {},           0};
        return fieldsOf(info) + words(tag.isQArte() ? "marked" : "unmarked");
    }
    static QString lengthAndTempo(const QString &text) {
        const Id3Tag tag = withFrames(frame("TLEN", text) + frame("TBPM", text));
        return "%1 %2"_s.arg(tag.length()).arg(tag.bpm());
    }

    /// The tag after a call of one of its functions.
    template <typename Set, typename... T> static QByteArray edited(const QByteArray &frames, Set set, const T &...to) {
        Id3Tag tag = withFrames(frames);
        (tag.*set)(to...);
        return tag.bytes();
    }
    /// How many bytes of the title are removed, and what is left.
    static QByteArray removed(const QByteArray &bytes) {
        Id3Tag tag = loaded(bytes);
        const int count = tag.removeFrame("TIT2");
        return QByteArray::number(count) + ' ' + tag.bytes();
    }
    /// How many bytes are added as a title to a tag with an artist, and what it is then.
    static QByteArray withTitle(const QByteArray &payload, int offset) {
        Id3Tag tag = withFrames(kArtist);
        const int count = tag.addFrame("TIT2", payload, offset);
        return QByteArray::number(count) + ' ' + tag.bytes();
    }

    inline static const QByteArray kEmptyTag = header("00000000"_hex);
    inline static const QByteArray kArtist = frame("TPE1", "artist"_s);
    inline static const QByteArray kTitle = frame("TIT2", "abc"_s);
};

QTEST_GUILESS_MAIN(TestId3Tag)
#include "tst_id3tag.moc"
