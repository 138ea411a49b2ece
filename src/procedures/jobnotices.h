#pragma once

#include "jobend.h"
#include "jobview.h"

#include "device/player.h"

// What several maintenance jobs tell the user in the same words.

/// Looks for the player with a word in the status line, and tells the user when there is none.
Player lookForPlayer(JobView &view);

/// The same without the word: when a dialog may have stood open for long.
Player lookForPlayerAgain(JobView &view);

/// The box for a player that is not there, or is there no more.
Notice playerGoneNotice();

/// A question with the buttons "Si", which Enter presses, and "No".
JobQuestion siOrNo(const QString &title, const QString &text);

/// Tells how a copy of the songs ended for which the user had chosen a folder. After a STOP that came too late for the
/// copy nothing is said.
void tellEndOfSongCopy(JobView &view, const JobEnd &end);

/// The box that says no more than that something is wrong.
Notice errorNotice();

/// What of an update, or of the system's archive, has failed: the number that the user is told.
enum class DownloadFault
{
    Download = 1,
    Unpacking = 2,
    Copy = 3
};

/// The box for it.
void tellDownloadError(JobView &view, DownloadFault fault);
