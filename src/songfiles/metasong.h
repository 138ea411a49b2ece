#pragma once

#include "id3tag.h"
#include "importresult.h"
#include "mfxheader.h"
#include "rawmidifile.h"
#include "songinfo.h"

#include <QByteArray>
#include <QString>

class QFile;

/// The one way to the metadata of a song file, whatever its format: standard MIDI, MFx (the player's own) or MP3.
///
/// Made for one file, used and dropped: importFile, then any of getSongInfo, setSongInfo and addMarker, then
/// saveToFile. Only saveToFile touches the disk for writing. Every failure is a false result; those worth telling are
/// also debug messages. No message is meant for the user.
///
/// The program itself only reads (importFile, getSongInfo); changing, saving and dumpInfo are there for outsiders.
class MetaSong
{
public:
    /// Loads the song at @p path (the name's ending matters for MP3 alone, in any case). Returns true when it was
    /// recognised; otherwise false, and the format code stays what it was. Of an MP3 only the texts of its tag are
    /// read; the rest of the tag follows when it is changed or saved, and must still be there then.
    bool importFile(const QString &path);
    /// How the last importFile() ended; NotRead before the first.
    ImportResult importResult() const { return m_result; }

    /// Clears @p info and fills it from the loaded song. The file name is left empty: the caller knows it.
    void getSongInfo(SongInfo &info) const;

    /// Puts the fields of @p info into the loaded song, in memory. With @p manual the user's values replace those of
    /// the song; without, only what the song lacks is filled in.
    void setSongInfo(const SongInfo &info, bool manual);

    /// Adds a marker at @p bar to the MIDI stream in memory. Returns the number of bytes inserted, 0 when there is no
    /// MIDI stream.
    qint32 addMarker(const QString &text, quint16 bar);

    /// Writes the loaded song to @p path in its own format and returns whether that went well. For an MP3, @p path is
    /// the song the audio is taken from, and it is replaced as a whole by way of a temporary file beside it (ending
    /// ".tmp"). MIDI and MFx songs are written over the file.
    bool saveToFile(const QString &path);

    /// Writes @p info to the log, one field a line.
    void dumpInfo(const SongInfo &info) const;

    /// "MIDI", "MF3", "MF4", "MF5", "MP3", or "UNKNOWN" for any other @p code of SongFormat.
    static QString formatName(int code);

    /// The code of SongFormat of the loaded song.
    int formatCode() const { return m_format; }

private:
    bool isMidi() const { return m_format == Midi0Format || m_format == Midi1Format; }
    bool isMfx() const { return m_format >= Mf3Format && m_format <= Mf5Format; }

    struct OpenSong;

    // Reading: metasong.cpp
    bool importOpen(QFile &file);
    bool importMfx(OpenSong &song, int version);
    bool importMidi(OpenSong &song);
    bool importMp3(OpenSong &song);
    QByteArray firstBytes(OpenSong &song, qint64 most);
    bool completeTag();
    void getMidiInfo(SongInfo &info) const;
    void getMfxInfo(SongInfo &info) const;
    void getMp3Info(SongInfo &info) const;

    // Changing: metasongset.cpp
    void setMp3Info(const SongInfo &info, bool manual);
    void fillMp3Info(const SongInfo &info);
    void setMidiStreamInfo(const SongInfo &info, bool manual);
    void setMidiTexts(const SongInfo &info, bool manual);
    void setMfxFields(const SongInfo &info, bool manual);

    // Writing: metasongsave.cpp
    bool saveMp3(const QString &path);
    bool writeMp3(QFile &song, QFile &temporary) const;
    bool isSavable() const;
    QByteArray storedStream() const;
    void writeMfx(QFile &file);

    QString m_path; ///< of the song that was imported last
    int m_format = UnknownFormat;
    ImportResult m_result = ImportResult::NotRead;
    Id3Tag m_tag;
    MfxHeader m_header;
    RawMidiFile m_midi;
};

/// Where the version 4 of MFx has 3 bytes more than a MIDI file: right behind the head of the first track in @p stream.
/// -1 when there is no track.
int mf4ExtraBytesOffset(const QByteArray &stream);
/// How many bytes these are.
constexpr int kMf4ExtraBytes = 3;
