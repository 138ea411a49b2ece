#include "songtest.h"

class TestMfxHeader : public QObject
{
    Q_OBJECT

private slots:
    void blockNeedsAKnownMagicAndTheLengthOfItsVersion_data() {
        columns<QByteArray, int>("block", "version");
        row("MF3 of 511", "_MF3"_b.leftJustified(511, '\0'), 0);
        row("MF3 of 512", "_MF3"_b.leftJustified(512, '\0'), 3);
        row("MF3 of 600", "_MF3"_b.leftJustified(600, '\0'), 3);
        row("MF4 of 511", "_MF4"_b.leftJustified(511, '\0'), 0);
        row("MF4 of 512", "_MF4"_b.leftJustified(512, '\0'), 4);
        row("MF5 of 512", "_MF5"_b.leftJustified(512, '\0'), 0);
        row("MF5 of 600", "_MF5"_b.leftJustified(600, '\0'), 0);
        row("MF5 of 1023", "_MF5"_b.leftJustified(1023, '\0'), 0);
        row("MF5 of 1024", "_MF5"_b.leftJustified(1024, '\0'), 5);
        row("MF2", "_MF2"_b.leftJustified(1024, '\0'), 0);
        row("lower case", "_mf3"_b.leftJustified(1024, '\0'), 0);
        row("nothing", ""_b, 0);
        for (int version = 3; version <= 5; ++version)
            QTest::addRow("full MF%d", version) << SongFactory::mfxHeader(version, fullInfo(), 7, 9) << version;
    }
    void blockNeedsAKnownMagicAndTheLengthOfItsVersion() {
        QFETCH(QByteArray, block);
        QFETCH(int, version);
        MfxHeader header = loaded(5); // of which a refused block leaves nothing
        QCOMPARE(header.setHeader(block), version != 0);
        QCOMPARE(header.version(), version);
        QCOMPARE(header.bytes(), version != 0 ? block : QByteArray());
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
    }

    void textIsReadFromItsFieldAlone_data() {
        outcomes<QString>();
        const QString x(32, QLatin1Char('x'));
        const QByteArray overlong(63, 'x');
        row("up to the first zero byte, trimmed", withBytes(122, " \tVola\0re \0x"_b).title(), "Vola"_s);
        row("Latin-1", withBytes(122, "Perch\xE9"_b).title(), "Perché"_s);
        row("title without zero byte", withBytes(122, overlong).title(), x);
        row("author without zero byte", withBytes(186, overlong).author(), x);
        row("artist without zero byte", withBytes(218, overlong).artist(), x);
        row("genre without zero byte", withBytes(250, overlong).genre(), x);
        row("long name without zero byte", withBytes(42, overlong).longName(), x.left(13));
    }
    void textIsReadFromItsFieldAlone() { compareRow<QString>(); }

    void fieldOfBlanksCountsAsMissing() { QVERIFY(!withBytes(122, "   ").hasTitle()); }

    void emptyHeaderReadsAsEmptyTextsAndZeros() {
        const MfxHeader header;
        QCOMPARE(header.title() + header.author() + header.artist() + header.genre() + header.longName(), QString());
        QCOMPARE(header.bpm(), quint16(0));
        QCOMPARE(header.flags(), quint8(0));
        QCOMPARE(header.version(), 0);
        QVERIFY(!header.isBpmValid());
    }

    void fieldsAreWrittenToTheirPlacesAlone_data() {
        outcomes<QByteArray>();
        const QByteArray before = loaded(5).bytes();
        const auto with = [before](int offset, int size, const QByteArray &stored) {
            return before.left(offset) + stored + before.mid(offset + size);
        };
        const QByteArray stored = "Nuovo"_b.leftJustified(32, '\0');
        const QString a(30, QLatin1Char('a'));
        const QString note = "\U0001F3B5"_s; // two UTF-16 characters
        row("title", edited(&MfxHeader::setTitle, "Nuovo"_s), with(122, 32, stored));
        row("author", edited(&MfxHeader::setAuthor, "Nuovo"_s), with(186, 32, stored));
        row("artist", edited(&MfxHeader::setArtist, "Nuovo"_s), with(218, 32, stored));
        row("genre", edited(&MfxHeader::setGenre, "Nuovo"_s), with(250, 32, stored));
        row("empty text", edited(&MfxHeader::setTitle, QString()), with(122, 32, QByteArray(32, '\0')));
        row("40 characters are stored as the first 32",
            edited(&MfxHeader::setTitle, "abcdefghijklmnopqrstuvwxyz0123456789ABCD"_s),
            with(122, 32, "abcdefghijklmnopqrstuvwxyz012345"));
        row("an accent makes the header one byte longer", edited(&MfxHeader::setTitle, "Perché"_s),
            with(122, 32, "Perch\xC3\xA9"_b.leftJustified(33, '\0')));
        row("no half of a character", edited(&MfxHeader::setTitle, a + "a"_s + note),
            with(122, 32, QByteArray(31, 'a') + '\0'));
        row("whole pair up to the edge", edited(&MfxHeader::setTitle, a + note), with(122, 32, (a + note).toUtf8()));
        row("tempo", edited(&MfxHeader::setBpm, 499), with(38, 2, "F301"_hex));
        row("tempo of one byte", edited(&MfxHeader::setBpm, 255), with(38, 2, "FF00"_hex));
        row("upper bits of a tempo are dropped", edited(&MfxHeader::setBpm, 0x7A0078), with(38, 2, "7800"_hex));
        row("size of the file", edited(&MfxHeader::setFileSize, 0xFEDCBA98U), with(4, 4, "98BADCFE"_hex));
        row("size of the stream", edited(&MfxHeader::setMidiSize, 0x01020304U), with(12, 4, "04030201"_hex));
    }
    void fieldsAreWrittenToTheirPlacesAlone() { compareRow<QByteArray>(); }

    void tempoIsValidFrom1To499_data() {
        columns<int, bool>("tempo", "valid");
        row("0", 0, false);
        row("1", 1, true);
        row("255", 255, true);
        row("256", 256, true);
        row("499", 499, true);
        row("500", 500, false);
        row("65535", 65535, false);
    }
    void tempoIsValidFrom1To499() {
        QFETCH(int, tempo);
        MfxHeader header = loaded(3);
        header.setBpm(tempo);
        QCOMPARE(int(header.bpm()), tempo);
        QTEST(header.isBpmValid(), "valid");
        QCOMPARE(header.bytes().mid(38, 2), littleEndian(unsigned(tempo), 2));
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
