#include "device/devicecase.h"
#include "device/devicelocator.h"

#include "support/exfatvolume.h"

#include <QDir>
#include <QFile>
#include <QtTest>

/// The player as a real exFAT volume, found through the system's own list of volumes.
class TestMountedPlayer : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void mountedVolumeIsFoundByItsLabel();
    void volumeIsFoundOnlyWhileItIsMounted();
    void labelWithTrailingBlanksIsFound();
    void otherLabelIsNotThePlayer();
    void folderOfTheVolumeShownElsewhereIsNotThePlayer();
    void pathOnAVolumeThatIgnoresCaseStaysAsWritten();
    void loopDeviceIsNotRemovable();

private:
    QScopedPointer<ExFatVolume> m_volume;
    DeviceLocator m_locator;
};

void TestMountedPlayer::initTestCase()
{
    QString why;
    if (!ExFatVolume::isPossible(&why))
        QSKIP(qPrintable(QStringLiteral("SKIPPED WHOLE: no exFAT volume can be mounted: ") + why));
    qunsetenv("CORVIN_VOLUMES");
    if (!m_locator.findDeviceRoot().isEmpty())
        QSKIP("SKIPPED WHOLE: a real player is connected to this machine");
}

void TestMountedPlayer::init()
{
    m_volume.reset(new ExFatVolume(16));
    QVERIFY2(m_volume->isMounted(), qPrintable(m_volume->error()));
    QVERIFY(m_volume->linkLabel());
}

void TestMountedPlayer::cleanup()
{
    m_volume.reset();
}

void TestMountedPlayer::mountedVolumeIsFoundByItsLabel()
{
    const QString root = m_locator.findDeviceRoot();
    QCOMPARE(root, m_volume->root());
    QCOMPARE(m_locator.volumeLabel(root), QStringLiteral("CORVIN4"));
    QCOMPARE(m_locator.volumeLabel(QDir::cleanPath(root)), QStringLiteral("CORVIN4"));
    QCOMPARE(m_locator.volumeLabel(root + QStringLiteral("System/")), QString());
    QCOMPARE(m_locator.volumeLabel(QStringLiteral("/proc/")), QString());
    // The real thing: a file written through the root stands on the volume after it was mounted again.
    QFile file(root + QStringLiteral("AUTOEXEC.BAT"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    QVERIFY(m_volume->unmount());
    QVERIFY(!file.exists());
    QVERIFY(m_volume->mount());
    QVERIFY(file.exists());
}

void TestMountedPlayer::volumeIsFoundOnlyWhileItIsMounted()
{
    QVERIFY(m_volume->unmount());
    QCOMPARE(m_locator.findDeviceRoot(), QString());
    QCOMPARE(m_locator.volumeLabel(m_volume->root()), QString());
    QVERIFY(m_volume->mount());
    QCOMPARE(m_locator.findDeviceRoot(), m_volume->root());
    QFile open(m_volume->path(QStringLiteral("open file")));
    QVERIFY(open.open(QIODevice::WriteOnly));
    QVERIFY(m_volume->pull());
    QCOMPARE(m_locator.findDeviceRoot(), QString());
}

void TestMountedPlayer::labelWithTrailingBlanksIsFound()
{
    QVERIFY(m_volume->linkLabel(QStringLiteral("Corvin4\\x20\\x20")));
    QCOMPARE(m_locator.findDeviceRoot(), m_volume->root());
    QCOMPARE(m_locator.volumeLabel(m_volume->root()), QStringLiteral("Corvin4"));
}

void TestMountedPlayer::otherLabelIsNotThePlayer()
{
    QVERIFY(m_volume->linkLabel(QStringLiteral("CORVIN4\\x20BACKUP")));
    QCOMPARE(m_locator.findDeviceRoot(), QString());
    QCOMPARE(m_locator.volumeLabel(m_volume->root()), QStringLiteral("CORVIN4 BACKUP"));
    m_volume->unlinkLabel();
    QCOMPARE(m_locator.volumeLabel(m_volume->root()), QString());
}

void TestMountedPlayer::folderOfTheVolumeShownElsewhereIsNotThePlayer()
{
    QVERIFY(QDir().mkpath(m_volume->path(QStringLiteral("My Songs"))));
    QTemporaryDir elsewhere;
    const QStringList bind = {QStringLiteral("--bind"), m_volume->path(QStringLiteral("My Songs")), elsewhere.path()};
    if (QProcess::execute(QStringLiteral("mount"), bind) != 0)
        QSKIP("A folder cannot be shown elsewhere on this machine");
    const QString labelThere = m_locator.volumeLabel(elsewhere.path());
    const QString found = m_locator.findDeviceRoot();
    QCOMPARE(QProcess::execute(QStringLiteral("umount"), {elsewhere.path()}), 0);
    QCOMPARE(labelThere, QString());
    QCOMPARE(found, m_volume->root());
}

void TestMountedPlayer::pathOnAVolumeThatIgnoresCaseStaysAsWritten()
{
    QVERIFY(QDir().mkpath(m_volume->path(QStringLiteral("SYSTEM/playlist"))));
    QCOMPARE(resolveDevicePath(m_volume->root(), QStringLiteral("System/Playlist")),
             m_volume->path(QStringLiteral("System/Playlist")));
}

void TestMountedPlayer::loopDeviceIsNotRemovable()
{
    QVERIFY(!m_locator.isRemovableDrive(m_volume->root()));
}

QTEST_GUILESS_MAIN(TestMountedPlayer)
#include "tst_mountedplayer.moc"
