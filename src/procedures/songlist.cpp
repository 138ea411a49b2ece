#include "songlist.h"

#include "disk/diskcalls.h"
#include "disk/filecopy.h"
#include "disk/tree.h"

#include <QSet>

namespace {
// The player's own disk ignores case; on the PC the folder gets its name from here.
const QString kPlaylistFolder = QStringLiteral("System/playlist");

/// Whether @p path, relative to the player's root, lies in a folder of this name there, in any case.
bool isBelow(const QString &path, QLatin1String folder)
{
    return path.size() > folder.size() && path.at(folder.size()) == QLatin1Char('/') &&
           path.startsWith(folder, Qt::CaseInsensitive);
}

bool isRealFolder(const QFileInfo &entry)
{
    return entry.isDir() && !isLink(entry);
}

/// Whether it is part of the player's system, or of what a PC keeps on every disk.
bool isNobodys(const QString &path)
{
    // A folder that plays the player has its label in a file.
    return path.compare(PlayerNames::kStartScript, Qt::CaseInsensitive) == 0 ||
           path == QLatin1String(".windows-label") || isBelow(path, PlayerNames::kSystem) ||
           isBelow(path, PlayerNames::kBridges) || isBelow(path, PlayerNames::kEffects) || staysInBackup(path);
}
} // namespace

bool isSystemPart(const QString &path, const Player &player)
{
    // Only what lies below the root counts, the root's own slash included: the player may be mounted anywhere.
    const QString below = QLatin1Char('/') + player.relativePath(path);
    const QStringList parts = {QStringLiteral("/BRIDGES/"), QStringLiteral("/EFFECTS/"), QStringLiteral("/System/"),
                               QStringLiteral("autoexec.bat")};
    for (const QString &part : parts) {
        if (below.contains(part, Qt::CaseInsensitive))
            return true;
    }
    return false;
}

bool visitSongs(const Player &player, const std::function<bool()> &goOn,
                const std::function<bool(const QFileInfo &)> &visit)
{
    const auto visitSong = [&](const QFileInfo &entry) {
        const QString path = entry.filePath();
        if (!goOn())
            return false;
        // Entries come whatever their name: a folder that cannot be listed would pass for an empty one.
        if (isRealFolder(entry) && !isSystemPart(path + QLatin1Char('/'), player) && !isListable(path))
            return false;
        return isSystemPart(path, player) || !entry.fileName().contains(QLatin1Char('.')) || visit(entry);
    };
    const auto visitPlaylist = [&](const QFileInfo &entry) {
        return goOn() && (!isRealFolder(entry) || isListable(entry.filePath())) && visit(entry);
    };
    // Of the player's system its playlists alone are the user's.
    const QString playlists = player.path(kPlaylistFolder);
    return isListable(player.root()) && walkTree({player.root(), kSongEntries}, visitSong) &&
           (!QFileInfo::exists(playlists) || isListable(playlists)) &&
           walkTree({playlists, kSongEntries | QDir::Hidden | QDir::System}, visitPlaylist);
}

bool visitOtherFiles(const Player &player, const std::function<bool()> &goOn,
                     const std::function<bool(const QFileInfo &)> &visit)
{
    QSet<QString> songs;
    const auto note = [&songs](const QFileInfo &entry) {
        songs.insert(entry.filePath());
        return true;
    };
    const auto visitOther = [&](const QFileInfo &entry) {
        const QString path = player.relativePath(entry.filePath());
        if (!goOn())
            return false;
        if (isRealFolder(entry))
            return isNobodys(path + QLatin1Char('/')) || isListable(entry.filePath());
        return !entry.isFile() || songs.contains(entry.filePath()) || isNobodys(path) || visit(entry);
    };
    return visitSongs(player, goOn, note) && walkTree({player.root()}, visitOther);
}

bool staysInBackup(const QString &path)
{
    const int slash = path.indexOf(QLatin1Char('/'));
    return isBelow(path, PlayerNames::kUpdate) || isBelow(path, PlayerNames::kUnfinishedUpdate) ||
           (slash > 0 && isWindowsOwn(path.left(slash)));
}

bool isBackupComplete(const QString &backup, const Player &player, const std::function<bool()> &goOn)
{
    const auto isSaved = [&](const QFileInfo &entry) {
        // The copy of what another copy has left may have been in the way of the next.
        if (entry.isDir() || isUnfinishedCopy(entry.fileName()))
            return true;
        const QFileInfo saved(backup + QLatin1Char('/') + player.relativePath(entry.filePath()));
        return saved.isFile() && saved.size() == entry.size();
    };
    return visitSongs(player, goOn, isSaved) && visitOtherFiles(player, goOn, isSaved) && player.isThere();
}
