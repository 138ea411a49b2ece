#pragma once

#include <QLatin1String>

/// How a job, or one step of it, ended: one value, which nothing else repeats.
struct JobEnd
{
    enum Kind ///< what became of it
    {
        Done,    ///< all of it
        Refused, ///< the user did not want it, or there was no player: whatever there is to say has been said
        Stopped, ///< STOP
        Failed,  ///< the step has told the user so, unless whoever runs the job tells it
    };

    Kind kind = Done; ///< how it ended
    /// The step that was not done; empty after Done. Names are for the log and for telling apart.
    QLatin1String step = {};

    bool isDone() const { return kind == Done; } ///< all of it
    /// Whether the job failed at the step of this name.
    bool failedAt(QLatin1String name) const { return kind == Failed && step == name; }
};

/// The step at which a copy fails when one of the folders it needs cannot be made.
inline constexpr QLatin1String kMakingFolders("makeFolders", 11);
/// The step at which a copy fails when the player it works on is there no more.
inline constexpr QLatin1String kPlayerGone("playerGone", 10);
/// The last step of a reinstallation: it fails when something of the new system is missing on the player.
inline constexpr QLatin1String kFinishing("finish", 6);
