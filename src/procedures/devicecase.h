#pragma once

#include <QString>

/// The path of @p relative (parts separated by forward slashes, "System/playlist") below @p root (the player's root with
/// its closing slash), each part spelled as it stands on the disk. The player's own disk ignores case, but the volume
/// may be shown by a system that does not: then "system" is found as "SYSTEM". A part that stands there exactly as
/// written wins over one that differs in case; of several that differ the first in sorted order is taken. Parts that are
/// not there stay as written.
/// Always returns @p root + something, with forward slashes below it; asks nothing of the disk beyond its listings.
QString resolveDevicePath(const QString &root, const QString &relative);
