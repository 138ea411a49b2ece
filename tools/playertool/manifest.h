#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

/// What a correct import file says of one song, and under which titles a split folder may file it.
struct ExpectedSong
{
    bool broken = false; ///< no reader can make a song of it; the other fields mean nothing then
    QString title;       ///< as read from the song, before any cut; empty: the file's name is shown instead
    QString artist;
    QString genre;
    QString author;
    int bpm = 0;
    QString key;
    bool isMp3 = false;
    bool hasMarkers = false;
    QStringList filedUnder; ///< titles whose initial may name the sub-folder; several where the choice is free
};

/// The truth about every song of a made disk, by its path before anything was done to it. It is kept outside the
/// player. One JSON object a line in the file.
class Manifest
{
public:
    /// By path relative to the player's root.
    QMap<QString, ExpectedSong> songs;

    bool isEmpty() const { return songs.isEmpty(); }
    /// False when the file cannot be written whole.
    bool save(const QString &file) const;
    /// False, with @p manifest as far as it was read, when the file cannot be read or a line is no entry.
    static bool load(const QString &file, Manifest &manifest);
};
