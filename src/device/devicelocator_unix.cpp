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

QList<LabelledMount> mountedLabels()
{
    return labelledMounts(readWhole(kMountTable), readLabelFolder(kLabelFolder), realDevice);
}

} // namespace

QString SystemVolumes::findPlayerRoot()
{
    // Deliberate: of two volumes with the player's label the one mounted first wins, without a warning.
    const QList<LabelledMount> mounts = mountedLabels();
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
    const QList<LabelledMount> mounts = mountedLabels();
    for (const LabelledMount &mount : mounts) {
        if (withClosingSlash(mount.point) == rootPath)
            return mount.label.trimmed();
    }
    return {};
}

bool SystemVolumes::isRemovable(const QString &path)
{
    const QString device = deviceOfPath(readWhole(kMountTable), QDir::cleanPath(QDir().absoluteFilePath(path)));
    if (device.isEmpty())
        return false;
    const QString entry = QFileInfo(kBlockDevices + QFileInfo(realDevice(device)).fileName()).canonicalFilePath();
    return !entry.isEmpty() && isRemovableBlockDevice(entry);
}
