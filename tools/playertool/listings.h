#pragma once

class PlayerDisk;

// What the player keeps of its songs in files of its own. Both name songs that are there and songs that are gone, and
// are written when all songs are.

/// Playlists: device paths with two numbers behind them, lines ended by CR LF.
void addPlaylists(PlayerDisk &disk);
/// The export of the player's database: device paths ended by a zero byte among bytes that mean nothing to us.
void addFastDatabase(PlayerDisk &disk);
