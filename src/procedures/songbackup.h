#pragma once

#include "job.h"

#include "device/player.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

/// Copies the songs and the playlists of the player into an emptied folder of the PC.
class SongBackup : public MaintenanceJob, private Steps<SongBackup>
{
    Q_DECLARE_TR_FUNCTIONS(MainWindow)

public:
    explicit SongBackup(JobView &view);

    /// The whole procedure: looks for the player, lets the user choose the folder, copies, and tells how it ended.
    JobEnd run() override;

    /// The copy alone, from @p player to @p destination (absolute): asks before a folder that holds anything is emptied
    /// and before many files are copied. Its end is not told, save by boxes about the folder.
    JobEnd save(const Player &player, const QString &destination);

private:
    friend class Steps<SongBackup>;
    JobEnd findPlayer();
    JobEnd chooseFolder();
    JobEnd copyToFolder();
    JobEnd flushFolder();

    JobEnd beginCopy();
    JobEnd emptyDestination();
    JobEnd listSongs();
    JobEnd confirmManyFiles();
    JobEnd copySongs();

    JobView &m_view;
    Player m_player;
    QString m_destination;
    QStringList m_files;
};
