#pragma once

#include "bytes.h"
#include "songfactory/songfactory.h"
#include "songfiles/lzhuff.h"
#include "songfiles/metasong.h"
#include "support/files.h"

// What the tests of the song classes share.

/// A record in which every field has a value of its own that all formats can hold.
inline SongInfo fullInfo() {
    const QList<SongMarker> markers{{1, "Intro"_s}, {300, "Ritornello"_s}};
    return {"Volare"_s, "Domenico"_s, "Canzone"_s, "Modugno"_s,    215, 128, "Bb"_s, QString(),
            true,       markers,      QString(),   "VOLARE.MID"_s, 0x20};
}

/// Another one, without what only MFx songs have.
inline SongInfo otherInfo() {
    const QList<SongMarker> markers{{7, "Coro"_s}};
    return {"Azzurro"_s, "Adriano"_s, "Pop"_s, "Paolo"_s, 90,        77, "F#-"_s,
            QString(),   true,        markers, QString(), QString(), 0};
}

/// The fields that every format holds, and the markers.
inline QStringList fieldsOf(const SongInfo &info) {
    QStringList lines{info.title, info.artist, info.genre, info.author, info.key};
    lines += "%1 s, %2 bpm"_s.arg(info.length).arg(info.userBpm);
    for (const SongMarker &marker : info.markers)
        lines += "%1: %2"_s.arg(marker.bar).arg(marker.text);
    return lines;
}

/// All that a record holds.
inline QStringList linesOf(const SongInfo &info) {
    const QString maker = info.isQArte ? "the maker's"_s : "anyone's"_s;
    return fieldsOf(info) +
           QStringList({maker, info.format, info.filename, info.MfxLongName, QString::number(info.MfxFlags)});
}

inline QByteArray compressed(const QByteArray &bytes) {
    QByteArray result;
    LzHuff().compress(bytes, result);
    return result;
}

/// The MIDI stream in the file of an MFx song.
inline QByteArray streamOf(const QByteArray &file) {
    QByteArray stream;
    if (!LzHuff().expand(file.mid(MfxHeader::sizeOfVersion(MfxHeader::versionOf(file))), stream))
        failTest("the stream cannot be expanded"_s);
    return stream;
}

/// Whether a song takes a file in.
inline bool isTaken(MetaSong &song, const QString &name, const QByteArray &bytes) {
    PcFolder folder;
    return song.importFile(folder.addFile(name, bytes));
}

/// A song in a folder of its own, loaded from there; the test fails when it is refused.
class SongOnDisk
{
public:
    SongOnDisk(const QString &name, const QByteArray &bytes) : path(folder.addFile(name, bytes)) {
        if (!song.importFile(path))
            failTest(path + " should be taken"_s);
    }
    SongInfo info() const {
        SongInfo result = fullInfo();
        song.getSongInfo(result);
        return result;
    }
    bool save() { return song.saveToFile(path); }
    QByteArray content() const { return contentOf(path); }

    PcFolder folder;
    const QString path;
    MetaSong song;
};
