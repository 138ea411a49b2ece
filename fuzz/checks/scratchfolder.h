#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

/// A temporary folder of its own for files that are written thousands of times a second. scripts/fuzz puts it into
/// memory.
class ScratchFolder
{
public:
    ScratchFolder();

    QString path(const QString &name) const { return m_folder.filePath(name); }
    QString path() const { return m_folder.path(); }

    /// Ends the program when the file cannot be written or read: whatever is found then means nothing.
    static void write(const QString &path, const QByteArray &bytes);
    static QByteArray read(const QString &path);

private:
    QTemporaryDir m_folder;
};
