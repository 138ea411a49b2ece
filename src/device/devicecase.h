#pragma once

#include <QString>
#include <QStringList>

/// The path of @p relative (parts separated by forward slashes, "System/playlist") below @p root (the player's root
/// with its closing slash), so spelled that it is found. The player's own disk ignores case, but the volume may be
/// shown by a system that does not: then "system" is found as "SYSTEM". A part that is found as it is written stays so,
/// on a volume that ignores case whatever its spelling there; of several that differ from it in case alone the first in
/// sorted order is taken. Parts that are not there stay as written, and become the names of what is made under this
/// path. Always returns @p root + something, with forward slashes below it; changes nothing on the disk.
QString resolveDevicePath(const QString &root, const QString &relative);

/// The paths of the entries of @p folder that are named @p name in any case, sorted: more than one only where case
/// counts. @p folder with or without a closing slash.
QStringList entriesNamed(const QString &folder, const QString &name);
