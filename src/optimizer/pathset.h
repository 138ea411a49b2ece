#pragma once

#include <QSet>
#include <QString>

/// A set of paths that differ in more than case, as on the player's disk. Its answers are exactly those of
/// QStringList::contains(path, Qt::CaseInsensitive) on the paths put in, at the cost of one look-up. The paths are
/// shared with who put them in, not copied: an archive has hundreds of thousands.
class PathSet
{
public:
    /// Puts @p path in; one that equals it but for case is in already.
    void insert(const QString &path) { m_paths.insert({path}); }
    /// Whether a path that equals @p path, or differs from it in case alone, has been put in.
    bool contains(const QString &path) const { return m_paths.contains({path}); }
    /// The number of different paths.
    int size() const { return m_paths.size(); }
    /// Takes up to @p most paths out, whichever. Returns whether any are left.
    bool drop(int most);
    /// Makes room for @p paths paths.
    void reserve(int paths) { m_paths.reserve(paths); }

private:
    struct Path
    {
        QString text;
    };
    friend bool operator==(const Path &a, const Path &b);
    friend uint qHash(const Path &path, uint seed);

    QSet<Path> m_paths;
};
