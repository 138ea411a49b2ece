#pragma once

#include <QString>
#include <functional>

/// Does @p work in a thread of its own, and processes the events of the calling one until it is done: for a single
/// call into the system that may take longer than the window may stand still. Slots may run meanwhile; @p work must
/// touch nothing that they touch.
void doAside(const std::function<void()> &work);

/// Does @p attempt aside, and where another program may be in the way again for up to two seconds while it fails.
/// Returns what it returned last. For folders that are removed, renamed or made.
bool doAsidePatiently(const std::function<bool()> &attempt);

/// Flushes the volume under @p path as flushVolume() does, aside: a slow stick may take a minute for it. Returns what
/// flushVolume() returned. @p goOn, when given, is asked in the calling thread all the while.
bool flushVolumeAside(const QString &path, const std::function<bool()> &goOn = nullptr);

/// Flushes what this program has written below the folder @p path as flushFolder() does, aside. Returns what it
/// returned. @p goOn as above.
bool flushFolderAside(const QString &path, const std::function<bool()> &goOn = nullptr);
