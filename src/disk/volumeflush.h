#pragma once

#include <QString>

/// Writes everything that the system still holds in its caches for the volume under @p path (any existing path on it,
/// forward slashes) to the medium, and waits until it is there. Called before any text that tells the user to unplug.
/// Returns false when the volume is gone or the system refuses.
bool flushVolume(const QString &path);

/// Does the same for what this run of the program has written below the folder @p path, and where the system can tell
/// that apart leaves the rest of the volume alone: a PC's own disk may have much to write.
bool flushFolder(const QString &path);
