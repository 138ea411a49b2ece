#pragma once

#include "gapmeter.h"

/// Sets up the program as its start does, goes with it from the connection page to the optimisation page, presses
/// "OTTIMIZZA" and waits for the end.
struct ProgramRun
{
    bool finished = false;   ///< the result page was reached
    int failCode = -1;       ///< what the result page was told
    qint64 sinceStartMs = 0; ///< from the call to the result page
    QVector<GapMeter::Step> steps;
    qint64 optimisationMs = 0;
    qint64 longestGapMs = 0;
};

/// Needs a QApplication and a player to be found. The session log and the settings go where the environment says.
ProgramRun runOptimisation();
