#include "backupchoice.h"

#include <QDir>
#include <QFileInfo>
#include <QStorageInfo>

namespace {

QString realPath(const QString &path)
{
    const QString canonical = QFileInfo(path).canonicalFilePath();
    return canonical.isEmpty() ? QDir::cleanPath(QDir().absoluteFilePath(path)) : canonical;
}

/// Whether both lie on the volume whose root is @p volumeRoot, however it is reached.
bool isOnVolume(const QString &folder, const QString &volumeRoot)
{
    const QStorageInfo volume(volumeRoot);
    return isVolumeRoot(volumeRoot) && volume.isValid() && QStorageInfo(realPath(folder)).device() == volume.device();
}

} // namespace

bool holdsFolder(const QString &outer, const QString &inner)
{
    // Compared as the system compares paths, with or without regard to case.
    const QFileInfo wanted(realPath(outer));
    QString path = realPath(inner);
    while (QFileInfo(path) != wanted) {
        const QString parent = QFileInfo(path).path();
        if (parent.size() >= path.size())
            return false;
        path = parent;
    }
    return true;
}

bool mayBeEmptied(const QString &folder, const Player &player, const QStringList &keep)
{
    if (folder.isEmpty() || holdsFolder(player.root(), folder) || isOnVolume(folder, player.root()))
        return false;
    if (holdsFolder(folder, player.root()))
        return false;
    for (const QString &kept : keep) {
        if (holdsFolder(folder, kept))
            return false;
    }
    return true;
}

bool isVolumeRoot(const QString &folder)
{
    const QString path = realPath(folder);
    return QFileInfo(QStorageInfo(path).rootPath()) == QFileInfo(path);
}
