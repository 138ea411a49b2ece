#pragma once

#include "support/programfolder.h"

#include <QString>
#include <QStringList>
#include <memory>

/// The player's disk as a volume of its own, which can be formatted: on Linux a real exFAT volume, on Windows the
/// removable drive of the simulated player.
class PlayerDisk
{
public:
    /// Whether this machine lets such a disk be made. When not, @p why says in a clear word what is missing.
    static bool isPossible(QString *why);

    /// Makes the disk and connects it. isThere() tells whether that went well, and error() what did not.
    PlayerDisk();
    ~PlayerDisk();
    bool isThere() const;
    QString error() const;

    /// Path of the root with a closing slash, as the program finds it.
    QString root() const;
    QString path(const QString &relative) const { return root() + relative; }
    /// All files, hidden ones too, sorted, relative to the root; and the content of one. Also of a pulled player.
    QStringList files() const;
    QByteArray content(const QString &relative) const;

    /// A format command that formats this disk, or on Windows empties it, and writes what it was given into
    /// @p recordTo. A file named @p inTheWay then lies on the new disk.
    void addFormatCommand(ProgramFolder &programs, const QString &recordTo, const QString &inTheWay = QString()) const;

private:
    struct Volume;
    std::unique_ptr<Volume> m_volume;
};

/// A stand-in that does this when the program formats. On Windows it is "format", found by the real command
/// interpreter; elsewhere the interpreter itself.
void addFormatCommand(ProgramFolder &programs, const QStringList &does);

/// What that stand-in is given for a drive without its closing slash ("E:").
QStringList formatArguments(const QString &drive);
