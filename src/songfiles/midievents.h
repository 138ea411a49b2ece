#pragma once

#include <QtGlobal>

/// Bytes of the MIDI events that RawMidiFile reads and writes.
namespace MidiEvents {

constexpr quint8 kDeltaZero = 0x00;
constexpr quint8 kMeta = 0xFF;

// Types of meta events.
constexpr quint8 kText = 0x01;
constexpr quint8 kCopyright = 0x02;
constexpr quint8 kTrackName = 0x03;
constexpr quint8 kMarker = 0x06;
constexpr quint8 kOwn = 0x4B;
constexpr quint8 kKeySignature = 0x59;

// Tags of the maker's own event.
constexpr quint8 kGenreTag = 1;
constexpr quint8 kArtistTag = 2;
constexpr quint8 kAuthorTag = 3;
constexpr quint8 kLengthTag = 4;
constexpr quint8 kBpmTag = 5;
constexpr quint8 kMarkerTag = 6;

// Places within an event, counted from its FF byte.
constexpr int kTypeOffset = 1;
constexpr int kLengthOffset = 2;
constexpr int kContentOffset = 3; ///< text of a standard event, tag of the maker's own
constexpr int kPayloadOffset = 4; ///< what follows the tag

constexpr int kTagBytes = 1;
constexpr int kBarBytes = 2;

} // namespace MidiEvents
