// Backup and restore on a real exFAT volume, and with disks that are full, read-only or pulled out.
#include "systemfixture.h"

namespace {

constexpr int kMegabyte = 1024 * 1024;

/// A player on a volume of its own.
struct RealCopy : Maintenance
{
    explicit RealCopy(int megabytes = 16) : disk(megabytes) {
        if (!disk.isMounted())
            qFatal("%s", qPrintable(disk.volume->error()));
    }
    MountedPlayer disk;
};

void addNumbered(const QString &folder, int count, const QByteArray &content = "x") {
    for (int i = 0; i < count; ++i)
        putFile(folder + "/%1.mid"_s.arg(i), content);
}

/// Some files came through, each of them whole.
void expectOnlyWhole(const QString &folder, int fewerThan, const QByteArray &song) {
    const QMap<QString, QByteArray> files = contentBelow(folder);
    QVERIFY(!files.isEmpty() && files.size() < fewerThan);
    for (const QByteArray &content : files)
        QCOMPARE(content, song);
}

const QList<Answer> kRefused = {{Titles::kError, Buttons::kYes}, Titles::kBackupError};
const QList<Answer> kRefusedAfterAYes = QList<Answer>{Titles::kBackupNotEmpty} + kRefused;

} // namespace

class TestMaintenanceFaultsCopy : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() {
        QString why;
        NEEDS(ExFatVolume::isPossible(&why), qPrintable("SKIPPED WHOLE: "_s + why));
    }

    void backupAndRestoreOnARealVolume() {
        RealCopy c;
        const QMap<QString, QByteArray> songs = {{"a.mid"_s, "a"},
                                                 {"My Songs/b.mid"_s, QByteArray(100000, 'b')},
                                                 {"Là/perché.mp3"_s, "c"},
                                                 {"System/playlist/one.pls"_s, "d"},
                                                 {"My Songs/empty.mid"_s, ""}};
        for (auto song = songs.begin(); song != songs.end(); ++song)
            putFile(c.disk.path(song.key()), song.value());
        c.backUp({Titles::kDone});
        QCOMPARE(contentBelow(c.backup), songs);
        for (auto song = songs.begin(); song != songs.end(); ++song)
            QVERIFY(QFile::remove(c.disk.path(song.key())));
        c.restore({Titles::kDone});
        // What stands after the cable was pulled is what reached the disk.
        QVERIFY(c.disk.volume->pull());
        QVERIFY(c.disk.volume->mount());
        QCOMPARE(contentBelow(c.disk.root()), songs);
    }

    void systemPartsAreKnownOnAVolumeThatIgnoresCase() {
        RealCopy c;
        for (const QString &name : words("SYSTEM/PLAYLIST/one.pls SYSTEM/GuiProc/GuiProc.exe BRIDGES/a.mid "
                                         "Effects/b.fx AutoExec.bat Songs/c.mid"))
            putFile(c.disk.path(name));
        c.backUp({Titles::kDone});
        // A name that is found as it is written keeps that spelling.
        QCOMPARE(entriesBelow(c.backup), words("Songs Songs/c.mid System System/playlist System/playlist/one.pls"));
    }

    void restoreOntoAFullVolumeLeavesNoHalfFile() {
        const QByteArray song(kMegabyte, 's');
        RealCopy c(8);
        addNumbered(c.backup, 10, song);
        c.restore({{Titles::kCopyFailed, Buttons::kSiTutti}, Titles::kBackupError});
        expectOnlyWhole(c.disk.root(), 10, song);
    }

    void playerPulledOutWhileItIsReadIsNoBackup() {
        RealCopy c;
        for (int i = 0; i < 20; ++i)
            putFile(c.disk.path("Songs%1/a.mid"_s.arg(i)));
        QTimer watch;
        connect(&watch, &QTimer::timeout, this, [&] {
            if (!c.pulled && c.window.status() == Status::kReading)
                c.pulled = c.disk.volume->pull();
        });
        watch.start(0);
        c.backUp({Titles::kBackupError});
        QVERIFY(c.pulled);
    }

    void playerPulledOutWhileSavingEndsTheCopy() {
        RealCopy c;
        addNumbered(c.disk.root(), 20);
        c.pullAt(c.disk, Status::kBackingUp, 3);
        c.backUp({Titles::kBackupError});
        QVERIFY(c.pulled);
        QCOMPARE(entriesBelow(c.backup).size(), 3);
    }

    void nothingIsWrittenWhereAPulledPlayerWas_data() {
        columns<bool>("inFolders");
        row("files", false);
        row("files in folders that are to be made", true);
    }
    void nothingIsWrittenWhereAPulledPlayerWas() {
        QFETCH(bool, inFolders);
        RealCopy c;
        for (int i = 0; i < 6; ++i)
            putFile(c.backup + (inFolders ? "/Songs %1/a.mid"_s : "/%1.mid"_s).arg(i));
        c.pullAt(c.disk, Status::kRestoring, 3);
        c.restore({Titles::kBackupError});
        QVERIFY(c.pulled);
        QVERIFY(entriesBelow(c.disk.root()).isEmpty());
        QVERIFY(c.disk.volume->mount());
        QCOMPARE(c.disk.files().size(), 3);
    }

    void playersOwnCopyOutlivesARestoreOntoAFullDisk() {
        const QByteArray mine(kMegabyte, 'm');
        RealCopy c(8);
        addNumbered(c.disk.path("My Songs"_s), 4, mine);
        addNumbered(c.backup + "/My Songs"_s, 4, QByteArray(2 * kMegabyte, 's'));
        const qint64 filler = QStorageInfo(c.disk.root()).bytesAvailable();
        putFile(c.disk.path("filler.mid"_s), QByteArray(int(filler), 'f'));
        c.restore(
            {{Titles::kCopyExists, Buttons::kSiTutti}, {Titles::kCopyFailed, Buttons::kSiTutti}, Titles::kBackupError});
        const QMap<QString, QByteArray> songs = contentBelow(c.disk.path("My Songs"_s));
        QCOMPARE(songs.size(), 4);
        for (const QByteArray &song : songs)
            QCOMPARE(song, mine);
    }

    void backupOntoAFullDiskLeavesNoHalfFile() {
        const QByteArray song(kMegabyte / 4, 's');
        RealCopy c;
        addNumbered(c.disk.root(), 8, song);
        const FolderMount mount(c.pc.addFolder("disk"_s), 1100);
        NEEDS(mount.isGood(), "Nothing can be mounted here");
        const QString folder = c.pc.addFolder("disk/backup"_s);
        c.run(Slots::kBackUp, {{Titles::kCopyFailed, Buttons::kSiTutti}, Titles::kBackupError}, folder);
        expectOnlyWhole(folder, 8, song);
    }

    void backupIsRefusedWhereTheFolderCannotBeEmptied_data() {
        columns<QString>("obstacle");
        for (const char *obstacle : {"read-only disk", "root of a disk", "immutable file"})
            row(obstacle, QString(QLatin1String(obstacle)));
    }
    void backupIsRefusedWhereTheFolderCannotBeEmptied() {
        QFETCH(QString, obstacle);
        const bool isRoot = obstacle == "root of a disk"_s;
        const bool isImmutable = obstacle == "immutable file"_s;
        RealCopy c;
        putFile(c.disk.path("a.mid"_s));
        const QString disk = c.pc.addFolder("disk"_s);
        const QString folder = isRoot ? disk : c.pc.addFolder("disk/backup"_s);
        std::optional<FolderMount> mount;
        if (isRoot)
            mount.emplace(disk, 1000);
        const QString old = putFile(folder + "/old.mid"_s);
        if (!isRoot && !isImmutable)
            mount.emplace(disk);
        NEEDS(!mount || mount->isGood(), "Nothing can be mounted here");
        NEEDS(!isImmutable || runProgram("chattr"_s, {"+i"_s, old}), "This file system has no immutable files");
        c.run(Slots::kBackUp, kRefusedAfterAYes, folder);
        QVERIFY(!isImmutable || runProgram("chattr"_s, {"-i"_s, old}));
        QCOMPARE(entriesBelow(folder), words("old.mid"));
    }

    void backupOntoTheSameDiskByAnotherWayIsRefused() {
        RealCopy c;
        putFile(c.disk.path("Songs/a.mid"_s));
        const QString other = c.pc.addFolder("other"_s);
        NEEDS(runProgram("mount"_s, {"--bind"_s, c.disk.root(), other}), "Nothing can be mounted here");
        c.run(Slots::kBackUp, kRefused, other + "/Songs"_s);
        QVERIFY(runProgram("umount"_s, {other}));
        QVERIFY(QFileInfo::exists(c.disk.path("Songs/a.mid"_s)));
    }

    void restoreOntoAReadOnlyPlayerIsNoSuccess() {
        Maintenance m;
        const FolderMount mount(QDir::cleanPath(m.player.root()));
        NEEDS(mount.isGood(), "Nothing can be mounted here");
        addNumbered(m.pc.path("loose"_s), 2);
        m.run(Slots::kRestore, {Titles::kCopyFailed, Titles::kCopyFailed, Titles::kBackupError}, m.pc.path("loose"_s));
        QVERIFY(m.window->procedureOk);
        // In a folder of its own, the folder is what cannot be made.
        addNumbered(m.pc.path("backup/Songs"_s), 1);
        m.run(Slots::kRestore, {Titles::kError, Titles::kBackupError}, m.pc.path("backup"_s));
        QVERIFY(!m.window->procedureOk);
        QVERIFY(m.player.files().isEmpty());
    }
};

PAGE_TEST_MAIN(TestMaintenanceFaultsCopy)
#include "tst_maintenancefaults_copy.moc"
