#pragma once

#include "manifest.h"

#include "songfiles/songinfo.h"

#include <QByteArray>
#include <QVector>

/// The kinds of songs that an archive holds.
enum class Recipe
{
    Midi0,
    Midi1,
    MidiStandardMarkers, ///< markers as standard events, without bars
    Karaoke,             ///< lyric texts; the title stands in an "@T" text only
    Mf3,
    Mf4,
    Mf5,
    Mp3Tag22, ///< its three-letter frames are unknown to the reader: a song without texts
    Mp3Tag23Latin1,
    Mp3Tag23Utf16,
    Mp3Tag24Latin1,
    Mp3Tag24Utf16,
    Mp3Tag24Utf16BigEndian, ///< read byte-swapped
    Mp3Tag24Utf8,
    Mp3EmptyTag,
    Mp3NoTag,
};

/// A song's bytes and what a correct reader makes of them.
struct MadeSong
{
    QByteArray bytes;
    ExpectedSong expected;
};

/// @p stem is the file's name without suffix, under which a song without a title is filed; @p serial makes the bytes
/// unlike those of every other song; @p mp3Frames is the playing time of an MP3 in frames.
MadeSong makeSong(Recipe recipe, const SongInfo &info, const QString &stem, int serial, int mp3Frames);
/// Suffix that songs of this kind usually bear.
QString usualSuffix(Recipe recipe);
bool isMp3(Recipe recipe);
/// Whether the kind can hold a title of any alphabet.
bool holdsAnyAlphabet(Recipe recipe);

/// A file that bears a song's suffix and is none.
struct BrokenSong
{
    QString suffix;
    QString what; ///< what is wrong, fit for a file name
    QByteArray bytes;
};

/// One for each way in which a song can be unreadable: empty, cut, of no format, with impossible sizes.
QVector<BrokenSong> brokenSongs();
