#include "listedvolumes.h"
#include "mounttable.h"
#include "systemvolumes.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

// Only the kernel's mount table and udev's labels are read. A mount point itself is touched after it has matched and
// not before: asking a dead network share anything, even whether it exists, would freeze the window.

namespace {

const QString kMountTable = QStringLiteral("/proc/self/mountinfo");
const QString kLabelFolder = QStringLiteral("/dev/disk/by-label");
const QString kSerialFolder = QStringLiteral("/dev/disk/by-uuid");
const QString kBlockDevices = QStringLiteral("/sys/class/block/");

QByteArray readWhole(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString realDevice(const QString &device)
{
    return QFileInfo(device).canonicalFilePath();
}

/// The mounted volumes that have a link in @p folder, with its name.
QList<LabelledMount> mountsNamedIn(const QString &folder)
{
    return labelledMounts(readWhole(kMountTable), readLabelFolder(folder), realDevice);
}

/// The name that the volume with this root has in @p folder; empty when it has none.
QString nameIn(const QString &folder, const QString &rootPath)
{
    const QList<LabelledMount> mounts = mountsNamedIn(folder);
    for (const LabelledMount &mount : mounts) {
        if (withClosingSlash(mount.point) == rootPath)
            return mount.label.trimmed();
    }
    return {};
}

} // namespace

QString SystemVolumes::findPlayerRoot()
{
    // Deliberate: of two volumes with the player's label the one mounted first wins, without a warning.
    const QList<LabelledMount> mounts = mountsNamedIn(kLabelFolder);
    for (const LabelledMount &mount : mounts) {
        if (!isPlayerLabel(mount.label))
            continue;
        const QString canonical = QFileInfo(mount.point).canonicalFilePath();
        if (!canonical.isEmpty())
            return withClosingSlash(canonical);
    }
    return {};
}

QString SystemVolumes::label(const QString &rootPath)
{
    return nameIn(kLabelFolder, rootPath);
}

QString SystemVolumes::serial(const QString &rootPath)
{
    return nameIn(kSerialFolder, rootPath);
}

bool SystemVolumes::isRemovable(const QString &path)
{
    const QString device = deviceOfPath(readWhole(kMountTable), QDir::cleanPath(QDir().absoluteFilePath(path)));
    if (device.isEmpty())
        return false;
    const QString entry = QFileInfo(kBlockDevices + QFileInfo(realDevice(device)).fileName()).canonicalFilePath();
    return !entry.isEmpty() && isRemovableBlockDevice(entry);
}
