#pragma once

#include <QString>

/// The folder in which the program keeps what is its own on this PC (the session log, what it has taken off the player,
/// its notes), absolute, with forward slashes and without a closing one. It need not exist yet.
/// Until setDataFolder() is called it is QStandardPaths::AppDataLocation, which follows the program's names.
QString dataFolder();

/// From here on dataFolder() gives @p folder. Called once at the start, before the program's names are set, so that all
/// of it lies beside the session log.
void setDataFolder(const QString &folder);
