#include "splitroom.h"

namespace {

// What a name takes in a folder of the player's disk: entries of 32 bytes, two for the file, the others for its name, 13
// characters each. exFAT holds 15 in one; FAT, which has 13, needs one entry less for the file.
constexpr qint64 kEntryBytes = 32;
constexpr qint64 kFileEntries = 2;
constexpr qint64 kNameCharacters = 13;
/// A number in a name that is taken.
constexpr int kNumberCharacters = 8;

} // namespace

void SplitRoom::addFile(const QString &name)
{
    const qint64 nameEntries = (name.size() + kNumberCharacters + kNameCharacters - 1) / kNameCharacters;
    m_nameBytes += kEntryBytes * (kFileEntries + nameEntries);
    ++m_files;
}

void SplitRoom::addSong(const QString &name)
{
    addFile(name);
    ++m_songs;
}

int SplitRoom::mostFolders(int initials, int mostFiles) const
{
    return qMin(m_songs, initials) + m_files / qMax(1, mostFiles);
}

qint64 SplitRoom::bytesNeeded(int folders, qint64 clusterBytes) const
{
    constexpr qint64 kOwnAndSpare = 2;
    if (clusterBytes <= 0)
        return m_nameBytes;
    // Each sub-folder's last cluster may be full but for a name: that one is its own, counted as the folder's.
    const qint64 names = (m_nameBytes + clusterBytes - 1) / clusterBytes;
    return (folders + names + kOwnAndSpare) * clusterBytes;
}
