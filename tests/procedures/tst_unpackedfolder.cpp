#include "procedures/unpackedfolder.h"

#include "systemfixture.h"

#include <QDir>
#include <QTest>

class TestUnpackedFolder : public QObject
{
    Q_OBJECT

private slots:
    void wrappingFolderIsLookedThrough_data();
    void wrappingFolderIsLookedThrough();
    void linkIsNoWrappingFolder();
    void systemFilesAreNamesWithADot_data();
    void systemFilesAreNamesWithADot();
};

void TestUnpackedFolder::wrappingFolderIsLookedThrough_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QString>("inner");
    const QString content = QStringLiteral("/System/a.exe");
    QTest::newRow("content at the top") << QStringList{content, QStringLiteral("/AUTOEXEC.BAT")} << QString();
    QTest::newRow("one folder around all")
        << QStringList{QStringLiteral("/CorvinAll") + content, QStringLiteral("/CorvinAll/AUTOEXEC.BAT")}
        << QStringLiteral("/CorvinAll");
    QTest::newRow("a file beside it") << QStringList{QStringLiteral("/CorvinAll") + content, QStringLiteral("/read.me")}
                                      << QString();
    QTest::newRow("a hidden file beside it")
        << QStringList{QStringLiteral("/CorvinAll") + content, QStringLiteral("/.hidden")} << QString();
    QTest::newRow("two folders") << QStringList{QStringLiteral("/a") + content, QStringLiteral("/b") + content}
                                 << QString();
    for (const auto *own : {"System", "CorvinUpdate", "Bridges", "Effects", "My Songs", "Images", "Videos", "SYSTEM"})
        QTest::newRow(own) << QStringList{QLatin1Char('/') + QLatin1String(own) + QStringLiteral("/a.exe")}
                           << QString();
    QTest::newRow("one file") << QStringList{QStringLiteral("/AUTOEXEC.BAT")} << QString();
    QTest::newRow("nothing") << QStringList{} << QString();
}

void TestUnpackedFolder::wrappingFolderIsLookedThrough()
{
    QFETCH(QStringList, files);
    QFETCH(QString, inner);
    const QTemporaryDir dir;
    for (const QString &file : files)
        putFile(dir.path() + file, "x");
    QCOMPARE(unpackedFolder(dir.path()), dir.path() + inner);
}

void TestUnpackedFolder::linkIsNoWrappingFolder()
{
    const QTemporaryDir dir;
    const QTemporaryDir elsewhere;
    QVERIFY(QFile::link(elsewhere.path(), dir.filePath(QStringLiteral("CorvinAll"))));
    QCOMPARE(unpackedFolder(dir.path()), dir.path());
}

void TestUnpackedFolder::systemFilesAreNamesWithADot_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("counts");
    QTest::newRow("file") << QStringLiteral("a.exe") << true;
    QTest::newRow("file deep down") << QStringLiteral("System/Corvin/a.exe") << true;
    QTest::newRow("hidden file") << QStringLiteral("System/.a") << true;
    QTest::newRow("name without a dot") << QStringLiteral("System/README") << false;
    QTest::newRow("only the folder has a dot") << QStringLiteral("v1.0/README") << false;
    QTest::newRow("nothing") << QString() << false;
}

void TestUnpackedFolder::systemFilesAreNamesWithADot()
{
    QFETCH(QString, file);
    QFETCH(bool, counts);
    const QTemporaryDir dir;
    if (!file.isEmpty())
        putFile(dir.filePath(file), "x");
    QCOMPARE(holdsSystemFiles(dir.path()), counts);
}

QTEST_GUILESS_MAIN(TestUnpackedFolder)
#include "tst_unpackedfolder.moc"
