#include "device/mounttable.h"

#include "support/files.h"
#include "support/given.h"

class TestMountTable : public QObject
{
    Q_OBJECT

    static QString parsed(const QByteArray &table) {
        QStringList texts;
        for (const Mount &mount : parseMountTable(table))
            texts.append(mount.device + "|"_s + mount.point);
        return texts.join(QLatin1Char('\n'));
    }
    static QStringList labelled(const QByteArray &table, const LabelsByDevice &labels, const DeviceResolver &resolve) {
        QStringList texts;
        for (const LabelledMount &mount : labelledMounts(table, labels, resolve))
            texts.append(mount.point + "|"_s + mount.label);
        return texts;
    }

    /// A row of bytes or lines and the text that is made of them.
    static void bytes(const char *name, const QByteArray &from, const QString &to = {}) { row(name, from, to); }

private slots:
    void linesGiveWholeVolumesOfBlockDevices_data() {
        columns<QByteArray, QString>("lines", "mounts");
        bytes("exfat", "60 27 8:17 / /media/anna/CORVIN4 rw,relatime shared:30 - exfat /dev/sdb1 rw",
              "/dev/sdb1|/media/anna/CORVIN4"_s);
        bytes("fuseblk", "60 27 7:0 / /mnt/p rw,nosuid - fuseblk /dev/loop0 rw,user_id=0", "/dev/loop0|/mnt/p"_s);
        bytes("several optional fields",
              "60 27 8:17 / /mnt/p rw shared:1 master:2 propagate_from:3 - vfat /dev/sdb1 rw", "/dev/sdb1|/mnt/p"_s);
        bytes("no optional field", "60 27 8:17 / /mnt/p rw - vfat /dev/sdb1 rw", "/dev/sdb1|/mnt/p"_s);
        bytes("the system's root", "27 1 254:0 / / rw,relatime - ext4 /dev/vda rw", "/dev/vda|/"_s);
        bytes("blank in the mount point", "60 27 8:17 / /media/anna/MY\\040DISK rw - exfat /dev/sdb1 rw",
              "/dev/sdb1|/media/anna/MY DISK"_s);
        bytes("mount point named like the dash", "60 27 8:17 / /- rw - exfat /dev/sdb1 rw", "/dev/sdb1|/-"_s);
        bytes("source without options behind it", "60 27 8:17 / /mnt/p rw - exfat /dev/sdb1", "/dev/sdb1|/mnt/p"_s);
        // A folder of a volume shown elsewhere, and what is no volume of a block device.
        for (const char *line :
             {"60 27 8:17 /My\\040Songs /home/anna/songs rw - exfat /dev/sdb1 rw",
              "22 27 0:21 / /proc rw - proc proc rw", "22 27 0:21 / /tmp rw - tmpfs tmpfs rw",
              "22 27 0:50 / /mnt/nas rw - nfs4 nas:/dev/songs rw", "22 27 0:51 / /mnt/nas rw - cifs //nas/CORVIN4 rw",
              "22 27 0:52 / /mnt/ssh rw - fuse.sshfs anna@nas:/ rw", "22 27 0:53 / /mnt/auto rw - autofs systemd-1 rw"})
            bytes(line, line);
        bytes("relative mount point", "60 27 8:17 / mnt rw - exfat /dev/sdb1 rw");
        bytes("no dash", "60 27 8:17 / /mnt/p rw exfat /dev/sdb1 rw");
        bytes("nothing behind the dash", "60 27 8:17 / /mnt/p rw -");
        bytes("no source", "60 27 8:17 / /mnt/p rw - exfat");
        bytes("empty source", "60 27 8:17 / /mnt/p rw - exfat  rw");
        bytes("empty line", "");
        bytes("blanks only", "            ");
        bytes("in the order of the table",
              "60 27 8:33 / /mnt/z rw - exfat /dev/sdc1 rw\n"
              "61 27 0:21 / /proc rw - proc proc rw\n"
              "62 27 8:17 / /mnt/a rw - exfat /dev/sdb1 rw\n",
              "/dev/sdc1|/mnt/z\n/dev/sdb1|/mnt/a"_s);
        bytes("later mount on the same point hides the earlier one",
              "60 27 8:17 / /mnt/p rw - exfat /dev/sdb1 rw\n61 60 0:50 / /mnt/p rw - nfs4 nas:/songs rw\n");
        bytes("what triggers a mount is hidden by it",
              "59 27 0:53 / /mnt/p rw - autofs systemd-1 rw\n60 27 8:17 / /mnt/p rw - exfat /dev/sdb1 rw\n",
              "/dev/sdb1|/mnt/p"_s);
        bytes("mount below another hides nothing",
              "60 27 8:17 / /mnt/p rw - exfat /dev/sdb1 rw\n"
              "27 1 254:0 / / rw - ext4 /dev/vda rw\n"
              "61 60 0:50 / /mnt/p/share rw - nfs4 nas:/songs rw\n",
              "/dev/sdb1|/mnt/p\n/dev/vda|/"_s);
    }
    void linesGiveWholeVolumesOfBlockDevices() {
        const QByteArray &lines = given<QByteArray>("lines");
        QTEST(parsed(lines), "mounts");
        QTEST(parsed("\n" + lines + "\n\n"), "mounts");
    }

    void labelsAreFoundByDeviceName() {
        const QByteArray lines = "27 1 254:0 / / rw - ext4 /dev/vda rw\n"
                                 "60 27 8:17 / /mnt/p rw - exfat /dev/sdb1 rw\n"
                                 "61 27 8:33 / /mnt/q rw - exfat /dev/sdc1 rw\n"
                                 "62 27 8:49 / /mnt/r rw - exfat /dev/sdb11 rw\n";
        const LabelsByDevice labels = {
            {"/dev/sdc1"_s, "CORVIN4"_s}, {"/dev/sdb1"_s, " corvin4 "_s}, {"/dev/sdx1"_s, "NOT MOUNTED"_s}};
        const QStringList expected = {"/mnt/p| corvin4 "_s, "/mnt/q|CORVIN4"_s};
        QCOMPARE(labelled(lines, labels, [](const QString &device) { return device; }), expected);
    }

    void deviceUnderAnotherNameIsResolved() {
        const QByteArray lines = "60 27 253:0 / /mnt/p rw - exfat /dev/mapper/player rw\n";
        const LabelsByDevice labels = {{"/dev/dm-0"_s, "CORVIN4"_s}};
        const auto resolve = [](const QString &device) {
            return device == "/dev/mapper/player"_s ? "/dev/dm-0"_s : QString();
        };
        QCOMPARE(labelled(lines, labels, resolve), words("/mnt/p|CORVIN4"));
        QVERIFY(labelledMounts(lines, labels, [](const QString &) { return QString(); }).isEmpty());
    }

    void onlyNamesThatMayBearALabelAreResolved() {
        const QByteArray lines = "22 27 0:50 / /mnt/nas rw - nfs4 nas:/songs rw\n"
                                 "23 27 0:51 / /mnt/win rw - cifs //nas/CORVIN4 rw\n"
                                 "24 27 0:52 / /mnt/ssh rw - fuse.sshfs anna@nas:/ rw\n"
                                 "25 27 0:21 / /proc rw - proc proc rw\n"
                                 "60 27 253:0 / /mnt/p rw - exfat /dev/mapper/player rw\n";
        QStringList asked;
        const auto resolve = [&asked](const QString &device) {
            asked.append(device);
            return device;
        };
        QVERIFY(labelledMounts(lines, {}, resolve).isEmpty());
        QCOMPARE(asked, QStringList()); // nothing where no labels are
        QVERIFY(labelledMounts(lines, {{"/dev/sdz1"_s, "CORVIN4"_s}}, resolve).isEmpty());
        QCOMPARE(asked, words("/dev/mapper/player"));
    }

    void everyPrefixOfATableIsReadWithoutHarm() {
        const QByteArray lines = "60 27 8:17 / /media/a\\040b rw shared:30 - exfat /dev/sdb1 rw\n"
                                 "61 27 0:21 / /proc rw - proc proc rw";
        for (int size = 0; size <= lines.size(); ++size)
            QVERIFY(parseMountTable(lines.left(size)).size() <= 1);
        QCOMPARE(parseMountTable(lines).size(), 1);
    }

    void mountFieldEscapesAreUndone_data() {
        columns<QByteArray, QString>("field", "plain");
        bytes("nothing to undo", "/mnt/p", "/mnt/p"_s);
        bytes("blank", "a\\040b", "a b"_s);
        bytes("tab, line end, backslash", "\\011\\012\\134", "\t\n\\"_s);
        bytes("two in a row, at both ends", "\\040\\040x\\040", "  x "_s);
        bytes("backslash before digits", "\\134040", "\\040"_s);
        bytes("cut short", "x\\04", "x\\04"_s);
        bytes("backslash alone", "\\", "\\"_s);
        bytes("no octal digits", "\\089", "\\089"_s);
        bytes("more than a byte", "\\777", "\\777"_s);
        bytes("signed number", "\\-12\\+12", "\\-12\\+12"_s);
        bytes("accents", "/media/caff\xc3\xa8", "/media/caffè"_s);
        bytes("escaped accents", "/media/caff\\303\\250", "/media/caffè"_s);
        bytes("empty", {}, {});
    }
    void mountFieldEscapesAreUndone() { QTEST(decodeMountField(given<QByteArray>("field")), "plain"); }

    void udevEscapesAreUndone_data() {
        columns<QByteArray, QString>("name", "plain");
        bytes("nothing to undo", "CORVIN4", "CORVIN4"_s);
        bytes("trailing blanks", "CORVIN4\\x20\\x20", "CORVIN4  "_s);
        bytes("slash", "A\\x2fB", "A/B"_s);
        bytes("capital digits", "A\\x2FB", "A/B"_s);
        bytes("backslash", "A\\x5cx20", "A\\x20"_s);
        bytes("cut short", "A\\x2", "A\\x2"_s);
        bytes("no digits", "A\\xgg", "A\\xgg"_s);
        bytes("accents as they are", "CAFF\xc3\x88", "CAFFÈ"_s);
        bytes("accents escaped", "CAFF\\xc3\\x88", "CAFFÈ"_s);
        bytes("empty", {}, {});
    }
    void udevEscapesAreUndone() { QTEST(decodeUdevName(given<QByteArray>("name")), "plain"); }

    void labelFolderIsReadWithoutFollowingTheLinks() {
        PcFolder dev;
        const QString labels = dev.addFolder("disk/by-label"_s);
        QVERIFY(QFile::link("../../sdb1"_s, labels + "/CORVIN4\\x20"_s));
        QVERIFY(QFile::link("/dev/no-such-device"_s, labels + "/WINDOWS"_s));
        dev.addFile("disk/by-label/plain file"_s);
        const LabelsByDevice expected = {{dev.path("sdb1"_s), "CORVIN4 "_s}, {"/dev/no-such-device"_s, "WINDOWS"_s}};
        QCOMPARE(readLabelFolder(labels), expected);
    }

    void missingLabelFolderGivesNoLabels() { QVERIFY(readLabelFolder(PcFolder().path("by-label"_s)).isEmpty()); }

    void deviceOfAPathIsTheNearestOneAbove_data() {
        columns<QString, QString>("path", "device");
        row("on the system's disk", "/home/anna"_s, "/dev/vda"_s);
        row("the root itself", "/"_s, "/dev/vda"_s);
        row("a mount point", "/mnt/p"_s, "/dev/sdb1"_s);
        row("below a mount point", "/mnt/p/My Songs"_s, "/dev/sdb1"_s);
        row("beside one with a longer name", "/mnt/pq"_s, "/dev/vda"_s);
        row("a share below it", "/mnt/p/share/x"_s, QString());
        row("a part of a volume", "/mnt/part"_s, QString());
        row("hidden by a later mount", "/mnt/twice"_s, "/dev/sdd1"_s);
        row("relative", "mnt"_s, QString());
        row("empty", QString(), QString());
    }
    void deviceOfAPathIsTheNearestOneAbove() {
        const QByteArray lines = "61 60 0:50 / /mnt/p/share rw - nfs4 nas:/songs rw\n"
                                 "27 1 254:0 / / rw - ext4 /dev/vda rw\n"
                                 "60 27 8:17 / /mnt/p rw - exfat /dev/sdb1 rw\n"
                                 "62 27 8:17 /songs /mnt/part rw - exfat /dev/sdb1 rw\n"
                                 "63 27 8:33 / /mnt/twice rw - exfat /dev/sdc1 rw\n"
                                 "64 63 8:49 / /mnt/twice rw - exfat /dev/sdd1 rw\n";
        QTEST(deviceOfPath(lines, given<QString>("path")), "device");
    }

    void kernelFolderSaysWhetherTheMediumCanBeTakenOut() {
        // Removable, fixed, nothing said.
        for (const QByteArray answer : {"1\n", "0\n", ""}) {
            PcFolder devices;
            const QStringList diskAndPartition = {devices.path("sdb"_s), devices.addFolder("sdb/sdb1"_s)};
            for (const QString &device : diskAndPartition)
                QVERIFY(!isRemovableBlockDevice(device));
            devices.addFile("sdb/removable"_s, answer);
            for (const QString &device : diskAndPartition)
                QVERIFY2(isRemovableBlockDevice(device) == (answer == "1\n"), answer.constData());
        }
    }
};

QTEST_GUILESS_MAIN(TestMountTable)
#include "tst_mounttable.moc"
