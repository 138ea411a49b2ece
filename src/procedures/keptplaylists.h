#pragma once

#include "jobend.h"
#include "jobview.h"

#include "device/keptfiles.h"
#include "device/player.h"

/// Copies everything in the playlist folder of @p player's system ("System/Playlist", however the volume spells it) to
/// the PC by @p kept. Processes events.
/// Failed, without a word to the user, when a file could not be kept or the player is gone; stopped after STOP.
JobEnd keepPlaylists(const JobView &view, const Player &player, KeptFiles &kept);
