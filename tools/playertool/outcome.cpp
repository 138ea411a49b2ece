#include "outcome.h"

#include "playerpaths.h"

using PlayerPaths::Kind;

Outcome::Outcome(const Snapshot &diskBefore, const Snapshot &diskAfter, const Manifest &truth)
    : before(diskBefore),
      after(diskAfter),
      manifest(truth),
      m_beforeByContent(indexOf(before)),
      m_afterByContent(indexOf(after))
{
    const QHash<QString, int> counts = countedFiles(before, true);
    for (auto it = counts.cbegin(); it != counts.cend(); ++it) {
        if (it.value() > kMostFilesInAFolder)
            m_bigFolders.insert(it.key());
    }
}

// The kind belongs to it: an empty song is not the same thing as an empty text.
QByteArray Outcome::identity(const Snapshot &snapshot, const QString &path)
{
    return snapshot.files.value(path).sha1 + char('a' + int(PlayerPaths::kindOf(path)));
}

Outcome::Index Outcome::indexOf(const Snapshot &snapshot)
{
    Index index;
    for (auto it = snapshot.files.cbegin(); it != snapshot.files.cend(); ++it) {
        if (!PlayerPaths::isHidden(it.key()))
            index[identity(snapshot, it.key())].append(it.key());
    }
    return index;
}

QString Outcome::matching(const QString &path, const QStringList &candidates)
{
    if (candidates.contains(path))
        return path;
    if (candidates.size() == 1)
        return candidates.first();
    QStringList sameName;
    for (const QString &candidate : candidates) {
        if (PlayerPaths::nameOf(candidate) == PlayerPaths::nameOf(path))
            sameName.append(candidate);
    }
    return sameName.size() == 1 ? sameName.first() : QString();
}

QString Outcome::whereNow(const QString &path) const
{
    return matching(path, m_afterByContent.value(identity(before, path)));
}

QString Outcome::whereBefore(const QString &path) const
{
    return matching(path, m_beforeByContent.value(identity(after, path)));
}

int Outcome::copiesBefore(const QString &pathBefore) const
{
    return m_beforeByContent.value(identity(before, pathBefore)).size();
}

int Outcome::copiesNow(const QString &pathBefore) const
{
    return m_afterByContent.value(identity(before, pathBefore)).size();
}

bool Outcome::wasThere(const QString &pathAfter) const
{
    return m_beforeByContent.contains(identity(after, pathAfter));
}

bool Outcome::wasBroken(const QString &pathBefore) const
{
    const auto known = manifest.songs.constFind(pathBefore);
    return known != manifest.songs.cend() ? known->broken : before.files.value(pathBefore).looksBroken;
}

QString Outcome::folderAfterCleanUp(const QString &pathBefore)
{
    const QString folder = PlayerPaths::folderOf(pathBefore);
    return folder.isEmpty() ? QStringLiteral("My Songs") : folder;
}

bool Outcome::layInBigFolder(const QString &pathBefore) const
{
    QString folder = folderAfterCleanUp(pathBefore);
    while (PlayerPaths::isHidden(folder))
        folder = PlayerPaths::folderOf(folder);
    return m_bigFolders.contains(folder);
}

QHash<QString, int> Outcome::countedFiles(const Snapshot &snapshot, bool afterCleanUp)
{
    static const QStringList kNoSongsCount = {QStringLiteral("Bridges"), QStringLiteral("Effects")};
    QHash<QString, int> counts;
    for (auto it = snapshot.files.cbegin(); it != snapshot.files.cend(); ++it) {
        const QString &path = it.key();
        if (PlayerPaths::isHidden(path) || PlayerPaths::isPlayersOwn(path))
            continue;
        const QString folder = afterCleanUp ? folderAfterCleanUp(path) : PlayerPaths::folderOf(path);
        const Kind kind = PlayerPaths::kindOf(path);
        if (kind == Kind::Companion || (kind == Kind::Song && !PlayerPaths::beginsWithAny(folder, kNoSongsCount)))
            ++counts[folder];
    }
    return counts;
}
