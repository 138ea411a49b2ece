#pragma once

#include "playertool/judge.h"
#include "playertool/manifest.h"
#include "playertool/snapshot.h"

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// A small player's disk that was optimised by hand: every path and every line of it is written down here, so that the
/// judge is measured against something that no program made. Paths are relative to the root.
class HandmadePlayer
{
public:
    enum class State
    {
        Optimised,
        Untouched,
    };
    /// Writes the disk as it was, notes it, and turns it into what an optimisation must leave, if that is wanted.
    explicit HandmadePlayer(State state = State::Optimised);

    Verdict judge() const { return ::judge(m_before, m_root, manifest); }
    QString root() const { return m_root; }
    const Snapshot &before() const { return m_before; }

    void write(const QString &path, const QByteArray &bytes) const;
    QByteArray read(const QString &path) const;
    void remove(const QString &path) const;
    void move(const QString &from, const QString &to) const;
    /// In the file, the first occurrence of @p from becomes @p to.
    void replace(const QString &path, const QByteArray &from, const QByteArray &to) const;

    /// Undoes all that was changed since the disk was made.
    void restore() const;

    Manifest manifest;

private:
    void writeBefore();
    void optimise();
    void splitBigFolder();
    void addSong(const QString &path, const QString &title, const QString &artist = QString());

    QTemporaryDir m_dir;
    QString m_root;
    Snapshot m_before;
    QByteArray m_inserts;
    Snapshot m_made;
    QHash<QString, QByteArray> m_contents;
    mutable QSet<QString> m_touched; ///< paths of files that were changed since the disk was made
};
