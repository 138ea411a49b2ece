#include "songfactory/songfactory.h"
#include "songfiles/mfxheader.h"
#include "songtest.h"

#include <QtTest>

class TestMfxHeader : public QObject
{
    Q_OBJECT

private slots:
    void blockNeedsAKnownMagicAndTheLengthOfItsVersion_data();
    void blockNeedsAKnownMagicAndTheLengthOfItsVersion();
    void refusedBlockLeavesNothingOfTheOneBefore();
    void blockIsKeptAsGiven();
    void everyFieldIsReadFromItsPlace();
    void textEndsAtItsFirstZeroByteAndIsTrimmed();
    void textWithoutZeroByteEndsWithItsField();
    void textIsReadAsLatin1();
    void emptyHeaderReadsAsEmptyTextsAndZeros();
    void fieldOfBlanksCountsAsMissing();
    void eachTextIsWrittenToItsFieldAlone_data();
    void eachTextIsWrittenToItsFieldAlone();
    void titleOf40CharactersIsStoredAsItsFirst32();
    void shorterTextIsFilledUpWithZeros();
    void accentedTitleMakesTheHeaderOneByteLonger();
    void cutTitleNeverEndsInHalfACharacter();
    void tempoIsValidFrom1To499_data();
    void tempoIsValidFrom1To499();
    void upperBitsOfATempoAreDropped();
    void flagsAreOnlyEverAdded();
    void sizesAreWrittenLowByteFirst();
    void writersBeyondTheEndExtendWithZeros();
};

namespace {

MfxHeader loaded(int version, const SongInfo &info = SongTest::fullInfo())
{
    MfxHeader header;
    if (!header.setHeader(SongFactory::mfxHeader(version, info, 0, 0)))
        qFatal("the factory's header is refused");
    return header;
}

} // namespace

void TestMfxHeader::blockNeedsAKnownMagicAndTheLengthOfItsVersion_data()
{
    QTest::addColumn<QByteArray>("magic");
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("version");
    QTest::newRow("MF3 of 511") << QByteArray("_MF3") << 511 << 0;
    QTest::newRow("MF3 of 512") << QByteArray("_MF3") << 512 << 3;
    QTest::newRow("MF3 of 600") << QByteArray("_MF3") << 600 << 3;
    QTest::newRow("MF4 of 511") << QByteArray("_MF4") << 511 << 0;
    QTest::newRow("MF4 of 512") << QByteArray("_MF4") << 512 << 4;
    QTest::newRow("MF5 of 512") << QByteArray("_MF5") << 512 << 0;
    QTest::newRow("MF5 of 600") << QByteArray("_MF5") << 600 << 0;
    QTest::newRow("MF5 of 1023") << QByteArray("_MF5") << 1023 << 0;
    QTest::newRow("MF5 of 1024") << QByteArray("_MF5") << 1024 << 5;
    QTest::newRow("MF2") << QByteArray("_MF2") << 1024 << 0;
    QTest::newRow("lower case") << QByteArray("_mf3") << 1024 << 0;
    QTest::newRow("nothing") << QByteArray() << 0 << 0;
}

void TestMfxHeader::blockNeedsAKnownMagicAndTheLengthOfItsVersion()
{
    QFETCH(QByteArray, magic);
    QFETCH(int, size);
    QFETCH(int, version);
    MfxHeader header;
    QCOMPARE(header.setHeader(magic.leftJustified(size, '\0')), version != 0);
    QCOMPARE(header.version(), version);
    QCOMPARE(header.bytes().size(), version != 0 ? size : 0);
}

void TestMfxHeader::refusedBlockLeavesNothingOfTheOneBefore()
{
    MfxHeader header = loaded(5);
    QVERIFY(!header.setHeader(QByteArray("_MF5").leftJustified(600, '\0')));
    QCOMPARE(header.version(), 0);
    QVERIFY(header.bytes().isEmpty());
    QVERIFY(!header.hasTitle());
}

void TestMfxHeader::blockIsKeptAsGiven()
{
    for (int version = 3; version <= 5; ++version) {
        const QByteArray block = SongFactory::mfxHeader(version, SongTest::fullInfo(), 7, 9);
        MfxHeader header;
        QVERIFY(header.setHeader(block));
        QCOMPARE(header.bytes(), block);
        QCOMPARE(header.bytes().size(), version == 5 ? 1024 : 512);
    }
}

void TestMfxHeader::everyFieldIsReadFromItsPlace()
{
    const MfxHeader header = loaded(4);
    QCOMPARE(header.title(), QStringLiteral("Volare"));
    QCOMPARE(header.artist(), QStringLiteral("Domenico"));
    QCOMPARE(header.genre(), QStringLiteral("Canzone"));
    QCOMPARE(header.author(), QStringLiteral("Modugno"));
    QCOMPARE(header.longName(), QStringLiteral("VOLARE.MID"));
    QCOMPARE(header.bpm(), quint16(128));
    QCOMPARE(header.flags(), quint8(0x20));
    QVERIFY(header.hasTitle() && header.hasArtist() && header.hasGenre() && header.hasAuthor());

    const MfxHeader empty = loaded(4, SongInfo());
    QVERIFY(!empty.hasTitle() && !empty.hasArtist() && !empty.hasGenre() && !empty.hasAuthor());
}

void TestMfxHeader::textEndsAtItsFirstZeroByteAndIsTrimmed()
{
    QByteArray block = SongFactory::mfxHeader(3, SongInfo(), 0, 0);
    block.replace(122, 12, QByteArray(" \tVola\0re \0x", 12));
    MfxHeader header;
    QVERIFY(header.setHeader(block));
    QCOMPARE(header.title(), QStringLiteral("Vola"));
}

void TestMfxHeader::textWithoutZeroByteEndsWithItsField()
{
    QByteArray block = SongFactory::mfxHeader(3, SongInfo(), 0, 0);
    block.replace(122, 63, QByteArray(32, 't') + QByteArray(31, 'u'));
    block.replace(186, 96, QByteArray(32, 'a') + QByteArray(32, 'b') + QByteArray(32, 'c'));
    block.replace(42, 14, QByteArray(14, 'n'));
    MfxHeader header;
    QVERIFY(header.setHeader(block));
    QCOMPARE(header.title(), QString(32, QLatin1Char('t')));
    QCOMPARE(header.author(), QString(32, QLatin1Char('a')));
    QCOMPARE(header.artist(), QString(32, QLatin1Char('b')));
    QCOMPARE(header.genre(), QString(32, QLatin1Char('c')));
    QCOMPARE(header.longName(), QString(13, QLatin1Char('n')));
}

void TestMfxHeader::textIsReadAsLatin1()
{
    QByteArray block = SongFactory::mfxHeader(3, SongInfo(), 0, 0);
    block.replace(122, 6, "Perch\xE9");
    MfxHeader header;
    QVERIFY(header.setHeader(block));
    QCOMPARE(header.title(), QStringLiteral("Perché"));
}

void TestMfxHeader::emptyHeaderReadsAsEmptyTextsAndZeros()
{
    const MfxHeader header;
    QCOMPARE(header.title() + header.author() + header.artist() + header.genre() + header.longName(), QString());
    QCOMPARE(header.bpm(), quint16(0));
    QCOMPARE(header.flags(), quint8(0));
    QCOMPARE(header.version(), 0);
    QVERIFY(!header.isBpmValid());
}

void TestMfxHeader::fieldOfBlanksCountsAsMissing()
{
    SongInfo info;
    info.title = QStringLiteral("   ");
    QVERIFY(!loaded(3, info).hasTitle());
}

void TestMfxHeader::eachTextIsWrittenToItsFieldAlone_data()
{
    QTest::addColumn<int>("offset");
    QTest::newRow("title") << 122;
    QTest::newRow("author") << 186;
    QTest::newRow("artist") << 218;
    QTest::newRow("genre") << 250;
}

void TestMfxHeader::eachTextIsWrittenToItsFieldAlone()
{
    QFETCH(int, offset);
    MfxHeader header = loaded(5);
    QByteArray expected = header.bytes();
    expected.replace(offset, 32, QByteArray("Nuovo").leftJustified(32, '\0'));
    const QString text = QStringLiteral("Nuovo");
    switch (offset) {
    case 122:
        header.setTitle(text);
        break;
    case 186:
        header.setAuthor(text);
        break;
    case 218:
        header.setArtist(text);
        break;
    default:
        header.setGenre(text);
    }
    QCOMPARE(header.bytes(), expected);
}

void TestMfxHeader::titleOf40CharactersIsStoredAsItsFirst32()
{
    MfxHeader header = loaded(3);
    header.setTitle(QStringLiteral("abcdefghijklmnopqrstuvwxyz0123456789ABCD"));
    QCOMPARE(header.title(), QStringLiteral("abcdefghijklmnopqrstuvwxyz012345"));
    QCOMPARE(header.bytes().size(), 512);
    QCOMPARE(header.bytes().mid(154, 10), QByteArray("unused two"));
}

void TestMfxHeader::shorterTextIsFilledUpWithZeros()
{
    MfxHeader header = loaded(3);
    header.setTitle(QStringLiteral("abc"));
    QCOMPARE(header.bytes().mid(122, 32), QByteArray("abc") + QByteArray(29, '\0'));
    header.setTitle(QString());
    QCOMPARE(header.bytes().mid(122, 32), QByteArray(32, '\0'));
}

void TestMfxHeader::accentedTitleMakesTheHeaderOneByteLonger()
{
    MfxHeader header = loaded(3);
    const QByteArray before = header.bytes();
    header.setTitle(QStringLiteral("Perché"));
    QCOMPARE(header.bytes().size(), 513);
    QCOMPARE(header.bytes().mid(122, 33), QByteArray("Perch\xC3\xA9") + QByteArray(26, '\0'));
    QCOMPARE(header.bytes().left(122), before.left(122));
    QCOMPARE(header.bytes().mid(155), before.mid(154));
}

void TestMfxHeader::cutTitleNeverEndsInHalfACharacter()
{
    MfxHeader header = loaded(3);
    const QString note = QString::fromUtf8("\xF0\x9F\x8E\xB5"); // two UTF-16 characters
    header.setTitle(QString(31, QLatin1Char('a')) + note);
    QCOMPARE(header.bytes().mid(122, 32), QByteArray(31, 'a') + QByteArray(1, '\0'));
    QCOMPARE(header.bytes().size(), 512);
    // Whole pairs up to the edge stay: 32 characters, 30 of one byte and one of four.
    header.setTitle(QString(30, QLatin1Char('a')) + note);
    QCOMPARE(header.bytes().mid(122, 34), QByteArray(30, 'a') + note.toUtf8());
    QCOMPARE(header.bytes().size(), 514);
}

void TestMfxHeader::tempoIsValidFrom1To499_data()
{
    QTest::addColumn<int>("tempo");
    QTest::addColumn<bool>("valid");
    QTest::newRow("0") << 0 << false;
    QTest::newRow("1") << 1 << true;
    QTest::newRow("255") << 255 << true;
    QTest::newRow("256") << 256 << true;
    QTest::newRow("499") << 499 << true;
    QTest::newRow("500") << 500 << false;
    QTest::newRow("65535") << 65535 << false;
}

void TestMfxHeader::tempoIsValidFrom1To499()
{
    QFETCH(int, tempo);
    MfxHeader header = loaded(3);
    header.setBpm(tempo);
    QCOMPARE(int(header.bpm()), tempo);
    QTEST(header.isBpmValid(), "valid");
    QCOMPARE(header.bytes().mid(38, 2), QByteArray(1, char(tempo & 0xFF)) + QByteArray(1, char(tempo >> 8)));
}

void TestMfxHeader::upperBitsOfATempoAreDropped()
{
    MfxHeader header = loaded(3);
    const QByteArray before = header.bytes();
    header.setBpm(0x7A0078);
    QCOMPARE(header.bpm(), quint16(0x78));
    QCOMPARE(header.bytes().mid(40), before.mid(40));
}

void TestMfxHeader::flagsAreOnlyEverAdded()
{
    MfxHeader header = loaded(3);
    header.orFlags(0x01);
    QCOMPARE(header.flags(), quint8(0x21));
    header.orFlags(0x00);
    QCOMPARE(header.flags(), quint8(0x21));
    header.orFlags(0x80);
    QCOMPARE(header.flags(), quint8(0xA1));
    QCOMPARE(header.bytes().at(185), char(0xA1));
}

void TestMfxHeader::sizesAreWrittenLowByteFirst()
{
    MfxHeader header = loaded(3);
    const QByteArray before = header.bytes();
    header.setFileSize(0xFEDCBA98U);
    header.setMidiSize(0x01020304U);
    QCOMPARE(header.bytes().mid(4, 4), QByteArray::fromHex("98BADCFE"));
    QCOMPARE(header.bytes().mid(12, 4), QByteArray::fromHex("04030201"));
    QCOMPARE(header.bytes().mid(8, 4), before.mid(8, 4));
    QCOMPARE(header.bytes().mid(16), before.mid(16));
}

void TestMfxHeader::writersBeyondTheEndExtendWithZeros()
{
    MfxHeader header;
    header.setBpm(120);
    QCOMPARE(header.bytes(), QByteArray(38, '\0') + QByteArray::fromHex("7800"));
    header.orFlags(0x01);
    QCOMPARE(header.bytes().size(), 186);
    header.setGenre(QStringLiteral("Pop"));
    QCOMPARE(header.bytes().size(), 282);
    QCOMPARE(header.genre(), QStringLiteral("Pop"));
    QCOMPARE(header.bpm(), quint16(120));
}

QTEST_GUILESS_MAIN(TestMfxHeader)
#include "tst_mfxheader.moc"
