#pragma once

#include "songfiles/songinfo.h"

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QTest>

/// What the tests of the song classes share.
namespace SongTest {

/// Writes a file and returns whether all of it could be written.
inline bool write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

/// The content of a file; empty when it cannot be read.
inline QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A record in which every field has a value of its own that all formats can hold.
inline SongInfo fullInfo()
{
    SongInfo info;
    info.title = QStringLiteral("Volare");
    info.artist = QStringLiteral("Domenico");
    info.genre = QStringLiteral("Canzone");
    info.author = QStringLiteral("Modugno");
    info.length = 215;
    info.userBpm = 128;
    info.key = QStringLiteral("Bb");
    info.isQArte = true;
    info.markers = {{1, QStringLiteral("Intro")}, {300, QStringLiteral("Ritornello")}};
    info.MfxLongName = QStringLiteral("VOLARE.MID");
    info.MfxFlags = 0x20;
    return info;
}

/// Compares the fields that every format holds.
inline void compareFields(const SongInfo &info, const SongInfo &expected)
{
    QCOMPARE(info.title, expected.title);
    QCOMPARE(info.artist, expected.artist);
    QCOMPARE(info.genre, expected.genre);
    QCOMPARE(info.author, expected.author);
    QCOMPARE(info.length, expected.length);
    QCOMPARE(info.userBpm, expected.userBpm);
    QCOMPARE(info.key, expected.key);
}

} // namespace SongTest
