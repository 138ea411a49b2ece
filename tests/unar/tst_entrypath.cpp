#include "entrypath.h"

#include "support/testing.h"

class TestEntryPath : public QObject
{
    Q_OBJECT

private slots:
    void safeNamesAreKept_data() {
        columns<QByteArray, QByteArray>("name", "path");
        const auto kept = [](const char *why, const QByteArray &name, const QByteArray &path) { row(why, name, path); };
        kept("plain", "a.txt", "a.txt");
        kept("folders", "a/b/c.txt", "a/b/c.txt");
        kept("backslashes part folders", "a\\b\\c.txt", "a/b/c.txt");
        kept("closing slash", "a/b/", "a/b");
        kept("doubled slash", "a//b", "a/b");
        kept("dot parts", "./a/./b", "a/b");
        kept("the folder itself", "./", "");
        kept("hidden file", "a/.hidden", "a/.hidden");
        kept("two dots inside a name", "a..b/c..d", "a..b/c..d");
        kept("accents", "Perch\xc3\xa9.mid", "Perch\xc3\xa9.mid");
        kept("longer than a device name", "CONSOLE.txt", "CONSOLE.txt");
        kept("raised digit that names no port", "COM\xe2\x81\xb4", "COM\xe2\x81\xb4");
        kept("blank inside a name", "A UX .txt", "A UX .txt");
        kept("port zero is no device", "COM0", "COM0");
    }

    void safeNamesAreKept() {
        QFETCH(QByteArray, name);
        const auto path = safeEntryPath(name.toStdString());
        QVERIFY(path.has_value());
        QTEST(QByteArray::fromStdString(*path), "path");
    }

    void namesThatLeadElsewhereAreRefused_data() {
        columns<QByteArray>("name");
        for (const char *name : {"",
                                 "/etc/passwd",
                                 "\\a",
                                 "..",
                                 "../evil",
                                 "a/../../evil",
                                 "a\\..\\..\\evil",
                                 "C:evil",
                                 "C:\\evil",
                                 "a/b:stream",
                                 "nul",
                                 "CON.txt",
                                 "a/Lpt1.dat",
                                 "com9",
                                 "AUX .txt",
                                 "nul  .a.b",
                                 "COM\xc2\xb9",
                                 "lpt\xc2\xb3.dat",
                                 "CONIN$",
                                 "a/conout$.txt",
                                 "a. ",
                                 "a./b",
                                 "a /b",
                                 "...",
                                 "a*b",
                                 "a\nb",
                                 "what?"})
            row(*name ? name : "empty", QByteArray(name));
    }

    void namesThatLeadElsewhereAreRefused() {
        QFETCH(QByteArray, name);
        QVERIFY(!safeEntryPath(name.toStdString()).has_value());
    }
};

QTEST_APPLESS_MAIN(TestEntryPath)
#include "tst_entrypath.moc"
