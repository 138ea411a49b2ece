#pragma once

#include <QString>

/// How much room the splitting of a folder takes on the player: names are added up first, then asked for.
class SplitRoom
{
public:
    /// A file of this name that will lie in a sub-folder.
    void addFile(const QString &name);
    /// How many songs there are; their companions are files, too.
    int songs() const { return m_songs; }
    /// A song of this name.
    void addSong(const QString &name);

    /// The most sub-folders that there can be when the titles have @p initials different initials: one for each, one
    /// more each time that one is full, which happens once for every @p mostFiles files.
    int mostFolders(int initials, int mostFiles) const;
    /// The bytes that must be free on a volume with clusters of @p clusterBytes before the folder is set aside: a cluster
    /// for the folder itself and each of its @p folders sub-folders, what their names need, and a cluster to spare.
    qint64 bytesNeeded(int folders, qint64 clusterBytes) const;

private:
    int m_files = 0;
    int m_songs = 0;
    qint64 m_nameBytes = 0;
};
