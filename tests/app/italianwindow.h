#pragma once

#include "app/appsettings.h"
#include "app/mainwindow.h"
#include "support/pagetest.h"
#include "support/simulatedplayer.h"

/// From now on the main window starts in Italian, on a PC without a player.
inline void startInItalian() {
    SimulatedPlayer::disconnect();
    appSettings().setValue("Application/Language"_s, "lang_it"_s);
}
