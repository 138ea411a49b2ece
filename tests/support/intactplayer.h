#pragma once

#include "simulatedplayer.h"

/// A simulated player with all its system files.
class IntactPlayer : public SimulatedPlayer
{
public:
    IntactPlayer() { addSystemFiles(); }
};
