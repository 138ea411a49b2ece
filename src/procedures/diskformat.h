#pragma once

#include "job.h"

#include <QCoreApplication>
#include <QString>

/// Erases the player's disk with the system's own format command: exFAT, labelled CORVIN4. Asks first, and waits,
/// without limit, until the player is found again.
class DiskFormat : private Steps<DiskFormat>
{
    Q_DECLARE_TR_FUNCTIONS(MainWindow)

public:
    /// @p drive is the root of the volume with its closing slash ("E:/").
    DiskFormat(JobView &view, const QString &drive);

    /// Refused after a "No"; failed when the command could not be run to its end. Neither is told here.
    JobEnd run();

private:
    friend class Steps<DiskFormat>;
    JobEnd confirm();
    JobEnd erase();
    JobEnd waitForPlayer();
    JobEnd judge();

    JobView &m_view;
    QString m_drive;
    bool m_ranToItsEnd = false;
};
