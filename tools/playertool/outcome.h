#pragma once

#include "manifest.h"
#include "snapshot.h"

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

/// A player's disk before and after: where each file went, told by its content, and what the folders counted.
class Outcome
{
public:
    Outcome(const Snapshot &diskBefore, const Snapshot &diskAfter, const Manifest &truth);

    const Snapshot before;
    const Snapshot after;
    const Manifest manifest;

    /// Where the file that lay at @p path before lies now; empty when its content is gone, or lies in several places
    /// none of which can be told to be this file's.
    QString whereNow(const QString &path) const;
    /// The path before of what lies at @p path now; empty like whereNow().
    QString whereBefore(const QString &path) const;
    /// How many visible files of this kind held the content of this file before, and hold it now.
    int copiesBefore(const QString &pathBefore) const;
    int copiesNow(const QString &pathBefore) const;
    /// Whether such content lay anywhere before.
    bool wasThere(const QString &pathAfter) const;

    /// Whether the song could not be read before: by the manifest, else by its first bytes.
    bool wasBroken(const QString &pathBefore) const;
    /// Folders with more songs and companions than a folder may hold, when the root's files lie in My Songs.
    const QSet<QString> &bigFolders() const { return m_bigFolders; }
    /// The folder whose files moved: that of the path, or My Songs for a file in the root.
    static QString folderAfterCleanUp(const QString &pathBefore);
    /// Whether the file lay directly in a big folder, hidden parents included.
    bool layInBigFolder(const QString &pathBefore) const;
    /// Songs and companions that count in their folders, by folder.
    static QHash<QString, int> countedFiles(const Snapshot &snapshot, bool afterCleanUp);

private:
    using Index = QHash<QByteArray, QStringList>;
    static QByteArray identity(const Snapshot &snapshot, const QString &path);
    static Index indexOf(const Snapshot &snapshot);
    static QString matching(const QString &path, const QStringList &candidates);

    Index m_beforeByContent;
    Index m_afterByContent;
    QSet<QString> m_bigFolders;
};

/// More counted files than this make a folder big.
constexpr int kMostFilesInAFolder = 1000;
/// A group of a song and three companions may be added to a sub-folder of 899 files.
constexpr int kMostFilesInASubFolder = 903;
