#pragma once

/// How the reading of a song file ended.
enum class ImportResult
{
    Imported,
    NotASong, ///< all of it that matters was read, and it is no song
    NotRead,  ///< the file could not be opened or read: what it holds is not known
    TooLarge  ///< larger than what is ever taken into memory; it may be a sound song
};
