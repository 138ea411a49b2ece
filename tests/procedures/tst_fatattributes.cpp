// Where the system knows the attributes of a FAT volume, the player's own entries carry both.
#include "procedures/systemattributes.h"
#include "support/files.h"
#include "support/platform.h"
#include "support/testing.h"

#ifdef __linux__
#include <fcntl.h>
#include <linux/msdos_fs.h>
#include <sys/ioctl.h>
#include <unistd.h>
#endif

namespace {

/// A FAT file system in a file, mounted by the kernel; not every kernel has one, nor may everybody mount it.
class FatVolume
{
public:
    FatVolume() {
        m_dir.addFolder("mnt"_s);
        m_mounted = run("mkfs.fat"_s, {"-C"_s, m_dir.path("fat.img"_s), "2048"_s}) &&
                    run("mount"_s, {"-o"_s, "loop"_s, "-t"_s, "vfat"_s, m_dir.path("fat.img"_s), root()});
    }
    ~FatVolume() {
        if (m_mounted)
            run("umount"_s, {root()});
    }
    FatVolume(const FatVolume &) = delete;
    FatVolume &operator=(const FatVolume &) = delete;

    bool isMounted() const { return m_mounted; }
    QString root() const { return m_dir.path("mnt/"_s); }
    QByteArray why() const { return m_why; }

private:
    bool run(const QString &name, const QStringList &arguments) {
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        QString path = QStandardPaths::findExecutable(name);
        if (path.isEmpty())
            path = QStandardPaths::findExecutable(name, words("/usr/sbin /sbin"));
        process.start(path, arguments);
        const bool done = !path.isEmpty() && process.waitForFinished() && process.exitCode() == 0;
        m_why = name.toLocal8Bit() + ": " + process.readAll();
        return done;
    }

    PcFolder m_dir;
    bool m_mounted = false;
    QByteArray m_why;
};

} // namespace

class TestFatAttributes : public QObject
{
    Q_OBJECT

private slots:
    void systemFolderAndStartScriptAreHiddenAndSystem() {
#ifdef __linux__
        const FatVolume volume;
        if (!volume.isMounted())
            QSKIP(("No FAT volume can be mounted: " + volume.why()).constData());
        putFile(volume.root() + "System/a.exe"_s, "a");
        putFile(volume.root() + "AUTOEXEC.BAT"_s, "@echo off");
        putFile(volume.root() + "song.mid"_s, "song");
        QVERIFY(runAttributeBatch(QString(), Player(volume.root())));
        QCOMPARE(attributesOf(volume.root() + "System"_s) & kBoth, kBoth);
        QCOMPARE(attributesOf(volume.root() + "AUTOEXEC.BAT"_s) & kBoth, kBoth);
        QCOMPARE(attributesOf(volume.root() + "song.mid"_s) & kBoth, 0U);
#else
        QSKIP("tst_windowsattributes looks at them here");
#endif
    }

#ifdef __linux__
private:
    static constexpr __u32 kBoth = ATTR_HIDDEN | ATTR_SYS;

    static __u32 attributesOf(const QString &path) {
        const int entry = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
        __u32 attributes = 0;
        if (entry < 0 || ::ioctl(entry, FAT_IOCTL_GET_ATTRIBUTES, &attributes) != 0)
            failTest("No attributes of "_s + path);
        ::close(entry);
        return attributes;
    }
#endif
};

QTEST_MAIN(TestFatAttributes)
#include "tst_fatattributes.moc"
