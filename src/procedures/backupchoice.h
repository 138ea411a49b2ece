#pragma once

#include "device/player.h"

#include <QString>
#include <QStringList>

// What a backup of the songs decides before it touches anything. Paths have forward slashes.

/// Whether @p outer (an existing folder) is @p inner or one of the folders that lead to it. Links are resolved first.
bool holdsFolder(const QString &outer, const QString &inner);

/// Why a folder must not be emptied for a backup.
enum class DestinationFault
{
    None,
    IsOnPlayer, ///< it is the player's disk, or lies on it
    HoldsOthers ///< it is, or holds, a folder that is not to be emptied
};

/// What speaks against emptying @p folder, chosen for a backup of @p player: that it lies on the player's own disk,
/// holds that disk, or holds one of the folders @p keep.
DestinationFault destinationFault(const QString &folder, const Player &player, const QStringList &keep);

/// The folders of this PC that no backup may empty: the program's own and its data, the user's home, and the folders
/// that the system keeps for the user's desktop, documents, music, pictures, videos and downloads. What lies in them is
/// free.
QStringList foldersToKeep();

/// Whether @p folder is the root of a mounted volume. Its content can be deleted but not the folder itself.
bool isVolumeRoot(const QString &folder);
