#include "device/devicecase.h"

#include "support/platform.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

class TestDeviceCase : public QObject
{
    Q_OBJECT

private slots:
    void partsAreSpelledAsOnTheDisk_data();
    void partsAreSpelledAsOnTheDisk();
    void exactSpellingWins();
    void firstInSortedOrderOfSeveralIsTaken();
    void linkToNowhereIsThere();
    void rootIsLeftAsItIs();
    void emptyRootGivesTheRelativePath();
};

void TestDeviceCase::partsAreSpelledAsOnTheDisk_data()
{
    QTest::addColumn<QString>("existing");
    QTest::addColumn<QString>("asked");
    QTest::addColumn<QString>("resolved");
    QTest::newRow("as written") << "System/playlist"
                                << "System/playlist"
                                << "System/playlist";
    QTest::newRow("last part differs") << "System/Playlist"
                                       << "System/playlist"
                                       << "System/Playlist";
    QTest::newRow("all parts differ") << "SYSTEM/PLAYLIST"
                                      << "system/playlist"
                                      << "SYSTEM/PLAYLIST";
    QTest::newRow("hidden") << ".Cache"
                            << ".cache"
                            << ".Cache";
    QTest::newRow("accents") << QString::fromUtf8("CITTÀ") << QString::fromUtf8("città") << QString::fromUtf8("CITTÀ");
    QTest::newRow("nothing there") << "Other"
                                   << "system/playlist"
                                   << "system/playlist";
    QTest::newRow("half there") << "SYSTEM"
                                << "System/playlist"
                                << "SYSTEM/playlist";
    QTest::newRow("longer name is another") << "Systems"
                                            << "system"
                                            << "system";
    QTest::newRow("doubled slashes") << "System/Playlist"
                                     << "/system//playlist/"
                                     << "System/Playlist";
    QTest::newRow("nothing asked") << "System"
                                   << ""
                                   << "";
}

void TestDeviceCase::partsAreSpelledAsOnTheDisk()
{
    QFETCH(QString, existing);
    QFETCH(QString, asked);
    QFETCH(QString, resolved);
    const QTemporaryDir dir;
    const QString root = dir.path() + QLatin1Char('/');
    QVERIFY(QDir().mkpath(root + existing));
    if (QFileInfo::exists(root + existing.toLower()) && QFileInfo::exists(root + existing.toUpper()))
        QSKIP("This file system ignores case");
    QCOMPARE(resolveDevicePath(root, asked), root + resolved);
}

void TestDeviceCase::exactSpellingWins()
{
    const QTemporaryDir dir;
    const QString root = dir.path() + QLatin1Char('/');
    if (!QDir().mkdir(root + QStringLiteral("SYSTEM")) || !QDir().mkdir(root + QStringLiteral("system")))
        QSKIP("This file system ignores case");
    QCOMPARE(resolveDevicePath(root, QStringLiteral("system")), root + QStringLiteral("system"));
    QCOMPARE(resolveDevicePath(root, QStringLiteral("SYSTEM")), root + QStringLiteral("SYSTEM"));
}

void TestDeviceCase::firstInSortedOrderOfSeveralIsTaken()
{
    const QTemporaryDir dir;
    const QString root = dir.path() + QLatin1Char('/');
    if (!QDir().mkdir(root + QStringLiteral("system")) || !QDir().mkdir(root + QStringLiteral("SYSTEM")))
        QSKIP("This file system ignores case");
    QCOMPARE(resolveDevicePath(root, QStringLiteral("SySteM")), root + QStringLiteral("SYSTEM"));
}

void TestDeviceCase::linkToNowhereIsThere()
{
    SKIP_ON_WINDOWS("links are files of another kind here");
    const QTemporaryDir dir;
    const QString root = dir.path() + QLatin1Char('/');
    if (!QFile::link(root + QStringLiteral("none"), root + QStringLiteral("system")))
        QSKIP("No links here");
    QVERIFY(QDir().mkdir(root + QStringLiteral("SYSTEM")));
    QCOMPARE(resolveDevicePath(root, QStringLiteral("system")), root + QStringLiteral("system"));
}

void TestDeviceCase::rootIsLeftAsItIs()
{
    SKIP_ON_WINDOWS("the file system ignores case here");
    const QTemporaryDir dir;
    QVERIFY(QDir().mkdir(dir.path() + QStringLiteral("/SYSTEM")));
    // Without its closing slash too.
    QCOMPARE(resolveDevicePath(dir.path(), QStringLiteral("system")), dir.path() + QStringLiteral("/SYSTEM"));
    QCOMPARE(resolveDevicePath(QStringLiteral("/none/there/"), QStringLiteral("system")),
             QStringLiteral("/none/there/system"));
}

void TestDeviceCase::emptyRootGivesTheRelativePath()
{
    QCOMPARE(resolveDevicePath(QString(), QStringLiteral("system")), QStringLiteral("system"));
}

QTEST_GUILESS_MAIN(TestDeviceCase)
#include "tst_devicecase.moc"
