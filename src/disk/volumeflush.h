#pragma once

#include <QString>
#include <functional>

/// Asked between two files, in the thread that flushes; returns whether to go on.
using BetweenFlushes = std::function<bool()>;

/// Writes everything that the system still holds in its caches for the volume under @p path (any existing path on it,
/// forward slashes) to the medium, and waits until it is there. Called before any text that tells the user to unplug.
/// Returns false when the volume is gone or the system refuses, and when @p goOn said no before the last file: where
/// the user may only flush file by file that can take minutes. A system that flushes in one call does not ask.
bool flushVolume(const QString &path, const BetweenFlushes &goOn = nullptr);

/// Does the same for what this run of the program has written below the folder @p path, and where the system can tell
/// that apart leaves the rest of the volume alone: a PC's own disk may have much to write.
bool flushFolder(const QString &path, const BetweenFlushes &goOn = nullptr);
