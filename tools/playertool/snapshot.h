#pragma once

#include <QByteArray>
#include <QMap>
#include <QSet>
#include <QString>

/// All that lay on a player's disk at one moment: every file with size and content hash, hidden ones too, every folder,
/// and the text of the playlists. Paths are relative to the root, with forward slashes. One JSON object a line in the
/// file.
class Snapshot
{
public:
    struct File
    {
        qint64 size = 0;
        QByteArray sha1;          ///< 20 bytes; empty when the file could not be read
        bool looksBroken = false; ///< bears a song's suffix, but by its first bytes no reader can make a song of it
    };

    QMap<QString, File> files;
    QSet<QString> folders;
    QMap<QString, QByteArray> playlists; ///< content of every System/Playlist/*.pls

    /// Reads every file below @p root; links are left out.
    static Snapshot take(const QString &root);
    /// False when the file cannot be written whole.
    bool save(const QString &file) const;
    /// False when the file cannot be read or a line is no entry.
    static bool load(const QString &file, Snapshot &snapshot);
};

/// Whether a file with a song's suffix cannot be a song: too short, of no known format, or with sizes that contradict
/// the bytes there are. False says nothing; only bytes at the start are judged. @p head needs the first 1,000,000
/// bytes.
bool looksLikeABrokenSong(const QString &name, const QByteArray &head);
