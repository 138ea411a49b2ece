#pragma once

#include "job.h"

#include "device/player.h"

#include <QString>

/// Replaces the system parts of the player by those of an unpacked archive, and hides them.
class SystemTransfer : private Steps<SystemTransfer>
{
public:
    /// @p unpackedFolder: absolute, without a closing slash.
    SystemTransfer(JobView &view, const Player &player, const QString &unpackedFolder);

    /// Done once the batch file that hides the system has been run, and when the player has gone by then. Nothing is
    /// told, save the copy's own boxes.
    JobEnd run();

    /// After run(): whether every file lies on the player in its full size. Where a folder could not be made or a file
    /// was passed over, the transfer goes on without: the procedure ends with words of its own.
    bool isWhole() const { return m_whole; }
    /// After run(): whether anything of the old system may have been removed.
    bool hasBegun() const { return m_begun; }

private:
    friend class Steps<SystemTransfer>;
    JobEnd removeOldSystem();
    JobEnd copyNewSystem();
    JobEnd hideSystem();

    JobView &m_view;
    Player m_player;
    QString m_unpackedFolder;
    bool m_whole = false;
    bool m_begun = false;
};
