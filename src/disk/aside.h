#pragma once

#include <QString>
#include <functional>

/// Does @p work in a thread of its own, and processes the events of the calling one until it is done: for a single
/// call into the system that may take longer than the window may stand still. Slots may run meanwhile; @p work must
/// touch nothing that they touch.
void doAside(const std::function<void()> &work);

/// Flushes the volume under @p path as flushVolume() does, aside: a slow stick may take a minute for it. Returns what
/// flushVolume() returned.
bool flushVolumeAside(const QString &path);
