#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// The songs that the benchmarks read, on a disk in memory where there is one: real MIDI files, MP3 songs with a
/// picture of 60 kB, and the MIDI files as songs of the player's own format.
class BenchSongs
{
public:
    /// Makes them all. Ends the program with a line that says why where the MIDI files are not installed.
    BenchSongs();

    QStringList midi;
    QStringList mp3;
    QStringList mfx;
    /// MIDI data in pieces of 50 kB.
    QList<QByteArray> streams;

private:
    QString add(const QString &name, const QByteArray &content) const;

    QTemporaryDir m_folder;
};
