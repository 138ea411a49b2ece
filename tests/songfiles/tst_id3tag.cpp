#include "songfactory/songfactory.h"
#include "songfiles/id3tag.h"
#include "songfiles/songinfo.h"
#include "songtest.h"

#include <QtTest>

class TestId3Tag : public QObject
{
    Q_OBJECT

private slots:
    void newTagIsEmpty();
    void fewerThanTenBytesAreRefused();
    void fileWithoutTagGetsANewOneOfTenBytes();
    void tagIsKeptWithoutTheAudioBehindIt();
    void tagLongerThanTheDataIsRefused_data();
    void tagLongerThanTheDataIsRefused();
    void sizeByteOf80PassesAndOf81MakesTheSizeZero_data();
    void sizeByteOf80PassesAndOf81MakesTheSizeZero();
    void noMoreThanTheTagIsNeeded_data();
    void noMoreThanTheTagIsNeeded();
    void textIsDecodedByItsEncodingByte_data();
    void textIsDecodedByItsEncodingByte();
    void everyFieldIsRead_data();
    void everyFieldIsRead();
    void missingFramesReadAsEmpty();
    void numbersThatAreNoneReadAsZero_data();
    void numbersThatAreNoneReadAsZero();
    void lengthIsInMillisecondsInTheFrame();
    void lengthOfZeroOrLessRemovesTheFrame();
    void greatestLengthIsWrittenWhole();
    void tempoOfZeroOrLessRemovesTheFrame();
    void frameSizeIsReadSevenBitsAByte();
    void frameThatClaimsMoreThanThereIsReadsWhatThereIs();
    void frameWithoutRoomForItsHeaderReadsAsEmptyButIsThere();
    void identifierInsideAnotherTextIsFound();
    void removingTakesTheFirstFrameAlone();
    void removingAMissingFrameChangesNothing();
    void removingTakesNoMoreThanThereIs();
    void framesBehindTheEndOfTheTagAreNotRemoved();
    void addedFrameIsLaidOutPlainly();
    void addingIsRefusedBeyondTheTagOrWithoutPayload();
    void longFrameIsWrittenPlainlyAndReadSevenBitsAByte();
    void tagSizeIsKeptUpToDate();
    void titleIsStoredAsUtf8UnderEncodingByteZero();
    void eachFieldIsWrittenToItsFrame_data();
    void eachFieldIsWrittenToItsFrame();
    void emptyTextLeavesTheFrameRemoved();
    void medtFrameHoldsFourZeroBytes();
    void makersMarkIsFoundInAnyCase();
    void editsOfATagOfWrongSizeStayInside();
};

namespace {

Id3Tag loaded(const QByteArray &bytes)
{
    Id3Tag tag;
    if (!tag.load(bytes))
        qFatal("the tag is refused");
    return tag;
}

Id3Tag withFrames(const QByteArray &frames)
{
    return loaded(SongFactory::id3v2TagAround(3, frames));
}

QByteArray frame(const char *id, const QByteArray &size, const QByteArray &payload)
{
    return QByteArray(id) + size + QByteArray(2, '\0') + payload;
}

QByteArray tagHeader(const QByteArray &sizeBytes)
{
    return QByteArray("ID3\x03\0\0", 6) + sizeBytes;
}

} // namespace

void TestId3Tag::newTagIsEmpty()
{
    const Id3Tag tag;
    QVERIFY(tag.bytes().isEmpty());
    QCOMPARE(tag.audioOffset(), qint64(0));
    QVERIFY(tag.title().isEmpty());
}

void TestId3Tag::fewerThanTenBytesAreRefused()
{
    Id3Tag tag;
    QVERIFY(!tag.load(QByteArray()));
    QVERIFY(!tag.load(QByteArray("ID3\x03\0\0\0\0\0", 9)));
    QVERIFY(!tag.load(QByteArray(9, '\xFF')));
    QVERIFY(tag.load(QByteArray("ID3\x03\0\0\0\0\0\0", 10)));
    QCOMPARE(tag.audioOffset(), qint64(10));
}

void TestId3Tag::fileWithoutTagGetsANewOneOfTenBytes()
{
    const Id3Tag tag = loaded(SongFactory::silentMp3Frames(2));
    QCOMPARE(tag.bytes(), QByteArray("ID3\x03\0\0\0\0\0\0", 10));
    QCOMPARE(tag.audioOffset(), qint64(0));
    QCOMPARE(tag.formatCode(), int(Mp3Format));
}

void TestId3Tag::tagIsKeptWithoutTheAudioBehindIt()
{
    const QByteArray bytes = SongFactory::id3v2Tag(3, SongTest::fullInfo(), 1, 100);
    const Id3Tag tag = loaded(bytes + SongFactory::silentMp3Frames(3));
    QCOMPARE(tag.bytes(), bytes);
    QCOMPARE(tag.audioOffset(), qint64(bytes.size()));
}

void TestId3Tag::tagLongerThanTheDataIsRefused_data()
{
    QTest::addColumn<int>("dataSize");
    QTest::addColumn<int>("kept");
    // The tag says 100: what is there is compared without its header.
    QTest::newRow("99") << 99 << -1;
    QTest::newRow("100") << 100 << 100;
    QTest::newRow("109") << 109 << 109;
    QTest::newRow("110") << 110 << 110;
    QTest::newRow("111") << 111 << 110;
}

void TestId3Tag::tagLongerThanTheDataIsRefused()
{
    QFETCH(int, dataSize);
    QFETCH(int, kept);
    Id3Tag tag;
    const QByteArray data = tagHeader(QByteArray::fromHex("00000064")).leftJustified(dataSize, '\0');
    QCOMPARE(tag.load(data), kept >= 0);
    QCOMPARE(tag.bytes().size(), qMax(kept, 0));
    QCOMPARE(tag.audioOffset(), qint64(qMax(kept, 0)));
}

void TestId3Tag::sizeByteOf80PassesAndOf81MakesTheSizeZero_data()
{
    QTest::addColumn<QByteArray>("sizeBytes");
    QTest::addColumn<int>("kept");
    QTest::newRow("7F last") << QByteArray::fromHex("0000007F") << 137;
    QTest::newRow("80 last") << QByteArray::fromHex("00000080") << 138;
    QTest::newRow("81 last") << QByteArray::fromHex("00000081") << 10;
    QTest::newRow("80 third") << QByteArray::fromHex("00008001") << 16384 + 1 + 10;
    QTest::newRow("81 third") << QByteArray::fromHex("00008101") << 10;
    QTest::newRow("81 second") << QByteArray::fromHex("00810001") << 10;
    QTest::newRow("FF first") << QByteArray::fromHex("FF000001") << 10;
    QTest::newRow("two groups") << QByteArray::fromHex("00000201") << 2 * 128 + 1 + 10;
    QTest::newRow("80 first is far too long") << QByteArray::fromHex("80000000") << -1;
    QTest::newRow("greatest that passes") << QByteArray::fromHex("80808080") << -1;
}

void TestId3Tag::sizeByteOf80PassesAndOf81MakesTheSizeZero()
{
    QFETCH(QByteArray, sizeBytes);
    QFETCH(int, kept);
    Id3Tag tag;
    QCOMPARE(tag.load(tagHeader(sizeBytes).leftJustified(20000, '\0')), kept >= 0);
    QCOMPARE(tag.bytes().size(), qMax(kept, 0));
    QCOMPARE(tag.audioOffset(), qint64(qMax(kept, 0)));
}

void TestId3Tag::noMoreThanTheTagIsNeeded_data()
{
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<int>("needed");
    QTest::newRow("nothing") << QByteArray() << 10;
    QTest::newRow("no tag") << SongFactory::silentMp3Frames(1).left(10) << 10;
    QTest::newRow("tag of 300") << tagHeader(QByteArray::fromHex("0000022C")) << 310;
    QTest::newRow("size byte 81") << tagHeader(QByteArray::fromHex("00000281")) << 10;
    QTest::newRow("999,990") << tagHeader(QByteArray::fromHex("003D0436")) << 1000000;
    QTest::newRow("1,000,000") << tagHeader(QByteArray::fromHex("003D0440")) << 1000000;
    QTest::newRow("1,000,001 is refused anyway") << tagHeader(QByteArray::fromHex("003D0441")) << 10;
}

void TestId3Tag::noMoreThanTheTagIsNeeded()
{
    QFETCH(QByteArray, header);
    QTEST(Id3Tag::bytesNeeded(header), "needed");
}

void TestId3Tag::textIsDecodedByItsEncodingByte_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QString>("text");
    QTest::newRow("Latin-1") << QByteArray("\0Perch\xE9", 7) << QStringLiteral("Perché");
    QTest::newRow("Latin-1 ends at a zero byte") << QByteArray("\0ab\0cd", 6) << QStringLiteral("ab");
    QTest::newRow("Latin-1 is trimmed") << QByteArray("\0  ab \t", 7) << QStringLiteral("ab");
    QTest::newRow("UTF-16, little-endian mark") << QByteArray("\x01\xFF\xFEP\0\xE9\0", 7) << QStringLiteral("Pé");
    QTest::newRow("UTF-16, big-endian mark") << QByteArray("\x01\xFE\xFF\0P\0\xE9", 7) << QStringLiteral("Pé");
    QTest::newRow("UTF-16 without mark") << QByteArray("\x01P\0\xE9\0", 5) << QStringLiteral("Pé");
    QTest::newRow("UTF-16 with an odd byte at its end")
        << QByteArray("\x01\xFF\xFEP\0\xE9\0x", 8) << QStringLiteral("Pé");
    QTest::newRow("UTF-16, a zero inside") << QByteArray("\x01\xFF\xFEP\0\0\0x\0", 9) << QStringLiteral("P");
    QTest::newRow("trimmed first, cut at a zero then")
        << QByteArray("\x01\xFF\xFEP\0 \0\0\0x\0", 11) << QStringLiteral("P ");
    QTest::newRow("UTF-16, mark alone") << QByteArray("\x01\xFF\xFE", 3) << QString();
    QTest::newRow("UTF-16, one byte") << QByteArray("\x01\xFF", 2) << QString();
    QTest::newRow("2 without mark is byte-swapped")
        << QByteArray("\x02\0P\0Q", 5) << QString::fromUtf16(u"\u5000\u5100");
    QTest::newRow("2 with a big-endian mark") << QByteArray("\x02\xFE\xFF\0P", 5) << QStringLiteral("P");
    QTest::newRow("UTF-8") << QByteArray("\x03Perch\xC3\xA9", 8) << QStringLiteral("Perché");
    QTest::newRow("UTF-8, a zero inside") << QByteArray("\x03"
                                                        "ab\0cd",
                                                        6)
                                          << QStringLiteral("ab");
    QTest::newRow("encoding 4") << QByteArray("\x04"
                                              "abc",
                                              4)
                                << QString();
    QTest::newRow("encoding FF") << QByteArray("\xFF"
                                               "abc",
                                               4)
                                 << QString();
    QTest::newRow("encoding byte alone") << QByteArray(1, '\0') << QString();
}

void TestId3Tag::textIsDecodedByItsEncodingByte()
{
    QFETCH(QByteArray, payload);
    const QByteArray size = QByteArray(3, '\0') + QByteArray(1, char(payload.size()));
    const Id3Tag tag = withFrames(frame("TXXX", QByteArray::fromHex("00000002"), QByteArray("\0x", 2)) +
                                  frame("TIT2", size, payload) + QByteArray("behind"));
    QString text = QStringLiteral("old");
    QCOMPARE(tag.frameText("TIT2", text), 22);
    QTEST(text, "text");
}

void TestId3Tag::everyFieldIsRead_data()
{
    QTest::addColumn<int>("version");
    QTest::addColumn<int>("encoding");
    QTest::newRow("2.3, Latin-1") << 3 << 0;
    QTest::newRow("2.3, UTF-16") << 3 << 1;
    QTest::newRow("2.4, UTF-16") << 4 << 1;
    QTest::newRow("2.4, UTF-8") << 4 << 3;
}

void TestId3Tag::everyFieldIsRead()
{
    QFETCH(int, version);
    QFETCH(int, encoding);
    const Id3Tag tag = loaded(SongFactory::mp3(version, SongTest::fullInfo(), encoding));
    QCOMPARE(tag.title(), QStringLiteral("Volare"));
    QCOMPARE(tag.artist(), QStringLiteral("Domenico"));
    QCOMPARE(tag.genre(), QStringLiteral("Canzone"));
    QCOMPARE(tag.author(), QStringLiteral("Modugno"));
    QCOMPARE(tag.key(), QStringLiteral("Bb"));
    QCOMPARE(tag.length(), 215);
    QCOMPARE(tag.bpm(), 128);
    QVERIFY(tag.isQArte());
    QVERIFY(!tag.hasMedt());
}

void TestId3Tag::missingFramesReadAsEmpty()
{
    const Id3Tag tag = loaded(SongFactory::mp3(3, SongInfo()));
    QString text = QStringLiteral("old");
    QCOMPARE(tag.frameText("TIT2", text), -1);
    QVERIFY(text.isEmpty());
    QVERIFY(!tag.hasFrame("TIT2"));
    QCOMPARE(tag.length(), 0);
    QCOMPARE(tag.bpm(), 0);
    QVERIFY(!tag.isQArte());
}

void TestId3Tag::numbersThatAreNoneReadAsZero_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("bpm");
    QTest::newRow("a number") << QStringLiteral("215000") << 215 << 215000;
    QTest::newRow("truncated") << QStringLiteral("1999") << 1 << 1999;
    QTest::newRow("below a second") << QStringLiteral("999") << 0 << 999;
    QTest::newRow("negative") << QStringLiteral("-5000") << 0 << 0;
    QTest::newRow("no number") << QStringLiteral("abc") << 0 << 0;
    QTest::newRow("a number and more") << QStringLiteral("120 bpm") << 0 << 0;
    QTest::newRow("too great") << QStringLiteral("99999999999999999999") << 0 << 0;
    QTest::newRow("too great once divided") << QStringLiteral("9999999999999999") << 0 << 0;
}

void TestId3Tag::numbersThatAreNoneReadAsZero()
{
    QFETCH(QString, text);
    const Id3Tag tag =
        withFrames(SongFactory::id3v2TextFrame(3, "TLEN", text) + SongFactory::id3v2TextFrame(3, "TBPM", text));
    QTEST(tag.length(), "length");
    QTEST(tag.bpm(), "bpm");
}

void TestId3Tag::lengthIsInMillisecondsInTheFrame()
{
    Id3Tag tag = withFrames(SongFactory::id3v2TextFrame(3, "TLEN", QStringLiteral("215000")));
    QCOMPARE(tag.length(), 215);
    tag.setLength(180);
    QString text;
    QCOMPARE(tag.frameText("TLEN", text), 10);
    QCOMPARE(text, QStringLiteral("180000"));
    tag.setLength(215);
    QCOMPARE(tag.bytes().mid(10), QByteArray("TLEN\0\0\0\x07\0\0\0"
                                             "215000",
                                             17));
}

void TestId3Tag::lengthOfZeroOrLessRemovesTheFrame()
{
    for (const int seconds : {0, -1}) {
        Id3Tag tag = loaded(SongFactory::mp3(3, SongTest::fullInfo()));
        tag.setLength(seconds);
        QVERIFY(!tag.hasFrame("TLEN"));
        QCOMPARE(tag.length(), 0);
    }
}

void TestId3Tag::greatestLengthIsWrittenWhole()
{
    Id3Tag tag = withFrames(QByteArray());
    tag.setLength(2147483647);
    QVERIFY(tag.bytes().endsWith("2147483647000"));
    QCOMPARE(tag.length(), 2147483647);
}

void TestId3Tag::tempoOfZeroOrLessRemovesTheFrame()
{
    for (const int bpm : {0, -1}) {
        Id3Tag tag = loaded(SongFactory::mp3(3, SongTest::fullInfo()));
        tag.setBpm(140);
        QCOMPARE(tag.bpm(), 140);
        tag.setBpm(bpm);
        QVERIFY(!tag.hasFrame("TBPM"));
    }
}

void TestId3Tag::frameSizeIsReadSevenBitsAByte()
{
    const QByteArray text(200, 'a');
    // 201 bytes with the encoding byte: 1 * 128 + 73
    const Id3Tag tag = withFrames(frame("TIT2", QByteArray::fromHex("00000149"), '\0' + text) + QByteArray(50, 'b'));
    QCOMPARE(tag.title(), QString::fromLatin1(text));
    // The upper bit of each size byte does not count.
    const Id3Tag upperBits = withFrames(frame("TIT2", QByteArray::fromHex("80808083"), QByteArray("\0abcdef", 7)));
    QCOMPARE(upperBits.title(), QStringLiteral("ab"));
}

void TestId3Tag::frameThatClaimsMoreThanThereIsReadsWhatThereIs()
{
    const Id3Tag tag = withFrames(frame("TIT2", QByteArray::fromHex("7F7F7F7F"), QByteArray("\0abc", 4)));
    QCOMPARE(tag.title(), QStringLiteral("abc"));
    const Id3Tag utf16 = withFrames(frame("TIT2", QByteArray::fromHex("0000007F"), QByteArray("\x01\xFF\xFEP\0x", 6)));
    QCOMPARE(utf16.title(), QStringLiteral("P"));
}

void TestId3Tag::frameWithoutRoomForItsHeaderReadsAsEmptyButIsThere()
{
    for (const char *rest : {"", "\x05", "\x05\x05\x05\x05", "\x05\x05\x05\x05zz"}) {
        const Id3Tag tag = withFrames(QByteArray("TIT2") + rest);
        QString text;
        QCOMPARE(tag.frameText("TIT2", text), 10);
        QVERIFY(text.isEmpty());
        QVERIFY(tag.hasTitle());
    }
}

void TestId3Tag::identifierInsideAnotherTextIsFound()
{
    const Id3Tag tag = withFrames(SongFactory::id3v2TextFrame(3, "TPE1", QStringLiteral("The TCOM Band")) +
                                  SongFactory::id3v2TextFrame(3, "TCOM", QStringLiteral("Writer")));
    QString text;
    QCOMPARE(tag.frameText("TCOM", text), 10 + 11 + 4);
    QVERIFY(text != QStringLiteral("Writer"));
}

void TestId3Tag::removingTakesTheFirstFrameAlone()
{
    const QByteArray first = SongFactory::id3v2TextFrame(3, "TIT2", QStringLiteral("first"));
    const QByteArray other = SongFactory::id3v2TextFrame(3, "TPE1", QStringLiteral("artist"));
    const QByteArray second = SongFactory::id3v2TextFrame(3, "TIT2", QStringLiteral("second one"));
    Id3Tag tag = withFrames(other + first + second);
    QCOMPARE(tag.removeFrame("TIT2"), 16);
    QCOMPARE(tag.bytes(), SongFactory::id3v2TagAround(3, other + second));
    QCOMPARE(tag.title(), QStringLiteral("second one"));
    QCOMPARE(tag.removeFrame("TIT2"), 21);
    QCOMPARE(tag.bytes(), SongFactory::id3v2TagAround(3, other));
}

void TestId3Tag::removingAMissingFrameChangesNothing()
{
    Id3Tag tag = loaded(SongFactory::mp3(3, SongTest::fullInfo()));
    const QByteArray before = tag.bytes();
    QCOMPARE(tag.removeFrame("TXYZ"), 0);
    QCOMPARE(tag.bytes(), before);
}

void TestId3Tag::removingTakesNoMoreThanThereIs()
{
    const QByteArray artist = SongFactory::id3v2TextFrame(3, "TPE1", QStringLiteral("artist"));
    Id3Tag tag = withFrames(artist + frame("TIT2", QByteArray::fromHex("7F7F7F7F"), QByteArray("\0abc", 4)));
    QCOMPARE(tag.removeFrame("TIT2"), 14);
    QCOMPARE(tag.bytes(), SongFactory::id3v2TagAround(3, artist));

    Id3Tag headless = withFrames(artist + QByteArray("TIT2\x01", 5));
    QCOMPARE(headless.removeFrame("TIT2"), 5);
    QCOMPARE(headless.bytes(), SongFactory::id3v2TagAround(3, artist));
}

void TestId3Tag::framesBehindTheEndOfTheTagAreNotRemoved()
{
    // A size byte of 81 keeps the ten header bytes alone: the tag's end is behind them.
    Id3Tag tag = loaded(tagHeader(QByteArray::fromHex("00000081")) +
                        SongFactory::id3v2TextFrame(3, "TIT2", QStringLiteral("abc")));
    QCOMPARE(tag.removeFrame("TIT2"), 0);
    QCOMPARE(tag.bytes().size(), 10);
}

void TestId3Tag::addedFrameIsLaidOutPlainly()
{
    const QByteArray artist = SongFactory::id3v2TextFrame(3, "TPE1", QStringLiteral("artist"));
    Id3Tag tag = withFrames(artist);
    QCOMPARE(tag.addFrame("TIT2", "abc", 10), 14);
    const QByteArray title("TIT2\0\0\0\x04\0\0\0abc", 14);
    QCOMPARE(tag.bytes(), SongFactory::id3v2TagAround(3, title + artist));
    QCOMPARE(tag.addFrame("TCON", "Pop", tag.bytes().size()), 14);
    QCOMPARE(tag.bytes(), SongFactory::id3v2TagAround(3, title + artist + QByteArray("TCON\0\0\0\x04\0\0\0Pop", 14)));
}

void TestId3Tag::addingIsRefusedBeyondTheTagOrWithoutPayload()
{
    Id3Tag tag = loaded(SongFactory::mp3(3, SongTest::fullInfo()));
    const QByteArray before = tag.bytes();
    QCOMPARE(tag.addFrame("TIT2", "abc", before.size() + 1), 0);
    QCOMPARE(tag.addFrame("TIT2", "abc", -1), 0);
    QCOMPARE(tag.addFrame("TIT2", QByteArray(), 10), 0);
    QCOMPARE(tag.bytes(), before);
    Id3Tag never;
    QCOMPARE(never.addFrame("TIT2", "abc", 10), 0);
    never.setTitle(QStringLiteral("abc"));
    QVERIFY(never.bytes().isEmpty());
}

void TestId3Tag::longFrameIsWrittenPlainlyAndReadSevenBitsAByte()
{
    Id3Tag tag = withFrames(QByteArray());
    tag.setTitle(QString(126, QLatin1Char('a')));
    QCOMPARE(tag.bytes().mid(14, 4), QByteArray::fromHex("0000007F"));
    QCOMPARE(tag.title().size(), 126);
    tag.setTitle(QString(130, QLatin1Char('a')));
    // 131 bytes are 83 in hexadecimal, of which 7 bits are read back: 3 bytes, the first the encoding.
    QCOMPARE(tag.bytes().mid(14, 4), QByteArray::fromHex("00000083"));
    QCOMPARE(tag.title(), QStringLiteral("aa"));
    QCOMPARE(tag.bytes().size(), 10 + 10 + 131);
    QCOMPARE(tag.bytes().mid(6, 4), QByteArray::fromHex("0000010D"));
}

void TestId3Tag::tagSizeIsKeptUpToDate()
{
    Id3Tag tag = loaded(SongFactory::mp3(4, SongInfo()));
    for (int i = 0; i < 200; ++i)
        tag.addFrame("TXXX", QByteArray(90, 'x'), 10);
    QCOMPARE(tag.bytes(), SongFactory::id3v2TagAround(4, tag.bytes().mid(10)));
    QCOMPARE(tag.bytes().size(), 10 + 200 * 101);
    while (tag.removeFrame("TXXX") > 0) {
    }
    QCOMPARE(tag.bytes(), SongFactory::id3v2TagAround(4, QByteArray()));
}

void TestId3Tag::titleIsStoredAsUtf8UnderEncodingByteZero()
{
    Id3Tag tag = withFrames(SongFactory::id3v2TextFrame(3, "TIT2", QStringLiteral("old"), 1));
    tag.setTitle(QStringLiteral("Perché"));
    QCOMPARE(tag.bytes().mid(10), QByteArray("TIT2\0\0\0\x08\0\0\0Perch\xC3\xA9", 18));
    QCOMPARE(tag.title(), QStringLiteral("PerchÃ©"));
}

void TestId3Tag::eachFieldIsWrittenToItsFrame_data()
{
    QTest::addColumn<QByteArray>("id");
    for (const char *id : {"TIT2", "TPE1", "TCON", "TCOM", "TKEY"})
        QTest::newRow(id) << QByteArray(id);
}

void TestId3Tag::eachFieldIsWrittenToItsFrame()
{
    QFETCH(QByteArray, id);
    Id3Tag tag = withFrames(SongFactory::id3v2TextFrame(3, id, QStringLiteral("old")));
    const QString text = QStringLiteral("new");
    if (id == "TIT2")
        tag.setTitle(text);
    else if (id == "TPE1")
        tag.setArtist(text);
    else if (id == "TCON")
        tag.setGenre(text);
    else if (id == "TCOM")
        tag.setAuthor(text);
    else
        tag.setKey(text);
    QCOMPARE(tag.bytes(), SongFactory::id3v2TagAround(3, id + QByteArray("\0\0\0\x04\0\0\0new", 10)));
}

void TestId3Tag::emptyTextLeavesTheFrameRemoved()
{
    Id3Tag tag = loaded(SongFactory::mp3(3, SongTest::fullInfo()));
    tag.setTitle(QString());
    tag.setKey(QString());
    QVERIFY(!tag.hasTitle() && !tag.hasKey());
    QVERIFY(tag.hasAuthor() && tag.hasGenre() && tag.hasLength() && tag.hasBpm());
}

void TestId3Tag::medtFrameHoldsFourZeroBytes()
{
    Id3Tag tag = withFrames(SongFactory::id3v2TextFrame(3, "TIT2", QStringLiteral("abc")));
    tag.setMedt();
    QVERIFY(tag.hasMedt());
    QCOMPARE(tag.bytes().mid(10, 14), QByteArray("MEDT\0\0\0\x04\0\0\0\0\0\0", 14));
    QCOMPARE(tag.title(), QStringLiteral("abc"));
}

void TestId3Tag::makersMarkIsFoundInAnyCase()
{
    QVERIFY(withFrames(SongFactory::id3v2TextFrame(3, "TCOP", QStringLiteral("(c) q-Arte srl"))).isQArte());
    QVERIFY(!withFrames(SongFactory::id3v2TextFrame(3, "TCOP", QStringLiteral("(c) QArte"))).isQArte());
    QVERIFY(!withFrames(SongFactory::id3v2TextFrame(3, "TIT2", QStringLiteral("Q-ARTE"))).isQArte());
}

void TestId3Tag::editsOfATagOfWrongSizeStayInside()
{
    // Ten bytes fewer than stated: the size keeps its distance to what is there.
    Id3Tag tag = loaded(tagHeader(QByteArray::fromHex("00000040")) +
                        SongFactory::id3v2TextFrame(3, "TIT2", QStringLiteral("abc")) + QByteArray(40, '\0'));
    QCOMPARE(tag.bytes().size(), 64);
    QCOMPARE(tag.removeFrame("TIT2"), 14);
    QCOMPARE(tag.bytes().mid(6, 4), QByteArray::fromHex("00000032"));
    QCOMPARE(tag.bytes().size(), 50);
}

QTEST_GUILESS_MAIN(TestId3Tag)
#include "tst_id3tag.moc"
