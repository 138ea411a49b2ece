#pragma once

#include "device/player.h"

#include <QString>
#include <QStringList>

// What a backup of the songs decides before it touches anything. Paths have forward slashes.

/// Whether @p outer (an existing folder) is @p inner or one of the folders that lead to it. Links are resolved first.
bool holdsFolder(const QString &outer, const QString &inner);

/// Whether @p folder, chosen for a backup of @p player, may be emptied: not when it lies on the
/// player's own disk, holds that disk, or holds one of the folders @p keep (the program's, the user's).
bool mayBeEmptied(const QString &folder, const Player &player, const QStringList &keep);

/// Whether @p folder is the root of a mounted volume. Its content can be deleted but not the folder itself.
bool isVolumeRoot(const QString &folder);
