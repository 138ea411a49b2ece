#pragma once

#include "ottimizza.h"

#include "device/keptfiles.h"
#include "device/player.h"

/// The maximum of a bar of which nobody knows how far it has to go.
constexpr int kBusyBar = 0;

/// After how many entries of a mere listing events are processed.
constexpr int kListingRound = 64;

/// What a run knows of the player that it began with.
struct Ottimizza::Run
{
    explicit Run(const QString &root) : player(root), kept(player) {}

    Player player;
    KeptFiles kept;            ///< what the run has taken off the player
    QStringList killedFolders; ///< canonical paths of folders whose splitting was cut off by the end of an earlier run
};
