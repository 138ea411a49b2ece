#pragma once

#include <QString>
#include <QStringList>

/// What a drop was to bring and what it has brought. A file that the user kept from being overwritten, or that a STOP
/// left out, is neither copied nor missing.
class DropTally
{
public:
    /// @p counted files are to be copied.
    explicit DropTally(int counted = 0) : m_counted(counted) {}

    /// The file @p source has arrived.
    void addCopied(const QString &source);
    /// The file @p source could not be copied.
    void addMissing(const QString &source);
    /// The folder @p source could not be made or read: named, but it counts for no file.
    void addMissingFolder(const QString &source);
    /// What a file was to replace could neither be replaced nor put back: it lies at @p path on the PC.
    void addFormerKept(const QString &path);
    /// The file that arrived last may not be whole.
    void doubtTheLast();

    /// Whether nothing is missing.
    bool isWhole() const { return m_firstMissing.isEmpty(); }
    int copiedFiles() const { return m_copied; } ///< how many have arrived
    /// As many as were counted; more where links, which are not counted, brought more files.
    int wantedFiles() const;
    /// The first of what is missing, as the PC writes paths.
    const QStringList &firstMissing() const { return m_firstMissing; }
    /// Where files of the player lie on the PC that could not be put back, as the PC writes paths.
    const QStringList &formerKept() const { return m_formerKept; }

private:
    int m_counted;
    int m_copied = 0;
    int m_missing = 0;
    QString m_lastCopied;
    QStringList m_firstMissing;
    QStringList m_formerKept;
};
