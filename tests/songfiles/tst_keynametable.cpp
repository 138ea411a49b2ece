#include "songfiles/keynametable.h"

#include <QSet>
#include <QTest>

class TestKeyNameTable : public QObject
{
    Q_OBJECT

private slots:
    void codeAndNameBelongTogether_data()
    {
        QTest::addColumn<int>("sharps");
        QTest::addColumn<QString>("major");
        QTest::addColumn<QString>("minor");
        QTest::newRow("7 sharps") << 7 << "C#"
                                  << "A#-";
        QTest::newRow("6 sharps") << 6 << "F#"
                                  << "D#-";
        QTest::newRow("5 sharps") << 5 << "B"
                                  << "G#-";
        QTest::newRow("4 sharps") << 4 << "E"
                                  << "C#-";
        QTest::newRow("3 sharps") << 3 << "A"
                                  << "F#-";
        QTest::newRow("2 sharps") << 2 << "D"
                                  << "B-";
        QTest::newRow("1 sharp") << 1 << "G"
                                 << "E-";
        QTest::newRow("none") << 0 << "C"
                              << "A-";
        QTest::newRow("1 flat") << -1 << "F"
                                << "D-";
        QTest::newRow("2 flats") << -2 << "Bb"
                                 << "G-";
        QTest::newRow("3 flats") << -3 << "Eb"
                                 << "C-";
        QTest::newRow("4 flats") << -4 << "Ab"
                                 << "F-";
        QTest::newRow("5 flats") << -5 << "Db"
                                 << "Bb-";
        QTest::newRow("6 flats") << -6 << "Gb"
                                 << "Eb-";
        QTest::newRow("7 flats") << -7 << "Cb"
                                 << "Ab-";
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
        quint16 code = 0xFFFF;
        QVERIFY(table.findCode(major, code));
        QCOMPARE(code, majorCode);
        QVERIFY(table.findCode(minor, code));
        QCOMPARE(code, minorCode);
        QVERIFY(table.names().contains(major));
        QVERIFY(table.names().contains(minor));
    }

    void extraSpellingsLeadToACodeOnly_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("code");
        QTest::newRow("G# is stored as E") << "G#" << 0x0400;
        QTest::newRow("Db- is stored as C#-") << "Db-" << 0x0401;
        QTest::newRow("D# is stored as Eb") << "D#" << 0xFD00;
    }
    void extraSpellingsLeadToACodeOnly()
    {
        QFETCH(QString, name);
        QFETCH(int, code);
        const KeyNameTable table;
        quint16 found = 0xFFFF;
        QVERIFY(table.findCode(name, found));
        QCOMPARE(int(found), code);
        QVERIFY(!table.names().contains(name));
    }

    void thereAreThirtyNames()
    {
        const QStringList names = KeyNameTable().names();
        QCOMPARE(names.size(), 30);
        QCOMPARE(QSet<QString>(names.begin(), names.end()).size(), 30);
    }

    void unknownNamesAndCodesAreNotFound()
    {
        const KeyNameTable table;
        quint16 code = 1234;
        for (const QString &name : {QStringLiteral("f#"), QStringLiteral("F #"), QStringLiteral("H"), QString(),
                                    QStringLiteral("A#"), QStringLiteral("C-m")}) {
            QVERIFY(!table.findCode(name, code));
            QCOMPARE(code, quint16(1234));
        }
        for (const int unknown : {0x0800, 0x0002, 0xF800, 0xFF02})
            QVERIFY(table.name(static_cast<quint16>(unknown)).isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestKeyNameTable)
#include "tst_keynametable.moc"
