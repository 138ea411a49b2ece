// Backup and restore on a real exFAT volume, and with disks that are full, read-only or pulled out.
#include "systemfixture.h"

namespace {

constexpr int kMegabyte = 1024 * 1024;

/// A player on a volume of its own.
struct RealCopy : Maintenance
{
    explicit RealCopy(int megabytes = 16) : disk(megabytes)
    {
        if (!disk.isMounted())
            qFatal("%s", qPrintable(disk.volume->error()));
    }
    QString onDisk(const QString &relative) const { return disk.path(relative); }
    /// The cable is pulled as soon as the bar counts this many files and a status is shown.
    void pullAt(const QString &status, int value)
    {
        QObject::connect(window.bar(), &QProgressBar::valueChanged, window.bar(), [this, status, value](int now) {
            if (window.status() == status && window.bar()->format() == "%v"_s && now == value && !pulled)
                pulled = disk.volume->pull();
        });
    }

    MountedPlayer disk;
    bool pulled = false;
};

void addNumbered(const QString &folder, int count, const QByteArray &content = "x")
{
    for (int i = 0; i < count; ++i)
        putFile(folder + "/%1.mid"_s.arg(i), content);
}

/// Some files came through, each of them whole.
void expectOnlyWhole(const QString &folder, int fewerThan, const QByteArray &song)
{
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
    void initTestCase()
    {
        QString why;
        NEEDS(ExFatVolume::isPossible(&why), qPrintable("SKIPPED WHOLE: "_s + why));
    }

    void backupAndRestoreOnARealVolume()
    {
        RealCopy c;
        const QMap<QString, QByteArray> songs = {{"a.mid"_s, "a"},
                                                 {"My Songs/b.mid"_s, QByteArray(100000, 'b')},
                                                 {"Là/perché.mp3"_s, "c"},
                                                 {"System/playlist/one.pls"_s, "d"},
                                                 {"My Songs/empty.mid"_s, ""}};
        for (auto song = songs.begin(); song != songs.end(); ++song)
            putFile(c.onDisk(song.key()), song.value());
        c.backUp({Titles::kDone});
        QCOMPARE(contentBelow(c.backup), songs);
        for (auto song = songs.begin(); song != songs.end(); ++song)
            QVERIFY(QFile::remove(c.onDisk(song.key())));
        c.restore({Titles::kDone});
        // What stands after the cable was pulled is what reached the disk.
        QVERIFY(c.disk.volume->pull());
        QVERIFY(c.disk.volume->mount());
        QCOMPARE(contentBelow(c.disk.root()), songs);
    }

    void systemPartsAreKnownOnAVolumeThatIgnoresCase()
    {
        RealCopy c;
        for (const QString &name : words("SYSTEM/PLAYLIST/one.pls SYSTEM/GuiProc/GuiProc.exe BRIDGES/a.mid "
                                         "Effects/b.fx AutoExec.bat Songs/c.mid"))
            putFile(c.onDisk(name));
        c.backUp({Titles::kDone});
        // A name that is found as it is written keeps that spelling.
        QCOMPARE(entriesBelow(c.backup), words("Songs Songs/c.mid System System/playlist System/playlist/one.pls"));
    }

    void restoreOntoAFullVolumeLeavesNoHalfFile()
    {
        const QByteArray song(kMegabyte, 's');
        RealCopy c(8);
        addNumbered(c.backup, 10, song);
        c.restore({{Titles::kCopyFailed, Buttons::kSiTutti}, Titles::kBackupError});
        expectOnlyWhole(c.disk.root(), 10, song);
    }

    void playerPulledOutWhileItIsReadIsNoBackup()
    {
        RealCopy c;
        for (int i = 0; i < 20; ++i)
            putFile(c.onDisk("Songs%1/a.mid"_s.arg(i)));
        QTimer watch;
        connect(&watch, &QTimer::timeout, this, [&] {
            if (!c.pulled && c.window.status() == Status::kReading)
                c.pulled = c.disk.volume->pull();
        });
        watch.start(0);
        c.backUp({Titles::kBackupError});
        QVERIFY(c.pulled);
    }

    void playerPulledOutWhileSavingIsAskedAbout()
    {
        RealCopy c;
        addNumbered(c.disk.root(), 20);
        c.pullAt(Status::kBackingUp, 3);
        c.backUp({{Titles::kCopyFailed, Buttons::kSiTutti}, Titles::kBackupError});
        QVERIFY(c.pulled);
        QCOMPARE(entriesBelow(c.backup).size(), 3);
    }

    void playerPulledOutWhileRestoringIsNoSuccess()
    {
        RealCopy c;
        addNumbered(c.backup, 6);
        c.pullAt(Status::kRestoring, 3);
        c.restore({Titles::kBackupError});
        QVERIFY(c.pulled);
    }

    void backupOntoAFullDiskLeavesNoHalfFile()
    {
        const QByteArray song(kMegabyte / 4, 's');
        RealCopy c;
        addNumbered(c.disk.root(), 8, song);
        const Mount mount(c.pc.addFolder("disk"_s), 1100);
        NEEDS(mount.isGood(), "Nothing can be mounted here");
        const QString folder = c.pc.addFolder("disk/backup"_s);
        c.run(Slots::kBackUp, {{Titles::kCopyFailed, Buttons::kSiTutti}, Titles::kBackupError}, folder);
        expectOnlyWhole(folder, 8, song);
    }

    void backupOntoAReadOnlyDiskIsRefused()
    {
        RealCopy c;
        putFile(c.onDisk("a.mid"_s));
        const QString old = c.pc.addFile("disk/backup/old.mid"_s);
        const Mount mount(c.pc.path("disk"_s));
        NEEDS(mount.isGood(), "Nothing can be mounted here");
        c.run(Slots::kBackUp, kRefusedAfterAYes, c.pc.path("disk/backup"_s));
        QVERIFY(QFileInfo::exists(old));
    }

    void backupOntoTheRootOfADiskKeepsWhatIsThere()
    {
        RealCopy c;
        putFile(c.onDisk("a.mid"_s));
        const QString other = c.pc.addFolder("disk"_s);
        const Mount mount(other, 1000);
        NEEDS(mount.isGood(), "Nothing can be mounted here");
        putFile(other + "/old.mid"_s);
        c.run(Slots::kBackUp, kRefusedAfterAYes, other);
        QCOMPARE(entriesBelow(other), words("old.mid"));
    }

    void backupOntoTheSameDiskByAnotherWayIsRefused()
    {
        RealCopy c;
        putFile(c.onDisk("Songs/a.mid"_s));
        const QString other = c.pc.addFolder("other"_s);
        NEEDS(runProgram("mount"_s, {"--bind"_s, c.disk.root(), other}), "Nothing can be mounted here");
        c.run(Slots::kBackUp, kRefused, other + "/Songs"_s);
        QVERIFY(runProgram("umount"_s, {other}));
        QVERIFY(QFileInfo::exists(c.onDisk("Songs/a.mid"_s)));
    }

    void destinationThatCannotBeEmptiedIsTold()
    {
        RealCopy c;
        putFile(c.onDisk("a.mid"_s));
        const QString kept = putFile(c.backup + "/kept.mid"_s);
        NEEDS(runProgram("chattr"_s, {"+i"_s, kept}), "This file system has no immutable files");
        c.backUp(kRefusedAfterAYes);
        QVERIFY(runProgram("chattr"_s, {"-i"_s, kept}));
        QCOMPARE(entriesBelow(c.backup), words("kept.mid"));
    }

    void restoreOntoAReadOnlyPlayerIsNoSuccess()
    {
        Maintenance m;
        const Mount mount(QDir::cleanPath(m.player.root()));
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
