#include "unpackedfolder.h"

#include "device/player.h"
#include "disk/tree.h"

#include <QDir>
#include <QFileInfo>

QString unpackedFolder(const QString &archiveFolder)
{
    const QFileInfoList entries = QDir(archiveFolder).entryInfoList(kAllEntries);
    if (entries.size() != 1)
        return archiveFolder;
    const QFileInfo &only = entries.first();
    if (!only.isDir() || only.isSymLink() || Player::isOwnFolder(only.fileName()))
        return archiveFolder;
    return only.filePath();
}

bool holdsSystemFiles(const QString &folder)
{
    // The walk ends at the first one.
    return !walkTree({folder, QDir::Files | QDir::Hidden | QDir::System, {QStringLiteral("*.*")}},
                     [](const QFileInfo &) { return false; });
}
