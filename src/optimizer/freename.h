#pragma once

#include <QString>

// Names that nothing on the disk bears yet. All folders are full paths without a closing slash, all results full
// paths. Each function looks at the disk; a name stays free only until somebody else takes it. Each ends: the names it
// tries are all different, and none exists that is longer than the file system allows.

/// Where a loose file of the root called @p fileName goes in @p folder: the name itself when it is free, else
/// base_1.suffix, base_2.suffix, …, where the suffix is what stands behind the last dot.
QString freeRootFileTarget(const QString &folder, const QString &fileName);

/// Where an image or video called @p fileName goes in @p folder: the name itself when it is free, else base_1.suffix,
/// base_2.suffix, …, where the suffix is all that stands behind the first dot.
QString freeMediaTarget(const QString &folder, const QString &fileName);

/// Where a song goes in the sub-folder @p folder, as a full path without dot and suffix, so that the song's companions
/// can be given the same base: @p baseName when that with @p suffix (without dot) is free, else baseName(1),
/// baseName(2), …
QString freeSplitBase(const QString &folder, const QString &baseName, const QString &suffix);

/// The name under which @p folder stands while it is split: folder.old, else folder.old1, folder.old12,
/// folder.old123, …
QString freeOldFolderName(const QString &folder);
