#pragma once

#include <QSettings>

/// The program's one settings store: organisation "Q-Arte", application "Corvin4Manager", native format, user scope,
/// without fallbacks. Made at the first call (by the start-up) and alive until the process ends. A store that cannot be
/// written simply keeps nothing. GUI thread only.
QSettings &appSettings();
