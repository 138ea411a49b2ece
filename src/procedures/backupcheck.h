#pragma once

#include <QString>

/// Whether every file of the player at @p deviceRoot (with its closing slash) that a backup takes lies in the PC folder
/// @p backup, under the same relative path and with the same size. Contents are not compared. Asked before the player's
/// disk is erased: a copy that failed in the middle and was passed over by the user leaves no other trace.
/// Processes events after every file; ends with false as soon as @p abort is true.
bool isBackupComplete(const QString &backup, const QString &deviceRoot, const bool &abort);
