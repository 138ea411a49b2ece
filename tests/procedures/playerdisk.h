#pragma once

#include "support/mountedplayer.h"
#include "support/programfolder.h"
#include "support/simulatedplayer.h"

#ifdef Q_OS_WIN
using PlayerDiskBase = SimulatedPlayer;
#else
using PlayerDiskBase = MountedPlayer;
#endif

/// The player's disk as a volume of its own, which can be formatted: on Linux a real exFAT volume, on Windows the
/// removable drive of the simulated player.
class PlayerDisk : public PlayerDiskBase
{
public:
    /// Whether this machine lets such a disk be made. When not, @p why says in a clear word what is missing.
    static bool isPossible(QString *why);

    /// Makes the disk and connects it; where that fails the test program ends.
    PlayerDisk();
    /// The content of a file. Also of a pulled player, as its files() are.
    QByteArray content(const QString &relative) const;

    /// A format command that formats this disk, or on Windows empties it, and writes what it was given into
    /// @p recordTo. A file named @p inTheWay then lies on the new disk.
    void addFormatCommand(ProgramFolder &programs, const QString &recordTo, const QString &inTheWay = QString()) const;
};

/// A stand-in that does this when the program formats. On Windows it is "format", found by the real command
/// interpreter; elsewhere the interpreter itself.
void addFormatCommand(ProgramFolder &programs, const QStringList &does);

/// What such a stand-in does to erase the drive it is given, as it stands among its lines.
QString eraseDrive();

/// What that stand-in is given for a drive without its closing slash ("E:").
QStringList formatArguments(const QString &drive);
