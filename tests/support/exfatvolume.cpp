#include "exfatvolume.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace {

constexpr qint64 kBytesPerMegabyte = qint64(1024) * 1024;
constexpr int kProgramTimeoutMs = 60000;

const QString kLoopControl = QStringLiteral("/dev/loop-control");
const QString kFuse = QStringLiteral("/dev/fuse");
const QString kDiskFolder = QStringLiteral("/dev/disk");
const QString kLabelFolder = QStringLiteral("/dev/disk/by-label");

QString program(const QString &name)
{
    QString found = QStandardPaths::findExecutable(name);
    if (!found.isEmpty())
        return found;
    return QStandardPaths::findExecutable(name, {QStringLiteral("/usr/sbin"), QStringLiteral("/sbin")});
}

bool canOpen(const QString &device)
{
    QFile file(device);
    return file.open(QIODevice::ReadWrite | QIODevice::Unbuffered | QIODevice::ExistingOnly);
}

} // namespace

bool ExFatVolume::isPossible(QString *why)
{
    QString missing;
    const QStringList tools = {QStringLiteral("mkfs.exfat"), QStringLiteral("mount.exfat-fuse"),
                               QStringLiteral("losetup"), QStringLiteral("umount")};
    for (const QString &tool : tools) {
        if (program(tool).isEmpty())
            missing = QStringLiteral("%1 is not installed").arg(tool);
    }
    if (!canOpen(kLoopControl))
        missing = QStringLiteral("no loop devices here (or not root)");
    else if (!canOpen(kFuse))
        missing = QStringLiteral("no fuse here (or not root)");
    else if (!QFileInfo(QStringLiteral("/dev")).isWritable())
        missing = QStringLiteral("/dev cannot be written (not root)");
    if (why)
        *why = missing;
    return missing.isEmpty();
}

ExFatVolume::ExFatVolume(int megabytes, const QString &label) : m_label(label)
{
    const QString image = m_dir.filePath(QStringLiteral("volume.img"));
    const QString point = m_dir.filePath(QStringLiteral("mnt"));
    QFile file(image);
    if (!QDir().mkpath(point) || !file.open(QIODevice::WriteOnly) || !file.resize(megabytes * kBytesPerMegabyte)) {
        m_error = QStringLiteral("no room for an image in ") + m_dir.path();
        return;
    }
    file.close();
    m_root = QFileInfo(point).canonicalFilePath() + QLatin1Char('/');
    if (!run(QStringLiteral("mkfs.exfat"), {QStringLiteral("-L"), label, image}))
        return;
    QString device;
    if (!run(QStringLiteral("losetup"), {QStringLiteral("--find"), QStringLiteral("--show"), image}, &device))
        return;
    m_device = device.trimmed();
    mount();
}

ExFatVolume::~ExFatVolume()
{
    unlinkLabel();
    if (m_mounted && !unmount())
        pull();
    if (!m_device.isEmpty())
        run(QStringLiteral("losetup"), {QStringLiteral("--detach"), m_device});
}

bool ExFatVolume::mount()
{
    m_mounted = m_mounted || run(QStringLiteral("mount.exfat-fuse"), {m_device, QDir::cleanPath(m_root)});
    return m_mounted;
}

bool ExFatVolume::unmount()
{
    if (m_mounted && run(QStringLiteral("umount"), {QDir::cleanPath(m_root)}))
        m_mounted = false;
    return !m_mounted;
}

bool ExFatVolume::pull()
{
    if (m_mounted && run(QStringLiteral("umount"), {QStringLiteral("--lazy"), QDir::cleanPath(m_root)}))
        m_mounted = false;
    return !m_mounted;
}

bool ExFatVolume::linkLabel(const QString &linkName)
{
    unlinkLabel();
    for (const QString &folder : {kDiskFolder, kLabelFolder}) {
        if (QFileInfo::exists(folder))
            continue;
        if (!QDir().mkdir(folder))
            return false;
        m_madeFolders.prepend(folder);
    }
    const QString link = kLabelFolder + QLatin1Char('/') + (linkName.isEmpty() ? m_label : linkName);
    const QString target = QFile::symLinkTarget(link);
    // A link left behind by a test that was killed may go; a real player's may not.
    if (QFileInfo::exists(target) && !target.startsWith(QStringLiteral("/dev/loop")))
        return false;
    QFile::remove(link);
    // Relative, as udev writes it.
    if (!QFile::link(QStringLiteral("../../") + QFileInfo(m_device).fileName(), link))
        return false;
    m_link = link;
    return true;
}

void ExFatVolume::unlinkLabel()
{
    if (!m_link.isEmpty())
        QFile::remove(m_link);
    m_link.clear();
    // Only empty ones go: somebody else may use them by now.
    for (const QString &folder : qAsConst(m_madeFolders))
        QDir().rmdir(folder);
    m_madeFolders.clear();
}

bool ExFatVolume::run(const QString &name, const QStringList &arguments, QString *output)
{
    QProcess process;
    process.start(program(name), arguments);
    const bool good = process.waitForFinished(kProgramTimeoutMs) && process.exitStatus() == QProcess::NormalExit &&
                      process.exitCode() == 0;
    if (output)
        *output = QString::fromLocal8Bit(process.readAllStandardOutput());
    if (!good)
        m_error = name + QLatin1String(": ") + QString::fromLocal8Bit(process.readAllStandardError()).trimmed();
    return good;
}
