#pragma once

#include "support/testing.h"

// What the tests of the transfer page share beside the page itself.

/// What stands on the player at first; folders end with a slash.
inline const QStringList kSongs = {"My Songs/Rock/a.mid"_s, "My Songs/b.mid"_s, "a loose.mid"_s, "Videos/"_s};

/// What the page says while it counts what was dropped.
inline const QString kCounting = "Conteggio numero file da trasferire ..."_s;
