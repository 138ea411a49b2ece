#pragma once

#include "job.h"
#include "setasidefolder.h"

#include "device/player.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <memory>

enum class DestinationFault;

/// Copies the songs and the playlists of the player into an emptied folder of the PC.
class SongBackup : public MaintenanceJob, private Steps<SongBackup>
{
    Q_DECLARE_TR_FUNCTIONS(MainWindow)

public:
    explicit SongBackup(JobView &view); ///< @p view outlives the job

    /// The whole procedure: looks for the player, lets the user choose the folder, copies, and tells how it ended.
    JobEnd run() override;

    /// The copy alone, from @p player to @p destination (absolute): asks before a folder that holds anything is emptied
    /// and before many files are copied. Until the first file is copied the folder's content comes back when the backup
    /// ends, or what is left of it by then. Its end is not told, save by boxes about the folder.
    JobEnd save(const Player &player, const QString &destination);

    /// The same, and in a second pass whatever else on the player is not its system: before its disk is erased. What
    /// could not be copied is told file by file alone: see isBackupComplete().
    JobEnd saveEverything(const Player &player, const QString &destination);

private:
    friend class Steps<SongBackup>;
    JobEnd findPlayer();
    JobEnd chooseFolder();
    JobEnd findPlayerAgain();
    JobEnd copyToFolder();
    JobEnd flushFolder();

    JobEnd beginCopy();
    JobEnd setDestinationAside();
    JobEnd listSongs();
    JobEnd confirmManyFiles();
    JobEnd dropOldContent();
    JobEnd copySongs();
    JobEnd copyOtherFiles();
    JobEnd copyToDestination(const QStringList &files);

    JobEnd refuseFolder(const QString &why);
    static QString reasonAgainst(DestinationFault fault);
    static QString reasonNotEmptied();

    JobView &m_view;
    Player m_player;
    QString m_destination;
    QStringList m_files;
    std::unique_ptr<SetAsideFolder> m_old; ///< what the destination held, while it may come back
    bool m_everything = false;             ///< the second pass comes too
};
