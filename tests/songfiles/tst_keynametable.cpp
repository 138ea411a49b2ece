#include "songfiles/keynametable.h"

#include "bytes.h"

class TestKeyNameTable : public QObject
{
    Q_OBJECT

private slots:
    void codeAndNameBelongTogether_data() {
        columns<int, QString, QString>("sharps", "major", "minor");
        const QStringList majors = words("Cb Gb Db Ab Eb Bb F C G D A E B F# C#");
        const QStringList minors = words("Ab- Eb- Bb- F- C- G- D- A- E- B- F#- C#- G#- D#- A#-");
        for (int sharps = -7; sharps <= 7; ++sharps)
            QTest::addRow("%d sharps", sharps) << sharps << majors.at(sharps + 7) << minors.at(sharps + 7);
    }
    void codeAndNameBelongTogether() {
        QFETCH(int, sharps);
        QFETCH(QString, major);
        QFETCH(QString, minor);
        const int code = (sharps & 0xFF) * 256;
        QCOMPARE(KeyNameTable().name(static_cast<quint16>(code)), major);
        QCOMPARE(KeyNameTable().name(static_cast<quint16>(code + 1)), minor);
        QCOMPARE(codeOf(major), code);
        QCOMPARE(codeOf(minor), code + 1);
        QVERIFY(KeyNameTable().names().contains(major));
        QVERIFY(KeyNameTable().names().contains(minor));
    }

    void extraSpellingsLeadToACodeOnly_data() {
        outcomes<int>();
        row("G# is stored as E", codeOf("G#"_s), 0x0400);
        row("Db- is stored as C#-", codeOf("Db-"_s), 0x0401);
        row("D# is stored as Eb", codeOf("D#"_s), 0xFD00);
    }
    void extraSpellingsLeadToACodeOnly() {
        compareRow<int>();
        for (const QString &name : words("G# Db- D#"))
            QVERIFY(!KeyNameTable().names().contains(name));
    }

    void thereAreThirtyNames() {
        QStringList names = KeyNameTable().names();
        QCOMPARE(names.size(), 30);
        QCOMPARE(names.removeDuplicates(), 0);
    }

    void unknownNamesAndCodesAreNotFound() {
        for (const QString &name : {"f#"_s, "F #"_s, "H"_s, QString(), "A#"_s, "C-m"_s})
            QCOMPARE(codeOf(name), -1);
        for (const int unknown : {0x0800, 0x0002, 0xF800, 0xFF02})
            QCOMPARE(KeyNameTable().name(static_cast<quint16>(unknown)), QString());
    }

private:
    /// -1 for an unknown name, which leaves the code that was asked for as it was.
    static int codeOf(const QString &name) {
        quint16 code = 1234;
        const bool found = KeyNameTable().findCode(name, code);
        return found ? int(code) : code - 1235;
    }
};

QTEST_GUILESS_MAIN(TestKeyNameTable)
#include "tst_keynametable.moc"
