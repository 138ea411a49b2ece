#pragma once

#include <QSet>
#include <QString>

/// A set of paths that differ in more than case, as on the player's disk. Its answers are exactly those of
/// QStringList::contains(path, Qt::CaseInsensitive) on the paths put in, at the cost of one look-up.
class PathSet
{
public:
    /// Puts @p path in; one that equals it but for case is in already.
    void insert(const QString &path);
    /// Whether a path that equals @p path, or differs from it in case alone, has been put in.
    bool contains(const QString &path) const;
    /// The number of different paths.
    int size() const { return m_folded.size(); }
    /// Makes room for @p paths paths.
    void reserve(int paths) { m_folded.reserve(paths); }

private:
    QSet<QString> m_folded;
};
