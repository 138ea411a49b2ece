#pragma once

#include "exfatvolume.h"
#include "files.h"

#include <memory>

/// The player on a real exFAT volume, found by the program as a volume with the player's label.
class MountedPlayer
{
public:
    explicit MountedPlayer(int megabytes = 64, int clusterBytes = 0);
    ~MountedPlayer();
    bool isMounted() const { return volume->isMounted(); }
    QString root() const { return volume->root(); }
    QString path(const QString &relative) const { return volume->path(relative); }
    QStringList files() const { return filesBelow(root()); }

    std::unique_ptr<ExFatVolume> volume;
};

/// Something mounted on a folder for as long as this lives. Needs root: test isGood().
class FolderMount
{
public:
    /// A memory disk of this many kilobytes.
    FolderMount(const QString &folder, int kilobytes);
    /// The folder itself, from now on read-only.
    explicit FolderMount(const QString &folder);
    ~FolderMount();
    FolderMount(const FolderMount &) = delete;
    FolderMount &operator=(const FolderMount &) = delete;
    bool isGood() const { return m_mounted && m_good; }

private:
    QString m_folder;
    bool m_mounted;
    bool m_good = true;
};
