#include "songlist.h"

#include "disk/tree.h"

namespace {
// The player's own disk ignores case; on the PC the folder gets its name from here.
const QString kPlaylistFolder = QStringLiteral("System/playlist");
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
        return goOn() && (isSystemPart(entry.filePath(), player) || visit(entry));
    };
    const auto visitPlaylist = [&](const QFileInfo &entry) { return goOn() && visit(entry); };
    // Of the player's system its playlists alone are the user's.
    return walkTree({player.root(), kSongEntries, songNames()}, visitSong) &&
           walkTree({player.path(kPlaylistFolder), kSongEntries | QDir::Hidden | QDir::System}, visitPlaylist);
}

bool isBackupComplete(const QString &backup, const Player &player, const std::function<bool()> &goOn)
{
    return visitSongs(player, goOn, [&](const QFileInfo &entry) {
        if (entry.isDir())
            return true;
        const QFileInfo saved(backup + QLatin1Char('/') + player.relativePath(entry.filePath()));
        return saved.isFile() && saved.size() == entry.size();
    });
}
