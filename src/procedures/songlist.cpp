#include "songlist.h"

#include "disk/tree.h"

#include <QSet>

namespace {
// The player's own disk ignores case; on the PC the folder gets its name from here.
const QString kPlaylistFolder = QStringLiteral("System/playlist");

/// Whether @p path, relative to the player's root, is part of its system, or of what a PC keeps on every disk.
bool isNobodys(const QString &path)
{
    const int slash = path.indexOf(QLatin1Char('/'));
    const auto is = [name = path.left(slash)](QLatin1String other) {
        return name.compare(other, Qt::CaseInsensitive) == 0;
    };
    // A folder that plays the player has its label in a file.
    if (slash < 0)
        return is(PlayerNames::kStartScript) || is(QLatin1String(".windows-label"));
    return is(PlayerNames::kSystem) || is(PlayerNames::kBridges) || is(PlayerNames::kEffects) ||
           is(PlayerNames::kUpdate) || is(QLatin1String("System Volume Information")) ||
           is(QLatin1String("$RECYCLE.BIN"));
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
        return goOn() && (isSystemPart(entry.filePath(), player) || visit(entry));
    };
    const auto visitPlaylist = [&](const QFileInfo &entry) { return goOn() && visit(entry); };
    // Of the player's system its playlists alone are the user's.
    return walkTree({player.root(), kSongEntries, songNames()}, visitSong) &&
           walkTree({player.path(kPlaylistFolder), kSongEntries | QDir::Hidden | QDir::System}, visitPlaylist);
}

bool visitOtherFiles(const Player &player, const std::function<bool()> &goOn,
                     const std::function<bool(const QFileInfo &)> &visit)
{
    QSet<QString> songs;
    const auto note = [&songs](const QFileInfo &entry) {
        songs.insert(entry.filePath());
        return true;
    };
    return visitSongs(player, goOn, note) && walkTree({player.root()}, [&](const QFileInfo &entry) {
               const bool passes = entry.isFile() && !songs.contains(entry.filePath()) &&
                                   !isNobodys(player.relativePath(entry.filePath()));
               return goOn() && (!passes || visit(entry));
           });
}

bool isInUpdate(const QString &path)
{
    return path.startsWith(PlayerNames::kUpdate + QLatin1Char('/'), Qt::CaseInsensitive);
}

bool isBackupComplete(const QString &backup, const Player &player, const std::function<bool()> &goOn)
{
    const auto isSaved = [&](const QFileInfo &entry) {
        if (entry.isDir())
            return true;
        const QFileInfo saved(backup + QLatin1Char('/') + player.relativePath(entry.filePath()));
        return saved.isFile() && saved.size() == entry.size();
    };
    return visitSongs(player, goOn, isSaved) && visitOtherFiles(player, goOn, isSaved) && player.isThere();
}
