#pragma once

#include "snapshot.h"

#include <QString>

/// What changed between @p before and what now lies below @p root, for a person to read: files removed, moved and
/// renamed (told by their content), split folders with their sub-folders, rewritten playlists, and the counts and first
/// lines of the import file. Long lists are cut, with a word on how many more there are.
QString changesText(const Snapshot &before, const QString &root);
