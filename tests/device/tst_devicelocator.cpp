#include "device/devicelocator.h"

#include "device/listedvolumes.h"
#include "support/logcapture.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

namespace {
const char kVariable[] = "CORVIN_VOLUMES";
}

class TestDeviceLocator : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void labelDecidesWhetherAVolumeIsThePlayer_data();
    void labelDecidesWhetherAVolumeIsThePlayer();
    void firstOfTwoPlayersWins();
    void otherVolumesBeforeThePlayerArePassedOver();
    void volumeWithoutLabelFileHasAnEmptyLabel();
    void withoutVolumesTheResultIsEmptyAndNothingIsSaid_data();
    void withoutVolumesTheResultIsEmptyAndNothingIsSaid();
    void rootIsCanonicalWithAClosingSlash();
    void everyRootEndsWithOneSlash();
    void everyCallLooksAfresh();
    void labelIsTrimmed();
    void labelOfAFolderThatIsNotListedIsEmpty();
    void onlyTheFirstLineOfTheLabelFileCounts();
    void hugeLabelFileIsNotThePlayer();
    void emptyPathIsNoRemovableDrive();
    void fileSystemWithoutADiskIsNotRemovable();

private:
    QString addVolume(const QString &name, const QByteArray &label);
    static void list(const QStringList &folders);

    QScopedPointer<QTemporaryDir> m_dir;
    DeviceLocator m_locator;
};

void TestDeviceLocator::init()
{
    m_dir.reset(new QTemporaryDir);
    list({});
}

void TestDeviceLocator::cleanup()
{
    list({});
}

QString TestDeviceLocator::addVolume(const QString &name, const QByteArray &label)
{
    QString folder = QFileInfo(m_dir->path()).canonicalFilePath() + QLatin1Char('/') + name;
    QDir().mkpath(folder);
    QFile file(folder + QStringLiteral("/.windows-label"));
    if (!file.open(QIODevice::WriteOnly) || file.write(label) != label.size())
        qFatal("cannot write the label file");
    return folder;
}

void TestDeviceLocator::list(const QStringList &folders)
{
    qputenv(kVariable, QFile::encodeName(folders.join(QDir::listSeparator())));
}

void TestDeviceLocator::labelDecidesWhetherAVolumeIsThePlayer_data()
{
    QTest::addColumn<QByteArray>("label");
    QTest::addColumn<bool>("isPlayer");
    QTest::newRow("capitals") << QByteArray("CORVIN4") << true;
    QTest::newRow("lower case") << QByteArray("corvin4") << true;
    QTest::newRow("mixed case") << QByteArray("Corvin4\n") << true;
    QTest::newRow("two trailing blanks") << QByteArray("CORVIN4  ") << true;
    QTest::newRow("blanks around") << QByteArray("  Corvin4 \r\n") << true;
    QTest::newRow("longer") << QByteArray("CORVIN4 BACKUP") << false;
    QTest::newRow("shorter") << QByteArray("CORVIN") << false;
    QTest::newRow("other number") << QByteArray("CORVIN5") << false;
    QTest::newRow("blank inside") << QByteArray("CORVIN 4") << false;
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("empty first line") << QByteArray("\nCORVIN4") << false;
    QTest::newRow("no text") << QByteArray("\xff\xfe\0\0", 4) << false;
}

void TestDeviceLocator::labelDecidesWhetherAVolumeIsThePlayer()
{
    QFETCH(QByteArray, label);
    QFETCH(bool, isPlayer);
    const QString folder = addVolume(QStringLiteral("volume"), label);
    list({folder});
    QCOMPARE(m_locator.findDeviceRoot(), isPlayer ? folder + QLatin1Char('/') : QString());
}

void TestDeviceLocator::firstOfTwoPlayersWins()
{
    const QString first = addVolume(QStringLiteral("z"), "CORVIN4");
    const QString second = addVolume(QStringLiteral("a"), "CORVIN4");
    LogCapture log;
    list({first, second});
    QCOMPARE(m_locator.findDeviceRoot(), first + QLatin1Char('/'));
    list({second, first});
    QCOMPARE(m_locator.findDeviceRoot(), second + QLatin1Char('/'));
    QVERIFY(log.lines().isEmpty());
}

void TestDeviceLocator::otherVolumesBeforeThePlayerArePassedOver()
{
    const QString other = addVolume(QStringLiteral("other"), "DATA");
    const QString player = addVolume(QStringLiteral("player"), "CORVIN4");
    list({QStringLiteral("/no/such/folder"), QString(), other, other + QStringLiteral("/.windows-label"), player});
    QCOMPARE(m_locator.findDeviceRoot(), player + QLatin1Char('/'));
}

void TestDeviceLocator::volumeWithoutLabelFileHasAnEmptyLabel()
{
    list({m_dir->path()});
    QCOMPARE(m_locator.volumeLabel(m_dir->path() + QLatin1Char('/')), QString());
    QCOMPARE(m_locator.findDeviceRoot(), QString());
}

void TestDeviceLocator::withoutVolumesTheResultIsEmptyAndNothingIsSaid_data()
{
    QTest::addColumn<QStringList>("folders");
    QTest::newRow("set to nothing") << QStringList();
    QTest::newRow("no such folder") << QStringList{QStringLiteral("/no/such/folder")};
    QTest::newRow("separators only") << QStringList{QString(), QString(), QString()};
}

void TestDeviceLocator::withoutVolumesTheResultIsEmptyAndNothingIsSaid()
{
    QFETCH(QStringList, folders);
    list(folders);
    LogCapture log;
    QCOMPARE(m_locator.findDeviceRoot(), QString());
    QCOMPARE(m_locator.volumeLabel(QStringLiteral("/no/such/folder/")), QString());
    QVERIFY(log.lines().isEmpty());
}

void TestDeviceLocator::rootIsCanonicalWithAClosingSlash()
{
    const QString player = addVolume(QStringLiteral("player"), "CORVIN4");
    list({player + QStringLiteral("/./../player/")});
    QCOMPARE(m_locator.findDeviceRoot(), player + QLatin1Char('/'));
#ifdef Q_OS_UNIX
    const QString link = m_dir->filePath(QStringLiteral("link"));
    QVERIFY(QFile::link(player, link));
    list({link});
    QCOMPARE(m_locator.findDeviceRoot(), player + QLatin1Char('/'));
#endif
}

void TestDeviceLocator::everyRootEndsWithOneSlash()
{
    QCOMPARE(withClosingSlash(QStringLiteral("/media/CORVIN4")), QStringLiteral("/media/CORVIN4/"));
    QCOMPARE(withClosingSlash(QStringLiteral("E:/")), QStringLiteral("E:/"));
    QCOMPARE(withClosingSlash(QStringLiteral("/")), QStringLiteral("/"));
    list({QDir::rootPath()});
    QCOMPARE(ListedVolumes::roots(), QStringList{QDir::rootPath()});
}

void TestDeviceLocator::everyCallLooksAfresh()
{
    const QString first = addVolume(QStringLiteral("first"), "CORVIN4");
    const QString second = addVolume(QStringLiteral("second"), "CORVIN4");
    list({first});
    QCOMPARE(m_locator.findDeviceRoot(), first + QLatin1Char('/'));
    list({});
    QCOMPARE(m_locator.findDeviceRoot(), QString());
    list({second});
    QCOMPARE(m_locator.findDeviceRoot(), second + QLatin1Char('/'));
    addVolume(QStringLiteral("second"), "OTHER");
    QCOMPARE(m_locator.findDeviceRoot(), QString());
}

void TestDeviceLocator::labelIsTrimmed()
{
    const QString folder = addVolume(QStringLiteral("volume"), " My Disk \t\n");
    list({folder});
    QCOMPARE(m_locator.volumeLabel(folder + QLatin1Char('/')), QStringLiteral("My Disk"));
    QCOMPARE(m_locator.volumeLabel(folder), QStringLiteral("My Disk"));
}

void TestDeviceLocator::labelOfAFolderThatIsNotListedIsEmpty()
{
    const QString listed = addVolume(QStringLiteral("listed"), "CORVIN4");
    const QString other = addVolume(QStringLiteral("other"), "CORVIN4");
    addVolume(QStringLiteral("listed/below"), "CORVIN4");
    list({listed});
    QCOMPARE(m_locator.volumeLabel(other + QLatin1Char('/')), QString());
    QCOMPARE(m_locator.volumeLabel(listed + QStringLiteral("/below/")), QString());
    QCOMPARE(m_locator.volumeLabel(QString()), QString());
}

void TestDeviceLocator::onlyTheFirstLineOfTheLabelFileCounts()
{
    const QString folder = addVolume(QStringLiteral("volume"), "CORVIN4\r\nBACKUP\r\n");
    list({folder});
    QCOMPARE(m_locator.volumeLabel(folder), QStringLiteral("CORVIN4"));
}

void TestDeviceLocator::hugeLabelFileIsNotThePlayer()
{
    const QString folder = addVolume(QStringLiteral("volume"), "CORVIN4" + QByteArray(3000000, 'x'));
    list({folder});
    QCOMPARE(m_locator.findDeviceRoot(), QString());
    QVERIFY(m_locator.volumeLabel(folder).size() < 2000);
}

void TestDeviceLocator::emptyPathIsNoRemovableDrive()
{
    QVERIFY(!m_locator.isRemovableDrive(QString()));
}

void TestDeviceLocator::fileSystemWithoutADiskIsNotRemovable()
{
#ifdef Q_OS_WIN
    QSKIP("Every file system has a drive here");
#endif
    QVERIFY(!m_locator.isRemovableDrive(QStringLiteral("/proc/")));
    QVERIFY(!m_locator.isRemovableDrive(QStringLiteral("/proc/self/")));
}

QTEST_GUILESS_MAIN(TestDeviceLocator)
#include "tst_devicelocator.moc"
