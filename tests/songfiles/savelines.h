#pragma once

#include "support/testing.h"

// Log lines with which a song is not saved, whatever its kind.

inline const QString kProtected =
    "[MetaSong::saveToFile] Impossible to write to file. Maybe it's write protected? Aborting!"_s;
inline const QString kNoSeek = "[MetaSong::saveToFile] Impossible to seek file."_s;
