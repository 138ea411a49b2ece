#include "songfiles/keynametable.h"

#include "support/testing.h"

class TestKeyNameTable : public QObject
{
    Q_OBJECT

private slots:
    void codeAndNameBelongTogether_data()
    {
        columns<int, QString, QString>("sharps", "major", "minor");
        row("7 sharps", 7, "C#"_s, "A#-"_s);
        row("6 sharps", 6, "F#"_s, "D#-"_s);
        row("5 sharps", 5, "B"_s, "G#-"_s);
        row("4 sharps", 4, "E"_s, "C#-"_s);
        row("3 sharps", 3, "A"_s, "F#-"_s);
        row("2 sharps", 2, "D"_s, "B-"_s);
        row("1 sharp", 1, "G"_s, "E-"_s);
        row("none", 0, "C"_s, "A-"_s);
        row("1 flat", -1, "F"_s, "D-"_s);
        row("2 flats", -2, "Bb"_s, "G-"_s);
        row("3 flats", -3, "Eb"_s, "C-"_s);
        row("4 flats", -4, "Ab"_s, "F-"_s);
        row("5 flats", -5, "Db"_s, "Bb-"_s);
        row("6 flats", -6, "Gb"_s, "Eb-"_s);
        row("7 flats", -7, "Cb"_s, "Ab-"_s);
    }
    void codeAndNameBelongTogether()
    {
        QFETCH(int, sharps);
        QFETCH(QString, major);
        QFETCH(QString, minor);
        const KeyNameTable table;
        const auto majorCode = static_cast<quint16>((sharps & 0xFF) * 256);
        const auto minorCode = static_cast<quint16>(majorCode + 1);
        QCOMPARE(table.name(majorCode), major);
        QCOMPARE(table.name(minorCode), minor);
        QCOMPARE(codeOf(major), int(majorCode));
        QCOMPARE(codeOf(minor), int(minorCode));
        QVERIFY(table.names().contains(major));
        QVERIFY(table.names().contains(minor));
    }

    void extraSpellingsLeadToACodeOnly_data()
    {
        columns<QString, int>("name", "code");
        row("G# is stored as E", "G#"_s, 0x0400);
        row("Db- is stored as C#-", "Db-"_s, 0x0401);
        row("D# is stored as Eb", "D#"_s, 0xFD00);
    }
    void extraSpellingsLeadToACodeOnly()
    {
        QFETCH(QString, name);
        QTEST(codeOf(name), "code");
        QVERIFY(!KeyNameTable().names().contains(name));
    }

    void thereAreThirtyNames()
    {
        QStringList names = KeyNameTable().names();
        QCOMPARE(names.size(), 30);
        QCOMPARE(names.removeDuplicates(), 0);
    }

    void unknownNamesAndCodesAreNotFound()
    {
        for (const QString &name : {"f#"_s, "F #"_s, "H"_s, QString(), "A#"_s, "C-m"_s})
            QCOMPARE(codeOf(name), -1);
        for (const int unknown : {0x0800, 0x0002, 0xF800, 0xFF02})
            QCOMPARE(KeyNameTable().name(static_cast<quint16>(unknown)), QString());
    }

private:
    /// -1 for an unknown name, which leaves the code that was asked for as it was.
    static int codeOf(const QString &name)
    {
        quint16 code = 1234;
        if (KeyNameTable().findCode(name, code))
            return code;
        return code == 1234 ? -1 : -2;
    }
};

QTEST_GUILESS_MAIN(TestKeyNameTable)
#include "tst_keynametable.moc"
