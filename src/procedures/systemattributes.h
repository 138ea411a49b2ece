#pragma once

#include "device/player.h"

#include <QByteArray>
#include <QString>

/// The batch file that hides the system folder and the start-up file of @p player: two lines,
/// each ended by a line feed alone, with the root's slashes turned into backslashes, in the system's 8-bit encoding.
QByteArray attributeBatch(const Player &player);

/// Does what the batch file @p batchPath says for @p player, and waits until it is done. On Windows the
/// file itself is run, detached, in its own folder, in which no program is looked for; what it has not set is set by
/// the system's own call then. Elsewhere both entries get the attributes "hidden" and "system" by
/// the system's own means where the volume has such attributes, and are left alone where it has not.
/// Returns false only when the batch file could not be run and one of the two does not carry the attributes either.
bool runAttributeBatch(const QString &batchPath, const Player &player);
