#pragma once

#include "job.h"

#include "device/player.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <functional>

/// Copies everything in a folder of the PC onto the player, and flushes it.
class SongRestore : public MaintenanceJob, private Steps<SongRestore>
{
    Q_DECLARE_TR_FUNCTIONS(MainWindow)

public:
    explicit SongRestore(JobView &view); ///< @p view outlives the job

    /// The whole procedure: looks for the player, lets the user choose the folder, copies, and tells how it ended.
    JobEnd run() override;

    /// The copy alone, from @p source (absolute), a folder that holds all that the player held, to @p player: hidden
    /// files and names without a dot too, in a second pass, but no update that waited for the player's next start.
    /// Failed also when a file could not be copied, when a folder cannot be listed or there are fewer than @p files of
    /// them (see countFiles()), and when the player is gone at the end. Its end is not told.
    JobEnd bringBack(const QString &source, const Player &player, int files);

    /// How many files lie below @p source that bringBack() looks at; fewer when @p goOn, asked before each, says no.
    /// Processes events.
    static int countFiles(const QString &source, const std::function<bool()> &goOn);

private:
    friend class Steps<SongRestore>;
    JobEnd findPlayer();
    JobEnd chooseFolder();
    JobEnd findPlayerAgain();
    JobEnd copyFromFolder();

    JobEnd listSongs();
    JobEnd copySongs();
    JobEnd copyOtherFiles();
    JobEnd flushPlayer();
    bool canListAll(const std::function<bool()> &goOn) const;
    QStringList withoutWhatStays(QStringList paths) const;

    JobView &m_view;
    Player m_player;
    QString m_source;
    QStringList m_files;
    bool m_everything = false;      ///< the second pass comes too
    int m_filesExpected = 0;        ///< of those that the second pass looks at
    bool m_filesAreMissing = false; ///< one could not be copied
    bool m_isListed = true;         ///< nothing was passed over because it could not be seen
};
