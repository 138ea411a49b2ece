#pragma once

#include "job.h"

#include "device/player.h"

#include <QCoreApplication>
#include <QString>

#include <optional>

/// Rebuilds the player's system from the full system archive, then brings the latest update.
class Reinstall : public MaintenanceJob, private Steps<Reinstall>
{
    Q_DECLARE_TR_FUNCTIONS(MainWindow)

public:
    /// What becomes of the songs.
    enum class Songs
    {
        Stay,      ///< only the system's own folders are replaced
        AreErased, ///< the disk is formatted
        ComeBack   ///< they are copied to the PC, the disk is formatted, and they are copied back
    };

    Reinstall(JobView &view, Songs songs); ///< @p view outlives the job

    /// Where the songs are to be erased the user is asked first.
    bool confirm() override;
    /// Every step tells what went wrong with it; STOP is not told, unless the songs are on the PC alone by then, the
    /// player is left without a system, or its playlists have gone with the old one.
    JobEnd run() override;

private:
    friend class Steps<Reinstall>;
    JobEnd runStepsForSongs();

    // The steps, in the order in which they come.
    JobEnd findPlayer();
    JobEnd chooseBackupFolder();
    JobEnd saveSongs();
    JobEnd download();
    JobEnd unpack();
    JobEnd keepPlaylists();
    JobEnd format();
    JobEnd install();
    JobEnd bringSongsBack();
    JobEnd finish();

    std::optional<Notice> whatIsMissingToFormat();
    JobEnd findPlayerAgain();
    JobEnd samePlayer();

    // In reinstallend.cpp: what the user is told.
    JobEnd playerGone();
    JobEnd failed(const Notice &notice);
    void tell(Notice notice);
    void tellStopped();
    void flushNewSystem();
    static Notice formatError();
    static QString unexpectedEnd();
    QString whereThePlaylistsAre() const;

    JobView &m_view;
    Songs m_songs;
    Player m_player;
    QString m_archive;
    QString m_unpackedFolder; ///< its content belongs at the player's root
    QString m_backup;         ///< the PC folder with the songs
    QString m_keptPlaylists;  ///< the PC folder with the playlists of the old system; empty when it had none
    int m_filesInBackup = 0;  ///< when the format began
    bool m_songsOnPcAlone = false;
    bool m_systemReplaced = false; ///< the old system, with its playlists, is no longer whole
    bool m_systemLost = false;     ///< and no new one is: the player does not start
    bool m_systemFlushed = false;  ///< the new one is on the disk for good
    bool m_endTold = false;
    bool m_whole = true; ///< nothing has gone wrong that does not end the procedure at once
};
