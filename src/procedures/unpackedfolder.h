#pragma once

#include <QString>

/// Where the content of an archive lies that was unpacked in @p archiveFolder (absolute, forward slashes): that folder
/// itself, or the one folder in it when the archive was packed with a folder around everything. A single folder with one
/// of the player's own names ("System", "CorvinUpdate", … in any case) is content, not such a wrapping.
QString unpackedFolder(const QString &archiveFolder);

/// Whether anything lies below @p folder that a transfer to the player would take: a file with a dot in its name.
bool holdsSystemFiles(const QString &folder);
