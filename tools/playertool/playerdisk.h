#pragma once

#include "manifest.h"
#include "songrecipes.h"

#include <QRandomGenerator>
#include <QSet>
#include <QString>
#include <QStringList>

/// The disk while it is made: writes files below the root and keeps the truth about the songs. The first write that
/// fails is remembered, and nothing is written after it. Paths are relative to the root.
class PlayerDisk
{
public:
    /// @p root with or without a closing slash; @p mp3Frames is the playing time of every MP3 in frames of 26 ms.
    PlayerDisk(const QString &root, quint32 seed, int mp3Frames);

    void write(const QString &path, const QByteArray &bytes);
    void makeFolder(const QString &path);

    /// Adds a song with other random texts around @p title. An empty @p stem means: made of the title; an empty
    /// @p suffix: the usual one. Returns its path.
    QString addSong(const QString &folder, Recipe recipe, const QString &title, const QString &stem = QString(),
                    const QString &suffix = QString());
    /// A song of a random kind that can hold the title, with a rare suffix now and then.
    QString addRandomSong(const QString &folder, const QString &title);
    /// Writes a companion of the song for each suffix, of unmistakable content.
    void addCompanions(const QString &song, const QStringList &suffixes);
    /// With the given chance in a hundred one to three companions. Returns how many.
    int addSomeCompanions(const QString &song, int chance);
    /// Writes a file that is not readable as a song.
    void addBrokenSong(const QString &path, const QByteArray &bytes);
    /// Writes a file of a few unmistakable bytes behind @p beginning.
    void addOther(const QString &path, const QByteArray &beginning = QByteArray());

    QRandomGenerator &random() { return m_random; }
    const Manifest &manifest() const { return m_manifest; }
    int fileCount() const { return m_fileCount; }
    /// Empty while every write succeeded, else the path of the file that could not be written.
    QString failedAt() const { return m_failedAt; }

private:
    SongInfo randomInfo(const QString &title);
    Recipe randomRecipe(const QString &title);
    QString rareSuffix(Recipe recipe);

    QString m_root;
    QRandomGenerator m_random;
    Manifest m_manifest;
    QSet<QString> m_folders;
    QString m_failedAt;
    int m_mp3Frames;
    int m_serial = 0;
    int m_fileCount = 0;
};
