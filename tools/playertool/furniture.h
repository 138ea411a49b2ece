#pragma once

class PlayerDisk;

// What lies on a made disk besides songs.

/// Label, start-up script, the player's own programs with pictures, texts and sounds among them, and left-overs of an
/// update and of an earlier optimisation.
void addSystem(PlayerDisk &disk);
/// Images and videos where they belong and where they do not, with names that come twice.
void addMedia(PlayerDisk &disk);
/// Files that the player cannot use, and hidden ones that nobody may touch.
void addUnsupported(PlayerDisk &disk);
