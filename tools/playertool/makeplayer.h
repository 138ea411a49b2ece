#pragma once

#include "manifest.h"

#include <QString>

/// How the simulated player's disk is to be made.
struct MakeOptions
{
    int songs = 1700; ///< song files altogether, from kFewestSongs to kMostSongs
    quint32 seed = 1; ///< the same seed and number of songs give the same disk, byte by byte
};

constexpr int kFewestSongs = 1500;
constexpr int kMostSongs = 200000;

/// What was made.
struct MakeResult
{
    Manifest manifest;
    int files = 0;
    QString error; ///< empty on success
};

/// Whether the folder may be filled: it is there, and holds nothing but a label and what file systems put there.
bool mayBecomeAPlayer(const QString &root);

/// Fills @p root, an existing empty folder or the root of an empty volume, with a realistic player's disk in need of
/// optimisation. Nothing is written when the folder may not be filled or the number of songs is out of range.
MakeResult makePlayer(const QString &root, const MakeOptions &options);
