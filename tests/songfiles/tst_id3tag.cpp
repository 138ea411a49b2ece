#include "songtest.h"

using namespace SongFactory;
using TextSetter = void (Id3Tag::*)(const QString &);
Q_DECLARE_METATYPE(TextSetter)

class TestId3Tag : public QObject
{
    Q_OBJECT

private slots:
    void newTagIsEmptyAndTakesNothing()
    {
        Id3Tag tag;
        QCOMPARE(tag.audioOffset(), qint64(0));
        QVERIFY(tag.title().isEmpty());
        QCOMPARE(tag.addFrame("TIT2", "abc", 10), 0);
        tag.setTitle("abc"_s);
        QVERIFY(tag.bytes().isEmpty());
    }

    void fewerThanTenBytesAreRefused()
    {
        Id3Tag tag;
        QVERIFY(!tag.load(QByteArray()));
        QVERIFY(!tag.load(kEmptyTag.left(9)));
        QVERIFY(!tag.load(QByteArray(9, '\xFF')));
        QVERIFY(tag.load(kEmptyTag));
        QCOMPARE(tag.audioOffset(), qint64(10));
    }

    void fileWithoutTagGetsANewOneOfTenBytes()
    {
        const Id3Tag tag = loaded(silentMp3Frames(2));
        QCOMPARE(tag.bytes(), kEmptyTag);
        QCOMPARE(tag.audioOffset(), qint64(0));
        QCOMPARE(tag.formatCode(), int(Mp3Format));
    }

    void tagIsKeptWithoutTheAudioBehindIt()
    {
        const QByteArray bytes = id3v2Tag(3, fullInfo(), 1, 100);
        const Id3Tag tag = loaded(bytes + silentMp3Frames(3));
        QCOMPARE(tag.bytes(), bytes);
        QCOMPARE(tag.audioOffset(), qint64(bytes.size()));
    }

    void tagIsKeptAsItsSizeSaysAndRefusedWhenLongerThanTheData_data()
    {
        columns<QByteArray, int, int>("sizeBytes", "dataSize", "kept");
        // The tag says 100: what is there is compared without its header.
        row("99", "00000064"_hex, 99, -1);
        row("100", "00000064"_hex, 100, 100);
        row("109", "00000064"_hex, 109, 109);
        row("110", "00000064"_hex, 110, 110);
        row("111", "00000064"_hex, 111, 110);
        // A size byte of 80 passes, one of 81 makes the size zero.
        row("7F last", "0000007F"_hex, 20000, 137);
        row("80 last", "00000080"_hex, 20000, 138);
        row("81 last", "00000081"_hex, 20000, 10);
        row("80 third", "00008001"_hex, 20000, 16384 + 1 + 10);
        row("81 third", "00008101"_hex, 20000, 10);
        row("81 second", "00810001"_hex, 20000, 10);
        row("FF first", "FF000001"_hex, 20000, 10);
        row("two groups", "00000201"_hex, 20000, 2 * 128 + 1 + 10);
        row("80 first is far too long", "80000000"_hex, 20000, -1);
        row("greatest that passes", "80808080"_hex, 20000, -1);
    }
    void tagIsKeptAsItsSizeSaysAndRefusedWhenLongerThanTheData()
    {
        QFETCH(QByteArray, sizeBytes);
        QFETCH(int, dataSize);
        QFETCH(int, kept);
        Id3Tag tag;
        QCOMPARE(tag.load(tagHeader(sizeBytes).leftJustified(dataSize, '\0')), kept >= 0);
        QCOMPARE(tag.bytes().size(), qMax(kept, 0));
        QCOMPARE(tag.audioOffset(), qint64(qMax(kept, 0)));
    }

    void noMoreThanTheTagIsNeeded_data()
    {
        columns<QByteArray, int>("header", "needed");
        row("nothing", QByteArray(), 10);
        row("no tag", silentMp3Frames(1).left(10), 10);
        row("tag of 300", tagHeader("0000022C"_hex), 310);
        row("size byte 81", tagHeader("00000281"_hex), 10);
        row("999,990", tagHeader("003D0436"_hex), 1000000);
        row("1,000,000", tagHeader("003D0440"_hex), 1000000);
        row("1,000,001 is refused anyway", tagHeader("003D0441"_hex), 10);
    }
    void noMoreThanTheTagIsNeeded()
    {
        QFETCH(QByteArray, header);
        QTEST(Id3Tag::bytesNeeded(header), "needed");
    }

    void textIsDecodedByItsEncodingByte_data()
    {
        columns<QByteArray, QString>("payload", "text");
        row("Latin-1", "\0Perch\xE9"_b, "Perché"_s);
        row("Latin-1 ends at a zero byte", "\0ab\0cd"_b, "ab"_s);
        row("Latin-1 is trimmed", "\0  ab \t"_b, "ab"_s);
        row("UTF-16, little-endian mark", "\x01\xFF\xFEP\0\xE9\0"_b, "Pé"_s);
        row("UTF-16, big-endian mark", "\x01\xFE\xFF\0P\0\xE9"_b, "Pé"_s);
        row("UTF-16 without mark", "\x01P\0\xE9\0"_b, "Pé"_s);
        row("UTF-16 with an odd byte at its end", "\x01\xFF\xFEP\0\xE9\0x"_b, "Pé"_s);
        row("UTF-16, a zero inside", "\x01\xFF\xFEP\0\0\0x\0"_b, "P"_s);
        row("trimmed first, cut at a zero then", "\x01\xFF\xFEP\0 \0\0\0x\0"_b, "P "_s);
        row("UTF-16, mark alone", "\x01\xFF\xFE"_b, QString());
        row("UTF-16, one byte", "\x01\xFF"_b, QString());
        row("2 without mark is byte-swapped", "\x02\0P\0Q"_b, "\u5000\u5100"_s);
        row("2 with a big-endian mark", "\x02\xFE\xFF\0P"_b, "P"_s);
        row("UTF-8", "\x03Perch\xC3\xA9"_b, "Perché"_s);
        row("UTF-8, a zero inside", "\3ab\0cd"_b, "ab"_s);
        row("encoding 4", "\4abc"_b, QString());
        row("encoding FF", "\377abc"_b, QString());
        row("encoding byte alone", "\0"_b, QString());
    }
    void textIsDecodedByItsEncodingByte()
    {
        QFETCH(QByteArray, payload);
        const QByteArray other = "TXXX\0\0\0\x02\0\0\0x"_b;
        const Id3Tag tag = withFrames(other + title(bigEndian(unsigned(payload.size())), payload) + "behind");
        QString text = "old"_s;
        QCOMPARE(tag.frameText("TIT2", text), 22);
        QTEST(text, "text");
    }

    void everyFieldIsRead_data()
    {
        columns<int, int>("version", "encoding");
        row("2.3, Latin-1", 3, 0);
        row("2.3, UTF-16", 3, 1);
        row("2.4, UTF-16", 4, 1);
        row("2.4, UTF-8", 4, 3);
    }
    void everyFieldIsRead()
    {
        QFETCH(int, version);
        QFETCH(int, encoding);
        const Id3Tag tag = loaded(mp3(version, fullInfo(), encoding));
        QCOMPARE(QStringList({tag.title(), tag.artist(), tag.genre(), tag.author(), tag.key()}),
                 words("Volare Domenico Canzone Modugno Bb"));
        QCOMPARE(tag.length(), 215);
        QCOMPARE(tag.bpm(), 128);
        QVERIFY(tag.isQArte());
        QVERIFY(!tag.hasMedt());
    }

    void missingFramesReadAsEmpty()
    {
        const Id3Tag tag = loaded(mp3(3, SongInfo()));
        QString text = "old"_s;
        QCOMPARE(tag.frameText("TIT2", text), -1);
        QVERIFY(text.isEmpty());
        QVERIFY(!tag.hasFrame("TIT2"));
        QCOMPARE(tag.length(), 0);
        QCOMPARE(tag.bpm(), 0);
        QVERIFY(!tag.isQArte());
    }

    void numbersThatAreNoneReadAsZero_data()
    {
        columns<QString, int, int>("text", "length", "bpm");
        row("a number", "215000"_s, 215, 215000);
        row("truncated", "1999"_s, 1, 1999);
        row("below a second", "999"_s, 0, 999);
        row("negative", "-5000"_s, 0, 0);
        row("no number", "abc"_s, 0, 0);
        row("a number and more", "120 bpm"_s, 0, 0);
        row("too great", "99999999999999999999"_s, 0, 0);
        row("too great once divided", "9999999999999999"_s, 0, 0);
    }
    void numbersThatAreNoneReadAsZero()
    {
        QFETCH(QString, text);
        const Id3Tag tag = withFrames(textFrame("TLEN", text) + textFrame("TBPM", text));
        QTEST(tag.length(), "length");
        QTEST(tag.bpm(), "bpm");
    }

    void lengthIsInMillisecondsInTheFrame_data()
    {
        columns<int, QByteArray>("seconds", "frame");
        row("three digits", 215, "TLEN\0\0\0\7\0\0\000215000"_b);
        row("greatest", 2147483647, "TLEN\0\0\0\x0E\0\0\0002147483647000"_b);
    }
    void lengthIsInMillisecondsInTheFrame()
    {
        QFETCH(int, seconds);
        Id3Tag tag = withFrames(textFrame("TLEN", "180000"_s));
        QCOMPARE(tag.length(), 180);
        tag.setLength(seconds);
        QTEST(tag.bytes().mid(10), "frame");
        QCOMPARE(tag.length(), seconds);
    }

    void numberOfZeroOrLessRemovesItsFrame_data()
    {
        columns<int>("number");
        row("0", 0);
        row("-1", -1);
    }
    void numberOfZeroOrLessRemovesItsFrame()
    {
        QFETCH(int, number);
        Id3Tag tag = loaded(mp3(3, fullInfo()));
        tag.setLength(number);
        QVERIFY(!tag.hasFrame("TLEN"));
        QCOMPARE(tag.length(), 0);
        tag.setBpm(140);
        QCOMPARE(tag.bpm(), 140);
        tag.setBpm(number);
        QVERIFY(!tag.hasFrame("TBPM"));
    }

    void frameSizeIsReadSevenBitsAByteAndNoFurtherThanThereIs_data()
    {
        columns<QByteArray, QString>("frames", "text");
        const QByteArray letters(200, 'a');
        // 201 bytes with the encoding byte: 1 * 128 + 73
        row("two size bytes", title("00000149"_hex, '\0' + letters) + QByteArray(50, 'b'),
            QString::fromLatin1(letters));
        row("the upper bit of each does not count", title("80808083"_hex, "\0abcdef"_b), "ab"_s);
        row("more than there is", title("7F7F7F7F"_hex, "\0abc"_b), "abc"_s);
        row("more than there is, UTF-16", title("0000007F"_hex, "\x01\xFF\xFEP\0x"_b), "P"_s);
    }
    void frameSizeIsReadSevenBitsAByteAndNoFurtherThanThereIs()
    {
        QFETCH(QByteArray, frames);
        QTEST(withFrames(frames).title(), "text");
    }

    void frameWithoutRoomForItsHeaderReadsAsEmptyButIsThere()
    {
        for (const char *rest : {"", "\x05", "\x05\x05\x05\x05", "\x05\x05\x05\x05zz"}) {
            const Id3Tag tag = withFrames(QByteArray("TIT2") + rest);
            QString text;
            QCOMPARE(tag.frameText("TIT2", text), 10);
            QVERIFY(text.isEmpty());
            QVERIFY(tag.hasTitle());
        }
    }

    void identifierInsideAnotherTextIsFound()
    {
        const Id3Tag tag = withFrames(textFrame("TPE1", "The TCOM Band"_s) + textFrame("TCOM", "Writer"_s));
        QString text;
        QCOMPARE(tag.frameText("TCOM", text), 10 + 11 + 4);
        QVERIFY(text != "Writer"_s);
    }

    void removingTakesTheFirstFrameAndNoMoreThanThereIs_data()
    {
        columns<QByteArray, int, QByteArray>("frames", "removed", "left");
        const QByteArray second = textFrame("TIT2", "second one"_s);
        row("the first alone", kArtist + kTitle + second, 14, kArtist + second);
        row("the only one", second + kArtist, 21, kArtist);
        row("none", kArtist, 0, kArtist);
        row("claims more than there is", kArtist + title("7F7F7F7F"_hex, "\0abc"_b), 14, kArtist);
        row("no room for its header", kArtist + "TIT2\x01", 5, kArtist);
    }
    void removingTakesTheFirstFrameAndNoMoreThanThereIs()
    {
        QFETCH(QByteArray, left);
        QFETCH(QByteArray, frames);
        Id3Tag tag = withFrames(frames);
        QTEST(tag.removeFrame("TIT2"), "removed");
        QCOMPARE(tag.bytes(), id3v2TagAround(3, left));
        QCOMPARE(tag.title(), left == kArtist ? QString() : "second one"_s);
    }

    void framesBehindTheEndOfTheTagAreNotRemoved()
    {
        // A size byte of 81 keeps the ten header bytes alone: the tag's end is behind them.
        Id3Tag tag = loaded(tagHeader("00000081"_hex) + kTitle);
        QCOMPARE(tag.removeFrame("TIT2"), 0);
        QCOMPARE(tag.bytes().size(), 10);
    }

    void addedFrameIsLaidOutPlainlyOrRefused_data()
    {
        columns<int, QByteArray, QByteArray>("offset", "payload", "frames");
        const QByteArray added = "TIT2\0\0\0\4\0\0\0abc"_b;
        const int end = 10 + kArtist.size();
        row("in front", 10, "abc"_b, added + kArtist);
        row("at the end", end, "abc"_b, kArtist + added);
        row("beyond the end", end + 1, "abc"_b, kArtist);
        row("before the start", -1, "abc"_b, kArtist);
        row("without payload", 10, QByteArray(), kArtist);
    }
    void addedFrameIsLaidOutPlainlyOrRefused()
    {
        QFETCH(int, offset);
        QFETCH(QByteArray, payload);
        QFETCH(QByteArray, frames);
        Id3Tag tag = withFrames(kArtist);
        QCOMPARE(tag.addFrame("TIT2", payload, offset), frames.size() - kArtist.size());
        QCOMPARE(tag.bytes(), id3v2TagAround(3, frames));
    }

    void longFrameIsWrittenPlainlyAndReadSevenBitsAByte()
    {
        Id3Tag tag = withFrames(QByteArray());
        tag.setTitle(QString(126, QLatin1Char('a')));
        QCOMPARE(tag.bytes().mid(14, 4), "0000007F"_hex);
        QCOMPARE(tag.title().size(), 126);
        tag.setTitle(QString(130, QLatin1Char('a')));
        // 131 bytes are 83 in hexadecimal, of which 7 bits are read back: 3 bytes, the first the encoding.
        QCOMPARE(tag.bytes().mid(14, 4), "00000083"_hex);
        QCOMPARE(tag.title(), "aa"_s);
        QCOMPARE(tag.bytes().size(), 10 + 10 + 131);
        QCOMPARE(tag.bytes().mid(6, 4), "0000010D"_hex);
    }

    void tagSizeIsKeptUpToDate()
    {
        Id3Tag tag = loaded(mp3(4, SongInfo()));
        for (int i = 0; i < 200; ++i)
            tag.addFrame("TXXX", QByteArray(90, 'x'), 10);
        QCOMPARE(tag.bytes(), id3v2TagAround(4, tag.bytes().mid(10)));
        QCOMPARE(tag.bytes().size(), 10 + 200 * 101);
        while (tag.removeFrame("TXXX") > 0) {
        }
        QCOMPARE(tag.bytes(), id3v2TagAround(4, QByteArray()));
    }

    void titleIsStoredAsUtf8UnderEncodingByteZero()
    {
        Id3Tag tag = withFrames(id3v2TextFrame(3, "TIT2", "old"_s, 1));
        tag.setTitle("Perché"_s);
        QCOMPARE(tag.bytes().mid(10), "TIT2\0\0\0\x08\0\0\0Perch\xC3\xA9"_b);
        QCOMPARE(tag.title(), "PerchÃ©"_s);
    }

    void eachFieldIsWrittenToItsFrame_data()
    {
        columns<QByteArray, TextSetter>("id", "setter");
        row("TIT2", "TIT2"_b, &Id3Tag::setTitle);
        row("TPE1", "TPE1"_b, &Id3Tag::setArtist);
        row("TCON", "TCON"_b, &Id3Tag::setGenre);
        row("TCOM", "TCOM"_b, &Id3Tag::setAuthor);
        row("TKEY", "TKEY"_b, &Id3Tag::setKey);
    }
    void eachFieldIsWrittenToItsFrame()
    {
        QFETCH(QByteArray, id);
        QFETCH(TextSetter, setter);
        Id3Tag tag = withFrames(textFrame(id, "old"_s));
        (tag.*setter)("new"_s);
        QCOMPARE(tag.bytes(), id3v2TagAround(3, id + "\0\0\0\4\0\0\0new"_b));
    }

    void emptyTextLeavesTheFrameRemoved()
    {
        Id3Tag tag = loaded(mp3(3, fullInfo()));
        tag.setTitle(QString());
        tag.setKey(QString());
        QVERIFY(!tag.hasTitle() && !tag.hasKey());
        QVERIFY(tag.hasAuthor() && tag.hasGenre() && tag.hasLength() && tag.hasBpm());
    }

    void medtFrameHoldsFourZeroBytes()
    {
        Id3Tag tag = withFrames(kTitle);
        tag.setMedt();
        QVERIFY(tag.hasMedt());
        QCOMPARE(tag.bytes().mid(10, 14), "MEDT\0\0\0\4\0\0\0\0\0\0"_b);
        QCOMPARE(tag.title(), "abc"_s);
    }

    void makersMarkIsFoundInAnyCase()
    {
        QVERIFY(withFrames(textFrame("TCOP", "(c) q-Arte srl"_s)).isQArte());
        QVERIFY(!withFrames(textFrame("TCOP", "(c) QArte"_s)).isQArte());
        QVERIFY(!withFrames(textFrame("TIT2", "Q-ARTE"_s)).isQArte());
    }

    void editsOfATagOfWrongSizeStayInside()
    {
        // Ten bytes fewer than stated: the size keeps its distance to what is there.
        Id3Tag tag = loaded(tagHeader("00000040"_hex) + kTitle + QByteArray(40, '\0'));
        QCOMPARE(tag.bytes().size(), 64);
        QCOMPARE(tag.removeFrame("TIT2"), 14);
        QCOMPARE(tag.bytes().mid(6, 4), "00000032"_hex);
        QCOMPARE(tag.bytes().size(), 50);
    }

private:
    static Id3Tag loaded(const QByteArray &bytes)
    {
        Id3Tag tag;
        if (!tag.load(bytes))
            qFatal("the tag is refused");
        return tag;
    }
    static Id3Tag withFrames(const QByteArray &frames) { return loaded(id3v2TagAround(3, frames)); }
    static QByteArray textFrame(const QByteArray &id, const QString &text) { return id3v2TextFrame(3, id, text); }
    static QByteArray tagHeader(const QByteArray &sizeBytes) { return "ID3\x03\0\0"_b + sizeBytes; }
    /// The frame of a title that states a size of its own.
    static QByteArray title(const QByteArray &size, const QByteArray &payload)
    {
        return "TIT2" + size + "\0\0"_b + payload;
    }

    const QByteArray kEmptyTag = tagHeader("00000000"_hex);
    const QByteArray kArtist = textFrame("TPE1", "artist"_s);
    const QByteArray kTitle = textFrame("TIT2", "abc"_s);
};

QTEST_GUILESS_MAIN(TestId3Tag)
#include "tst_id3tag.moc"
