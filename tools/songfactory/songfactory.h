#pragma once

#include "songfiles/songinfo.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

/// Makes small, valid songs as bytes. Every byte is laid out here, apart from the classes that read songs, so that a
/// mistake in a reader cannot hide behind the same mistake in the song it reads; only the compression is called.
///
/// From a SongInfo these fields are taken: title, artist, genre, author, length, userBpm, key, isQArte, markers, and
/// for MFx songs MfxLongName and MfxFlags. An empty text and a number of 0 or less leave their event, frame or header
/// field out (empty). MIDI and MFx texts are written as Latin-1, cut to what their one-byte length or field can hold.
namespace SongFactory {

/// How the markers of a MIDI song are written.
enum class Markers
{
    WithBars, ///< as the maker's own events, FF 4B tag 6, with their bar numbers
    Standard, ///< as standard marker events, FF 06, without bar numbers
};

/// A standard MIDI file: song events, tempo, and @p bars bars of notes in 4/4, in one track (@p headerFormat 0) or with
/// the notes in a second track (@p headerFormat 1).
QByteArray midi(const SongInfo &info, int headerFormat = 0, Markers markers = Markers::WithBars, int bars = 4);

/// A standard MIDI file of format 1 with a first track without song events, then a track "Words" that holds
/// @p atTexts (such as "@TTitle", "@LENGL") at its start and @p lyrics one a beat, all as text events FF 01 in Latin-1;
/// then a track of notes.
QByteArray karaoke(const QStringList &atTexts, const QStringList &lyrics);

/// The container of @p version 3, 4 or 5: its header block, then midi(info) compressed. Header bytes without a known
/// meaning hold a pattern, so that a lost or moved one shows. The first track of version 4 gets its 3 extra bytes.
QByteArray mfx(int version, const SongInfo &info, int bars = 4);

/// The header block of an MFx song alone (512 or 1024 bytes), with the given two sizes in it.
QByteArray mfxHeader(int version, const SongInfo &info, quint32 fileSize, quint32 midiSize);

/// @p count MPEG-1 Layer III frames of digital silence: 128 kbit/s, 44.1 kHz, mono, 417 bytes and 26.12 ms each.
QByteArray silentMp3Frames(int count);

/// An ID3v2 tag of @p majorVersion 2, 3 or 4 as its standard wants it, with @p padding zero bytes at its end (counted
/// in its size). @p encodingByte says how texts are stored: 0 Latin-1, 1 UTF-16 with byte-order mark (little-endian),
/// 2 UTF-16 big-endian without mark, 3 UTF-8; the standard knows 2 and 3 in version 4 only. Length is stored in
/// milliseconds; isQArte as a copyright text.
QByteArray id3v2Tag(int majorVersion, const SongInfo &info, int encodingByte = 0, int padding = 0);

/// One text frame; @p id is the three- or four-character name that fits @p majorVersion.
QByteArray id3v2TextFrame(int majorVersion, const QByteArray &id, const QString &text, int encodingByte = 0);

/// A tag around @p frames, which may be any bytes.
QByteArray id3v2TagAround(int majorVersion, const QByteArray &frames);

/// A tag (none for @p tagVersion 0) followed by silent frames.
QByteArray mp3(int tagVersion, const SongInfo &info, int encodingByte = 0, int frames = 40);

} // namespace SongFactory
