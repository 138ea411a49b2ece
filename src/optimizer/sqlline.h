#pragma once

#include "device/player.h"
#include "songfiles/importresult.h"
#include "songfiles/songinfo.h"

#include <QString>

// Lines of the import file that the player executes at its next start. Paths are PC paths on @p player and written in
// device form; each line ends in a single line feed.

/// @p text as it stands between the single quotes of an SQL value: line ends become blanks, then the text is cut to
/// @p limit characters, then single quotes are doubled. May therefore be longer than @p limit; never ends in half a
/// surrogate pair.
QString sqlEscaped(QString text, int limit);

/// The statement that adds the song at @p path, described by @p info, to the player's database. Empty titles become
/// the file name, empty artists, genres and authors "<unknown>".
QString insertLine(const SongInfo &info, const QString &path, const Player &player);

/// The statement that takes the song at @p path, which need not exist, out of the player's database.
QString deleteLine(const QString &path, const Player &player);

/// What the import file says of a song file.
struct SongLine
{
    QString text;        ///< its insertLine; empty when it could not be read as a song
    ImportResult result; ///< of the reading
};

/// Reads the song at @p path.
SongLine insertLineForSong(const QString &path, const Player &player);
