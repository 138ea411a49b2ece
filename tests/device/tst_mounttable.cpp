#include "device/mounttable.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QString unresolved(const QString &device)
{
    return device;
}

QStringList described(const QList<LabelledMount> &mounts)
{
    QStringList texts;
    for (const LabelledMount &mount : mounts)
        texts.append(mount.point + QLatin1Char('|') + mount.label);
    return texts;
}

QStringList described(const QList<Mount> &mounts)
{
    QStringList texts;
    for (const Mount &mount : mounts)
        texts.append(mount.device + QLatin1Char('|') + mount.point);
    return texts;
}

} // namespace

class TestMountTable : public QObject
{
    Q_OBJECT

private slots:
    void linesGiveWholeVolumesOfBlockDevices_data();
    void linesGiveWholeVolumesOfBlockDevices();
    void mountsComeInTheOrderOfTheTable();
    void laterMountOnTheSamePointHidesTheEarlierOne();
    void mountBelowAnotherHidesNothing();
    void labelsAreFoundByDeviceName();
    void deviceUnderAnotherNameIsResolved();
    void nothingIsResolvedWhereNoLabelsAre();
    void networkAndPseudoFileSystemsAreNeverResolved();
    void everyPrefixOfATableIsReadWithoutHarm();
    void mountFieldEscapesAreUndone_data();
    void mountFieldEscapesAreUndone();
    void udevEscapesAreUndone_data();
    void udevEscapesAreUndone();
    void labelFolderIsReadWithoutFollowingTheLinks();
    void missingLabelFolderGivesNoLabels();
    void deviceOfAPathIsTheNearestOneAbove_data();
    void deviceOfAPathIsTheNearestOneAbove();
    void kernelFolderSaysWhetherTheMediumCanBeTakenOut_data();
    void kernelFolderSaysWhetherTheMediumCanBeTakenOut();
};

void TestMountTable::linesGiveWholeVolumesOfBlockDevices_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QStringList>("expected");

    const QStringList none;
    QTest::newRow("exfat") << QByteArray("60 27 8:17 / /media/anna/CORVIN4 rw,relatime shared:30 - exfat /dev/sdb1 rw")
                           << QStringList{QStringLiteral("/dev/sdb1|/media/anna/CORVIN4")};
    QTest::newRow("fuseblk") << QByteArray("60 27 7:0 / /mnt/p rw,nosuid - fuseblk /dev/loop0 rw,user_id=0")
                             << QStringList{QStringLiteral("/dev/loop0|/mnt/p")};
    QTest::newRow("several optional fields")
        << QByteArray("60 27 8:17 / /mnt/p rw shared:1 master:2 propagate_from:3 - vfat /dev/sdb1 rw")
        << QStringList{QStringLiteral("/dev/sdb1|/mnt/p")};
    QTest::newRow("no optional field") << QByteArray("60 27 8:17 / /mnt/p rw - vfat /dev/sdb1 rw")
                                       << QStringList{QStringLiteral("/dev/sdb1|/mnt/p")};
    QTest::newRow("the system's root") << QByteArray("27 1 254:0 / / rw,relatime - ext4 /dev/vda rw")
                                       << QStringList{QStringLiteral("/dev/vda|/")};
    QTest::newRow("blank in the mount point")
        << QByteArray("60 27 8:17 / /media/anna/MY\\040DISK rw - exfat /dev/sdb1 rw")
        << QStringList{QStringLiteral("/dev/sdb1|/media/anna/MY DISK")};
    QTest::newRow("mount point named like the dash")
        << QByteArray("60 27 8:17 / /- rw - exfat /dev/sdb1 rw") << QStringList{QStringLiteral("/dev/sdb1|/-")};
    QTest::newRow("source without options behind it")
        << QByteArray("60 27 8:17 / /mnt/p rw - exfat /dev/sdb1") << QStringList{QStringLiteral("/dev/sdb1|/mnt/p")};
    QTest::newRow("folder of a volume shown elsewhere")
        << QByteArray("60 27 8:17 /My\\040Songs /home/anna/songs rw - exfat /dev/sdb1 rw") << none;
    QTest::newRow("proc") << QByteArray("22 27 0:21 / /proc rw - proc proc rw") << none;
    QTest::newRow("tmpfs") << QByteArray("22 27 0:21 / /tmp rw - tmpfs tmpfs rw") << none;
    QTest::newRow("nfs") << QByteArray("22 27 0:50 / /mnt/nas rw - nfs4 nas:/dev/songs rw") << none;
    QTest::newRow("cifs") << QByteArray("22 27 0:51 / /mnt/nas rw - cifs //nas/CORVIN4 rw") << none;
    QTest::newRow("sshfs") << QByteArray("22 27 0:52 / /mnt/ssh rw - fuse.sshfs anna@nas:/ rw") << none;
    QTest::newRow("autofs") << QByteArray("22 27 0:53 / /mnt/auto rw - autofs systemd-1 rw") << none;
    QTest::newRow("relative mount point") << QByteArray("60 27 8:17 / mnt rw - exfat /dev/sdb1 rw") << none;
    QTest::newRow("no dash") << QByteArray("60 27 8:17 / /mnt/p rw exfat /dev/sdb1 rw") << none;
    QTest::newRow("nothing behind the dash") << QByteArray("60 27 8:17 / /mnt/p rw -") << none;
    QTest::newRow("no source") << QByteArray("60 27 8:17 / /mnt/p rw - exfat") << none;
    QTest::newRow("empty source") << QByteArray("60 27 8:17 / /mnt/p rw - exfat  rw") << none;
    QTest::newRow("empty line") << QByteArray() << none;
    QTest::newRow("blanks only") << QByteArray("            ") << none;
}

void TestMountTable::linesGiveWholeVolumesOfBlockDevices()
{
    QFETCH(QByteArray, line);
    QFETCH(QStringList, expected);
    QCOMPARE(described(parseMountTable(line)), expected);
    QCOMPARE(described(parseMountTable("\n" + line + "\n\n")), expected);
}

void TestMountTable::mountsComeInTheOrderOfTheTable()
{
    const QByteArray table = "60 27 8:33 / /mnt/z rw - exfat /dev/sdc1 rw\n"
                             "61 27 0:21 / /proc rw - proc proc rw\n"
                             "62 27 8:17 / /mnt/a rw - exfat /dev/sdb1 rw\n";
    QCOMPARE(described(parseMountTable(table)),
             (QStringList{QStringLiteral("/dev/sdc1|/mnt/z"), QStringLiteral("/dev/sdb1|/mnt/a")}));
}

void TestMountTable::laterMountOnTheSamePointHidesTheEarlierOne()
{
    const QByteArray player = "60 27 8:17 / /mnt/p rw - exfat /dev/sdb1 rw\n";
    const QByteArray share = "61 60 0:50 / /mnt/p rw - nfs4 nas:/songs rw\n";
    const QByteArray trigger = "59 27 0:53 / /mnt/p rw - autofs systemd-1 rw\n";
    QVERIFY(parseMountTable(player + share).isEmpty());
    QCOMPARE(described(parseMountTable(trigger + player)), QStringList{QStringLiteral("/dev/sdb1|/mnt/p")});
}

void TestMountTable::mountBelowAnotherHidesNothing()
{
    const QByteArray table = "60 27 8:17 / /mnt/p rw - exfat /dev/sdb1 rw\n"
                             "27 1 254:0 / / rw - ext4 /dev/vda rw\n"
                             "61 60 0:50 / /mnt/p/share rw - nfs4 nas:/songs rw\n";
    QCOMPARE(described(parseMountTable(table)),
             (QStringList{QStringLiteral("/dev/sdb1|/mnt/p"), QStringLiteral("/dev/vda|/")}));
}

void TestMountTable::labelsAreFoundByDeviceName()
{
    const QByteArray table = "27 1 254:0 / / rw - ext4 /dev/vda rw\n"
                             "60 27 8:17 / /mnt/p rw - exfat /dev/sdb1 rw\n"
                             "61 27 8:33 / /mnt/q rw - exfat /dev/sdc1 rw\n"
                             "62 27 8:49 / /mnt/r rw - exfat /dev/sdb11 rw\n";
    const LabelsByDevice labels = {{QStringLiteral("/dev/sdc1"), QStringLiteral("CORVIN4")},
                                   {QStringLiteral("/dev/sdb1"), QStringLiteral(" corvin4 ")},
                                   {QStringLiteral("/dev/sdx1"), QStringLiteral("NOT MOUNTED")}};
    QCOMPARE(described(labelledMounts(table, labels, unresolved)),
             (QStringList{QStringLiteral("/mnt/p| corvin4 "), QStringLiteral("/mnt/q|CORVIN4")}));
}

void TestMountTable::deviceUnderAnotherNameIsResolved()
{
    const QByteArray table = "60 27 253:0 / /mnt/p rw - exfat /dev/mapper/player rw\n";
    const LabelsByDevice labels = {{QStringLiteral("/dev/dm-0"), QStringLiteral("CORVIN4")}};
    const auto resolve = [](const QString &device) {
        return device == QLatin1String("/dev/mapper/player") ? QStringLiteral("/dev/dm-0") : QString();
    };
    QCOMPARE(described(labelledMounts(table, labels, resolve)), QStringList{QStringLiteral("/mnt/p|CORVIN4")});
    QVERIFY(labelledMounts(table, labels, [](const QString &) { return QString(); }).isEmpty());
}

void TestMountTable::nothingIsResolvedWhereNoLabelsAre()
{
    const QByteArray table = "60 27 253:0 / /mnt/p rw - exfat /dev/mapper/player rw\n";
    bool asked = false;
    QVERIFY(labelledMounts(table, {}, [&asked](const QString &device) {
                asked = true;
                return device;
            }).isEmpty());
    QVERIFY(!asked);
}

void TestMountTable::networkAndPseudoFileSystemsAreNeverResolved()
{
    const QByteArray table = "22 27 0:50 / /mnt/nas rw - nfs4 nas:/songs rw\n"
                             "23 27 0:51 / /mnt/win rw - cifs //nas/CORVIN4 rw\n"
                             "24 27 0:52 / /mnt/ssh rw - fuse.sshfs anna@nas:/ rw\n"
                             "25 27 0:21 / /proc rw - proc proc rw\n"
                             "60 27 8:17 / /mnt/p rw - exfat /dev/sdb1 rw\n";
    const LabelsByDevice labels = {{QStringLiteral("/dev/sdz1"), QStringLiteral("CORVIN4")}};
    QStringList asked;
    labelledMounts(table, labels, [&asked](const QString &device) {
        asked.append(device);
        return device;
    });
    QCOMPARE(asked, QStringList{QStringLiteral("/dev/sdb1")});
}

void TestMountTable::everyPrefixOfATableIsReadWithoutHarm()
{
    const QByteArray table = "60 27 8:17 / /media/a\\040b rw shared:30 - exfat /dev/sdb1 rw\n"
                             "61 27 0:21 / /proc rw - proc proc rw";
    for (int size = 0; size <= table.size(); ++size)
        QVERIFY(parseMountTable(table.left(size)).size() <= 1);
    QCOMPARE(parseMountTable(table).size(), 1);
}

void TestMountTable::mountFieldEscapesAreUndone_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<QString>("plain");
    QTest::newRow("nothing to undo") << QByteArray("/mnt/p") << QStringLiteral("/mnt/p");
    QTest::newRow("blank") << QByteArray("a\\040b") << QStringLiteral("a b");
    QTest::newRow("tab, line end, backslash") << QByteArray("\\011\\012\\134") << QStringLiteral("\t\n\\");
    QTest::newRow("two in a row, at both ends") << QByteArray("\\040\\040x\\040") << QStringLiteral("  x ");
    QTest::newRow("backslash before digits") << QByteArray("\\134040") << QStringLiteral("\\040");
    QTest::newRow("cut short") << QByteArray("x\\04") << QStringLiteral("x\\04");
    QTest::newRow("backslash alone") << QByteArray("\\") << QStringLiteral("\\");
    QTest::newRow("no octal digits") << QByteArray("\\089") << QStringLiteral("\\089");
    QTest::newRow("more than a byte") << QByteArray("\\777") << QStringLiteral("\\777");
    QTest::newRow("signed number") << QByteArray("\\-12\\+12") << QStringLiteral("\\-12\\+12");
    QTest::newRow("accents") << QByteArray("/media/caff\xc3\xa8") << QStringLiteral("/media/caffè");
    QTest::newRow("escaped accents") << QByteArray("/media/caff\\303\\250") << QStringLiteral("/media/caffè");
    QTest::newRow("empty") << QByteArray() << QString();
}

void TestMountTable::mountFieldEscapesAreUndone()
{
    QFETCH(QByteArray, field);
    QTEST(decodeMountField(field), "plain");
}

void TestMountTable::udevEscapesAreUndone_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("plain");
    QTest::newRow("nothing to undo") << QByteArray("CORVIN4") << QStringLiteral("CORVIN4");
    QTest::newRow("trailing blanks") << QByteArray("CORVIN4\\x20\\x20") << QStringLiteral("CORVIN4  ");
    QTest::newRow("slash") << QByteArray("A\\x2fB") << QStringLiteral("A/B");
    QTest::newRow("capital digits") << QByteArray("A\\x2FB") << QStringLiteral("A/B");
    QTest::newRow("backslash") << QByteArray("A\\x5cx20") << QStringLiteral("A\\x20");
    QTest::newRow("cut short") << QByteArray("A\\x2") << QStringLiteral("A\\x2");
    QTest::newRow("no digits") << QByteArray("A\\xgg") << QStringLiteral("A\\xgg");
    QTest::newRow("accents as they are") << QByteArray("CAFF\xc3\x88") << QStringLiteral("CAFFÈ");
    QTest::newRow("accents escaped") << QByteArray("CAFF\\xc3\\x88") << QStringLiteral("CAFFÈ");
    QTest::newRow("empty") << QByteArray() << QString();
}

void TestMountTable::udevEscapesAreUndone()
{
    QFETCH(QByteArray, name);
    QTEST(decodeUdevName(name), "plain");
}

void TestMountTable::labelFolderIsReadWithoutFollowingTheLinks()
{
    QTemporaryDir dir;
    const QString labels = dir.filePath(QStringLiteral("disk/by-label"));
    QVERIFY(QDir().mkpath(labels));
    QVERIFY(QFile::link(QStringLiteral("../../sdb1"), labels + QStringLiteral("/CORVIN4\\x20")));
    QVERIFY(QFile::link(QStringLiteral("/dev/no-such-device"), labels + QStringLiteral("/WINDOWS")));
    QFile plain(labels + QStringLiteral("/plain file"));
    QVERIFY(plain.open(QIODevice::WriteOnly));

    const LabelsByDevice found = readLabelFolder(labels);
    QCOMPARE(found.size(), 2);
    QCOMPARE(found.value(dir.filePath(QStringLiteral("sdb1"))), QStringLiteral("CORVIN4 "));
    QCOMPARE(found.value(QStringLiteral("/dev/no-such-device")), QStringLiteral("WINDOWS"));
}

void TestMountTable::missingLabelFolderGivesNoLabels()
{
    QTemporaryDir dir;
    QVERIFY(readLabelFolder(dir.filePath(QStringLiteral("by-label"))).isEmpty());
}

void TestMountTable::deviceOfAPathIsTheNearestOneAbove_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("device");
    QTest::newRow("on the system's disk") << QStringLiteral("/home/anna") << QStringLiteral("/dev/vda");
    QTest::newRow("the root itself") << QStringLiteral("/") << QStringLiteral("/dev/vda");
    QTest::newRow("a mount point") << QStringLiteral("/mnt/p") << QStringLiteral("/dev/sdb1");
    QTest::newRow("below a mount point") << QStringLiteral("/mnt/p/My Songs") << QStringLiteral("/dev/sdb1");
    QTest::newRow("beside one with a longer name") << QStringLiteral("/mnt/pq") << QStringLiteral("/dev/vda");
    QTest::newRow("a share below it") << QStringLiteral("/mnt/p/share/x") << QString();
    QTest::newRow("a part of a volume") << QStringLiteral("/mnt/part") << QString();
    QTest::newRow("hidden by a later mount") << QStringLiteral("/mnt/twice") << QStringLiteral("/dev/sdd1");
    QTest::newRow("relative") << QStringLiteral("mnt") << QString();
    QTest::newRow("empty") << QString() << QString();
}

void TestMountTable::deviceOfAPathIsTheNearestOneAbove()
{
    const QByteArray table = "61 60 0:50 / /mnt/p/share rw - nfs4 nas:/songs rw\n"
                             "27 1 254:0 / / rw - ext4 /dev/vda rw\n"
                             "60 27 8:17 / /mnt/p rw - exfat /dev/sdb1 rw\n"
                             "62 27 8:17 /songs /mnt/part rw - exfat /dev/sdb1 rw\n"
                             "63 27 8:33 / /mnt/twice rw - exfat /dev/sdc1 rw\n"
                             "64 63 8:49 / /mnt/twice rw - exfat /dev/sdd1 rw\n";
    QFETCH(QString, path);
    QTEST(deviceOfPath(table, path), "device");
}

void TestMountTable::kernelFolderSaysWhetherTheMediumCanBeTakenOut_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<bool>("removable");
    QTest::newRow("removable") << QByteArray("1\n") << true;
    QTest::newRow("fixed") << QByteArray("0\n") << false;
    QTest::newRow("nothing said") << QByteArray() << false;
}

void TestMountTable::kernelFolderSaysWhetherTheMediumCanBeTakenOut()
{
    QFETCH(QByteArray, answer);
    QFETCH(bool, removable);
    QTemporaryDir devices;
    const QString disk = devices.filePath(QStringLiteral("sdb"));
    const QString partition = disk + QStringLiteral("/sdb1");
    QVERIFY(QDir().mkpath(partition));
    QVERIFY(!isRemovableBlockDevice(disk));
    QVERIFY(!isRemovableBlockDevice(partition));
    QFile file(disk + QStringLiteral("/removable"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(answer) == answer.size());
    file.close();
    QCOMPARE(isRemovableBlockDevice(disk), removable);
    QCOMPARE(isRemovableBlockDevice(partition), removable);
}

QTEST_GUILESS_MAIN(TestMountTable)
#include "tst_mounttable.moc"
