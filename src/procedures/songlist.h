#pragma once

#include "device/player.h"

#include <QDir>
#include <QFileInfo>
#include <QString>
#include <QStringList>
#include <functional>

// What of the player belongs to the user's songs: a backup takes it, and before the player's disk is erased it must be
// on the PC.

/// What a copy of the songs looks at. Deliberate: only names with a dot, folders' names too, and nothing hidden. A file
/// without a dot in its name is neither saved nor restored.
constexpr QDir::Filters kSongEntries = QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot;
inline QStringList songNames()
{
    return {QStringLiteral("*.*")};
}

/// Whether the entry @p path of the player belongs to its system and stays out of a backup: case ignored, it lies in a
/// folder "bridges", "effects" or "system" at any depth, or has "autoexec.bat" anywhere in its path. What leads to the
/// player's root does not count.
bool isSystemPart(const QString &path, const Player &player);

/// Calls @p visit with every entry of the player that a backup takes: all but its system, then the playlists. Events are
/// processed after each entry of the disk. @p goOn is asked before each; returns false when it said no, or @p visit did.
bool visitSongs(const Player &player, const std::function<bool()> &goOn,
                const std::function<bool(const QFileInfo &)> &visit);

/// Whether every file that a backup takes lies in the PC folder @p backup, under the same relative path and with the
/// same size. Contents are not compared. Asked before the player's disk is erased: a copy that failed in the middle and
/// was passed over by the user leaves no other trace. Also false when @p goOn says no.
bool isBackupComplete(const QString &backup, const Player &player, const std::function<bool()> &goOn);
