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
/// The names of it, as wildcards.
inline QStringList songNames()
{
    return {QStringLiteral("*.*")};
}

/// Whether the entry @p path of the player belongs to its system and stays out of a backup: case ignored, it lies in a
/// folder "bridges", "effects" or "system" at any depth, or has "autoexec.bat" anywhere in its path. What leads to the
/// player's root does not count.
bool isSystemPart(const QString &path, const Player &player);

/// Calls @p visit with every entry of the player that a backup takes: all but its system, then the playlists. Events
/// are processed meanwhile. @p goOn is asked before each; returns false when it said no, or @p visit
/// did, or when a folder cannot be listed.
bool visitSongs(const Player &player, const std::function<bool()> &goOn,
                const std::function<bool(const QFileInfo &)> &visit);

/// Calls @p visit with every file of the player that visitSongs() passes over although it is the user's: hidden ones,
/// names without a dot, and what lies in folders that are named like the system's further down. The system is what lies
/// at the root in "System", "Bridges", "Effects" and "CorvinUpdate", and "AUTOEXEC.BAT" there; what a PC keeps at the
/// root of every disk is nobody's either. Otherwise as visitSongs().
bool visitOtherFiles(const Player &player, const std::function<bool()> &goOn,
                     const std::function<bool(const QFileInfo &)> &visit);

/// Whether @p path, relative to the player's root, is not brought back onto a disk with a new system although the list
/// of songs may have taken it, in any case: what lies in "CorvinUpdate", an update that would undo the system, and in
/// what a PC keeps at the root of every disk.
bool staysInBackup(const QString &path);

/// Whether every file that visitSongs() and visitOtherFiles() visit lies in the PC folder @p backup, under the same
/// relative path and with the same size; what a killed copy has left on the player does not count. Contents are not
/// compared. Asked before the player's disk is erased: a copy that failed in the middle and was passed over by the user
/// leaves no other trace. Also false when @p goOn says no, and when the player is gone, of which nothing is left to
/// visit.
bool isBackupComplete(const QString &backup, const Player &player, const std::function<bool()> &goOn);
