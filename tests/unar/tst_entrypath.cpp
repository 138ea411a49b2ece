#include "entrypath.h"

#include <QTest>

class TestEntryPath : public QObject
{
    Q_OBJECT

private slots:
    void safeNamesAreKept_data();
    void safeNamesAreKept();
    void namesThatLeadElsewhereAreRefused_data();
    void namesThatLeadElsewhereAreRefused();
};

void TestEntryPath::safeNamesAreKept_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("path");
    QTest::newRow("plain") << QByteArray("a.txt") << QByteArray("a.txt");
    QTest::newRow("folders") << QByteArray("a/b/c.txt") << QByteArray("a/b/c.txt");
    QTest::newRow("backslashes part folders") << QByteArray("a\\b\\c.txt") << QByteArray("a/b/c.txt");
    QTest::newRow("closing slash") << QByteArray("a/b/") << QByteArray("a/b");
    QTest::newRow("doubled slash") << QByteArray("a//b") << QByteArray("a/b");
    QTest::newRow("dot parts") << QByteArray("./a/./b") << QByteArray("a/b");
    QTest::newRow("the folder itself") << QByteArray("./") << QByteArray("");
    QTest::newRow("hidden file") << QByteArray("a/.hidden") << QByteArray("a/.hidden");
    QTest::newRow("two dots inside a name") << QByteArray("a..b/c..d") << QByteArray("a..b/c..d");
    QTest::newRow("accents") << QByteArray("Perch\xc3\xa9.mid") << QByteArray("Perch\xc3\xa9.mid");
    QTest::newRow("longer than a device name") << QByteArray("CONSOLE.txt") << QByteArray("CONSOLE.txt");
    QTest::newRow("port zero is no device") << QByteArray("COM0") << QByteArray("COM0");
}

void TestEntryPath::safeNamesAreKept()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, path);
    const auto result = safeEntryPath(name.toStdString());
    QVERIFY(result.has_value());
    QCOMPARE(QByteArray::fromStdString(*result), path);
}

void TestEntryPath::namesThatLeadElsewhereAreRefused_data()
{
    QTest::addColumn<QByteArray>("name");
    const char *const names[] = {
        "",       "/etc/passwd", "\\a",        "..",  "../evil", "a/../../evil", "a\\..\\..\\evil",
        "C:evil", "C:\\evil",    "a/b:stream", "nul", "CON.txt", "a/Lpt1.dat",   "com9",
        "a. ",    "a./b",        "a /b",       "...", "a*b",     "a\nb",         "what?"};
    for (const char *name : names)
        QTest::newRow(*name ? name : "empty") << QByteArray(name);
}

void TestEntryPath::namesThatLeadElsewhereAreRefused()
{
    QFETCH(QByteArray, name);
    QVERIFY(!safeEntryPath(name.toStdString()).has_value());
}

QTEST_APPLESS_MAIN(TestEntryPath)
#include "tst_entrypath.moc"
