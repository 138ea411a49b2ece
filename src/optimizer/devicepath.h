#pragma once

#include <QString>

// The player names its files "\sdmemory\" followed by the path below its root, with backslashes. The PC names the same
// file by the root path (canonical, with closing slash, e.g. "E:/") followed by the same path with forward slashes.

/// How every path in device form begins.
inline const QString kDevicePathStart = QStringLiteral("\\sdmemory\\");

/// The PC path of every file named in @p text, a text in device form such as a playlist line: each "\sdmemory\",
/// whatever its case, becomes @p rootPath, then each backslash a forward slash. Text that names no file keeps the rest
/// of its characters. @p rootPath ends in a slash.
QString devicePathToPc(QString text, const QString &rootPath);

/// The device path of the file at the PC path @p path: each occurrence of @p rootPath, in exactly this case, becomes
/// "\sdmemory\", then each forward slash a backslash. A path that does not lie on the player only gets backslashes;
/// so does every path while @p rootPath is empty.
QString pcPathToDevicePath(QString path, const QString &rootPath);
