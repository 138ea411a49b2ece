#pragma once

#include "devicelocator.h"
#include "playernames.h"

#include <QString>
#include <functional>

/// The player as one job found it: the root of its volume, and which volume that was. A small value; never kept beyond
/// one job, since the player may come back under another root.
class Player
{
public:
    /// No player.
    Player() = default;
    /// The volume whose root is @p root, in the form that DeviceLocator::findDeviceRoot() gives: canonical, forward
    /// slashes, a closing slash; empty for none. Whether it really is the player is not looked at.
    explicit Player(const QString &root);
    /// The player as it is connected now; isFound() tells whether it is.
    static Player find() { return Player(DeviceLocator().findDeviceRoot()); }

    bool isFound() const { return !m_root.isEmpty(); } ///< whether there was a player to find
    /// With a closing slash; empty when there is none.
    const QString &root() const { return m_root; }

    /// The path of @p relative (parts separated by forward slashes), spelled as it is found on the disk whatever its
    /// case, see resolveDevicePath().
    QString path(const QString &relative) const;
    /// What is left of @p path, which lies on the player, behind the root.
    QString relativePath(const QString &path) const { return path.mid(m_root.size()); }

    // The player names its files "\sdmemory\" followed by the path below its root, with backslashes. The PC names the
    // same file by the root followed by the same path with forward slashes.

    /// The PC path of every file named in @p text, a text in device form such as a playlist line: each "\sdmemory\",
    /// whatever its case, becomes the root, then each backslash a forward slash. Text that names no file keeps the rest
    /// of its characters.
    QString pcPath(QString text) const;
    /// The device path of the file at the PC path @p path: each occurrence of the root, in exactly this case, becomes
    /// "\sdmemory\", then each forward slash a backslash. A path that does not lie on the player only gets backslashes;
    /// so does every path while there is no player.
    QString devicePath(QString path) const;

    /// Whether the volume that was found is still there. Where a volume was mounted stays a folder of the PC when the
    /// player is pulled: under the root nothing may be written, replaced or deleted then. Cheap enough for every file.
    bool isThere() const;
    /// Writes everything to the disk, see flushVolume(), with the window alive. Returns whether it is there, and the
    /// player too: before any text that says that something is done. @p goOn, when given, is asked again and again;
    /// when it says no, the flush may end early, and has failed then.
    bool flush(const std::function<bool()> &goOn = nullptr) const;

    /// Whether @p name is that of a folder at the root that the player makes itself, in any case.
    static bool isOwnFolder(const QString &name);
    /// Whether the three files without which the player does not start are there. All of them are looked for.
    bool hasSystemFiles() const;

private:
    QString m_root;
    quint64 m_volume = 0; ///< see volumeId(); 0 when there was none
};
