#pragma once

#include "judge.h"
#include "outcome.h"

// The judge's chapters. Each adds what it finds to the verdict.

/// Songs and their companions: none lost, none changed, each in its place under its name; broken ones gone.
void judgeSongs(const Outcome &outcome, const QString &root, Verdict &verdict);
void judgeCompanions(const Outcome &outcome, Verdict &verdict);
/// Everything else: the player's own files, images and videos, what had to go, what must not be there.
void judgeOtherFiles(const Outcome &outcome, Verdict &verdict);
/// Sizes of the folders, and folders that came or went.
void judgeFolders(const Outcome &outcome, Verdict &verdict);
/// Each line of each playlist.
void judgePlaylists(const Outcome &outcome, Verdict &verdict);
/// The import file against the disk and the player's own list in System/Corvin/data.fastDB.
void judgeImport(const Outcome &outcome, const QString &root, Verdict &verdict);
