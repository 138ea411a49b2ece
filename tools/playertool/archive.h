#pragma once

class PlayerDisk;

// The songs of a made disk.

/// Songs and other files left loose in the root, some under names that My Songs already has.
void addRootFiles(PlayerDisk &disk);
/// A song of every kind, over-long names, names with accents, quotes and apostrophes, long and many-lined titles, and
/// songs in the folders that the database leaves out.
void addSpecialSongs(PlayerDisk &disk);
/// Every kind of broken song, one of them where it may stay.
void addBrokenSongs(PlayerDisk &disk);
/// Folders of more than 1000 songs with companions, titles of every kind and sub-folders; the more of them the larger
/// @p songs, the archive's size, is.
void addBigFolders(PlayerDisk &disk, int songs);
/// @p songs more songs in folders of at most 900 files.
void addPlainFolders(PlayerDisk &disk, int songs);
