#include "backupchoice.h"

#include "disk/datafolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStorageInfo>

#include <algorithm>

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
    const QString wanted = realPath(outer);
    // Compared as the system compares paths, with or without regard to case: it takes all that do not exist for the
    // same.
    const auto isWanted = [&wanted](const QString &path) {
        return path == wanted || (QFileInfo::exists(path) && QFileInfo(path) == QFileInfo(wanted));
    };
    QString path = realPath(inner);
    while (!isWanted(path)) {
        const QString parent = QFileInfo(path).path();
        if (parent.size() >= path.size())
            return false;
        path = parent;
    }
    return true;
}

DestinationFault destinationFault(const QString &folder, const Player &player, const QStringList &keep)
{
    if (folder.isEmpty())
        return DestinationFault::HoldsOthers;
    if (holdsFolder(player.root(), folder) || isOnVolume(folder, player.root()))
        return DestinationFault::IsOnPlayer;
    const bool holdsOthers =
        std::any_of(keep.begin(), keep.end(), [&folder](const QString &kept) { return holdsFolder(folder, kept); });
    return holdsOthers || holdsFolder(folder, player.root()) ? DestinationFault::HoldsOthers : DestinationFault::None;
}

QStringList foldersToKeep()
{
    QStringList folders = {QCoreApplication::applicationDirPath(), dataFolder(), QDir::homePath()};
    for (const auto place :
         {QStandardPaths::DesktopLocation, QStandardPaths::DocumentsLocation, QStandardPaths::MusicLocation,
          QStandardPaths::PicturesLocation, QStandardPaths::MoviesLocation, QStandardPaths::DownloadLocation})
        folders += QStandardPaths::standardLocations(place);
    folders.removeAll(QString());
    return folders;
}

bool isVolumeRoot(const QString &folder)
{
    const QString path = realPath(folder);
    return QFileInfo(QStorageInfo(path).rootPath()) == QFileInfo(path);
}
