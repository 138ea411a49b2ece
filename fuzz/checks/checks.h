#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/// What has to hold whatever bytes are read, a function a parser: the libFuzzer entries call them with what they make
/// up, a test calls them with what was found. A check never fails on bytes that a parser refuses, however they look.
///
/// Where bytes are changed, what is done to them follows from the bytes themselves: a finding is a plain file, and
/// means the same wherever it is tried again.
namespace FuzzChecks {

/// What is wrong, in words; empty when all is right.
using Verdict = QString;

/// Any bytes, of a stated size cut to what is quick, expand to that size; a short text comes back when compressed
/// again.
Verdict expand(const QByteArray &bytes);
/// Any bytes come back after compressing and expanding.
Verdict compress(const QByteArray &bytes);
/// A MIDI song keeps its order through every edit, each edit reads back, and the bytes are the same song when reloaded.
Verdict rawMidiFile(const QByteArray &bytes);
/// A header block reads back what is written into it, and keeps its size and the rest.
Verdict mfxHeader(const QByteArray &bytes);
/// The parts of an MFx song, unpacked, changed, packed and unpacked again in memory as a whole song is.
Verdict mfxSong(const QByteArray &bytes);
/// A tag reads back what is written into it, however it looks, and is the same tag when reloaded.
Verdict id3Tag(const QByteArray &bytes);
/// A song file of any kind is read, changed, saved, and the same song when read again; what cannot be saved stays.
Verdict metaSong(const QByteArray &bytes);
/// The quick readers of a title find the title of the whole song.
Verdict titles(const QByteArray &bytes);
/// A playlist names the same songs line by line; rewriting it changes the one path and nothing else.
Verdict playlist(const QByteArray &bytes);
/// Every path of a database export is one on the player.
Verdict databaseExport(const QByteArray &bytes);
/// The name of an archive entry stays below the folder it is unpacked into.
Verdict entryPath(const QByteArray &bytes);

/// A check with the name of its entry, its seeds and its findings.
struct Check
{
    const char *name;
    Verdict (*run)(const QByteArray &bytes);
};

/// All of them.
QList<Check> all();

} // namespace FuzzChecks
