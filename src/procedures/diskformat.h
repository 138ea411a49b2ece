#pragma once

#include "job.h"

#include "device/player.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <functional>

/// Erases the player's disk with the system's own format command: exFAT, labelled CORVIN4. Asks first, and waits until
/// the player is found again, without limit unless the window is to close.
class DiskFormat : private Steps<DiskFormat>
{
    Q_DECLARE_TR_FUNCTIONS(MainWindow)

public:
    /// @p drive is the root of the volume with its closing slash ("E:/"). @p isReady, when given, is asked once the
    /// user has agreed and the player is found there: when it says no, nothing is erased and run() has failed.
    DiskFormat(JobView &view, const QString &drive, std::function<bool()> isReady = nullptr);

    /// Refused after a "No"; failed when the drive is no longer the player's, when the command could not be run to its
    /// end or when something of what it had to erase is still there; stopped when the window is to close before the
    /// player is back. None is told here.
    JobEnd run();

    /// After run(): whether the command was started. The disk may be another one then, also after a failure.
    bool hasBegun() const { return m_begun; }

private:
    friend class Steps<DiskFormat>;
    JobEnd confirm();
    JobEnd erase();
    JobEnd waitForPlayer();
    JobEnd judge();
    void endWork();

    JobView &m_view;
    Player m_player;
    std::function<bool()> m_isReady;
    QStringList m_before; ///< what the format has to erase, by its name at the root
    bool m_begun = false;
    bool m_ranToItsEnd = false;
};
