#pragma once

#include <QString>
#include <optional>

// The player cannot open files whose path or name is too long, and knows the suffix ".mid" but not ".midi".

/// @p path without its last character when it ends in ".midi", whatever the case (Song.MIDI becomes Song.MID),
/// else @p path as it is.
QString withoutMidiSuffixEnd(const QString &path);

/// Whether the player refuses a path of @p pathBytes bytes whose file name has @p nameBytes bytes.
bool isPathTooLong(int pathBytes, int nameBytes);
/// The same for the full PC path of a file, measured in the local 8-bit encoding.
bool isPathTooLong(const QString &path);

/// How many characters an over-long path of @p pathBytes bytes must lose in its file name of @p nameBytes bytes. At
/// least 1 for every path that is too long; may be more than the name has.
int charactersToCut(int pathBytes, int nameBytes);

/// The path that the song at the over-long full path @p path gets: the name is shortened before its last dot and
/// completed by the first of "(0)", "(1)", … that is free on the disk. Empty when the folders alone are so long that
/// the name cannot make up for them; the song then keeps its path.
std::optional<QString> shortenedPath(const QString &path);

/// @p path without its last dot and suffix: with ".cdg", ".dat" or ".bak" behind it, the path of a song's companion.
QString pathWithoutSuffix(const QString &path);
