#include "device/devicelocator.h"

#include "device/listedvolumes.h"
#include "support/files.h"
#include "support/given.h"
#include "support/logcapture.h"
#include "support/platform.h"
#include "support/simulatedplayer.h"

class TestDeviceLocator : public QObject
{
    Q_OBJECT

    PcFolder m_folder;
    DeviceLocator m_locator;

    /// A folder that plays a volume. Returns its canonical path.
    QString addVolume(const QString &name, const QByteArray &label) const {
        QString folder = QFileInfo(m_folder.path()).canonicalFilePath() + "/"_s + name;
        putFile(folder + "/.windows-label"_s, label);
        return folder;
    }
    static void list(const QStringList &folders) {
        qputenv("CORVIN_VOLUMES", QFile::encodeName(folders.join(QDir::listSeparator())));
    }
    /// What is found while these are the volumes of the PC.
    QString foundAmong(const QStringList &folders) const {
        list(folders);
        return m_locator.findDeviceRoot();
    }

private slots:
    void cleanup() {
        list({});
        QVERIFY(QDir(m_folder.path()).removeRecursively() && QDir().mkpath(m_folder.path()));
    }

    void labelDecidesWhetherAVolumeIsThePlayer_data() {
        columns<QByteArray, QString, bool>("file", "label", "isPlayer");
        row("capitals", QByteArray("CORVIN4"), "CORVIN4"_s, true);
        row("lower case", QByteArray("corvin4"), "corvin4"_s, true);
        row("mixed case", QByteArray("Corvin4\n"), "Corvin4"_s, true);
        row("two trailing blanks", QByteArray("CORVIN4  "), "CORVIN4"_s, true);
        row("blanks around", QByteArray("  Corvin4 \r\n"), "Corvin4"_s, true);
        row("only the first line counts", QByteArray("CORVIN4\r\nBACKUP\r\n"), "CORVIN4"_s, true);
        row("longer", QByteArray("CORVIN4 BACKUP"), "CORVIN4 BACKUP"_s, false);
        row("shorter", QByteArray("CORVIN"), "CORVIN"_s, false);
        row("other number", QByteArray("CORVIN5"), "CORVIN5"_s, false);
        row("blank inside", QByteArray("CORVIN 4"), "CORVIN 4"_s, false);
        row("another name, blanks around", QByteArray(" My Disk \t\n"), "My Disk"_s, false);
        row("empty", QByteArray(), QString(), false);
        row("empty first line", QByteArray("\nCORVIN4"), QString(), false);
        row("no text", QByteArray("\xff\xfe\0\0", 4), "\uFFFD\uFFFD"_s, false);
    }
    void labelDecidesWhetherAVolumeIsThePlayer() {
        const QString folder = addVolume("volume"_s, given<QByteArray>("file"));
        QCOMPARE(foundAmong({folder}), given<bool>("isPlayer") ? folder + "/"_s : QString());
        QTEST(m_locator.volumeLabel(folder), "label");
        QTEST(m_locator.volumeLabel(folder + "/"_s), "label");
    }

    void firstOfTwoPlayersWins() {
        const QString first = addVolume("z"_s, "CORVIN4");
        const QString second = addVolume("a"_s, "CORVIN4");
        const LogCapture log;
        QCOMPARE(foundAmong({first, second}), first + "/"_s);
        QCOMPARE(foundAmong({second, first}), second + "/"_s);
        QVERIFY(log.lines().isEmpty());
    }

    void otherVolumesBeforeThePlayerArePassedOver() {
        const QString other = addVolume("other"_s, "DATA");
        const QString player = addVolume("player"_s, "CORVIN4");
        const QStringList volumes = {"/no/such/folder"_s, QString(), other, other + "/.windows-label"_s, player};
        QCOMPARE(foundAmong(volumes), player + "/"_s);
    }

    void withoutALabelledVolumeTheResultIsEmptyAndNothingIsSaid() {
        const LogCapture log;
        const QStringList missing = {"/no/such/folder"_s};
        // Set to nothing, no such folder, separators only, a volume without a label file.
        for (const QStringList &folders :
             {QStringList(), missing, QStringList{QString(), QString(), QString()}, QStringList{m_folder.path()}}) {
            QCOMPARE(foundAmong(folders), QString());
            for (const QString &folder : folders + missing)
                QCOMPARE(m_locator.volumeLabel(folder + "/"_s), QString());
        }
        QVERIFY(log.lines().isEmpty());
    }

    void rootIsCanonicalWithAClosingSlash() {
        const QString player = addVolume("player"_s, "CORVIN4");
        QCOMPARE(foundAmong({player + "/./../player/"_s}), player + "/"_s);
#ifdef Q_OS_UNIX
        const QString link = m_folder.path("link"_s);
        QVERIFY(QFile::link(player, link));
        QCOMPARE(foundAmong({link}), player + "/"_s);
#endif
    }

    void everyRootEndsWithOneSlash() {
        QCOMPARE(withClosingSlash("/media/CORVIN4"_s), "/media/CORVIN4/"_s);
        QCOMPARE(withClosingSlash("E:/"_s), "E:/"_s);
        QCOMPARE(withClosingSlash("/"_s), "/"_s);
        list({QDir::rootPath()});
        QCOMPARE(ListedVolumes::roots(), QStringList{QDir::rootPath()});
    }

    void everyCallLooksAfresh() {
        const QString first = addVolume("first"_s, "CORVIN4");
        const QString second = addVolume("second"_s, "CORVIN4");
        QCOMPARE(foundAmong({first}), first + "/"_s);
        QCOMPARE(foundAmong({}), QString());
        QCOMPARE(foundAmong({second}), second + "/"_s);
        addVolume("second"_s, "OTHER");
        QCOMPARE(m_locator.findDeviceRoot(), QString());
    }

    void labelOfAFolderThatIsNotListedIsEmpty() {
        const QString listed = addVolume("listed"_s, "CORVIN4");
        const QString other = addVolume("other"_s, "CORVIN4");
        addVolume("listed/below"_s, "CORVIN4");
        list({listed});
        QCOMPARE(m_locator.volumeLabel(other + "/"_s), QString());
        QCOMPARE(m_locator.volumeLabel(listed + "/below/"_s), QString());
        QCOMPARE(m_locator.volumeLabel(QString()), QString());
    }

    void hugeLabelFileIsNotThePlayer() {
        const QString folder = addVolume("volume"_s, "CORVIN4" + QByteArray(3000000, 'x'));
        QCOMPARE(foundAmong({folder}), QString());
        QVERIFY(m_locator.volumeLabel(folder).size() < 2000);
    }

    void listedFolderHasNoSerial() {
        const QString folder = addVolume("volume"_s, "CORVIN4");
        list({folder});
        QCOMPARE(m_locator.volumeSerial(folder), QString());
        QCOMPARE(m_locator.volumeSerial(QString()), QString());
    }

    void fileSystemWithoutADiskIsNotRemovable() {
        QVERIFY(!m_locator.isRemovableDrive(QString()));
        SKIP_ON_WINDOWS("Every file system has a drive here");
        QVERIFY(!m_locator.isRemovableDrive("/proc/"_s));
        QVERIFY(!m_locator.isRemovableDrive("/proc/self/"_s));
    }

#ifdef Q_OS_WIN
    void playersDriveIsRemovableAndTheSystemsIsNot() {
        const SimulatedPlayer player;
        QVERIFY(m_locator.isRemovableDrive(player.root()));
        QVERIFY(m_locator.isRemovableDrive(player.root() + "My Songs/"_s));
        QVERIFY(!m_locator.isRemovableDrive(QDir::rootPath()));
    }

    void serialIsThatOfTheVolume() {
        SimulatedPlayer player;
        SimulatedPlayer::disconnect();
        player.addFile(".windows-serial"_s, "1A2B3C4D\n");
        player.connect();
        QCOMPARE(m_locator.volumeSerial(player.root()), "1a2b3c4d"_s);
        SimulatedPlayer::disconnect();
        QCOMPARE(m_locator.volumeSerial(player.root()), QString());
    }
#endif
};

QTEST_GUILESS_MAIN(TestDeviceLocator)
#include "tst_devicelocator.moc"
