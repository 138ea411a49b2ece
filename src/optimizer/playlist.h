#pragma once

#include "device/player.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

// A playlist is a text file of the player. Each line names a song in device form, followed by two numbers that are
// carried through unread, each a caret and one to five digits: \sdmemory\My Songs\song.mid^12^0

/// The PC path of the song that a playlist line names.
/// @p rawLine is the line as it stands in the file, line end included; it is read as UTF-8 up to its first NUL byte.
/// A line without the two numbers is returned whole, line end included: it equals no path of a file.
QString playlistKey(const QByteArray &rawLine, const Player &player);

/// The keys (see playlistKey) of all lines of a playlist, in file order, a song named twice twice.
/// A playlist that cannot be opened has none.
QStringList playlistKeys(const QString &playlistPath, const Player &player);

/// Replaces in one playlist every mention of @p oldDevicePath, whatever its case, by @p newDevicePath (both in device
/// form; nothing is replaced while the old one is empty). Line ends stay as they are; the file is written as UTF-8
/// without a byte-order mark. The new playlist is written beside the former one ("<playlist>.new") and takes its place
/// when it is whole; a file "<playlist>.old" is lost then. A playlist that is missing becomes an empty one. Returns false
/// for one that cannot be read or written whole: it is as it was.
bool rewritePlaylistFile(const QString &playlistPath, const QString &oldDevicePath, const QString &newDevicePath);

/// Makes good what was left beside the playlists in @p folder when something was cut off while one was rewritten: a file
/// "<playlist>.old" that is longer than its playlist, or has none, becomes the playlist; so does "<playlist>.new" where
/// there is no playlist, and goes where there is one. Folders of such names are left alone.
void restorePlaylists(const QString &folder);
