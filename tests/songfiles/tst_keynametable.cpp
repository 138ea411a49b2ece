#include "songfiles/keynametable.h"

#include "bytes.h"

class TestKeyNameTable : public QObject
{
    Q_OBJECT

private slots:
    void codeAndNameBelongTogether() {
        const KeyNameTable table;
        const QStringList majors = words("Cb Gb Db Ab Eb Bb F C G D A E B F# C#");
        const QStringList minors = words("Ab- Eb- Bb- F- C- G- D- A- E- B- F#- C#- G#- D#- A#-");
        for (int sharps = -7; sharps <= 7; ++sharps) {
            for (const int minor : {0, 1}) {
                const QString name = (minor == 1 ? minors : majors).at(sharps + 7);
                const int code = (sharps & 0xFF) * 256 + minor;
                QCOMPARE(table.name(static_cast<quint16>(code)), name);
                same(qPrintable(name), codeOf(name), code);
                QVERIFY2(table.names().contains(name), qPrintable(name));
            }
        }
    }

    void extraSpellingsLeadToACodeOnly() {
        same("G# is stored as E", codeOf("G#"_s), 0x0400);
        same("Db- is stored as C#-", codeOf("Db-"_s), 0x0401);
        same("D# is stored as Eb", codeOf("D#"_s), 0xFD00);
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
    /// -1 for an unknown name.
    static int codeOf(const QString &name) {
        const std::optional<quint16> code = KeyNameTable().code(name);
        return code ? *code : -1;
    }
};

QTEST_GUILESS_MAIN(TestKeyNameTable)
#include "tst_keynametable.moc"
