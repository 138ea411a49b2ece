#pragma once

#include <QFileInfo>
#include <QString>

/// The title of a song for ordering songs into folders, read at little cost: the file is opened once, and at most its
/// first 512 bytes (MFx), its first 4096 bytes (MIDI) or its tag without the pictures (MP3) are read.
///
/// @p formatIndex is the place of the file's lower-case suffix in kSongSuffixes. In a MIDI file a karaoke title (text
/// event beginning with "@T") wins over a track name, since karaoke files call their first track after the program that
/// made it; of each kind the first counts.
///
/// Returns the file's complete base name when the file cannot be opened, holds no title or an empty one (white space
/// alone counts as empty), or the index is not one of the list. Never fails, whatever the file holds.
QString readSongTitle(int formatIndex, const QFileInfo &file);
