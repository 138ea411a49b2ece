#include "songtest.h"

class TestMfxHeader : public QObject
{
    Q_OBJECT

private slots:
    void blockNeedsAKnownMagicAndTheLengthOfItsVersion() {
        const auto check = [](const char *name, const QByteArray &block, int version) {
            MfxHeader header = loaded(5); // of which a refused block leaves nothing
            same(name, header.setHeader(block), version != 0);
            same(name, header.version(), version);
            same(name, header.bytes(), version != 0 ? block : QByteArray());
        };
        check("MF3 of 511", "_MF3"_b.leftJustified(511, '\0'), 0);
        check("MF3 of 512", "_MF3"_b.leftJustified(512, '\0'), 3);
        check("MF3 of 600", "_MF3"_b.leftJustified(600, '\0'), 3);
        check("MF4 of 511", "_MF4"_b.leftJustified(511, '\0'), 0);
        check("MF4 of 512", "_MF4"_b.leftJustified(512, '\0'), 4);
        check("MF5 of 512", "_MF5"_b.leftJustified(512, '\0'), 0);
        check("MF5 of 600", "_MF5"_b.leftJustified(600, '\0'), 0);
        check("MF5 of 1023", "_MF5"_b.leftJustified(1023, '\0'), 0);
        check("MF5 of 1024", "_MF5"_b.leftJustified(1024, '\0'), 5);
        check("MF2", "_MF2"_b.leftJustified(1024, '\0'), 0);
        check("lower case", "_mf3"_b.leftJustified(1024, '\0'), 0);
        check("nothing", ""_b, 0);
        for (int version = 3; version <= 5; ++version)
            check("full block", SongFactory::mfxHeader(version, fullInfo(), 7, 9), version);
    }

    void everyFieldIsReadFromItsPlace() {
        const MfxHeader header = loaded(4);
        QCOMPARE(QStringList({header.title(), header.artist(), header.genre(), header.author(), header.longName()}),
                 words("Volare Domenico Canzone Modugno VOLARE.MID"));
        QCOMPARE(header.bpm(), quint16(128));
        QCOMPARE(header.flags(), quint8(0x20));
        QVERIFY(header.hasTitle() && header.hasArtist() && header.hasGenre() && header.hasAuthor());
        const MfxHeader empty = loaded(4, SongInfo());
        QVERIFY(!empty.hasTitle() && !empty.hasArtist() && !empty.hasGenre() && !empty.hasAuthor());
        QVERIFY(!withBytes(122, "   ").hasTitle()); // blanks count as missing
    }

    void textIsReadFromItsFieldAlone() {
        const QString x(32, QLatin1Char('x'));
        const QByteArray overlong(63, 'x');
        same("up to the first zero byte, trimmed", withBytes(122, " \tVola\0re \0x"_b).title(), "Vola"_s);
        same("Latin-1", withBytes(122, "Perch\xE9"_b).title(), "Perché"_s);
        same("title without zero byte", withBytes(122, overlong).title(), x);
        same("author without zero byte", withBytes(186, overlong).author(), x);
        same("artist without zero byte", withBytes(218, overlong).artist(), x);
        same("genre without zero byte", withBytes(250, overlong).genre(), x);
        same("long name without zero byte", withBytes(42, overlong).longName(), x.left(13));
    }

    void emptyHeaderReadsAsEmptyTextsAndZeros() {
        const MfxHeader header;
        QCOMPARE(header.title() + header.author() + header.artist() + header.genre() + header.longName(), QString());
        QCOMPARE(header.bpm(), quint16(0));
        QCOMPARE(header.flags(), quint8(0));
        QCOMPARE(header.version(), 0);
        QVERIFY(!header.isBpmValid());
    }

    void fieldsAreWrittenToTheirPlacesAlone() {
        const QByteArray before = loaded(5).bytes();
        const auto with = [before](int offset, int size, const QByteArray &stored) {
            return before.left(offset) + stored + before.mid(offset + size);
        };
        const QByteArray stored = "Nuovo"_b.leftJustified(32, '\0');
        const QString a(30, QLatin1Char('a'));
        const QString note = "\U0001F3B5"_s; // two UTF-16 characters
        same("title", edited(&MfxHeader::setTitle, "Nuovo"_s), with(122, 32, stored));
        same("author", edited(&MfxHeader::setAuthor, "Nuovo"_s), with(186, 32, stored));
        same("artist", edited(&MfxHeader::setArtist, "Nuovo"_s), with(218, 32, stored));
        same("genre", edited(&MfxHeader::setGenre, "Nuovo"_s), with(250, 32, stored));
        same("empty text", edited(&MfxHeader::setTitle, QString()), with(122, 32, QByteArray(32, '\0')));
        same("40 characters are stored as the first 32",
             edited(&MfxHeader::setTitle, "abcdefghijklmnopqrstuvwxyz0123456789ABCD"_s),
             with(122, 32, "abcdefghijklmnopqrstuvwxyz012345"));
        same("an accent makes the header one byte longer", edited(&MfxHeader::setTitle, "Perché"_s),
             with(122, 32, "Perch\xC3\xA9"_b.leftJustified(33, '\0')));
        same("no half of a character", edited(&MfxHeader::setTitle, a + "a"_s + note),
             with(122, 32, QByteArray(31, 'a') + '\0'));
        same("whole pair up to the edge", edited(&MfxHeader::setTitle, a + note), with(122, 32, (a + note).toUtf8()));
        same("tempo", edited(&MfxHeader::setBpm, 499), with(38, 2, "F301"_hex));
        same("tempo of one byte", edited(&MfxHeader::setBpm, 255), with(38, 2, "FF00"_hex));
        same("upper bits of a tempo are dropped", edited(&MfxHeader::setBpm, 0x7A0078), with(38, 2, "7800"_hex));
        same("size of the file", edited(&MfxHeader::setFileSize, 0xFEDCBA98U), with(4, 4, "98BADCFE"_hex));
        same("size of the stream", edited(&MfxHeader::setMidiSize, 0x01020304U), with(12, 4, "04030201"_hex));
    }

    void tempoIsValidFrom1To499() {
        for (const int tempo : {0, 1, 255, 256, 499, 500, 65535}) {
            MfxHeader header = loaded(3);
            header.setBpm(tempo);
            QCOMPARE(int(header.bpm()), tempo);
            const bool valid = tempo >= 1 && tempo <= 499;
            same(qPrintable(QString::number(tempo)), header.isBpmValid(), valid);
            QCOMPARE(header.bytes().mid(38, 2), littleEndian(unsigned(tempo), 2));
        }
    }

    void flagsAreOnlyEverAdded() {
        MfxHeader header = loaded(3);
        header.orFlags(0x01);
        QCOMPARE(header.flags(), quint8(0x21));
        header.orFlags(0x00);
        QCOMPARE(header.flags(), quint8(0x21));
        header.orFlags(0x80);
        QCOMPARE(header.flags(), quint8(0xA1));
        QCOMPARE(header.bytes().at(185), char(0xA1));
    }

    void writersBeyondTheEndExtendWithZeros() {
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
    static MfxHeader withBlock(const QByteArray &block) {
        MfxHeader header;
        if (!header.setHeader(block))
            failTest("the block is refused"_s);
        return header;
    }
    static MfxHeader loaded(int version, const SongInfo &info = fullInfo()) {
        return withBlock(SongFactory::mfxHeader(version, info, 0, 0));
    }
    static MfxHeader withBytes(int offset, const QByteArray &bytes) {
        return withBlock(QByteArray(loaded(3, SongInfo()).bytes()).replace(offset, bytes.size(), bytes));
    }
    /// The block after a writer was called.
    template <typename Writer, typename Value> static QByteArray edited(Writer writer, const Value &value) {
        MfxHeader header = loaded(5);
        (header.*writer)(value);
        return header.bytes();
    }
};

QTEST_GUILESS_MAIN(TestMfxHeader)
#include "tst_mfxheader.moc"
