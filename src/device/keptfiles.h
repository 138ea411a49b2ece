#pragma once

#include "player.h"

#include "disk/filecopy.h"

#include <QString>

/// What one run takes off the player on its own account, copied to the PC first: "removed" in the program's data
/// folder, below it a folder a run named by date and time ("2026-11-22 20.15.09"), below that the path on the player.
/// Nothing is made on the PC before the first file is kept. Not for two runs at once.
class KeptFiles
{
public:
    /// What a file is to the user.
    enum class Kind
    {
        Songs,      ///< theirs: whatever its size
        Unsupported ///< of no use to the player; the user has asked for it to go
    };

    /// How much is kept.
    struct Limits
    {
        qint64 leastRoomLeft = qint64(1) << 30;         ///< bytes that stay free on the PC's disk
        qint64 mostOfUnsupportedFile = 100 * 1000000LL; ///< bytes of one unsupported file
        qint64 mostOfRun = 2000 * 1000000LL; ///< bytes kept in a run after which no more unsupported ones are
    };

    /// @p player is where the files come from.
    explicit KeptFiles(const Player &player);
    KeptFiles(const Player &player, const Limits &limits);

    /// Copies the file @p path of the player (its PC path) and waits until it is whole on the PC. A name that is taken
    /// there gets a number. Large files call @p betweenBlocks as copyFile() does.
    /// Returns false when it was not copied: then a song must stay where it is.
    bool keep(const QString &path, Kind kind, const BetweenBlocks &betweenBlocks = nullptr);

    /// The folder of this run, absolute, with forward slashes; empty while nothing has been kept.
    QString folder() const { return m_folder; }

    /// The folder of the latest run that has kept the entry @p relative of a player (in any case), in the form of
    /// folder(); empty when none has.
    static QString newestHolding(const QString &relative);

    /// Deletes what earlier runs have kept for more than 30 days. Processes events.
    static void forgetOldOnes();

private:
    bool makeFolder();
    void forgetEmptyFolder();

    Player m_player;
    Limits m_limits;
    QString m_folder;
    qint64 m_kept = 0; ///< bytes
    bool m_holdsFiles = false;
};
