#pragma once

#include <QList>
#include <QString>

/// A marker of a song: the bar it stands at, and its text.
struct SongMarker
{
    quint16 bar = 0; ///< 0 for markers that come without a bar number
    QString text;    ///< as it is shown
};

/// Whether bar and text are the same.
inline bool operator==(const SongMarker &a, const SongMarker &b)
{
    return a.bar == b.bar && a.text == b.text;
}
/// Whether bar or text differs.
inline bool operator!=(const SongMarker &a, const SongMarker &b)
{
    return !(a == b);
}

/// What the program knows of a song, whatever its format. A plain value, copied freely.
struct SongInfo
{
    QString title;             ///< of the song
    QString artist;            ///< who performs it
    QString genre;             ///< as the song calls it
    QString author;            ///< composer or author
    qint32 length = 0;         ///< seconds; a negative value means: do not write
    qint32 userBpm = 0;        ///< beats per minute; a negative value means: do not write
    QString key;               ///< name from the table of keys, e.g. "C", "A-", "Bb"
    QString filename;          ///< path of the song file; filled by the caller
    bool isQArte = false;      ///< the song carries the maker's mark
    QList<SongMarker> markers; ///< in file order
    QString format;            ///< "MIDI", "MF3", "MF4", "MF5", "MP3" or "UNKNOWN"
    QString MfxLongName;       ///< long name of the MFx header; MFx songs only
    quint8 MfxFlags = 0;       ///< flag byte of the MFx header; MFx songs only

    /// Sets every field to the value a new record has.
    void clear();
};

/// What kind of song a MetaSong holds.
enum SongFormat : int
{
    UnknownFormat = 0, ///< nothing loaded, or not recognised
    Midi0Format = 1,   ///< standard MIDI file whose header format word is 0
    Midi1Format = 2,   ///< standard MIDI file whose header format word is not 0
    Mf3Format = 3,
    Mf4Format = 4,
    Mf5Format = 5,
    Mp3Format = 6,
};
