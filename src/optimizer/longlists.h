#pragma once

#include "pathset.h"

#include <QStringList>

// Lists of hundreds of thousands of paths: made and emptied at once they would take longer than a user should wait.
// Here events are processed on the way, so that the window stays alive: slots may run meanwhile.

/// The set of @p paths.
PathSet setOf(const QStringList &paths);

/// Empties @p paths.
void letGo(QStringList &paths);

/// Empties @p paths.
void letGo(PathSet &paths);
