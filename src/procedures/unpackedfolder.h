#pragma once

#include <QString>
#include <QStringList>

/// Where the content of an archive lies that was unpacked in @p archiveFolder (absolute, forward slashes): that folder
/// itself, or the one folder in it when the archive was packed with a folder around everything. A single folder with
/// one of the player's own names ("System", "CorvinUpdate", … in any case) is content, not such a wrapping.
QString unpackedFolder(const QString &archiveFolder);

/// Whether all three files without which the player does not start lie below @p folder, in any case.
bool holdsWholeSystem(const QString &folder);

/// Whether a program lies in @p folder itself that Windows would run in place of its own of that name ("attrib.com",
/// …): it looks into the folder in which a batch file is run before it looks anywhere else.
bool holdsRivalProgram(const QString &folder);

/// What a transfer to the player takes of @p folder, full paths, sorted with regard to case. Deliberate: files and
/// folders with a dot in their name, hidden ones too, and no others; a folder in the list can then not be copied as a
/// file.
QStringList systemEntries(const QString &folder);

/// Whether anything lies below @p folder that a transfer to the player would take: a file with a dot in its name.
bool holdsSystemFiles(const QString &folder);

/// Whether every file among @p entries, paths of the folder @p source, lies in the folder @p target too, in the same
/// place below it and with the same size. Folders do not count.
bool areWholeAt(const QString &target, const QStringList &entries, const QString &source);
