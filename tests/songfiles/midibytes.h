#pragma once

#include "bytes.h"
#include "songfiles/rawmidifile.h"

/// Small MIDI files, put together from their bytes.
namespace MidiBytes {

const int kDataStart = 22; ///< of the first track in the files made here

/// A meta event with delta time 0 and a one-byte length.
inline QByteArray meta(int type, const QByteArray &content) {
    return bigEndian(0x00FF00U | unsigned(type), 3) + bigEndian(unsigned(content.size()), 1) + content;
}

/// The maker's own event with tag @p tag.
inline QByteArray own(int tag, const QByteArray &payload) {
    return meta(0x4B, bigEndian(unsigned(tag), 1) + payload);
}

inline const QByteArray kNote = "0090406460804040"_hex;
inline const QByteArray kEndOfTrack = "00FF2F00"_hex;

inline QByteArray chunk(const QByteArray &events) {
    return "MTrk" + bigEndian(unsigned(events.size())) + events;
}

inline QByteArray header(int format, int tracks) {
    return "MThd" + bigEndian(6) + bigEndian(unsigned(format), 2) + bigEndian(unsigned(tracks), 2) + bigEndian(96, 2);
}

/// A file of format 0 with one track.
inline QByteArray oneTrack(const QByteArray &events) {
    return header(0, 1) + chunk(events);
}

/// A whole file of format 0: @p events, then a note and the end of the track.
inline QByteArray song(const QByteArray &events) {
    return oneTrack(events + kNote + kEndOfTrack);
}

/// The file taken in; the test program ends when it is refused.
inline RawMidiFile loaded(const QByteArray &bytes) {
    RawMidiFile file;
    if (!file.load(bytes))
        qFatal("this file should be taken");
    return file;
}

inline QList<SongMarker> markersOf(const RawMidiFile &file, bool firstOnly = false) {
    QList<SongMarker> list{{99, "left over"_s}};
    file.markers(list, firstOnly);
    return list;
}

} // namespace MidiBytes
