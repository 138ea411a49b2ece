#include "device/devicecase.h"
#include "device/devicelocator.h"

#include "support/exfatvolume.h"
#include "support/files.h"
#include "support/testing.h"

/// The player as a real exFAT volume, found through the system's own list of volumes.
class TestMountedPlayer : public QObject
{
    Q_OBJECT

    DeviceLocator m_locator;
    std::unique_ptr<ExFatVolume> m_volume;

private slots:
    void initTestCase() {
        QString why;
        if (!ExFatVolume::isPossible(&why))
            QSKIP(qPrintable("SKIPPED WHOLE: no exFAT volume can be mounted: "_s + why));
        qunsetenv("CORVIN_VOLUMES");
        if (!m_locator.findDeviceRoot().isEmpty())
            QSKIP("SKIPPED WHOLE: a real player is connected to this machine");
    }

    void init() {
        m_volume = std::make_unique<ExFatVolume>(16);
        QVERIFY2(m_volume->isMounted(), qPrintable(m_volume->error()));
        QVERIFY(m_volume->linkLabel());
    }

    void cleanup() { m_volume.reset(); }

    void mountedVolumeIsFoundByItsLabel() {
        const QString root = m_locator.findDeviceRoot();
        QCOMPARE(root, m_volume->root());
        QCOMPARE(m_locator.volumeLabel(root), "CORVIN4"_s);
        QCOMPARE(m_locator.volumeLabel(QDir::cleanPath(root)), "CORVIN4"_s);
        QCOMPARE(m_locator.volumeLabel(root + "System/"_s), QString());
        QCOMPARE(m_locator.volumeLabel("/proc/"_s), QString());
        // The real thing: a file written through the root stands on the volume after it was mounted again.
        const QString file = putFile(root + "AUTOEXEC.BAT"_s, {});
        QVERIFY(m_volume->unmount());
        QVERIFY(!QFile::exists(file));
        QVERIFY(m_volume->mount());
        QVERIFY(QFile::exists(file));
    }

    void volumeIsFoundOnlyWhileItIsMounted() {
        QVERIFY(m_volume->unmount());
        QCOMPARE(m_locator.findDeviceRoot(), QString());
        QCOMPARE(m_locator.volumeLabel(m_volume->root()), QString());
        QVERIFY(m_volume->mount());
        QCOMPARE(m_locator.findDeviceRoot(), m_volume->root());
        QFile open(m_volume->path("open file"_s));
        QVERIFY(open.open(QIODevice::WriteOnly));
        QVERIFY(m_volume->pull());
        QCOMPARE(m_locator.findDeviceRoot(), QString());
    }

    void labelWithTrailingBlanksIsFound() {
        QVERIFY(m_volume->linkLabel("Corvin4\\x20\\x20"_s));
        QCOMPARE(m_locator.findDeviceRoot(), m_volume->root());
        QCOMPARE(m_locator.volumeLabel(m_volume->root()), "Corvin4"_s);
    }

    void otherLabelIsNotThePlayer() {
        QVERIFY(m_volume->linkLabel("CORVIN4\\x20BACKUP"_s));
        QCOMPARE(m_locator.findDeviceRoot(), QString());
        QCOMPARE(m_locator.volumeLabel(m_volume->root()), "CORVIN4 BACKUP"_s);
        m_volume->unlinkLabel();
        QCOMPARE(m_locator.volumeLabel(m_volume->root()), QString());
    }

    void serialIsTheNameThatTheSystemGivesTheVolume() {
        QCOMPARE(m_locator.volumeSerial(m_volume->root()), QString());
        const QString folder = "/dev/disk/by-uuid"_s;
        const bool made = QDir().mkdir(folder);
        const QString link = folder + "/1A2B-3C4D"_s;
        QVERIFY(QFile::link("../../"_s + QFileInfo(m_volume->device()).fileName(), link));
        const QString serial = m_locator.volumeSerial(m_volume->root());
        const QString serialOfAFolder = m_locator.volumeSerial(m_volume->path("My Songs/"_s));
        QVERIFY(QFile::remove(link));
        if (made)
            QVERIFY(QDir().rmdir(folder));
        QCOMPARE(serial, "1A2B-3C4D"_s);
        QCOMPARE(serialOfAFolder, QString());
    }

    void folderOfTheVolumeShownElsewhereIsNotThePlayer() {
        const QString songs = m_volume->path("My Songs"_s);
        QVERIFY(QDir().mkpath(songs));
        const QTemporaryDir elsewhere;
        if (!runProgram("mount"_s, {"--bind"_s, songs, elsewhere.path()}))
            QSKIP("A folder cannot be shown elsewhere on this machine");
        const QString labelThere = m_locator.volumeLabel(elsewhere.path());
        const QString found = m_locator.findDeviceRoot();
        QVERIFY(runProgram("umount"_s, {elsewhere.path()}));
        QCOMPARE(labelThere, QString());
        QCOMPARE(found, m_volume->root());
    }

    void pathOnAVolumeThatIgnoresCaseStaysAsWritten() {
        QVERIFY(QDir().mkpath(m_volume->path("SYSTEM/playlist"_s)));
        QCOMPARE(resolveDevicePath(m_volume->root(), "System/Playlist"_s), m_volume->path("System/Playlist"_s));
    }

    void loopDeviceIsNotRemovable() { QVERIFY(!m_locator.isRemovableDrive(m_volume->root())); }
};

QTEST_GUILESS_MAIN(TestMountedPlayer)
#include "tst_mountedplayer.moc"
