#pragma once

#include <QString>
#include <QStringList>

#include <array>

/// What a song file is by the suffix of its name.
enum class SongKind
{
    Mp3,
    Midi,
    Mfx
};

/// A suffix of song files, lower case, and the kind of song that bears it.
struct SongSuffix
{
    const char *suffix; ///< without a dot
    SongKind kind;      ///< of songs that bear it
};

/// All suffixes of songs. The place in the table is the song's format index.
inline constexpr std::array<SongSuffix, 9> kSongSuffixes = {{
    {"mp3", SongKind::Mp3},
    {"midi", SongKind::Midi},
    {"mid", SongKind::Midi},
    {"mf3", SongKind::Mfx},
    {"mf4", SongKind::Mfx},
    {"mf5", SongKind::Mfx},
    {"kar", SongKind::Midi},
    {"xmp3", SongKind::Mp3},
    {"xmid", SongKind::Midi},
}};

/// The suffixes alone, in the table's order.
QStringList songSuffixList();
/// "*.mp3" and so on, in the table's order.
QStringList songNameFilterList();
