#pragma once

#include "device/player.h"

#include <QList>
#include <QString>

/// A folder that is being split: its former content stands under another name meanwhile. Both are PC paths.
struct SplitFolder
{
    QString folder; ///< the one that is split
    QString aside;  ///< where its former content waits
};

// For each folder that is being split a note lies in the program's data folder, so that the next run can make good what
// a run that was killed has left. "splitting" there holds a text file a folder, UTF-8, a line each:
//
// | line | meaning                                                                                         |
// |------|-------------------------------------------------------------------------------------------------|
// | 1    | bytes of the player's volume, a blank, and its serial number where that is known: which player it is |
// | 2    | the folder, below the player's root                                                             |
// | 3    | where its content waits, below the player's root                                                |

/// Writes the note for @p split on @p player; one for the same folder is replaced. Returns whether it is on the disk.
bool writeSplitNote(const Player &player, const SplitFolder &split);

/// Removes the note for the folder @p folder of @p player. Does nothing when there is none.
void removeSplitNote(const Player &player, const QString &folder);

/// The folders of @p player that have a note, whether they are there or not. Notes that say nothing usable are left
/// out, and none leads out of the player.
QList<SplitFolder> splitNotes(const Player &player);
