#pragma once

#include "songfiles/rawmidifile.h"

#include <QByteArray>
#include <QList>
#include <QString>

/// Small MIDI files, put together from their bytes.
namespace MidiBytes {

const int kDataStart = 22;    ///< of the first track in the files made here
const int kLengthOffset = 18; ///< of the first track

inline QByteArray bigEndian(quint32 value, int bytes)
{
    QByteArray result;
    for (int i = bytes - 1; i >= 0; --i)
        result.append(static_cast<char>(value >> (8 * i)));
    return result;
}

/// Bytes given in hexadecimal digits.
inline QByteArray raw(const char *hex)
{
    return QByteArray::fromHex(hex);
}

/// A meta event with delta time 0 and a one-byte length.
inline QByteArray meta(int type, const QByteArray &content)
{
    return bigEndian(0x00FF00U | unsigned(type), 3) + bigEndian(unsigned(content.size()), 1) + content;
}

/// The maker's own event with tag @p tag.
inline QByteArray own(int tag, const QByteArray &payload)
{
    return meta(0x4B, bigEndian(unsigned(tag), 1) + payload);
}

/// One short note.
inline QByteArray notes()
{
    return raw("0090406460804040");
}

inline QByteArray endOfTrack()
{
    return raw("00FF2F00");
}

inline QByteArray chunk(const QByteArray &events)
{
    return "MTrk" + bigEndian(unsigned(events.size()), 4) + events;
}

inline QByteArray header(int format, int tracks)
{
    return "MThd" + bigEndian(6, 4) + bigEndian(unsigned(format), 2) + bigEndian(unsigned(tracks), 2) +
           bigEndian(96, 2);
}

/// A whole file of format 0: @p events, then a note and the end of the track.
inline QByteArray song(const QByteArray &events)
{
    return header(0, 1) + chunk(events + notes() + endOfTrack());
}

/// The file taken in; the test program ends when it is refused.
inline RawMidiFile loaded(const QByteArray &bytes)
{
    RawMidiFile file;
    if (!file.load(bytes))
        qFatal("this file should be taken");
    return file;
}

/// The length of a track as its head states it.
inline quint32 statedLength(const QByteArray &bytes, int offset = kLengthOffset)
{
    quint32 value = 0;
    for (const char byte : bytes.mid(offset, 4))
        value = value << 8 | quint8(byte);
    return value;
}

/// The file with another stated length of its first track.
inline QByteArray withLength(QByteArray bytes, quint32 length)
{
    return bytes.replace(kLengthOffset, 4, bigEndian(length, 4));
}

inline SongMarker marker(quint16 bar, const QString &text)
{
    SongMarker result;
    result.bar = bar;
    result.text = text;
    return result;
}

inline QList<SongMarker> markersOf(const RawMidiFile &file, bool firstOnly = false)
{
    QList<SongMarker> list{marker(99, QStringLiteral("left over"))};
    file.markers(list, firstOnly);
    return list;
}

} // namespace MidiBytes
