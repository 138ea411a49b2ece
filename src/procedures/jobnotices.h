#pragma once

#include "jobend.h"
#include "jobview.h"

#include "device/player.h"

// What several maintenance jobs tell the user in the same words.

/// Looks for the player with a word in the status line, and tells the user when there is none.
Player lookForPlayer(JobView &view);

/// The box for a player that is not there, or is there no more.
void tellPlayerGone(JobView &view);

/// A question with the buttons "Si", which Enter presses, and "No".
JobQuestion siOrNo(const QString &title, const QString &text);

/// Tells how a copy of the songs ended for which the user had chosen a folder. After a STOP that came too late for the
/// copy nothing is said.
void tellEndOfSongCopy(JobView &view, const JobEnd &end);

/// The box that says no more than that something is wrong.
void tellError(JobView &view);

/// The box for a download, an unpacking or a copy that failed: 1, 2 or 3.
void tellDownloadError(JobView &view, int code);
