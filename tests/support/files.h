#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

// Files of a test. Paths are absolute with forward slashes; ".windows-label", which labels a folder that plays a
// volume, is left out of every listing.

/// The content of a file; empty when it cannot be read.
QByteArray contentOf(const QString &path);
/// Writes a file and its folders; fails the running test when it cannot. Returns @p path.
QString putFile(const QString &path, const QByteArray &content = QByteArrayLiteral("x"));
/// All files below @p folder, hidden ones too, sorted, relative to it.
QStringList filesBelow(const QString &folder);
/// Every file and folder below @p folder, hidden ones too, sorted, relative to it.
QStringList entriesBelow(const QString &folder);
/// Every file below @p folder with its content.
QMap<QString, QByteArray> contentBelow(const QString &folder);
/// Runs a program to its end. Returns whether it ended well.
bool runProgram(const QString &program, const QStringList &arguments);

/// A folder of the test's own on the PC.
class PcFolder
{
public:
    QString path(const QString &relative = QString()) const { return m_dir.filePath(relative); }
    /// Writes a file, making its folders; returns its full path.
    QString addFile(const QString &relative, const QByteArray &content = QByteArrayLiteral("pc")) {
        return putFile(path(relative), content);
    }
    /// Makes a folder with its parents; returns its full path.
    QString addFolder(const QString &relative);
    QByteArray content(const QString &relative) const { return contentOf(path(relative)); }
    QStringList files() const { return filesBelow(path()); }

private:
    QTemporaryDir m_dir;
};
