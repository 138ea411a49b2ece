#include "songtest.h"

using TextReader = QString (MfxHeader::*)() const;
using TextWriter = void (MfxHeader::*)(const QString &);
Q_DECLARE_METATYPE(TextReader)
Q_DECLARE_METATYPE(TextWriter)

class TestMfxHeader : public QObject
{
    Q_OBJECT

private slots:
    void blockNeedsAKnownMagicAndTheLengthOfItsVersion_data()
    {
        columns<QByteArray, int, int>("magic", "size", "version");
        row("MF3 of 511", "_MF3"_b, 511, 0);
        row("MF3 of 512", "_MF3"_b, 512, 3);
        row("MF3 of 600", "_MF3"_b, 600, 3);
        row("MF4 of 511", "_MF4"_b, 511, 0);
        row("MF4 of 512", "_MF4"_b, 512, 4);
        row("MF5 of 512", "_MF5"_b, 512, 0);
        row("MF5 of 600", "_MF5"_b, 600, 0);
        row("MF5 of 1023", "_MF5"_b, 1023, 0);
        row("MF5 of 1024", "_MF5"_b, 1024, 5);
        row("MF2", "_MF2"_b, 1024, 0);
        row("lower case", "_mf3"_b, 1024, 0);
        row("nothing", ""_b, 0, 0);
    }
    void blockNeedsAKnownMagicAndTheLengthOfItsVersion()
    {
        QFETCH(QByteArray, magic);
        QFETCH(int, size);
        QFETCH(int, version);
        MfxHeader header;
        QCOMPARE(header.setHeader(magic.leftJustified(size, '\0')), version != 0);
        QCOMPARE(header.version(), version);
        QCOMPARE(header.bytes().size(), version != 0 ? size : 0);
    }

    void refusedBlockLeavesNothingOfTheOneBefore()
    {
        MfxHeader header = loaded(5);
        QVERIFY(!header.setHeader("_MF5"_b.leftJustified(600, '\0')));
        QCOMPARE(header.version(), 0);
        QVERIFY(header.bytes().isEmpty());
        QVERIFY(!header.hasTitle());
    }

    void blockIsKeptAsGiven()
    {
        for (int version = 3; version <= 5; ++version) {
            const QByteArray block = SongFactory::mfxHeader(version, fullInfo(), 7, 9);
            QCOMPARE(block.size(), version == 5 ? 1024 : 512);
            QCOMPARE(withBlock(block).bytes(), block);
        }
    }

    void everyFieldIsReadFromItsPlace()
    {
        const MfxHeader header = loaded(4);
        QCOMPARE(QStringList({header.title(), header.artist(), header.genre(), header.author(), header.longName()}),
                 words("Volare Domenico Canzone Modugno VOLARE.MID"));
        QCOMPARE(header.bpm(), quint16(128));
        QCOMPARE(header.flags(), quint8(0x20));
        QVERIFY(header.hasTitle() && header.hasArtist() && header.hasGenre() && header.hasAuthor());

        const MfxHeader empty = loaded(4, SongInfo());
        QVERIFY(!empty.hasTitle() && !empty.hasArtist() && !empty.hasGenre() && !empty.hasAuthor());
    }

    void textIsReadFromItsFieldAlone_data()
    {
        columns<int, QByteArray, TextReader, QString>("offset", "bytes", "reader", "text");
        row("up to the first zero byte, trimmed", 122, " \tVola\0re \0x"_b, &MfxHeader::title, "Vola"_s);
        row("Latin-1", 122, "Perch\xE9"_b, &MfxHeader::title, "Perché"_s);
        row("blanks are nothing", 122, "   "_b, &MfxHeader::title, QString());
        row("title without zero byte", 122, QByteArray(63, 'x'), &MfxHeader::title, QString(32, QLatin1Char('x')));
        row("author without zero byte", 186, QByteArray(63, 'x'), &MfxHeader::author, QString(32, QLatin1Char('x')));
        row("artist without zero byte", 218, QByteArray(63, 'x'), &MfxHeader::artist, QString(32, QLatin1Char('x')));
        row("genre without zero byte", 250, QByteArray(63, 'x'), &MfxHeader::genre, QString(32, QLatin1Char('x')));
        row("long name without zero byte", 42, QByteArray(14, 'x'), &MfxHeader::longName,
            QString(13, QLatin1Char('x')));
    }
    void textIsReadFromItsFieldAlone()
    {
        QFETCH(int, offset);
        QFETCH(QByteArray, bytes);
        QFETCH(TextReader, reader);
        QFETCH(QString, text);
        QByteArray block = SongFactory::mfxHeader(3, SongInfo(), 0, 0);
        const MfxHeader header = withBlock(block.replace(offset, bytes.size(), bytes));
        QCOMPARE((header.*reader)(), text);
        QCOMPARE(header.hasTitle(), offset == 122 && !text.isEmpty());
    }

    void emptyHeaderReadsAsEmptyTextsAndZeros()
    {
        const MfxHeader header;
        QCOMPARE(header.title() + header.author() + header.artist() + header.genre() + header.longName(), QString());
        QCOMPARE(header.bpm(), quint16(0));
        QCOMPARE(header.flags(), quint8(0));
        QCOMPARE(header.version(), 0);
        QVERIFY(!header.isBpmValid());
    }

    void textIsWrittenToItsFieldAlone_data()
    {
        columns<int, TextWriter, QString, QByteArray>("offset", "writer", "text", "stored");
        const QByteArray newText = "Nuovo"_b.leftJustified(32, '\0');
        const QString note = "\U0001F3B5"_s; // two UTF-16 characters
        row("title", 122, &MfxHeader::setTitle, "Nuovo"_s, newText);
        row("author", 186, &MfxHeader::setAuthor, "Nuovo"_s, newText);
        row("artist", 218, &MfxHeader::setArtist, "Nuovo"_s, newText);
        row("genre", 250, &MfxHeader::setGenre, "Nuovo"_s, newText);
        row("empty text", 122, &MfxHeader::setTitle, QString(), QByteArray(32, '\0'));
        row("40 characters are stored as the first 32", 122, &MfxHeader::setTitle,
            "abcdefghijklmnopqrstuvwxyz0123456789ABCD"_s, "abcdefghijklmnopqrstuvwxyz012345"_b);
        row("an accent makes the header one byte longer", 122, &MfxHeader::setTitle, "Perché"_s,
            "Perch\xC3\xA9"_b.leftJustified(33, '\0'));
        row("no half of a character", 122, &MfxHeader::setTitle, QString(31, QLatin1Char('a')) + note,
            QByteArray(31, 'a') + '\0');
        row("whole pair up to the edge", 122, &MfxHeader::setTitle, QString(30, QLatin1Char('a')) + note,
            QByteArray(30, 'a') + note.toUtf8());
    }
    void textIsWrittenToItsFieldAlone()
    {
        QFETCH(int, offset);
        QFETCH(TextWriter, writer);
        QFETCH(QString, text);
        QFETCH(QByteArray, stored);
        MfxHeader header = loaded(5);
        QByteArray expected = header.bytes();
        expected.replace(offset, 32, stored);
        (header.*writer)(text);
        QCOMPARE(header.bytes(), expected);
    }

    void tempoIsStoredInSixteenBitsAndValidFrom1To499_data()
    {
        columns<int, int, bool>("tempo", "stored", "valid");
        row("0", 0, 0, false);
        row("1", 1, 1, true);
        row("255", 255, 255, true);
        row("256", 256, 256, true);
        row("499", 499, 499, true);
        row("500", 500, 500, false);
        row("65535", 65535, 65535, false);
        row("upper bits are dropped", 0x7A0078, 0x78, true);
    }
    void tempoIsStoredInSixteenBitsAndValidFrom1To499()
    {
        QFETCH(int, tempo);
        QFETCH(int, stored);
        MfxHeader header = loaded(3);
        QByteArray expected = header.bytes();
        expected.replace(38, 2, littleEndian(unsigned(stored), 2));
        header.setBpm(tempo);
        QCOMPARE(int(header.bpm()), stored);
        QTEST(header.isBpmValid(), "valid");
        QCOMPARE(header.bytes(), expected);
    }

    void flagsAreOnlyEverAdded()
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

    void sizesAreWrittenLowByteFirst()
    {
        MfxHeader header = loaded(3);
        const QByteArray before = header.bytes();
        header.setFileSize(0xFEDCBA98U);
        header.setMidiSize(0x01020304U);
        QCOMPARE(header.bytes(), before.left(4) + "98BADCFE"_hex + before.mid(8, 4) + "04030201"_hex + before.mid(16));
    }

    void writersBeyondTheEndExtendWithZeros()
    {
        MfxHeader header;
        header.setBpm(120);
        QCOMPARE(header.bytes(), QByteArray(38, '\0') + "7800"_hex);
        header.orFlags(0x01);
        QCOMPARE(header.bytes().size(), 186);
        header.setGenre("Pop"_s);
        QCOMPARE(header.bytes().size(), 282);
        QCOMPARE(header.genre(), "Pop"_s);
        QCOMPARE(header.bpm(), quint16(120));
    }

private:
    static MfxHeader withBlock(const QByteArray &block)
    {
        MfxHeader header;
        if (!header.setHeader(block))
            failTest("the block is refused"_s);
        return header;
    }
    static MfxHeader loaded(int version, const SongInfo &info = fullInfo())
    {
        return withBlock(SongFactory::mfxHeader(version, info, 0, 0));
    }
};

QTEST_GUILESS_MAIN(TestMfxHeader)
#include "tst_mfxheader.moc"
