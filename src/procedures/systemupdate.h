#pragma once

#include "job.h"

#include "device/player.h"

#include <QCoreApplication>
#include <QString>

/// Downloads the latest release and copies it onto the player, which takes it up at its next start.
class SystemUpdate : public MaintenanceJob, private Steps<SystemUpdate>
{
    Q_DECLARE_TR_FUNCTIONS(MainWindow)

public:
    /// @p showFinalMessage: a good end is told by a box.
    SystemUpdate(JobView &view, bool showFinalMessage);

    /// Forgets an earlier STOP. Each failure is told by its numbered box; a STOP ahead of the copy is not told.
    JobEnd run() override;

private:
    friend class Steps<SystemUpdate>;
    JobEnd findPlayer();
    JobEnd download();
    JobEnd unpack();
    JobEnd copy();
    JobEnd finish();

    bool copyToPlayer();
    bool flushUntilStopped() const;
    bool removeOldUpdate();
    void removeUnfinished();

    JobView &m_view;
    bool m_showFinalMessage;
    Player m_player;
    QString m_archive;
    QString m_unpacked; ///< the folder of the update on the PC
};
