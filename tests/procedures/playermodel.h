#pragma once

#include "support/testing.h"

/// Every file that a whole system has, but for its update.
inline const QStringList kWholeSystem = words("AUTOEXEC.BAT Bridges/b.dat Effects/e.dat System/Corvin/Corvin.exe "
                                              "System/GuiProc/GuiProc.exe");

/// The bytes of a song.
QByteArray titledSong(const QString &title);

// Paths are relative to the player's root.

/// Whether a file is one of the playlists, which lie in a folder of the system and are the user's.
bool isPlaylist(const QString &path);
/// Whether a file is the program's to replace.
bool isSystems(const QString &path);

/// A player with a whole repertoire: its image, and what is on it. The environment variable CORVIN_FAULT_SONGS says how
/// many songs.
struct PlayerModel
{
    PlayerModel();

    const QTemporaryDir folder;
    const QString image = folder.filePath("model.img"_s);
    QMap<QString, QByteArray> content;
};

/// The one of this program, made when it is first asked for.
const PlayerModel &playerModel();
